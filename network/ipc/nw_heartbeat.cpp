// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Heartbeat posting. Its texts go to standard output, without a line break. */
#include <errno.h>
#include <stdio.h>

#include "network_mng/message.h"
#include "nw_error_text.h"
#include "nw_queue.h"

namespace {

uint32_t s_uiTimeOut = 0xFFFFFFFF; /* not set */
uint32_t s_uiMsgCnt;

constexpr long NW_HEARTBEAT_TYPE = 1;

} // namespace

uint32_t BMC_GetHeartbeatTimeOut(void)
{
    return s_uiTimeOut;
}

void BMC_SetHeartbeatTimeOut(uint32_t uiTimeOut)
{
    s_uiTimeOut = uiTimeOut;
}

uint32_t BMC_GetHeartbeatMsgCnt(void)
{
    return s_uiMsgCnt;
}

void BMC_SetHeartbeatMsgCnt(uint32_t uiMsgCnt)
{
    s_uiMsgCnt = uiMsgCnt;
}

NW_RESULT NW_CheckKezCapability(uint8_t *pbIsSupport)
{
    NW_CHECK_NULL(pbIsSupport, NW_ERR_NULL_POINTER);

    uint8_t ucSupport = 0;
    const int iRet = CAP_GetCharCapabilityWithName("NIC", "KezOemSupport", &ucSupport);
    if (iRet != 0) {
        printf("Failed to get KezOem support from CAP, iRet = %x", static_cast<uint32_t>(iRet));
        return NW_ERR_GENERAL;
    }
    *pbIsSupport = ucSupport != 0;
    return NW_OK;
}

NW_RESULT HeartbeatPostLogMsg(const void *pstMsg, int proj_id)
{
    NW_CHECK_NULL(pstMsg, NW_ERR_NULL_POINTER);

    uint8_t bSupport = 0;
    const NW_RESULT uiResult = NW_CheckKezCapability(&bSupport);
    if (uiResult != NW_OK || bSupport != 1) {
        printf("Get Kez Oem Support failed or not support. iRet = %#x, bKezOemSupport = %d",
               uiResult, bSupport);
        return NW_ERR_GENERAL;
    }
    const key_t iKey = ftok(NW_HEARTBEAT_KEY_FILE, proj_id);
    if (!NW_IsQueueKey(iKey)) {
        printf("In %s, failed to ftok %s.", __func__, NW_HEARTBEAT_KEY_FILE);
        return NW_ERR_GENERAL;
    }
    const int iMsgFd = NW_FindQueue(iKey);
    if (iMsgFd < 0) {
        printf("In %s, iMsgFd: %d error.", __func__, iMsgFd);
        return NW_ERR_GENERAL;
    }

    HEARTBEAT_MSG_S stMessage{NW_HEARTBEAT_TYPE, {}};
    memcpy(stMessage.aucPayload, pstMsg, sizeof(stMessage.aucPayload));
    if (msgsnd(iMsgFd, &stMessage, sizeof(stMessage.aucPayload), 0) != 0) {
        const int iError = errno;
        char szReason[NW_ERROR_TEXT_SIZE];
        printf("In %s, msgsnd failed (%s): %d.", __func__, NW_ErrorText(iError, szReason), iError);
        return NW_ERR_GENERAL;
    }
    return NW_OK;
}
