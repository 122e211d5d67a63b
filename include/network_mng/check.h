// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Validation that a front end applies before a change: addresses, names, shared segments.
 *
 * Addresses are raw bytes in network order, at any alignment. Boolean checks answer 1 or 0; a null
 * pointer is logged and answered as each function says. */
#ifndef NETWORK_MNG_CHECK_H
#define NETWORK_MNG_CHECK_H

#include "base.h"
#include "store.h"

/* Socket-layer address families. */
#define NW_FAMILY_IPV4 2U
#define NW_FAMILY_IPV6 10U

/* Entries of the IPv6 check that a caller selects. */
typedef enum {
    NW_V6CHK_ALL_ZERO = 0x01,
    NW_V6CHK_LOOPBACK = 0x02,
    NW_V6CHK_MULTICAST = 0x04,
    NW_V6CHK_SITELOCAL = 0x08,
    NW_V6CHK_LINKLOCAL = 0x10,
    NW_V6CHK_V4MAPPED = 0x20,
    NW_V6CHK_V4COMPAT = 0x40
} NW_IPV6_CHECK_FLAG_E;
#define NW_V6CHK_ALL 0x7FU

/* Entries of the IPv4 check. */
typedef enum {
    NW_V4CHK_ALL_ZERO = 0x01,
    NW_V4CHK_LOOPBACK = 0x02,
    NW_V4CHK_D_OR_E = 0x04,
    NW_V4CHK_FIRST_ZERO = 0x08,
    NW_V4CHK_MASK = 0x10,
    NW_V4CHK_FIRST_FF = 0x20
} NW_IPV4_CHECK_FLAG_E;
#define NW_V4CHK_HOST 0x0FU    /* vets a host address */
#define NW_V4CHK_NETMASK 0x30U /* vets a netmask */

/* What a text is. */
typedef enum {
    NW_ADDR_KIND_INVALID = 0,
    NW_ADDR_KIND_IPV4 = 1,
    NW_ADDR_KIND_IPV6 = 2,
    NW_ADDR_KIND_DOMAIN = 3
} NW_ADDR_KIND_E;

/* Wireless side of the segment checks; its mask is always 255.255.255.0. */
typedef struct NW_PACKED {
    uint8_t ucIpv4Enable; /* 1: IPv4 on */
    uint8_t aucIpv4Addr[NW_IPV4_SIZE];
} NW_WIFI_ADDR_S;
NW_ASSERT_AT(NW_WIFI_ADDR_S, ucIpv4Enable, 0);
NW_ASSERT_AT(NW_WIFI_ADDR_S, aucIpv4Addr, 1);
NW_ASSERT_SIZE(NW_WIFI_ADDR_S, 5);

/* Port selection of the segment checks. */
#define NW_PORTSET_ETH0 0x1U
#define NW_PORTSET_ETH1 0x2U
#define NW_PORTSET_WIFI 0x4U
#define NW_PORTSET_ALL 0x7U

/* Check types of LIB_NW_CheckIPv4v6SameSegment. */
#define NW_SEGCHK_IPV4 0x1U
#define NW_SEGCHK_IPV6 0x2U
#define NW_SEGCHK_SLAAC 0x4U

/* Route selection of LIB_NW_CheckIPv4v6RouteSameSegment. */
#define NW_ROUTESET_IPV4_ROUTE1 0x08U
#define NW_ROUTESET_IPV4_ROUTE2 0x20U
#define NW_ROUTESET_IPV6_ROUTE1 0x40U
#define NW_ROUTESET_IPV6_ROUTE2 0x80U

/* Text buffer of the resolvers. */
#define NW_RESOLVED_TEXT_SIZE 46U

NW_EXTERN_C_BEGIN

/* 1 if the 4 (family 2) or 16 (family 10) bytes are all zero or the family is another; null: 0. */
NW_EXPORT uint32_t NW_CheckIpIsEmpty(uint32_t uiFamily, const uint8_t *pucIpArry);
/* 1 if all iLen bytes are 0 (or 255); a length below 1 and a null pointer give 1. */
NW_EXPORT uint32_t LIB_NW_CheckIPIsZero(const uint8_t *pucIP, int32_t iLen);
NW_EXPORT uint32_t LIB_NW_CheckIPIsFull(const uint8_t *pucIP, int32_t iLen);
/* 1 if the 16 bytes may stand as a global address in the firewall; link-local passes. Null: 0. */
NW_EXPORT uint32_t LIB_CheckIsValidGlobalIPv6AddrFireWall(const uint8_t *pucIPv6Addr);
/* 1 if the address passes every selected entry; bits outside the table select nothing. Null: 0. */
NW_EXPORT uint32_t LIB_NW_CheckV6IsValid(uint32_t uiFlags, const uint8_t *pucAddr);
NW_EXPORT uint32_t LIB_NW_CheckV4IsValid(uint32_t uiFlags, const uint8_t *pucAddr);
/* Prefix length of a contiguous mask of uiLen bytes. An all-ones mask other than 16 bytes long
 * makes the function read the byte behind it: give it uiLen + 1 readable bytes. Null: 0. */
