// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "output_capture.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace nwctl {

namespace {

int required(int descriptor, const char *what)
{
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return descriptor;
}

} // namespace

OutputCapture::OutputCapture()
    : file_(required(memfd_create("output", MFD_CLOEXEC), "memfd_create")),
      output_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
{
    std::fflush(stdout);
    dup2(file_, STDOUT_FILENO);
}

OutputCapture::~OutputCapture()
{
    std::fflush(stdout);
    if (output_ < 0) {
        close(STDOUT_FILENO); /* as it was */
    } else {
        dup2(output_, STDOUT_FILENO);
        close(output_);
    }
    close(file_);
}

std::string OutputCapture::text() const
{
    std::fflush(stdout);
    std::array<char, 4096> buffer;
    const ssize_t size = pread(file_, buffer.data(), buffer.size(), 0);
    return {buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
}

} // namespace nwctl
