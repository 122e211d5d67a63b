// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwmanagerd: the network manager. */
#include <csignal>
#include <iostream>
#include <memory>
#include <optional>

#include <getopt.h>

#include "common/files.hpp"
#include "common/instance_lock.hpp"
#include "common/print.hpp"
#include "common/standard_descriptors.hpp"
#include "common/state_directory.hpp"
#include "manager/log.hpp"
#include "manager/service/commands.hpp"
#include "manager/service/first_configuration.hpp"
#include "manager/service/manager1.hpp"
#include "network_mng/rpc.h"
#include "platform/records.hpp"
#include "settings/document.hpp"

namespace {

using namespace bmc;

constexpr const char *usage =
    "Usage: nwmanagerd\n"
    "       nwmanagerd --init FILE [--force]\n"
    "\n"
    "Applies the network configuration to the kernel and carries out the changes that arrive over\n"
    "the system bus, until SIGTERM or SIGINT.\n"
    "\n"
    "  --init FILE   write the first configuration into the database and exit\n"
    "  --force       with --init: replace the configuration that is there\n"
    "  --help        show this text\n"
    "  --version     show the version\n"
    "\n"
    "Environment: BMC_STATE_DIR (/var/lib/bmc), DBUS_SYSTEM_BUS_ADDRESS, BMC_LOG_LEVEL (0 to 7),\n"
    "BMC_LOG_TARGET (stderr or journal).\n";

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

struct Options {
    std::optional<std::string> initFile;
    bool isForced = false;
    bool isHelp = false;
    bool isVersion = false;
};

/* Nothing for wrong usage, after a message. */
std::optional<Options> parse(int count, char **arguments)
{
    static const option known[] = {{"init", required_argument, nullptr, 'i'},
                                   {"force", no_argument, nullptr, 'f'},
                                   {"help", no_argument, nullptr, 'h'},
                                   {"version", no_argument, nullptr, 'v'},
                                   {nullptr, 0, nullptr, 0}};
    Options options;
    for (int letter; (letter = getopt_long(count, arguments, "", known, nullptr)) != -1;) {
        switch (letter) {
        case 'i':
            options.initFile = optarg;
            break;
        case 'f':
            options.isForced = true;
            break;
        case 'h':
            options.isHelp = true;
            break;
        case 'v':
            options.isVersion = true;
            break;
        default:
            return std::nullopt;
        }
    }
    if (optind < count || (options.isForced && !options.initFile)) {
        std::cerr << "nwmanagerd: see nwmanagerd --help\n";
        return std::nullopt;
    }
    return options;
}

void initialise(const std::string &path, bool isForced)
{
    const std::string document = readFile(path, settings::documentMax);
    const InstanceLock lock("nwmanagerd");
    manager::writeFirstConfiguration(document, isForced);
}

void checkConfigured(const manager::Store &store)
{
    const Snapshot lastGood; /* if the database cannot be read */
    if (store.isVacant(manager::ifcStateRecord) || store.isVacant(manager::lanRecord)) {
        throw std::runtime_error("there is no configuration in " + stateDirectory().string() +
                                 "; run nwmanagerd --init FILE");
    }
}

/* Whoever comes second ends here; without a bus there is nobody else. */
void claim(rpc::Server &server)
{
    try {
        server.claim();
    } catch (const rpc::NoBus &error) {
        manager::log(Level::error, std::string(error.what()) +
                                       "; the stored configuration holds, the bus is waited for");
    }
}

void serve()
{
    const InstanceLock lock("nwmanagerd");
    const std::unique_ptr<manager::Machine> machine = manager::thisMachine();
    manager::Engine engine(*machine);
    checkConfigured(engine.store());

    rpc::Server server(NW_RPC_SERVICE_NETWORK);
    server.handle(NW_RPC_FUNCTION_NETWORK,
                  [&engine](rpc::Request request) { return manager::answer(engine, request); });
    server.offer([&engine](sdbus::IConnection &connection) {
        return manager::makeManager1(connection, engine);
    });
    server.whileIdle([&engine] { return engine.work(); });
    claim(server);
    engine.start();
    server.serve(rpc::WithoutBus::wait);
}

/* Runs a task; what it throws becomes a message. */
template <typename Task>
int run(const std::string &what, Task task)
{
    try {
        task();
        return done;
    } catch (const std::exception &error) {
        std::cerr << "nwmanagerd: " << what << error.what() << '\n';
        return failed;
    }
}

} // namespace

int main(int count, char **arguments)
{
    bmc::occupyStandardDescriptors();
    /* A reader of standard output or error that has gone is no reason to end. */
    std::signal(SIGPIPE, SIG_IGN);
    const std::optional<Options> options = parse(count, arguments);
    if (!options) {
        return wrongUsage;
    }
    if (options->isHelp) {
        return print("nwmanagerd", usage);
    }
    if (options->isVersion) {
        return print("nwmanagerd", "nwmanagerd " NW_VERSION "\n");
    }
    if (options->initFile) {
        return run(*options->initFile + ": ",
                   [&] { initialise(*options->initFile, options->isForced); });
    }
    return run("", serve);
}