NW_EXPORT uint32_t CalNETPrefix(const uint8_t *pucVar, uint32_t uiLen);
/* 1 if the 6 bytes are neither all zero nor a group address. Null: 0. */
NW_EXPORT uint32_t LIB_NW_CkeckIsValidMac(const uint8_t *pucMacAddr);
/* Text "xx:xx:xx:xx:xx:xx" to 6 bytes; text behind the sixth field is ignored. NW_ERR_GENERAL with
 * the output untouched for a shorter text, NW_ERR_MAC_NULL_POINTER for a null pointer. */
NW_EXPORT NW_RESULT LIB_NW_CovMacStrToNet(const char *pcMacStr, uint8_t *pucMacAddr);
/* Stores the NW_ADDR_KIND_E of the text; the empty text is a domain. */
NW_EXPORT NW_RESULT LIB_CheckIpv4v6AndDomain(const char *pcSrc, uint8_t *pucResult);

/* One label of letters, digits and inner hyphens; the caller bounds the length. Null: 0. */
NW_EXPORT uint32_t LIB_NW_CheckHostName(const char *pcHostName);
/* Two labels or more, 255 characters at most, 63 a label; the empty text passes. Null: 0. */
NW_EXPORT uint32_t LIB_NW_DomainValidityCheck(const char *pcDomain);
/* 1 if the port index is 0 to 2 and the family index 0 or 1. */
NW_EXPORT uint32_t LIB_DnsCheckReqIndexField(uint32_t ucEthIndex, uint32_t ucIpFamily);

/* Looks for two ports (or a port and the wireless interface) in one IP segment, and for an address
 * in another port's static route. uiStandby: non-zero in active/standby mode; uiPortSet:
 * NW_PORTSET_*; uiCheckType: NW_SEGCHK_*. Answers 0 or the first conflict's code; reads only what
 * it is given. */
NW_EXPORT NW_RESULT LIB_NW_CheckIPv4v6SameSegment(uint32_t uiStandby, uint32_t uiPortSet,
                                                  uint32_t uiCheckType,
                                                  const NW_WIFI_ADDR_S *pstWifiInfo,
                                                  const NW_LAN_CFG_DB_INFO_S *pstLanAddr);

/* Looks for a static route of one port that points into another port's address or route, or into
 * the wireless network. uiPortSet: ports whose IPv4 routes are checked (NW_PORTSET_ETH0, _ETH1);
 * uiRouteSet: NW_ROUTESET_*. Answers 0 or the first conflict's code; reads only what it is given.
 */
NW_EXPORT NW_RESULT LIB_NW_CheckIPv4v6RouteSameSegment(uint32_t uiStandby, uint32_t uiPortSet,
                                                       uint32_t uiRouteSet,
                                                       const NW_WIFI_ADDR_S *pstWifiInfo,
                                                       const NW_LAN_CFG_DB_INFO_S *pstLanAddr);

/* 1 if the IPv6 route (16 bytes, prefix length) shares a segment with one of the port's addresses,
 * or with one of its valid static routes. Null: 0. */
NW_EXPORT uint32_t LIB_NW_CheckIpv6SingRoutewithIpSameSeg(const uint8_t *pucRouteAddr,
                                                          uint32_t uiPrefix,
                                                          const NW_LAN_CFG_PORT_S *pstLanEthDB);
NW_EXPORT uint32_t LIB_NW_CheckIpv6SingRoutewithRouteSameSeg(const uint8_t *pucRouteAddr,
                                                             uint32_t uiPrefix,
                                                             const NW_LAN_CFG_PORT_S *pstLanEthDB);

/* 1 if another host on the interface answers for the 4-byte address; 0 also when the probe could
 * not be made. Runs the system's arping and blocks until it ends, whatever signals come. */
NW_EXPORT uint32_t NW_IPV4AddressConflict(const char *pcIfname, const uint8_t *pucAddr);

/* Address text of a host name into a buffer of NW_RESOLVED_TEXT_SIZE bytes: the last one that the
 * system's resolver lists. NW_ERR_GENERAL when it knows none; the reason goes to standard error. */
NW_EXPORT NW_RESULT LIB_NW_ConverHostnameToIP(const char *pcHostname, char *pcIp);
/* Address text of a host name: the current address pcCurIP while the name still resolves to it,
 * otherwise as LIB_NW_ConverHostnameToIP gives it. The empty text and "0.0.0.0" stand for no
 * current address. */
NW_EXPORT NW_RESULT LIB_NW_ParseHostnameToIP(const char *pcHostname, const char *pcCurIP,
                                             char *pcIp);

NW_EXTERN_C_END

#endif
