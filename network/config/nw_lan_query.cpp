// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The LAN configuration of one port: the stored settings, their texts, the live address states. */
#include <arpa/inet.h>

#include "network_mng/check.h"
#include "nw_lan_state.h"

namespace {

/* An address of the stored entry and its two places in the view. */
struct NW_ADDR_FIELD_S {
    size_t ulEntry;
    size_t ulRaw;
    size_t ulText;
    size_t ulRawSize; /* bytes of the raw value that the view receives */
};

#define ENTRY(field) offsetof(NW_LAN_CFG_PORT_S, field)
#define VIEW(field) offsetof(NW_ETHER_INS_INFO_S, field)

/* clang-format off */
constexpr NW_ADDR_FIELD_S s_astIpv4Field[] = {
    {ENTRY(aucIpv4Addr),    VIEW(aucIpv4Addr),    VIEW(szIpv4Addr),    NW_IPV4_SIZE},
    {ENTRY(aucIpv4Mask),    VIEW(aucIpv4Mask),    VIEW(szIpv4Mask),    NW_IPV4_SIZE},
    {ENTRY(aucIpv4Gateway), VIEW(aucIpv4Gateway), VIEW(szIpv4Gateway), NW_IPV4_SIZE},
    {ENTRY(aucIpv4Addr2),   VIEW(aucIpv4Addr2),   VIEW(szIpv4Addr2),   NW_IPV4_SIZE},
};

struct NW_IPV4_ROUTE_FIELDS_S {
    size_t ulState;
    NW_ADDR_FIELD_S astField[3];
};
constexpr NW_IPV4_ROUTE_FIELDS_S s_astIpv4RouteFields[NW_ROUTE_COUNT] = {
    {VIEW(ucIpv4Route1State),
     {{ENTRY(astIpv4Route[0].aucAddr),    VIEW(aucIpv4Route1Addr),    VIEW(szIpv4Route1Addr),    NW_IPV4_SIZE},
      {ENTRY(astIpv4Route[0].aucMask),    VIEW(aucIpv4Route1Mask),    VIEW(szIpv4Route1Mask),    NW_IPV4_SIZE},
      {ENTRY(astIpv4Route[0].aucGateway), VIEW(aucIpv4Route1Gateway), VIEW(szIpv4Route1Gateway), NW_IPV4_SIZE}}},
    {VIEW(ucIpv4Route2State),
     {{ENTRY(astIpv4Route[1].aucAddr),    VIEW(aucIpv4Route2Addr),    VIEW(szIpv4Route2Addr),    NW_IPV4_SIZE},
      {ENTRY(astIpv4Route[1].aucMask),    VIEW(aucIpv4Route2Mask),    VIEW(szIpv4Route2Mask),    NW_IPV4_SIZE},
      {ENTRY(astIpv4Route[1].aucGateway), VIEW(aucIpv4Route2Gateway), VIEW(szIpv4Route2Gateway), NW_IPV4_SIZE}}},
};

constexpr NW_ADDR_FIELD_S s_stStaticField{
    ENTRY(aucIpv6Addr), VIEW(aaucIpv6Addr[NW_IPV6_SLOT_STATIC]), VIEW(aszIpv6Addr[NW_IPV6_SLOT_STATIC]), NW_IPV6_SIZE};
constexpr NW_ADDR_FIELD_S s_stLinkLocalField{
    ENTRY(stLinkLocal.aucAddr), VIEW(aaucIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL]), VIEW(aszIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL]), NW_IPV6_SIZE};
constexpr NW_ADDR_FIELD_S s_astIpv6GatewayField[] = {
    {ENTRY(aucIpv6Gateway),  VIEW(aucIpv6Gateway),  VIEW(szIpv6Gateway),  NW_IPV6_SIZE},
    {ENTRY(aucIpv6Gateway2), VIEW(aucIpv6Gateway2), VIEW(szIpv6Gateway2), NW_IPV6_SIZE},
};

