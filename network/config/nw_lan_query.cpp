// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The LAN configuration of one port: the stored settings, their texts, the live address states. */
#include <arpa/inet.h>

#include "network_mng/check.h"
#include "nw_lan_state.h"

namespace {

/* A stored address and its two places in the view. Members, so that the compiler compares records,
 * widths and types. */
template <typename STORED, size_t SIZE>
struct NW_ADDR_FIELD_S {
    uint8_t (STORED::*paucStored)[SIZE];
    uint8_t (NW_ETHER_INS_INFO_S::*paucRaw)[SIZE];
    char (NW_ETHER_INS_INFO_S::*pszText)[NW_ADDR_TEXT_SIZE];
};

#define PORT(field) &NW_LAN_CFG_PORT_S::field
#define ROUTE4(field) &NW_LAN_CFG_IPV4_ROUTE_S::field
#define VIEW(field) &NW_ETHER_INS_INFO_S::field

/* clang-format off */
constexpr NW_ADDR_FIELD_S<NW_LAN_CFG_PORT_S, NW_IPV4_SIZE> s_astIpv4Field[] = {
    {PORT(aucIpv4Addr),    VIEW(aucIpv4Addr),    VIEW(szIpv4Addr)},
    {PORT(aucIpv4Mask),    VIEW(aucIpv4Mask),    VIEW(szIpv4Mask)},
    {PORT(aucIpv4Gateway), VIEW(aucIpv4Gateway), VIEW(szIpv4Gateway)},
    {PORT(aucIpv4Addr2),   VIEW(aucIpv4Addr2),   VIEW(szIpv4Addr2)},
};

struct NW_IPV4_ROUTE_FIELDS_S {
    uint8_t NW_ETHER_INS_INFO_S::*pucState;
    NW_ADDR_FIELD_S<NW_LAN_CFG_IPV4_ROUTE_S, NW_IPV4_SIZE> astField[3];
};
constexpr NW_IPV4_ROUTE_FIELDS_S s_astIpv4RouteFields[NW_ROUTE_COUNT] = {
    {VIEW(ucIpv4Route1State), {{ROUTE4(aucAddr),    VIEW(aucIpv4Route1Addr),    VIEW(szIpv4Route1Addr)},
                               {ROUTE4(aucMask),    VIEW(aucIpv4Route1Mask),    VIEW(szIpv4Route1Mask)},
                               {ROUTE4(aucGateway), VIEW(aucIpv4Route1Gateway), VIEW(szIpv4Route1Gateway)}}},
    {VIEW(ucIpv4Route2State), {{ROUTE4(aucAddr),    VIEW(aucIpv4Route2Addr),    VIEW(szIpv4Route2Addr)},
                               {ROUTE4(aucMask),    VIEW(aucIpv4Route2Mask),    VIEW(szIpv4Route2Mask)},
                               {ROUTE4(aucGateway), VIEW(aucIpv4Route2Gateway), VIEW(szIpv4Route2Gateway)}}},
};

constexpr NW_ADDR_FIELD_S<NW_LAN_CFG_PORT_S, NW_IPV6_SIZE> s_astIpv6GatewayField[] = {
    {PORT(aucIpv6Gateway),  VIEW(aucIpv6Gateway),  VIEW(szIpv6Gateway)},
    {PORT(aucIpv6Gateway2), VIEW(aucIpv6Gateway2), VIEW(szIpv6Gateway2)},
};
/* clang-format on */

/* An address of either width. */
struct NW_ADDR_S {
    uint32_t uiFamily;
    const uint8_t *pucAddr;
};

NW_ADDR_S NW_Addr(const uint8_t (&aucAddr)[NW_IPV4_SIZE])
{
    return {NW_FAMILY_IPV4, aucAddr};
}
NW_ADDR_S NW_Addr(const uint8_t (&aucAddr)[NW_IPV6_SIZE])
{
    return {NW_FAMILY_IPV6, aucAddr};
}

void NW_ShowText(const NW_ADDR_S &stAddr, char (&szShown)[NW_ADDR_TEXT_SIZE])
{
    char szText[NW_ADDR_TEXT_SIZE]{};

    inet_ntop(static_cast<int>(stAddr.uiFamily), stAddr.pucAddr, szText, sizeof(szText));
    BMC_Strlcpy(szShown, szText, sizeof(szShown));
}

bool NW_ShowTextUnlessEmpty(const NW_ADDR_S &stAddr, char (&szShown)[NW_ADDR_TEXT_SIZE])
{
    if (NW_CheckIpIsEmpty(stAddr.uiFamily, stAddr.pucAddr) == 1) {
        return false;
    }
    NW_ShowText(stAddr, szShown);
    return true;
}

/* The raw value always, the text of one that is not empty; answers whether it is not. */
template <size_t SIZE>
bool NW_ShowAddress(const uint8_t (&aucStored)[SIZE], uint8_t (&aucRaw)[SIZE],
                    char (&szText)[NW_ADDR_TEXT_SIZE])
{
    memcpy(aucRaw, aucStored, SIZE);
    return NW_ShowTextUnlessEmpty(NW_Addr(aucStored), szText);
}

template <typename STORED, size_t SIZE>
void NW_ShowField(const STORED &stStored, const NW_ADDR_FIELD_S<STORED, SIZE> &stField,
                  NW_ETHER_INS_INFO_S *pstView)
{
    NW_ShowAddress(stStored.*stField.paucStored, pstView->*stField.paucRaw,
                   pstView->*stField.pszText);
}

/* A stored entry and the view that it fills. */
struct NW_QUERY_S {
    const NW_LAN_CFG_PORT_S &stEntry;
    uint32_t uiIfIndex;
    NW_ETHER_INS_INFO_S *pstView;
};

void NW_ShowLink(const NW_QUERY_S &stQuery, uint8_t ucChannel)
{
    const NW_LAN_CFG_PORT_S &stEntry = stQuery.stEntry;
    NW_ETHER_INS_INFO_S *pstView = stQuery.pstView;

    pstView->ucLanEnable = stEntry.ucLanEnable;
    pstView->ucChannel = ucChannel;
    /* Without a terminator: the caller's zeroing supplies it. */
    memcpy(pstView->szEthName, stEntry.szIfcName,
           strnlen(stEntry.szIfcName, sizeof(pstView->szEthName)));
    if (stEntry.ucLanEnable != 1) {
        return;
    }

    const uint8_t *pucMac = stEntry.aucMacAddr;
    memcpy(pstView->aucMacAddr, pucMac, sizeof(pstView->aucMacAddr));
    BMC_Scnprintf(pstView->szMacAddr, sizeof(pstView->szMacAddr), "%02x:%02x:%02x:%02x:%02x:%02x",
                  pucMac[0], pucMac[1], pucMac[2], pucMac[3], pucMac[4], pucMac[5]);
}

/* Once the route is on, its three texts are written whatever they are. */
void NW_ShowIpv4Route(const NW_LAN_CFG_IPV4_ROUTE_S &stRoute,
                      const NW_IPV4_ROUTE_FIELDS_S &stFields, NW_ETHER_INS_INFO_S *pstView)
{
    pstView->*stFields.pucState = stRoute.ucState;
    if (stRoute.ucState != 1) {
        return;
    }
    for (const auto &stField : stFields.astField) {
        memcpy(pstView->*stField.paucRaw, stRoute.*stField.paucStored, NW_IPV4_SIZE);
        NW_ShowText(NW_Addr(stRoute.*stField.paucStored), pstView->*stField.pszText);
    }
}

void NW_ShowIpv4(const NW_QUERY_S &stQuery)
{
    const NW_LAN_CFG_PORT_S &stEntry = stQuery.stEntry;

    stQuery.pstView->ucIpv4Enable = stEntry.ucIpv4Enable;
    if (stEntry.ucIpv4Enable != 1) {
        return;
    }

    NW_ETHER_INS_INFO_S *pstView = stQuery.pstView;
    pstView->ucIpv4Type = stEntry.ucIpv4Type;
    for (const auto &stField : s_astIpv4Field) {
        NW_ShowField(stEntry, stField, pstView);
    }
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        NW_ShowIpv4Route(stEntry.astIpv4Route[i], s_astIpv4RouteFields[i], pstView);
    }
}

