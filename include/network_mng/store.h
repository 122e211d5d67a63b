// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records of the configuration database and their accessors.
 *
 * Records are packed, little-endian and of fixed size; addresses are raw bytes in network order.
 * Accessors open the database afresh, log their failure and keep no state. */
#ifndef NETWORK_MNG_STORE_H
#define NETWORK_MNG_STORE_H

#include "base.h"

/* Keys of the records. */
#define NW_KEY_HOSTNAME 0x10610000U
#define NW_KEY_DNS 0x10610001U
#define NW_KEY_LLDP 0x10610002U
#define NW_KEY_LAN_CFG 0x10610003U
#define NW_KEY_NCSI 0x10610005U
#define NW_KEY_NET_STATUS 0x10610006U
#define NW_KEY_IFC_STATE 0x10610007U
#define NW_KEY_AN_CFG 0x1061000BU

/* Values of ucIfcState. */
#define NW_IFC_STATE_SEPARATE 0U
#define NW_IFC_STATE_ADAPTIVE 1U

/* Address origin that means "obtained by DHCP". */
#define NW_ADDR_ORIGIN_DHCP 2U

typedef struct NW_PACKED {
    uint8_t ucSetInProgress; /* 1 while the network manager applies a set; any other value: idle */
} NW_NET_STATUS_S;
NW_ASSERT_AT(NW_NET_STATUS_S, ucSetInProgress, 0);
NW_ASSERT_SIZE(NW_NET_STATUS_S, 1);

typedef struct NW_PACKED {
    uint8_t ucIfcState;                    /* network mode: 0 separate ports, 1 bonded (adaptive) */
    uint8_t ucIfcValue1;                   /* carried through */
    uint8_t aucPortPresent[NW_PORT_COUNT]; /* non-zero: the port exists on this board */
    uint8_t ucPad5;
    uint8_t ucIfcValue6; /* carried through */
    uint8_t ucPad7;
    uint32_t auiIfIndex[NW_PORT_COUNT]; /* kernel interface index */
    uint8_t aucReserved20[12];
    uint8_t aucChannel[NW_PORT_COUNT]; /* IPMI LAN channel number */
    char acIfcName[NW_PORT_COUNT][NW_IFC_NAME_SIZE];
    uint8_t ucPad83;
} NW_IFC_STATE_DB_INFO_S;
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, ucIfcState, 0);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, ucIfcValue1, 1);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, aucPortPresent, 2);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, ucPad5, 5);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, ucIfcValue6, 6);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, ucPad7, 7);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, auiIfIndex, 8);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, aucReserved20, 20);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, aucChannel, 32);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, acIfcName, 35);
NW_ASSERT_AT(NW_IFC_STATE_DB_INFO_S, ucPad83, 83);
NW_ASSERT_SIZE(NW_IFC_STATE_DB_INFO_S, 84);

/* A static route is valid while ucState is 1. */
typedef struct NW_PACKED {
    uint8_t ucState;
    uint8_t aucAddr[NW_IPV4_SIZE]; /* destination */
    uint8_t aucMask[NW_IPV4_SIZE];
    uint8_t aucGateway[NW_IPV4_SIZE];
    uint8_t aucReserved13[12];
} NW_LAN_CFG_IPV4_ROUTE_S;
NW_ASSERT_SIZE(NW_LAN_CFG_IPV4_ROUTE_S, 25);

typedef struct NW_PACKED {
    uint8_t ucState;
    uint8_t aucAddr[NW_IPV6_SIZE]; /* destination */
    uint8_t ucPrefix;
    uint8_t aucGateway[NW_IPV6_SIZE];
    uint8_t aucReserved34[33];
} NW_LAN_CFG_IPV6_ROUTE_S;
NW_ASSERT_SIZE(NW_LAN_CFG_IPV6_ROUTE_S, 67);

