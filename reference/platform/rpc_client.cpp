// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* RPC calls over D-Bus.
 *
 * Each call has a connection of its own, so that threads and forked children never share one and
 * nothing is left open behind it. */
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <poll.h>
#include <sdbus-c++/sdbus-c++.h>

#include "bmc_platform.h"
#include "common/deadline.hpp"
#include "network_mng/rpc.h"
#include "platform/failure.hpp"
#include "rpc/bus_probe.hpp"
#include "rpc/rpc_protocol.hpp"

namespace {

using bmc::Deadline;
using bmc::Failure;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t requestLimit = 1U << 20;

constexpr const char *busService = "org.freedesktop.DBus";
constexpr const char *busObject = "/org/freedesktop/DBus";

/* A message and the response that it refers to, in one piece. */
struct Answer {
    MRPC_MSG message{};
    std::array<std::uint8_t, sizeof(NW_RPC_RESPONSE_S)> response{};
};
static_assert(offsetof(Answer, message) == 0);

/* Connects to the bus. A signal may interrupt that, and it is begun anew. */
std::unique_ptr<sdbus::IConnection> connect(const Deadline &deadline)
{
    bmc::rpc::probeBus(deadline);
    while (true) {
        try {
            return sdbus::createSystemBusConnection();
        } catch (const sdbus::Error &error) {
            if (error.getName() != "System.Error.EINTR") {
                throw;
            }
            deadline.remaining();
        }
    }
}

/* Waits until the bus has something to be processed, or a signal arrives. */
void waitFor(const sdbus::IConnection &bus, const Deadline &deadline)
{
    const auto wanted = bus.getEventLoopPollData();
    const std::chrono::microseconds left = deadline.remaining();
    pollfd waiting{wanted.fd, wanted.events, 0};
    const timespec timeout =
        bmc::timespecOf(std::min(left, wanted.getRelativeTimeout().value_or(left)));
    ppoll(&waiting, 1, &timeout, nullptr);
}

/* Calls a method and processes the connection here until the answer has come, since a signal would
 * end a blocking call and lose its answer. */
sdbus::MethodReply callMethod(sdbus::IConnection &bus, sdbus::IProxy &proxy,
                              const sdbus::MethodCall &call, const Deadline &deadline)
{
    std::optional<sdbus::MethodReply> reply;
    std::optional<sdbus::Error> refusal;
    proxy.callMethod(
        call,
        [&](sdbus::MethodReply &answer, const sdbus::Error *error) {
            error != nullptr ? void(refusal.emplace(*error)) : void(reply.emplace(answer));
        },
        deadline.remaining());

    while (!reply && !refusal) {
        if (!bus.processPendingRequest()) {
            waitFor(bus, deadline);
        }
    }
    if (refusal) {
        throw *refusal;
    }
    return *reply;
}

/* The connection that owns the name now. A call to it cannot start a service that is not there,
 * nor reach another that takes the name over. */
std::string ownerOf(const std::string &name, sdbus::IConnection &bus, const Deadline &deadline)
{
    const auto proxy = sdbus::createProxy(bus, busService, busObject);
    auto query = proxy->createMethodCall(busService, "GetNameOwner");
    query << name;

    auto reply = callMethod(bus, *proxy, query, deadline);
    std::string owner;
    reply >> owner;
    return owner;
}

/* Type of the reply's next part; empty behind the last. */
std::string nextType(const sdbus::MethodReply &reply)
{
    std::string type;
    std::string contents;
    reply.peekType(type, contents);
    return type == std::string(1, '\0') ? std::string() : type + contents;
}

/* The bytes of a reply "ay"; one more than a full response is enough to know it is none. */
Bytes readBytes(sdbus::MethodReply &reply)
{
    if (nextType(reply) != "ay") {
        throw Failure(EPROTO, "the answer is not bytes");
    }
    Bytes bytes;
    std::uint8_t byte = 0;
    reply.enterContainer("y");
    while (bytes.size() <= sizeof(NW_RPC_RESPONSE_S) && reply >> byte) {
        bytes.push_back(byte);
    }
    if (!bytes.empty() && bytes.size() != sizeof(NW_RPC_RESPONSE_S)) {
        throw Failure(EPROTO, "the answer has neither no bytes nor those of a full response");
    }

    reply.clearFlags();
    reply.exitContainer();
    if (!nextType(reply).empty()) {
        throw Failure(EPROTO, "the answer has more than one part");
    }
    return bytes;
}

Bytes exchange(const std::string &name, std::uint32_t function,
               std::span<const std::uint8_t> request, const Deadline &deadline)
{
    const auto bus = connect(deadline);
    const auto proxy =
        sdbus::createProxy(*bus, ownerOf(name, *bus, deadline), bmc::rpc::objectPath);

    auto call = proxy->createMethodCall(bmc::rpc::interfaceName, bmc::rpc::callMethod);
    call << function << Bytes(request.begin(), request.end());
    auto reply = callMethod(*bus, *proxy, call, deadline);
    return readBytes(reply);
}

MRPC_MSG *messageOf(const Bytes &bytes)
{
    auto answer = std::make_unique<Answer>();
    if (!bytes.empty()) {
        std::copy(bytes.begin(), bytes.end(), answer->response.begin());
        answer->message.pData = answer->response.data();
    }
    return &answer.release()->message;
}

/* Names the service in whatever goes wrong with it. */
template <typename Call>
auto describing(const std::string &name, Call &&call)
{
    try {
        return call();
    } catch (const Failure &failure) {
        throw Failure(failure, name + ": " + failure.what());
    } catch (const std::system_error &error) {
        throw Failure(error.code().value(), name + ": " + error.what());
    } catch (const sdbus::Error &error) {
        throw Failure(ECOMM, name + ": " + error.getMessage());
    }
}

} // namespace

int MRPC_Call(uint32_t uiService, uint32_t uiFunction, uint32_t uiLength, const void *pRequest,
              uint32_t uiTimeoutMs, MRPC_MSG **ppstMessage)
{
    return bmc::guarded([&] {
        bmc::require(ppstMessage != nullptr, "RPC: null argument");
        *ppstMessage = nullptr;
        bmc::require(pRequest != nullptr || uiLength == 0, "RPC: null request");
        bmc::require(uiLength <= requestLimit, "RPC: absurd request length");

        const std::span request(static_cast<const std::uint8_t *>(pRequest), uiLength);
        const Deadline deadline{std::chrono::milliseconds(std::max(uiTimeoutMs, 1U))};
        const std::string name = bmc::rpc::busName(uiService);
        *ppstMessage = messageOf(
            describing(name, [&] { return exchange(name, uiFunction, request, deadline); }));
    });
}

void MRPC_MsgFree(MRPC_MSG **ppstMessage)
{
    if (ppstMessage != nullptr) {
        delete reinterpret_cast<Answer *>(*ppstMessage);
        *ppstMessage = nullptr;
    }
}
