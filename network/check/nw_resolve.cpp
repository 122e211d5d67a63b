// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Host names to addresses through the system's resolver. */
#include <arpa/inet.h>
#include <netdb.h>
#include <stdio.h>

#include "network_mng/check.h"
#include "nw_frame.h"

namespace {

static_assert(NW_RESOLVED_TEXT_SIZE == INET6_ADDRSTRLEN);

void NW_PutEntry(const addrinfo &stEntry, char *pcIp)
{
    if (stEntry.ai_family == AF_INET) {
        const auto stAddr = NW_Load<sockaddr_in>(stEntry.ai_addr);
        inet_ntop(AF_INET, &stAddr.sin_addr, pcIp, INET_ADDRSTRLEN);
    } else {
        const auto stAddr = NW_Load<sockaddr_in6>(stEntry.ai_addr);
        inet_ntop(AF_INET6, &stAddr.sin6_addr, pcIp, INET6_ADDRSTRLEN);
    }
}

/* Writes entry after entry, so that the last one stays, or the first that reads like pcWanted. */
NW_RESULT NW_Resolve(const char *pcHostname, const char *pcWanted, char *pcIp)
{
    addrinfo stHints{};
    stHints.ai_socktype = SOCK_STREAM;
    addrinfo *pstList = nullptr;

    const int iRet = getaddrinfo(pcHostname, "http", &stHints, &pstList);
    if (iRet != 0) {
        fprintf(stderr, "getaddrinfo: %s\n", gai_strerror(iRet));
        return NW_ERR_GENERAL;
    }

    for (const addrinfo *pstEntry = pstList; pstEntry != nullptr; pstEntry = pstEntry->ai_next) {
        NW_PutEntry(*pstEntry, pcIp);
        if (pcWanted != nullptr && strcmp(pcWanted, pcIp) == 0) {
            break;
        }
    }
    freeaddrinfo(pstList);
    return NW_OK;
}

} // namespace

NW_RESULT LIB_NW_ConverHostnameToIP(const char *pcHostname, char *pcIp)
{
    NW_CHECK_NULL(pcHostname, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pcIp, NW_ERR_NULL_POINTER);

    return NW_Resolve(pcHostname, nullptr, pcIp);
}

NW_RESULT LIB_NW_ParseHostnameToIP(const char *pcHostname, const char *pcCurIP, char *pcIp)
{
    NW_CHECK_NULL(pcHostname, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pcCurIP, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pcIp, NW_ERR_NULL_POINTER);

    const bool bHasCurrent = pcCurIP[0] != '\0' && strcmp(pcCurIP, "0.0.0.0") != 0;
    return NW_Resolve(pcHostname, bHasCurrent ? pcCurIP : nullptr, pcIp);
}
