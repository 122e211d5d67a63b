// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Two ports in one segment: the check over the stored configuration. */
#include "nw_segment.h"

namespace {

/* Sides of the IPv4 comparisons. */
enum NW_SIDE_E { NW_SIDE_ETH0, NW_SIDE_ETH1, NW_SIDE_WIFI, NW_SIDE_COUNT };

struct NW_SIDE_S {
    uint8_t ucEnable;
    const uint8_t *pucAddr;
    const uint8_t *pucMask;
    const NW_LAN_CFG_PORT_S *pstPort; /* null: no routes */
};

NW_SIDE_S NW_SideOfPort(const NW_LAN_CFG_PORT_S &stPort)
{
    return {stPort.ucIpv4Enable, stPort.aucIpv4Addr, stPort.aucIpv4Mask, &stPort};
}

NW_SIDE_S NW_SideOfWifi(const NW_WIFI_ADDR_S &stWifi)
{
    return {stWifi.ucIpv4Enable, stWifi.aucIpv4Addr, NW_WIFI_MASK, nullptr};
}

uint32_t NW_ShareSegment(const NW_SIDE_S &stSide1, const NW_SIDE_S &stSide2)
{
    return NW_CheckDoubleIPv4SameSegment(stSide1.pucAddr, stSide1.pucMask, stSide2.pucAddr,
                                         stSide2.pucMask);
}

/* One IPv4 comparison: runs when a selected port is in uiPortSet and both sides are on. */
struct NW_IPV4_STEP_S {
    uint32_t uiPortSet;
    NW_SIDE_E eSide;
    NW_SIDE_E eOther;
    bool bRoutes; /* the side's address against the other's routes, else against its address */
    const char *pcText;
};

/* clang-format off */
constexpr NW_IPV4_STEP_S s_astIpv4Step[] = {
    {NW_PORTSET_ETH0 | NW_PORTSET_ETH1, NW_SIDE_ETH0, NW_SIDE_ETH1, false,
     "The ipv4 address of eth0 is at the same segment with eth1."},
    {NW_PORTSET_ETH0 | NW_PORTSET_WIFI, NW_SIDE_ETH0, NW_SIDE_WIFI, false,
     "The ipv4 address of eth0 is at the same segment with wifi."},
    {NW_PORTSET_ETH1 | NW_PORTSET_WIFI, NW_SIDE_ETH1, NW_SIDE_WIFI, false,
     "The ipv4 address of eth1 is at the same segment with wifi."},
    {NW_PORTSET_ETH0, NW_SIDE_ETH0, NW_SIDE_ETH1, true,
     "Ip address is in the same segment with eth1 route"},
    {NW_PORTSET_ETH1, NW_SIDE_ETH1, NW_SIDE_ETH0, true,
     "Ip address is in the same segment with eth0 route"},
    {NW_PORTSET_WIFI, NW_SIDE_WIFI, NW_SIDE_ETH0, true,
     "Wifi address is in the same segment with eth0 route"},
    {NW_PORTSET_WIFI, NW_SIDE_WIFI, NW_SIDE_ETH1, true,
     "Wifi address is in the same segment with eth1 route"},
};
/* clang-format on */

NW_RESULT NW_RunIpv4Step(const NW_IPV4_STEP_S &stStep, const NW_SIDE_S *pstSides)
{
    const NW_SIDE_S &stSide = pstSides[stStep.eSide];
    const NW_SIDE_S &stOther = pstSides[stStep.eOther];

    if (stStep.bRoutes) {
        return NW_CheckIpv4SameSegIpwithRoute(stSide.pucAddr, stSide.pucMask, stOther.pstPort);
    }
    return NW_ShareSegment(stSide, stOther) == 1 ? NW_ERR_IPV4_SAME_SEGMENT : NW_OK;
}

NW_RESULT NW_CheckIpv4Stage(uint32_t uiPortSet, const NW_WIFI_ADDR_S &stWifi,
                            const NW_LAN_CFG_DB_INFO_S &stLan)
{
    const NW_SIDE_S astSides[NW_SIDE_COUNT] = {NW_SideOfPort(stLan.astPort[NW_PORT_ETH0]),
                                               NW_SideOfPort(stLan.astPort[NW_PORT_ETH1]),
                                               NW_SideOfWifi(stWifi)};

    NW_DIAG(NW_DIAG_DEBUG, "Check ipv4 segment.");
    for (const NW_IPV4_STEP_S &stStep : s_astIpv4Step) {
        if ((uiPortSet & stStep.uiPortSet) == 0 || !NW_IsOn(astSides[stStep.eSide].ucEnable) ||
            !NW_IsOn(astSides[stStep.eOther].ucEnable)) {
            continue;
        }
        const NW_RESULT uiResult = NW_RunIpv4Step(stStep, astSides);
        if (uiResult != NW_OK) {
            NW_DIAG(NW_DIAG_DEBUG, stStep.pcText);
            NW_DIAG(NW_DIAG_DEBUG,
                    stStep.bRoutes ? "Ipv4 address is in the same segment with route"
                                   : "Ipv4 address is in the same segment when mode is normal.");
            return uiResult;
        }
    }
    return NW_OK;
}

bool NW_BothIpv6On(const NW_LAN_CFG_DB_INFO_S &stLan)
{
    if (stLan.astPort[NW_PORT_ETH0].ucIpv6Enable != 0 &&
        stLan.astPort[NW_PORT_ETH1].ucIpv6Enable != 0) {
        return true;
    }
    NW_DIAG(NW_DIAG_DEBUG, "There is only one netport that is enable.");
    return false;
}

/* The static (or DHCPv6) address of a port, or its SLAAC one, the first further address. */
struct NW_IPV6_ADDR_S {
    const uint8_t *pucAddr;
    uint8_t ucPrefix;
};

NW_IPV6_ADDR_S NW_Ipv6Address(const NW_LAN_CFG_PORT_S &stPort, bool bSlaac)
{
    if (bSlaac) {
        return {stPort.aaucIpv6FurtherAddr[0], stPort.aucIpv6FurtherPrefix[0]};
    }
    return {stPort.aucIpv6Addr, stPort.ucIpv6Prefix};
}

struct NW_IPV6_STEP_S {
    bool bEth0Slaac;
    bool bEth1Slaac;
    const char *pcText;
};

/* clang-format off */
constexpr NW_IPV6_STEP_S s_astIpv6Step[] = {
    {false, false, "The dhcpv6 address that's eth0 and eth1 is at the same segment."},
    {false, true,  "The dhcpv6 address of eth0 and the slaacs address of eth1 is at the same segment."},
    {true,  false, "The slaacs address of eth0 and the dhcpv6 address of eth1 is at the same segment."},
};
constexpr NW_IPV6_STEP_S s_stSlaacStep{true, true, "The slaacs that's eth0 and eth1 is at the same segment."};
/* clang-format on */

NW_RESULT NW_RunIpv6Step(const NW_IPV6_STEP_S &stStep, const NW_LAN_CFG_DB_INFO_S &stLan,
                         const char *pcSummary)
{
    const NW_IPV6_ADDR_S stEth0 = NW_Ipv6Address(stLan.astPort[NW_PORT_ETH0], stStep.bEth0Slaac);
    const NW_IPV6_ADDR_S stEth1 = NW_Ipv6Address(stLan.astPort[NW_PORT_ETH1], stStep.bEth1Slaac);

    if (NW_CheckDoubleIPv6SameSegment(stEth0.pucAddr, stEth0.ucPrefix, stEth1.pucAddr,
                                      stEth1.ucPrefix) == 0) {
        return NW_OK;
    }
    NW_DIAG(NW_DIAG_DEBUG, stStep.pcText);
    NW_DIAG(NW_DIAG_DEBUG, pcSummary);
    return NW_ERR_IPV6_SAME_SEGMENT;
}

NW_RESULT NW_CheckIpv6Addresses(const NW_LAN_CFG_DB_INFO_S &stLan)
{
    if (!NW_BothIpv6On(stLan)) {
        return NW_OK;
    }

    for (const NW_IPV6_STEP_S &stStep : s_astIpv6Step) {
        const NW_RESULT uiResult = NW_RunIpv6Step(
            stStep, stLan, "Ipv6 address is in the same segment when mode is normal.");
        if (uiResult != NW_OK) {
            return uiResult;
        }
    }
    return NW_OK;
}

/* A port's address against the other port's routes. */
struct NW_IPV6_ROUTE_STEP_S {
    uint32_t uiPort;
    uint32_t uiOther;
    const char *pcText;
};

constexpr NW_IPV6_ROUTE_STEP_S s_astIpv6RouteStep[] = {
    {NW_PORT_ETH0, NW_PORT_ETH1, "Ipv6 address is in the same segment with eth1 route"},
    {NW_PORT_ETH1, NW_PORT_ETH0, "Ipv6 address is in the same segment with eth0 route"},
};

/* Only an address of this origin is compared with routes. */
constexpr uint8_t NW_ADDR_ORIGIN_WITH_ROUTES = 1;

NW_RESULT NW_CheckIpv6Routes(const NW_LAN_CFG_DB_INFO_S &stLan)
{
    if (!NW_BothIpv6On(stLan)) {
        return NW_OK;
    }

    for (const NW_IPV6_ROUTE_STEP_S &stStep : s_astIpv6RouteStep) {
        const NW_LAN_CFG_PORT_S &stPort = stLan.astPort[stStep.uiPort];
        if (stPort.ucIpv6Type != NW_ADDR_ORIGIN_WITH_ROUTES) {
            continue;
        }
        const NW_RESULT uiResult = NW_CheckIpv6SameSegIpwithRoute(
            stPort.aucIpv6Addr, stPort.ucIpv6Prefix, &stLan.astPort[stStep.uiOther]);
        if (uiResult != NW_OK) {
            NW_DIAG(NW_DIAG_DEBUG, stStep.pcText);
            NW_DIAG(NW_DIAG_DEBUG, "Ipv6 address is in the same segment with route");
            return uiResult;
        }
    }
    return NW_OK;
}

NW_RESULT NW_CheckSlaacStage(const NW_LAN_CFG_DB_INFO_S &stLan)
{
    if (!NW_BothIpv6On(stLan)) {
        return NW_OK;
    }
    return NW_RunIpv6Step(s_stSlaacStep, stLan,
                          "Ipv6 slaac address is in the same segment when mode is normal.");
}

/* The stages that uiCheckType selects, up to the first conflict. */
NW_RESULT NW_RunNormalStages(uint32_t uiPortSet, uint32_t uiCheckType, const NW_WIFI_ADDR_S &stWifi,
                             const NW_LAN_CFG_DB_INFO_S &stLan)
{
    NW_RESULT uiResult = NW_OK;

    if ((uiCheckType & NW_SEGCHK_IPV4) != 0) {
        uiResult = NW_CheckIpv4Stage(uiPortSet, stWifi, stLan);
    }
    if (uiResult == NW_OK && (uiCheckType & NW_SEGCHK_IPV6) != 0) {
        uiResult = NW_CheckIpv6Addresses(stLan);
        if (uiResult == NW_OK) {
            uiResult = NW_CheckIpv6Routes(stLan);
        }
    }
    if (uiResult == NW_OK && (uiCheckType & NW_SEGCHK_SLAAC) != 0) {
        uiResult = NW_CheckSlaacStage(stLan);
    }
    return uiResult;
}

NW_RESULT NW_CheckNormalMode(uint32_t uiPortSet, uint32_t uiCheckType, const NW_WIFI_ADDR_S &stWifi,
                             const NW_LAN_CFG_DB_INFO_S &stLan)
{
    NW_DIAG(NW_DIAG_DEBUG, "Check segment in normal mode.");

    const NW_RESULT uiResult = NW_RunNormalStages(uiPortSet, uiCheckType, stWifi, stLan);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_DEBUG, "Ip address is in the same segment when normal mode.");
    }
    return uiResult;
}

