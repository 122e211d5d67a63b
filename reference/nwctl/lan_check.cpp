#include "lan_check.hpp"

#include "lan_fields.hpp"

namespace nwctl {

NW_RESULT checkSegments(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                        NW_LAN_CFG_DB_INFO_S record, const NW_WIFI_ADDR_S &wireless)
{
    bmc::manager::applyFields(change.bits, change.fields, record.astPort[change.port]);
    return LIB_NW_CheckIPv4v6SameSegment(interfaces.ucIfcState, NW_PORTSET_ALL,
                                         bmc::manager::segmentChecksOf(change.bits), &wireless,
                                         &record);
}

} // namespace nwctl
