// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Network events and the network lock. */
#include "network_mng/event.h"

#include "network_mng/store.h"
#include "nw_frame.h"

NW_NETWORK_EVENT_S g_stNetworkEvent;
uint8_t g_ucNetworkSetFlag;
uint8_t g_ucNetworkDNSSetFlag;
uint32_t g_uiRestartDelay;

namespace {

constexpr uint8_t NW_BUSY = 1;

constexpr uint8_t NW_EventBit(uint32_t uiEvent)
{
    return static_cast<uint8_t>(1U << (uiEvent % 8));
}

bool NW_IsInRange(bool bInRange)
{
    if (!bInRange) {
        NW_DIAG(NW_DIAG_ERROR, "Event index is out of range.");
    }
    return bInRange;
}

/* The four conditions, up to the first that locks. */
bool NW_IsBusy(uint8_t ucSetInProgress)
{
    return g_ucNetworkSetFlag == NW_BUSY || g_uiRestartDelay == NW_BUSY ||
           ucSetInProgress == NW_BUSY || BMC_CheckDirVaildStatus(NW_RESTART_FLAG_FILE) == 1;
}

} // namespace

void NW_AddNetworkEvent(uint32_t uiQueue, uint32_t uiEvent, NW_NETWORK_EVENT_S *pstEventHldr)
{
    NW_CHECK_NULL(pstEventHldr);

    if (NW_IsInRange(uiQueue < NW_EVENT_QUEUE_COUNT && uiEvent < NW_EVENT_COUNT)) {
        pstEventHldr->aaucWorking[uiQueue][uiEvent / 8] |= NW_EventBit(uiEvent);
    }
}

uint32_t NW_FindNetworkEvent(uint32_t uiQueue, uint32_t uiEvent,
                             const NW_NETWORK_EVENT_S *pstEventHldr)
{
    NW_CHECK_NULL(pstEventHldr, 0);

    if (!NW_IsInRange(uiEvent < NW_EVENT_COUNT)) {
        return 0;
    }
    /* The saved bank follows the working one; behind it there is no queue. */
    if (uiQueue >= 2 * NW_EVENT_QUEUE_COUNT) {
        return 0;
    }
    const auto *pucTable = reinterpret_cast<const uint8_t *>(pstEventHldr);
    return (pucTable[uiQueue * NW_EVENT_QUEUE_SIZE + uiEvent / 8] & NW_EventBit(uiEvent)) != 0;
}

void NW_AddNetworkEventByQ(uint8_t *pucEventQ, uint32_t uiEvent)
{
    NW_CHECK_NULL(pucEventQ);

    if (NW_IsInRange(uiEvent < NW_EVENT_COUNT)) {
        pucEventQ[uiEvent / 8] |= NW_EventBit(uiEvent);
    }
}

uint32_t NW_FindNetworkEventByQ(const uint8_t *pucEventQ, uint32_t uiEvent)
{
    NW_CHECK_NULL(pucEventQ, 0);

    return NW_IsInRange(uiEvent < NW_EVENT_COUNT) &&
           (pucEventQ[uiEvent / 8] & NW_EventBit(uiEvent)) != 0;
}

void NW_BackUpNetworkEvent(uint32_t uiBackup, NW_NETWORK_EVENT_S *pstEventHldr)
{
    NW_CHECK_NULL(pstEventHldr);

    if (uiBackup != 0) {
        memcpy(pstEventHldr->aaucSaved, pstEventHldr->aaucWorking, sizeof(pstEventHldr->aaucSaved));
    } else {
        memcpy(pstEventHldr->aaucWorking, pstEventHldr->aaucSaved,
               sizeof(pstEventHldr->aaucWorking));
    }
}

uint32_t NW_NetworkSetLock(void)
{
    g_ucNetworkSetFlag = NW_BUSY;
    g_ucNetworkDNSSetFlag = NW_BUSY;
    return 1;
}

void NW_NetworkSetUnlock(void)
{
    g_ucNetworkSetFlag = 0;
}

uint32_t NW_NetworkIsLock(void)
{
    uint8_t ucSetInProgress = 0;
    if (NW_LMDB_Get_NetStatus(&ucSetInProgress) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get netstatus from lmdb failed.");
        return 1;
    }

    if (NW_IsBusy(ucSetInProgress)) {
        NW_DIAG(NW_DIAG_DEBUG, "Network is locked.");
        return 1;
    }
    return 0;
}
