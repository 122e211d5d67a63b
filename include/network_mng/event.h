// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Pending network events and the network lock: plain state of the process, without a lock. */
#ifndef NETWORK_MNG_EVENT_H
#define NETWORK_MNG_EVENT_H

#include "base.h"

#define NW_EVENT_QUEUE_SIZE 255U
#define NW_EVENT_QUEUE_COUNT 3U
#define NW_EVENT_COUNT 2040U

/* Bitmaps of 2040 events: event i is bit i mod 8 of byte i div 8. */
typedef struct NW_PACKED {
    uint8_t aaucWorking[NW_EVENT_QUEUE_COUNT][NW_EVENT_QUEUE_SIZE];
    uint8_t aaucSaved[NW_EVENT_QUEUE_COUNT][NW_EVENT_QUEUE_SIZE];
} NW_NETWORK_EVENT_S;
NW_ASSERT_AT(NW_NETWORK_EVENT_S, aaucWorking, 0);
NW_ASSERT_AT(NW_NETWORK_EVENT_S, aaucWorking[1], 255);
NW_ASSERT_AT(NW_NETWORK_EVENT_S, aaucWorking[2], 510);
NW_ASSERT_AT(NW_NETWORK_EVENT_S, aaucSaved, 765);
NW_ASSERT_SIZE(NW_NETWORK_EVENT_S, 1530);

#define NW_RESTART_FLAG_FILE "/tmp/network/NetworkRestartFlag"

NW_EXTERN_C_BEGIN

/* The process's own table; callers may keep others. */
NW_EXPORT extern NW_NETWORK_EVENT_S g_stNetworkEvent;
/* Flags of the network lock; only the value 1 locks. */
NW_EXPORT extern uint8_t g_ucNetworkSetFlag;    /* a change of this process runs */
NW_EXPORT extern uint8_t g_ucNetworkDNSSetFlag; /* set with g_ucNetworkSetFlag, never cleared */
NW_EXPORT extern uint32_t g_uiRestartDelay;     /* a delayed restart is pending; only read here */

/* Adds an event (below NW_EVENT_COUNT) to working queue 0 to 2, or asks for one: 1 when it is set.
 * A find does not check the queue; one within the table reads the saved bank, one beyond answers 0.
 */
NW_EXPORT void NW_AddNetworkEvent(uint32_t uiQueue, uint32_t uiEvent,
                                  NW_NETWORK_EVENT_S *pstEventHldr);
NW_EXPORT uint32_t NW_FindNetworkEvent(uint32_t uiQueue, uint32_t uiEvent,
                                       const NW_NETWORK_EVENT_S *pstEventHldr);
/* Adds an event to one queue of NW_EVENT_QUEUE_SIZE bytes, or asks for one: 1 when it is set. */
NW_EXPORT void NW_AddNetworkEventByQ(uint8_t *pucEventQ, uint32_t uiEvent);
NW_EXPORT uint32_t NW_FindNetworkEventByQ(const uint8_t *pucEventQ, uint32_t uiEvent);
/* Non-zero saves the working bank, 0 restores it. */
NW_EXPORT void NW_BackUpNetworkEvent(uint32_t uiBackup, NW_NETWORK_EVENT_S *pstEventHldr);

/* Marks a change of this process as running; answers 1. */
NW_EXPORT uint32_t NW_NetworkSetLock(void);
/* Ends that mark, but for g_ucNetworkDNSSetFlag. */
NW_EXPORT void NW_NetworkSetUnlock(void);
/* 1 while a network change may not start: a flag of this process, a set in progress, the restart
 * flag file, or an unreadable status. */
NW_EXPORT uint32_t NW_NetworkIsLock(void);

NW_EXTERN_C_END

#endif
