// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/manager_client.hpp"

#include <chrono>

#include <sdbus-c++/sdbus-c++.h>

#include "network_mng/rpc.h"
#include "nwctl/failure.hpp"
#include "rpc/manager1.hpp"
#include "rpc/rpc_protocol.hpp"

namespace nwctl {

namespace {

/* A change waits for another one and for duplicate address detection. */
constexpr std::chrono::microseconds longest = std::chrono::minutes(1);

} // namespace

std::string askManager(const char *method, const std::string &document)
{
    namespace manager1 = bmc::rpc::manager1;
    try {
        const auto bus = sdbus::createSystemBusConnection();
        const auto proxy = sdbus::createProxy(*bus, bmc::rpc::busName(NW_RPC_SERVICE_NETWORK),
                                              manager1::objectPath);
        auto call = proxy->createMethodCall(manager1::interfaceName, method);
        call << document;
        auto reply = proxy->callMethod(call, longest.count());
        std::string answer;
        reply >> answer;
        return answer;
    } catch (const sdbus::Error &error) {
        throw Failure(Exit::transport, "", "",
                      "no answer from the network manager (" + error.getMessage() +
                          "); the change may still take effect",
                      NW_ERR_RPC_TRANSPORT);
    }
}

} // namespace nwctl
