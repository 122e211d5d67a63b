// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The three tables that every operation-log text is made from. */
#include "network_mng/store.h"
#include "nw_operate_log.h"

namespace {

template <size_t TO, size_t FROM>
constexpr void PutText(char (&acTo)[TO], const char (&acFrom)[FROM])
{
    static_assert(FROM <= TO, "the text must fit its column");
    for (size_t i = 0; i < FROM; ++i) {
        acTo[i] = acFrom[i];
    }
}

template <size_t SIZE>
constexpr NW_OPERATE_LOG_DESC_S Row(uint32_t uiModule, uint32_t uiWord, uint32_t uiBit,
                                    NW_OPERATE_LOG_FORMAT_FN pfnFormat, size_t ulOffset,
                                    const char (&acText)[SIZE], uint32_t uiExclude = 0)
{
    NW_OPERATE_LOG_DESC_S stRow{};
    stRow.uiModuleBit = uiModule;
    stRow.uiBitmapIdx = uiWord;
    stRow.uiBitMask = uiBit;
    stRow.uiExcludeMask = uiExclude;
    stRow.pfnParamFormat = pfnFormat;
    stRow.uiParamOffset = static_cast<uint32_t>(ulOffset);
    PutText(stRow.acDesc, acText);
    return stRow;
}

template <size_t SIZE>
constexpr NW_OPERATE_LOG_DESC_S Failure(uint32_t uiModule, uint32_t uiResult, uint32_t uiPerPort,
                                        const char (&acText)[SIZE])
{
    NW_OPERATE_LOG_DESC_S stRow = Row(uiModule, 0, uiResult, nullptr, 0, acText);
    stRow.uiPerPort = uiPerPort;
    return stRow;
}

constexpr NW_OPERATE_LOG_SUB_MODULE_S SubModule(uint32_t uiModule, uint8_t ucSkipHead,
                                                NW_OPERATE_LOG_BUILD_FN pfnBuild)
{
    NW_OPERATE_LOG_SUB_MODULE_S stRow{};
    stRow.uiModuleBit = uiModule;
    stRow.ucSkipHead = ucSkipHead;
    stRow.pfnBuild = pfnBuild;
    return stRow;
}

constexpr uint32_t NW_ANY_RESULT = 0;

} // namespace

/* Offsets index the record that the module's builder hands to the walk. */
#define LLDP(field) offsetof(NW_LLDP_SET_S, field)
#define AN(field) offsetof(NW_AN_SET_PORT_S, field)
#define NCSI(field) offsetof(NW_NCSI_DB_INFO_S, field)
#define DNS(field) offsetof(NW_DNS_PORT_S, field)
#define LAN(field) offsetof(NW_LAN_SET_PORT_S, field)
#define HOST(field) offsetof(NW_HOSTNAME_DB_INFO_S, field)
#define MODE(field) offsetof(NW_NET_MODE_SET_S, field)
#define REVERSE(field) offsetof(NW_LAN_REVERSE_SET_S, field)

/* clang-format off */
/* A row without a formatter prints its one byte. The text follows the order of the rows, for LAN once
 * for each word. The second host name row tests two bits, and the exclusion mask of the network
 * adapter never meets the row's own bit: both as they shall be. */
