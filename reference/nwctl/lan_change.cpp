#include "lan_change.hpp"

namespace nwctl {

NW_LAN_BITMAP_S bitmapOf(const LanChange &change)
{
    NW_LAN_BITMAP_S bitmap{};
    for (unsigned word = 0; word < NW_LAN_WORD_COUNT; ++word) {
        bitmap.aauiWord[change.port][word] = change.bits[word];
    }
    return bitmap;
}

NW_LAN_SET_CFG_S configOf(const LanChange &change)
{
    NW_LAN_SET_CFG_S config{};
    config.astPort[change.port] = change.fields;
    return config;
}

} // namespace nwctl
