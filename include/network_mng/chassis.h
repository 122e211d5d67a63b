// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Status exchanged with the chassis manager. */
#ifndef NETWORK_MNG_CHASSIS_H
#define NETWORK_MNG_CHASSIS_H

#include "base.h"

/* Keys of the records. */
#define NW_KEY_OA_NETWORK 0x10610008U
#define NW_KEY_OA_TEMPERATURE 0x1061000AU
#define NW_KEY_OCP_TEMPERATURE 0x1061000CU
#define NW_KEY_FAN 0x1061000DU

/* Commands to the chassis manager (ucCmd). */
typedef enum {
    NW_OA_CMD_POWER_ON_NODE = 0,
    NW_OA_CMD_BIOS_POST_STATE = 1,
    NW_OA_CMD_OCP_TEMPERATURE = 2,
    NW_OA_CMD_FAN_AND_INLET = 3
} NW_OA_COMMAND_E;

/* The bytes without a name are the chassis manager's. */
typedef struct NW_PACKED {
    uint8_t ucConnected; /* 1: connected to the chassis manager */
    uint8_t aucReserved1[11];
} NW_OA_NETWORK_DB_INFO_S;
NW_ASSERT_AT(NW_OA_NETWORK_DB_INFO_S, ucConnected, 0);
NW_ASSERT_SIZE(NW_OA_NETWORK_DB_INFO_S, 12);

typedef struct NW_PACKED {
    uint8_t aucData[64];
} NW_OA_TEMPERA_INFO_S;
NW_ASSERT_SIZE(NW_OA_TEMPERA_INFO_S, 64);

typedef struct NW_PACKED {
    uint8_t aucData[32];
} NW_ALL_OCP_TEMP_S;
NW_ASSERT_SIZE(NW_ALL_OCP_TEMP_S, 32);

typedef struct NW_PACKED {
    uint8_t aucData[220];
} NW_ALL_FAN_INFO_S;
NW_ASSERT_SIZE(NW_ALL_FAN_INFO_S, 220);

#define NW_OA_POWER_ON_REQ_SIZE 6U

/* Payload of NW_OA_CMD_FAN_AND_INLET. */
typedef struct NW_PACKED {
    uint32_t uiFanSpeed;
    uint8_t ucInletTemp;
} NW_OA_FAN_REQ_S;
NW_ASSERT_AT(NW_OA_FAN_REQ_S, uiFanSpeed, 0);
NW_ASSERT_AT(NW_OA_FAN_REQ_S, ucInletTemp, 4);
NW_ASSERT_SIZE(NW_OA_FAN_REQ_S, 5);

NW_EXTERN_C_BEGIN

/* Accessors. A reader changes the caller's record on success only. No environment: NW_ERR_GENERAL,
 * for the OCP and fan records NW_ERR_DB_ENVIRONMENT; no database: NW_ERR_DB_ENVIRONMENT; failed
 * read or write: NW_ERR_DB_READ, NW_ERR_DB_WRITE. */
NW_EXPORT NW_RESULT NW_LMDB_Get_OaNetworkInfo(NW_OA_NETWORK_DB_INFO_S *pstOaNetworkDbInfo);
NW_EXPORT NW_RESULT NW_LMDB_Put_OaNetworkInfo(const NW_OA_NETWORK_DB_INFO_S *pstOaNetworkDbInfo);
NW_EXPORT NW_RESULT NW_LMDB_Get_OATemperaInfo(NW_OA_TEMPERA_INFO_S *pstOATemperaInfo);
NW_EXPORT NW_RESULT NW_LMDB_Put_OATemperaInfo(const NW_OA_TEMPERA_INFO_S *pstOATemperaInfo);
NW_EXPORT NW_RESULT NW_LMDB_Get_AllOcpTemp(NW_ALL_OCP_TEMP_S *pstAllOcpTemp);
NW_EXPORT NW_RESULT NW_LMDB_Put_AllOcpTemp(const NW_ALL_OCP_TEMP_S *pstAllOcpTemp);
NW_EXPORT NW_RESULT NW_LMDB_Get_AllOMFanInfo(NW_ALL_FAN_INFO_S *pstAllFanInfo);
NW_EXPORT NW_RESULT NW_LMDB_Put_AllOMFanInfo(const NW_ALL_FAN_INFO_S *pstAllFanInfo);

/* Senders: the chassis manager's result word or NW_ERR_RPC_TRANSPORT. */

/* Asks for power: NW_OA_POWER_ON_REQ_SIZE bytes; null sends zeros. */
NW_EXPORT NW_RESULT LIB_OA_SendPowerOnNodeRequest(const uint8_t *pucReq);
/* Reports the POST state: one byte. */
NW_EXPORT NW_RESULT LIB_OA_SendBiosPostState(const uint8_t *pucPostState);
/* Reports temperatures: uiLen bytes in host byte order; what passes the payload's 3072 bytes is
 * left out. */
NW_EXPORT NW_RESULT LIB_OA_SendOcpTemp(const uint16_t *pusOcpTemp, uint32_t uiLen);
/* Reports fan speed and inlet temperature; of the latter the low byte is sent. */
NW_EXPORT NW_RESULT LIB_OA_SendFanSpeedAndInletTemp(uint32_t uiFanSpeed, uint32_t uiInletTemp);

/* The stored temperatures (64 and 32 bytes); NW_ERR_GENERAL while the chassis network is down. */
NW_EXPORT NW_RESULT LIB_OA_GetOATemperaInfo(void *pstOATempInfo);
NW_EXPORT NW_RESULT LIB_OA_GetAllOcpTemp(void *pstAllOcpTemp);

NW_EXTERN_C_END

#endif
