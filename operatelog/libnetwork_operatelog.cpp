// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Operation log: the choice of the text, the table walk, the slots of the combined set. */
#include "nw_operate_log.h"

namespace {

/* A value's words, at most. */
constexpr uint32_t NW_VALUE_TEXT_SIZE = 300;

bool NW_IsRowTaken(const NW_OPERATE_LOG_DESC_S &stRow, uint32_t uiModule, uint32_t uiWordIdx,
                   uint32_t uiWord)
{
    return stRow.uiModuleBit == uiModule && (stRow.uiBitMask & uiWord) != 0 &&
           (stRow.uiBitMask & stRow.uiExcludeMask) == 0 && stRow.uiBitmapIdx == uiWordIdx;
}

void NW_AppendRow(const NW_OPERATE_LOG_DESC_S &stRow, const uint8_t *pucValue,
                  NW_OPER_LOG_S *pstOperLog)
{
    if (stRow.pfnParamFormat == nullptr) {
        NW_AppendOperLog(pstOperLog, stRow.acDesc, uint32_t{*pucValue});
        return;
    }

    char szValue[NW_VALUE_TEXT_SIZE]{};
    stRow.pfnParamFormat(pucValue, sizeof(szValue), szValue);
    NW_AppendOperLog(pstOperLog, stRow.acDesc, szValue);
}

void NW_BuildFailure(uint32_t uiModule, uint32_t uiResult, uint32_t uiPort,
                     NW_OPER_LOG_S *pstOperLog)
{
    for (const NW_OPERATE_LOG_DESC_S &stRow : g_astFailureOperateLogDefault) {
        if (stRow.uiModuleBit != uiModule ||
            (stRow.uiBitMask != 0 && stRow.uiBitMask != uiResult)) {
            continue;
        }
        const bool bPerPort = static_cast<uint8_t>(stRow.uiPerPort) != 0;
        BMC_Scnprintf(pstOperLog->szOperLog, sizeof(pstOperLog->szOperLog),
                      bPerPort ? stRow.acDesc : "%s",
                      bPerPort ? NW_PortName(uiPort) : stRow.acDesc);
        return;
    }
}

void NW_BuildSuccess(uint32_t uiModule, uint32_t uiPort, const void *pNetConfig,
                     NW_OPER_LOG_S *pstOperLog)
{
    for (const NW_OPERATE_LOG_SUB_MODULE_S &stRow : g_astNwOperateLogSubModuleTbl) {
        if ((stRow.uiModuleBit & uiModule) == 0) {
            continue;
        }
        if (stRow.ucSkipHead == 0) {
            NW_AppendOperLog(pstOperLog, "%s", stRow.acHeadDesc);
        }
        stRow.pfnBuild(0, uiPort, pNetConfig, pstOperLog);
    }
}

/* The slot's text, ended even where the caller's slot is not. */
void NW_LogOperLog(const NW_OPER_LOG_S &stOperLog)
{
    char szText[NW_OPER_LOG_SLOT_SIZE]{};

    memcpy(szText, stOperLog.szOperLog, strnlen(stOperLog.szOperLog, sizeof(szText) - 1));
    NW_DIAG(NW_DIAG_DEBUG, "OperLog %s.", szText);
}

/* Builds a success text in a context of its own, then copies it into the slot and the context's
 * level to *pucLevel. Nobody who looks at the slot's record sees a text that is being built. */
void NW_BuildSlot(uint32_t uiModule, uint32_t uiPort, const void *pNetConfig,
                  char (&szSlot)[NW_OPER_LOG_SLOT_SIZE], uint8_t *pucLevel)
{
    NW_OPER_LOG_S stPrivate{};

    NW_OperateLogBuild(uiModule, NW_OK, uiPort, pNetConfig, &stPrivate);
    BMC_Strlcpy(szSlot, stPrivate.szOperLog, sizeof(szSlot));
    *pucLevel = stPrivate.ucLogLevel;
}

/* The combined set's shares of the two words do not overlap. */
/* clang-format off */
constexpr NW_LAN_SLOT_S s_astCombinedSlot[NW_LAN_SLOT_COUNT] = {
    {{ NW_LAN_BITS_IPV6_ROUTES,  0},                       &NW_OPER_LOG_S::szLanIpv6RouteLog},
    {{ 0,                        NW_LAN_BITS_IPV4_ROUTES}, &NW_OPER_LOG_S::szLanIpv4RouteLog},
    {{~NW_LAN_BITS_IPV6_ROUTES, ~NW_LAN_BITS_IPV4_ROUTES}, &NW_OPER_LOG_S::szLanOtherLog},
};

/* Parts of the combined request in the order of their texts; the LAN part fills slots of its own. */
struct NW_COMBINED_PART_S {
    uint32_t uiModule;
    size_t ulOffset;
    char (NW_OPER_LOG_S::*pszSlot)[NW_OPER_LOG_SLOT_SIZE];
};
constexpr NW_COMBINED_PART_S s_astCombinedPart[] = {
    {NW_LOG_LAN,      offsetof(NW_SET_NETWORK_ALL_S, stLan),      nullptr},
    {NW_LOG_DNS,      offsetof(NW_SET_NETWORK_ALL_S, aucDns),     &NW_OPER_LOG_S::szDnsLog},
    {NW_LOG_NET_MODE, offsetof(NW_SET_NETWORK_ALL_S, aucNetMode), &NW_OPER_LOG_S::szNetModeLog},
};
/* clang-format on */

void NW_BuildCombinedPart(const NW_COMBINED_PART_S &stPart, const NW_SET_NETWORK_ALL_S &stRequest,
                          uint32_t uiPort, NW_OPER_LOG_S *pstOperLog)
{
    if (stPart.pszSlot == nullptr) {
        NW_LAN_SET_REQ_S stLan = stRequest.stLan;
        NW_BuildLanSlots(s_astCombinedSlot, uiPort, &stLan, pstOperLog, &pstOperLog->ucLogLevel);
        return;
    }

    const auto *pucRequest = reinterpret_cast<const uint8_t *>(&stRequest);
    NW_BuildSlot(stPart.uiModule, uiPort, pucRequest + stPart.ulOffset, pstOperLog->*stPart.pszSlot,
                 &pstOperLog->ucLogLevel);
}

} // namespace

