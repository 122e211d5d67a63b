// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/arp.hpp"

#include "manager/refusal.hpp"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "settings/manager_bytes.hpp"

namespace bmc::manager {

namespace {

using settings::ArpBytes;

/* What an update changes. */
enum Subject : std::uint8_t { nothing = 0, control = 1, interval = 2, suspend = 3 };

/* Where the response has the status. */
constexpr std::size_t dataAt = offsetof(NW_RPC_RESPONSE_S, aucResData);
constexpr std::size_t statusOfSuspend = 13 - dataAt;
constexpr std::size_t statusOfUpdate = 12 - dataAt;

void checkBits(std::uint32_t value)
{
    require(value <= settings::arpAll, Result::badArpFlags, "ARP");
}

void suspendBits(ArpBytes &bytes, std::uint32_t value)
{
    checkBits(value);
    bytes.suspend = static_cast<std::uint8_t>(value);
    bytes.isResumed = 0;
}

void update(ArpBytes &bytes, std::uint8_t subject, std::uint32_t value)
{
    switch (subject) {
    case nothing:
        return;
    case control:
        checkBits(value);
        bytes.control = static_cast<std::uint8_t>(value);
        return;
    case interval:
        require(value <= UINT8_MAX, Result::badArpFlags, "ARP interval");
        bytes.interval = static_cast<std::uint8_t>(value);
        return;
    case suspend:
        return suspendBits(bytes, value);
    default:
        throw Refusal(Result::unknownField, "ARP status");
    }
}

/* Answers what is suspended afterwards. */
template <typename Edit>
std::uint8_t changePort(Engine &engine, std::uint32_t port, NW_RPC_RESPONSE_S &response,
                        const Edit &edit)
{
    response.uiDetail = port < NW_PORT_COUNT ? port : 0;
    Change change{.after = engine.present(), .scope = {}};
    require(port < NW_PORT_COUNT && settings::isServed(change.after.state, port),
            Result::portNotServed, "port " + std::to_string(port));

    NW_LAN_CFG_PORT_S &entry = change.after.lan.astPort[port];
    ArpBytes bytes = settings::arpOf(entry);
    edit(bytes);
    settings::putArp(entry, bytes);
    change.scope.select(NW_LOG_LAN, port);
    engine.change(change);
    return settings::suspendedArp(entry);
}

} // namespace

void suspendArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response)
{
    const auto request = contentOf<NW_ARP_SUSPEND_REQ_S>(payload);
    response.aucResData[statusOfSuspend] =
        changePort(engine, request.ucPort, response,
                   [&](ArpBytes &bytes) { suspendBits(bytes, request.ucArpSuspend); });
}

void updateArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response)
{
    const auto request = contentOf<NW_ARP_UPDATE_REQ_S>(payload);
    response.aucResData[statusOfUpdate] =
        changePort(engine, request.uiArpArg0, response,
                   [&](ArpBytes &bytes) { update(bytes, request.ucArpArg1, request.uiArpArg2); });
}

void resumeArp(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &)
{
    const bool isSuspended = contentOf<std::uint32_t>(payload) != 0;
    Change change{.after = engine.present(), .scope = {}};
    for (NW_LAN_CFG_PORT_S &entry : change.after.lan.astPort) {
        ArpBytes bytes = settings::arpOf(entry);
        bytes.isResumed = isSuspended ? 0 : 1;
        settings::putArp(entry, bytes);
    }
    change.scope.select(NW_LOG_LAN);
    engine.change(change);
}

} // namespace bmc::manager