/* The link-local address stands where a sixteenth further address would. */
typedef struct NW_PACKED {
    uint8_t aucFurtherAddr[(NW_IPV6_FURTHER_COUNT - 1U) * NW_IPV6_SIZE];
    uint8_t aucAddr[NW_IPV6_SIZE];
} NW_LAN_CFG_LINK_LOCAL_S;
NW_ASSERT_AT(NW_LAN_CFG_LINK_LOCAL_S, aucAddr, 240);

/* VLAN block of a port; the bytes around the VLAN ID are the network manager's. */
typedef struct NW_PACKED {
    uint8_t aucReserved0[3];
    uint16_t usVlanid; /* 0: no VLAN */
    uint8_t aucReserved5[2];
} NW_LAN_CFG_VLAN_S;
NW_ASSERT_AT(NW_LAN_CFG_VLAN_S, usVlanid, 3);
NW_ASSERT_SIZE(NW_LAN_CFG_VLAN_S, 7);

typedef struct NW_PACKED {
    char szIfcName[40];
    uint8_t ucCfgByte40; /* carried through */
    uint8_t ucReserved41;
    uint8_t ucCfgByte42; /* carried through */
    uint8_t aucReserved43[3];
    uint8_t ucLanEnable; /* 1: enabled */
    uint8_t aucReserved47[2];
    uint8_t ucIpv4Enable; /* 1: enabled */
    uint8_t ucIpv6Enable; /* 1: enabled */
    uint8_t ucReserved51;
    uint8_t aucMacAddr[NW_MAC_SIZE];
    uint8_t ucIpv4Type; /* address origin, NW_ADDR_ORIGIN_DHCP or other */
    uint8_t ucReserved59;
    uint8_t aucIpv4Addr[NW_IPV4_SIZE];
    uint8_t aucIpv4Mask[NW_IPV4_SIZE];
    uint8_t aucIpv4Gateway[NW_IPV4_SIZE];
    uint8_t aucReserved72[4];
    uint8_t aucIpv4Addr2[NW_IPV4_SIZE]; /* further IPv4 address value, the network manager's */
    uint8_t aucReserved80[3];
    NW_LAN_CFG_IPV4_ROUTE_S astIpv4Route[NW_ROUTE_COUNT];
    uint8_t aucReserved133[136];
    uint8_t ucIpv6Type; /* address origin */
    uint8_t aucReserved270[2];
    uint8_t aucIpv6Addr[NW_IPV6_SIZE]; /* static address */
    union {
        uint8_t aaucIpv6FurtherAddr[NW_IPV6_FURTHER_COUNT][NW_IPV6_SIZE];
        NW_LAN_CFG_LINK_LOCAL_S stLinkLocal;
    };
    uint8_t aucIpv6Gateway[NW_IPV6_SIZE];
    uint8_t aucReserved560[16];
    uint8_t ucIpv6Prefix; /* of the static address */
    uint8_t aucIpv6FurtherPrefix[NW_IPV6_FURTHER_COUNT];
    uint8_t aucReserved593[31];
    uint8_t ucIpv6FurtherCount; /* may exceed NW_IPV6_FURTHER_COUNT */
    uint8_t aucIpv6Gateway2[NW_IPV6_SIZE];
    NW_LAN_CFG_IPV6_ROUTE_S astIpv6Route[NW_ROUTE_COUNT];
    uint8_t aucReserved775[5];
    NW_LAN_CFG_VLAN_S stVlan;
    uint8_t aucReserved787[4];
} NW_LAN_CFG_PORT_S;
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, szIfcName, 0);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucCfgByte40, 40);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucCfgByte42, 42);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucLanEnable, 46);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucIpv4Enable, 49);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucIpv6Enable, 50);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucMacAddr, 52);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucIpv4Type, 58);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv4Addr, 60);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv4Mask, 64);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv4Gateway, 68);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv4Addr2, 76);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[0].ucState, 83);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[0].aucAddr, 84);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[0].aucMask, 88);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[0].aucGateway, 92);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[1].ucState, 108);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[1].aucAddr, 109);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[1].aucMask, 113);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv4Route[1].aucGateway, 117);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucIpv6Type, 269);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv6Addr, 272);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aaucIpv6FurtherAddr, 288);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aaucIpv6FurtherAddr[15], 528);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, stLinkLocal.aucAddr, 528);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv6Gateway, 544);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucIpv6Prefix, 576);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv6FurtherPrefix, 577);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv6FurtherPrefix[15], 592);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, ucIpv6FurtherCount, 624);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, aucIpv6Gateway2, 625);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[0].ucState, 641);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[0].aucAddr, 642);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[0].ucPrefix, 658);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[0].aucGateway, 659);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[1].ucState, 708);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[1].aucAddr, 709);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[1].ucPrefix, 725);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, astIpv6Route[1].aucGateway, 726);
NW_ASSERT_AT(NW_LAN_CFG_PORT_S, stVlan, 780);
NW_ASSERT_SIZE(NW_LAN_CFG_PORT_S, 791);