struct NW_IPV6_ROUTE_FIELDS_S {
    size_t ulState;
    size_t ulPrefix;
    NW_ADDR_FIELD_S astField[2];
};
/* Of the second gateway only 4 raw bytes are handed out; callers rely on it. */
constexpr NW_IPV6_ROUTE_FIELDS_S s_astIpv6RouteFields[NW_ROUTE_COUNT] = {
    {VIEW(ucIpv6Route1State), VIEW(ucIpv6Route1Prefix),
     {{ENTRY(astIpv6Route[0].aucAddr),    VIEW(aucIpv6Route1Addr),    VIEW(szIpv6Route1Addr),    NW_IPV6_SIZE},
      {ENTRY(astIpv6Route[0].aucGateway), VIEW(aucIpv6Route1Gateway), VIEW(szIpv6Route1Gateway), NW_IPV6_SIZE}}},
    {VIEW(ucIpv6Route2State), VIEW(ucIpv6Route2Prefix),
     {{ENTRY(astIpv6Route[1].aucAddr),    VIEW(aucIpv6Route2Addr),    VIEW(szIpv6Route2Addr),    NW_IPV6_SIZE},
      {ENTRY(astIpv6Route[1].aucGateway), VIEW(aucIpv6Route2Gateway), VIEW(szIpv6Route2Gateway), NW_IPV4_SIZE}}},
};
/* clang-format on */

/* A stored entry and the view that it fills. */
struct NW_QUERY_S {
    const NW_LAN_CFG_PORT_S &stEntry;
    uint32_t uiIfIndex;
    NW_ETHER_INS_INFO_S *pstView;

    const uint8_t *Stored(const NW_ADDR_FIELD_S &stField) const
    {
        return reinterpret_cast<const uint8_t *>(&stEntry) + stField.ulEntry;
    }
    uint8_t *Shown(size_t ulOffset) const
    {
        return reinterpret_cast<uint8_t *>(pstView) + ulOffset;
    }
};

void NW_ShowRaw(const NW_QUERY_S &stQuery, const NW_ADDR_FIELD_S &stField)
{
    memcpy(stQuery.Shown(stField.ulRaw), stQuery.Stored(stField), stField.ulRawSize);
}

void NW_ShowText(const NW_QUERY_S &stQuery, const NW_ADDR_FIELD_S &stField, uint32_t uiFamily)
{
    char szText[NW_ADDR_TEXT_SIZE]{};

    inet_ntop(static_cast<int>(uiFamily), stQuery.Stored(stField), szText, sizeof(szText));
    BMC_Strlcpy(reinterpret_cast<char *>(stQuery.Shown(stField.ulText)), szText, NW_ADDR_TEXT_SIZE);
}

/* The raw value always, the text of one that is not empty; answers whether it is not. */
bool NW_ShowAddress(const NW_QUERY_S &stQuery, const NW_ADDR_FIELD_S &stField, uint32_t uiFamily)
{
    NW_ShowRaw(stQuery, stField);
    if (NW_CheckIpIsEmpty(uiFamily, stQuery.Stored(stField)) == 1) {
        return false;
    }
    NW_ShowText(stQuery, stField, uiFamily);
    return true;
}

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

void NW_ShowIpv4(const NW_QUERY_S &stQuery)
{
    const NW_LAN_CFG_PORT_S &stEntry = stQuery.stEntry;

    stQuery.pstView->ucIpv4Enable = stEntry.ucIpv4Enable;
    if (stEntry.ucIpv4Enable != 1) {
        return;
    }

    stQuery.pstView->ucIpv4Type = stEntry.ucIpv4Type;
    for (const NW_ADDR_FIELD_S &stField : s_astIpv4Field) {
        NW_ShowAddress(stQuery, stField, NW_FAMILY_IPV4);
    }
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        const uint8_t ucState = stEntry.astIpv4Route[i].ucState;
        *stQuery.Shown(s_astIpv4RouteFields[i].ulState) = ucState;
        if (ucState != 1) {
            continue;
        }
        for (const NW_ADDR_FIELD_S &stField : s_astIpv4RouteFields[i].astField) {
            NW_ShowRaw(stQuery, stField);
            NW_ShowText(stQuery, stField, NW_FAMILY_IPV4);
        }
    }
}

