// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/supervisor.hpp"

#include <array>
#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

#include "common/descriptor.hpp"
#include "support.hpp"

namespace {

using bmc::test::Environment;
using bmc::test::TemporaryDirectory;

/* A supervisor's socket; a zero byte begins an abstract name. */
bmc::Descriptor listening(const std::string &name)
{
    bmc::Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.data(), name.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    EXPECT_EQ(0, bind(socket.get(), reinterpret_cast<const sockaddr *>(&address), length));
    return socket;
}

std::string received(const bmc::Descriptor &socket)
{
    std::array<char, 64> text{};
    const ssize_t length = recv(socket.get(), text.data(), text.size(), 0);
    return {text.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

TEST(Supervisor, IsToldAtEitherKindOfAddress)
{
    const TemporaryDirectory directory;
    const std::string path = directory.path() / "notify";
    const auto named = listening(path);
    const auto abstract = listening(std::string(1, '\0') + "bmc-test-notify");

    {
        const Environment variable("NOTIFY_SOCKET", path);
        bmc::tellSupervisorReady();
    }
    EXPECT_EQ("READY=1", received(named));
    {
        const Environment variable("NOTIFY_SOCKET", "@bmc-test-notify");
        bmc::tellSupervisorReady();
    }
    EXPECT_EQ("READY=1", received(abstract));
}

TEST(Supervisor, IsNotMissed)
{
    for (const std::string &address :
         {std::string(), std::string("/nowhere/notify"), std::string(200, 'x')}) {
        const Environment variable("NOTIFY_SOCKET", address);
        EXPECT_NO_FATAL_FAILURE(bmc::tellSupervisorReady());
    }
}

} // namespace
