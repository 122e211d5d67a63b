// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* LAN settings of a port: the query's view, the set request and its change bitmap. */
#ifndef NETWORK_MNG_LAN_H
#define NETWORK_MNG_LAN_H

#include "base.h"
#include "operate_log.h"
#include "settings.h"
#include "store.h"

/* Slots of aszIpv6Addr and aaucIpv6Addr. */
#define NW_IPV6_SLOT_STATIC 0U
#define NW_IPV6_SLOT_LINK_LOCAL 1U
#define NW_IPV6_SLOT_FURTHER 2U
#define NW_IPV6_SLOT_COUNT 18U
/* Slots of astIpv6AddrState: the first two stand in the opposite order. */
#define NW_IPV6_STATE_LINK_LOCAL 0U
#define NW_IPV6_STATE_STATIC 1U
#define NW_IPV6_STATE_FURTHER 2U

/* Duplicate-address detection as the kernel reports it. */
typedef enum {
    NW_IPV6_ADDR_TENTATIVE = 1, /* still running; also before the kernel is asked */
    NW_IPV6_ADDR_DAD_FAILED = 2,
    NW_IPV6_ADDR_VALID = 3
} NW_IPV6_ADDR_STATE_E;

typedef struct NW_PACKED {
    uint8_t ucState; /* NW_IPV6_ADDR_STATE_E */
    uint8_t aucZero[3];
} NW_IPV6_ADDR_STATE_S;
NW_ASSERT_AT(NW_IPV6_ADDR_STATE_S, ucState, 0);
NW_ASSERT_AT(NW_IPV6_ADDR_STATE_S, aucZero, 1);
NW_ASSERT_SIZE(NW_IPV6_ADDR_STATE_S, 4);

/* Bits of ucSameSegment. */
#define NW_SAME_SEGMENT_IPV4 0x1U
#define NW_SAME_SEGMENT_IPV6 0x2U

/* View of one port. Texts are NUL-terminated within their fields (szEthName by the caller's zeroing
 * alone); a text or address that does not apply stays as the caller left it, so zero the record. */
