// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The mechanism behind every setter with an operation log. */
#include "nw_setter.h"

NW_RESULT NW_Set(const NW_LOGGED_SETTER_S &stLogged, const void *pPayload, uint32_t uiLength,
                 NW_OPER_LOG_S *pstOperLog)
{
    NW_RPC_RESPONSE_S stResponse;
    const NW_RESULT uiResult = NW_SendRequest(stLogged.stSetter, pPayload, uiLength, &stResponse);

    NW_OperateLogBuild(stLogged.eModule, uiResult, stResponse.uiDetail, pPayload, pstOperLog);
    return stLogged.eAnswers == NW_ANSWERS_E::RESPONSE_WORD ? stResponse.uiResult : uiResult;
}
