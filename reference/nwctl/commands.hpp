/* The commands as rows. */
#pragma once

#include <CLI/CLI.hpp>
#include <span>
#include <string>

#include "session.hpp"

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

inline constexpr const char *portDescription = "Port: eth0, eth1, bond0 or its index 0, 1, 2";

std::span<const Group> groups();
std::vector<Command> commands();

/* The commands of one subject each. */
void addLanCommands(std::vector<Command> &commands);
void addCheckCommands(std::vector<Command> &commands);
void addRouteCheckCommand(std::vector<Command> &commands);
void addDiscoveryCommands(std::vector<Command> &commands);
void addNameCommand(std::vector<Command> &commands);

} // namespace nwctl