typedef struct NW_PACKED {
    uint8_t ucChannel; /* IPMI LAN channel number */
    uint8_t ucSameSegment;
    uint8_t ucLanEnable;
    char szEthName[NW_IFC_NAME_SIZE];
    char szMacAddr[NW_ADDR_TEXT_SIZE];
    uint8_t aucMacAddr[NW_MAC_SIZE];
    uint8_t ucIpv4Enable;
    uint8_t ucIpv4Type;
    char szIpv4Addr[NW_ADDR_TEXT_SIZE];
    char szIpv4Mask[NW_ADDR_TEXT_SIZE];
    char szIpv4Gateway[NW_ADDR_TEXT_SIZE];
    uint8_t aucIpv4Addr[NW_IPV4_SIZE];
    uint8_t aucIpv4Mask[NW_IPV4_SIZE];
    uint8_t aucIpv4Gateway[NW_IPV4_SIZE];
    char szIpv4Addr2[NW_ADDR_TEXT_SIZE];
    uint8_t aucIpv4Addr2[NW_IPV4_SIZE];
    uint8_t ucIpv4Route1State;
    uint8_t aucIpv4Route1Addr[NW_IPV4_SIZE];
    uint8_t aucIpv4Route1Mask[NW_IPV4_SIZE];
    uint8_t aucIpv4Route1Gateway[NW_IPV4_SIZE];
    char szIpv4Route1Addr[NW_ADDR_TEXT_SIZE];
    char szIpv4Route1Mask[NW_ADDR_TEXT_SIZE];
    char szIpv4Route1Gateway[NW_ADDR_TEXT_SIZE];
    uint8_t ucIpv4Route2State;
    uint8_t aucIpv4Route2Addr[NW_IPV4_SIZE];
    uint8_t aucIpv4Route2Mask[NW_IPV4_SIZE];
    uint8_t aucIpv4Route2Gateway[NW_IPV4_SIZE];
    char szIpv4Route2Addr[NW_ADDR_TEXT_SIZE];
    char szIpv4Route2Mask[NW_ADDR_TEXT_SIZE];
    char szIpv4Route2Gateway[NW_ADDR_TEXT_SIZE];
    uint8_t ucIpv6Enable;
    uint8_t ucIpv6Type;
    char aszIpv6Addr[NW_IPV6_SLOT_COUNT][NW_ADDR_TEXT_SIZE];
    char szIpv6Gateway[NW_ADDR_TEXT_SIZE];
    uint8_t aaucIpv6Addr[NW_IPV6_SLOT_COUNT][NW_IPV6_SIZE];
    uint8_t aucIpv6Gateway[NW_IPV6_SIZE];
    uint8_t aucIpv6PrefixLen[1 + NW_IPV6_FURTHER_COUNT]; /* static, then further 0 to 15 */
    uint8_t ucIpv6AddrCount; /* further addresses as stored, even above NW_IPV6_FURTHER_COUNT */
    char szIpv6Gateway2[NW_ADDR_TEXT_SIZE];
    uint8_t aucIpv6Gateway2[NW_IPV6_SIZE];
    NW_IPV6_ADDR_STATE_S astIpv6AddrState[NW_IPV6_SLOT_COUNT];
    uint8_t ucIpv6Route1State;
    uint8_t aucIpv6Route1Addr[NW_IPV6_SIZE];
    uint8_t ucIpv6Route1Prefix;
    uint8_t aucIpv6Route1Gateway[NW_IPV6_SIZE];
    char szIpv6Route1Addr[NW_ADDR_TEXT_SIZE];
    char szIpv6Route1Gateway[NW_ADDR_TEXT_SIZE];
    uint8_t ucIpv6Route2State;
    uint8_t aucIpv6Route2Addr[NW_IPV6_SIZE];
    uint8_t ucIpv6Route2Prefix;
    uint8_t aucIpv6Route2Gateway[NW_IPV6_SIZE]; /* only the first 4 bytes are filled */
    char szIpv6Route2Addr[NW_ADDR_TEXT_SIZE];
    char szIpv6Route2Gateway[NW_ADDR_TEXT_SIZE];
    uint8_t aucCfgTail[7]; /* VLAN block of the stored entry */
    uint8_t ucCfgByte40;
    uint8_t ucCfgByte42;
    uint8_t ucPad2798; /* never written */
} NW_ETHER_INS_INFO_S;
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucChannel, 0);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucSameSegment, 1);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucLanEnable, 2);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szEthName, 3);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szMacAddr, 19);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucMacAddr, 83);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv4Enable, 89);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv4Type, 90);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Addr, 91);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Mask, 155);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Gateway, 219);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Addr, 283);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Mask, 287);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Gateway, 291);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Addr2, 295);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Addr2, 359);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv4Route1State, 363);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Route1Addr, 364);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Route1Mask, 368);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Route1Gateway, 372);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Route1Addr, 376);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Route1Mask, 440);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Route1Gateway, 504);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv4Route2State, 568);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Route2Addr, 569);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Route2Mask, 573);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv4Route2Gateway, 577);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Route2Addr, 581);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Route2Mask, 645);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv4Route2Gateway, 709);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6Enable, 773);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6Type, 774);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aszIpv6Addr, 775);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv6Gateway, 1927);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aaucIpv6Addr, 1991);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6Gateway, 2279);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6PrefixLen, 2295);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6AddrCount, 2312);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv6Gateway2, 2313);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6Gateway2, 2377);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, astIpv6AddrState, 2393);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6Route1State, 2465);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6Route1Addr, 2466);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6Route1Prefix, 2482);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6Route1Gateway, 2483);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv6Route1Addr, 2499);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv6Route1Gateway, 2563);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6Route2State, 2627);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6Route2Addr, 2628);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucIpv6Route2Prefix, 2644);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucIpv6Route2Gateway, 2645);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv6Route2Addr, 2661);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, szIpv6Route2Gateway, 2725);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, aucCfgTail, 2789);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucCfgByte40, 2796);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucCfgByte42, 2797);
NW_ASSERT_AT(NW_ETHER_INS_INFO_S, ucPad2798, 2798);
NW_ASSERT_SIZE(NW_ETHER_INS_INFO_S, 2799);

