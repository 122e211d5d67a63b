// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Addresses from text. */
#include <arpa/inet.h>
#include <stdio.h>

#include "nw_address.h"

static_assert(AF_INET == NW_FAMILY_IPV4 && AF_INET6 == NW_FAMILY_IPV6);

NW_RESULT LIB_NW_CovMacStrToNet(const char *pcMacStr, uint8_t *pucMacAddr)
{
    NW_CHECK_NULL(pcMacStr, NW_ERR_MAC_NULL_POINTER);
    NW_CHECK_NULL(pucMacAddr, NW_ERR_MAC_NULL_POINTER);

    uint32_t auiField[NW_MAC_SIZE]{};
    const int iCount = sscanf(pcMacStr, "%02x:%02x:%02x:%02x:%02x:%02x", &auiField[0], &auiField[1],
                              &auiField[2], &auiField[3], &auiField[4], &auiField[5]);
    if (iCount != static_cast<int>(NW_MAC_SIZE)) {
        NW_DIAG(NW_DIAG_ERROR, "Mac Addr[%s] is not intacted.", pcMacStr);
        return NW_ERR_GENERAL;
    }

    for (size_t i = 0; i < NW_MAC_SIZE; ++i) {
        pucMacAddr[i] = static_cast<uint8_t>(auiField[i]);
    }
    return NW_OK;
}

/* A text with a colon is an IPv6 address or nothing; one that parses as IPv4 is never a domain. */
static NW_ADDR_KIND_E NW_KindOfText(const char *pcText)
{
    uint8_t aucAddr[NW_IPV6_SIZE]{};

    if (strchr(pcText, ':') != nullptr) {
        const bool bValid = inet_pton(AF_INET6, pcText, aucAddr) == 1 &&
                            LIB_NW_CheckV6IsValid(NW_V6CHK_ALL, aucAddr) == 1;
        return bValid ? NW_ADDR_KIND_IPV6 : NW_ADDR_KIND_INVALID;
    }
    if (inet_pton(AF_INET, pcText, aucAddr) == 1) {
        return LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, aucAddr) == 1 ? NW_ADDR_KIND_IPV4
                                                                  : NW_ADDR_KIND_INVALID;
    }
    return LIB_NW_DomainValidityCheck(pcText) == 1 ? NW_ADDR_KIND_DOMAIN : NW_ADDR_KIND_INVALID;
}

NW_RESULT LIB_CheckIpv4v6AndDomain(const char *pcSrc, uint8_t *pucResult)
{
    NW_CHECK_NULL(pcSrc, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pucResult, NW_ERR_NULL_POINTER);

    *pucResult = static_cast<uint8_t>(NW_KindOfText(pcSrc));
    return NW_OK;
}