constexpr NW_OPERATE_LOG_DESC_S g_astSuccessOperateLogDescTbl[] = {
    /*  module         word  bit       formatter                   offset                         text */
    Row(NW_LOG_LLDP,        0, 0x1,    NW_OperateLogParEnable,     LLDP(ucLldpEnable),            ", LLDP state: %s"),
    Row(NW_LOG_LLDP,        0, 0x2,    NW_OperateLogLLDPMode,      LLDP(ucLldpWorkMode),          ", LLDP work mode: %s"),

    Row(NW_LOG_AN,          0, 0x1,    NW_OperateLogParEnable,     AN(ucAutoNeg),                 ", auto-negotiation: %s"),
    Row(NW_LOG_AN,          0, 0x4,    NW_OperateLogParDuplex,     AN(ucDuplex),                  ", duplex: %s"),
    Row(NW_LOG_AN,          0, 0x2,    NW_OperateLogParInt,        AN(uiSpeed),                   ", speed: %s"),

    Row(NW_LOG_NCSI,        0, 0x1,    NW_OperateLogParEnable,     NCSI(ucNcsiEnable),            ", NCSI: %s"),
    Row(NW_LOG_NCSI,        0, 0x2,    NW_OperateLogParEnable,     NCSI(ucAutoPort),              ", automatic shared port selection: %s"),
    Row(NW_LOG_NCSI,        0, 0x4,    NW_OperateLogParEnable,     NCSI(ucAutoCard),              ", automatic shared card selection: %s"),
    Row(NW_LOG_NCSI,        0, 0x400,  NW_OperateLogParCardPri,    NCSI(aucCardAutoRules),        "%s"),
    Row(NW_LOG_NCSI,        0, 0x10,   NW_OperateLogParChannel,    NCSI(ucChannel),               ", selected port: %s"),
    Row(NW_LOG_NCSI,        0, 0x8,    NW_OperateLogParNicPri,     NCSI(ucNicIndex),              ", selected network adapter: %s", 0x1E4),
    Row(NW_LOG_NCSI,        0, 0x200,  NW_OperateLogParEnable,     NCSI(ucLinkAggregation),       ", link aggregation: %s"),

    Row(NW_LOG_DNS,         0, 0x1,    NW_OperateLogParDnsMode,    DNS(ucIpv4DnsMode),            ", IPv4 DNS mode: %s"),
    Row(NW_LOG_DNS,         0, 0x2,    NW_OperateLogParDNSDomain,  DNS(szIpv4DnsDomain),          ", IPv4 DNS domain suffix: %s"),
    Row(NW_LOG_DNS,         0, 0x4,    NW_OperateLogParIpv4,       DNS(aucIpv4DnsServer[0]),      ", IPv4 DNS server 1: %s"),
    Row(NW_LOG_DNS,         0, 0x8,    NW_OperateLogParIpv4,       DNS(aucIpv4DnsServer[1]),      ", IPv4 DNS server 2: %s"),
    Row(NW_LOG_DNS,         0, 0x10,   NW_OperateLogParIpv4,       DNS(aucIpv4DnsServer[2]),      ", IPv4 DNS server 3: %s"),
    Row(NW_LOG_DNS,         0, 0x100,  NW_OperateLogParDnsMode,    DNS(ucIpv6DnsMode),            ", IPv6 DNS mode: %s"),
    Row(NW_LOG_DNS,         0, 0x200,  NW_OperateLogParDNSDomain,  DNS(szIpv6DnsDomain),          ", IPv6 DNS domain suffix: %s"),
    Row(NW_LOG_DNS,         0, 0x400,  NW_OperateLogParIpv6,       DNS(aucIpv6DnsServer[0]),      ", IPv6 DNS server 1: %s"),
    Row(NW_LOG_DNS,         0, 0x800,  NW_OperateLogParIpv6,       DNS(aucIpv6DnsServer[1]),      ", IPv6 DNS server 2: %s"),
    Row(NW_LOG_DNS,         0, 0x1000, NW_OperateLogParIpv6,       DNS(aucIpv6DnsServer[2]),      ", IPv6 DNS server 3: %s"),

    Row(NW_LOG_LAN, 0, NW_LAN_BIT_LAN_ENABLE,           NW_OperateLogParEnable,     LAN(ucLanEnable),                ", LAN: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV4_ENABLE,          NW_OperateLogParEnable,     LAN(ucIpv4Enable),               ", IPv4: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV4_TYPE,            NW_OperateLogParLanSrc,     LAN(ucIpv4Type),                 ", IPv4 type: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV4_ADDR,            NW_OperateLogParIpv4,       LAN(aucIpv4Addr),                ", IPv4 address: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV4_MASK,            NW_OperateLogParIpv4,       LAN(aucIpv4Mask),                ", IPv4 mask: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV4_GATEWAY,         NW_OperateLogParIpv4,       LAN(aucIpv4Gateway),             ", IPv4 gateway: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV4_HEADER,          NW_OperateLogParIpv4Header, LAN(stIpv4Header),               ", %s"),
    Row(NW_LOG_LAN, 1, NW_LAN_BIT_IPV4_ROUTE1_ADDR,     NW_OperateLogParIpv4,       LAN(astIpv4Route[0].aucAddr),    ", IPv4 static route 1 address: %s"),
    Row(NW_LOG_LAN, 1, NW_LAN_BIT_IPV4_ROUTE1_MASK,     NW_OperateLogParIpv4,       LAN(astIpv4Route[0].aucMask),    ", IPv4 static route 1 mask: %s"),
    Row(NW_LOG_LAN, 1, NW_LAN_BIT_IPV4_ROUTE1_GATEWAY,  NW_OperateLogParIpv4,       LAN(astIpv4Route[0].aucGateway), ", IPv4 static route 1 gateway: %s"),
    Row(NW_LOG_LAN, 1, NW_LAN_BIT_IPV4_ROUTE2_ADDR,     NW_OperateLogParIpv4,       LAN(astIpv4Route[1].aucAddr),    ", IPv4 static route 2 address: %s"),
    Row(NW_LOG_LAN, 1, NW_LAN_BIT_IPV4_ROUTE2_MASK,     NW_OperateLogParIpv4,       LAN(astIpv4Route[1].aucMask),    ", IPv4 static route 2 mask: %s"),
    Row(NW_LOG_LAN, 1, NW_LAN_BIT_IPV4_ROUTE2_GATEWAY,  NW_OperateLogParIpv4,       LAN(astIpv4Route[1].aucGateway), ", IPv4 static route 2 gateway: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ENABLE,          NW_OperateLogParEnable,     LAN(ucIpv6Enable),               ", IPv6: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_TYPE,            NW_OperateLogParLanSrc,     LAN(ucIpv6Type),                 ", IPv6 type: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ADDR,            NW_OperateLogParIpv6,       LAN(aucIpv6Addr),                ", IPv6 address: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_GATEWAY,         NW_OperateLogParIpv6,       LAN(aucIpv6Gateway),             ", IPv6 gateway: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_PREFIX,          nullptr,                    LAN(ucIpv6Prefix),               ", IPv6 prefix length: %d"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_HOP_LIMIT,            nullptr,                    LAN(ucHopLimit),                 ", Static Hop Limit: %d"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_TRAFFIC_CLASS,        nullptr,                    LAN(ucTrafficClass),             ", Traffic Class: %d"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ROUTE1_ADDR,     NW_OperateLogParIpv6,       LAN(astIpv6Route[0].aucAddr),    ", IPv6 static route 1 address: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ROUTE1_PREFIX,   nullptr,                    LAN(astIpv6Route[0].ucPrefix),   ", IPv6 static route 1 prefix: %d"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ROUTE1_GATEWAY,  NW_OperateLogParIpv6,       LAN(astIpv6Route[0].aucGateway), ", IPv6 static route 1 gateway: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ROUTE2_ADDR,     NW_OperateLogParIpv6,       LAN(astIpv6Route[1].aucAddr),    ", IPv6 static route 2 address: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ROUTE2_PREFIX,   nullptr,                    LAN(astIpv6Route[1].ucPrefix),   ", IPv6 static route 2 prefix: %d"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_IPV6_ROUTE2_GATEWAY,  NW_OperateLogParIpv6,       LAN(astIpv6Route[1].aucGateway), ", IPv6 static route 2 gateway: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_ARP_CONTROL,          NW_OperateLogParARPCtl,     LAN(ucArpControl),               ", ARP control: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_ARP_INTERVAL,         nullptr,                    LAN(ucArpInterval),              ", ARP interval: %d"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_ARP_SUSPEND,          NW_OperateLogParARPSuspend, LAN(ucArpSuspend),               ", ARP suspend: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_VLAN_ENABLE,          NW_OperateLogParEnable,     LAN(ucVlanEnable),               ", VLAN: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_VLAN_ID,              NW_OperateLogParUshort,     LAN(usVlanid),                   ", VLAN ID: %s"),
    Row(NW_LOG_LAN, 0, NW_LAN_BIT_VLAN_PRIORITY,        nullptr,                    LAN(ucVlanPriority),             ", VLAN priority: %d"),

    Row(NW_LOG_HOSTNAME,    0, 0x1,    NW_OperateLogParManualAuto, HOST(ucHostNameMode),          ", host name mode: %s"),
    Row(NW_LOG_HOSTNAME,    0, 0x3,    NW_OperateLogParStr,        HOST(szBmcHostName),           ", host name BMC: %s"),
    Row(NW_LOG_HOSTNAME,    0, 0x4,    NW_OperateLogParStr,        HOST(szBmcName),               ", BMC name: %s"),

    Row(NW_LOG_NET_MODE,    0, 0x1,    NW_OperateLogParNetMode,    MODE(ucNetMode),               ", network port mode: %s"),
    Row(NW_LOG_LAN_REVERSE, 0, 0x1,    NW_OperateLogParEnable,     REVERSE(ucEnable),             ", port number switchover: %s"),
};
static_assert(NW_CountOf(g_astSuccessOperateLogDescTbl) == NW_OPERATE_LOG_SUCCESS_COUNT);

