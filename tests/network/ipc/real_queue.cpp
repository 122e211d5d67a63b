// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "real_queue.hpp"

#include <array>
#include <stdexcept>
#include <thread>
#include <unistd.h>

namespace ipc {

namespace {

constexpr std::size_t longestText = 8192;

/* As the kernel takes it. */
struct Buffer {
    long type;
    std::array<std::uint8_t, longestText> text;
};

std::string newFile()
{
    std::string path = "/tmp/nw_queue_XXXXXX";
    const int file = mkstemp(path.data());
    if (file < 0) {
        throw std::runtime_error("no file for a queue");
    }
    close(file);
    return path;
}

msqid_ds statusOf(int id)
{
    msqid_ds status{};
    if (id >= 0 && msgctl(id, IPC_STAT, &status) != 0) {
        throw std::runtime_error("no status of a queue");
    }
    return status;
}

} // namespace

int RealQueue::key() const
{
    return ftok(path(), project_);
}

int RealQueue::id() const
{
    return key() == -1 ? -1 : msgget(key(), 0);
}

std::size_t RealQueue::count() const
{
    return statusOf(id()).msg_qnum;
}

std::size_t RealQueue::room() const
{
    return statusOf(id()).msg_qbytes;
}

unsigned RealQueue::mode() const
{
    return statusOf(id()).msg_perm.mode & 0777U;
}

void RealQueue::create(unsigned mode) const
{
    if (msgget(key(), static_cast<int>(IPC_CREAT | IPC_EXCL | mode)) < 0) {
        throw std::runtime_error("no queue");
    }
}

void RealQueue::remove() const
{
    if (exists()) {
        msgctl(id(), IPC_RMID, nullptr);
    }
}

bool RealQueue::put(const Message &message) const
{
    Buffer buffer{message.type, {}};
    std::copy(message.text.begin(), message.text.end(), buffer.text.begin());
    return msgsnd(id(), &buffer, message.text.size(), IPC_NOWAIT) == 0;
}

Message RealQueue::take() const
{
    Buffer buffer{};
    const ssize_t length = msgrcv(id(), &buffer, buffer.text.size(), 0, IPC_NOWAIT);
    if (length < 0) {
        throw std::runtime_error("no message");
    }
    return {buffer.type, fake::Bytes(buffer.text.begin(), buffer.text.begin() + length)};
}

RealQueueTest::RealQueueTest() : queue(newFile(), project) {}

RealQueueTest::~RealQueueTest()
{
    queue.remove();
    unlink(queue.path());
}

bool reaches(const RealQueue &queue, std::size_t count)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (queue.count() != count) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace ipc
