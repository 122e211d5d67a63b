// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What kind of address a few raw bytes are, and whether they pass a set of such tests. */
#include "nw_address.h"

namespace {

/* Every byte equals the value; true for no bytes at all. */
uint32_t NW_AllBytesAre(const uint8_t *pucBytes, int32_t iLen, uint8_t ucValue)
{
    for (int32_t i = 0; i < iLen; ++i) {
        if (pucBytes[i] != ucValue) {
            return 0;
        }
    }
    return 1;
}

constexpr uint8_t NW_ALL_ONES = 0xFF;

/* fe80::/10 and fec0::/10 differ in the top two bits of their second byte. */
constexpr uint8_t NW_LOCAL_SCOPE_MASK = 0xC0;
constexpr uint8_t NW_LINK_LOCAL_BITS = 0x80;
constexpr uint8_t NW_SITE_LOCAL_BITS = 0xC0;

uint32_t NW_IsLocalScope(const uint8_t *pucAddr, uint8_t ucBits)
{
    return pucAddr[0] == 0xFE && (pucAddr[1] & NW_LOCAL_SCOPE_MASK) == ucBits;
}

} // namespace

uint32_t LIB_NW_CheckIPIsZero(const uint8_t *pucIP, int32_t iLen)
{
    NW_CHECK_NULL(pucIP, 1);

    return NW_AllBytesAre(pucIP, iLen, 0);
}

uint32_t LIB_NW_CheckIPIsFull(const uint8_t *pucIP, int32_t iLen)
{
    NW_CHECK_NULL(pucIP, 1);

    return NW_AllBytesAre(pucIP, iLen, NW_ALL_ONES);
}

uint32_t NW_CheckIPv4IsAllZero(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return LIB_NW_CheckIPIsZero(pucAddr, NW_IPV4_SIZE);
}

uint32_t NW_CheckIPv4IsLoopback(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return pucAddr[0] == 127;
}

uint32_t NW_CheckIPv4IsDorE(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return pucAddr[0] > 223;
}

uint32_t NW_CheckIPv4IsFirIsZero(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return pucAddr[0] == 0 && LIB_NW_CheckIPIsZero(pucAddr, NW_IPV4_SIZE) == 0;
}

uint32_t NW_CheckIPv4IsFirIsFF(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return pucAddr[0] == NW_ALL_ONES || LIB_NW_CheckIPIsZero(pucAddr, NW_IPV4_SIZE) == 1;
}

uint32_t NW_CheckIPv4IsMask(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    bool bZeroByte = false;
    bool bZeroBit = false;
    for (size_t i = 0; i + 1 < NW_IPV4_SIZE; ++i) {
        const uint8_t ucByte = pucAddr[i];
        const uint8_t ucNext = pucAddr[i + 1];

        bZeroByte = bZeroByte || ucByte == 0;
        if (ucNext == 0) {
            continue;
        }
        for (uint32_t uiBit = 0x80; uiBit != 0; uiBit >>= 1) {
            if ((ucNext & uiBit) == 0) {
                bZeroBit = true;
            } else if (bZeroBit) {
                return 0;
            }
        }
        if ((ucByte != NW_ALL_ONES && bZeroBit) || bZeroByte) {
            return 0;
        }
    }
    return 1;
}

uint32_t NW_CheckIPv6IsAllZero(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return LIB_NW_CheckIPIsZero(pucAddr, NW_IPV6_SIZE);
}

uint32_t NW_CheckIPv6IsLoopback(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_AllBytesAre(pucAddr, 15, 0) == 1 && pucAddr[15] == 1;
}

uint32_t NW_CheckIPv6IsMulticast(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return pucAddr[0] == NW_ALL_ONES;
}

uint32_t NW_CheckIPv6IsLinklocal(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_IsLocalScope(pucAddr, NW_LINK_LOCAL_BITS);
}

uint32_t NW_CheckIPv6IsSitelocal(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_IsLocalScope(pucAddr, NW_SITE_LOCAL_BITS);
}

uint32_t NW_CheckIPv6IsV4Mapped(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_AllBytesAre(pucAddr, 10, 0) == 1 && NW_AllBytesAre(pucAddr + 10, 2, NW_ALL_ONES) == 1;
}

uint32_t NW_CheckIPv6IsV4Compat(const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_AllBytesAre(pucAddr, 12, 0) == 1 && NW_Load<uint32_t>(pucAddr + 12) > 1;
}

uint32_t NW_PassesChecks(const NW_IP_CHECK_ITEM_S *pstTable, size_t ulCount, uint32_t uiFlags,
                         const uint8_t *pucAddr)
{
    for (size_t i = 0; i < ulCount; ++i) {
        const NW_IP_CHECK_ITEM_S &stItem = pstTable[i];

        if ((uiFlags & stItem.uiFlag) == 0 || stItem.pfnPredicate == nullptr) {
            continue;
        }
        if (stItem.pfnPredicate(pucAddr) != stItem.ucExpected) {
            return 0;
        }
    }
    return 1;
}

