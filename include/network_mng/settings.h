// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Host name, DNS, LLDP, network mode, ARP, auto-negotiation, NC-SI: requests, views, functions.
 *
 * Every setter sends its request to the network manager, blocks for up to 10 seconds, and leaves
 * one sentence in pstOperLog, which the caller owns and has zeroed, whether the change succeeded or
 * not. It answers the network manager's result, or NW_ERR_RPC_TRANSPORT, unless it says otherwise.
 */
#ifndef NETWORK_MNG_SETTINGS_H
#define NETWORK_MNG_SETTINGS_H

#include "base.h"
#include "operate_log.h"
#include "store.h"

/* The caller's host name configuration. */
typedef struct NW_PACKED {
    uint32_t uiHead;  /* the network manager's */
    uint8_t ucByte4;  /* the network manager's */
    uint8_t ucLength; /* of the host name; above 64 the 64 bytes that have a place count */
    char acHostName[64];
    char acTail[64]; /* carried through */
} NW_HOSTNAME_CONF_S;
NW_ASSERT_AT(NW_HOSTNAME_CONF_S, ucByte4, 4);
NW_ASSERT_AT(NW_HOSTNAME_CONF_S, ucLength, 5);
NW_ASSERT_AT(NW_HOSTNAME_CONF_S, acHostName, 6);
NW_ASSERT_AT(NW_HOSTNAME_CONF_S, acTail, 70);
NW_ASSERT_SIZE(NW_HOSTNAME_CONF_S, 134);

/* Payload of NW_CMD_SET_HOSTNAME. */
typedef struct NW_PACKED {
    uint32_t uiHead;
    uint8_t ucSetMask; /* bit 0 mode, bit 1 host name, bit 2 BMC name */
    uint8_t ucByte4;
    uint8_t ucLength;
    char acHostName[64];
    char acTail[64];
    uint8_t ucZero;
} NW_HOSTNAME_SET_REQ_S;
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, uiHead, 0);
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, ucSetMask, 4);
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, ucByte4, 5);
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, ucLength, 6);
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, acHostName, 7);
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, acTail, 71);
NW_ASSERT_AT(NW_HOSTNAME_SET_REQ_S, ucZero, 135);
NW_ASSERT_SIZE(NW_HOSTNAME_SET_REQ_S, 136);

/* Payload of NW_CMD_SET_DNS: the caller's record, a u16 change bitmap for each port at offset 4. */
#define NW_DNS_SET_SIZE 1788U
#define NW_DNS_SERVER_COUNT 3U
#define NW_DNS_DOMAIN_SIZE 260U

/* DNS settings of one port as LIB_NW_GetAllDnsInfo shows them. Byte 1 and the slots of servers that
 * are not set stay as the caller left them. */
typedef struct NW_PACKED {
    uint8_t ucDnsHead;
    uint8_t ucPad1;
    uint8_t ucIpv4DnsMode;
    uint8_t ucIpv6DnsMode;
    uint8_t aucIpv4DnsServer[NW_DNS_SERVER_COUNT][NW_IPV4_SIZE];
    uint8_t aucIpv6DnsServer[NW_DNS_SERVER_COUNT][NW_IPV6_SIZE];
    char szIpv4DnsServer[NW_DNS_SERVER_COUNT][NW_ADDR_TEXT_SIZE];
    char szIpv6DnsServer[NW_DNS_SERVER_COUNT][NW_ADDR_TEXT_SIZE];
    char szIpv4DnsDomain[NW_DNS_DOMAIN_SIZE];
    char szIpv6DnsDomain[NW_DNS_DOMAIN_SIZE];
} NW_DNS_INFO_PORT_S;
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, ucDnsHead, 0);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, ucIpv4DnsMode, 2);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, ucIpv6DnsMode, 3);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, aucIpv4DnsServer, 4);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, aucIpv6DnsServer, 16);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, szIpv4DnsServer, 64);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, szIpv6DnsServer, 256);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, szIpv4DnsDomain, 448);
NW_ASSERT_AT(NW_DNS_INFO_PORT_S, szIpv6DnsDomain, 708);
NW_ASSERT_SIZE(NW_DNS_INFO_PORT_S, 968);

typedef struct NW_PACKED {
    NW_DNS_INFO_PORT_S astPort[NW_PORT_COUNT];
} NW_DNS_INFO_S;
NW_ASSERT_SIZE(NW_DNS_INFO_S, 2904);

