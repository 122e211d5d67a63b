// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Message queues and TLV records. */
#include "network_mng/message.h"

#include "nw_queue.h"

namespace {

constexpr int NW_QUEUE_MODE = 0666;
constexpr uint32_t NW_TLV_HEAD_SIZE = 2;

/* The queue of the path; answers a negative id, after a line, when there is none. */
int NW_OpenQueue(const char *pcPath, int proj_id)
{
    const key_t iKey = ftok(pcPath, proj_id);
    if (!NW_IsQueueKey(iKey)) {
        NW_DIAG(NW_DIAG_ERROR, "Creat key error\n");
        return -1;
    }

    const int iMsgId = NW_FindQueue(iKey);
    if (iMsgId < 0) {
        NW_DIAG(NW_DIAG_ERROR, "Msgget failed, iMsgId:%d\n", iMsgId);
    }
    return iMsgId;
}

/* The queue, once it is found and the text is not too long; negative otherwise. */
int NW_OpenQueueFor(const char *pcPath, int proj_id, uint32_t msgsz)
{
    const int iMsgId = NW_OpenQueue(pcPath, proj_id);

    if (iMsgId >= 0 && msgsz > NW_MSG_TEXT_SIZE) {
        NW_DIAG(NW_DIAG_ERROR, "Msg length out of range, iMsgId:%d\n", iMsgId);
        return -1;
    }
    return iMsgId;
}

} // namespace

NW_RESULT NM_CreateMsg(const char *pcPath, int proj_id)
{
    NW_CHECK_NULL(pcPath, NW_ERR_NULL_POINTER);

    const key_t iKey = ftok(pcPath, proj_id);
    if (!NW_IsQueueKey(iKey)) {
        NW_DIAG(NW_DIAG_ERROR, "Ftok fail! iKey:%d\n", iKey);
        return NW_ERR_GENERAL;
    }
    int iMsgId = NW_FindQueue(iKey);
    if (iMsgId >= 0 && msgctl(iMsgId, IPC_RMID, nullptr) < 0) {
        NW_DIAG(NW_DIAG_ERROR, "Msgctl failed\n");
        return NW_ERR_GENERAL;
    }
    iMsgId = msgget(iKey, IPC_CREAT | NW_QUEUE_MODE);
    if (iMsgId < 0) {
        NW_DIAG(NW_DIAG_ERROR, "Msgget failed! iMsgId:%d\n", iMsgId);
        return NW_ERR_GENERAL;
    }
    return NW_OK;
}

NW_RESULT NW_SendMsg(const char *pcPath, int proj_id, uint32_t msgsz,
                     const NW_MSG_PACKAGE_S *pstMsgPackage)
{
    NW_CHECK_NULL(pcPath, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstMsgPackage, NW_ERR_NULL_POINTER);

    if (pstMsgPackage->lMsgType < 1) {
        NW_DIAG(NW_DIAG_ERROR, "Invalid  MsgType!, lMsgType:%ld\n", pstMsgPackage->lMsgType);
        return NW_ERR_GENERAL;
    }
    const int iMsgId = NW_OpenQueueFor(pcPath, proj_id, msgsz);
    if (iMsgId < 0) {
        return NW_ERR_GENERAL;
    }

    const int iRet = msgsnd(iMsgId, pstMsgPackage, msgsz, 0);
    if (iRet < 0) {
        NW_DIAG(NW_DIAG_ERROR, "ERROR: msgsnd failed iRet:%d\n", iRet);
        return NW_ERR_GENERAL;
    }
    NW_DIAG(NW_DIAG_INFO, "msgsnd success\n");
    return NW_OK;
}

NW_RESULT NW_ReceiveMsg(const char *pcPath, int proj_id, uint32_t msgsz,
                        NW_MSG_PACKAGE_S *pstMsgPackage)
{
    NW_CHECK_NULL(pcPath, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstMsgPackage, NW_ERR_NULL_POINTER);

    const int iMsgId = NW_OpenQueueFor(pcPath, proj_id, msgsz);
    if (iMsgId < 0) {
        return NW_ERR_GENERAL;
    }

    const ssize_t lRet = msgrcv(iMsgId, pstMsgPackage, msgsz, 0, 0);
    if (lRet == -1) {
        NW_DIAG(NW_DIAG_ERROR, "Msgrcv failed, iRet:%d\n", static_cast<int>(lRet));
        return NW_ERR_GENERAL;
    }
    return NW_OK;
}

void NW_FillTlv(uint8_t ucValueLen, uint32_t enNetworkTlvType, const void *pInValue,
                uint32_t *puiTotalLen, uint8_t *pOutValue)
{
    NW_CHECK_NULL(pInValue);
    NW_CHECK_NULL(puiTotalLen);
    NW_CHECK_NULL(pOutValue);

    const uint32_t uiTotal = NW_Load<uint32_t>(puiTotalLen);
    const uint32_t uiRecord = NW_TLV_HEAD_SIZE + ucValueLen;
    if (uiTotal > NW_TLV_AREA_SIZE || uiRecord > NW_TLV_AREA_SIZE - uiTotal) {
        NW_DIAG(NW_DIAG_ERROR,
                "Invalid Parameter: ucValueLen=%u, enNetworkTlvType=%u, puiTotalLen=%u.",
                ucValueLen, enNetworkTlvType, uiTotal);
        return;
    }

    uint8_t *pucRecord = pOutValue + uiTotal;
    pucRecord[0] = static_cast<uint8_t>(enNetworkTlvType);
    pucRecord[1] = ucValueLen;
    memcpy(pucRecord + NW_TLV_HEAD_SIZE, pInValue, ucValueLen);
    NW_Store(puiTotalLen, uiTotal + uiRecord);
}
