// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Static routes that point into another port's segment. */
#include "nw_route_segment.h"

namespace {

/* What a conflict is called, and its code, for each of the two routes. */
struct NW_CODES_S {
    NW_RESULT auiCode[NW_ROUTE_COUNT];
};
struct NW_VERDICT_S {
    const char *apcText[NW_ROUTE_COUNT];
    NW_CODES_S stCodes;
};

NW_RESULT NW_Conflict(const NW_VERDICT_S &stVerdict, size_t ulRoute)
{
    NW_DIAG(NW_DIAG_DEBUG, stVerdict.apcText[ulRoute]);
    return stVerdict.stCodes.auiCode[ulRoute];
}

/* The wireless network in one of the modes. */
struct NW_WIFI_RULE_S {
    const uint8_t *pucGatewayMask; /* a gateway must not meet the wireless address within it */
    NW_VERDICT_S stIn;
    NW_VERDICT_S stGatewayIn;
};

/* clang-format off */
constexpr NW_CODES_S NW_IPV4_CODES        {{NW_ERR_IPV4_ROUTE1,         NW_ERR_IPV4_ROUTE2}};
constexpr NW_CODES_S NW_IPV4_GATEWAY_CODES{{NW_ERR_IPV4_ROUTE1_GATEWAY, NW_ERR_IPV4_ROUTE2_GATEWAY}};
constexpr NW_CODES_S NW_IPV6_CODES        {{NW_ERR_IPV6_ROUTE1,         NW_ERR_IPV6_ROUTE2}};
constexpr NW_CODES_S NW_IPV6_GATEWAY_CODES{{NW_ERR_IPV6_ROUTE1_GATEWAY, NW_ERR_IPV6_ROUTE2_GATEWAY}};

constexpr NW_VERDICT_S s_stIpv4InAddress{
    {"Ipv4 static route1 is in the same segment with ipv4 address when mode is normal.",
     "Ipv4 static route2 is in the same segment with ipv4 address when mode is normal."}, NW_IPV4_CODES};
constexpr NW_VERDICT_S s_stIpv4GatewayInAddress{
    {"Ipv4 static route1 gateway is in the same segment with ipv4 address when mode is normal.",
     "Ipv4 static route2 gateway is in the same segment with ipv4 address when mode is normal."}, NW_IPV4_GATEWAY_CODES};
constexpr NW_VERDICT_S s_stIpv4InRoutes{
    {"Ipv4 static route1 is in the same segment with other route when mode is normal.",
     "Ipv4 static route2 is in the same segment with other route when mode is normal."}, NW_IPV4_CODES};

/* In normal mode a gateway conflicts only when it is the wireless address itself. */
constexpr NW_WIFI_RULE_S s_stNormalWifi{NW_HOST_MASK,
    {{"Ipv4 static route1 is in the same segment with wifi when mode is normal.",
      "Ipv4 static route2 is in the same segment with wifi when mode is normal."}, NW_IPV4_CODES},
    {{"Ipv4 static route1 gateway is in the same segment with wifi when mode is normal.",
      "Ipv4 static route2 gateway is in the same segment with wifi when mode is normal."}, NW_IPV4_GATEWAY_CODES}};
constexpr NW_WIFI_RULE_S s_stStandbyWifi{NW_WIFI_MASK,
    {{"The IPv4 static route1 is in the same segment with wifi.",
      "The IPv4 static route2 is in the same segment with wifi."}, NW_IPV4_CODES},
    {{"The IPv4 static route1 gateway is in the same segment with wifi.",
      "The IPv4 static route2 gateway is in the same segment with wifi."}, NW_IPV4_GATEWAY_CODES}};

constexpr NW_VERDICT_S s_stIpv6InAddress{
    {"Ipv6 static route1 is in the same segment with ipv6 address when mode is normal.",
     "Ipv6 static route2 is in the same segment with ipv6 address when mode is normal."}, NW_IPV6_CODES};
constexpr NW_VERDICT_S s_stIpv6InRoutes{
    {"Ipv6 static route1 is in the same segment with other route when mode is normal.",
     "Ipv6 static route2 is in the same segment with other route when mode is normal."}, NW_IPV6_CODES};
constexpr NW_VERDICT_S s_stIpv6GatewayInAddress{
    {"Ipv6 static route1 gateway is in the same segment with ipv6 address when mode is normal.",
     "Ipv6 static route2 gateway is in the same segment with ipv6 address when mode is normal."}, NW_IPV6_GATEWAY_CODES};
constexpr NW_VERDICT_S s_stIpv6GatewayInRoutes{
    {"Ipv6 static route1 gateway is in the same segment with other route when mode is normal.",
     "Ipv6 static route2 gateway is in the same segment with other route when mode is normal."}, NW_IPV6_GATEWAY_CODES};

constexpr const char *s_apcOtherRouteText[NW_ROUTE_COUNT] = {
    "Ipv4 static route is in the same segment with other port route1.",
    "Ipv4 static route is in the same segment with other port route2.",
};
/* clang-format on */

/* Which bit selects a route. */
constexpr uint32_t s_auiIpv4Select[NW_ROUTE_COUNT] = {NW_ROUTESET_IPV4_ROUTE1,
                                                      NW_ROUTESET_IPV4_ROUTE2};
constexpr uint32_t s_auiIpv6Select[NW_ROUTE_COUNT] = {NW_ROUTESET_IPV6_ROUTE1,
                                                      NW_ROUTESET_IPV6_ROUTE2};
constexpr uint32_t NW_ROUTESET_IPV4 = NW_ROUTESET_IPV4_ROUTE1 | NW_ROUTESET_IPV4_ROUTE2;
constexpr uint32_t NW_ROUTESET_IPV6 = NW_ROUTESET_IPV6_ROUTE1 | NW_ROUTESET_IPV6_ROUTE2;

/* With this count of further addresses nothing is compared at all. */
constexpr uint8_t NW_NO_ADDRESS_COUNT = 255;
constexpr uint32_t NW_GATEWAY_PREFIX = 128;

/* The selected valid routes against the wireless address. */
NW_RESULT NW_RoutesMeetWifi(const NW_WIFI_RULE_S &stRule, uint32_t uiRouteSet,
                            const NW_LAN_CFG_PORT_S &stPort, const uint8_t *pucWifiAddr,
                            const uint8_t *pucWifiMask)
{
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        const NW_LAN_CFG_IPV4_ROUTE_S &stRoute = stPort.astIpv4Route[i];
        if ((uiRouteSet & s_auiIpv4Select[i]) == 0 || !NW_IsOn(stRoute.ucState)) {
            continue;
        }
        if (NW_CheckDoubleIPv4SameSegment(stRoute.aucAddr, stRoute.aucMask, pucWifiAddr,
                                          pucWifiMask) == 1) {
            return NW_Conflict(stRule.stIn, i);
        }
        if (NW_CheckDoubleIPv4SameSegment(stRoute.aucGateway, NW_HOST_MASK, pucWifiAddr,
                                          stRule.pucGatewayMask) == 1) {
            return NW_Conflict(stRule.stGatewayIn, i);
        }
    }
    return NW_OK;
}

