// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Requests that are more, or less, than a change of settings: shared link, ARP suspension, restart,
 * NC-SI. */
#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <optional>

#include <nlohmann/json.hpp>

#include "bmc_platform.h"
#include "network_mng/settings.h"
#include "nwctl/sending.hpp"
#include "settings/codes.hpp"
#include "settings/manager_bytes.hpp"
#include "settings/requests.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Change;
using settings::Json;
using settings::Section;

Change changeTo(Section section, const char *key, unsigned port, std::string_view value)
{
    Change change;
    settings::assign(change, *settings::findSetting(section, key), port, value);
    return change;
}

/* The LAN of the second port and the network mode; the bond is formed last. */
Sending prepareShareLink(const Arguments &arguments)
{
    const GivenOption given{"MODE", arguments.value("MODE")};
    const std::uint8_t mode = wordValue(given, shareLinkWords);
    const bool isBonded = mode == NW_SHARE_LINK_ACTIVE_STANDBY;
    const Change network = changeTo(Section::mode, "mode", 0,
                                    isBonded ? settings::bondedMode : settings::separateMode);
    const Change lan =
        changeTo(Section::lan, "lan", NW_PORT_ETH1, mode == NW_SHARE_LINK_DEDICATED ? "off" : "on");

    Sending sending{.what = "shared-link mode", .given = {given}};
    sending.commands = isBonded ? std::vector{NW_CMD_SET_LAN, NW_CMD_SET_NET_MODE}
                                : std::vector{NW_CMD_SET_NET_MODE, NW_CMD_SET_LAN};
    sending.changes = isBonded ? std::vector{lan, network} : std::vector{network, lan};
    sending.isGuarded = true;
    sending.send = [mode](NW_OPER_LOG_S &) { return LIB_NW_ChangeShareLinkMode(mode); };
    return sending;
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

Sending prepareRestart(const Arguments &arguments)
{
    const unsigned delay =
        numberIn("SECONDS", arguments.value("SECONDS", "0"), 0, settings::longestRestartDelay);
    Sending sending{.what = "network restart", .commands = {NW_CMD_RESTART}};
    sending.given = arguments.given("SECONDS");
    sending.deed =
        "restart the network " + (delay == 0 ? "at once" : "after " + std::to_string(delay) + " s");
    sending.send = [delay](NW_OPER_LOG_S &) { return askForRestart(delay); };
    return sending;
}

/* The answer's status byte: what rests whenever the watchdog timer runs. Whether it does, only the
 * network manager is told. */
void completeWith(Sending &sending, const std::shared_ptr<std::uint8_t> &status)
{
    sending.complete = [status] {
        const std::string suspended = wordName(arpWords(), *status);
        return Rows{{.key = "suspended",
                     .value = suspended,
                     .text = "ARP suspended while the watchdog timer runs: " + suspended}};
    };
}

constexpr const char *suspendOption = "--arp-suspend";

Sending prepareSuspend(const Arguments &arguments)
{
    Sending sending{.what = "ARP suspension", .commands = {NW_CMD_SUSPEND_ARP}};
    sending.module = NW_LOG_LAN;
    sending.given = arguments.given(suspendOption);
    if (sending.given.empty()) {
        throw Failure(Exit::usage, "", "", "nothing to change: give at least one setting");
    }
    const std::uint8_t what = wordValue(sending.given.front(), arpWords());
    if (sending.given.size() > 1) {
        throw Failure(Exit::usage, suspendOption, sending.given.back().value,
                      "contradicts another value for the same setting");
    }
    sending.port = namedPort(readInterfaces(), arguments.value("PORT"));
    const unsigned port = sending.port->index;
    sending.changes = {changeTo(Section::lan, "arp-suspend", port, sending.given.front().value)};

    const auto status = std::make_shared<std::uint8_t>();
    const NW_ARP_SUSPEND_REQ_S request{static_cast<std::uint8_t>(port), what};
    sending.send = [request, status](NW_OPER_LOG_S &log) {
        return LIB_NW_SuspendBMCArp(reinterpret_cast<const std::uint8_t *>(&request), status.get(),
                                    &log);
    };
    completeWith(sending, status);
    return sending;
}

/* Asks for the status by an update that changes nothing. */
Sending prepareArpStatus(const Arguments &arguments)
{
    constexpr std::uint8_t changeNothing = 0;
    Sending sending{.what = "nothing; asks for the ARP status", .commands = {NW_CMD_UPDATE_ARP}};
    sending.port = namedPort(readInterfaces(), arguments.value("PORT"));

    const auto status = std::make_shared<std::uint8_t>();
    const unsigned port = sending.port->index;
    sending.send = [port, status](NW_OPER_LOG_S &) {
        return LIB_NW_UpdateArpStatus(port, changeNothing, 0, status.get());
    };
    completeWith(sending, status);
    return sending;
}

/* What rests on each port before and after all suspensions have lost their effect, or have it
 * again. */
Json suspensionChanges(const Configuration &present, bool isSuspended)
{
    Json changes = Json::array();
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        NW_LAN_CFG_PORT_S entry = present.lan.astPort[port];
        const std::uint8_t before = settings::suspendedArp(entry);
        settings::resumeArp(entry, !isSuspended);
        const std::uint8_t after = settings::suspendedArp(entry);
        if (before != after) {
            changes.push_back(
                settings::changeOf("arp." + std::string(settings::roleOf(port)) + ".suspended",
                                   settings::nameOf(present.state, port),
                                   wordName(arpWords(), before), wordName(arpWords(), after)));
        }
    }
    return changes;
}

