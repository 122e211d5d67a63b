// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "gateway_script.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/select.h>
#include <unistd.h>

#include "libc_symbol.hpp"

namespace gateway {

Script &script()
{
    static Script instance;
    return instance;
}

namespace {

// The cache as a stream that gives one piece a read.
struct Cursor {
    std::size_t piece = 0;
};
Cursor cursor;

ssize_t readPiece(void *, char *buffer, size_t size)
{
    Script &now = script();
    if (cursor.piece == now.cache.size()) {
        return 0;
    }
    const Piece &piece = now.cache[cursor.piece++];
    if (piece.fails) {
        errno = EIO;
        return -1;
    }
    if (piece.text.size() > size) {
        std::abort();
    }
    std::memcpy(buffer, piece.text.data(), piece.text.size());
    return static_cast<ssize_t>(piece.text.size());
}

int closePieces(void *)
{
    --script().openFiles;
    script().calls.emplace_back("fclose");
    return 0;
}

sockaddr_ll linkAddress(const sockaddr *address, socklen_t length)
{
    sockaddr_ll link{};
    std::memcpy(&link, address, std::min<std::size_t>(length, sizeof(link)));
    return link;
}

template <typename... Numbers>
void note(const char *name, Numbers... numbers)
{
    std::string call = name;
    ((call += " " + std::to_string(numbers)), ...);
    script().calls.push_back(call);
}

int failUnless(bool succeeds, int result, int error)
{
    errno = error;
    return succeeds ? result : -1;
}

} // namespace

} // namespace gateway

using gateway::note;
using gateway::script;

extern "C" {

FILE *__real_fopen(const char *path, const char *mode) NW_REAL_SYMBOL(fopen);
int __real_close(int fd);
FILE *__wrap_fopen(const char *path, const char *mode) NW_WRAP_SYMBOL(fopen);
int __wrap_socket(int family, int type, int protocol);
int __wrap_bind(int fd, const sockaddr *address, socklen_t length);
int __wrap_getsockname(int fd, sockaddr *address, socklen_t *length);
ssize_t __wrap_sendto(int fd, const void *data, size_t size, int flags, const sockaddr *address,
                      socklen_t length);
int __wrap_select(int end, fd_set *read, fd_set *write, fd_set *except, timeval *time)
    NW_WRAP_SYMBOL(select);
ssize_t __wrap_recvfrom(int fd, void *buffer, size_t size, int flags, sockaddr *address,
                        socklen_t *length);
int __wrap_close(int fd);

FILE *__wrap_fopen(const char *path, const char *mode)
{
    if (std::strcmp(path, "/proc/net/arp") != 0) {
        return __real_fopen(path, mode);
    }
    script().calls.push_back("fopen " + std::string(path));
    if (!script().cacheOpens || mode[0] != 'r') {
        return nullptr;
    }
    ++script().openFiles;
    gateway::cursor = {};
    return fopencookie(nullptr, "r", {gateway::readPiece, nullptr, nullptr, gateway::closePieces});
}

int __wrap_socket(int family, int type, int protocol)
{
    note("socket", family, type & ~SOCK_CLOEXEC, protocol);
    return gateway::failUnless(script().socketOpens, gateway::descriptor, EPERM);
}

int __wrap_bind(int fd, const sockaddr *address, socklen_t length)
{
    note("bind", fd, length);
    script().bound = gateway::linkAddress(address, length);
    return gateway::failUnless(script().binds, 0, ENODEV);
}

// The address as the kernel completes it.
int __wrap_getsockname(int fd, sockaddr *address, socklen_t *length)
{
    note("getsockname", fd, *length);
    sockaddr_ll link = script().bound.value_or(sockaddr_ll{});
    link.sll_hatype = 1;
    link.sll_pkttype = 4;
    link.sll_halen = script().addressLength;
    std::memcpy(link.sll_addr, gateway::ownMac, sizeof(link.sll_addr));
    std::memcpy(address, &link, std::min<std::size_t>(*length, sizeof(link)));
    return gateway::failUnless(script().named, 0, EBADF);
}

ssize_t __wrap_sendto(int fd, const void *data, size_t size, int flags, const sockaddr *address,
                      socklen_t length)
{
    note("sendto", fd, size, flags, length);
    gateway::Script &now = script();
    const auto *bytes = static_cast<const std::uint8_t *>(data);
    now.requests.emplace_back(bytes, bytes + size);
    now.destinations.push_back(gateway::linkAddress(address, length));
    now.current = now.attempts.at(0);
    now.attempts.pop_front();
    return gateway::failUnless(now.current.sent >= 0, now.current.sent, ENETDOWN);
}

int __wrap_select(int end, fd_set *read, fd_set *write, fd_set *except, timeval *time)
{
    const bool awaited = FD_ISSET(gateway::descriptor, read);
    note("select", end, time->tv_sec, time->tv_usec, write == nullptr, except == nullptr, awaited);
    FD_ZERO(read);
    if (script().current.isSet) {
        FD_SET(gateway::descriptor, read);
    }
    return gateway::failUnless(script().current.ready >= 0, script().current.ready, EINTR);
}

ssize_t __wrap_recvfrom(int fd, void *buffer, size_t size, int flags, sockaddr *address,
                        socklen_t *length)
{
    note("recvfrom", fd, size, flags, *length);
    const gateway::Bytes &packet = script().current.packet;
    std::memset(address, 0, *length);
    std::copy_n(packet.begin(), std::min(size, packet.size()), static_cast<std::uint8_t *>(buffer));
    return gateway::failUnless(!script().current.fails, static_cast<int>(packet.size()), ENETDOWN);
}

int __wrap_close(int fd)
{
    if (fd != gateway::descriptor) {
        return __real_close(fd);
    }
    note("close", fd);
    return 0;
}

} // extern "C"
