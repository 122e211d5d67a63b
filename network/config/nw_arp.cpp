// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* ARP control: suspend, update, resume. */
#include "network_mng/lan.h"
#include "network_mng/settings.h"
#include "nw_setter.h"

namespace {

constexpr const char *NW_TEXT_ARP_NOT_UPDATED =
    "BMC_RPC_CallWithStruct Failed when updating ARP status, iRet:%d";

/* clang-format off */
constexpr NW_SETTER_S s_stSuspend{Network_RPC_Comm, NW_CMD_SUSPEND_ARP, NW_DIAG_ERROR,
    "BMC_RPC_CallWithStruct Failed when suspending BMC ARPs, iRet:%d"};
constexpr NW_SETTER_S s_stUpdate{Network_RPC_Comm, NW_CMD_UPDATE_ARP,   NW_DIAG_ERROR, NW_TEXT_ARP_NOT_UPDATED};
constexpr NW_SETTER_S s_stResume{Network_RPC_Comm, NW_CMD_RESUME_ARP,   NW_DIAG_ERROR, NW_TEXT_ARP_NOT_UPDATED};
/* clang-format on */

/* Where the answers keep the ARP suspend status, in their data. */
constexpr size_t NW_UPDATE_STATUS = 4;
constexpr size_t NW_SUSPEND_STATUS = 5;

/* The change as a LAN set would carry it; a port that does not exist is not marked. */
NW_LAN_SET_REQ_S NW_SuspendRecord(uint32_t uiPort, uint8_t ucArpSuspend)
{
    NW_LAN_SET_REQ_S stRecord{};

    if (uiPort < NW_PORT_COUNT) {
        stRecord.stBitmap.aauiWord[uiPort][0] = NW_LAN_BIT_ARP_SUSPEND;
        stRecord.stConfig.astPort[uiPort].ucArpSuspend = ucArpSuspend;
    }
    return stRecord;
}

/* Sends, and guards the result word once more. */
NW_RESULT NW_SetArp(const NW_SETTER_S &stSetter, const void *pPayload, uint32_t uiLength,
                    const char *pcRefusedText, NW_RESULT uiFailCode, NW_RPC_RESPONSE_S *pstResponse)
{
    if (NW_SendRequest(stSetter, pPayload, uiLength, pstResponse) != NW_OK) {
        return uiFailCode;
    }
    if (pstResponse->uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, pcRefusedText, pstResponse->uiResult);
        return uiFailCode;
    }
    return NW_OK;
}

} // namespace

NW_RESULT LIB_NW_SuspendBMCArp(const uint8_t *pstSuspendBMCArpReq, uint8_t *pucArpSuspendStatus,
                               NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstSuspendBMCArpReq, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pucArpSuspendStatus, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    const auto stRequest = NW_Load<NW_ARP_SUSPEND_REQ_S>(pstSuspendBMCArpReq);
    NW_RPC_RESPONSE_S stResponse;
    NW_RESULT uiResult = NW_SendRequest(s_stSuspend, &stRequest, sizeof(stRequest), &stResponse);
    if (uiResult != NW_OK) {
        uiResult = NW_ERR_ARP_SUSPEND;
    } else {
        *pucArpSuspendStatus = stResponse.aucResData[NW_SUSPEND_STATUS];
    }

    const NW_LAN_SET_REQ_S stRecord = NW_SuspendRecord(stResponse.uiDetail, stRequest.ucArpSuspend);
    NW_OperateLogBuild(NW_LOG_LAN, uiResult, stResponse.uiDetail, &stRecord, pstOperLog);
    return uiResult;
}

NW_RESULT LIB_NW_UpdateArpStatus(uint32_t uiArpArg0, uint8_t ucArpArg1, uint32_t uiArpArg2,
                                 uint8_t *pucArpSuspendStatus)
{
    NW_CHECK_NULL(pucArpSuspendStatus, NW_ERR_NULL_POINTER);

    const NW_ARP_UPDATE_REQ_S stRequest{uiArpArg0, ucArpArg1, uiArpArg2};
    NW_RPC_RESPONSE_S stResponse;
    const NW_RESULT uiResult =
        NW_SetArp(s_stUpdate, &stRequest, sizeof(stRequest),
                  "LIB_NW_UpdateArpStatus is Failed, iRet:%d.", NW_ERR_ARP_UPDATE, &stResponse);
    if (uiResult != NW_OK) {
        return uiResult;
    }

    *pucArpSuspendStatus = stResponse.aucResData[NW_UPDATE_STATUS];
    return NW_OK;
}

NW_RESULT LIB_NW_ResumeSuspendBMCArps(uint32_t uiArpResume)
{
    NW_RPC_RESPONSE_S stResponse;

    return NW_SetArp(s_stResume, &uiArpResume, sizeof(uiArpResume),
                     "LIB_NW_ResumeSuspendBMCArps is Failed, iRet:%d.", NW_ERR_ARP_RESUME,
                     &stResponse);
}
