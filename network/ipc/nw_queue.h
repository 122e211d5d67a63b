// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How the library looks up a message queue. */
#ifndef NW_QUEUE_H
#define NW_QUEUE_H

#include <sys/ipc.h>
#include <sys/msg.h>

#include "nw_frame.h"

/* Whether ftok's answer names a queue. 0 is IPC_PRIVATE, which makes a new queue at each call. */
constexpr bool NW_IsQueueKey(key_t iKey)
{
    return iKey > 0;
}

/* Id of the existing queue of the key; negative when there is none. Never creates one. */
inline int NW_FindQueue(key_t iKey)
{
    return msgget(iKey, IPC_EXCL);
}

#endif
