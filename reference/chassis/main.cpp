// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwchassisd: the chassis manager, or the IPMI service's sink. */
#include <cstring>
#include <functional>
#include <iostream>
#include <span>

#include "chassis/chassis.hpp"
#include "chassis/ipmi_sink.hpp"
#include "common/instance_lock.hpp"
#include "common/print.hpp"
#include "common/standard_descriptors.hpp"
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
    "  --version   show the version\n"
    "\n"
    "Environment: BMC_STATE_DIR (/var/lib/bmc), DBUS_SYSTEM_BUS_ADDRESS, BMC_LOG_LEVEL (0 to 7),\n"
    "BMC_LOG_TARGET (stderr or journal).\n";

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

int serveChassis()
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
    return done;
}

int serveIpmi()
{
    const InstanceLock lock("nwchassisd-ipmi");
    rpc::Server server(NW_RPC_SERVICE_IPMI);
    server.claim();
    chassis::IpmiSink sink;
    server.handle(NW_RPC_FUNCTION_IPMI,
                  [&sink](rpc::Request request) { return sink.answer(request); });
    server.serve();
    return done;
}

int showUsage()
{
    return print("nwchassisd", usage);
}

int showVersion()
{
    return print("nwchassisd", "nwchassisd " NW_VERSION "\n");
}

int refuseUsage()
{
    std::cerr << "nwchassisd: see nwchassisd --help\n";
    return wrongUsage;
}

struct Mode {
    const char *option;
    int (*run)();
};

constexpr Mode modes[] = {
    {"--ipmi", serveIpmi},
    {"--help", showUsage},
    {"--version", showVersion},
};

auto modeOf(std::span<char *> arguments) -> int (*)()
{
    if (arguments.empty()) {
        return serveChassis;
    }
    for (const Mode &mode : modes) {
        if (arguments.size() == 1 && std::strcmp(arguments[0], mode.option) == 0) {
            return mode.run;
        }
    }
    return refuseUsage;
}

} // namespace

int main(int count, char **arguments)
{
    bmc::occupyStandardDescriptors();
    try {
        return modeOf({arguments + 1, arguments + count})();
    } catch (const std::exception &error) {
        std::cerr << "nwchassisd: " << error.what() << '\n';
        return failed;
    }
}
