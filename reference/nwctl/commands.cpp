#include "commands.hpp"

namespace nwctl {

namespace {

constexpr Group groupRows[] = {
    {"lan", "LAN settings of the management ports"},
    {"check", "Check a text with the rules that a setting must obey"},
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
    return rows;
}

} // namespace nwctl
