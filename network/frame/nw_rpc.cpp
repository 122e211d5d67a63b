// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* RPC channels to the network manager, the chassis manager, the blade configuration and IPMI. */
#include "nw_rpc.h"

namespace {

struct NW_CHANNEL_S {
    uint32_t uiService;
    uint32_t uiFunction;
    uint32_t uiRequestSize;
    const char *pcFailText; /* logged when the call fails; null: the caller's business */
};

/* clang-format off */
constexpr NW_CHANNEL_S s_stNetwork    {NW_RPC_SERVICE_NETWORK, NW_RPC_FUNCTION_NETWORK,      sizeof(NW_RPC_REQUEST_S), nullptr};
constexpr NW_CHANNEL_S s_stChassis    {NW_RPC_SERVICE_CHASSIS, NW_RPC_FUNCTION_CHASSIS,      sizeof(NW_RPC_REQUEST_S), nullptr};
constexpr NW_CHANNEL_S s_stBladeConfig{NW_RPC_SERVICE_CHASSIS, NW_RPC_FUNCTION_BLADE_CONFIG, 1,                        nullptr};
constexpr NW_CHANNEL_S s_stIpmi       {NW_RPC_SERVICE_IPMI,    NW_RPC_FUNCTION_IPMI,         sizeof(NW_RPC_REQUEST_S),
                                       "Send IPMI rpc call with struct faild."};
/* clang-format on */

/* What an answered call brought back. */
enum class NW_ANSWER_E { NO_MESSAGE, NO_DATA, DATA };

/* Calls the channel and copies the answer's data, if there is any, into the response (which may be
 * null: the answer is discarded). *peAnswer is set only when the call was answered. */
int NW_Call(const NW_CHANNEL_S &stChannel, const void *pRequest, uint32_t uiTimeout,
            void *pResponse, NW_ANSWER_E *peAnswer)
{
    MRPC_MSG *pstMessage = nullptr;
    const int iRet = MRPC_Call(stChannel.uiService, stChannel.uiFunction, stChannel.uiRequestSize,
                               pRequest, uiTimeout, &pstMessage);

    if (iRet == 0) {
        *peAnswer = pstMessage == nullptr          ? NW_ANSWER_E::NO_MESSAGE
                    : pstMessage->pData == nullptr ? NW_ANSWER_E::NO_DATA
                                                   : NW_ANSWER_E::DATA;
        if (*peAnswer == NW_ANSWER_E::DATA && pResponse != nullptr) {
            memcpy(pResponse, pstMessage->pData, sizeof(NW_RPC_RESPONSE_S));
        }
    } else if (stChannel.pcFailText != nullptr) {
        NW_DIAG(NW_DIAG_ERROR, stChannel.pcFailText);
    }
    MRPC_MsgFree(&pstMessage);
    return iRet;
}

/* Answers the first word of the response: 0 when the answer lacks a message, or, where bEmptyIsDone
 * says so, its data. */
NW_RESULT NW_Exchange(const NW_CHANNEL_S &stChannel, bool bEmptyIsDone, const void *pRequest,
                      void *pResponse, uint32_t uiTimeout)
{
    NW_ANSWER_E eAnswer;
    if (NW_Call(stChannel, pRequest, uiTimeout, pResponse, &eAnswer) != 0) {
        return NW_ERR_RPC_TRANSPORT;
    }

    if (eAnswer == NW_ANSWER_E::NO_MESSAGE || (eAnswer == NW_ANSWER_E::NO_DATA && bEmptyIsDone)) {
        NW_Store(pResponse, NW_OK);
    }
    return NW_Load<NW_RESULT>(pResponse);
}

constexpr NW_SETTER_S s_stRestart{Network_RPC_Comm, NW_CMD_RESTART, NW_DIAG_ERROR,
                                  "BMC_RPC_CallWithStruct Failed when setting network restart!"};

} // namespace

NW_RESULT Network_RPC_Comm(void *pstReqData, uint32_t *pstResData, uint32_t uiTimeout)
{
    NW_CHECK_NULL(pstReqData, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstResData, NW_ERR_NULL_POINTER);

    return NW_Exchange(s_stNetwork, true, pstReqData, pstResData, uiTimeout);
}

NW_RESULT NetworkOa_RPC_Comm(void *pstReqData, uint32_t *pstResData, uint32_t uiTimeout)
{
    NW_CHECK_NULL(pstReqData, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstResData, NW_ERR_NULL_POINTER);

    return NW_Exchange(s_stChassis, false, pstReqData, pstResData, uiTimeout);
}

NW_RESULT LIB_BLADE_RPC_WriteConfig(void *pstReqData, uint32_t uiTimeout, uint32_t *pstResData)
{
    NW_CHECK_NULL(pstReqData, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstResData, NW_ERR_NULL_POINTER);

    NW_ANSWER_E eAnswer;
    if (NW_Call(s_stBladeConfig, pstReqData, uiTimeout, pstResData, &eAnswer) != 0) {
        return NW_ERR_RPC_TRANSPORT;
    }
    if (eAnswer == NW_ANSWER_E::NO_MESSAGE) {
        NW_Store(pstResData, NW_ERR_NULL_POINTER);
        return NW_ERR_NULL_POINTER;
    }
    return NW_OK;
}

NW_RESULT NW_SendIpmiRpc(void *pstReqData, uint32_t uiTimeout)
{
    NW_CHECK_NULL(pstReqData, NW_ERR_NULL_POINTER);

    NW_ANSWER_E eAnswer;
    return static_cast<NW_RESULT>(NW_Call(s_stIpmi, pstReqData, uiTimeout, nullptr, &eAnswer));
}

NW_RESULT LIB_NW_SetNetworkRestart(uint32_t uiRestart)
{
    NW_RPC_RESPONSE_S stResponse;

    (void)NW_SendRequest(s_stRestart, &uiRestart, sizeof(uiRestart), &stResponse);
    return stResponse.uiResult; /* 0 also when the call failed */
}

NW_RESULT NW_SendRequest(const NW_SETTER_S &stSetter, const void *pPayload, uint32_t uiLength,
                         NW_RPC_RESPONSE_S *pstResponse)
{
    NW_RPC_REQUEST_S stRequest{};
    stRequest.ucCmd = stSetter.ucCommand;
    memcpy(stRequest.aucPayload, pPayload,
           uiLength < sizeof(stRequest.aucPayload) ? uiLength : sizeof(stRequest.aucPayload));

    /* The channel takes the response as words. */
    uint32_t auiResponse[sizeof(*pstResponse) / sizeof(uint32_t)]{};
    static_assert(sizeof(auiResponse) == sizeof(*pstResponse));
    const NW_RESULT uiResult = stSetter.pfnChannel(&stRequest, auiResponse, NW_RPC_TIMEOUT_MS);
    memcpy(pstResponse, auiResponse, sizeof(*pstResponse));

    if (uiResult != NW_OK) {
        NW_DIAG(stSetter.eFailShape, stSetter.pcFailText, uiResult);
    }
    return uiResult;
}