/* The further addresses that have a place; all that are counted start as tentative. */
void NW_ShowFurtherIpv6(const NW_QUERY_S &stQuery)
{
    const NW_LAN_CFG_PORT_S &stEntry = stQuery.stEntry;
    NW_ETHER_INS_INFO_S *pstView = stQuery.pstView;

    pstView->ucIpv6AddrCount = stEntry.ucIpv6FurtherCount;
    pstView->aucIpv6PrefixLen[0] = stEntry.ucIpv6Prefix;
    for (uint32_t i = 0; i < NW_FurtherCount(*pstView); ++i) {
        const uint32_t uiSlot = NW_IPV6_SLOT_FURTHER + i;
        NW_ShowAddress(stEntry.aaucIpv6FurtherAddr[i], pstView->aaucIpv6Addr[uiSlot],
                       pstView->aszIpv6Addr[uiSlot]);
        NW_SetAddrState(pstView, NW_IPV6_STATE_FURTHER + i, NW_IPV6_ADDR_TENTATIVE);
        pstView->aucIpv6PrefixLen[1 + i] = stEntry.aucIpv6FurtherPrefix[i];
    }
}

/* Shows an address of a route unless it is zero, of its raw value no more than ulRawSize bytes. */
void NW_ShowIpv6RouteAddress(const uint8_t (&aucStored)[NW_IPV6_SIZE], size_t ulRawSize,
                             uint8_t (&aucRaw)[NW_IPV6_SIZE], char (&szText)[NW_ADDR_TEXT_SIZE])
{
    if (LIB_NW_CheckIPIsZero(aucStored, NW_IPV6_SIZE) == 0) {
        memcpy(aucRaw, aucStored, ulRawSize);
        NW_ShowText(NW_Addr(aucStored), szText);
    }
}

