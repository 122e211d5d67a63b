// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A file descriptor that is closed with its owner. */
#pragma once

#include <utility>

#include <unistd.h>

namespace bmc {

class Descriptor {
public:
    explicit Descriptor(int fd = -1) noexcept : fd_(fd) {}

    Descriptor(Descriptor &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

    Descriptor &operator=(Descriptor &&other) noexcept
    {
        Descriptor former(std::exchange(fd_, std::exchange(other.fd_, -1)));
        return *this;
    }

    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    ~Descriptor()
    {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    int get() const noexcept
    {
        return fd_;
    }

    explicit operator bool() const noexcept
    {
        return fd_ >= 0;
    }

private:
    int fd_;
};

} // namespace bmc