/* Change bits of a port: word 0. */
#define NW_LAN_BIT_LAN_ENABLE 0x00000001U
#define NW_LAN_BIT_IPV4_ENABLE 0x00000002U
#define NW_LAN_BIT_IPV4_TYPE 0x00000004U
#define NW_LAN_BIT_IPV4_ADDR 0x00000008U
#define NW_LAN_BIT_IPV4_MASK 0x00000010U
#define NW_LAN_BIT_IPV4_GATEWAY 0x00000020U
#define NW_LAN_BIT_IPV6_ENABLE 0x00000040U
#define NW_LAN_BIT_IPV6_TYPE 0x00000080U
#define NW_LAN_BIT_IPV6_ADDR 0x00000100U
#define NW_LAN_BIT_IPV6_GATEWAY 0x00000200U
#define NW_LAN_BIT_IPV6_PREFIX 0x00000400U
#define NW_LAN_BIT_ARP_CONTROL 0x00000800U
#define NW_LAN_BIT_ARP_INTERVAL 0x00001000U
#define NW_LAN_BIT_ARP_SUSPEND 0x00002000U
#define NW_LAN_BIT_VLAN_ENABLE 0x00008000U
#define NW_LAN_BIT_VLAN_ID 0x00010000U
#define NW_LAN_BIT_VLAN_PRIORITY 0x00020000U
#define NW_LAN_BIT_IPV6_ROUTE1_ADDR 0x00040000U
#define NW_LAN_BIT_IPV6_ROUTE1_PREFIX 0x00080000U
#define NW_LAN_BIT_IPV6_ROUTE1_GATEWAY 0x00100000U
#define NW_LAN_BIT_IPV6_ROUTE2_ADDR 0x00200000U
#define NW_LAN_BIT_IPV6_ROUTE2_PREFIX 0x00400000U
#define NW_LAN_BIT_IPV6_ROUTE2_GATEWAY 0x00800000U
#define NW_LAN_BIT_HOP_LIMIT 0x01000000U
#define NW_LAN_BIT_TRAFFIC_CLASS 0x02000000U
#define NW_LAN_BIT_IPV4_HEADER 0x04000000U
#define NW_LAN_BITS_IPV6_ROUTES 0x00FC0000U
/* Word 1. */
#define NW_LAN_BIT_IPV4_ROUTE1_ADDR 0x00000001U
#define NW_LAN_BIT_IPV4_ROUTE1_MASK 0x00000002U
#define NW_LAN_BIT_IPV4_ROUTE1_GATEWAY 0x00000004U
#define NW_LAN_BIT_IPV4_ROUTE2_ADDR 0x00000008U
#define NW_LAN_BIT_IPV4_ROUTE2_MASK 0x00000010U
#define NW_LAN_BIT_IPV4_ROUTE2_GATEWAY 0x00000020U
#define NW_LAN_BITS_IPV4_ROUTES 0x0000003FU

#define NW_LAN_WORD_COUNT 2U

/* Which fields of which port a request changes; fields whose bit is clear are ignored. */
typedef struct NW_PACKED {
    uint32_t aauiWord[NW_PORT_COUNT][NW_LAN_WORD_COUNT];
} NW_LAN_BITMAP_S;
NW_ASSERT_AT(NW_LAN_BITMAP_S, aauiWord[0][1], 4);
NW_ASSERT_AT(NW_LAN_BITMAP_S, aauiWord[1][0], 8);
NW_ASSERT_AT(NW_LAN_BITMAP_S, aauiWord[2][1], 20);
NW_ASSERT_SIZE(NW_LAN_BITMAP_S, 24);

typedef struct NW_PACKED {
    uint8_t ucTtl;
    uint8_t ucFlags;
    uint8_t ucTos; /* precedence 0xE0, type of service 0x1E */
} NW_LAN_IPV4_HEADER_S;
NW_ASSERT_AT(NW_LAN_IPV4_HEADER_S, ucTtl, 0);
NW_ASSERT_AT(NW_LAN_IPV4_HEADER_S, ucFlags, 1);
NW_ASSERT_AT(NW_LAN_IPV4_HEADER_S, ucTos, 2);
NW_ASSERT_SIZE(NW_LAN_IPV4_HEADER_S, 3);

typedef struct NW_PACKED {
    uint8_t aucAddr[NW_IPV4_SIZE]; /* destination */
    uint8_t aucMask[NW_IPV4_SIZE];
    uint8_t aucGateway[NW_IPV4_SIZE];
} NW_LAN_SET_IPV4_ROUTE_S;
NW_ASSERT_SIZE(NW_LAN_SET_IPV4_ROUTE_S, 12);