/* Of the second gateway only 4 raw bytes are handed out; callers rely on it. */
constexpr size_t NW_GATEWAY2_RAW_SIZE = 4;

void NW_ShowIpv6Routes(const NW_LAN_CFG_PORT_S &stEntry, NW_ETHER_INS_INFO_S *pstView)
{
    const NW_LAN_CFG_IPV6_ROUTE_S &stRoute1 = stEntry.astIpv6Route[0];
    pstView->ucIpv6Route1State = stRoute1.ucState;
    pstView->ucIpv6Route1Prefix = stRoute1.ucPrefix;
    NW_ShowIpv6RouteAddress(stRoute1.aucAddr, NW_IPV6_SIZE, pstView->aucIpv6Route1Addr,
                            pstView->szIpv6Route1Addr);
    NW_ShowIpv6RouteAddress(stRoute1.aucGateway, NW_IPV6_SIZE, pstView->aucIpv6Route1Gateway,
                            pstView->szIpv6Route1Gateway);

    const NW_LAN_CFG_IPV6_ROUTE_S &stRoute2 = stEntry.astIpv6Route[1];
    pstView->ucIpv6Route2State = stRoute2.ucState;
    pstView->ucIpv6Route2Prefix = stRoute2.ucPrefix;
    NW_ShowIpv6RouteAddress(stRoute2.aucAddr, NW_IPV6_SIZE, pstView->aucIpv6Route2Addr,
                            pstView->szIpv6Route2Addr);
    NW_ShowIpv6RouteAddress(stRoute2.aucGateway, NW_GATEWAY2_RAW_SIZE,
                            pstView->aucIpv6Route2Gateway, pstView->szIpv6Route2Gateway);
}

void NW_ShowIpv6(const NW_QUERY_S &stQuery)
{
    const NW_LAN_CFG_PORT_S &stEntry = stQuery.stEntry;
    NW_ETHER_INS_INFO_S *pstView = stQuery.pstView;

    pstView->ucIpv6Enable = stEntry.ucIpv6Enable;
    /* The link-local address is shown even while IPv6 is off. */
    if (NW_ShowAddress(stEntry.stLinkLocal.aucAddr, pstView->aaucIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL],
                       pstView->aszIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL])) {
        NW_SetAddrState(pstView, NW_IPV6_STATE_LINK_LOCAL, NW_IPV6_ADDR_TENTATIVE);
    }
    if (stEntry.ucIpv6Enable != 1) {
        return;
    }

    pstView->ucIpv6Type = stEntry.ucIpv6Type;
    if (NW_ShowAddress(stEntry.aucIpv6Addr, pstView->aaucIpv6Addr[NW_IPV6_SLOT_STATIC],
                       pstView->aszIpv6Addr[NW_IPV6_SLOT_STATIC])) {
        NW_SetAddrState(pstView, NW_IPV6_STATE_STATIC, NW_IPV6_ADDR_TENTATIVE);
    }
    NW_ShowFurtherIpv6(stQuery);
    for (const auto &stField : s_astIpv6GatewayField) {
        NW_ShowField(stEntry, stField, pstView);
    }
    NW_QueryAddrStates(stQuery.uiIfIndex, pstView);
    NW_ShowIpv6Routes(stEntry, pstView);
}

/* Wireless side of the segment checks; zeros when the service does not answer. Not inlined: its
 * buffer must not add to the records of the query. */
[[gnu::noinline]] NW_WIFI_ADDR_S NW_WifiAddress()
{
    NW_WIFI_ADDR_S stWifi{};
    uint8_t aucInfo[BMC_WIRELESS_INFO_SIZE + 1]{}; /* the last byte ends the text in any case */

    if (USBMANAGE_GetWirelessServiceInfo(aucInfo) != 0) {
        NW_DIAG(NW_DIAG_DEBUG, "Get Wifi config info from LMDB failed.");
        return stWifi;
    }
    inet_pton(AF_INET, reinterpret_cast<const char *>(aucInfo + BMC_WIRELESS_IPV4_TEXT_OFFSET),
              stWifi.aucIpv4Addr);
    stWifi.ucIpv4Enable = aucInfo[BMC_WIRELESS_ENABLE_OFFSET];
    return stWifi;
}

