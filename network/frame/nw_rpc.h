// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The request builder behind every setter and sender. */
#ifndef NW_RPC_H
#define NW_RPC_H

#include "network_mng/rpc.h"
#include "nw_frame.h"

/* What a setter sends, and what it says when that fails. */
struct NW_SETTER_S {
    NW_RESULT (*pfnChannel)(void *pstReqData, uint32_t *pstResData, uint32_t uiTimeout);
    uint8_t ucCommand;
    NW_DIAG_SHAPE_E eFailShape;
    const char *pcFailText; /* takes the result as its only argument, or none */
};

/* Line of the interface-state family; prints the result. */
inline constexpr const char *NW_TEXT_IFC_STATE_NOT_SET =
    "BMC_RPC_CallWithStruct Failed when setting interface state, iRet:%d.";

/* Sends the payload (at most NW_RPC_PAYLOAD_SIZE bytes; what is longer has no place) under the
 * setter's command and logs the setter's text when the channel reports a failure. The response is
 * zeroed first. Answers the channel's result. */
NW_RESULT NW_SendRequest(const NW_SETTER_S &stSetter, const void *pPayload, uint32_t uiLength,
                         NW_RPC_RESPONSE_S *pstResponse);

#endif
