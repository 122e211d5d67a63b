// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* MAC address of a port's default gateway: the kernel's ARP cache, then the network. */
#include <arpa/inet.h>
#include <stdio.h>

#include "network_mng/check.h"
#include "network_mng/discovery.h"
#include "nw_arp_probe.h"

namespace {

constexpr const char *NW_ARP_CACHE_FILE = "/proc/net/arp";
constexpr size_t NW_LINE_SIZE = 256;
constexpr uint32_t NW_READ_FAILURES_MAX = 16; /* in a row, before the cache is given up */

/* What a line of the cache must say. */
struct NW_CACHE_KEY_S {
    char szGateway[NW_ADDR_TEXT_SIZE];
    char szIfcName[NW_IFC_NAME_SIZE + 1];
};

NW_CACHE_KEY_S NW_CacheKey(const NW_IFC_STATE_DB_INFO_S &stIfcState,
                           const NW_LAN_CFG_PORT_S &stPort, uint32_t uiPort)
{
    NW_CACHE_KEY_S stKey{};

    inet_ntop(AF_INET, stPort.aucIpv4Gateway, stKey.szGateway, sizeof(stKey.szGateway));
    memcpy(stKey.szIfcName, stIfcState.acIfcName[uiPort], NW_IFC_NAME_SIZE);
    return stKey;
}

/* Takes the hardware address of a line that names the gateway on the interface:
 *
 *   line := ip-address hardware-type flags hardware-address mask device
 *
 * No word is longer than the line. Not inlined: the words are gone from the stack before the probe
 * takes a packet. */
[[gnu::noinline]] bool NW_TakeCacheLine(const char *pcLine, const NW_CACHE_KEY_S &stKey,
                                        uint8_t *pucMacAddr)
{
    char szIp[NW_LINE_SIZE]{};
    char szMac[NW_LINE_SIZE]{};
    char szIfcName[NW_LINE_SIZE]{};

    (void)sscanf(pcLine, "%255s %*s %*s %255s %*s %255s", szIp, szMac, szIfcName);
    NW_DIAG(NW_DIAG_DEBUG, "IpTmp:%s, GatewayIp:%s", szIp, stKey.szGateway);
    NW_DIAG(NW_DIAG_DEBUG, "IfcNameTmp:%s, IfcName:%s", szIfcName, stKey.szIfcName);
    if (strcmp(szIp, stKey.szGateway) != 0 || strcmp(szIfcName, stKey.szIfcName) != 0) {
        return false;
    }
    if (LIB_NW_CovMacStrToNet(szMac, pucMacAddr) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Convert mac str to net failed.");
        return false;
    }
    NW_DIAG(NW_DIAG_INFO, "Get gatewayMac compare cache success");
    return true;
}

/* Scans the lines behind the heading. A match on a line that leaves the stream at its end does not
 * end the search, though the address is taken. */
bool NW_ScanCache(FILE *pstCache, const NW_CACHE_KEY_S &stKey, uint8_t *pucMacAddr)
{
    bool bHeading = true;
    uint32_t uiFailures = 0;

    while (feof(pstCache) == 0 && uiFailures < NW_READ_FAILURES_MAX) {
        char szLine[NW_LINE_SIZE]{};
        if (fgets(szLine, sizeof(szLine), pstCache) == nullptr) {
            NW_DIAG(NW_DIAG_ERROR, "No data while scanning %s.", NW_ARP_CACHE_FILE);
            ++uiFailures;
            continue;
        }
        uiFailures = 0;
        if (bHeading) {
            NW_DIAG(NW_DIAG_INFO, "First line  while scanning %s.", NW_ARP_CACHE_FILE);
            bHeading = false;
        } else if (szLine[0] != '\0' && szLine[0] != '\n' &&
                   NW_TakeCacheLine(szLine, stKey, pucMacAddr) && feof(pstCache) == 0) {
            return true;
        }
    }
    NW_DIAG(NW_DIAG_ERROR, "No default entry in gateway info.\n");
    return false;
}

bool NW_FindInCache(const NW_CACHE_KEY_S &stKey, uint8_t *pucMacAddr)
{
    FILE *pstCache = fopen(NW_ARP_CACHE_FILE, "re");
    if (pstCache == nullptr) {
        NW_DIAG(NW_DIAG_ERROR, "fopen failed for %s\n", NW_ARP_CACHE_FILE);
        return false;
    }

    const bool bFound = NW_ScanCache(pstCache, stKey, pucMacAddr);
    fclose(pstCache);
    return bFound;
}

} // namespace

void NW_GetV4DefaultGwMacAddr(uint8_t ucPort, uint8_t *pucMacAddr)
{
    NW_CHECK_NULL(pucMacAddr);

    if (ucPort >= NW_PORT_COUNT) {
        return;
    }
    NW_IFC_STATE_DB_INFO_S stIfcState{};
    if (NW_LMDB_Get_IfcState(&stIfcState) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "failed to get netmode.");
        return;
    }
    NW_LAN_CFG_DB_INFO_S stLan{};
    if (NW_LMDB_GetLanCfgInfo(&stLan) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get lancfg info from LMDB failed.");
        return;
    }

    const NW_LAN_CFG_PORT_S &stPort = stLan.astPort[ucPort];
    if (LIB_NW_CheckIPIsZero(stPort.aucIpv4Gateway, NW_IPV4_SIZE) == 1) {
        return;
    }
    if (!NW_FindInCache(NW_CacheKey(stIfcState, stPort, ucPort), pucMacAddr)) {
        NW_ProbeGateway(stIfcState.auiIfIndex[ucPort], stPort, pucMacAddr);
    }
}
