// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/rules.hpp"

#include <algorithm>
#include <utility>

#include "network_mng/lan.h"
#include "network_mng/settings.h"
#include "settings/detail/lan_rules.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

constexpr std::uint8_t manual = 0; /* host name mode */

void nothing(const Edit &, Attempt &) {}

void nothingAtEnd(Attempt &) {}

void afterMode(const Edit &, Attempt &attempt)
{
    const NW_IFC_STATE_DB_INFO_S &state = attempt.after.state;
    const bool isServable = isServed(state, NW_PORT_ETH0) || isServed(state, NW_PORT_ETH1) ||
                            isServed(state, NW_PORT_BOND0);
    require(isServable, Result::portNotServed, "network port mode");
    attempt.hasNewMode = true;
}

void afterSwitchover(const Edit &, Attempt &attempt)
{
    NW_IFC_STATE_DB_INFO_S &state = attempt.after.state;
    if (isSwitchedOver(state) != isSwitchedOver(attempt.before.state)) {
        exchangeInterfaces(state);
    }
}

/* The mode that is asked for counts for the name beside it. */
void beforeHostName(const Edit &edit, Attempt &attempt)
{
    const std::uint8_t mode =
        byteGiven(edit, "mode").value_or(attempt.after.hostName.ucHostNameMode);
    if (byteGiven(edit, "name") && mode != manual) {
        Refusal refusal(Result::badHostNameMode, "host name");
        refusal.blame(edit.section, NW_PORT_COUNT, findSetting(edit.section, "name"));
        throw refusal;
    }
}

void afterHostName(const Edit &, Attempt &attempt)
{
    nameAutomatically(attempt.after);
}

/* What is set is the port's from now on; what is set no more is the driver's again. */
void afterLinkMode(const Edit &edit, Attempt &attempt)
{
    NW_AN_CFG_PORT_S &port = attempt.after.an.astPort[edit.port];
    if (edit.bits[0] == 0) {
        port = blankConfiguration().an.astPort[edit.port];
        return;
    }
    const Kind &speeds = *findSetting(Section::an, "speed")->kind;
    require(!wordOf(speeds.words, port.ucSpeed).empty(), Result::badLinkMode, "speed");
    linkModeMarkIn(port) = 1;
}

void afterLan(const Edit &edit, Attempt &attempt)
{
    NW_LAN_CFG_PORT_S &port = attempt.after.lan.astPort[edit.port];
    keepInStep(edit, port);
    checkLanPort(port);
    if (isServed(attempt.after.state, edit.port)) {
        addChecks(attempt.segments, edit);
    }
}

void atEndOfLan(Attempt &attempt)
{
    checkSegments(attempt, attempt.segments);
}

/* clang-format off */
constexpr SectionRules rules[] = {
    {Section::mode,       nothing,        afterMode,       nothingAtEnd},
    {Section::switchover, nothing,        afterSwitchover, nothingAtEnd},
    {Section::hostName,   beforeHostName, afterHostName,   nothingAtEnd},
    {Section::lldp,       nothing,        nothing,         nothingAtEnd},
    {Section::lan,        nothing,        afterLan,        atEndOfLan},
    {Section::dns,        nothing,        nothing,         nothingAtEnd},
    {Section::an,         nothing,        afterLinkMode,   nothingAtEnd},
};
/* clang-format on */

} // namespace

const SectionRules &rulesOf(Section section)
{
    return *std::ranges::find(rules, section, &SectionRules::section);
}

void checkPort(const SectionInfo &info, const Edit &edit, const NW_IFC_STATE_DB_INFO_S &state)
{
    if (info.portCount == 0) {
        return;
    }
    if (edit.port >= info.portCount || !edit.mayBeIdle) {
        requireEffect(info.section, edit.port, state);
    }
}

void checkSegments(const Attempt &attempt, const SegmentChecks &checks)
{
    require(attempt.wireless || !concernWireless(checks), Result::wirelessUnknown, "overlap");
    const NW_RESULT verdict = findConflict(attempt.after.state, attempt.after.lan,
                                           attempt.wireless.value_or(NW_WIFI_ADDR_S{}), checks);
    if (verdict != NW_OK) {
        throw Refusal(verdict, "an address or a route in another's segment");
    }
}

} // namespace bmc::settings
