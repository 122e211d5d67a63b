// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Local messaging over System V queues, TLV records, the heartbeat.
 *
 * A queue is named by an existing file and a project id, from which every call makes the key
 * afresh; a key that comes out 0 or negative is refused. Calls block while the queue is full or
 * empty.
 *
 * A queue that is made here has mode 0666, whatever the umask: whoever may run a program on the
 * machine may send to it, fill it, and take messages before their receiver does. Only its owner,
 * its creator and root may remove it. A message does not tell who sent it, so that what is received
 * is to be checked like any input. Where that is too open, the caller has to see to it, by msgctl
 * on the new queue or by keeping others out of its IPC namespace.
 */
#ifndef NETWORK_MNG_MESSAGE_H
#define NETWORK_MNG_MESSAGE_H

#include "base.h"

#define NW_MSG_TEXT_SIZE 255U
#define NW_TLV_AREA_SIZE 246U

/* A message as the system takes it. */
typedef struct NW_PACKED {
    long lMsgType; /* 1 or more when sent; as wide as the platform's long */
    uint8_t aucText[NW_MSG_TEXT_SIZE];
} NW_MSG_PACKAGE_S;
NW_ASSERT_AT(NW_MSG_PACKAGE_S, lMsgType, 0);
NW_ASSERT_AT(NW_MSG_PACKAGE_S, aucText, sizeof(long));
NW_ASSERT_SIZE(NW_MSG_PACKAGE_S, sizeof(long) + 255);

#define NW_HEARTBEAT_PAYLOAD_SIZE 8U
#define NW_HEARTBEAT_KEY_FILE "/var/heartbeat.key"

typedef struct NW_PACKED {
    long lMsgType; /* always 1 */
    uint8_t aucPayload[NW_HEARTBEAT_PAYLOAD_SIZE];
} HEARTBEAT_MSG_S;
NW_ASSERT_AT(HEARTBEAT_MSG_S, lMsgType, 0);
NW_ASSERT_AT(HEARTBEAT_MSG_S, aucPayload, sizeof(long));
NW_ASSERT_SIZE(HEARTBEAT_MSG_S, sizeof(long) + 8);

NW_EXTERN_C_BEGIN

/* Every failure but a null pointer gives NW_ERR_GENERAL. A path and id whose key is 0 or negative
 * name no queue. */

/* Makes an empty queue for the key, mode 0666; an earlier one is removed with its messages, which
 * fails where it is another user's. */
NW_EXPORT NW_RESULT NM_CreateMsg(const char *pcPath, int proj_id);
/* Sends the package with msgsz bytes of text, at most NW_MSG_TEXT_SIZE. */
NW_EXPORT NW_RESULT NW_SendMsg(const char *pcPath, int proj_id, uint32_t msgsz,
                               const NW_MSG_PACKAGE_S *pstMsgPackage);
/* Takes the first message, of any type, with up to msgsz bytes of text; a longer one fails. The
 * received length is not reported. */
NW_EXPORT NW_RESULT NW_ReceiveMsg(const char *pcPath, int proj_id, uint32_t msgsz,
                                  NW_MSG_PACKAGE_S *pstMsgPackage);

/* Appends a record (type byte, length byte, value) behind the *puiTotalLen bytes at pOutValue and
 * advances that length; a record that would pass NW_TLV_AREA_SIZE is logged and left out. */
NW_EXPORT void NW_FillTlv(uint8_t ucValueLen, uint32_t enNetworkTlvType, const void *pInValue,
                          uint32_t *puiTotalLen, uint8_t *pOutValue);

/* Settings kept for the heartbeat's users, one copy for the process, without a lock. The time-out
 * is 0xFFFFFFFF until it is set, the count 0. */
NW_EXPORT uint32_t BMC_GetHeartbeatTimeOut(void);
NW_EXPORT void BMC_SetHeartbeatTimeOut(uint32_t uiTimeOut);
NW_EXPORT uint32_t BMC_GetHeartbeatMsgCnt(void);
NW_EXPORT void BMC_SetHeartbeatMsgCnt(uint32_t uiMsgCnt);

/* Stores 1 where the platform has the heartbeat capability, else 0; unwritten after a failed read.
 */
NW_EXPORT NW_RESULT NW_CheckKezCapability(uint8_t *pbIsSupport);
/* Posts the NW_HEARTBEAT_PAYLOAD_SIZE bytes at pstMsg to the existing heartbeat queue. Failures are
 * printed to standard output. */
NW_EXPORT NW_RESULT HeartbeatPostLogMsg(const void *pstMsg, int proj_id);

NW_EXTERN_C_END

#endif
