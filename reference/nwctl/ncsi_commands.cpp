// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "ncsi": the sideband interface over the host's network adapter. */
#include "command_kinds.hpp"
#include "failure.hpp"
#include "ncsi.hpp"
#include "network_mng/settings.h"

namespace nwctl {

namespace {

/* The library turns it on in the kernel, but only while no change is under way and once NC-SI has
 * finished initialising; a dry run asks the same. */
void requireReady()
{
    std::uint8_t inProgress = 0;
    requireRead(NW_LMDB_Get_NetStatus(&inProgress), "the network status");
    if (inProgress == 1) {
        throw Failure(Exit::refused, "", "", "a change of the network is in progress",
                      NW_ERR_GENERAL);
    }
    if (LIB_NW_NcsiIsInitComplete() == 0) {
        throw Failure(Exit::refused, "", "", "NC-SI has not finished initialising", NW_ERR_GENERAL);
    }
}

Sending check(const GivenOption &given)
{
    constexpr Word words[] = {{"on", 1}};
    wordValue(given, words);
    readInterfaces(); /* opens the database */
    requireReady();

    Sending sending;
    sending.what = "NC-SI in the kernel";
    sending.settings = {given};
    sending.send = [](NW_OPER_LOG_S &) { return LIB_NW_EnableNcsi(); };
    return sending;
}

void show(Session &session)
{
    readInterfaces(); /* the NC-SI record is read from an open database */
    printFacts(session, ncsiFacts());
}

} // namespace

Facts ncsiFacts()
{
    NW_NCSI_DB_INFO_S record{};
    const bool known = LIB_NW_GetNcsiConfig(&record) == NW_OK;
    const auto orNull = [known](Json value) { return known ? value : Json(); };
    std::uint16_t offset = 0;
    const bool hasOffset = LIB_NW_GetNcsiChannelIdOffset(&offset) == 0;
    const unsigned channel = record.ucChannel + (hasOffset ? unsigned{offset} : 0U);

    return {{"NC-SI", "enabled", orNull(record.ucNcsiEnable == 1)},
            {"NC-SI init", "initialisation",
             LIB_NW_NcsiIsInitComplete() == 1 ? "complete" : "not complete"},
            {"Auto port", "automaticPort", orNull(record.ucAutoPort == 1)},
            {"Auto card", "automaticCard", orNull(record.ucAutoCard == 1)},
            {"Adapter", "adapter", orNull(unsigned{record.ucNicIndex})},
            {"Port", "selectedPort", orNull(channel)},
            {"Port offset", "channelOffset", hasOffset ? Json(offset) : Json()}};
}

void addNcsiCommands(std::vector<Command> &commands)
{
    commands.push_back(
        plainCommand({"ncsi", "show", "Show the state of NC-SI", "ncsi show"}, show));
    commands.push_back(valueCommand({"ncsi", "set", "Turn NC-SI on", "ncsi set on"},
                                    {"STATE", "on", nullptr}, check));
}

} // namespace nwctl