NW_RESULT NW_FailStandby(const char *pcText, NW_RESULT uiResult)
{
    NW_DIAG(NW_DIAG_DEBUG, pcText);
    NW_DIAG(NW_DIAG_DEBUG, "Ip address is in the same segment when standby mode.");
    return uiResult;
}

/* Only IPv4 is checked: the wireless address against the bond's address and routes. */
NW_RESULT NW_CheckStandbyMode(uint32_t uiPortSet, uint32_t uiCheckType,
                              const NW_WIFI_ADDR_S &stWifi, const NW_LAN_CFG_PORT_S &stBond)
{
    NW_DIAG(NW_DIAG_DEBUG, "Check segment in standby mode.");
    if ((uiCheckType & NW_SEGCHK_IPV4) == 0) {
        return NW_OK;
    }

    if (stBond.ucIpv4Enable == 0 || stWifi.ucIpv4Enable == 0) {
        NW_DIAG(NW_DIAG_DEBUG, "There is only one net port that ipv4 is enabled.");
    } else if (NW_ShareSegment(NW_SideOfWifi(stWifi), NW_SideOfPort(stBond)) == 1) {
        return NW_FailStandby("Ipv4 address is in the same segment when mode is standby.",
                              NW_ERR_IPV4_SAME_SEGMENT);
    }

    if ((uiPortSet & NW_PORTSET_WIFI) == 0 || !NW_IsOn(stWifi.ucIpv4Enable)) {
        return NW_OK;
    }
    const NW_RESULT uiResult =
        NW_CheckIpv4SameSegIpwithRoute(stWifi.aucIpv4Addr, NW_WIFI_MASK, &stBond);
    return uiResult == NW_OK
               ? NW_OK
               : NW_FailStandby("Ipv4 address is in the same segment with bond0", uiResult);
}

} // namespace

NW_RESULT LIB_NW_CheckIPv4v6SameSegment(uint32_t uiStandby, uint32_t uiPortSet,
                                        uint32_t uiCheckType, const NW_WIFI_ADDR_S *pstWifiInfo,
                                        const NW_LAN_CFG_DB_INFO_S *pstLanAddr)
{
    NW_CHECK_NULL(pstWifiInfo, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstLanAddr, NW_ERR_NULL_POINTER);

    return uiStandby != 0 ? NW_CheckStandbyMode(uiPortSet, uiCheckType, *pstWifiInfo,
                                                pstLanAddr->astPort[NW_PORT_BOND0])
                          : NW_CheckNormalMode(uiPortSet, uiCheckType, *pstWifiInfo, *pstLanAddr);
}
