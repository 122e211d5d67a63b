// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Accessors of the network configuration's records. */
#include "nw_store.h"

namespace {

constexpr NW_DB_FAILURE_S NoEnvironment(NW_DIAG_SHAPE_E eShape, NW_RESULT uiCode)
{
    return NW_FailsWith(uiCode, eShape, NW_TEXT_NO_ENVIRONMENT);
}

constexpr NW_DB_FAILURE_S NoDatabase(NW_DIAG_SHAPE_E eShape, NW_RESULT uiCode)
{
    return NW_FailsWith(uiCode, eShape, NW_TEXT_NO_DATABASE);
}

/* A reader whose lines are ordinary failures; the codes of the first two differ between readers. */
constexpr NW_ACCESSOR_S Reader(uint32_t uiKey, uint32_t uiSize, NW_RESULT uiNoEnvironment,
                               const char *pcNotRead)
{
    return {uiKey,
            uiSize,
            NW_DB_PATH_E::OPEN_THEN_CURRENT,
            NoEnvironment(NW_DIAG_ERROR, uiNoEnvironment),
            NoDatabase(NW_DIAG_ERROR, NW_ERR_DB_ENVIRONMENT),
            NW_FailsWith(NW_ERR_DB_READ, NW_DIAG_ERROR, pcNotRead)};
}

/* clang-format off */
constexpr NW_ACCESSOR_S s_stGetNetStatus = Reader(NW_KEY_NET_STATUS, sizeof(NW_NET_STATUS_S),
    NW_ERR_DB_ENVIRONMENT, "Get net status  info failed, Ret:%d");
constexpr NW_ACCESSOR_S s_stGetDns       = Reader(NW_KEY_DNS,        sizeof(NW_DNS_DB_INFO_S),
    NW_ERR_DB_ENVIRONMENT, "Get dns info failed, Ret:%d");
constexpr NW_ACCESSOR_S s_stGetLldp      = Reader(NW_KEY_LLDP,       sizeof(NW_LLDP_DB_INFO_S),
    NW_ERR_GENERAL,        "Get lldp info failed, Ret:%d");
constexpr NW_ACCESSOR_S s_stGetLanCfg    = Reader(NW_KEY_LAN_CFG,    sizeof(NW_LAN_CFG_DB_INFO_S),
    NW_ERR_GENERAL,        NW_TEXT_LAN_CFG_NOT_READ);
constexpr NW_ACCESSOR_S s_stGetAnCfg     = Reader(NW_KEY_AN_CFG,     sizeof(NW_AN_CFG_DB_INFO_S),
    NW_ERR_GENERAL,        "Get Ancfg info failed, Ret:%d");
constexpr NW_ACCESSOR_S s_stGetHostName  = Reader(NW_KEY_HOSTNAME,   sizeof(NW_HOSTNAME_DB_INFO_S),
    NW_ERR_GENERAL,        "Get hostname info failed, Ret:%d");

constexpr NW_ACCESSOR_S s_stPutNetStatus{
    NW_KEY_NET_STATUS, sizeof(NW_NET_STATUS_S), NW_DB_PATH_E::OPEN_THEN_CURRENT,
    NoEnvironment(NW_DIAG_ERROR, NW_ERR_GENERAL),
    NoDatabase(NW_DIAG_ERROR, NW_ERR_FAILED),
    NW_FailsWith(NW_ERR_FAILED, NW_DIAG_ERROR, "Failed to put net status information to DB.")};
constexpr NW_ACCESSOR_S s_stPutIfcState{
    NW_KEY_IFC_STATE, sizeof(NW_IFC_STATE_DB_INFO_S), NW_DB_PATH_E::OPEN_THEN_CURRENT,
    NoEnvironment(NW_DIAG_IFC_FAIL, NW_ERR_GENERAL),
    NoDatabase(NW_DIAG_IFC_FAIL, NW_ERR_IFC_NO_DB),
    NW_FailsWith(NW_ERR_IFC_WRITE, NW_DIAG_IFC_FAIL, "Failed to put interface state to DB.")};

/* Relies on an environment that the process has opened before. */
constexpr NW_ACCESSOR_S s_stGetNcsi{
    NW_KEY_NCSI, sizeof(NW_NCSI_DB_INFO_S), NW_DB_PATH_E::CURRENT_ONLY,
    {},
    NW_FailsWith(NW_ERR_GENERAL, NW_DIAG_ERROR, "Failed to get ncsi lmdb information!\n"),
    NW_FailsWithDatabasesCode(NW_DIAG_ERROR, "Get ncsi info failed!\n")};

} // namespace

