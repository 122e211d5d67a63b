// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* One process of a daemon for each state directory. */
#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace bmc::manager {

inline std::filesystem::path stateDirectory()
{
    const char *named = std::getenv("BMC_STATE_DIR");
    return named != nullptr && *named != '\0' ? named : "/var/lib/bmc";
}

/* Held as long as the object or, when the process dies, as long as the process. */
class InstanceLock {
public:
    /* Makes the directory where it is missing. Throws std::runtime_error when another process holds
     * the lock. */
    explicit InstanceLock(const std::string &program = "nwmanagerd")
    {
        std::filesystem::create_directories(stateDirectory());
        const std::string path = stateDirectory() / (program + ".lock");
        descriptor_ = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (descriptor_ < 0) {
            throw std::system_error(errno, std::generic_category(), path);
        }
        if (flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
            close(descriptor_);
            throw std::runtime_error("another " + program + " works on " +
                                     stateDirectory().string());
        }
    }

    ~InstanceLock()
    {
        close(descriptor_);
    }

    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;

private:
    int descriptor_;
};

} // namespace bmc::manager
