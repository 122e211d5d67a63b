// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Sends the announcements of the ports, each at its interval. */
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "manager/engine/machine.hpp"

namespace bmc::manager {

class Announcer {
public:
    using Clock = std::chrono::steady_clock;

    /* Ports that have begun to announce, or with another address, do so at the next chance. */
    void follow(const Configuration &configuration, const Conditions &conditions);

    /* Sends what is due; answers when there is more, if ever. */
    std::optional<Clock::time_point> sendDue(Machine &machine, Clock::time_point now);

private:
    struct Announcement {
        std::string interface;
        Ipv4Bytes address{};
        std::chrono::milliseconds interval{}; /* 0: once */

        bool operator==(const Announcement &) const = default;
    };
    struct Entry {
        Announcement announcement;
        Clock::time_point due{};
        bool isOver = false;
    };

    static std::optional<Announcement> announcementOf(const Configuration &configuration,
                                                      const Conditions &conditions, unsigned port);

    std::vector<Entry> entries_;
};

} // namespace bmc::manager