typedef struct NW_PACKED {
    uint8_t aucHead[4];
    NW_LAN_CFG_PORT_S astPort[NW_PORT_COUNT];
} NW_LAN_CFG_DB_INFO_S;
NW_ASSERT_AT(NW_LAN_CFG_DB_INFO_S, astPort, 4);
NW_ASSERT_AT(NW_LAN_CFG_DB_INFO_S, astPort[0].stVlan.usVlanid, 787);
NW_ASSERT_AT(NW_LAN_CFG_DB_INFO_S, astPort[1], 795);
NW_ASSERT_AT(NW_LAN_CFG_DB_INFO_S, astPort[2], 1586);
NW_ASSERT_SIZE(NW_LAN_CFG_DB_INFO_S, 2377);

/* The two names may fill their fields without a terminator. */
typedef struct NW_PACKED {
    uint8_t ucHostNameMode; /* 0 manual, any other value automatic */
    uint8_t aucReserved1[67];
    char szBmcHostName[64];
    char szBmcName[128];
} NW_HOSTNAME_DB_INFO_S;
NW_ASSERT_AT(NW_HOSTNAME_DB_INFO_S, ucHostNameMode, 0);
NW_ASSERT_AT(NW_HOSTNAME_DB_INFO_S, szBmcHostName, 68);
NW_ASSERT_AT(NW_HOSTNAME_DB_INFO_S, szBmcName, 132);
NW_ASSERT_SIZE(NW_HOSTNAME_DB_INFO_S, 260);

typedef struct NW_PACKED {
    uint8_t ucDnsHead;
    uint8_t aucPad1[3];
    uint8_t ucIpv4DnsMode;                     /* 0: no IPv4 DNS data in this entry */
    uint8_t aucIpv4DnsServer[3][NW_IPV4_SIZE]; /* 0.0.0.0: unset */
    uint8_t aucPad17[3];
    char szIpv4DnsDomain[260];
    uint8_t ucIpv6DnsMode;                     /* 0: no IPv6 DNS data in this entry */
    uint8_t aucIpv6DnsServer[3][NW_IPV6_SIZE]; /* ::: unset */
    uint8_t aucPad329[3];
    char szIpv6DnsDomain[260];
} NW_DNS_PORT_S;
NW_ASSERT_AT(NW_DNS_PORT_S, ucDnsHead, 0);
NW_ASSERT_AT(NW_DNS_PORT_S, aucPad1, 1);
NW_ASSERT_AT(NW_DNS_PORT_S, ucIpv4DnsMode, 4);
NW_ASSERT_AT(NW_DNS_PORT_S, aucIpv4DnsServer, 5);
NW_ASSERT_AT(NW_DNS_PORT_S, aucPad17, 17);
NW_ASSERT_AT(NW_DNS_PORT_S, szIpv4DnsDomain, 20);
NW_ASSERT_AT(NW_DNS_PORT_S, ucIpv6DnsMode, 280);
NW_ASSERT_AT(NW_DNS_PORT_S, aucIpv6DnsServer, 281);
NW_ASSERT_AT(NW_DNS_PORT_S, aucPad329, 329);
NW_ASSERT_AT(NW_DNS_PORT_S, szIpv6DnsDomain, 332);
NW_ASSERT_SIZE(NW_DNS_PORT_S, 592);

