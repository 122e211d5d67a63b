// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* NC-SI through the kernel's interface files; each holds one character. */
#include "network_mng/settings.h"
#include "nw_frame.h"

namespace {

constexpr const char *NW_NCSI_INIT_FILE = "/proc/sys/tollmere/ncsi/InitComplete";
constexpr char NW_NCSI_ON = '1';
constexpr uint8_t NW_SET_IN_PROGRESS = 1;

} // namespace

NW_RESULT LIB_NW_EnableNcsi(void)
{
    uint8_t ucSetInProgress = 0;
    const NW_RESULT uiResult = NW_LMDB_Get_NetStatus(&ucSetInProgress);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get netstatus from lmdb failed.");
        return uiResult;
    }
    if (ucSetInProgress == NW_SET_IN_PROGRESS) {
        NW_DIAG(NW_DIAG_ERROR, "Netstatus In Progress.");
        return NW_ERR_GENERAL;
    }

    /* A failed read leaves the character at 0: not complete. */
    char cComplete = 0;
    (void)NW_ReadProc(NW_NCSI_INIT_FILE, sizeof(cComplete), &cComplete);
    if (cComplete != NW_NCSI_ON) {
        NW_DIAG(NW_DIAG_ERROR, "Ncsi Not InitComplete.");
        return NW_ERR_GENERAL;
    }
    (void)NW_WriteProc(NW_NCSI_ENABLE_FILE, sizeof(NW_NCSI_ON), &NW_NCSI_ON);
    return NW_OK;
}

uint32_t LIB_NW_NcsiIsInitComplete(void)
{
    char cComplete = 0;

    if (NW_ReadProc(NW_NCSI_INIT_FILE, sizeof(cComplete), &cComplete) != 0) {
        NW_DIAG(NW_DIAG_ERROR, "NW_ReadProc failed.");
        return 0;
    }
    return cComplete == NW_NCSI_ON;
}