/* The first match wins: the rows for the library's own refusals stand before their "for %s" rows. */
constexpr NW_OPERATE_LOG_DESC_S g_astFailureOperateLogDefault[] = {
    /*      module              result                 per port  text */
    Failure(NW_LOG_LLDP,        NW_ANY_RESULT,         0, "Failed to configure LLDP settings."),
    Failure(NW_LOG_AN,          NW_ANY_RESULT,         0, "Failed to configure PHY negotiation."),
    Failure(NW_LOG_NCSI,        NW_ANY_RESULT,         0, "Failed to configure NCSI settings."),
    Failure(NW_LOG_LAN,         NW_OPERLOG_LOCAL_FAIL, 0, "Failed to configure LAN settings."),
    Failure(NW_LOG_LAN,         NW_ANY_RESULT,         1, "Failed to configure LAN settings for %s."),
    Failure(NW_LOG_DNS,         NW_OPERLOG_LOCAL_FAIL, 0, "Failed to configure DNS settings."),
    Failure(NW_LOG_DNS,         NW_ANY_RESULT,         1, "Failed to configure DNS settings for %s."),
    Failure(NW_LOG_HOSTNAME,    NW_ANY_RESULT,         0, "Failed to configure host name settings."),
    Failure(NW_LOG_NET_MODE,    NW_ANY_RESULT,         0, "Failed to configure the network port mode."),
    Failure(NW_LOG_LAN_REVERSE, NW_ANY_RESULT,         0, "Failed to configure port number switchover."),
};
static_assert(NW_CountOf(g_astFailureOperateLogDefault) == NW_OPERATE_LOG_FAILURE_COUNT);

constexpr NW_OPERATE_LOG_SUB_MODULE_S g_astNwOperateLogSubModuleTbl[] = {
    /*        module           own heading  builder */
    SubModule(NW_LOG_HOSTNAME,    0, NW_SuccessHostNameOperateLogBuild),
    SubModule(NW_LOG_LAN,         1, NW_SuccessLANOperateLogBuild),
    SubModule(NW_LOG_DNS,         1, NW_SuccessDNSOperateLogBuild),
    SubModule(NW_LOG_LLDP,        0, NW_SuccessLLDPOperateLogBuild),
    SubModule(NW_LOG_NCSI,        0, NW_SuccessNCSIOperateLogBuild),
    SubModule(NW_LOG_NET_MODE,    0, NW_SuccessNetModeOperateLogBuild),
    SubModule(NW_LOG_AN,          0, NW_SuccessANOperateLogBuild),
    SubModule(NW_LOG_LAN_REVERSE, 0, NW_SuccessLanReverseOperateLogBuild),
};
static_assert(NW_CountOf(g_astNwOperateLogSubModuleTbl) == NW_OPERATE_LOG_SUB_MODULE_COUNT);
/* clang-format on */
