// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "lldp": the LLDP agent. */
#include "command_kinds.hpp"
#include "facts.hpp"
#include "network_mng/settings.h"
#include "stored.hpp"

namespace nwctl {

namespace {

enum SetBit : std::uint8_t { stateBit = 0x01, workModeBit = 0x02 };

constexpr Word workModeWords[] = {{"tx", 1}, {"rx", 2}, {"txrx", 3}};

struct LldpChange {
    NW_LLDP_SET_S request{};
    std::optional<std::uint8_t> receive; /* alone: the library makes the request */
};

void setState(const GivenOption &given, LldpChange &change)
{
    change.request.ucLldpEnable = wordValue(given, switchWords);
    mark(given, change.request.ucSetMask, stateBit);
}

void setWorkMode(const GivenOption &given, LldpChange &change)
{
    change.request.ucLldpWorkMode = wordValue(given, workModeWords);
    mark(given, change.request.ucSetMask, workModeBit);
}

/* Stands for state and work mode as they follow from the stored ones. */
void setReceive(const GivenOption &given, LldpChange &change)
{
    change.receive = wordValue(given, switchWords);
    mark(given, change.request.ucSetMask, stateBit | workModeBit);
}

/* clang-format off */
constexpr Option<LldpChange> rows[] = {
    {"--state",     "on|off",     "the LLDP agent",                               Subject::none, setState},
    {"--work-mode", "tx|rx|txrx", "whether it sends, receives or both",           Subject::none, setWorkMode},
    {"--receive",   "on|off",     "reception alone; what it sends stays as it is", Subject::none, setReceive},
};
/* clang-format on */

NW_LLDP_DB_INFO_S readLldp()
{
    NW_LLDP_DB_INFO_S record{};
    requireRead(LIB_NW_GetLLDP(&record), "the LLDP settings");
    return record;
}

Sending check(const LldpChange &change, const Given &given)
{
    Sending sending;
    sending.what = "LLDP settings";
    sending.commands = {NW_CMD_SET_LLDP};
    sending.module = NW_LOG_LLDP;
    sending.settings = given;
    if (change.receive) {
        readLldp(); /* the new settings depend on it */
    }
    sending.send = [change](NW_OPER_LOG_S &log) {
        return change.receive ? LIB_NW_LLDPRxEnable(*change.receive, &log)
                              : LIB_NW_SetLLDP(&change.request, &log);
    };
    return sending;
}

void show(Session &session)
{
    const NW_LLDP_DB_INFO_S record = readLldp();
    const unsigned mode = record.ucLldpWorkMode; /* 0: none was ever set */
    printFacts(session, {{"LLDP", "enabled", record.ucLldpEnable == 1},
                         {"Work mode", "workMode",
                          mode == 0 ? Json() : Json(wordName(workModeWords, mode))}});
}

} // namespace

void addLldpCommands(std::vector<Command> &commands)
{
    commands.push_back(plainCommand({"lldp", "show", "Show the LLDP settings", "lldp show"}, show));
    commands.push_back(changeCommand<LldpChange>(
        {"lldp", "set", "Change the LLDP settings", "lldp set --state on --work-mode txrx"}, rows,
        check));
}

} // namespace nwctl
