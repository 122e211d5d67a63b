// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "arp.hpp"

#include <algorithm>

#include <linux/ip.h>

#include "arp_packet.hpp"

#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "plan.hpp"
#include "ports.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* Bits of the control and suspend bytes, and of the status that is answered. */
enum Bit : std::uint8_t { announcements = 1, responses = 2 };
constexpr unsigned allBits = announcements | responses;

/* What command 6 changes. */
enum Subject : std::uint8_t { nothing = 0, control = 1, interval = 2, suspend = 3 };

/* Value of arp_ignore: answer for no address of the host, or for each. */
constexpr std::uint32_t ignoreAll = 8;
constexpr std::uint32_t ignoreNone = 0;

/* Bytes of a stored entry that only the manager uses. */
struct NW_PACKED ArpBytes {
    std::uint8_t control;
    std::uint8_t interval;
    std::uint8_t suspend;
    std::uint8_t isResumed; /* the suspend byte has no effect */
};

ArpBytes arpOf(const Configuration &configuration, unsigned port)
{
    ArpBytes bytes;
    std::memcpy(&bytes, configuration.lan.astPort[port].aucReserved787, sizeof(bytes));
    return bytes;
}

void putArp(Configuration &configuration, unsigned port, const ArpBytes &bytes)
{
    std::memcpy(configuration.lan.astPort[port].aucReserved787, &bytes, sizeof(bytes));
}

unsigned suspendedBits(const ArpBytes &bytes)
{
    return bytes.isResumed != 0 ? 0U : bytes.suspend & allBits;
}

bool isActive(const Configuration &configuration, unsigned port, Bit bit)
{
    const ArpBytes bytes = arpOf(configuration, port);
    return (bytes.control & ~suspendedBits(bytes) & bit) != 0;
}

/* Of a port that there is none of, no detail is answered. */
void selectPort(Draft &draft, std::uint32_t port)
{
    require(port < NW_PORT_COUNT, Result::portNotServed, "port " + std::to_string(port));
    draft.details[NW_LOG_LAN] = port;
    require(isServed(draft.after.state, port), Result::portNotServed,
            "port " + std::to_string(port));
}

void checkBits(std::uint32_t value)
{
    require(value <= allBits, Result::badArpFlags, "ARP");
}

void change(Draft &draft, unsigned port, const ArpBytes &bytes)
{
    putArp(draft.after, port, bytes);
    draft.modules |= NW_LOG_LAN;
    draft.ports.insert(port);
}

/* Offsets of the status byte in the response. */
constexpr std::size_t updateStatusAt = 12;
constexpr std::size_t suspendStatusAt = 13;

void answerStatus(Draft &draft, unsigned port, std::size_t offset)
{
    const std::size_t head = offsetof(NW_RPC_RESPONSE_S, aucResData);
    draft.response.aucResData[offset - head] =
        static_cast<std::uint8_t>(suspendedBits(arpOf(draft.after, port)));
}

} // namespace

void editArpSuspend(Draft &draft, Payload payload)
{
    const auto request = contentOf<NW_ARP_SUSPEND_REQ_S>(payload);
    selectPort(draft, request.ucPort);
    checkBits(request.ucArpSuspend);

    ArpBytes bytes = arpOf(draft.after, request.ucPort);
    bytes.suspend = request.ucArpSuspend;
    bytes.isResumed = 0;
    change(draft, request.ucPort, bytes);
    answerStatus(draft, request.ucPort, suspendStatusAt);
}

void editArpStatus(Draft &draft, Payload payload)
{
    const auto request = contentOf<NW_ARP_UPDATE_REQ_S>(payload);
    const std::uint32_t port = request.uiArpArg0;
    const std::uint32_t value = request.uiArpArg2;
    selectPort(draft, port);

    ArpBytes bytes = arpOf(draft.after, port);
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
        change(draft, port, bytes);
    }
    answerStatus(draft, port, updateStatusAt);
}

void editArpResume(Draft &draft, Payload payload)
{
    const auto isSuspended = contentOf<std::uint32_t>(payload) != 0;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        ArpBytes bytes = arpOf(draft.after, port);
        bytes.isResumed = isSuspended ? 0 : 1;
        change(draft, port, bytes);
    }
}

void applyArp(const Context &context)
{
    const Kernel &kernel = context.kernel;
    const Configuration &wanted = context.draft.after;
    for (const unsigned port : context.draft.ports) {
        if (!isServed(wanted.state, port)) {
            continue;
        }
        const Interface interface = interfaceOf(kernel, nameOf(wanted.state, port));
        const std::uint32_t former = kernel.ipv4Setting(interface, IPV4_DEVCONF_ARP_IGNORE);
        kernel.setIpv4Setting(interface, IPV4_DEVCONF_ARP_IGNORE,
                              isActive(wanted, port, responses) ? ignoreNone : ignoreAll);
        context.transaction.undoWith([&kernel, interface, former] {
            kernel.setIpv4Setting(interface, IPV4_DEVCONF_ARP_IGNORE, former);
        });
    }
}

std::optional<Announcer::Announcement> Announcer::announcementOf(const Configuration &configuration,
                                                                 unsigned port)
{
    constexpr std::chrono::milliseconds unit{500};
    const NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
    const bool isAnnounced = isServed(configuration.state, port) && entry.ucLanEnable == 1 &&
                             entry.ucIpv4Enable == 1 && !isUnset(ipv4(entry.aucIpv4Addr)) &&
                             isActive(configuration, port, announcements);
    if (!isAnnounced) {
        return std::nullopt;
    }
    return Announcement{nameOf(configuration.state, port), std::to_array(entry.aucIpv4Addr),
                        arpOf(configuration, port).interval * unit};
}

void Announcer::follow(const Configuration &configuration)
{
    std::vector<Entry> followed;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const auto wanted = announcementOf(configuration, port);
        const auto present = std::ranges::find(
            entries_, wanted, [](const Entry &entry) { return std::optional(entry.announcement); });
        if (wanted) {
            followed.push_back(present != entries_.end() ? *present : Entry{*wanted});
        }
    }
    entries_ = std::move(followed);
}

int Announcer::sendDue(std::chrono::steady_clock::time_point now)
{
    int wait = -1;
    for (Entry &entry : entries_) {
        const Announcement &announcement = entry.announcement;
        if (entry.isOver) {
            continue;
        }
        if (entry.due <= now) {
            announce(announcement.interface, announcement.address);
            entry.due = now + announcement.interval;
            entry.isOver = announcement.interval.count() == 0;
        }
        if (!entry.isOver) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(entry.due - now);
            wait = wait < 0 ? static_cast<int>(left.count())
                            : std::min(wait, static_cast<int>(left.count()));
        }
    }
    return wait;
}

} // namespace bmc::manager
