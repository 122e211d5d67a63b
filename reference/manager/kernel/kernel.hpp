// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The kernel's interfaces, addresses and routes, through rtnetlink: read as a whole, changed step
 * by step. */
#pragma once

#include <cstdint>
#include <string>

#include "manager/kernel/netlink_objects.hpp"
#include "manager/state/actual.hpp"
#include "manager/state/plan.hpp"

namespace bmc::manager {

/* Marks the routes that are the manager's own. */
inline constexpr std::uint8_t routeProtocol = 124;

/* After any failed call the socket is opened anew: what an answer that never came leaves behind in
 * the old one would be taken for the next call's. Whether the kernel did what it was asked tells
 * only the next reading. */
class Kernel {
public:
    /* Throws MachineError. */
    Kernel();
    Kernel(const Kernel &) = delete;
    Kernel &operator=(const Kernel &) = delete;

    /* All links; and as items what they hold, with the kernel's own routes and those of others
     * left out. Throws MachineError when it cannot be read as a whole. */
    Actual read();

    /* Makes an item be there, or not. What is to go and isn't there is no error. Throws
     * MachineError. */
    void apply(const Step &step);

private:
    /* What the kernel says of the last message that it refused. */
    struct Reason {
        int error = 0; /* errno */
        std::string text{};

        std::string words() const;
    };
    static int keepReason(sockaddr_nl *from, nlmsgerr *answer, void *reason);

    void open();
    template <typename Call>
    auto guarded(const Call &call);

    Reason reason_;
    Owned<nl_sock> socket_;
};

} // namespace bmc::manager
