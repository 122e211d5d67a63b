#include "commands.hpp"

namespace nwctl {

namespace {

constexpr Group groupRows[] = {
    {"lan", "LAN settings of the management ports"},
    {"check", "Check a text or a port's routes with the rules that settings obey"},
};

} // namespace

std::span<const Group> groups()
{
    return groupRows;
}

std::vector<Command> commands()
{
    std::vector<Command> rows;
    addLanCommands(rows);
    addCheckCommands(rows);
    addRouteCheckCommand(rows);
    addDiscoveryCommands(rows);
    addNameCommand(rows);
    return rows;
}

} // namespace nwctl