uint8_t NW_SameSegmentBits(uint8_t ucNetMode, const NW_LAN_CFG_DB_INFO_S &stLan)
{
    const NW_WIFI_ADDR_S stWifi = NW_WifiAddress();
    uint8_t ucBits = 0;

    if (LIB_NW_CheckIPv4v6SameSegment(ucNetMode, NW_PORTSET_ALL, NW_SEGCHK_IPV4, &stWifi, &stLan)) {
        ucBits |= NW_SAME_SEGMENT_IPV4;
    }
    if (LIB_NW_CheckIPv4v6SameSegment(ucNetMode, NW_PORTSET_ALL, NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC,
                                      &stWifi, &stLan)) {
        ucBits |= NW_SAME_SEGMENT_IPV6;
    }
    return ucBits;
}

/* Port of an interface name; NW_PORT_COUNT when no port has it. A stored name may fill its field.
 */
uint32_t NW_FindPort(const NW_IFC_STATE_DB_INFO_S &stIfcState, const char *pcEthName)
{
    const size_t ulLength = strlen(pcEthName);

    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        const char *pcName = stIfcState.acIfcName[i];
        if (strnlen(pcName, NW_IFC_NAME_SIZE) == ulLength &&
            memcmp(pcName, pcEthName, ulLength) == 0) {
            return i;
        }
    }
    return NW_PORT_COUNT;
}

/* Ports 0 and 1 are served while they work separately, port 2 while they are bonded. */
bool NW_IsPortServed(uint32_t uiPort, uint8_t ucNetMode)
{
    return ucNetMode == (uiPort == NW_PORT_BOND0 ? NW_IFC_STATE_ADAPTIVE : NW_IFC_STATE_SEPARATE);
}

/* The port that the name stands for, once it is known and served. */
NW_RESULT NW_SelectPort(const NW_IFC_STATE_DB_INFO_S &stIfcState, const char *pcEthName,
                        uint32_t *puiPort)
{
    *puiPort = NW_FindPort(stIfcState, pcEthName);
    if (*puiPort == NW_PORT_COUNT) {
        NW_DIAG(NW_DIAG_ERROR, "Ethernet name[%s] is invalid.", pcEthName);
        return NW_ERR_GENERAL;
    }
    if (!NW_IsPortServed(*puiPort, stIfcState.ucIfcState)) {
        NW_DIAG(NW_DIAG_ERROR, "Can not get %s eth info when net-mode is %d.", pcEthName,
                stIfcState.ucIfcState);
        return NW_ERR_GENERAL;
    }
    return NW_OK;
}

} // namespace

NW_RESULT LIB_NW_GetLanConfig(const char *pcEthName, NW_ETHER_INS_INFO_S *pstEtherInsInfo)
{
    NW_CHECK_NULL(pcEthName, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstEtherInsInfo, NW_ERR_NULL_POINTER);

    NW_IFC_STATE_DB_INFO_S stIfcState{};
    NW_RESULT uiResult = NW_LMDB_Get_IfcState(&stIfcState);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get netmode from LMDB failed.");
        return uiResult;
    }
    uint32_t uiPort;
    uiResult = NW_SelectPort(stIfcState, pcEthName, &uiPort);
    if (uiResult != NW_OK) {
        return uiResult;
    }
    NW_LAN_CFG_DB_INFO_S stLan{};
    uiResult = NW_LMDB_GetLanCfgInfo(&stLan);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get lan config info from LMDB failed.");
        return uiResult;
    }

    const NW_LAN_CFG_PORT_S &stEntry = stLan.astPort[uiPort];
    const NW_QUERY_S stQuery{stEntry, stIfcState.auiIfIndex[uiPort], pstEtherInsInfo};
    NW_ShowLink(stQuery, stIfcState.aucChannel[uiPort]);
    NW_ShowIpv4(stQuery);
    NW_ShowIpv6(stQuery);
    memcpy(pstEtherInsInfo->aucCfgTail, &stEntry.stVlan, sizeof(stEntry.stVlan));
    pstEtherInsInfo->ucCfgByte40 = stEntry.ucCfgByte40;
    pstEtherInsInfo->ucCfgByte42 = stEntry.ucCfgByte42;
    pstEtherInsInfo->ucSameSegment = NW_SameSegmentBits(stIfcState.ucIfcState, stLan);
    return NW_OK;
}

NW_RESULT LIB_NW_GetAllLanConfig(NW_LAN_CFG_DB_INFO_S *pstLanCfgDbInfo)
{
    NW_CHECK_NULL(pstLanCfgDbInfo, NW_ERR_NULL_POINTER);

    NW_LAN_CFG_DB_INFO_S stLan{};
    const NW_RESULT uiResult = NW_LMDB_GetLanCfgInfo(&stLan);
    if (uiResult != NW_OK) {
        return uiResult;
    }

    memcpy(pstLanCfgDbInfo, &stLan, sizeof(stLan));
    return NW_OK;
}
