// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Auto-negotiation, duplex and speed of the ports. */
#include "network_mng/settings.h"
#include "nw_setter.h"

static constexpr NW_LOGGED_SETTER_S s_stSetAn{
    {Network_RPC_Comm, NW_CMD_SET_AN, NW_DIAG_ERROR,
     "Network_RPC_Comm Failed when setting net port's AN and Speed!"},
    NW_LOG_AN,
    NW_ANSWERS_E::RESPONSE_WORD};

NW_RESULT LIB_NW_SetAnPortConfig(const uint8_t *pstAnBitmap, const uint8_t *pstAnConfig,
                                 NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstAnConfig, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstAnBitmap, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    uint8_t aucRequest[sizeof(NW_AN_SET_REQ_S)]{};
    constexpr size_t NW_CONFIG_OFFSET = offsetof(NW_AN_SET_REQ_S, aucConfigHead);
    static_assert(NW_CONFIG_OFFSET + NW_AN_CONFIG_SIZE == sizeof(aucRequest));
    memcpy(aucRequest + offsetof(NW_AN_SET_REQ_S, auiBitmap), pstAnBitmap, NW_AN_BITMAP_SIZE);
    memcpy(aucRequest + NW_CONFIG_OFFSET, pstAnConfig, NW_AN_CONFIG_SIZE);

    return NW_Set(s_stSetAn, aucRequest, sizeof(aucRequest), pstOperLog);
}

NW_RESULT LIB_NW_GetAnConfig(NW_AN_CFG_DB_INFO_S *pstAnCfgDbInfo)
{
    NW_CHECK_NULL(pstAnCfgDbInfo, NW_ERR_NULL_POINTER);

    NW_AN_CFG_DB_INFO_S stRecord{};
    const NW_RESULT uiResult = NW_LMDB_GetAnCfgInfo(&stRecord);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "NW_LMDB_GetAnCfgInfo get AN status failed! iRet %d.", uiResult);
        return uiResult;
    }

    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        NW_AN_CFG_PORT_S &stPort = stRecord.astPort[i];
        if (i != NW_PORT_ETH0) {
            NW_GetAnStatus(i, &stPort.ucAutoNeg, &stPort.ucDuplex, &stPort.ucSpeed);
        } else if (stPort.ucAutoNeg == 1) {
            uint8_t ucDiscarded = 0; /* port 0 keeps its stored setting */
            NW_GetAnStatus(i, &ucDiscarded, &stPort.ucDuplex, &stPort.ucSpeed);
        }
    }
    memcpy(pstAnCfgDbInfo, &stRecord, sizeof(stRecord));
    return NW_OK;
}
