// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/manager_client.hpp"

#include <algorithm>
#include <chrono>
#include <system_error>

#include <sdbus-c++/sdbus-c++.h>

#include "common/deadline.hpp"
#include "network_mng/rpc.h"
#include "nwctl/failure.hpp"
#include "rpc/bus_probe.hpp"
#include "rpc/manager1.hpp"
#include "rpc/rpc_protocol.hpp"

namespace nwctl {

namespace {

namespace manager1 = bmc::rpc::manager1;
using std::chrono::milliseconds;

/* A change waits for another one and for duplicate address detection. */
constexpr milliseconds longest = std::chrono::minutes(1);
/* The bus waits for nobody: it is stopped or overrun when it is not there in that time. */
constexpr milliseconds longestForBus{NW_RPC_TIMEOUT_MS};
/* A bus that denies a call does so at once. */
constexpr milliseconds moment = std::chrono::seconds(1);

/* Throws std::system_error without a bus, and sdbus::Error without an answer. */
std::string call(const char *method, const std::string &document, milliseconds limit)
{
    bmc::rpc::probeBus(bmc::Deadline(std::min(limit, longestForBus)));
    const auto bus = sdbus::createSystemBusConnection();
    const auto proxy =
        sdbus::createProxy(*bus, bmc::rpc::busName(NW_RPC_SERVICE_NETWORK), manager1::objectPath);
    auto request = proxy->createMethodCall(manager1::interfaceName, method);
    request << document;
    auto reply = proxy->callMethod(request, limit);
    std::string answer;
    reply >> answer;
    return answer;
}

bool isDenial(const sdbus::Error &error)
{
    return error.getName() == "org.freedesktop.DBus.Error.AccessDenied";
}

} // namespace

std::string askManager(const char *method, const std::string &document)
{
    try {
        return call(method, document, longest);
    } catch (const sdbus::Error &error) {
        throw Failure(Exit::transport, "", "",
                      isDenial(error)
                          ? deniedReason
                          : "no answer from the network manager (" + error.getMessage() +
                                "); the change may still take effect",
                      NW_ERR_RPC_TRANSPORT);
    } catch (const std::system_error &error) {
        throw Failure(Exit::transport, "", "",
                      "the message bus cannot be reached (" + error.code().message() +
                          "); nothing has changed",
                      NW_ERR_RPC_TRANSPORT);
    }
}

bool isDeniedByBus()
{
    try {
        call(manager1::checkMethod, "{}", moment);
    } catch (const sdbus::Error &error) {
        return isDenial(error);
    } catch (const std::system_error &) {
        return false;
    }
    return false;
}

} // namespace nwctl
