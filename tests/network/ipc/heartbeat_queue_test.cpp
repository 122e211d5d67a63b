// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The heartbeat on the kernel's queues. Runs in an IPC namespace of its own and puts an empty /var
 * into a mount namespace of its own. */
#include <fstream>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>

#include "network_mng.h"
#include "package.hpp"
#include "real_queue.hpp"

namespace {

using fake::Bytes;
using ipc::Child;
using ipc::Message;
using ipc::RealQueue;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char *keyFile = "/var/heartbeat.key";
constexpr int project = 7;
const std::string noKey = "In HeartbeatPostLogMsg, failed to ftok /var/heartbeat.key.";
const std::string noQueue = "In HeartbeatPostLogMsg, iMsgFd: -1 error.";

void isolateVar()
{
    static const bool isolated = [] {
        return unshare(CLONE_NEWNS) == 0 &&
               mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               mount("test", "/var", "tmpfs", 0, nullptr) == 0;
    }();
    if (!isolated) {
        throw std::runtime_error("cannot put an empty /var in place");
    }
}

class HeartbeatQueue : public fake::FakePlatformTest {
protected:
    HeartbeatQueue() : queue(keyFile, project)
    {
        isolateVar();
        std::ofstream(keyFile) << "key";
        platform.setCapability("NIC", "KezOemSupport", std::uint16_t{1});
    }
    ~HeartbeatQueue() override
    {
        queue.remove();
        unlink(keyFile);
    }

    /* "RESULT: what was printed". */
    std::string post(const Bytes &bytes, int id = project)
    {
        testing::internal::CaptureStdout();
        const std::uint32_t result = HeartbeatPostLogMsg(bytes.data(), id);
        return fake::formatted("%x: ", result) + testing::internal::GetCapturedStdout();
    }

    void fill()
    {
        while (queue.put({1, Bytes(8)})) {
        }
    }

    const Bytes payload = package::counted(8);
    RealQueue queue;
};

TEST_F(HeartbeatQueue, ReceivesTypeOneAndEightBytes)
{
    queue.create(0600);

    EXPECT_EQ(post(payload), "0: ");

    EXPECT_EQ(queue.count(), 1U);
    EXPECT_EQ(queue.take(), (Message{1, payload}));
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(HeartbeatQueue, KeepsTheOrderOfItsMessages)
{
    queue.create(0600);
    for (std::uint8_t beat = 0; beat < 3; ++beat) {
        EXPECT_EQ(post(Bytes(8, beat)), "0: ");
    }
    for (std::uint8_t beat = 0; beat < 3; ++beat) {
        EXPECT_EQ(queue.take(), (Message{1, Bytes(8, beat)}));
    }
}

TEST_F(HeartbeatQueue, IsNeverCreated)
{
    EXPECT_EQ(post(payload), "81000001: " + noQueue);
    EXPECT_FALSE(queue.exists());
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(HeartbeatQueue, NeedsTheKeyFile)
{
    queue.create(0600);
    const int id = queue.id();
    unlink(keyFile);

    EXPECT_EQ(post(payload), "81000001: " + noKey);

    msgctl(id, IPC_RMID, nullptr);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(HeartbeatQueue, OfANegativeKeyIsRefused)
{
    for (const int id : {0x80, 0xFF, -2}) {
        const RealQueue negative(keyFile, id);
        ASSERT_LT(negative.key(), -1);
        negative.create(0600);

        EXPECT_EQ(post(payload, id), "81000001: " + noKey);

        EXPECT_EQ(negative.count(), 0U);
        negative.remove();
    }
}

TEST_F(HeartbeatQueue, StaysEmptyWithoutTheCapability)
{
    queue.create(0600);

    platform.setCapability("NIC", "KezOemSupport", std::uint16_t{0});
    EXPECT_EQ(post(payload), "81000001: Get Kez Oem Support failed or not support. iRet = 0, "
                             "bKezOemSupport = 0");
    platform.failCapability("NIC", "KezOemSupport", -1);
    EXPECT_EQ(post(payload), "81000001: Failed to get KezOem support from CAP, iRet = ffffffff"
                             "Get Kez Oem Support failed or not support. iRet = 0x81000001, "
                             "bKezOemSupport = 0");

    EXPECT_EQ(queue.count(), 0U);
}

TEST_F(HeartbeatQueue, BlocksTheSenderWhileItIsFull)
{
    queue.create(0600);
    fill();
    const std::size_t full = queue.count();

    Child sender([&] { return post(payload); });
    EXPECT_FALSE(sender.endsWithin(std::chrono::milliseconds(200)));
    EXPECT_EQ(queue.count(), full);
    queue.take();

    EXPECT_EQ(sender.report(), "0: ");
    EXPECT_EQ(queue.count(), full);
}

/* The child may come too late for the queue: then it is tried again. */
TEST_F(HeartbeatQueue, RemovedUnderItsSenderIsAnError)
{
    std::string report = noQueue;
    for (int attempt = 0; attempt < 20 && report.ends_with(noQueue); ++attempt) {
        queue.create(0600);
        fill();
        Child sender([&] { return post(payload); });
        EXPECT_FALSE(sender.endsWithin(std::chrono::milliseconds(100)));
        queue.remove();
        report = sender.report();
    }

    EXPECT_EQ(report, "81000001: In HeartbeatPostLogMsg, msgsnd failed (Identifier removed): 43.");
}

} // namespace