void NW_ParseSucessConfigParam(const uint8_t *pucNetConfig, uint32_t uiModule, uint32_t uiWordIdx,
                               uint32_t uiWord, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pucNetConfig);
    NW_CHECK_NULL(pstOperLog);

    for (const NW_OPERATE_LOG_DESC_S &stRow : g_astSuccessOperateLogDescTbl) {
        if (NW_IsRowTaken(stRow, uiModule, uiWordIdx, uiWord)) {
            NW_AppendRow(stRow, pucNetConfig + stRow.uiParamOffset, pstOperLog);
        }
    }
}

void NW_OperateLogBuild(uint32_t uiModule, uint32_t uiResult, uint32_t uiPort,
                        const void *pNetConfig, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    pstOperLog->ucLogLevel = NW_OPER_LOG_LEVEL;
    if (uiResult != NW_OK) {
        NW_BuildFailure(uiModule, uiResult, uiPort, pstOperLog);
    } else {
        NW_BuildSuccess(uiModule, uiPort, pNetConfig, pstOperLog);
    }
    NW_LogOperLog(*pstOperLog);
}

void NW_BuildLanSlots(const NW_LAN_SLOT_S (&astSlot)[NW_LAN_SLOT_COUNT], uint32_t uiPort,
                      NW_LAN_SET_REQ_S *pstRequest, NW_OPER_LOG_S *pstOperLog, uint8_t *pucLevel)
{
    const NW_LAN_BITMAP_S stWhole = pstRequest->stBitmap;

    for (const NW_LAN_SLOT_S &stSlot : astSlot) {
        pstRequest->stBitmap = stWhole;
        for (uint32_t i = 0; i < NW_LAN_WORD_COUNT; ++i) {
            NW_DecomposeBitmap(&pstRequest->stBitmap, stSlot.aulMask[i], i);
        }
        NW_BuildSlot(NW_LOG_LAN, uiPort, pstRequest, pstOperLog->*stSlot.pszSlot, pucLevel);
    }
}

void NW_OperateLogBuildAll(uint32_t uiSetMask, uint32_t uiFailModule, uint32_t uiResult,
                           uint32_t uiPort, const void *pstSetNetworkAll, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstSetNetworkAll);
    NW_CHECK_NULL(pstOperLog);

    const auto *pstRequest = static_cast<const NW_SET_NETWORK_ALL_S *>(pstSetNetworkAll);
    for (const NW_COMBINED_PART_S &stPart : s_astCombinedPart) {
        if (uiResult == NW_OK && (uiSetMask & stPart.uiModule) != 0) {
            NW_BuildCombinedPart(stPart, *pstRequest, uiPort, pstOperLog);
        } else if (uiResult != NW_OK && uiFailModule == stPart.uiModule) {
            NW_OperateLogBuild(uiFailModule, uiResult, uiPort,
                               static_cast<const uint8_t *>(pstSetNetworkAll) + stPart.ulOffset,
                               pstOperLog);
        }
    }
}
