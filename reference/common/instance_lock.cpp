// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/instance_lock.hpp"

#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

#include "common/files.hpp"
#include "common/state_directory.hpp"

namespace bmc {

namespace {

/* What a process has forked shares its lock, and ends a moment after one that was killed. Answers
 * errno, 0 when the lock is held. */
int lock(const Descriptor &file)
{
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 1s;
    while (flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK || std::chrono::steady_clock::now() >= end) {
            return errno;
        }
        std::this_thread::sleep_for(10ms);
    }
    return 0;
}

} // namespace

InstanceLock::InstanceLock(const std::string &program)
{
    constexpr mode_t ownersAlone = 0600;
    const std::filesystem::path directory = stateDirectory();
    const std::filesystem::path path = directory / (program + ".lock");
    std::filesystem::create_directories(directory);

    file_ = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, ownersAlone));
    if (!file_ && errno == EROFS) {
        file_ = Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
        if (!file_ && errno == ENOENT) {
            return;
        }
    }
    if (!file_) {
        failFile(path, errno);
    }
    const int error = lock(file_);
    if (error == EWOULDBLOCK) {
        throw std::runtime_error("another " + program + " works on " + directory.string());
    }
    if (error != 0) {
        failFile(path, error);
    }
}

} // namespace bmc
