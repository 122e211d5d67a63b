// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* LLDP settings. */
#include "network_mng/settings.h"
#include "nw_setter.h"

namespace {

constexpr NW_LOGGED_SETTER_S s_stSetLldp{{Network_RPC_Comm, NW_CMD_SET_LLDP, NW_DIAG_ERROR,
                                          "BMC_RPC_CallWithStruct Failed when setting lldpcfg!"},
                                         NW_LOG_LLDP};

constexpr uint8_t NW_LLDP_SET_STATE = 0x01;
constexpr uint8_t NW_LLDP_SET_MODE = 0x02;
constexpr uint8_t NW_LLDP_MODE_RECEIVE = 0x02;

/* IPMI-style enable values: the state alone up to 1, state and work mode up to 7. */
constexpr uint32_t NW_IPMI_STATE_MAX = 1;
constexpr uint32_t NW_IPMI_ENABLE_MAX = 7;

/* The ports' names, whatever the database holds. */
constexpr const char *s_apcPortName[] = {"eth0", "eth1"};

NW_RESULT NW_RefuseLldp(const NW_LLDP_SET_S &stRequest, NW_OPER_LOG_S *pstOperLog)
{
    NW_OperateLogBuild(NW_LOG_LLDP, NW_OPERLOG_LOCAL_FAIL, 0, &stRequest, pstOperLog);
    return NW_ERR_GENERAL;
}

/* The request that switches reception; without the receive bit a receive-only LLDP is switched off
 * as a whole. */
NW_LLDP_SET_S NW_ReceiveRequest(bool bReceive, const NW_LLDP_DB_INFO_S &stCurrent)
{
    const uint8_t ucMode = stCurrent.ucLldpWorkMode;
    NW_LLDP_SET_S stRequest{};

    stRequest.ucSetMask = NW_LLDP_SET_STATE | NW_LLDP_SET_MODE;
    if (bReceive) {
        stRequest.ucLldpEnable = 1;
        stRequest.ucLldpWorkMode = ucMode | NW_LLDP_MODE_RECEIVE;
    } else if (ucMode == NW_LLDP_MODE_RECEIVE) {
        stRequest.ucLldpWorkMode = ucMode;
    } else {
        stRequest.ucLldpEnable = stCurrent.ucLldpEnable;
        stRequest.ucLldpWorkMode = static_cast<uint8_t>(ucMode & ~NW_LLDP_MODE_RECEIVE);
    }
    return stRequest;
}

} // namespace

NW_RESULT LIB_NW_GetLLDP(NW_LLDP_DB_INFO_S *pstLLDPInfo)
{
    NW_CHECK_NULL(pstLLDPInfo, NW_ERR_FAILED);

    NW_LLDP_DB_INFO_S stLldp{};
    const NW_RESULT uiResult = NW_LMDB_Get_LLDP(&stLldp);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Failed to get lldp info!");
        return uiResult;
    }

    for (size_t i = 0; i < NW_CountOf(s_apcPortName); ++i) {
        BMC_Strlcpy(stLldp.astPort[i].szIfcName, s_apcPortName[i],
                    sizeof(stLldp.astPort[i].szIfcName));
    }
    memcpy(pstLLDPInfo, &stLldp, sizeof(stLldp));
    return NW_OK;
}

NW_RESULT LIB_NW_SetLLDP(const NW_LLDP_SET_S *pstSetLLDP, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstSetLLDP, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    return NW_Set(s_stSetLldp, pstSetLLDP, sizeof(*pstSetLLDP), pstOperLog);
}

NW_RESULT LIB_NW_LLDPRxEnable(uint32_t uiReq, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    if (uiReq > 1) {
        NW_DIAG(NW_DIAG_ERROR, "invalid req value[%d].", uiReq);
        return NW_RefuseLldp({}, pstOperLog);
    }
    NW_LLDP_DB_INFO_S stCurrent{};
    NW_RESULT uiResult = LIB_NW_GetLLDP(&stCurrent);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "LIB_NW_GetLLDP failed iRet is %d.", uiResult);
        return NW_RefuseLldp({}, pstOperLog);
    }

    const NW_LLDP_SET_S stRequest = NW_ReceiveRequest(uiReq == 1, stCurrent);
    uiResult = LIB_NW_SetLLDP(&stRequest, pstOperLog);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Set lldp rx enable failed: %d.", uiResult);
        return NW_ERR_GENERAL;
    }
    return NW_OK;
}

NW_RESULT LIB_NW_IPMI_LLDPEnable(uint32_t uiEnable, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    NW_LLDP_SET_S stRequest{};
    if (uiEnable > NW_IPMI_ENABLE_MAX) {
        NW_DIAG(NW_DIAG_ERROR, "Lldp enable[%d] is invalid.", uiEnable);
        return NW_RefuseLldp(stRequest, pstOperLog);
    }
    stRequest.ucSetMask = NW_LLDP_SET_STATE;
    stRequest.ucLldpEnable = uiEnable & 1U;
    if (uiEnable > NW_IPMI_STATE_MAX) {
        stRequest.ucSetMask |= NW_LLDP_SET_MODE;
        stRequest.ucLldpWorkMode = static_cast<uint8_t>(uiEnable >> 1);
    }

    const NW_RESULT uiResult = LIB_NW_SetLLDP(&stRequest, pstOperLog);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Ipmi set lldp enable failed: %d.", uiResult);
    }
    return uiResult;
}
