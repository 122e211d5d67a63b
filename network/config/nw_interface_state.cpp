// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Network mode and interface state, combined set, port switchover. */
#include "network_mng/lan.h"
#include "network_mng/settings.h"
#include "nw_setter.h"

namespace {

/* clang-format off */
constexpr NW_LOGGED_SETTER_S s_stSetNetMode{
    {Network_RPC_Comm, NW_CMD_SET_NET_MODE,    NW_DIAG_IFC_FAIL, NW_TEXT_IFC_STATE_NOT_SET}, NW_LOG_NET_MODE};
constexpr NW_LOGGED_SETTER_S s_stSetLanReverse{
    {Network_RPC_Comm, NW_CMD_SET_LAN_REVERSE, NW_DIAG_IFC_FAIL, NW_TEXT_IFC_STATE_NOT_SET}, NW_LOG_LAN_REVERSE};
constexpr NW_SETTER_S s_stSetAll{
    Network_RPC_Comm,  NW_CMD_SET_ALL,         NW_DIAG_IFC_FAIL, NW_TEXT_IFC_STATE_NOT_SET};
/* clang-format on */

/* The channels that a LAN may have. */
constexpr bool NW_IsLanChannel(uint32_t uiChannel)
{
    return uiChannel == 1 || uiChannel == 8;
}

/* Port of a LAN channel in the present network mode. */
NW_RESULT NW_PortOfChannel(const NW_IFC_STATE_DB_INFO_S &stIfcState, uint32_t uiChannel,
                           uint32_t *puiPort)
{
    switch (stIfcState.ucIfcState) {
    case NW_IFC_STATE_SEPARATE:
        *puiPort = uiChannel == stIfcState.aucChannel[NW_PORT_ETH0] ? NW_PORT_ETH0 : NW_PORT_ETH1;
        return NW_OK;
    case NW_IFC_STATE_ADAPTIVE:
        if (uiChannel != stIfcState.aucChannel[NW_PORT_BOND0]) {
            /* Prints the mode, not the channel that is expected. */
            NW_DIAG(NW_DIAG_ERROR, "Channel num is invalid,channel is only %d in adapt mode .",
                    stIfcState.ucIfcState);
            return NW_ERR_OUT_OF_RANGE;
        }
        *puiPort = NW_PORT_BOND0;
        return NW_OK;
    default:
        NW_DIAG(NW_DIAG_ERROR, "Invalid netmode param.");
        return NW_ERR_OUT_OF_RANGE;
    }
}

} // namespace

NW_RESULT LIB_NW_GetInterfaceState(NW_IFC_STATE_INFO_S *pstIfcStateInfo)
{
    NW_CHECK_NULL(pstIfcStateInfo, NW_ERR_NULL_POINTER);

    NW_IFC_STATE_DB_INFO_S stRecord{};
    const NW_RESULT uiResult = NW_LMDB_Get_IfcState(&stRecord);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_IFC_FAIL, "Failed to get interface state info.");
        return uiResult;
    }

    pstIfcStateInfo->ucIfcState = stRecord.ucIfcState;
    pstIfcStateInfo->aucIfcValue[0] = stRecord.ucIfcValue1;
    memcpy(pstIfcStateInfo->aucIfcValue + 1, stRecord.aucPortPresent,
           sizeof(stRecord.aucPortPresent));
    pstIfcStateInfo->ucIfcValue6 = stRecord.ucIfcValue6;
    memcpy(pstIfcStateInfo->aucChannel, stRecord.aucChannel, sizeof(stRecord.aucChannel));
    memcpy(pstIfcStateInfo->acIfcName, stRecord.acIfcName, sizeof(stRecord.acIfcName));
    return NW_OK;
}

NW_RESULT NW_CheckChannel(uint32_t uiChannel, uint32_t *puiIndex)
{
    NW_CHECK_NULL(puiIndex, NW_ERR_NULL_POINTER);

    NW_IFC_STATE_DB_INFO_S stIfcState{};
    if (NW_LMDB_Get_IfcState(&stIfcState) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "failed to get netmode.");
        return NW_ERR_GENERAL;
    }
    if (!NW_IsLanChannel(uiChannel)) {
        NW_DIAG(NW_DIAG_ERROR, "Channel[%d] is invalid,param is out of range.", uiChannel);
        return NW_ERR_OUT_OF_RANGE;
    }
    uint32_t uiPort;
    const NW_RESULT uiResult = NW_PortOfChannel(stIfcState, uiChannel, &uiPort);
    if (uiResult != NW_OK) {
        return uiResult;
    }

    NW_Store(puiIndex, uiPort); /* even where the port is missing */
    if (stIfcState.aucPortPresent[uiPort] == 0) {
        NW_DIAG(NW_DIAG_ERROR, "Current port is not supported.");
        return NW_ERR_PORT_NOT_SUPPORTED;
    }
    return NW_OK;
}

NW_RESULT LIB_NW_SetNetMode(const uint8_t *pstSetNetMode, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstSetNetMode, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    return NW_Set(s_stSetNetMode, pstSetNetMode, sizeof(NW_NET_MODE_SET_S), pstOperLog);
}

NW_RESULT LIB_NW_SetLanReverse(const NW_LAN_REVERSE_SET_S *pstSetLanReverse,
                               NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstSetLanReverse, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    return NW_Set(s_stSetLanReverse, pstSetLanReverse, sizeof(*pstSetLanReverse), pstOperLog);
}

NW_RESULT LIB_NW_SetNetWorkAll(const NW_SET_NETWORK_ALL_S *pstSetNetworkAll,
                               NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstSetNetworkAll, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    NW_RPC_RESPONSE_S stResponse;
    const NW_RESULT uiResult =
        NW_SendRequest(s_stSetAll, pstSetNetworkAll, sizeof(*pstSetNetworkAll), &stResponse);

    /* The answer's data begin with the module that failed. */
    NW_OperateLogBuildAll(pstSetNetworkAll->ulModuleMask, NW_Load<uint32_t>(stResponse.aucResData),
                          uiResult, stResponse.uiDetail, pstSetNetworkAll, pstOperLog);
    return uiResult;
}