/* The interface state for callers. */
typedef struct NW_PACKED {
    uint8_t ucIfcState;
    uint8_t aucIfcValue[4]; /* bytes 1 to 4 of the record: ucIfcValue1, then aucPortPresent */
    uint8_t ucIfcValue6;
    uint8_t aucChannel[NW_PORT_COUNT];
    char acIfcName[NW_PORT_COUNT][NW_IFC_NAME_SIZE];
} NW_IFC_STATE_INFO_S;
NW_ASSERT_AT(NW_IFC_STATE_INFO_S, ucIfcState, 0);
NW_ASSERT_AT(NW_IFC_STATE_INFO_S, aucIfcValue, 1);
NW_ASSERT_AT(NW_IFC_STATE_INFO_S, ucIfcValue6, 5);
NW_ASSERT_AT(NW_IFC_STATE_INFO_S, aucChannel, 6);
NW_ASSERT_AT(NW_IFC_STATE_INFO_S, acIfcName, 9);
NW_ASSERT_SIZE(NW_IFC_STATE_INFO_S, 57);

/* Payload of NW_CMD_SUSPEND_ARP. */
typedef struct NW_PACKED {
    uint8_t ucPort;
    uint8_t ucArpSuspend;
} NW_ARP_SUSPEND_REQ_S;
NW_ASSERT_AT(NW_ARP_SUSPEND_REQ_S, ucArpSuspend, 1);
NW_ASSERT_SIZE(NW_ARP_SUSPEND_REQ_S, 2);

/* Payload of NW_CMD_UPDATE_ARP. */
typedef struct NW_PACKED {
    uint32_t uiArpArg0;
    uint8_t ucArpArg1;
    uint32_t uiArpArg2;
} NW_ARP_UPDATE_REQ_S;
NW_ASSERT_AT(NW_ARP_UPDATE_REQ_S, ucArpArg1, 4);
NW_ASSERT_AT(NW_ARP_UPDATE_REQ_S, uiArpArg2, 5);
NW_ASSERT_SIZE(NW_ARP_UPDATE_REQ_S, 9);

/* Values of the shared-link mode. */
typedef enum {
    NW_SHARE_LINK_DEDICATED = 0,     /* separate ports, LAN of port 1 off */
    NW_SHARE_LINK_SHARED = 1,        /* separate ports, LAN of port 1 on */
    NW_SHARE_LINK_ACTIVE_STANDBY = 2 /* bonded */
} NW_SHARE_LINK_MODE_E;

/* Payload of NW_CMD_SET_LLDP. */
typedef struct NW_PACKED {
    uint32_t uiReserved; /* 0 */
    uint8_t ucSetMask;   /* bit 0 ucLldpEnable, bit 1 ucLldpWorkMode */
    uint8_t ucLldpEnable;
    uint8_t ucLldpWorkMode; /* bit 0 transmit, bit 1 receive */
    uint8_t ucPad;          /* 0 */
} NW_LLDP_SET_S;
NW_ASSERT_AT(NW_LLDP_SET_S, uiReserved, 0);
NW_ASSERT_AT(NW_LLDP_SET_S, ucSetMask, 4);
NW_ASSERT_AT(NW_LLDP_SET_S, ucLldpEnable, 5);
NW_ASSERT_AT(NW_LLDP_SET_S, ucLldpWorkMode, 6);
NW_ASSERT_AT(NW_LLDP_SET_S, ucPad, 7);
NW_ASSERT_SIZE(NW_LLDP_SET_S, 8);

/* Payload of NW_CMD_SET_NET_MODE. */
typedef struct NW_PACKED {
    uint32_t uiReserved;
    uint8_t ucSetMask; /* bit 0 ucNetMode */
    uint8_t ucNetMode; /* 0 separate ports, 1 bonded */
    uint8_t aucReserved6[2];
} NW_NET_MODE_SET_S;
NW_ASSERT_AT(NW_NET_MODE_SET_S, ucSetMask, 4);
NW_ASSERT_AT(NW_NET_MODE_SET_S, ucNetMode, 5);
NW_ASSERT_SIZE(NW_NET_MODE_SET_S, 8);

