// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/arp.hpp"

#include "manager/refusal.hpp"
#include "manager/service/changes.hpp"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "settings/manager_bytes.hpp"

namespace bmc::manager {

namespace {

using settings::Section;

constexpr const char *suspendKey = "arp-suspend";

/* Settings that an update changes, by its subject. */
constexpr const char *subjects[] = {nullptr, "arp-control", "arp-interval", suspendKey};

/* Where the response has the status. */
constexpr std::size_t dataAt = offsetof(NW_RPC_RESPONSE_S, aucResData);
constexpr std::size_t statusOfSuspend = 13 - dataAt;
constexpr std::size_t statusOfUpdate = 12 - dataAt;

/* Sets what the key names, without one nothing. Answers what is suspended afterwards. */
std::uint8_t changePort(Engine &engine, std::uint32_t port, const char *key, std::uint32_t value)
{
    settings::Change asked;
    if (key != nullptr) {
        settings::assignNumber(asked, *settings::findSetting(Section::lan, key), port, value);
    }
    Change change{.after = checked(engine.present(), asked), .scope = {}};
    change.scope.select(NW_LOG_LAN, port);
    engine.change(change);
    return settings::suspendedArp(change.after.lan.astPort[port]);
}

/* The port that a request names, which the response tells where there is one. */
std::uint32_t portIn(Engine &engine, std::uint32_t port, NW_RPC_RESPONSE_S &response)
{
    response.uiDetail = port < NW_PORT_COUNT ? port : 0;
    settings::requireEffect(Section::lan, port, engine.present().state);
    return port;
}

} // namespace

void suspendArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response)
{
    const auto request = contentOf<NW_ARP_SUSPEND_REQ_S>(payload);
    const std::uint32_t port = portIn(engine, request.ucPort, response);
    response.aucResData[statusOfSuspend] =
        changePort(engine, port, suspendKey, request.ucArpSuspend);
}

void updateArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response)
{
    const auto request = contentOf<NW_ARP_UPDATE_REQ_S>(payload);
    const std::uint32_t port = portIn(engine, request.uiArpArg0, response);
    require(request.ucArpArg1 < std::size(subjects), Result::unknownField, "ARP status");
    response.aucResData[statusOfUpdate] =
        changePort(engine, port, subjects[request.ucArpArg1], request.uiArpArg2);
}

void resumeArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &)
{
    const bool isSuspended = contentOf<std::uint32_t>(payload) != 0;
    Change change{.after = engine.present(), .scope = {}};
    for (NW_LAN_CFG_PORT_S &port : change.after.lan.astPort) {
        settings::resumeArp(port, !isSuspended);
    }
    change.scope.select(NW_LOG_LAN);
    engine.change(change);
}

} // namespace bmc::manager
