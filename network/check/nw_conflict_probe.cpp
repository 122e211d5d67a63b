// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Is an IPv4 address already in use on the network? */
#include <errno.h>
#include <stdio.h>

#include "network_mng/check.h"
#include "nw_frame.h"

namespace {

constexpr size_t NW_COMMAND_SIZE = 256;

/* The name goes through a shell: a character that no interface name holds can only be an attack. */
bool NW_IsInterfaceName(const char *pcIfname)
{
    constexpr const char *NW_NAME_CHARACTERS =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
        "0123456789._:@-";
    return pcIfname[strspn(pcIfname, NW_NAME_CHARACTERS)] == '\0';
}

/* Waits for one byte; a signal that comes in between decides nothing. */
bool NW_ReadByte(FILE *pstPipe, char *pcByte)
{
    while (fread(pcByte, 1, 1, pstPipe) != 1) {
        if (ferror(pstPipe) == 0 || errno != EINTR) {
            return false;
        }
        clearerr(pstPipe);
    }
    return true;
}

} // namespace

uint32_t NW_IPV4AddressConflict(const char *pcIfname, const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pcIfname, 0);
    NW_CHECK_NULL(pucAddr, 0);

    char szCommand[NW_COMMAND_SIZE]{};
    BMC_Scnprintf(szCommand, sizeof(szCommand),
                  "arping -c 1 -D -f -I %s %d.%d.%d.%d  | tail  -1 | awk '{print $2 }'", pcIfname,
                  pucAddr[0], pucAddr[1], pucAddr[2], pucAddr[3]);
    FILE *pstPipe = NW_IsInterfaceName(pcIfname) ? popen(szCommand, "re") : nullptr;
    if (pstPipe == nullptr) {
        NW_DIAG(NW_DIAG_CRITICAL, "Error while popen : %s.", szCommand);
        return 0;
    }

    /* The tool's last line names the number of replies in its second word. */
    char cVerdict = 0;
    if (!NW_ReadByte(pstPipe, &cVerdict)) {
        NW_DIAG(NW_DIAG_CRITICAL, "Error in fread : %s.", szCommand);
    }
    pclose(pstPipe);
    return cVerdict == '1';
}
