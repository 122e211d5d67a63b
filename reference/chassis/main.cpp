// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwchassisd: the chassis manager, or the IPMI service's sink. */
#include "chassis/chassis.hpp"
#include "chassis/ipmi_sink.hpp"
#include "common/instance_lock.hpp"
#include "common/program.hpp"
#include "network_mng/rpc.h"

namespace {

using namespace bmc;

constexpr const char *usage =
    "Usage: nwchassisd [--ipmi]\n"
    "\n"
    "Stands for the chassis manager: keeps what it is sent over the system bus and publishes\n"
    "temperatures, fan data and its link state, until SIGTERM or SIGINT.\n"
    "\n"
    "  --ipmi      stand for the IPMI service instead and record its requests\n"
    "  --help      show this text\n"
    "  --version   show the version\n";

constexpr Option options[] = {{"ipmi", false}};

void serveChassis()
{
    const InstanceLock lock("nwchassisd");
    rpc::Server server(NW_RPC_SERVICE_CHASSIS);
    server.claim();
    chassis::Chassis chassis;
    server.handle(NW_RPC_FUNCTION_CHASSIS,
                  [&chassis](rpc::Request request) { return chassis.answerStatus(request); });
    server.handle(NW_RPC_FUNCTION_BLADE_CONFIG,
                  [&chassis](rpc::Request request) { return chassis.answerBladeConfig(request); });
    server.serve();
}

void serveIpmi()
{
    const InstanceLock lock("nwchassisd-ipmi");
    rpc::Server server(NW_RPC_SERVICE_IPMI);
    server.claim();
    chassis::IpmiSink sink;
    server.handle(NW_RPC_FUNCTION_IPMI,
                  [&sink](rpc::Request request) { return sink.answer(request); });
    server.serve();
}

} // namespace

int main(int count, char **arguments)
{
    return bmc::runProgram(
        {"nwchassisd", NW_VERSION, usage, options}, count, arguments,
        [](const Given &given) { given.contains("ipmi") ? serveIpmi() : serveChassis(); });
}
