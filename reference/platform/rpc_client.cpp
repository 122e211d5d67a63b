/* RPC calls over D-Bus.
 *
 * Each call has a connection of its own, so that threads and forked children never share one and
 * nothing is left open behind it. */
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "bmc_platform.h"
#include "bus_probe.hpp"
#include "deadline.hpp"
#include "failure.hpp"
#include "network_mng/rpc.h"
#include "rpc_protocol.hpp"

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

/* The connection that owns the name now. A call to it cannot start a service that is not there,
 * nor reach another that takes the name over. */
std::string ownerOf(const std::string &name, sdbus::IConnection &bus, const Deadline &deadline)
{
    const auto proxy = sdbus::createProxy(bus, busService, busObject);
    auto query = proxy->createMethodCall(busService, "GetNameOwner");
    query << name;

    auto reply = proxy->callMethod(query, deadline.remaining());
    std::string owner;
    reply >> owner;
    return owner;
}

/* The bytes of a reply "ay"; one more than a full response is enough to know it is none. */
Bytes readBytes(sdbus::MethodReply &reply)
{
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
    std::string type;
    std::string contents;
    reply.peekType(type, contents);
    if (!type.empty() && type[0] != '\0') {
        throw Failure(EPROTO, "the answer has more than one part");
    }
    return bytes;
}

Bytes exchange(const std::string &name, std::uint32_t function,
               std::span<const std::uint8_t> request, const Deadline &deadline)
{
    bmc::probeBus(deadline);
    const auto bus = sdbus::createSystemBusConnection();
    const auto proxy =
        sdbus::createProxy(*bus, ownerOf(name, *bus, deadline), bmc::rpc::objectPath);

    auto call = proxy->createMethodCall(bmc::rpc::interfaceName, bmc::rpc::callMethod);
    call << function << Bytes(request.begin(), request.end());
    auto reply = proxy->callMethod(call, deadline.remaining());
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
