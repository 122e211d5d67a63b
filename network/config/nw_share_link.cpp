// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The shared-link mode: a network mode and port 1's LAN, changed one after the other. */
#include "network_mng/lan.h"
#include "network_mng/settings.h"
#include "nw_frame.h"

namespace {

struct NW_LINK_STEP_S {
    NW_RESULT (*pfnChange)(uint8_t ucValue, NW_OPER_LOG_S *pstOperLog);
    uint8_t ucValue;
    const char *pcFailText;
};

constexpr size_t NW_LINK_STEPS = 2;

NW_RESULT NW_ChangeNetMode(uint8_t ucMode, NW_OPER_LOG_S *pstOperLog)
{
    const NW_NET_MODE_SET_S stRequest{0, 1, ucMode, {}};

    return LIB_NW_SetNetMode(reinterpret_cast<const uint8_t *>(&stRequest), pstOperLog);
}

NW_RESULT NW_ChangeEth1Lan(uint8_t ucEnable, NW_OPER_LOG_S *pstOperLog)
{
    NW_LAN_BITMAP_S stBitmap{};
    NW_LAN_SET_CFG_S stConfig{};

    stBitmap.aauiWord[NW_PORT_ETH1][0] = NW_LAN_BIT_LAN_ENABLE;
    stConfig.astPort[NW_PORT_ETH1].ucLanEnable = ucEnable;
    return LIB_NW_SetLanConfig(&stBitmap, &stConfig, pstOperLog);
}

constexpr NW_LINK_STEP_S NetMode(uint8_t ucMode)
{
    return {NW_ChangeNetMode, ucMode, "change net mode failed, Ret = %d"};
}

constexpr NW_LINK_STEP_S Eth1Lan(uint8_t ucEnable)
{
    return {NW_ChangeEth1Lan, ucEnable, "change eth1 lan mode failed, Ret = %d"};
}

/* By shared-link mode. The port is enabled before the bond is formed. */
constexpr NW_LINK_STEP_S s_aastStep[][NW_LINK_STEPS] = {
    {NetMode(NW_IFC_STATE_SEPARATE), Eth1Lan(0)},
    {NetMode(NW_IFC_STATE_SEPARATE), Eth1Lan(1)},
    {Eth1Lan(1), NetMode(NW_IFC_STATE_ADAPTIVE)},
};

NW_RESULT NW_RunLinkStep(const NW_LINK_STEP_S &stStep, NW_OPER_LOG_S *pstOperLog)
{
    if (stStep.pfnChange(stStep.ucValue, pstOperLog) == NW_OK) {
        return NW_OK;
    }
    NW_DIAG(NW_DIAG_ERROR, "ChangeNetMode Failed!");
    NW_DIAG(NW_DIAG_ERROR, stStep.pcFailText, NW_ERR_GENERAL);
    return NW_ERR_GENERAL;
}

/* Shared or dedicated, by the LAN of the second port, whose stored name may fill its field. */
NW_RESULT NW_SeparateLinkMode(const NW_IFC_STATE_INFO_S &stIfcState, uint8_t *pucNcsiEnable)
{
    char szName[NW_IFC_NAME_SIZE + 1]{};
    memcpy(szName, stIfcState.acIfcName[NW_PORT_ETH1], NW_IFC_NAME_SIZE);

    NW_ETHER_INS_INFO_S stEther{};
    const NW_RESULT uiResult = LIB_NW_GetLanConfig(szName, &stEther);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Failed to get eth1 info, IfcName:%s iRet:%#x", szName, uiResult);
        return NW_ERR_GENERAL;
    }
    *pucNcsiEnable = stEther.ucLanEnable == 1 ? NW_SHARE_LINK_SHARED : NW_SHARE_LINK_DEDICATED;
    return NW_OK;
}

} // namespace

NW_RESULT LIB_NW_ChangeShareLinkMode(uint8_t ucMode)
{
    if (ucMode >= NW_CountOf(s_aastStep)) {
        NW_DIAG(NW_DIAG_ERROR, "Set ncsi config failed, ucdate error.");
        return NW_ERR_GENERAL;
    }

    NW_OPER_LOG_S stDiscarded{};
    for (const NW_LINK_STEP_S &stStep : s_aastStep[ucMode]) {
        const NW_RESULT uiResult = NW_RunLinkStep(stStep, &stDiscarded);
        if (uiResult != NW_OK) {
            return uiResult;
        }
    }
    return NW_OK;
}

NW_RESULT LIB_NW_GetShareLinkMode(uint8_t *pucNcsiEnable)
{
    NW_CHECK_NULL(pucNcsiEnable, NW_ERR_NULL_POINTER);

    NW_IFC_STATE_INFO_S stIfcState{};
    if (LIB_NW_GetInterfaceState(&stIfcState) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Failed to get interface state");
        return NW_ERR_GENERAL;
    }

    if (stIfcState.ucIfcState == NW_IFC_STATE_SEPARATE) {
        return NW_SeparateLinkMode(stIfcState, pucNcsiEnable);
    }
    *pucNcsiEnable = stIfcState.ucIfcState == NW_IFC_STATE_ADAPTIVE ? NW_SHARE_LINK_ACTIVE_STANDBY
                                                                    : NW_SHARE_LINK_DEDICATED;
    return NW_OK;
}
