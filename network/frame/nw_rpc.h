/* The request builder behind every setter and sender. */
#ifndef NW_RPC_H
#define NW_RPC_H

#include "network_mng/rpc.h"
#include "nw_frame.h"

/* What distinguishes one setter from another. */
struct NW_SETTER_S {
    NW_RESULT (*pfnChannel)(void *pstReqData, uint32_t *pstResData, uint32_t uiTimeout);
    uint8_t ucCommand;
    NW_DIAG_SHAPE_S stFailShape;
    const char *pcFailText; /* takes the result as its only argument, or none */
};

/* Sends the payload (at most NW_RPC_PAYLOAD_SIZE bytes; what is longer has no place) under the
 * setter's command and logs the setter's text when the channel reports a failure. The response is
 * zeroed first. Answers the channel's result. */
NW_RESULT NW_SendRequest(const NW_SETTER_S &stSetter, const void *pPayload, uint32_t uiLength,
                         NW_RPC_RESPONSE_S *pstResponse);

#endif