/* Payload of NW_CMD_SET_LAN_REVERSE. */
typedef struct NW_PACKED {
    uint8_t aucReserved0[4];
    uint8_t ucSetMask; /* bit 0 ucEnable */
    uint8_t ucEnable;
    uint8_t aucReserved6[2];
} NW_LAN_REVERSE_SET_S;
NW_ASSERT_AT(NW_LAN_REVERSE_SET_S, ucSetMask, 4);
NW_ASSERT_AT(NW_LAN_REVERSE_SET_S, ucEnable, 5);
NW_ASSERT_SIZE(NW_LAN_REVERSE_SET_S, 8);

/* Settings of one port in the payload of NW_CMD_SET_AN. */
typedef struct NW_PACKED {
    uint8_t ucAutoNeg;
    uint8_t ucDuplex; /* 0 half, any other value full */
    uint32_t uiSpeed;
} NW_AN_SET_PORT_S;
NW_ASSERT_AT(NW_AN_SET_PORT_S, ucAutoNeg, 0);
NW_ASSERT_AT(NW_AN_SET_PORT_S, ucDuplex, 1);
NW_ASSERT_AT(NW_AN_SET_PORT_S, uiSpeed, 2);
NW_ASSERT_SIZE(NW_AN_SET_PORT_S, 6);

/* Payload of NW_CMD_SET_AN: the caller's 8-byte bitmap and 16-byte configuration behind a zero. */
typedef struct NW_PACKED {
    uint32_t uiReserved;         /* 0 */
    uint32_t auiBitmap[2];       /* dedicated port, shared port */
    uint8_t aucConfigHead[4];    /* first bytes of the configuration, not printed */
    NW_AN_SET_PORT_S astPort[2]; /* dedicated port, shared port */
} NW_AN_SET_REQ_S;
NW_ASSERT_AT(NW_AN_SET_REQ_S, auiBitmap, 4);
NW_ASSERT_AT(NW_AN_SET_REQ_S, aucConfigHead, 12);
NW_ASSERT_AT(NW_AN_SET_REQ_S, astPort, 16);
NW_ASSERT_AT(NW_AN_SET_REQ_S, astPort[1], 22);
NW_ASSERT_SIZE(NW_AN_SET_REQ_S, 28);
#define NW_AN_BITMAP_SIZE 8U
#define NW_AN_CONFIG_SIZE 16U

NW_EXTERN_C_BEGIN

/* Changes the host name settings. pstHostNameConf: NW_HOSTNAME_CONF_S; ucHostNameArg: which of them
 * change. Answers the response's result word, which stays 0 when the call itself failed. */
NW_EXPORT NW_RESULT LIB_NW_SetHostName(uint8_t ucHostNameArg, const void *pstHostNameConf,
                                       NW_OPER_LOG_S *pstOperLog);

/* Changes the DNS settings of the ports. pstDnsConf: NW_DNS_SET_SIZE bytes. */
NW_EXPORT NW_RESULT LIB_NW_SetAllDnsConf(const void *pstDnsConf, NW_OPER_LOG_S *pstOperLog);
/* DNS settings of the ports served in the present network mode; the caller zeroes the record. */
NW_EXPORT NW_RESULT LIB_NW_GetAllDnsInfo(NW_DNS_INFO_S *pstDnsInfo);

/* The LLDP record with the interface names "eth0" and "eth1"; NW_ERR_FAILED for a null pointer. */
NW_EXPORT NW_RESULT LIB_NW_GetLLDP(NW_LLDP_DB_INFO_S *pstLLDPInfo);
/* Changes the LLDP settings that ucSetMask selects. */
NW_EXPORT NW_RESULT LIB_NW_SetLLDP(const NW_LLDP_SET_S *pstSetLLDP, NW_OPER_LOG_S *pstOperLog);
/* LLDP reception on (1) or off (0); every failure gives NW_ERR_GENERAL. */
NW_EXPORT NW_RESULT LIB_NW_LLDPRxEnable(uint32_t uiReq, NW_OPER_LOG_S *pstOperLog);
/* Values 0 and 1 set the state, 2 to 7 state (bit 0) and work mode (the bits above). */
NW_EXPORT NW_RESULT LIB_NW_IPMI_LLDPEnable(uint32_t uiEnable, NW_OPER_LOG_S *pstOperLog);