/* The VLAN path reads with it, too. */
extern constexpr NW_ACCESSOR_S g_stGetIfcState{
    NW_KEY_IFC_STATE, sizeof(NW_IFC_STATE_DB_INFO_S), NW_DB_PATH_E::OPEN_THEN_CURRENT,
    NoEnvironment(NW_DIAG_IFC_FAIL, NW_ERR_GENERAL),
    NW_FailsWith(NW_ERR_GENERAL, NW_DIAG_IFC_FAIL, "Failed to get interface state lmdb information!\n"),
    NW_FailsWithDatabasesCode(NW_DIAG_IFC_FAIL, "Get interface state info failed!\n")};
/* clang-format on */

NW_RESULT NW_LMDB_Get_NetStatus(uint8_t *pstSetInProgress)
{
    NW_CHECK_NULL(pstSetInProgress, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetNetStatus, pstSetInProgress);
}

NW_RESULT NW_LMDB_Put_NetStatus(uint8_t ucSetInProgress)
{
    return NW_WriteRecord(s_stPutNetStatus, &ucSetInProgress);
}

NW_RESULT NW_LMDB_Get_DNS(NW_DNS_DB_INFO_S *pstDnsDbInfo)
{
    NW_CHECK_NULL(pstDnsDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetDns, pstDnsDbInfo);
}

NW_RESULT NW_LMDB_Get_LLDP(NW_LLDP_DB_INFO_S *pstLldpDbInfo)
{
    NW_CHECK_NULL(pstLldpDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetLldp, pstLldpDbInfo);
}

NW_RESULT NW_LMDB_GetLanCfgInfo(NW_LAN_CFG_DB_INFO_S *pstLanCfgDbInfo)
{
    NW_CHECK_NULL(pstLanCfgDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecord(s_stGetLanCfg, pstLanCfgDbInfo, pstLanCfgDbInfo);
}

NW_RESULT NW_LMDB_GetAnCfgInfo(NW_AN_CFG_DB_INFO_S *pstAnCfgDbInfo)
{
    NW_CHECK_NULL(pstAnCfgDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecord(s_stGetAnCfg, pstAnCfgDbInfo, pstAnCfgDbInfo);
}

NW_RESULT NW_LMDB_Get_IfcState(NW_IFC_STATE_DB_INFO_S *pstIfcStateDbInfo)
{
    NW_CHECK_NULL(pstIfcStateDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(g_stGetIfcState, pstIfcStateDbInfo);
}

NW_RESULT NW_LMDB_Put_IfcState(const NW_IFC_STATE_DB_INFO_S *pstIfcStateDbInfo)
{
    NW_CHECK_NULL(pstIfcStateDbInfo, NW_ERR_NULL_POINTER);

    return NW_WriteRecord(s_stPutIfcState, pstIfcStateDbInfo);
}

NW_RESULT NW_LMDB_Get_NCSI(NW_NCSI_DB_INFO_S *pstNcsiDbInfo)
{
    NW_CHECK_NULL(pstNcsiDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetNcsi, pstNcsiDbInfo);
}

NW_RESULT LIB_NW_GetHostName(NW_HOSTNAME_DB_INFO_S *pstHostNameInfo)
{
    NW_CHECK_NULL(pstHostNameInfo, NW_ERR_NULL_POINTER);

    const NW_RESULT uiResult = NW_ReadRecordCopied(s_stGetHostName, pstHostNameInfo);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Failed to get hostname info!");
    }
    return uiResult;
}

NW_RESULT LIB_NW_GetNcsiConfig(NW_NCSI_DB_INFO_S *pstNcsiCfgDbInfo)
{
    NW_CHECK_NULL(pstNcsiCfgDbInfo, NW_ERR_NULL_POINTER);

    NW_NCSI_DB_INFO_S stRecord{};
    const NW_RESULT uiResult = NW_LMDB_Get_NCSI(&stRecord);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get ncsi info failed!\n");
        return uiResult;
    }

    memcpy(pstNcsiCfgDbInfo, &stRecord, sizeof(stRecord));
    return NW_OK;
}

NW_RESULT LIB_NW_GetNcsiChannelIdOffset(uint16_t *pusChannelIdOffset)
{
    if (pusChannelIdOffset == nullptr) {
        return static_cast<NW_RESULT>(NW_DIAG_NULL_POINTER(pusChannelIdOffset));
    }

    return static_cast<NW_RESULT>(
        CAP_GetShortCapabilityWithName("SharePort", "ChannelIdOffset", pusChannelIdOffset));
}