/* A step of normal mode: one port's routes against the other port or the wireless network. */
struct NW_ROUTE_STEP_S {
    uint32_t uiPortSet;
    uint32_t uiPort;
    uint32_t uiOther; /* NW_PORT_COUNT: the wireless network */
    const char *pcText;
};

constexpr uint32_t NW_OTHER_IS_WIFI = NW_PORT_COUNT;

/* clang-format off */
constexpr NW_ROUTE_STEP_S s_astIpv4RouteStep[] = {
    {NW_PORTSET_ETH0, NW_PORT_ETH0, NW_PORT_ETH1,     "Route address is in the same segment with eth1 when normal mode"},
    {NW_PORTSET_ETH0, NW_PORT_ETH0, NW_OTHER_IS_WIFI, "Route address is in the same segment with wifi when normal mode"},
    {NW_PORTSET_ETH1, NW_PORT_ETH1, NW_PORT_ETH0,     "Route address is in the same segment with eth0 when normal mode"},
    {NW_PORTSET_ETH1, NW_PORT_ETH1, NW_OTHER_IS_WIFI, "Route address is in the same segment with wifi when normal mode"},
};

/* The port selection plays no part here. */
constexpr NW_ROUTE_STEP_S s_astIpv6RouteStep[] = {
    {0, NW_PORT_ETH0, NW_PORT_ETH1, "IPv6 route address is in the same segment with eth1 when normal mode"},
    {0, NW_PORT_ETH1, NW_PORT_ETH0, "IPv6 route address is in the same segment with eth0 when normal mode"},
};
/* clang-format on */

