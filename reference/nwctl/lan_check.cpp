#include "lan_check.hpp"

namespace nwctl {

namespace {

constexpr std::uint32_t segmentBits =
    NW_LAN_BIT_IPV4_ENABLE | NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK | NW_LAN_BIT_IPV6_ENABLE |
    NW_LAN_BIT_IPV6_TYPE | NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX;
constexpr std::uint32_t allTypes = NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC;

} // namespace

NW_RESULT checkSegments(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                        NW_LAN_CFG_DB_INFO_S record, const NW_WIFI_ADDR_S &wireless)
{
    if ((change.bits[0] & segmentBits) == 0) {
        return NW_OK;
    }

    applyChange(change, record);
    return LIB_NW_CheckIPv4v6SameSegment(interfaces.ucIfcState, NW_PORTSET_ALL, allTypes, &wireless,
                                         &record);
}

} // namespace nwctl
