// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_change.hpp"

namespace nwctl {

NW_LAN_BITMAP_S bitmapOf(std::span<const LanChange> changes)
{
    NW_LAN_BITMAP_S bitmap{};
    for (const LanChange &change : changes) {
        for (unsigned word = 0; word < NW_LAN_WORD_COUNT; ++word) {
            bitmap.aauiWord[change.port][word] = change.bits[word];
        }
    }
    return bitmap;
}

NW_LAN_SET_CFG_S configOf(std::span<const LanChange> changes)
{
    NW_LAN_SET_CFG_S config{};
    for (const LanChange &change : changes) {
        config.astPort[change.port] = change.fields;
    }
    return config;
}

} // namespace nwctl
