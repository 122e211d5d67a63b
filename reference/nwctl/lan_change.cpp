#include "lan_change.hpp"

#include <cstddef>
#include <cstring>

namespace nwctl {

namespace {

/* A field of the request and its place in the stored entry; both have the same width. */
struct Field {
    std::uint32_t word;
    std::uint32_t bit;
    std::size_t from;
    std::size_t to;
    std::size_t size;
};

#define FIELD(word, bit, name, stored)                                                             \
    {                                                                                              \
        word, bit, offsetof(NW_LAN_SET_PORT_S, name), offsetof(NW_LAN_CFG_PORT_S, stored),         \
            sizeof(NW_LAN_SET_PORT_S::name)                                                        \
    }

/* clang-format off */
constexpr Field fields[] = {
    FIELD(0, NW_LAN_BIT_LAN_ENABLE,   ucLanEnable,    ucLanEnable),
    FIELD(0, NW_LAN_BIT_IPV4_ENABLE,  ucIpv4Enable,   ucIpv4Enable),
    FIELD(0, NW_LAN_BIT_IPV4_TYPE,    ucIpv4Type,     ucIpv4Type),
    FIELD(0, NW_LAN_BIT_IPV4_ADDR,    aucIpv4Addr,    aucIpv4Addr),
    FIELD(0, NW_LAN_BIT_IPV4_MASK,    aucIpv4Mask,    aucIpv4Mask),
    FIELD(0, NW_LAN_BIT_IPV4_GATEWAY, aucIpv4Gateway, aucIpv4Gateway),
    FIELD(0, NW_LAN_BIT_IPV6_ENABLE,  ucIpv6Enable,   ucIpv6Enable),
    FIELD(0, NW_LAN_BIT_IPV6_TYPE,    ucIpv6Type,     ucIpv6Type),
    FIELD(0, NW_LAN_BIT_IPV6_ADDR,    aucIpv6Addr,    aucIpv6Addr),
    FIELD(0, NW_LAN_BIT_IPV6_PREFIX,  ucIpv6Prefix,   ucIpv6Prefix),
    FIELD(0, NW_LAN_BIT_IPV6_GATEWAY, aucIpv6Gateway, aucIpv6Gateway),
    FIELD(0, NW_LAN_BIT_VLAN_ID,      usVlanid,       stVlan.usVlanid),
};
/* clang-format on */

#undef FIELD

} // namespace

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

void applyChange(const LanChange &change, NW_LAN_CFG_DB_INFO_S &record)
{
    std::array<std::byte, sizeof(NW_LAN_SET_PORT_S)> from;
    std::array<std::byte, sizeof(NW_LAN_CFG_PORT_S)> to;
    std::memcpy(from.data(), &change.fields, from.size());
    std::memcpy(to.data(), &record.astPort[change.port], to.size());

    for (const Field &field : fields) {
        if ((change.bits[field.word] & field.bit) != 0) {
            std::memcpy(&to[field.to], &from[field.from], field.size);
        }
    }
    std::memcpy(&record.astPort[change.port], to.data(), to.size());
}

} // namespace nwctl
