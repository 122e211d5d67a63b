// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "apply": several settings at once, all or none. */
#include <fstream>

#include "combined.hpp"
#include "command_kinds.hpp"
#include "failure.hpp"
#include "lan_check.hpp"
#include "sentences.hpp"
#include "wireless.hpp"

namespace nwctl {

namespace {

/* No document of ours comes near it; a device may never end. */
constexpr std::size_t longest = 1024 * 1024;

std::string contentsOf(const GivenOption &given)
{
    std::ifstream file(given.value);
    std::string text(longest + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad() || text.empty()) {
        misused(given, "the file cannot be read or is empty");
    }
    if (text.size() > longest) {
        misused(given, "the file is longer than 1 MiB");
    }
    return text;
}

/* Checked as the new network mode will have it. */
void requireNoConflict(const CombinedChange &change, NW_IFC_STATE_DB_INFO_S interfaces)
{
    if (change.lan.empty()) {
        return;
    }
    interfaces.ucIfcState = change.mode.value_or(interfaces.ucIfcState);
    const NW_RESULT result =
        checkSegments(change.lan, interfaces, readLanRecord(), bmc::manager::readWireless());
    if (result != NW_OK) {
        throw Failure(Exit::refused, "lan", "", "the change would make two networks overlap",
                      result);
    }
}

Sending check(const GivenOption &given)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const CombinedChange change = parseCombined(contentsOf(given), interfaces);
    requireNoConflict(change, interfaces);

    Sending sending;
    sending.what = "several settings at once";
    sending.commands = {NW_CMD_SET_ALL};
    sending.settings = change.settings;
    const NW_SET_NETWORK_ALL_S request = requestOf(change);
    sending.send = [request](NW_OPER_LOG_S &log) { return LIB_NW_SetNetWorkAll(&request, &log); };
    sending.sentences = combinedSentences;
    return sending;
}

} // namespace

void addCombinedCommands(std::vector<Command> &commands)
{
    commands.push_back(valueCommand(
        {"", "apply", "Change LAN, DNS and network mode at once, all or nothing",
         "apply network-settings.json"},
        {"FILE", "JSON with the keys lan, dns, mode; see the documentation", nullptr}, check));
}

} // namespace nwctl
