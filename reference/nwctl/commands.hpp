// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The commands as rows. */
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "session.hpp"

/* The command line's own library is large: only what declares arguments includes it. */
namespace CLI {
class App;
}

namespace nwctl {

/* Commands of one group stand beneath the group's name. */
struct Group {
    const char *name;
    const char *description;
};

struct Command {
    std::string group; /* empty: the command stands by itself */
    std::string name;
    std::string description;
    std::string example; /* a command line without the program's name */
    /* Declares the command's arguments and what is done with them; the session outlives the app. */
    std::function<void(CLI::App &app, Session &session)> declare;
};

std::span<const Group> groups();
std::vector<Command> commands();

/* The commands of one subject each. */
void addLanCommands(std::vector<Command> &commands);
void addCheckCommands(std::vector<Command> &commands);
void addHostNameCommands(std::vector<Command> &commands);
void addDnsCommands(std::vector<Command> &commands);
void addLldpCommands(std::vector<Command> &commands);
void addModeCommands(std::vector<Command> &commands);
void addVlanCommands(std::vector<Command> &commands);
void addArpCommands(std::vector<Command> &commands);
void addAnCommands(std::vector<Command> &commands);
void addNcsiCommands(std::vector<Command> &commands);
void addCombinedCommands(std::vector<Command> &commands);
void addStatusCommands(std::vector<Command> &commands);
void addRouteCheckCommand(std::vector<Command> &commands);
void addDiscoveryCommands(std::vector<Command> &commands);
void addNameCommand(std::vector<Command> &commands);
void addChassisCommands(std::vector<Command> &commands);
void addLockCommands(std::vector<Command> &commands);
void addQueueCommands(std::vector<Command> &commands);
void addHeartbeatCommands(std::vector<Command> &commands);

} // namespace nwctl
