// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change of one port's LAN settings: the fields to change and their new values. */
#pragma once

#include <cstdint>
#include <span>

#include "network_mng/lan.h"

namespace nwctl {

struct LanChange {
    unsigned port = 0;
    std::uint32_t bits[NW_LAN_WORD_COUNT]{}; /* NW_LAN_BIT_* by word */
    NW_LAN_SET_PORT_S fields{};
};

/* The records that carry the changes, one for a port at most, to the network manager. */
NW_LAN_BITMAP_S bitmapOf(std::span<const LanChange> changes);
NW_LAN_SET_CFG_S configOf(std::span<const LanChange> changes);

} // namespace nwctl
