#include "lan_check.hpp"

#include "lan_fields.hpp"

namespace nwctl {

NW_RESULT checkSegments(std::span<const LanChange> changes,
                        const NW_IFC_STATE_DB_INFO_S &interfaces, NW_LAN_CFG_DB_INFO_S record,
                        const NW_WIFI_ADDR_S &wireless)
{
    std::uint32_t checks = 0;
    for (const LanChange &change : changes) {
        checks |= bmc::manager::segmentChecksOf(change.bits);
        bmc::manager::applyFields(change.bits, change.fields, record.astPort[change.port]);
    }
    return LIB_NW_CheckIPv4v6SameSegment(interfaces.ucIfcState, NW_PORTSET_ALL, checks, &wireless,
                                         &record);
}

} // namespace nwctl
