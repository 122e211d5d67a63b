// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The pair rules of the segment checks. */
#include "nw_segment.h"

namespace {

/* What a conflict with a route, and with its gateway, is called. */
struct NW_ROUTE_CONFLICT_S {
    const char *pcRouteText;
    NW_RESULT uiRouteCode;
    const char *pcGatewayText;
    NW_RESULT uiGatewayCode;
};

/* clang-format off */
constexpr NW_ROUTE_CONFLICT_S s_astIpv4Conflict[NW_ROUTE_COUNT] = {
    {"Ipv4 address is in the same segment with route1.",         NW_ERR_IPV4_IN_ROUTE1,
     "Ipv4 address is in the same segment with route1 gateway.", NW_ERR_IPV4_HOLDS_GATEWAY1},
    {"Ipv4 address is in the same segment with route2.",         NW_ERR_IPV4_IN_ROUTE2,
     "Ipv4 address is in the same segment with route2 gateway.", NW_ERR_IPV4_HOLDS_GATEWAY2},
};

constexpr NW_ROUTE_CONFLICT_S s_astIpv6Conflict[NW_ROUTE_COUNT] = {
    {"Ipv6 address is in the same segment with route1.",         NW_ERR_IPV6_IN_ROUTE1,
     "Ipv6 address is in the same segment with route1 gateway.", NW_ERR_IPV6_HOLDS_GATEWAY1},
    {"Ipv6 address is in the same segment with route2.",         NW_ERR_IPV6_IN_ROUTE2,
     "Ipv6 address is in the same segment with route2 gateway.", NW_ERR_IPV6_HOLDS_GATEWAY2},
};
/* clang-format on */

void NW_LogIpv4Sums(uint32_t uiSum1, uint32_t uiSum2, uint32_t uiByte)
{
    NW_DIAG(NW_DIAG_DEBUG,
            "NW_CheckDoubleIPv4SameSegment: uiAddrZereo1:%d. uiAddrZereo2:%d iCnt:%d", uiSum1,
            uiSum2, uiByte);
}

void NW_LogIpv6Bytes(uint32_t uiByte1, uint32_t uiByte2, uint32_t uiLeft)
{
    NW_DIAG(NW_DIAG_DEBUG, "addr1:%d    addr2:%d    Prefix:%d", uiByte1, uiByte2, uiLeft);
}

/* Walks the valid routes: first the route, then its gateway. */
template <typename ROUTE, typename MEETS_ROUTE, typename MEETS_GATEWAY>
NW_RESULT NW_FirstConflict(const ROUTE (&astRoute)[NW_ROUTE_COUNT],
                           const NW_ROUTE_CONFLICT_S (&astConflict)[NW_ROUTE_COUNT],
                           MEETS_ROUTE fnMeetsRoute, MEETS_GATEWAY fnMeetsGateway)
{
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        if (!NW_IsOn(astRoute[i].ucState)) {
            continue;
        }
        if (fnMeetsRoute(astRoute[i]) == 1) {
            NW_DIAG(NW_DIAG_DEBUG, astConflict[i].pcRouteText);
            return astConflict[i].uiRouteCode;
        }
        if (fnMeetsGateway(astRoute[i]) == 1) {
            NW_DIAG(NW_DIAG_DEBUG, astConflict[i].pcGatewayText);
            return astConflict[i].uiGatewayCode;
        }
    }
    return NW_OK;
}

} // namespace