/* The further addresses that have a place; all that are counted start as tentative. */
void NW_ShowFurtherIpv6(const NW_QUERY_S &stQuery)
{
    NW_ETHER_INS_INFO_S *pstView = stQuery.pstView;

    pstView->ucIpv6AddrCount = stQuery.stEntry.ucIpv6FurtherCount;
    pstView->aucIpv6PrefixLen[0] = stQuery.stEntry.ucIpv6Prefix;
    for (uint32_t i = 0; i < NW_FurtherCount(*pstView); ++i) {
        const NW_ADDR_FIELD_S stField{
            ENTRY(aaucIpv6FurtherAddr) + i * NW_IPV6_SIZE,
            VIEW(aaucIpv6Addr) + (NW_IPV6_SLOT_FURTHER + i) * NW_IPV6_SIZE,
            VIEW(aszIpv6Addr) + (NW_IPV6_SLOT_FURTHER + i) * NW_ADDR_TEXT_SIZE, NW_IPV6_SIZE};
        NW_ShowAddress(stQuery, stField, NW_FAMILY_IPV6);
        NW_SetAddrState(pstView, NW_IPV6_STATE_FURTHER + i, NW_IPV6_ADDR_TENTATIVE);
        pstView->aucIpv6PrefixLen[1 + i] = stQuery.stEntry.aucIpv6FurtherPrefix[i];
    }
}

void NW_ShowIpv6Routes(const NW_QUERY_S &stQuery)
{
    for (size_t i = 0; i < NW_ROUTE_COUNT; ++i) {
        const NW_LAN_CFG_IPV6_ROUTE_S &stRoute = stQuery.stEntry.astIpv6Route[i];
        *stQuery.Shown(s_astIpv6RouteFields[i].ulState) = stRoute.ucState;
        *stQuery.Shown(s_astIpv6RouteFields[i].ulPrefix) = stRoute.ucPrefix;

        for (const NW_ADDR_FIELD_S &stField : s_astIpv6RouteFields[i].astField) {
            if (LIB_NW_CheckIPIsZero(stQuery.Stored(stField), NW_IPV6_SIZE) == 0) {
                NW_ShowRaw(stQuery, stField);
                NW_ShowText(stQuery, stField, NW_FAMILY_IPV6);
            }
        }
    }
}

void NW_ShowIpv6(const NW_QUERY_S &stQuery)
{
    NW_ETHER_INS_INFO_S *pstView = stQuery.pstView;

    pstView->ucIpv6Enable = stQuery.stEntry.ucIpv6Enable;
    /* The link-local address is shown even while IPv6 is off. */
    if (NW_ShowAddress(stQuery, s_stLinkLocalField, NW_FAMILY_IPV6)) {
        NW_SetAddrState(pstView, NW_IPV6_STATE_LINK_LOCAL, NW_IPV6_ADDR_TENTATIVE);
    }
    if (stQuery.stEntry.ucIpv6Enable != 1) {
        return;
    }

    pstView->ucIpv6Type = stQuery.stEntry.ucIpv6Type;
    if (NW_ShowAddress(stQuery, s_stStaticField, NW_FAMILY_IPV6)) {
        NW_SetAddrState(pstView, NW_IPV6_STATE_STATIC, NW_IPV6_ADDR_TENTATIVE);
    }
    NW_ShowFurtherIpv6(stQuery);
    for (const NW_ADDR_FIELD_S &stField : s_astIpv6GatewayField) {
        NW_ShowAddress(stQuery, stField, NW_FAMILY_IPV6);
    }
    NW_QueryAddrStates(stQuery.uiIfIndex, pstView);
    NW_ShowIpv6Routes(stQuery);
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
