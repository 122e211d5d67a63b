// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "status": the network on one screen; "lock status": may a change start now? */
#include <algorithm>

#include "bmc_platform.h"
#include "network_mng/event.h"
#include "nwctl/lan_view.hpp"
#include "nwctl/stored.hpp"

namespace nwctl {

namespace {

constexpr std::uint8_t busy = 1;

/* Status byte; 1 only is a change in progress. Nothing when the record cannot be read. */
std::optional<std::uint8_t> netStatus()
{
    std::uint8_t status = 0;
    return NW_LMDB_Get_NetStatus(&status) == NW_OK ? std::optional(status) : std::nullopt;
}

bool isRestarting()
{
    return BMC_CheckDirVaildStatus(NW_RESTART_FLAG_FILE) == 1;
}

/* What forbids a change now. */
Row lockRow()
{
    const auto status = netStatus();
    const bool isPending = isRestarting();
    const char *text = status == busy ? "a change is in progress"
                       : isPending    ? "a restart is pending"
                       : !status      ? "unknown"
                                      : "free";
    return {"Lock", "lock",
            Object{{hidden("changing", status ? Value(*status == busy) : Value()),
                    hidden("restarting", isPending)}},
            text};
}

Value shareLink()
{
    std::uint8_t mode = 0;
    return LIB_NW_GetShareLinkMode(&mode) == NW_OK ? Value(wordName(shareLinkWords, mode))
                                                   : Value();
}

Row ncsiRow()
{
    Rows rows = ncsiRows();
    const auto *isOn = std::get_if<bool>(&rows[0].value.content());
    const std::string text = (isOn == nullptr ? "unknown" : onOff(*isOn)) + ", initialisation " +
                             std::get<std::string>(rows[1].value.content());
    return {"NC-SI", "ncsi", Object{std::move(rows)}, text, true};
}

/* Families of which two networks overlap; the check knows no ports. */
Row conflictsRow(const std::vector<PortView> &ports)
{
    List families;
    for (const auto &[key, name] : {std::pair{"ipv4", "IPv4"}, std::pair{"ipv6", "IPv6"}}) {
        const bool isFound = std::ranges::any_of(ports, [key = key](const PortView &view) {
            return std::ranges::count(conflictsOf(view), key) != 0;
        });
        if (isFound) {
            families.rows.push_back({.value = name});
        }
    }
    return {.label = "Conflicts", .value = std::move(families)};
}

void showStatus(const Arguments &, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    std::vector<PortView> ports;
    List list;
    for (const unsigned port : portsServed(interfaces)) {
        const PortView &view = ports.emplace_back(readPortView(interfaces, port));
        list.rows.push_back({.label = bmc::settings::nameOf(interfaces, port),
                             .value = Object{portRows(view)},
                             .text = bmc::settings::roleTitleOf(port) + ", " + portSummary(view),
                             .isFolded = true});
    }
    session.answer({{"Mode", "mode", modeName(interfaces)},
                    {"Shared link", "shareLink", shareLink()},
                    lockRow(),
                    ncsiRow(),
                    {.key = "ports", .value = std::move(list)},
                    conflictsRow(ports)});
}

/* What locks, in the library's order. */
struct Condition {
    const char *name;
    const char *meaning;
    bool (*holds)();
};

/* clang-format off */
const Condition conditions[] = {
    {"status-unreadable", "the status record cannot be read",   [] { return !netStatus(); }},
    {"set-flag",          "this process changes the network",   [] { return g_ucNetworkSetFlag == busy; }},
    {"restart-delay",     "a delayed restart is pending",       [] { return g_uiRestartDelay == busy; }},
    {"set-in-progress",   "a network change is in progress",    [] { return netStatus() == busy; }},
    {"restart-flag-file", NW_RESTART_FLAG_FILE " is there",     isRestarting},
};
/* clang-format on */

void showLock(const Arguments &, Session &session)
{
    const bool isLocked = NW_NetworkIsLock() == 1;
    std::vector<std::string> reasons;
    std::string text = isLocked ? "locked" : "not locked";
    for (const Condition &condition : conditions) {
        if (isLocked && condition.holds()) {
            text += (reasons.empty() ? ": " : ", ") + std::string(condition.meaning);
            reasons.emplace_back(condition.name);
        }
    }

    session.answer({line(text), hidden("locked", isLocked), hidden("reasons", reasons)});
    session.status = isLocked ? Exit::refused : Exit::success;
}

} // namespace

void addStatusCommands(std::vector<Command> &commands)
{
    commands.push_back({"",
                        "status",
                        "Show mode, ports, lock, NC-SI and conflicts",
                        "status",
                        {},
                        inSnapshot(showStatus)});
    commands.push_back({"lock",
                        "status",
                        "May a network change start now, and if not, why?",
                        "lock status",
                        {},
                        showLock});
}

} // namespace nwctl