typedef struct NW_PACKED {
    NW_DNS_PORT_S astPort[NW_PORT_COUNT];
} NW_DNS_DB_INFO_S;
NW_ASSERT_AT(NW_DNS_DB_INFO_S, astPort[1], 592);
NW_ASSERT_AT(NW_DNS_DB_INFO_S, astPort[2], 1184);
NW_ASSERT_SIZE(NW_DNS_DB_INFO_S, 1776);

typedef struct NW_PACKED {
    uint8_t aucHead[4];
    char szIfcName[64];
    uint8_t aucReserved68[232];
} NW_LLDP_PORT_S;
NW_ASSERT_AT(NW_LLDP_PORT_S, szIfcName, 4);
NW_ASSERT_SIZE(NW_LLDP_PORT_S, 300);

typedef struct NW_PACKED {
    uint8_t ucLldpEnable;   /* LLDP state, 0 or 1 */
    uint8_t ucLldpWorkMode; /* bit 0 transmit, bit 1 receive */
    uint8_t aucReserved2[2];
    NW_LLDP_PORT_S astPort[2];
} NW_LLDP_DB_INFO_S;
NW_ASSERT_AT(NW_LLDP_DB_INFO_S, ucLldpEnable, 0);
NW_ASSERT_AT(NW_LLDP_DB_INFO_S, ucLldpWorkMode, 1);
NW_ASSERT_AT(NW_LLDP_DB_INFO_S, astPort[0], 4);
NW_ASSERT_AT(NW_LLDP_DB_INFO_S, astPort[0].szIfcName, 8);
NW_ASSERT_AT(NW_LLDP_DB_INFO_S, astPort[1], 304);
NW_ASSERT_AT(NW_LLDP_DB_INFO_S, astPort[1].szIfcName, 308);
NW_ASSERT_SIZE(NW_LLDP_DB_INFO_S, 604);

/* The named fields are those that the operation log prints. */
typedef struct NW_PACKED {
    uint8_t ucNcsiEnable;
    uint8_t ucAutoPort; /* automatic shared port selection */
    uint8_t ucReserved2;
    uint8_t ucAutoCard; /* automatic shared card selection */
    uint8_t ucReserved4;
    uint8_t ucNicIndex; /* selected network adapter, 0 to 2 */
    uint8_t ucReserved6;
    uint8_t ucChannel; /* selected port, before the channel id offset is added */
    uint8_t aucReserved8[4];
    uint8_t aucCardAutoRules[4]; /* adapter index by priority position */
    uint8_t aucReserved16[86];
    uint8_t ucLinkAggregation;
    uint8_t aucReserved103[89];
} NW_NCSI_DB_INFO_S;
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, ucNcsiEnable, 0);
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, ucAutoPort, 1);
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, ucAutoCard, 3);
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, ucNicIndex, 5);
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, ucChannel, 7);
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, aucCardAutoRules, 12);
NW_ASSERT_AT(NW_NCSI_DB_INFO_S, ucLinkAggregation, 102);
NW_ASSERT_SIZE(NW_NCSI_DB_INFO_S, 192);

typedef struct NW_PACKED {
    uint8_t ucAutoNeg; /* 1: auto-negotiation on */
    uint8_t ucDuplex;
    uint8_t ucSpeed;
    uint8_t aucAnReserved[4]; /* carried through */
} NW_AN_CFG_PORT_S;
NW_ASSERT_AT(NW_AN_CFG_PORT_S, ucAutoNeg, 0);
NW_ASSERT_AT(NW_AN_CFG_PORT_S, ucDuplex, 1);
NW_ASSERT_AT(NW_AN_CFG_PORT_S, ucSpeed, 2);
NW_ASSERT_AT(NW_AN_CFG_PORT_S, aucAnReserved, 3);
NW_ASSERT_SIZE(NW_AN_CFG_PORT_S, 7);

