// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "status": the network on one screen. */
#include <algorithm>

#include "bmc_platform.h"
#include "command_kinds.hpp"
#include "lan_render.hpp"
#include "ncsi.hpp"
#include "share_link.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

constexpr const char *restartFlag = "/tmp/network/NetworkRestartFlag";

/* What forbids a change now. */
struct Lock {
    Json changing; /* null: the status cannot be read */
    bool restarting;
};

Lock readLock()
{
    std::uint8_t inProgress = 0;
    const bool known = NW_LMDB_Get_NetStatus(&inProgress) == NW_OK;
    return {known ? Json(inProgress == 1) : Json(), BMC_CheckDirVaildStatus(restartFlag) == 1};
}

std::string lockText(const Lock &lock)
{
    if (lock.changing == true) {
        return "a change is in progress";
    }
    if (lock.restarting) {
        return "a restart is pending";
    }
    return lock.changing.is_null() ? "unknown" : "free";
}

Json shareLink()
{
    std::uint8_t mode = 0;
    return LIB_NW_GetShareLinkMode(&mode) == NW_OK ? Json(wordName(shareLinkWords, mode)) : Json();
}

std::string ncsiText()
{
    const Json ncsi = factsJson(ncsiFacts());
    const Json &enabled = ncsi["enabled"];
    return (enabled.is_null() ? "unknown" : onOff(enabled == true)) + ", initialisation " +
           ncsi["initialisation"].get<std::string>();
}

std::string addressesText(const PortView &view)
{
    std::string text = view.ipv4Address.value_or("no IPv4");
    for (const Ipv6Address &address : view.ipv6Addresses) {
        text += ", " + address.address;
    }
    return text;
}

std::string portText(const PortView &view)
{
    const std::string vlan = view.vlanId ? "VLAN " + std::to_string(*view.vlanId) : "no VLAN";
    return labelled(escaped(view.name), "channel " + std::to_string(view.channel) + ", LAN " +
                                            onOff(view.lanEnabled) + ", " +
                                            escaped(addressesText(view)) + ", " + vlan);
}

/* Families of which two networks overlap; the check knows no ports. */
Json conflictsOf(const std::vector<PortView> &ports)
{
    Json families = Json::array();
    if (std::ranges::any_of(ports, &PortView::ipv4Conflict)) {
        families.push_back("IPv4");
    }
    if (std::ranges::any_of(ports, &PortView::ipv6Conflict)) {
        families.push_back("IPv6");
    }
    return families;
}

std::string statusText(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::vector<PortView> &ports)
{
    std::string text = factsText({{"Mode", "", modeName(interfaces)},
                                  {"Shared link", "", shareLink()},
                                  {"Lock", "", lockText(readLock())},
                                  {"NC-SI", "", ncsiText()}});
    for (const PortView &port : ports) {
        text += portText(port);
    }
    return text + factsText({{"Conflicts", "", conflictsOf(ports)}});
}

Json statusJson(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::vector<PortView> &ports)
{
    const Lock lock = readLock();
    Json documents = Json::array();
    for (const PortView &port : ports) {
        documents.push_back(portJson(port));
    }
    return {{"mode", modeName(interfaces)},
            {"shareLink", shareLink()},
            {"lock", {{"changing", lock.changing}, {"restarting", lock.restarting}}},
            {"ncsi", factsJson(ncsiFacts())},
            {"ports", documents}};
}

void show(Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    std::vector<PortView> ports;
    for (const unsigned port : portsServed(interfaces)) {
        ports.push_back(viewPort(port, readPort(interfaces, port)));
    }
    session.answer(statusJson(interfaces, ports), statusText(interfaces, ports));
}

} // namespace

void addStatusCommands(std::vector<Command> &commands)
{
    commands.push_back(plainCommand(
        {"", "status", "Show mode, ports, lock, NC-SI and conflicts", "status"}, show));
}

} // namespace nwctl