typedef struct NW_PACKED {
    uint8_t aucAddr[NW_IPV6_SIZE]; /* destination */
    uint8_t ucPrefix;
    uint8_t aucGateway[NW_IPV6_SIZE];
} NW_LAN_SET_IPV6_ROUTE_S;
NW_ASSERT_SIZE(NW_LAN_SET_IPV6_ROUTE_S, 33);

/* The reserved bytes are the network manager's and carried by no change bit. */
typedef struct NW_PACKED {
    uint8_t ucReserved0;
    uint8_t ucLanEnable;
    uint8_t ucReserved2;
    uint8_t ucIpv4Type;
    uint8_t ucIpv4Enable;
    uint8_t aucIpv4Addr[NW_IPV4_SIZE];
    uint8_t aucIpv4Mask[NW_IPV4_SIZE];
    uint8_t aucIpv4Gateway[NW_IPV4_SIZE];
    NW_LAN_IPV4_HEADER_S stIpv4Header;
    NW_LAN_SET_IPV4_ROUTE_S astIpv4Route[NW_ROUTE_COUNT];
    uint8_t ucIpv6Type;
    uint8_t ucIpv6Enable;
    uint8_t aucIpv6Addr[NW_IPV6_SIZE];
    uint8_t aucIpv6Gateway[NW_IPV6_SIZE];
    uint8_t ucIpv6Prefix;
    uint8_t ucReserved79;
    NW_LAN_SET_IPV6_ROUTE_S astIpv6Route[NW_ROUTE_COUNT];
    uint8_t ucHopLimit;
    uint8_t ucTrafficClass;
    uint8_t ucArpControl;
    uint8_t ucArpInterval;
    uint8_t ucArpSuspend;
    uint8_t ucVlanEnable;
    uint8_t aucReserved152[2];
    uint16_t usVlanid;
    uint8_t ucReserved156;
    uint8_t ucVlanPriority;
} NW_LAN_SET_PORT_S;
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucReserved0, 0);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucLanEnable, 1);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucReserved2, 2);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucIpv4Type, 3);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucIpv4Enable, 4);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, aucIpv4Addr, 5);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, aucIpv4Mask, 9);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, aucIpv4Gateway, 13);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, stIpv4Header, 17);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv4Route[0].aucAddr, 20);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv4Route[0].aucMask, 24);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv4Route[0].aucGateway, 28);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv4Route[1].aucAddr, 32);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv4Route[1].aucMask, 36);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv4Route[1].aucGateway, 40);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucIpv6Type, 44);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucIpv6Enable, 45);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, aucIpv6Addr, 46);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, aucIpv6Gateway, 62);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucIpv6Prefix, 78);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucReserved79, 79);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv6Route[0].aucAddr, 80);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv6Route[0].ucPrefix, 96);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv6Route[0].aucGateway, 97);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv6Route[1].aucAddr, 113);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv6Route[1].ucPrefix, 129);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, astIpv6Route[1].aucGateway, 130);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucHopLimit, 146);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucTrafficClass, 147);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucArpControl, 148);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucArpInterval, 149);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucArpSuspend, 150);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucVlanEnable, 151);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, aucReserved152, 152);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, usVlanid, 154);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucReserved156, 156);
NW_ASSERT_AT(NW_LAN_SET_PORT_S, ucVlanPriority, 157);
NW_ASSERT_SIZE(NW_LAN_SET_PORT_S, 158);

typedef struct NW_PACKED {
    uint32_t ulLanCfgHead; /* the network manager's */
    NW_LAN_SET_PORT_S astPort[NW_PORT_COUNT];
} NW_LAN_SET_CFG_S;
NW_ASSERT_AT(NW_LAN_SET_CFG_S, ulLanCfgHead, 0);
NW_ASSERT_AT(NW_LAN_SET_CFG_S, astPort[0], 4);
NW_ASSERT_AT(NW_LAN_SET_CFG_S, astPort[1], 162);
NW_ASSERT_AT(NW_LAN_SET_CFG_S, astPort[2], 320);
NW_ASSERT_SIZE(NW_LAN_SET_CFG_S, 478);

