// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A setter as its callers see it: request out, operation log written, result answered. */
#ifndef NW_SETTER_H
#define NW_SETTER_H

#include "network_mng/operate_log.h"
#include "nw_rpc.h"

/* Sends the payload, which is also the record that the operation log reads, and writes the log
 * whatever the result. Answers what the setter answers. */
NW_RESULT NW_Set(const NW_SETTER_S &stSetter, const void *pPayload, uint32_t uiLength,
                 NW_OPER_LOG_S *pstOperLog);

#endif