namespace {

/* clang-format off */
constexpr NW_IP_CHECK_ITEM_S s_astIpv6CheckTbl[] = {
    {NW_V6CHK_ALL_ZERO,  0, NW_CheckIPv6IsAllZero},
    {NW_V6CHK_LOOPBACK,  0, NW_CheckIPv6IsLoopback},
    {NW_V6CHK_MULTICAST, 0, NW_CheckIPv6IsMulticast},
    {NW_V6CHK_SITELOCAL, 0, NW_CheckIPv6IsSitelocal},
    {NW_V6CHK_LINKLOCAL, 0, NW_CheckIPv6IsLinklocal},
    {NW_V6CHK_V4MAPPED,  0, NW_CheckIPv6IsV4Mapped},
    {NW_V6CHK_V4COMPAT,  0, NW_CheckIPv6IsV4Compat},
};
static_assert(NW_CountOf(s_astIpv6CheckTbl) == 7);

/* The netmask entry deliberately stands out of bit order. */
constexpr NW_IP_CHECK_ITEM_S s_astIpv4CheckTbl[] = {
    {NW_V4CHK_ALL_ZERO,   0, NW_CheckIPv4IsAllZero},
    {NW_V4CHK_LOOPBACK,   0, NW_CheckIPv4IsLoopback},
    {NW_V4CHK_D_OR_E,     0, NW_CheckIPv4IsDorE},
    {NW_V4CHK_MASK,       1, NW_CheckIPv4IsMask},
    {NW_V4CHK_FIRST_ZERO, 0, NW_CheckIPv4IsFirIsZero},
    {NW_V4CHK_FIRST_FF,   1, NW_CheckIPv4IsFirIsFF},
};
static_assert(NW_CountOf(s_astIpv4CheckTbl) == 6);
/* clang-format on */

} // namespace

uint32_t LIB_NW_CheckV6IsValid(uint32_t uiFlags, const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_PassesChecks(s_astIpv6CheckTbl, NW_CountOf(s_astIpv6CheckTbl), uiFlags, pucAddr);
}

uint32_t LIB_NW_CheckV4IsValid(uint32_t uiFlags, const uint8_t *pucAddr)
{
    NW_CHECK_NULL(pucAddr, 0);

    return NW_PassesChecks(s_astIpv4CheckTbl, NW_CountOf(s_astIpv4CheckTbl), uiFlags, pucAddr);
}

uint32_t LIB_CheckIsValidGlobalIPv6AddrFireWall(const uint8_t *pucIPv6Addr)
{
    NW_CHECK_NULL(pucIPv6Addr, 0);

    /* The full walk without link-local, which the firewall accepts. */
    return LIB_NW_CheckV6IsValid(NW_V6CHK_ALL & ~uint32_t{NW_V6CHK_LINKLOCAL}, pucIPv6Addr);
}

uint32_t NW_CheckIpIsEmpty(uint32_t uiFamily, const uint8_t *pucIpArry)
{
    NW_CHECK_NULL(pucIpArry, 0);

    switch (uiFamily) {
    case NW_FAMILY_IPV4:
        return LIB_NW_CheckIPIsZero(pucIpArry, NW_IPV4_SIZE);
    case NW_FAMILY_IPV6:
        return LIB_NW_CheckIPIsZero(pucIpArry, NW_IPV6_SIZE);
    default:
        return 1;
    }
}

uint32_t LIB_NW_CkeckIsValidMac(const uint8_t *pucMacAddr)
{
    NW_CHECK_NULL(pucMacAddr, 0);

    constexpr uint8_t NW_MAC_GROUP_BIT = 0x01;
    if (NW_AllBytesAre(pucMacAddr, NW_MAC_SIZE, 0) == 1) {
        NW_DIAG(NW_DIAG_ERROR, "net mac address is all zero.");
        return 0;
    }
    if ((pucMacAddr[0] & NW_MAC_GROUP_BIT) != 0) {
        NW_DIAG(NW_DIAG_ERROR, "net mac address is a mutilcast address.");
        return 0;
    }
    return 1;
}

uint32_t CalNETPrefix(const uint8_t *pucVar, uint32_t uiLen)
{
    NW_CHECK_NULL(pucVar, 0);

    /* The first byte that is not all ones; behind the mask when there is none. */
    uint32_t uiByte = 0;
    while (uiByte < uiLen && pucVar[uiByte] == NW_ALL_ONES) {
        ++uiByte;
    }
    if (uiByte == NW_IPV6_SIZE) {
        return NW_IPV6_SIZE * 8U;
    }

    /* The lowest bit of a well-formed mask byte that is not all ones is never set. */
    return uiByte * 8U + static_cast<uint32_t>(__builtin_popcount(pucVar[uiByte] & 0xFEU));
}
