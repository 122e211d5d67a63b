// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Who is connected to this machine, and how. Whoever links the commands without a machine of their
 * own has functions of these names of its own. */
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/address.hpp"

namespace nwctl {

/* A session that came in over the network. */
struct RemoteSession {
    bmc::Address address; /* of this machine */
    std::string interface;
};

/* The one in which this program was started, also behind sudo; nothing for one at the machine
 * itself. */
std::optional<RemoteSession> remoteSession();

/* Addresses of this machine to which somebody is connected. */
std::vector<bmc::Address> connectedAddresses();

/* Whether an interface that is up has a link; nothing for one that is down or missing. */
std::optional<bool> linkOf(const std::string &interface);

} // namespace nwctl
