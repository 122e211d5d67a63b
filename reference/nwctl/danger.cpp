// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/danger.hpp"

#include "nwctl/surroundings.hpp"
#include "settings/refusal.hpp"
#include "settings/ways_in.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;

void requireWayIn(const Configuration &present, const Configuration &after)
{
    try {
        settings::requireWayIn(present, after, linkOf);
    } catch (const settings::Refusal &refusal) {
        throw Failure(Exit::refused, "", "",
                      "no port would have an address and a link any more; --force makes the change "
                      "all the same",
                      refusal.code());
    }
}

/* The port whose interface it is, or that of a VLAN on it. */
unsigned portOf(const NW_IFC_STATE_DB_INFO_S &state, const std::string &interface)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const std::string name = settings::nameOf(state, port);
        if (interface == name || interface.starts_with(name + ".")) {
            return port;
        }
    }
    return NW_PORT_COUNT;
}

} // namespace

Parameter forceFlag()
{
    return flag(forceName,
                "make the change also when no port would have an address and a link any more");
}

std::string dangerOf(const Configuration &present, const Configuration &after,
                     const Arguments &arguments)
{
    if (!arguments.has(forceName)) {
        requireWayIn(present, after);
    }
    const auto session = remoteSession();
    const unsigned port = session ? portOf(present.state, session->interface) : NW_PORT_COUNT;
    if (port != NW_PORT_COUNT && settings::touches(present, after, port)) {
        return "You come in over " + session->interface + ", to " + textOf(session->address) + ".";
    }
    const auto gone = settings::cutOff(present, after, connectedAddresses());
    return gone.empty() ? ""
                        : "Somebody is connected to " + textOf(gone.front()) +
                              ", which the change takes away.";
}

} // namespace nwctl
