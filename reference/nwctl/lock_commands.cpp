// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include "answer.hpp"
#include "bmc_platform.h"
#include "commands.hpp"
#include "network_mng/event.h"
#include "network_mng/store.h"

namespace nwctl {

namespace {

constexpr std::uint8_t busy = 1;

/* Status byte; 1 only is a change in progress. Nothing when the record cannot be read. */
std::optional<std::uint8_t> netStatus()
{
    std::uint8_t status = 0;
    return NW_LMDB_Get_NetStatus(&status) == NW_OK ? std::optional(status) : std::nullopt;
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
    {"restart-flag-file", NW_RESTART_FLAG_FILE " is there",     [] { return BMC_CheckDirVaildStatus(NW_RESTART_FLAG_FILE) == 1; }},
};
/* clang-format on */

void showStatus(Session &session)
{
    const bool isLocked = NW_NetworkIsLock() == 1;
    Json reasons = Json::array();
    std::string text = isLocked ? "locked" : "not locked";
    for (const Condition &condition : conditions) {
        if (isLocked && condition.holds()) {
            text += (reasons.empty() ? ": " : ", ") + std::string(condition.meaning);
            reasons.push_back(condition.name);
        }
    }

    answer(session, Json{{"locked", isLocked}, {"reasons", reasons}}, text + "\n");
    session.status = isLocked ? Exit::refused : Exit::success;
}

void declareStatus(CLI::App &app, Session &session)
{
    app.callback([&session] { showStatus(session); });
}

} // namespace

void addLockCommands(std::vector<Command> &commands)
{
    commands.push_back({"lock", "status", "May a network change start now, and if not, why?",
                        "lock status", declareStatus});
}

} // namespace nwctl