/* Payload of NW_CMD_SET_LAN. */
typedef struct NW_PACKED {
    uint32_t ulLanCfgHead; /* copy of the configuration's head */
    NW_LAN_BITMAP_S stBitmap;
    NW_LAN_SET_CFG_S stConfig;
} NW_LAN_SET_REQ_S;
NW_ASSERT_AT(NW_LAN_SET_REQ_S, ulLanCfgHead, 0);
NW_ASSERT_AT(NW_LAN_SET_REQ_S, stBitmap, 4);
NW_ASSERT_AT(NW_LAN_SET_REQ_S, stConfig, 28);
NW_ASSERT_AT(NW_LAN_SET_REQ_S, stConfig.astPort[0], 32);
NW_ASSERT_AT(NW_LAN_SET_REQ_S, stConfig.astPort[1], 190);
NW_ASSERT_SIZE(NW_LAN_SET_REQ_S, 506);

/* Payload of NW_CMD_SET_ALL. The DNS part begins with the 1788-byte DNS request, the network port
 * mode part with NW_NET_MODE_SET_S. */
typedef struct NW_PACKED {
    uint32_t ulModuleMask; /* NW_OPER_LOG_MODULE_E bits of the parts present */
    uint8_t aucReserved4[12];
    NW_LAN_SET_REQ_S stLan;
    uint8_t aucDns[1924];
    uint8_t aucNetMode[36];
} NW_SET_NETWORK_ALL_S;
NW_ASSERT_AT(NW_SET_NETWORK_ALL_S, ulModuleMask, 0);
NW_ASSERT_AT(NW_SET_NETWORK_ALL_S, aucReserved4, 4);
NW_ASSERT_AT(NW_SET_NETWORK_ALL_S, stLan, 16);
NW_ASSERT_AT(NW_SET_NETWORK_ALL_S, aucDns, 522);
NW_ASSERT_AT(NW_SET_NETWORK_ALL_S, aucNetMode, 2446);
NW_ASSERT_SIZE(NW_SET_NETWORK_ALL_S, 2482);

NW_EXTERN_C_BEGIN

/* Full view of the port whose interface name the interface state record holds. The caller owns and
 * zeroes the output. An unknown name or a port not served in the present network mode gives
 * NW_ERR_GENERAL, a failed read the accessor's code. The kernel's address states and the wireless
 * record are asked for but not required. Blocks for one netlink exchange; about 11 KiB of stack.
 * The netlink socket is closed in programs that are started meanwhile, but for one that another
 * thread starts between the socket's opening and its marking. */
NW_EXPORT NW_RESULT LIB_NW_GetLanConfig(const char *pcEthName,
                                        NW_ETHER_INS_INFO_S *pstEtherInsInfo);

/* The stored record of all ports; a failed read leaves the caller's record untouched. */
NW_EXPORT NW_RESULT LIB_NW_GetAllLanConfig(NW_LAN_CFG_DB_INFO_S *pstLanCfgDbInfo);

/* Sends the change to the network manager and answers its result. On success the three LAN slots of
 * pstOperLog receive their texts, the two route slots with the other changed fields as well, and
 * the rest of it stays as it is; on failure the main slot and the level are written. All records
 * are the caller's. */
NW_EXPORT NW_RESULT LIB_NW_SetLanConfig(NW_LAN_BITMAP_S *pstLanBitmap,
                                        NW_LAN_SET_CFG_S *pstLanConfig, NW_OPER_LOG_S *pstOperLog);

/* Sends LAN, DNS and network-mode changes in one request. On success every part's slots of
 * pstOperLog receive their texts, on failure the main slot that of the part that failed; the level
 * is written with each text. */
NW_EXPORT NW_RESULT LIB_NW_SetNetWorkAll(const NW_SET_NETWORK_ALL_S *pstSetNetworkAll,
                                         NW_OPER_LOG_S *pstOperLog);

/* Narrows word ulWordIdx (0 or 1; another changes nothing) of all three ports to the bits of
 * ulMask. */
NW_EXPORT void NW_DecomposeBitmap(NW_LAN_BITMAP_S *pstBitmap, uint32_t ulMask, uint32_t ulWordIdx);

NW_EXTERN_C_END

#endif
