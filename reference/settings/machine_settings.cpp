// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Settings of the machine as a whole, and the link modes of its physical ports. */
#include "network_mng/settings.h"
#include "settings/detail/rows.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

constexpr Word modeWords[] = {{separateMode, NW_IFC_STATE_SEPARATE},
                              {bondedMode, NW_IFC_STATE_ADAPTIVE}};
constexpr Word hostNameModeWords[] = {{"manual", 0}, {"auto", 1}};
constexpr Word workModeWords[] = {{"tx", 1}, {"rx", 2}, {"txrx", 3}};
constexpr Word duplexWords[] = {{"half", 0}, {"full", 1}};
constexpr Word speedWords[] = {{"10", 0}, {"100", 1}, {"1000", 2}}; /* Mbit/s */

constexpr Place switchoverByte{switchoverAt, 1};

/* Length and text of a host name in its request. */
constexpr Place countedName{offsetof(NW_HOSTNAME_SET_REQ_S, ucLength),
                            1 + sizeof(NW_HOSTNAME_SET_REQ_S::acHostName)};

/* clang-format off */
constexpr Kind modeKind{.shape = Shape::words, .words = modeWords};
constexpr Kind hostNameModeKind{.shape = Shape::words, .words = hostNameModeWords};
constexpr Kind hostNameKind{.shape = Shape::name, .valueName = "NAME", .isCounted = true};
constexpr Kind nameKind{.shape = Shape::name, .valueName = "NAME"};
constexpr Kind workModeKind{.shape = Shape::words, .words = workModeWords, .least = 1};
constexpr Kind duplexKind{.shape = Shape::words, .words = duplexWords};
constexpr Kind speedKind{.shape = Shape::words, .words = speedWords, .unit = "Mbit/s"};

#define RECORD(member) PLACE(NW_HOSTNAME_DB_INFO_S, member)

constexpr Setting machineRows[] = {
    {Section::mode,       "mode",       {"Mode", "mode"},          "whether the ports work separately or as one bond",   &modeKind,         {part("network port mode", 0, 1, PLACE(NW_NET_MODE_SET_S, ucNetMode), PLACE(NW_IFC_STATE_DB_INFO_S, ucIfcState), ofKind, Result::badNetMode)}},
    {Section::switchover, "switchover", {"Switchover", "enabled"}, "whether the numbers of the two ports are exchanged", &switchKind,       {part("switchover", 0, 1, PLACE(NW_LAN_REVERSE_SET_S, ucEnable), switchoverByte, ofKind, Result::badNetMode)}},

    {Section::hostName,   "mode",       {"Mode", "mode"},          "who gives the host name",                            &hostNameModeKind, {part("host name mode", 0, 1, PLACE(NW_HOSTNAME_SET_REQ_S, ucByte4), RECORD(ucHostNameMode), ofKind, Result::badHostNameMode)}},
    {Section::hostName,   "name",       {"Host name", "name"},     "host name: letters, digits, hyphens",                &hostNameKind,     {part("host name", 0, 2, countedName, RECORD(szBmcHostName), isCountedName, Result::badHostName)}},
    {Section::hostName,   "bmc-name",   {"BMC name", "bmcName"},   "BMC name: letters, digits, hyphens",                 &nameKind,         {part("BMC name", 0, 4, PLACE(NW_HOSTNAME_SET_REQ_S, acTail), RECORD(szBmcName), isName, Result::badHostName)}},

    {Section::lldp,       "state",      {"LLDP", "enabled"},       "the LLDP agent",                                     &switchKind,       {part("LLDP state", 0, 1, PLACE(NW_LLDP_SET_S, ucLldpEnable), PLACE(NW_LLDP_DB_INFO_S, ucLldpEnable), ofKind, Result::badLldpMode)}},
    {Section::lldp,       "work-mode",  {"Work mode", "workMode"}, "whether it sends, receives or both",                 &workModeKind,     {part("LLDP work mode", 0, 2, PLACE(NW_LLDP_SET_S, ucLldpWorkMode), PLACE(NW_LLDP_DB_INFO_S, ucLldpWorkMode), ofKind, Result::badLldpMode)}},
};
#undef RECORD

#define PART(name, bit, from, to) \
    {part(name, 0, bit, PLACE(NW_AN_SET_PORT_S, from), PLACE(NW_AN_CFG_PORT_S, to), ofKind, Result::badLinkMode)}

constexpr Setting linkModeRows[] = {
    {Section::an, "auto",   {"Negotiation", "auto"}, "auto-negotiation", &switchKind, PART("auto-negotiation", 1, ucAutoNeg, ucAutoNeg)},
    {Section::an, "duplex", {"Duplex", "duplex"},    "duplex",           &duplexKind, PART("duplex",           4, ucDuplex,  ucDuplex)},
    {Section::an, "speed",  {"Speed", "speed"},      "speed",            &speedKind,  PART("speed",            2, uiSpeed,   ucSpeed)},
};
#undef PART
/* clang-format on */

} // namespace

std::span<const Setting> machineSettings()
{
    return machineRows;
}

std::span<const Setting> linkModeSettings()
{
    return linkModeRows;
}

} // namespace bmc::settings
