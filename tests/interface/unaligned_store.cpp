// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Accessors of the database and of the chassis manager's records.
#include "unaligned.hpp"

namespace unaligned {

std::vector<Row> storeRows()
{
    return {
        UNALIGNED_ROW(NW_LMDB_Get_NetStatus, {poisoned<NW_NET_STATUS_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_DNS, {poisoned<NW_DNS_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_LLDP, {poisoned<NW_LLDP_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_GetLanCfgInfo, {poisoned<NW_LAN_CFG_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_GetAnCfgInfo, {poisoned<NW_AN_CFG_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_IfcState, {poisoned<NW_IFC_STATE_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Put_IfcState, {filled<NW_IFC_STATE_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_NCSI, {poisoned<NW_NCSI_DB_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetNcsiConfig, {poisoned<NW_NCSI_DB_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetHostName, {poisoned<NW_HOSTNAME_DB_INFO_S>()}),

        UNALIGNED_ROW(NW_LMDB_Get_OaNetworkInfo, {poisoned<NW_OA_NETWORK_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Put_OaNetworkInfo, {filled<NW_OA_NETWORK_DB_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_OATemperaInfo, {poisoned<NW_OA_TEMPERA_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Put_OATemperaInfo, {filled<NW_OA_TEMPERA_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_AllOcpTemp, {poisoned<NW_ALL_OCP_TEMP_S>()}),
        UNALIGNED_ROW(NW_LMDB_Put_AllOcpTemp, {filled<NW_ALL_OCP_TEMP_S>()}),
        UNALIGNED_ROW(NW_LMDB_Get_AllOMFanInfo, {poisoned<NW_ALL_FAN_INFO_S>()}),
        UNALIGNED_ROW(NW_LMDB_Put_AllOMFanInfo, {filled<NW_ALL_FAN_INFO_S>()}),

        UNALIGNED_ROW(LIB_OA_GetOATemperaInfo, {poisoned<NW_OA_TEMPERA_INFO_S>()}),
        UNALIGNED_ROW(LIB_OA_GetAllOcpTemp, {poisoned<NW_ALL_OCP_TEMP_S>()}),
        UNALIGNED_ROW(LIB_OA_SendPowerOnNodeRequest, {setters::pattern(NW_OA_POWER_ON_REQ_SIZE)}),
        UNALIGNED_ROW(LIB_OA_SendBiosPostState, {Bytes{0x42}}),
        row("LIB_OA_SendOcpTemp",
            +[](const std::uint16_t *temperatures) { return LIB_OA_SendOcpTemp(temperatures, 32); },
            {setters::pattern(32)}),
    };
}

} // namespace unaligned
