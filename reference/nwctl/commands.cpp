#include "commands.hpp"

namespace nwctl {

namespace {

constexpr Group groupRows[] = {
    {"lan", "LAN settings of the management ports"},
    {"check", "Check a text with the rules that a setting must obey"},
    {"chassis", "Status exchanged with the chassis manager"},
    {"lock", "The network lock"},
    {"queue", "Message queues between local processes"},
    {"heartbeat", "The platform's heartbeat queue"},
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
    addChassisCommands(rows);
    addLockCommands(rows);
    addQueueCommands(rows);
    addHeartbeatCommands(rows);
    return rows;
}

} // namespace nwctl
