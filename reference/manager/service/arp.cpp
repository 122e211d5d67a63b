// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* What command 6 changes. */
enum Subject : std::uint8_t { nothing = 0, control = 1, interval = 2, suspend = 3 };

using settings::ArpBytes;

void checkPort(const Change &change, std::uint32_t port)
{
    require(port < NW_PORT_COUNT && isServed(change.after.state, port), Result::portNotServed,
            "port " + std::to_string(port));
}

void checkBits(std::uint32_t value)
{
    require(value <= settings::arpAll, Result::badArpFlags, "ARP");
}

ArpBytes arpOf(const Change &change, unsigned port)
{
    return settings::arpOf(change.after.lan.astPort[port]);
}

void putArp(Change &change, unsigned port, const ArpBytes &bytes)
{
    settings::putArp(change.after.lan.astPort[port], bytes);
    change.scope.select(NW_LOG_LAN, port);
}

} // namespace

void editArpSuspend(Change &change, Payload payload)
{
    const auto request = contentOf<NW_ARP_SUSPEND_REQ_S>(payload);
    checkPort(change, request.ucPort);
    checkBits(request.ucArpSuspend);

    ArpBytes bytes = arpOf(change, request.ucPort);
    bytes.suspend = request.ucArpSuspend;
    bytes.isResumed = 0;
    putArp(change, request.ucPort, bytes);
}

void editArpStatus(Change &change, Payload payload)
{
    const auto request = contentOf<NW_ARP_UPDATE_REQ_S>(payload);
    const std::uint32_t port = request.uiArpArg0;
    const std::uint32_t value = request.uiArpArg2;
    checkPort(change, port);

    ArpBytes bytes = arpOf(change, port);
    switch (request.ucArpArg1) {
    case nothing:
        break;
    case control:
        checkBits(value);
        bytes.control = static_cast<std::uint8_t>(value);
        break;
    case interval:
        require(value <= UINT8_MAX, Result::badArpFlags, "ARP interval");
        bytes.interval = static_cast<std::uint8_t>(value);
        break;
    case suspend:
        checkBits(value);
        bytes.suspend = static_cast<std::uint8_t>(value);
        bytes.isResumed = 0;
        break;
    default:
        throw Refusal(Result::unknownField, "ARP status");
    }
    if (request.ucArpArg1 != nothing) {
        putArp(change, port, bytes);
    }
}

void editArpResume(Change &change, Payload payload)
{
    const auto isSuspended = contentOf<std::uint32_t>(payload) != 0;
    for (NW_LAN_CFG_PORT_S &entry : change.after.lan.astPort) {
        ArpBytes bytes = settings::arpOf(entry);
        bytes.isResumed = isSuspended ? 0 : 1;
        settings::putArp(entry, bytes);
    }
    change.scope.select(NW_LOG_LAN);
}

} // namespace bmc::manager
