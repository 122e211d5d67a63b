// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "kernel_script.hpp"

#include <algorithm>
#include <cerrno>

namespace kernel {

Script &script()
{
    static Script instance;
    return instance;
}

namespace {

template <typename... Numbers>
void note(const char *name, Numbers... numbers)
{
    std::string call = name;
    ((call += " " + std::to_string(numbers)), ...);
    script().calls.push_back(call);
}

} // namespace

} // namespace kernel

// The test program itself has no other sockets, but closes files of its own.
extern "C" {

int __real_close(int fd);
int __wrap_socket(int family, int type, int protocol);
ssize_t __wrap_send(int fd, const void *data, size_t size, int flags);
ssize_t __wrap_recv(int fd, void *buffer, size_t size, int flags);
int __wrap_close(int fd);

int __wrap_socket(int family, int type, int protocol)
{
    kernel::note("socket", family, type, protocol);
    return kernel::script().socketResult;
}

ssize_t __wrap_send(int fd, const void *data, size_t size, int flags)
{
    kernel::note("send", fd, size, flags);
    const auto *bytes = static_cast<const std::uint8_t *>(data);
    kernel::script().request.assign(bytes, bytes + size);
    return kernel::script().sendResult;
}

ssize_t __wrap_recv(int fd, void *buffer, size_t size, int flags)
{
    kernel::Script &script = kernel::script();
    kernel::note("recv", fd, size, flags);
    auto *bytes = static_cast<std::uint8_t *>(buffer);
    script.receivedIntoZeros =
        std::all_of(bytes, bytes + size, [](auto byte) { return byte == 0; });
    const std::size_t count = std::min(size, script.datagram.size());
    std::copy_n(script.datagram.begin(), count, bytes);
    return script.receiveResult.value_or(static_cast<ssize_t>(count));
}

int __wrap_close(int fd)
{
    if (fd != kernel::descriptor && fd != kernel::script().socketResult) {
        return __real_close(fd);
    }
    kernel::note("close", fd);
    return 0;
}

} // extern "C"
