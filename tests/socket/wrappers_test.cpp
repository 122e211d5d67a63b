// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The socket wrappers: null arguments, and the system call's own result and errno.
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/un.h>
#include <unistd.h>

#include "files.hpp"
#include "guarded.hpp"
#include "network_mng/socket.h"
#include "null_checks.hpp"

namespace {

constexpr const char *unit = "libsocket_util";

/* ---- Null arguments ---- */

sockaddr_un anyAddress{};
socklen_t anyLength = sizeof(anyAddress);
std::array<char, 8> anyBuffer{};

sockaddr *address()
{
    return static_cast<sockaddr *>(static_cast<void *>(&anyAddress));
}
void *buffer()
{
    return anyBuffer.data();
}
std::uint32_t asResult(int result)
{
    return static_cast<std::uint32_t>(result);
}

fake::NullRow row(const std::string &name, const std::string &function,
                  const std::string &parameter, std::function<std::uint32_t()> call)
{
    return {name, function, parameter, std::move(call), fake::nullPointerResult, unit};
}

class SocketNull : public fake::NullArgument {};
TEST_P(SocketNull, IsLoggedAndAnswered)
{
    expectNullCheck();
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, SocketNull, ::testing::Values(
    row("Bind",            "LIB_NW_Bind",     "pstSockSrc", [] { return asResult(LIB_NW_Bind(-1, nullptr, 0)); }),
    row("Connect",         "LIB_NW_Connect",  "pstDst",     [] { return asResult(LIB_NW_Connect(-1, nullptr, 0)); }),
    row("Send",            "LIB_NW_Send",     "pcSendBuf",  [] { return asResult(LIB_NW_Send(-1, nullptr, 0, 0)); }),
    row("Recv",            "LIB_NW_Recv",     "pRecvbuf",   [] { return asResult(LIB_NW_Recv(-1, nullptr, 0, 0)); }),
    row("SendtoBuffer",    "LIB_NW_Sendto",   "pSendBuf",   [] { return asResult(LIB_NW_Sendto(-1, nullptr, 0, 0, address(), 0)); }),
    row("SendtoAddress",   "LIB_NW_Sendto",   "pstDst",     [] { return asResult(LIB_NW_Sendto(-1, buffer(), 1, 0, nullptr, 0)); }),
    row("SendtoBoth",      "LIB_NW_Sendto",   "pSendBuf",   [] { return asResult(LIB_NW_Sendto(-1, nullptr, 0, 0, nullptr, 0)); }),
    row("RecvFromBuffer",  "LIB_NW_RecvFrom", "pRecvbuf",   [] { return asResult(LIB_NW_RecvFrom(-1, nullptr, 0, 0, address(), &anyLength)); }),
    row("RecvFromAddress", "LIB_NW_RecvFrom", "pstSrc",     [] { return asResult(LIB_NW_RecvFrom(-1, buffer(), 1, 0, nullptr, &anyLength)); }),
    row("RecvFromLength",  "LIB_NW_RecvFrom", "puiSrcLen",  [] { return asResult(LIB_NW_RecvFrom(-1, buffer(), 1, 0, address(), nullptr)); }),
    row("RecvFromLastTwo", "LIB_NW_RecvFrom", "pstSrc",     [] { return asResult(LIB_NW_RecvFrom(-1, buffer(), 1, 0, nullptr, nullptr)); }),
    row("RecvFromAll",     "LIB_NW_RecvFrom", "pRecvbuf",   [] { return asResult(LIB_NW_RecvFrom(-1, nullptr, 0, 0, nullptr, nullptr)); }),
    row("GetSocketName",   "LIB_NW_GetSocketName", "pstSockSrc", [] { return LIB_NW_GetSocketName(-1, nullptr, &anyLength); }),
    row("GetSocketNameBoth", "LIB_NW_GetSocketName", "pstSockSrc", [] { return LIB_NW_GetSocketName(-1, nullptr, nullptr); })),
    fake::RowName{});
/* clang-format on */

// A caller that tests for -1 alone does not notice it.
TEST(SocketNullResult, IsASignedNumberOtherThanMinusOne)
{
    fake::platform().reset();
    EXPECT_EQ(LIB_NW_Send(-1, nullptr, 0, 0), -2130706430);
}

/* ---- Failing system calls ---- */

struct Failure {
    std::string name;
    std::function<int(int)> call; // on the descriptor
    int descriptor;
    int error;
};
using SocketFailure = fake::FakePlatformRows<Failure>;

TEST_P(SocketFailure, IsTheSystemCalls)
{
    errno = 0;
    EXPECT_EQ(GetParam().call(GetParam().descriptor), -1);
    EXPECT_EQ(errno, GetParam().error);
    EXPECT_TRUE(lines().empty());
}

int bindTo(int fd)
{
    return LIB_NW_Bind(fd, address(), sizeof(anyAddress));
}
int connectTo(int fd)
{
    return LIB_NW_Connect(fd, address(), sizeof(anyAddress));
}
int sendBytes(int fd)
{
    return LIB_NW_Send(fd, buffer(), 1, 0);
}
int receive(int fd)
{
    return LIB_NW_Recv(fd, buffer(), 1, 0);
}
int sendBytesTo(int fd)
{
    return LIB_NW_Sendto(fd, buffer(), 1, 0, address(), sizeof(anyAddress));
}
int receiveFrom(int fd)
{
    return LIB_NW_RecvFrom(fd, buffer(), 1, 0, address(), &anyLength);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(NoDescriptor, SocketFailure, ::testing::Values(
    Failure{"Bind",     bindTo,      -1, EBADF},
    Failure{"Connect",  connectTo,   -1, EBADF},
    Failure{"Send",     sendBytes,   -1, EBADF},
    Failure{"Recv",     receive,     -1, EBADF},
    Failure{"Sendto",   sendBytesTo, -1, EBADF},
    Failure{"RecvFrom", receiveFrom, -1, EBADF}), fake::RowName{});

INSTANTIATE_TEST_SUITE_P(NoSocket, SocketFailure, ::testing::Values(
    Failure{"Bind",     bindTo,      STDERR_FILENO, ENOTSOCK},
    Failure{"RecvFrom", receiveFrom, STDERR_FILENO, ENOTSOCK}), fake::RowName{});
/* clang-format on */

/* ---- Working system calls ---- */

class Socket {
public:
    explicit Socket(int type = SOCK_DGRAM) : fd_(socket(AF_INET, type | SOCK_CLOEXEC, 0))
    {
        if (fd_ < 0) {
            throw std::runtime_error("no socket");
        }
    }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;
    ~Socket()
    {
        close(fd_);
    }
    operator int() const
    {
        return fd_;
    }

private:
    int fd_;
};

// An IPv4 address of loopback in a form that the wrappers take.
struct Loopback {
    sockaddr_in in{};
    socklen_t length = sizeof(in);

    explicit Loopback(in_port_t port = 0)
    {
        in.sin_family = AF_INET;
        in.sin_port = port;
        in.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    }
    sockaddr *get()
    {
        return static_cast<sockaddr *>(static_cast<void *>(&in));
    }
};

class SocketPair : public fake::FakePlatformTest {
protected:
    SocketPair()
    {
        EXPECT_EQ(LIB_NW_Bind(receiver, there.get(), there.length), 0);
        EXPECT_EQ(LIB_NW_GetSocketName(receiver, there.get(), &there.length), 0U);
    }

    const Socket receiver;
    const Socket sender;
    Loopback there;
};

TEST_F(SocketPair, NameIsTheBoundAddress)
{
    sockaddr_in plain{};
    socklen_t length = sizeof(plain);
    ASSERT_EQ(getsockname(receiver, static_cast<sockaddr *>(static_cast<void *>(&plain)), &length),
              0);
    EXPECT_NE(there.in.sin_port, 0);
    EXPECT_EQ(there.in.sin_port, plain.sin_port);
    EXPECT_EQ(there.in.sin_addr.s_addr, htonl(INADDR_LOOPBACK));
    EXPECT_EQ(there.length, sizeof(sockaddr_in));
    EXPECT_TRUE(lines().empty());
}

TEST_F(SocketPair, SendtoAndRecvFromCarryBytesAndAddress)
{
    Loopback from;
    from.length = sizeof(from.in);
    const support::Guarded received(8, 0xEE);
    EXPECT_EQ(LIB_NW_Sendto(sender, "abcde", 5, 0, there.get(), there.length), 5);
    EXPECT_EQ(LIB_NW_RecvFrom(receiver, received.data(), 8, 0, from.get(), &from.length), 5);
    EXPECT_EQ(std::memcmp(received.data(), "abcde\xEE\xEE\xEE", 8), 0);

    Loopback own;
    EXPECT_EQ(LIB_NW_GetSocketName(sender, own.get(), &own.length), 0U);
    EXPECT_EQ(from.in.sin_port, own.in.sin_port);
    EXPECT_EQ(from.length, sizeof(sockaddr_in));
    EXPECT_TRUE(lines().empty());
}

TEST_F(SocketPair, SendAndRecvFollowConnect)
{
    const support::Guarded received(4);
    EXPECT_EQ(LIB_NW_Connect(sender, there.get(), there.length), 0);
    EXPECT_EQ(LIB_NW_Send(sender, "abcdef", 6, 0), 6);
    EXPECT_EQ(LIB_NW_Recv(receiver, received.data(), 2, MSG_PEEK), 2);
    EXPECT_EQ(LIB_NW_Recv(receiver, received.data(), 4, MSG_TRUNC), 6);
    EXPECT_EQ(std::memcmp(received.data(), "abcd", 4), 0);
    EXPECT_TRUE(lines().empty());
}

TEST_F(SocketPair, FlagsAndErrnoPassThrough)
{
    EXPECT_EQ(LIB_NW_Recv(receiver, anyBuffer.data(), 1, MSG_DONTWAIT), -1);
    EXPECT_EQ(errno, EAGAIN);
    Loopback from;
    EXPECT_EQ(
        LIB_NW_RecvFrom(receiver, anyBuffer.data(), 1, MSG_DONTWAIT, from.get(), &from.length), -1);
    EXPECT_EQ(errno, EAGAIN);
    EXPECT_EQ(LIB_NW_Bind(sender, there.get(), there.length), -1);
    EXPECT_EQ(errno, EADDRINUSE);

    const Socket stream(SOCK_STREAM);
    Loopback nobody(there.in.sin_port);
    EXPECT_EQ(LIB_NW_Connect(stream, nobody.get(), nobody.length), -1);
    EXPECT_EQ(errno, ECONNREFUSED);
    EXPECT_TRUE(lines().empty());
}

class SocketName : public fake::FakePlatformTest {};

TEST_F(SocketName, FailureIsLogged)
{
    Loopback name;
    EXPECT_EQ(LIB_NW_GetSocketName(-1, name.get(), &name.length), 0x81000001U);
    EXPECT_EQ(LIB_NW_GetSocketName(STDERR_FILENO, name.get(), &name.length), 0x81000001U);
    EXPECT_THAT(lines(),
                ::testing::ElementsAre(fake::isLine(unit, fake::error, "Failure in getsockname"),
                                       fake::isLine(unit, fake::error, "Failure in getsockname")));
}

// The length is not checked by the wrapper; the system call refuses it.
TEST_F(SocketName, NullLengthIsTheSystemCallsFailure)
{
    const Socket socket;
    Loopback name;
    EXPECT_EQ(LIB_NW_GetSocketName(socket, name.get(), nullptr), 0x81000001U);
    EXPECT_THAT(lines(),
                ::testing::ElementsAre(fake::isLine(unit, fake::error, "Failure in getsockname")));
}

} // namespace
