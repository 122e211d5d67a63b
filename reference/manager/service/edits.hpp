// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What each command makes of the present configuration: it checks a request, changes what it
 * selects, and notes that in the scope. All throw Refusal. */
#pragma once

#include <cstring>
#include <span>
#include <string>

#include "manager/engine/engine.hpp"
#include "network_mng/rpc.h"

namespace bmc::manager {

using settings::isServed;

using Payload = std::span<const std::uint8_t>;

/* A record that begins at an offset of the payload. */
template <typename Content>
Content contentOf(Payload payload, std::size_t offset = 0)
{
    Content content;
    std::memcpy(&content, payload.subspan(offset, sizeof(content)).data(), sizeof(content));
    return content;
}

void editHostName(Change &change, Payload payload);
void editDns(Change &change, Payload payload);
void editLldp(Change &change, Payload payload);
void editLan(Change &change, Payload payload);
void editNetMode(Change &change, Payload payload);
void editArpSuspend(Change &change, Payload payload);
void editArpStatus(Change &change, Payload payload);
void editArpResume(Change &change, Payload payload);
void editLinkModes(Change &change, Payload payload);
void editLanReverse(Change &change, Payload payload);
/* LAN, DNS and network port mode in one. */
void editAll(Change &change, Payload payload);

/* The part of editNetMode that doesn't look at other settings, and the rest of it. */
void selectNetMode(Change &change, Payload payload);
void checkNetMode(const Change &change);

} // namespace bmc::manager
