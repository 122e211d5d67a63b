// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwmanagerd: the network manager. */
#include <memory>

#include "common/files.hpp"
#include "common/instance_lock.hpp"
#include "common/program.hpp"
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
    "  --version     show the version\n";

constexpr Option options[] = {{"init", true}, {"force", false}};
constexpr Program program{"nwmanagerd", NW_VERSION, usage, options};

void initialise(const std::string &path, bool isForced)
{
    const std::string document = readFile(path, settings::documentMax);
    const InstanceLock lock(program.name);
    try {
        manager::writeFirstConfiguration(document, isForced);
    } catch (const settings::DocumentError &error) {
        throw std::runtime_error(path + ": " + error.what());
    }
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
    const InstanceLock lock(program.name);
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

void run(const Given &given)
{
    const auto file = given.find("init");
    const bool isForced = given.contains("force");
    if (file != given.end()) {
        initialise(file->second, isForced);
    } else if (isForced) {
        throw WrongUsage();
    } else {
        serve();
    }
}

} // namespace

int main(int count, char **arguments)
{
    return bmc::runProgram(program, count, arguments, run);
}