uint32_t NW_CheckDoubleIPv4SameSegment(const uint8_t *pucAddr1, const uint8_t *pucMask1,
                                       const uint8_t *pucAddr2, const uint8_t *pucMask2)
{
    NW_CHECK_NULL(pucAddr1, 0);
    NW_CHECK_NULL(pucMask1, 0);
    NW_CHECK_NULL(pucAddr2, 0);
    NW_CHECK_NULL(pucMask2, 0);

    uint32_t uiSum1 = 0;
    uint32_t uiSum2 = 0;
    for (uint32_t i = 0; i < NW_IPV4_SIZE; ++i) {
        const uint32_t uiMask = pucMask1[i] & pucMask2[i];
        const uint32_t uiPart1 = pucAddr1[i] & uiMask;
        const uint32_t uiPart2 = pucAddr2[i] & uiMask;

        uiSum1 += uiPart1;
        uiSum2 += uiPart2;
        if (uiPart1 != uiPart2) {
            NW_LogIpv4Sums(uiSum1, uiSum2, i);
            return 0;
        }
    }
    NW_LogIpv4Sums(uiSum1, uiSum2, NW_IPV4_SIZE);
    return uiSum1 != 0 && uiSum2 != 0;
}

uint32_t NW_CheckDoubleIPv6SameSegment(const uint8_t *pucAddr1, uint32_t uiPrefix1,
                                       const uint8_t *pucAddr2, uint32_t uiPrefix2)
{
    NW_CHECK_NULL(pucAddr1, 0);
    NW_CHECK_NULL(pucAddr2, 0);

    const uint32_t uiPrefix = uiPrefix1 < uiPrefix2 ? uiPrefix1 : uiPrefix2;
    if (uiPrefix == 0 || uiPrefix > UINT8_MAX) {
        return 0;
    }

    uint32_t uiLeft = uiPrefix;
    for (uint32_t i = 0; i < NW_IPV6_SIZE; ++i) {
        if (uiLeft <= 8) {
            const uint32_t uiTop1 = static_cast<uint32_t>(pucAddr1[i]) >> (8 - uiLeft);
            const uint32_t uiTop2 = static_cast<uint32_t>(pucAddr2[i]) >> (8 - uiLeft);
            NW_LogIpv6Bytes(uiTop1, uiTop2, 0);
            return uiTop1 == uiTop2;
        }
        uiLeft -= 8;
        NW_LogIpv6Bytes(pucAddr1[i], pucAddr2[i], uiLeft);
        if (pucAddr1[i] != pucAddr2[i]) {
            return 0;
        }
    }
    return 0; /* a prefix length above 128 */
}

NW_RESULT NW_CheckIpv4SameSegIpwithRoute(const uint8_t *pucAddr, const uint8_t *pucMask,
                                         const NW_LAN_CFG_PORT_S *pstLanEthDB)
{
    NW_CHECK_NULL(pucAddr, NW_OK);
    NW_CHECK_NULL(pstLanEthDB, NW_OK);

    return NW_FirstConflict(
        pstLanEthDB->astIpv4Route, s_astIpv4Conflict,
        [=](const NW_LAN_CFG_IPV4_ROUTE_S &stRoute) {
            return NW_CheckDoubleIPv4SameSegment(stRoute.aucAddr, stRoute.aucMask, pucAddr,
                                                 pucMask);
        },
        [=](const NW_LAN_CFG_IPV4_ROUTE_S &stRoute) {
            return NW_CheckDoubleIPv4SameSegment(stRoute.aucGateway, NW_HOST_MASK, pucAddr,
                                                 pucMask);
        });
}

NW_RESULT NW_CheckIpv6SameSegIpwithRoute(const uint8_t *pucAddr, uint32_t uiPrefix,
                                         const NW_LAN_CFG_PORT_S *pstLanEthDB)
{
    NW_CHECK_NULL(pucAddr, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstLanEthDB, NW_ERR_NULL_POINTER);

    return NW_FirstConflict(
        pstLanEthDB->astIpv6Route, s_astIpv6Conflict,
        [=](const NW_LAN_CFG_IPV6_ROUTE_S &stRoute) {
            return NW_CheckDoubleIPv6SameSegment(stRoute.aucAddr, stRoute.ucPrefix, pucAddr,
                                                 uiPrefix);
        },
        [=](const NW_LAN_CFG_IPV6_ROUTE_S &stRoute) {
            return NW_CheckDoubleIPv6SameSegment(stRoute.aucGateway, uiPrefix, pucAddr, uiPrefix);
        });
}
