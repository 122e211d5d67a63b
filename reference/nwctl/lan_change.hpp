/* A change of one port's LAN settings: the fields to change and their new values. */
#pragma once

#include <array>
#include <cstdint>

#include "network_mng/lan.h"

namespace nwctl {

struct LanChange {
    unsigned port = 0;
    std::array<std::uint32_t, NW_LAN_WORD_COUNT> bits{}; /* NW_LAN_BIT_* by word */
    NW_LAN_SET_PORT_S fields{};
};

/* The records that carry the change to the network manager. */
NW_LAN_BITMAP_S bitmapOf(const LanChange &change);
NW_LAN_SET_CFG_S configOf(const LanChange &change);

/* Writes the changed fields into the port's entry of the stored record. */
void applyChange(const LanChange &change, NW_LAN_CFG_DB_INFO_S &record);

} // namespace nwctl
