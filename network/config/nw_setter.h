// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A setter as its callers see it: request out, operation log written, result answered. */
#ifndef NW_SETTER_H
#define NW_SETTER_H

#include "network_mng/operate_log.h"
#include "nw_rpc.h"

/* What a setter answers. */
enum class NW_ANSWERS_E : uint8_t {
    CHANNEL_RESULT, /* the response's result word, or NW_ERR_RPC_TRANSPORT */
    RESPONSE_WORD,  /* the result word alone, which stays 0 when the call failed */
};

/* A setter whose change is told as a change of one module. */
struct NW_LOGGED_SETTER_S {
    NW_SETTER_S stSetter;
    NW_OPER_LOG_MODULE_E eModule;
    NW_ANSWERS_E eAnswers = NW_ANSWERS_E::CHANNEL_RESULT;
};

/* Sends the payload, which is also the record that the operation log reads, and writes the log
 * whatever the result. Answers what the setter answers. */
NW_RESULT NW_Set(const NW_LOGGED_SETTER_S &stLogged, const void *pPayload, uint32_t uiLength,
                 NW_OPER_LOG_S *pstOperLog);

#endif