/* The interface state record for callers; codes of NW_LMDB_Get_IfcState. */
NW_EXPORT NW_RESULT LIB_NW_GetInterfaceState(NW_IFC_STATE_INFO_S *pstIfcStateInfo);
/* Port index of an IPMI LAN channel (1 or 8). It is stored also when the port is not on the board,
 * which gives NW_ERR_PORT_NOT_SUPPORTED. */
NW_EXPORT NW_RESULT NW_CheckChannel(uint32_t uiChannel, uint32_t *puiIndex);
/* Changes the network port mode. pstSetNetMode: NW_NET_MODE_SET_S. */
NW_EXPORT NW_RESULT LIB_NW_SetNetMode(const uint8_t *pstSetNetMode, NW_OPER_LOG_S *pstOperLog);

/* Take down the VLAN sub-interface of port 0 or 1, or of both; nothing is reported. */
NW_EXPORT void NW_DisableVlan(uint32_t uiPort);
NW_EXPORT void NW_DealVlan(void);

/* Suspends ARP of a port. pstSuspendBMCArpReq: NW_ARP_SUSPEND_REQ_S. The status after the change is
 * stored on success; every failure gives NW_ERR_ARP_SUSPEND. */
NW_EXPORT NW_RESULT LIB_NW_SuspendBMCArp(const uint8_t *pstSuspendBMCArpReq,
                                         uint8_t *pucArpSuspendStatus, NW_OPER_LOG_S *pstOperLog);
/* Updates the ARP settings of a port and stores what is suspended. The arguments are the network
 * manager's. No operation log; failures give NW_ERR_ARP_UPDATE. */
NW_EXPORT NW_RESULT LIB_NW_UpdateArpStatus(uint32_t uiArpArg0, uint8_t ucArpArg1,
                                           uint32_t uiArpArg2, uint8_t *pucArpSuspendStatus);
/* Resumes suspended ARP. No operation log; failures give NW_ERR_ARP_RESUME. */
NW_EXPORT NW_RESULT LIB_NW_ResumeSuspendBMCArps(uint32_t uiArpResume);

/* Changes auto-negotiation, duplex and speed of the ports: NW_AN_BITMAP_SIZE and NW_AN_CONFIG_SIZE
 * bytes. Answers the response's result word, which stays 0 when the call itself failed. */
NW_EXPORT NW_RESULT LIB_NW_SetAnPortConfig(const uint8_t *pstAnBitmap, const uint8_t *pstAnConfig,
                                           NW_OPER_LOG_S *pstOperLog);
/* The stored settings with the live state of the PHYs in duplex and speed (port 0: only while its
 * auto-negotiation is on; ports 1 and 2: with auto-negotiation). */
NW_EXPORT NW_RESULT LIB_NW_GetAnConfig(NW_AN_CFG_DB_INFO_S *pstAnCfgDbInfo);

/* Kernel interface file: holds the character '1' while NC-SI is on. */
#define NW_NCSI_ENABLE_FILE "/proc/sys/tollmere/ncsi/Enable"

/* Turns NC-SI on in the kernel. NW_ERR_GENERAL while a set is in progress or NC-SI has not finished
 * initialising. NW_OK also when the kernel did not take it: NW_NCSI_ENABLE_FILE tells. */
NW_EXPORT NW_RESULT LIB_NW_EnableNcsi(void);
/* 1 when NC-SI has finished initialising, else 0. */
NW_EXPORT uint32_t LIB_NW_NcsiIsInitComplete(void);

/* Exchanges the numbers of the two ports. pstSetLanReverse: NW_LAN_REVERSE_SET_S. */
NW_EXPORT NW_RESULT LIB_NW_SetLanReverse(const NW_LAN_REVERSE_SET_S *pstSetLanReverse,
                                         NW_OPER_LOG_S *pstOperLog);

/* Changes the shared-link mode. NW_SHARE_LINK_MODE_E, set as a change of the network mode and of
 * port 1's LAN; the operation-log texts are discarded and every failure gives NW_ERR_GENERAL. */
NW_EXPORT NW_RESULT LIB_NW_ChangeShareLinkMode(uint8_t ucMode);
/* Stores the present NW_SHARE_LINK_MODE_E. A failed read gives NW_ERR_GENERAL. With separate ports
 * it makes the query LIB_NW_GetLanConfig, with what that says of its socket. */
NW_EXPORT NW_RESULT LIB_NW_GetShareLinkMode(uint8_t *pucNcsiEnable);

NW_EXTERN_C_END

#endif
