// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* NTP servers from the DHCP client's lease files. */
#include <stdio.h>
#include <unistd.h>

#include "network_mng/check.h"
#include "network_mng/discovery.h"
#include "nw_frame.h"

namespace {

constexpr const char *NW_LEASE_DIRECTORY = "/run/systemd/netif/dhcp/";
constexpr const char *NW_NTP_PREFIX = "NTP";
constexpr size_t NW_NTP_PREFIX_SIZE = 4; /* with the equals sign */
constexpr size_t NW_PATH_SIZE = 255;
constexpr size_t NW_LEASE_LINE_SIZE = 255;

/* What distinguishes the families. */
struct NW_LEASE_S {
    size_t ulOrigin; /* of the stored entry: how the port comes by its address */
    const char *pcNotEnabledText;
    const char *pcPathFormat;
};
constexpr NW_LEASE_S s_stIpv4Lease{offsetof(NW_LAN_CFG_PORT_S, ucIpv4Type),
                                   "%s ipv4 dhcp is not enabled.", "%s%s.ntpv4"};
constexpr NW_LEASE_S s_stIpv6Lease{offsetof(NW_LAN_CFG_PORT_S, ucIpv6Type),
                                   "%s ipv6 dhcp is not enabled.", "%s%s.ntpv6"};

/* Copies the servers behind the prefix and drops the last character: the newline, or a real one
 * where the copy was cut. Answers whether anything is left. */
bool NW_TakeServers(const char *pcLine, uint32_t ulStrLen, char *pcNTPStr)
{
    const char *pcServers =
        strnlen(pcLine, NW_NTP_PREFIX_SIZE) < NW_NTP_PREFIX_SIZE ? "" : pcLine + NW_NTP_PREFIX_SIZE;
    size_t ulLength = 0;

    if (ulStrLen != 0) {
        BMC_Strlcpy(pcNTPStr, pcServers, ulStrLen);
        ulLength = strnlen(pcNTPStr, ulStrLen);
    }
    if (ulLength != 0) {
        pcNTPStr[--ulLength] = '\0';
    }
    NW_DIAG(NW_DIAG_INFO, "NTP server IP:%s.", ulStrLen != 0 ? pcNTPStr : "");
    return ulLength != 0;
}

/* A later line of servers replaces an earlier one. */
void NW_ReadLease(FILE *pstLease, uint32_t ulStrLen, char *pcNTPStr)
{
    char szLine[NW_LEASE_LINE_SIZE]{};

    while (fgets(szLine, sizeof(szLine), pstLease) != nullptr) {
        if (strncmp(szLine, NW_NTP_PREFIX, strlen(NW_NTP_PREFIX)) == 0 &&
            !NW_TakeServers(szLine, ulStrLen, pcNTPStr)) {
            NW_DIAG(NW_DIAG_ERROR, "Ntp server ip is null.");
            return;
        }
    }
}

} // namespace

int LIB_NW_ParseNTPInfo(uint8_t ucIpFamily, const char *pcIfcName, uint8_t ucPort,
                        uint32_t ulStrLen, char *pcNTPStr)
{
    if (pcIfcName == nullptr) {
        return NW_DIAG_NULL_POINTER(pcIfcName);
    }
    if (pcNTPStr == nullptr) {
        return NW_DIAG_NULL_POINTER(pcNTPStr);
    }

    NW_LAN_CFG_DB_INFO_S stLan{};
    if (NW_LMDB_GetLanCfgInfo(&stLan) != NW_OK) {
        return NW_DIAG(NW_DIAG_ERROR, "Get lan config from LMDB failed.");
    }
    if (ucPort >= NW_PORT_COUNT) {
        return 0;
    }

    const NW_LEASE_S &stLease = ucIpFamily == NW_FAMILY_IPV4 ? s_stIpv4Lease : s_stIpv6Lease;
    const auto *pucPort = reinterpret_cast<const uint8_t *>(&stLan.astPort[ucPort]);
    if (pucPort[stLease.ulOrigin] != NW_ADDR_ORIGIN_DHCP) {
        return NW_DIAG(NW_DIAG_DEBUG, stLease.pcNotEnabledText, pcIfcName);
    }

    char szPath[NW_PATH_SIZE]{};
    BMC_Scnprintf(szPath, sizeof(szPath), stLease.pcPathFormat, NW_LEASE_DIRECTORY, pcIfcName);
    if (access(szPath, F_OK) != 0) {
        return NW_DIAG(NW_DIAG_ERROR, "EthLeasePath %s is not exist, return.", szPath);
    }
    FILE *pstLease = fopen(szPath, "re");
    if (pstLease == nullptr) {
        return NW_DIAG(NW_DIAG_ERROR, "Open %s failed.", szPath);
    }
    NW_ReadLease(pstLease, ulStrLen, pcNTPStr);
    return fclose(pstLease);
}
