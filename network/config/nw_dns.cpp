// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* DNS settings. */
#include <arpa/inet.h>

#include "network_mng/check.h"
#include "network_mng/settings.h"
#include "nw_setter.h"

namespace {

constexpr NW_LOGGED_SETTER_S s_stSetDns{{Network_RPC_Comm, NW_CMD_SET_DNS, NW_DIAG_ERROR,
                                         "BMC_RPC_CallWithStruct Failed when setting dnscfg!"},
                                        NW_LOG_DNS};

/* Where a family's data stand in the stored entry and in the caller's. */
struct NW_DNS_FAMILY_S {
    int iFamily;
    size_t ulAddrSize;
    size_t ulMode;
    size_t ulServers;
    size_t ulDomain;
    size_t ulShownServers;
    size_t ulShownTexts;
    size_t ulShownDomain;
};

#define STORED(field) offsetof(NW_DNS_PORT_S, field)
#define SHOWN(field) offsetof(NW_DNS_INFO_PORT_S, field)

/* clang-format off */
constexpr NW_DNS_FAMILY_S s_astFamily[] = {
    {AF_INET,  NW_IPV4_SIZE, STORED(ucIpv4DnsMode), STORED(aucIpv4DnsServer), STORED(szIpv4DnsDomain),
     SHOWN(aucIpv4DnsServer), SHOWN(szIpv4DnsServer), SHOWN(szIpv4DnsDomain)},
    {AF_INET6, NW_IPV6_SIZE, STORED(ucIpv6DnsMode), STORED(aucIpv6DnsServer), STORED(szIpv6DnsDomain),
     SHOWN(aucIpv6DnsServer), SHOWN(szIpv6DnsServer), SHOWN(szIpv6DnsDomain)},
};
/* clang-format on */

/* Domain and set servers of one family, unless its mode says that it has none. */
void NW_ShowDnsFamily(const NW_DNS_FAMILY_S &stFamily, const uint8_t *pucStored, uint8_t *pucShown)
{
    if (pucStored[stFamily.ulMode] == 0) {
        return;
    }

    memcpy(pucShown + stFamily.ulShownDomain, pucStored + stFamily.ulDomain, NW_DNS_DOMAIN_SIZE);
    for (size_t i = 0; i < NW_DNS_SERVER_COUNT; ++i) {
        const uint8_t *pucServer = pucStored + stFamily.ulServers + i * stFamily.ulAddrSize;
        if (LIB_NW_CheckIPIsZero(pucServer, static_cast<int32_t>(stFamily.ulAddrSize)) == 1) {
            continue;
        }
        char *pcText =
            reinterpret_cast<char *>(pucShown + stFamily.ulShownTexts + i * NW_ADDR_TEXT_SIZE);
        inet_ntop(stFamily.iFamily, pucServer, pcText, NW_ADDR_TEXT_SIZE);
        memcpy(pucShown + stFamily.ulShownServers + i * stFamily.ulAddrSize, pucServer,
               stFamily.ulAddrSize);
    }
}

void NW_ShowDnsPort(const NW_DNS_PORT_S &stStored, NW_DNS_INFO_PORT_S *pstShown)
{
    pstShown->ucDnsHead = stStored.ucDnsHead;
    pstShown->ucIpv4DnsMode = stStored.ucIpv4DnsMode;
    pstShown->ucIpv6DnsMode = stStored.ucIpv6DnsMode;
    for (const NW_DNS_FAMILY_S &stFamily : s_astFamily) {
        NW_ShowDnsFamily(stFamily, reinterpret_cast<const uint8_t *>(&stStored),
                         reinterpret_cast<uint8_t *>(pstShown));
    }
}

} // namespace

NW_RESULT LIB_NW_SetAllDnsConf(const void *pstDnsConf, NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstDnsConf, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    return NW_Set(s_stSetDns, pstDnsConf, NW_DNS_SET_SIZE, pstOperLog);
}

NW_RESULT LIB_NW_GetAllDnsInfo(NW_DNS_INFO_S *pstDnsInfo)
{
    NW_CHECK_NULL(pstDnsInfo, NW_ERR_NULL_POINTER);

    NW_IFC_STATE_DB_INFO_S stIfcState{};
    if (NW_LMDB_Get_IfcState(&stIfcState) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "failed to get netmode.");
        return NW_ERR_GENERAL;
    }
    if (stIfcState.ucIfcState > NW_IFC_STATE_ADAPTIVE) {
        NW_DIAG(NW_DIAG_ERROR, "Invalid netmode info.");
        return NW_ERR_OUT_OF_RANGE;
    }
    NW_DNS_DB_INFO_S stDns{};
    if (NW_LMDB_Get_DNS(&stDns) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Failed to get dns info!");
        return NW_ERR_DB_READ;
    }

    const bool bBonded = stIfcState.ucIfcState == NW_IFC_STATE_ADAPTIVE;
    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        if ((i == NW_PORT_BOND0) == bBonded) {
            NW_ShowDnsPort(stDns.astPort[i], &pstDnsInfo->astPort[i]);
        }
    }
    return NW_OK;
}
