// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Requests to the network manager and its neighbours: buffers, commands, channels. */
#ifndef NETWORK_MNG_RPC_H
#define NETWORK_MNG_RPC_H

#include "base.h"

#define NW_RPC_PAYLOAD_SIZE 3072U
#define NW_RPC_DATA_SIZE 256U
#define NW_RPC_TIMEOUT_MS 10000U

/* Services and their functions. */
#define NW_RPC_SERVICE_NETWORK 24U
#define NW_RPC_FUNCTION_NETWORK 28U
#define NW_RPC_SERVICE_CHASSIS 52U
#define NW_RPC_FUNCTION_CHASSIS 30U
#define NW_RPC_FUNCTION_BLADE_CONFIG 51U
#define NW_RPC_SERVICE_IPMI 80U
#define NW_RPC_FUNCTION_IPMI 31U

/* Commands of the network manager (ucCmd). */
typedef enum {
    NW_CMD_SET_HOSTNAME = 0,
    NW_CMD_SET_DNS = 1,
    NW_CMD_SET_LLDP = 2,
    NW_CMD_SET_LAN = 3,
    NW_CMD_SET_NET_MODE = 4,
    NW_CMD_SUSPEND_ARP = 5,
    NW_CMD_UPDATE_ARP = 6,
    NW_CMD_RESUME_ARP = 7,
    NW_CMD_RESTART = 8,
    NW_CMD_SET_AN = 9,
    NW_CMD_SET_LAN_REVERSE = 11,
    NW_CMD_SET_ALL = 12
} NW_COMMAND_E;

/* Unused bytes are zero. */
typedef struct NW_PACKED {
    uint8_t ucReqHead; /* always 0 */
    uint8_t ucCmd;
    uint8_t aucPayload[NW_RPC_PAYLOAD_SIZE];
} NW_RPC_REQUEST_S;
NW_ASSERT_AT(NW_RPC_REQUEST_S, ucReqHead, 0);
NW_ASSERT_AT(NW_RPC_REQUEST_S, ucCmd, 1);
NW_ASSERT_AT(NW_RPC_REQUEST_S, aucPayload, 2);
NW_ASSERT_SIZE(NW_RPC_REQUEST_S, 3074);

typedef struct NW_PACKED {
    uint32_t uiResult; /* 0 done, otherwise a code of the 0x1E000xxx family */
    uint32_t uiDetail; /* port index that the operation log names */
    uint8_t aucResData[NW_RPC_DATA_SIZE];
} NW_RPC_RESPONSE_S;
NW_ASSERT_AT(NW_RPC_RESPONSE_S, uiResult, 0);
NW_ASSERT_AT(NW_RPC_RESPONSE_S, uiDetail, 4);
NW_ASSERT_AT(NW_RPC_RESPONSE_S, aucResData, 8);
NW_ASSERT_SIZE(NW_RPC_RESPONSE_S, 264);

NW_EXTERN_C_BEGIN

/* Sends the 3074-byte request pstReqData to the network manager and waits up to uiTimeout
 * milliseconds for the 264-byte response, which the caller has zeroed. Answers the response's first
 * word, 0 for an empty answer, or NW_ERR_RPC_TRANSPORT with the response untouched. */
NW_EXPORT NW_RESULT Network_RPC_Comm(void *pstReqData, uint32_t *pstResData, uint32_t uiTimeout);

/* As Network_RPC_Comm, but to the chassis manager. An answer without data leaves the response as it
 * is. */
NW_EXPORT NW_RESULT NetworkOa_RPC_Comm(void *pstReqData, uint32_t *pstResData, uint32_t uiTimeout);

/* Sends the one byte at pstReqData to the blade configuration service. Answers 0 once the call was
 * answered, whatever the response says; NW_ERR_NULL_POINTER, also in the response's first word,
 * when the answer carries no message; NW_ERR_RPC_TRANSPORT when the call failed. */
NW_EXPORT NW_RESULT LIB_BLADE_RPC_WriteConfig(void *pstReqData, uint32_t uiTimeout,
                                              uint32_t *pstResData);

/* Sends the 3074-byte request to the IPMI service and discards the answer; the result is the
 * platform's own. */
NW_EXPORT NW_RESULT NW_SendIpmiRpc(void *pstReqData, uint32_t uiTimeout);

/* Asks the network manager for a restart. Answers the response's result word, which stays 0 when
 * the call itself failed. */
NW_EXPORT NW_RESULT LIB_NW_SetNetworkRestart(uint32_t uiRestart);

NW_EXTERN_C_END

#endif
