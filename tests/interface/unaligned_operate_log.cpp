// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The operation log: its builders for every module, and every formatter.
#include "unaligned.hpp"

namespace unaligned {

namespace {

// Builds a sentence of the module.
template <std::uint32_t module, std::uint32_t result>
void build(const void *config, NW_OPER_LOG_S *log)
{
    NW_OperateLogBuild(module, result, NW_PORT_ETH1, config, log);
}

template <std::uint32_t failed, std::uint32_t result>
void buildAll(const void *set, NW_OPER_LOG_S *log)
{
    NW_OperateLogBuildAll(NW_LOG_LAN | NW_LOG_DNS | NW_LOG_NET_MODE, failed, result, NW_PORT_ETH1,
                          set, log);
}

template <std::uint32_t module>
Row buildRow(const std::string &variant, const Bytes &config)
{
    return row("NW_OperateLogBuild", build<module, NW_OK>, {config, operationLog()}, 0, variant);
}

std::vector<Row> builderRows()
{
    return {
        buildRow<NW_LOG_HOSTNAME>("HostName", setters::pattern(sizeof(NW_HOSTNAME_SET_REQ_S))),
        buildRow<NW_LOG_LAN>("Lan", lanSet()),
        buildRow<NW_LOG_DNS>("Dns", dnsSet()),
        buildRow<NW_LOG_LLDP>("Lldp", filled<NW_LLDP_SET_S>()),
        buildRow<NW_LOG_NCSI>("Ncsi", setters::pattern(8)),
        buildRow<NW_LOG_NET_MODE>("NetMode", filled<NW_NET_MODE_SET_S>()),
        buildRow<NW_LOG_AN>("AutoNegotiation", filled<NW_AN_SET_REQ_S>()),
        buildRow<NW_LOG_LAN_REVERSE>("Switchover", filled<NW_LAN_REVERSE_SET_S>()),
        row("NW_OperateLogBuild", build<NW_LOG_LAN, NW_ERR_IPV4_SAME_SEGMENT>,
            {lanSet(), operationLog()}, 0, "Failure"),
        row("NW_OperateLogBuildAll", buildAll<0, NW_OK>, {combinedSet(), operationLog()}),
        row("NW_OperateLogBuildAll", buildAll<NW_LOG_DNS, NW_ERR_GENERAL>,
            {combinedSet(), operationLog()}, 0, "Failure"),
    };
}

template <NW_OPERATE_LOG_FORMAT_FN formatter>
void format(const std::uint8_t *value, char *words)
{
    formatter(value, 128, words);
}

#define FORMATTER_ROW(formatter, ...)                                                              \
    row(#formatter, format<formatter>, {__VA_ARGS__, Bytes(128, setters::poison)})

std::vector<Row> formatterRows()
{
    return {
        FORMATTER_ROW(NW_OperateLogParEnable, Bytes{1}),
        FORMATTER_ROW(NW_OperateLogParManualAuto, Bytes{1}),
        FORMATTER_ROW(NW_OperateLogParDnsMode, Bytes{2}),
        FORMATTER_ROW(NW_OperateLogParLanSrc, Bytes{2}),
        FORMATTER_ROW(NW_OperateLogParDuplex, Bytes{1}),
        FORMATTER_ROW(NW_OperateLogParNetMode, Bytes{1}),
        FORMATTER_ROW(NW_OperateLogLLDPMode, Bytes{3}),
        FORMATTER_ROW(NW_OperateLogParARPCtl, Bytes{3}),
        FORMATTER_ROW(NW_OperateLogParARPSuspend, Bytes{3}),
        FORMATTER_ROW(NW_OperateLogParStr, text("bmc-7")),
        FORMATTER_ROW(NW_OperateLogParDNSDomain, text("example.org")),
        FORMATTER_ROW(NW_OperateLogParUshort, setters::pattern(2)),
        FORMATTER_ROW(NW_OperateLogParInt, setters::pattern(4)),
        FORMATTER_ROW(NW_OperateLogParIpv4, setters::pattern(NW_IPV4_SIZE)),
        FORMATTER_ROW(NW_OperateLogParIpv6, setters::pattern(NW_IPV6_SIZE)),
        FORMATTER_ROW(NW_OperateLogParIpv4Header, filled<NW_LAN_IPV4_HEADER_S>()),
        FORMATTER_ROW(NW_OperateLogParChannel, Bytes{4}),
        FORMATTER_ROW(NW_OperateLogParNicPri, Bytes{1}),
        FORMATTER_ROW(NW_OperateLogParCardPri, Bytes{2, 0, 1, 1}),
    };
}

} // namespace

std::vector<Row> operateLogRows()
{
    return joined({builderRows(), formatterRows()});
}

} // namespace unaligned