/* A conflict of a step of normal mode with the lines that follow it. */
NW_RESULT NW_FailNormal(const NW_ROUTE_STEP_S &stStep, const char *pcSummary, NW_RESULT uiResult)
{
    NW_DIAG(NW_DIAG_DEBUG, stStep.pcText);
    NW_DIAG(NW_DIAG_DEBUG, pcSummary);
    NW_DIAG(NW_DIAG_DEBUG, "Route address is in the same segment when normal mode");
    return uiResult;
}

/* The checked port's own enable flag is not asked. */
NW_RESULT NW_RunIpv4RouteStep(const NW_ROUTE_STEP_S &stStep, uint32_t uiRouteSet,
                              const NW_WIFI_ADDR_S &stWifi, const NW_LAN_CFG_DB_INFO_S &stLan)
{
    const NW_LAN_CFG_PORT_S &stPort = stLan.astPort[stStep.uiPort];

    if (stStep.uiOther == NW_OTHER_IS_WIFI) {
        return NW_IsOn(stWifi.ucIpv4Enable)
                   ? NW_CheckIpv4RouteWithWifi(uiRouteSet, stWifi.aucIpv4Addr, NW_WIFI_MASK, stPort)
                   : NW_OK;
    }
    const NW_LAN_CFG_PORT_S &stOther = stLan.astPort[stStep.uiOther];
    return NW_IsOn(stOther.ucIpv4Enable) ? NW_CheckIpv4RouteWithPort(uiRouteSet, stOther, stPort)
                                         : NW_OK;
}

NW_RESULT NW_CheckIpv4Routes(uint32_t uiPortSet, uint32_t uiRouteSet, const NW_WIFI_ADDR_S &stWifi,
                             const NW_LAN_CFG_DB_INFO_S &stLan)
{
    NW_DIAG(NW_DIAG_DEBUG, "Check ipv4 route segment.");
    for (const NW_ROUTE_STEP_S &stStep : s_astIpv4RouteStep) {
        if ((uiPortSet & stStep.uiPortSet) == 0) {
            continue;
        }
        const NW_RESULT uiResult = NW_RunIpv4RouteStep(stStep, uiRouteSet, stWifi, stLan);
        if (uiResult != NW_OK) {
            return NW_FailNormal(
                stStep, "Ipv4 static route is in the same segment when mode is normal.", uiResult);
        }
    }
    return NW_OK;
}

NW_RESULT NW_CheckIpv6Routes(uint32_t uiRouteSet, const NW_LAN_CFG_DB_INFO_S &stLan)
{
    NW_DIAG(NW_DIAG_DEBUG, "Check ipv6 route segment.");
    for (const NW_ROUTE_STEP_S &stStep : s_astIpv6RouteStep) {
        const NW_LAN_CFG_PORT_S &stOther = stLan.astPort[stStep.uiOther];
        if (!NW_IsOn(stOther.ucIpv6Enable)) {
            continue;
        }
        const NW_RESULT uiResult =
            NW_CheckIpv6RouteWithPort(uiRouteSet, stOther, stLan.astPort[stStep.uiPort]);
        if (uiResult != NW_OK) {
            return NW_FailNormal(
                stStep, "Ipv6 static route is in the same segment when mode is normal.", uiResult);
        }
    }
    return NW_OK;
}

NW_RESULT NW_CheckRoutesNormal(uint32_t uiPortSet, uint32_t uiRouteSet,
                               const NW_WIFI_ADDR_S &stWifi, const NW_LAN_CFG_DB_INFO_S &stLan)
{
    NW_RESULT uiResult = NW_OK;

    NW_DIAG(NW_DIAG_DEBUG, "Check route segment in normal mode.");
    if ((uiRouteSet & NW_ROUTESET_IPV4) != 0) {
        uiResult = NW_CheckIpv4Routes(uiPortSet, uiRouteSet, stWifi, stLan);
    }
    if (uiResult == NW_OK && (uiRouteSet & NW_ROUTESET_IPV6) != 0) {
        uiResult = NW_CheckIpv6Routes(uiRouteSet, stLan);
    }
    return uiResult;
}

