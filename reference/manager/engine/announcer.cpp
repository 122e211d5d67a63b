// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/announcer.hpp"

#include <algorithm>

namespace bmc::manager {

std::optional<Announcer::Announcement> Announcer::announcementOf(const Configuration &configuration,
                                                                 const Conditions &conditions,
                                                                 unsigned port)
{
    constexpr std::chrono::milliseconds unit{500};
    const NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
    const bool isAnnounced = settings::isServed(configuration.state, port) &&
                             entry.ucLanEnable == 1 && entry.ucIpv4Enable == 1 &&
                             !isUnset(ipv4(entry.aucIpv4Addr)) &&
                             isArpActive(entry, settings::arpAnnouncements, conditions);
    if (!isAnnounced) {
        return std::nullopt;
    }
    return Announcement{settings::nameOf(configuration.state, port),
                        std::to_array(entry.aucIpv4Addr), settings::arpOf(entry).interval * unit};
}

void Announcer::follow(const Configuration &configuration, const Conditions &conditions)
{
    std::vector<Entry> followed;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const auto wanted = announcementOf(configuration, conditions, port);
        const auto present = std::ranges::find(
            entries_, wanted, [](const Entry &entry) { return std::optional(entry.announcement); });
        if (wanted) {
            followed.push_back(present != entries_.end() ? *present : Entry{*wanted});
        }
    }
    entries_ = std::move(followed);
}

std::optional<Announcer::Clock::time_point> Announcer::sendDue(Machine &machine,
                                                               Clock::time_point now)
{
    std::optional<Clock::time_point> next;
    for (Entry &entry : entries_) {
        const Announcement &announcement = entry.announcement;
        if (!entry.isOver && entry.due <= now) {
            machine.announce(announcement.interface, announcement.address);
            entry.due = now + announcement.interval;
            entry.isOver = announcement.interval.count() == 0;
        }
        if (!entry.isOver) {
            next = std::min(next.value_or(entry.due), entry.due);
        }
    }
    return next;
}

} // namespace bmc::manager
