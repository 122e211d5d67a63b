// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "hostname": the host name and the BMC name. */
#include <algorithm>

#include "command_kinds.hpp"
#include "facts.hpp"
#include "network_mng/settings.h"
#include "stored.hpp"
#include "text.hpp"
#include "verdict.hpp"

namespace nwctl {

namespace {

enum SetBit : std::uint8_t { modeBit = 0x01, hostNameBit = 0x02, bmcNameBit = 0x04 };

constexpr Word modeWords[] = {{"manual", 0}, {"auto", 1}};
constexpr std::size_t nameMax = 63; /* of a label */

struct HostNameChange {
    std::uint8_t bits = 0;
    NW_HOSTNAME_CONF_S fields{}; /* byte 4 is the mode, the tail the BMC name */
};

void setMode(const GivenOption &given, HostNameChange &change)
{
    change.fields.ucByte4 = wordValue(given, modeWords);
    mark(given, change.bits, modeBit);
}

/* The name where it fits. */
template <std::size_t size>
void setName(const GivenOption &given, HostNameChange &change, std::uint8_t bit,
             char (&field)[size])
{
    static_assert(size > nameMax);
    if (given.value.empty()) {
        misused(given, "expected a name");
    }
    if (given.value.size() > nameMax) {
        refuseFor(given, "longer than " + std::to_string(nameMax) + " characters");
    }
    refuseFor(given, whyNotText("host", given.value));
    mark(given, change.bits, bit);
    std::ranges::copy(given.value, field);
}

void setHostName(const GivenOption &given, HostNameChange &change)
{
    setName(given, change, hostNameBit, change.fields.acHostName);
    change.fields.ucLength = static_cast<std::uint8_t>(given.value.size());
}

void setBmcName(const GivenOption &given, HostNameChange &change)
{
    setName(given, change, bmcNameBit, change.fields.acTail);
}

/* clang-format off */
constexpr Option<HostNameChange> rows[] = {
    {"--mode",     "manual|auto", "who gives the host name",              Subject::none, setMode},
    {"--name",     "NAME",        "host name: letters, digits, hyphens",  Subject::none, setHostName},
    {"--bmc-name", "NAME",        "BMC name: letters, digits, hyphens",   Subject::none, setBmcName},
};
/* clang-format on */

Sending check(const HostNameChange &change, const Given &given)
{
    Sending sending;
    sending.what = "host name settings";
    sending.commands = {NW_CMD_SET_HOSTNAME};
    sending.module = NW_LOG_HOSTNAME;
    sending.settings = given;
    sending.send = [change](NW_OPER_LOG_S &log) {
        return LIB_NW_SetHostName(change.bits, &change.fields, &log);
    };
    return sending;
}

void show(Session &session)
{
    NW_HOSTNAME_DB_INFO_S record{};
    requireRead(LIB_NW_GetHostName(&record), "the host name");

    const bool manual = record.ucHostNameMode == 0;
    printFacts(session, {{"Mode", "mode", manual ? "manual" : "auto"},
                         {"Host name", "name", textOrNull(boundedText(record.szBmcHostName))},
                         {"BMC name", "bmcName", textOrNull(boundedText(record.szBmcName))}});
}

} // namespace

void addHostNameCommands(std::vector<Command> &commands)
{
    commands.push_back(plainCommand(
        {"hostname", "show", "Show the host name and the BMC name", "hostname show"}, show));
    commands.push_back(changeCommand<HostNameChange>(
        {"hostname", "set", "Change the host name, its mode or the BMC name",
         "hostname set --mode manual --name bmc-1"},
        rows, check));
}

} // namespace nwctl
