// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What is sent to the chassis manager, and what it reported of the temperatures. */
#include "network_mng/chassis.h"
#include "nw_rpc.h"

namespace {

/* clang-format off */
/* The power-on request fails with the interface state's text. */
constexpr NW_SETTER_S s_stPowerOn{NetworkOa_RPC_Comm, NW_OA_CMD_POWER_ON_NODE, NW_DIAG_CRITICAL,
    NW_TEXT_IFC_STATE_NOT_SET};
constexpr NW_SETTER_S s_stPostState{NetworkOa_RPC_Comm, NW_OA_CMD_BIOS_POST_STATE, NW_DIAG_CRITICAL,
    "BMC_RPC_CallWithStruct Failed when SendBiosPostState, iRet:%d."};
constexpr NW_SETTER_S s_stOcpTemp{NetworkOa_RPC_Comm, NW_OA_CMD_OCP_TEMPERATURE, NW_DIAG_CRITICAL,
    "BMC_RPC_CallWithStruct failed when send ocp temp, iRet: %#x."};
constexpr NW_SETTER_S s_stFanSpeed{NetworkOa_RPC_Comm, NW_OA_CMD_FAN_AND_INLET, NW_DIAG_CRITICAL,
    "Failed when send fan speed, iRet: %#x."};
/* clang-format on */

NW_RESULT NW_Send(const NW_SETTER_S &stSetter, const void *pPayload, uint32_t uiLength)
{
    NW_RPC_RESPONSE_S stResponse;

    return NW_SendRequest(stSetter, pPayload, uiLength, &stResponse);
}

/* Temperature at an index, 0 where the length does not reach. */
uint32_t NW_OcpTemp(const uint16_t *pusOcpTemp, uint32_t uiLen, uint32_t uiIndex)
{
    return uiLen >= (uiIndex + 1) * sizeof(uint16_t) ? NW_Load<uint16_t>(pusOcpTemp + uiIndex) : 0;
}

/* An unreadable record counts as disconnected. */
bool NW_IsChassisConnected()
{
    NW_OA_NETWORK_DB_INFO_S stNetwork{};

    (void)NW_LMDB_Get_OaNetworkInfo(&stNetwork);
    if (stNetwork.ucConnected != 1) {
        NW_DIAG(NW_DIAG_DEBUG, "OA Network disconnected!");
        return false;
    }
    return true;
}

/* Reads a temperature record while the chassis is connected. */
template <typename RECORD>
NW_RESULT NW_GetFromChassis(NW_RESULT (*pfnRead)(RECORD *pstRecord), RECORD *pstRecord,
                            const char *pcFailText)
{
    if (!NW_IsChassisConnected()) {
        return NW_ERR_GENERAL;
    }

    const NW_RESULT uiResult = pfnRead(pstRecord);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_DEBUG, pcFailText);
    }
    return uiResult;
}

} // namespace

NW_RESULT LIB_OA_SendPowerOnNodeRequest(const uint8_t *pucReq)
{
    constexpr uint8_t NW_NO_REQUEST[NW_OA_POWER_ON_REQ_SIZE]{};

    return NW_Send(s_stPowerOn, pucReq != nullptr ? pucReq : NW_NO_REQUEST,
                   NW_OA_POWER_ON_REQ_SIZE);
}

NW_RESULT LIB_OA_SendBiosPostState(const uint8_t *pucPostState)
{
    NW_CHECK_NULL(pucPostState, NW_ERR_NULL_POINTER);

    return NW_Send(s_stPostState, pucPostState, sizeof(*pucPostState));
}

NW_RESULT LIB_OA_SendOcpTemp(const uint16_t *pusOcpTemp, uint32_t uiLen)
{
    NW_CHECK_NULL(pusOcpTemp, NW_ERR_NULL_POINTER);

    NW_DIAG(NW_DIAG_DEBUG, "Send ocp1temp:%u, ocp2temp:%u", NW_OcpTemp(pusOcpTemp, uiLen, 0),
            NW_OcpTemp(pusOcpTemp, uiLen, 1));
    return NW_Send(s_stOcpTemp, pusOcpTemp, uiLen);
}

NW_RESULT LIB_OA_SendFanSpeedAndInletTemp(uint32_t uiFanSpeed, uint32_t uiInletTemp)
{
    const NW_OA_FAN_REQ_S stRequest{uiFanSpeed, static_cast<uint8_t>(uiInletTemp)};

    NW_DIAG(NW_DIAG_DEBUG, "Send fan speed %d.", uiFanSpeed);
    NW_DIAG(NW_DIAG_DEBUG, "Send inlet temp %d.", uiInletTemp);
    return NW_Send(s_stFanSpeed, &stRequest, sizeof(stRequest));
}

NW_RESULT LIB_OA_GetOATemperaInfo(void *pstOATempInfo)
{
    NW_CHECK_NULL(pstOATempInfo, NW_ERR_NULL_POINTER);

    return NW_GetFromChassis(NW_LMDB_Get_OATemperaInfo,
                             static_cast<NW_OA_TEMPERA_INFO_S *>(pstOATempInfo),
                             "LIB_OA_GetOATemperaInfo Failed !");
}

NW_RESULT LIB_OA_GetAllOcpTemp(void *pstAllOcpTemp)
{
    NW_CHECK_NULL(pstAllOcpTemp, NW_ERR_NULL_POINTER);

    return NW_GetFromChassis(NW_LMDB_Get_AllOcpTemp,
                             static_cast<NW_ALL_OCP_TEMP_S *>(pstAllOcpTemp),
                             "Failed to get all ocp temp!");
}
