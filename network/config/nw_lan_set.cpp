// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Change of LAN settings. */
#include "network_mng/lan.h"
#include "nw_operate_log.h"
#include "nw_rpc.h"

namespace {

constexpr NW_SETTER_S s_stSetLan{Network_RPC_Comm, NW_CMD_SET_LAN, NW_DIAG_ERROR,
                                 "BMC_RPC_CallWithStruct Failed when setting lancfg!"};

constexpr uint32_t NW_WHOLE_WORD = 0xFFFFFFFF;

/* The two route slots keep the word that is not theirs, and so repeat its fields: unlike the
 * combined set's, and as callers know it. */
/* clang-format off */
constexpr NW_LAN_SLOT_S s_astLanSlot[NW_LAN_SLOT_COUNT] = {
    {{ NW_LAN_BITS_IPV6_ROUTES,  NW_WHOLE_WORD},           &NW_OPER_LOG_S::szLanIpv6RouteLog},
    {{ NW_WHOLE_WORD,            NW_LAN_BITS_IPV4_ROUTES}, &NW_OPER_LOG_S::szLanIpv4RouteLog},
    {{~NW_LAN_BITS_IPV6_ROUTES, ~NW_LAN_BITS_IPV4_ROUTES}, &NW_OPER_LOG_S::szLanOtherLog},
};
/* clang-format on */

} // namespace

NW_RESULT LIB_NW_SetLanConfig(NW_LAN_BITMAP_S *pstLanBitmap, NW_LAN_SET_CFG_S *pstLanConfig,
                              NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstLanConfig, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstLanBitmap, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    NW_LAN_SET_REQ_S stRequest{pstLanConfig->ulLanCfgHead, *pstLanBitmap, *pstLanConfig};
    NW_RPC_RESPONSE_S stResponse;
    const NW_RESULT uiResult =
        NW_SendRequest(s_stSetLan, &stRequest, sizeof(stRequest), &stResponse);

    if (uiResult != NW_OK) {
        NW_OperateLogBuild(NW_LOG_LAN, uiResult, stResponse.uiDetail, &stRequest, pstOperLog);
    } else {
        uint8_t ucDiscarded; /* the caller's level stays as it was */
        NW_BuildLanSlots(s_astLanSlot, stResponse.uiDetail, &stRequest, pstOperLog, &ucDiscarded);
    }
    return uiResult;
}

void NW_DecomposeBitmap(NW_LAN_BITMAP_S *pstBitmap, uint32_t ulMask, uint32_t ulWordIdx)
{
    NW_CHECK_NULL(pstBitmap);

    if (ulWordIdx >= NW_LAN_WORD_COUNT) {
        return;
    }
    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        pstBitmap->aauiWord[i][ulWordIdx] &= ulMask;
    }
}