/* Only the bond's IPv4 routes against the wireless network, both of them whichever is selected. */
NW_RESULT NW_CheckRoutesStandby(uint32_t uiRouteSet, const NW_WIFI_ADDR_S &stWifi,
                                const NW_LAN_CFG_PORT_S &stBond)
{
    NW_DIAG(NW_DIAG_DEBUG, "Check route segment in standby mode.");
    if ((uiRouteSet & NW_ROUTESET_IPV4) == 0) {
        return NW_OK;
    }
    if (stBond.ucIpv4Enable == 0 || stWifi.ucIpv4Enable == 0) {
        NW_DIAG(NW_DIAG_DEBUG, "There is only one net port that ipv4 is enabled.");
        return NW_OK;
    }

    const NW_RESULT uiResult = NW_RoutesMeetWifi(s_stStandbyWifi, NW_ROUTESET_IPV4, stBond,
                                                 stWifi.aucIpv4Addr, NW_WIFI_MASK);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_DEBUG, "Ipv4 route address is in the same segment when mode is standby.");
        NW_DIAG(NW_DIAG_DEBUG, "Route address is in the same segment when standby mode");
    }
    return uiResult;
}

} // namespace

uint32_t NW_CheckIpv4RouteWithPortIp(const uint8_t *pucRouteAddr, const uint8_t *pucMask,
                                     const NW_LAN_CFG_PORT_S &stOther)
{
    if (NW_CheckDoubleIPv4SameSegment(pucRouteAddr, pucMask, stOther.aucIpv4Addr,
                                      stOther.aucIpv4Mask) == 0) {
        return 0;
    }
    NW_DIAG(NW_DIAG_DEBUG,
            "Ipv4 static route is in the same segment with ipv4 address when mode is normal.");
    return 1;
}

uint32_t NW_CheckIpv4RouteWithPortRoute(const uint8_t *pucRouteAddr, const uint8_t *pucMask,
                                        const NW_LAN_CFG_PORT_S &stOther)
{
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        const NW_LAN_CFG_IPV4_ROUTE_S &stRoute = stOther.astIpv4Route[i];
        if (NW_IsOn(stRoute.ucState) &&
            NW_CheckDoubleIPv4SameSegment(pucRouteAddr, pucMask, stRoute.aucAddr,
                                          stRoute.aucMask) == 1) {
            NW_DIAG(NW_DIAG_DEBUG, s_apcOtherRouteText[i]);
            return 1;
        }
    }
    return 0;
}

NW_RESULT NW_CheckIpv4RouteWithPort(uint32_t uiRouteSet, const NW_LAN_CFG_PORT_S &stOther,
                                    const NW_LAN_CFG_PORT_S &stPort)
{
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        const NW_LAN_CFG_IPV4_ROUTE_S &stRoute = stPort.astIpv4Route[i];
        if ((uiRouteSet & s_auiIpv4Select[i]) == 0 || !NW_IsOn(stRoute.ucState)) {
            continue;
        }
        if (NW_CheckIpv4RouteWithPortIp(stRoute.aucAddr, stRoute.aucMask, stOther) == 1) {
            return NW_Conflict(s_stIpv4InAddress, i);
        }
        if (NW_CheckIpv4RouteWithPortIp(stRoute.aucGateway, NW_HOST_MASK, stOther) == 1) {
            return NW_Conflict(s_stIpv4GatewayInAddress, i);
        }
        if (NW_CheckIpv4RouteWithPortRoute(stRoute.aucAddr, stRoute.aucMask, stOther) == 1) {
            return NW_Conflict(s_stIpv4InRoutes, i);
        }
    }
    return NW_OK;
}

NW_RESULT NW_CheckIpv4RouteWithWifi(uint32_t uiRouteSet, const uint8_t *pucWifiAddr,
                                    const uint8_t *pucWifiMask, const NW_LAN_CFG_PORT_S &stPort)
{
    return NW_RoutesMeetWifi(s_stNormalWifi, uiRouteSet, stPort, pucWifiAddr, pucWifiMask);
}

