// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "failing_calls.hpp"

#include <cerrno>
#include <cstdarg>
#include <cstdlib>

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

nwtest::FailingCalls *calls()
{
    static nwtest::FailingCalls *const shared = [] {
        const char *path = std::getenv("FAILING_CALLS");
        const int file = path == nullptr ? -1 : open(path, O_RDWR | O_CLOEXEC);
        void *mapped = mmap(nullptr, sizeof(nwtest::FailingCalls), PROT_READ | PROT_WRITE,
                            MAP_SHARED, file, 0);
        close(file);
        return mapped == MAP_FAILED ? nullptr : static_cast<nwtest::FailingCalls *>(mapped);
    }();
    return shared;
}

bool isOf(int family, int descriptor)
{
    int domain = 0;
    socklen_t size = sizeof(domain);
    return getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &size) == 0 && domain == family;
}

/* Answers whether this call is to fail. */
bool fails(nwtest::Countdown nwtest::FailingCalls::*member)
{
    nwtest::FailingCalls *shared = calls();
    if (shared == nullptr || (shared->*member).left == 0) {
        return false;
    }
    nwtest::Countdown &countdown = shared->*member;
    if (countdown.left > 1) {
        countdown.left--;
        return false;
    }
    countdown.left = countdown.isForGood != 0 ? 1 : 0;
    shared->failed++;
    return true;
}

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/* The first two pages of the file. */
constexpr off_t metaEnd = 2 * 4096;

} // namespace

extern "C" [[gnu::visibility("default")]] ssize_t recvmsg(int descriptor, msghdr *message,
                                                          int flags)
{
    static const auto real = next<ssize_t (*)(int, msghdr *, int)>("recvmsg");
    if (isOf(AF_NETLINK, descriptor) && fails(&nwtest::FailingCalls::received)) {
        errno = ENOBUFS;
        return -1;
    }
    return real(descriptor, message, flags);
}

extern "C" [[gnu::visibility("default")]] ssize_t sendmsg(int descriptor, const msghdr *message,
                                                          int flags)
{
    static const auto real = next<ssize_t (*)(int, const msghdr *, int)>("sendmsg");
    if (isOf(AF_NETLINK, descriptor) && fails(&nwtest::FailingCalls::sent)) {
        errno = ENOBUFS;
        return -1;
    }
    return real(descriptor, message, flags);
}

extern "C" [[gnu::visibility("default")]] ssize_t sendto(int descriptor, const void *content,
                                                         size_t size, int flags, const sockaddr *to,
                                                         socklen_t toSize)
{
    static const auto real =
        next<ssize_t (*)(int, const void *, size_t, int, const sockaddr *, socklen_t)>("sendto");
    if (isOf(AF_PACKET, descriptor) && fails(&nwtest::FailingCalls::asked)) {
        errno = ENOBUFS;
        return -1;
    }
    return real(descriptor, content, size, flags, to, toSize);
}

extern "C" [[gnu::visibility("default")]] int ioctl(int descriptor, unsigned long request, ...)
{
    static const auto real = next<int (*)(int, unsigned long, ...)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (request == SIOCETHTOOL && isOf(AF_PACKET, descriptor) &&
        fails(&nwtest::FailingCalls::link)) {
        errno = ENOMEM;
        return -1;
    }
    return real(descriptor, request, argument);
}

extern "C" [[gnu::visibility("default")]] ssize_t pwrite(int descriptor, const void *content,
                                                         size_t size, off_t offset)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t, off_t)>("pwrite");
    if (offset < metaEnd && fails(&nwtest::FailingCalls::meta)) {
        errno = EIO;
        return -1;
    }
    return real(descriptor, content, size, offset);
}

extern "C" [[gnu::visibility("default")]] ssize_t pwrite64(int descriptor, const void *content,
                                                           size_t size, off_t offset)
{
    return pwrite(descriptor, content, size, offset);
}
