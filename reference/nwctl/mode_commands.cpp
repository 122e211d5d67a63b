// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "mode", "switchover", "share-link", "restart": the controller's network as a whole. */
#include <cstring>

#include "command_kinds.hpp"
#include "facts.hpp"
#include "share_link.hpp"
#include "stored.hpp"

namespace nwctl {

namespace {

constexpr std::uint8_t applyValue = 0x01; /* the bit of the one value that a request carries */

Sending sendingOf(const char *what, std::vector<NW_COMMAND_E> commands, std::uint32_t module,
                  const GivenOption &given)
{
    Sending sending;
    sending.what = what;
    sending.commands = std::move(commands);
    sending.module = module;
    sending.settings = {given};
    return sending;
}

Sending checkMode(const GivenOption &given)
{
    const NW_NET_MODE_SET_S request{0, applyValue, wordValue(given, modeWords()), {}};
    Sending sending = sendingOf("network port mode", {NW_CMD_SET_NET_MODE}, NW_LOG_NET_MODE, given);
    sending.send = [request](NW_OPER_LOG_S &log) {
        return LIB_NW_SetNetMode(reinterpret_cast<const std::uint8_t *>(&request), &log);
    };
    return sending;
}

void showMode(Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    Json served = Json::array();
    for (const unsigned port : portsServed(interfaces)) {
        served.push_back(portName(interfaces, port));
    }
    printFacts(session,
               {{"Mode", "mode", modeName(interfaces)}, {"Ports served", "ports", served}});
}

Sending checkSwitchover(const GivenOption &given)
{
    const NW_LAN_REVERSE_SET_S request{{}, applyValue, wordValue(given, switchWords), {}};
    Sending sending =
        sendingOf("port number switchover", {NW_CMD_SET_LAN_REVERSE}, NW_LOG_LAN_REVERSE, given);
    sending.send = [request](NW_OPER_LOG_S &log) { return LIB_NW_SetLanReverse(&request, &log); };
    return sending;
}

/* The network manager keeps it in the first value that the record carries through. */
void showSwitchover(Session &session)
{
    NW_IFC_STATE_INFO_S state{};
    requireRead(LIB_NW_GetInterfaceState(&state), "the interface state");
    printFacts(session, {{"Switchover", "enabled", state.aucIfcValue[0] == 1}});
}

/* The LAN of the second port and the network mode; the bond is formed last. */
Sending checkShareLink(const GivenOption &given)
{
    const std::uint8_t mode = wordValue(given, shareLinkWords);
    const bool bonded = mode == NW_SHARE_LINK_ACTIVE_STANDBY;
    Sending sending = sendingOf("shared-link mode",
                                bonded ? std::vector{NW_CMD_SET_LAN, NW_CMD_SET_NET_MODE}
                                       : std::vector{NW_CMD_SET_NET_MODE, NW_CMD_SET_LAN},
                                0, given);
    sending.send = [mode](NW_OPER_LOG_S &) { return LIB_NW_ChangeShareLinkMode(mode); };
    return sending;
}

void showShareLink(Session &session)
{
    std::uint8_t mode = 0;
    requireRead(LIB_NW_GetShareLinkMode(&mode), "the shared-link mode");
    printFacts(session, {{"Shared link", "mode", wordName(shareLinkWords, mode)}});
}

/* LIB_NW_SetNetworkRestart answers 0 also when nobody was asked, and it has no operation log that
 * would tell; the channel itself does. */
NW_RESULT askForRestart(std::uint32_t delay)
{
    NW_RPC_REQUEST_S request{};
    request.ucCmd = NW_CMD_RESTART;
    std::memcpy(request.aucPayload, &delay, sizeof(delay));
    std::uint32_t response[sizeof(NW_RPC_RESPONSE_S) / sizeof(std::uint32_t)]{};
    return Network_RPC_Comm(&request, response, NW_RPC_TIMEOUT_MS);
}

Sending checkRestart(const GivenOption &given)
{
    constexpr unsigned delayMax = 3600;
    const unsigned delay = numberValue(given, 0, delayMax);
    Sending sending = sendingOf("network restart", {NW_CMD_RESTART}, 0, given);
    sending.send = [delay](NW_OPER_LOG_S &) { return askForRestart(delay); };
    return sending;
}

} // namespace

void addModeCommands(std::vector<Command> &commands)
{
    commands.push_back(
        plainCommand({"mode", "show", "Show the network port mode", "mode show"}, showMode));
    commands.push_back(valueCommand(
        {"mode", "set", "Let the ports work separately or as one bond", "mode set active-standby"},
        {"MODE", "separate or active-standby", nullptr}, checkMode));
    commands.push_back(
        plainCommand({"switchover", "show",
                      "Show whether the numbers of the two ports are exchanged", "switchover show"},
                     showSwitchover));
    commands.push_back(valueCommand(
        {"switchover", "set", "Exchange the numbers of the two ports", "switchover set on"},
        {"STATE", "on or off", nullptr}, checkSwitchover));
    commands.push_back(plainCommand(
        {"share-link", "show", "Show the shared-link mode", "share-link show"}, showShareLink));
    commands.push_back(valueCommand(
        {"share-link", "set", "Change the network mode and the second port's LAN together",
         "share-link set shared"},
        {"MODE", "dedicated, shared or active-standby", nullptr}, checkShareLink));
    commands.push_back(
        valueCommand({"", "restart", "Ask the network manager to restart the network", "restart 5"},
                     {"SECONDS", "delay, 0 to 3600; 0 without it", "0"}, checkRestart));
}

} // namespace nwctl