Sending prepareResume(const Arguments &arguments)
{
    constexpr Word words[] = {{"resume", 0}, {"suspend", 1}};
    const std::uint32_t request = wordValue({"WHAT", arguments.value("WHAT", "resume")}, words);
    Sending sending{.what = "ARP suspensions of all ports", .commands = {NW_CMD_RESUME_ARP}};
    sending.given = arguments.given("WHAT");
    sending.foreseen = [request] { return suspensionChanges(readConfiguration(), request != 0); };
    sending.send = [request](NW_OPER_LOG_S &) { return LIB_NW_ResumeSuspendBMCArps(request); };
    return sending;
}

/* The library turns it on in the kernel, but only while no change is under way and once NC-SI has
 * finished initialising; a dry run asks the same. */
void requireNcsiReady()
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

/* Is it on in the kernel? None where the kernel doesn't show it. */
std::optional<bool> kernelNcsi()
{
    constexpr char isOn = '1';
    char content = 0;
    if (NW_ReadProc(NW_NCSI_ENABLE_FILE, sizeof(content), &content) != 0) {
        return std::nullopt;
    }
    return content == isOn;
}

/* What the kernel has of NC-SI, and what it would have. */
Json ncsiChanges()
{
    const std::optional<bool> isOn = kernelNcsi();
    if (isOn == true) {
        return Json::array();
    }
    return Json::array({settings::changeOf("ncsi", nullptr, isOn ? "off" : "unknown", "on")});
}

/* LIB_NW_EnableNcsi answers 0 also when the kernel did not take it; the kernel itself tells. */
NW_RESULT turnNcsiOn(const GivenOption &given)
{
    const NW_RESULT result = LIB_NW_EnableNcsi();
    if (result != NW_OK) {
        return result;
    }

    const std::optional<bool> isOn = kernelNcsi();
    if (!isOn) {
        throw Failure(Exit::manager, given.name, given.value,
                      "the kernel does not show whether NC-SI is on");
    }
    if (!*isOn) {
        throw Failure(Exit::manager, given.name, given.value, "the kernel still has NC-SI off",
                      static_cast<NW_RESULT>(settings::Result::kernelRefused));
    }
    return NW_OK;
}

Sending prepareNcsi(const Arguments &arguments)
{
    constexpr Word words[] = {{"on", 1}};
    const GivenOption given{"STATE", arguments.value("STATE")};
    wordValue(given, words);
    readInterfaces(); /* opens the database */
    requireNcsiReady();

    Sending sending{.what = "NC-SI in the kernel", .given = {given}};
    sending.foreseen = ncsiChanges;
    sending.comparedWith = "what the kernel has";
    sending.send = [given](NW_OPER_LOG_S &) { return turnNcsiOn(given); };
    return sending;
}

template <Sending (*prepare)(const Arguments &arguments)>
void request(const Arguments &arguments, Session &session)
{
    carryOut([&] { return prepare(arguments); }, arguments, session);
}

} // namespace

void addRequestCommands(std::vector<Command> &commands)
{
    using Kind = Parameter::Kind;
    const Parameter dryRun = dryRunFlag();
    const settings::Setting &suspend = *settings::findSetting(Section::lan, "arp-suspend");
    const Parameter shareLink{Kind::required, "MODE", settings::listed(shareLinkWords)};
    std::vector<Parameter> shareLinkParameters{shareLink, dryRun};
    std::ranges::copy(guardParameters(), std::back_inserter(shareLinkParameters));
    const Parameter seconds{Kind::optional, "SECONDS",
                            "delay, 0 to " + std::to_string(settings::longestRestartDelay) +
                                "; 0 without it"};
    const Parameter resumed{Kind::optional, "WHAT", "resume or suspend; resume without it"};
    const Parameter suspended{Kind::repeated, suspendOption, settings::helpOf(suspend),
                              settings::valueNameOf(suspend)};
    /* clang-format off */
    commands.insert(commands.end(), {
        {"share-link", "set", "Change the network mode and the second port's LAN together", "share-link set shared", shareLinkParameters, request<prepareShareLink>},
        {"", "restart", "Ask the network manager to restart the network", "restart 5", {seconds, dryRun}, request<prepareRestart>},
        {"arp", "suspend", "Set what of ARP rests on a port while the watchdog timer runs", "arp suspend eth1 --arp-suspend both", {portParameter(), suspended, dryRun}, request<prepareSuspend>},
        {"arp", "status", "Ask what of ARP rests on a port while the watchdog timer runs", "arp status eth1", {portParameter(), dryRun}, request<prepareArpStatus>},
        {"arp", "resume", "Resume ARP on all ports, whatever is suspended, or suspend it again", "arp resume", {resumed, dryRun}, request<prepareResume>},
        {"ncsi", "set", "Turn NC-SI on", "ncsi set on", {{Kind::required, "STATE", "on"}, dryRun}, request<prepareNcsi>},
    });
    /* clang-format on */
}

} // namespace nwctl
