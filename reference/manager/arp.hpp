// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands 5 to 7: whether the ports answer ARP and announce themselves. */
#pragma once

#include <array>
#include <chrono>
#include <vector>

#include "effects.hpp"

namespace bmc::manager {

/* Check a request and note what it asks for; throw Refusal. */
void editArpSuspend(Draft &draft, Payload payload);
void editArpStatus(Draft &draft, Payload payload);
void editArpResume(Draft &draft, Payload payload);

void applyArp(const Context &context);

/* Sends the announcements of the ports, each at its interval. */
class Announcer {
public:
    /* Ports that have begun to announce, or with another address, do so at the next chance. */
    void follow(const Configuration &configuration);

    /* Sends what is due; answers the milliseconds until the next one, -1 for none. */
    int sendDue(std::chrono::steady_clock::time_point now);

private:
    struct Announcement {
        std::string interface;
        std::array<std::uint8_t, NW_IPV4_SIZE> address{};
        std::chrono::milliseconds interval{}; /* 0: once */

        bool operator==(const Announcement &) const = default;
    };
    struct Entry {
        Announcement announcement;
        std::chrono::steady_clock::time_point due{};
        bool isOver = false;
    };

    static std::optional<Announcement> announcementOf(const Configuration &configuration,
                                                      unsigned port);

    std::vector<Entry> entries_;
};

} // namespace bmc::manager