NW_RESULT NW_CheckIpv6RouteWithPort(uint32_t uiRouteSet, const NW_LAN_CFG_PORT_S &stOther,
                                    const NW_LAN_CFG_PORT_S &stPort)
{
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        const NW_LAN_CFG_IPV6_ROUTE_S &stRoute = stPort.astIpv6Route[i];
        if ((uiRouteSet & s_auiIpv6Select[i]) == 0 || !NW_IsOn(stRoute.ucState)) {
            continue;
        }
        if (LIB_NW_CheckIpv6SingRoutewithIpSameSeg(stRoute.aucAddr, stRoute.ucPrefix, &stOther)) {
            return NW_Conflict(s_stIpv6InAddress, i);
        }
        if (LIB_NW_CheckIpv6SingRoutewithRouteSameSeg(stRoute.aucAddr, stRoute.ucPrefix,
                                                      &stOther)) {
            return NW_Conflict(s_stIpv6InRoutes, i);
        }
        if (LIB_NW_CheckIpv6SingRoutewithIpSameSeg(stRoute.aucGateway, NW_GATEWAY_PREFIX,
                                                   &stOther)) {
            return NW_Conflict(s_stIpv6GatewayInAddress, i);
        }
        if (LIB_NW_CheckIpv6SingRoutewithRouteSameSeg(stRoute.aucGateway, NW_GATEWAY_PREFIX,
                                                      &stOther)) {
            return NW_Conflict(s_stIpv6GatewayInRoutes, i);
        }
    }
    return NW_OK;
}

uint32_t LIB_NW_CheckIpv6SingRoutewithIpSameSeg(const uint8_t *pucRouteAddr, uint32_t uiPrefix,
                                                const NW_LAN_CFG_PORT_S *pstLanEthDB)
{
    NW_CHECK_NULL(pucRouteAddr, 0);
    NW_CHECK_NULL(pstLanEthDB, 0);

    const uint32_t uiCount = pstLanEthDB->ucIpv6FurtherCount;
    if (uiCount == NW_NO_ADDRESS_COUNT) {
        return 0;
    }

    /* Address 0 is the static one; of the further ones those that exist are compared. */
    for (uint32_t i = 0; i <= uiCount && i <= NW_IPV6_FURTHER_COUNT; ++i) {
        const uint8_t *pucAddr =
            i == 0 ? pstLanEthDB->aucIpv6Addr : pstLanEthDB->aaucIpv6FurtherAddr[i - 1];
        const uint8_t ucPrefix =
            i == 0 ? pstLanEthDB->ucIpv6Prefix : pstLanEthDB->aucIpv6FurtherPrefix[i - 1];
        if (NW_CheckDoubleIPv6SameSegment(pucRouteAddr, uiPrefix, pucAddr, ucPrefix) == 1) {
            NW_DIAG(NW_DIAG_DEBUG,
                    "Ipv6 static route is in the same segment with ipv6 address when mode is "
                    "normal, index[%d].",
                    i);
            return 1;
        }
    }
    return 0;
}

uint32_t LIB_NW_CheckIpv6SingRoutewithRouteSameSeg(const uint8_t *pucRouteAddr, uint32_t uiPrefix,
                                                   const NW_LAN_CFG_PORT_S *pstLanEthDB)
{
    NW_CHECK_NULL(pucRouteAddr, 0);
    NW_CHECK_NULL(pstLanEthDB, 0);

    for (const NW_LAN_CFG_IPV6_ROUTE_S &stRoute : pstLanEthDB->astIpv6Route) {
        if (NW_IsOn(stRoute.ucState) &&
            NW_CheckDoubleIPv6SameSegment(pucRouteAddr, uiPrefix, stRoute.aucAddr,
                                          stRoute.ucPrefix) == 1) {
            NW_DIAG(NW_DIAG_DEBUG, "Ipv6 static route is in the same segment with other route when "
                                   "mode is normal.");
            return 1;
        }
    }
    return 0;
}

NW_RESULT LIB_NW_CheckIPv4v6RouteSameSegment(uint32_t uiStandby, uint32_t uiPortSet,
                                             uint32_t uiRouteSet, const NW_WIFI_ADDR_S *pstWifiInfo,
                                             const NW_LAN_CFG_DB_INFO_S *pstLanAddr)
{
    NW_CHECK_NULL(pstWifiInfo, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstLanAddr, NW_ERR_NULL_POINTER);

    return uiStandby != 0
               ? NW_CheckRoutesStandby(uiRouteSet, *pstWifiInfo, pstLanAddr->astPort[NW_PORT_BOND0])
               : NW_CheckRoutesNormal(uiPortSet, uiRouteSet, *pstWifiInfo, *pstLanAddr);
}