typedef struct NW_PACKED {
    NW_AN_CFG_PORT_S astPort[NW_PORT_COUNT];
} NW_AN_CFG_DB_INFO_S;
NW_ASSERT_AT(NW_AN_CFG_DB_INFO_S, astPort[1], 7);
NW_ASSERT_AT(NW_AN_CFG_DB_INFO_S, astPort[2], 14);
NW_ASSERT_SIZE(NW_AN_CFG_DB_INFO_S, 21);

NW_EXTERN_C_BEGIN

/* Readers. A null argument gives NW_ERR_NULL_POINTER. A failed read leaves the caller's record
 * untouched, except in NW_LMDB_GetLanCfgInfo and NW_LMDB_GetAnCfgInfo, which read straight into it
 * and may leave it changed. */

/* Stores exactly one byte. No database: NW_ERR_DB_ENVIRONMENT; failed read: NW_ERR_DB_READ. */
NW_EXPORT NW_RESULT NW_LMDB_Get_NetStatus(uint8_t *pstSetInProgress);
/* No environment or database: NW_ERR_DB_ENVIRONMENT; failed read: NW_ERR_DB_READ. */
NW_EXPORT NW_RESULT NW_LMDB_Get_DNS(NW_DNS_DB_INFO_S *pstDnsDbInfo);
/* No environment: NW_ERR_GENERAL; no database: NW_ERR_DB_ENVIRONMENT; failed read: NW_ERR_DB_READ.
 */
NW_EXPORT NW_RESULT NW_LMDB_Get_LLDP(NW_LLDP_DB_INFO_S *pstLldpDbInfo);
NW_EXPORT NW_RESULT NW_LMDB_GetLanCfgInfo(NW_LAN_CFG_DB_INFO_S *pstLanCfgDbInfo);
NW_EXPORT NW_RESULT NW_LMDB_GetAnCfgInfo(NW_AN_CFG_DB_INFO_S *pstAnCfgDbInfo);
NW_EXPORT NW_RESULT LIB_NW_GetHostName(NW_HOSTNAME_DB_INFO_S *pstHostNameInfo);
/* No environment or database: NW_ERR_GENERAL; failed read: the database's own code. */
NW_EXPORT NW_RESULT NW_LMDB_Get_IfcState(NW_IFC_STATE_DB_INFO_S *pstIfcStateDbInfo);
/* As NW_LMDB_Get_IfcState, but opens nothing: the process must have an open environment. */
NW_EXPORT NW_RESULT NW_LMDB_Get_NCSI(NW_NCSI_DB_INFO_S *pstNcsiDbInfo);
/* The NC-SI record for callers; codes of NW_LMDB_Get_NCSI. */
NW_EXPORT NW_RESULT LIB_NW_GetNcsiConfig(NW_NCSI_DB_INFO_S *pstNcsiCfgDbInfo);

/* Writers. */

/* No environment: NW_ERR_GENERAL; no database or failed write: NW_ERR_FAILED. */
NW_EXPORT NW_RESULT NW_LMDB_Put_NetStatus(uint8_t ucSetInProgress);
/* No environment: NW_ERR_GENERAL; no database: NW_ERR_IFC_NO_DB; failed write: NW_ERR_IFC_WRITE. */
NW_EXPORT NW_RESULT NW_LMDB_Put_IfcState(const NW_IFC_STATE_DB_INFO_S *pstIfcStateDbInfo);

/* Channel id offset of the shared port from the capability store, in host byte order. Answers the
 * store's own result; for a null argument, whatever the diagnostic log answered. */
NW_EXPORT NW_RESULT LIB_NW_GetNcsiChannelIdOffset(uint16_t *pusChannelIdOffset);

NW_EXTERN_C_END

#endif
