// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rpc/bus_probe.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "common/descriptor.hpp"
#include "common/state_directory.hpp"

namespace bmc::rpc {

namespace {

constexpr const char *defaultAddress = "unix:path=/run/dbus/system_bus_socket";
constexpr std::string_view pathForm = "unix:path=";
constexpr std::string_view abstractForm = "unix:abstract=";

/* Credentials byte and a request for the list of authentication methods; it is always answered. */
constexpr std::string_view question{"\0AUTH\r\n", 7};

struct Address {
    sockaddr_un socket{};
    socklen_t length = 0;
};

/* The socket of an address that is a single "unix:path=" or "unix:abstract=" without escapes. */
std::optional<Address> socketOf(std::string_view text)
{
    const bool abstract = text.starts_with(abstractForm);
    if (!abstract && !text.starts_with(pathForm)) {
        return std::nullopt;
    }
    text.remove_prefix(abstract ? abstractForm.size() : pathForm.size());
    text = text.substr(0, text.find(",guid="));

    Address address;
    const std::size_t start = abstract ? 1 : 0; /* an abstract name follows a zero byte */
    if (text.find_first_of(",;%") != text.npos ||
        start + text.size() >= sizeof(address.socket.sun_path)) {
        return std::nullopt;
    }
    address.socket.sun_family = AF_UNIX;
    std::copy(text.begin(), text.end(), address.socket.sun_path + start);
    address.length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + start + text.size() + !abstract);
    return address;
}

[[noreturn]] void fail(int error)
{
    throw std::system_error(error, std::generic_category(), "message bus");
}

void connectTo(const Descriptor &socket, const Address &address, const Deadline &deadline)
{
    constexpr std::chrono::microseconds pause{1000};
    while (connect(socket.get(), reinterpret_cast<const sockaddr *>(&address.socket),
                   address.length) != 0) {
        /* EAGAIN: the bus has more visitors waiting than it may. */
        if (errno != EAGAIN && errno != EINTR) {
            fail(errno);
        }
        std::this_thread::sleep_for(std::min(pause, deadline.remaining()));
    }
}

void awaitAnswer(const Descriptor &socket, const Deadline &deadline)
{
    pollfd waiting{socket.get(), POLLIN, 0};
    int ready = 0;
    while (ready == 0) {
        const timespec timeout = timespecOf(deadline.remaining());
        ready = ppoll(&waiting, 1, &timeout, nullptr);
        if (ready < 0 && errno == EINTR) {
            ready = 0;
        }
    }
    char byte = 0;
    if (ready < 0 || recv(socket.get(), &byte, 1, 0) != 1) {
        fail(ready < 0 ? errno : ECONNRESET);
    }
}

} // namespace

void probeBus(const Deadline &deadline)
{
    const auto address = socketOf(environmentOr("DBUS_SYSTEM_BUS_ADDRESS", defaultAddress));
    if (!address) {
        return;
    }

    const Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket) {
        fail(errno);
    }
    connectTo(socket, *address, deadline);
    if (send(socket.get(), question.data(), question.size(), MSG_NOSIGNAL) < 0) {
        fail(errno);
    }
    awaitAnswer(socket, deadline);
}

} // namespace bmc::rpc
