// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Queries and setters, and the channels that they send through.
#include "unaligned.hpp"

namespace unaligned {

namespace {

constexpr std::uint32_t timeout = NW_RPC_TIMEOUT_MS;

Bytes hostName()
{
    Bytes conf(sizeof(NW_HOSTNAME_CONF_S));
    conf[5] = 5;
    support::putText(conf, 6, "bmc-7");
    return conf;
}

std::vector<Row> channelRows()
{
    const Bytes request = filled<NW_RPC_REQUEST_S>();
    const Bytes response = poisoned<NW_RPC_RESPONSE_S>();
    return {
        row("Network_RPC_Comm",
            +[](void *out, std::uint32_t *in) { return Network_RPC_Comm(out, in, timeout); },
            {request, response}),
        row("NetworkOa_RPC_Comm",
            +[](void *out, std::uint32_t *in) { return NetworkOa_RPC_Comm(out, in, timeout); },
            {request, response}),
        row("LIB_BLADE_RPC_WriteConfig",
            +[](void *out, std::uint32_t *in) {
                return LIB_BLADE_RPC_WriteConfig(out, timeout, in);
            },
            {Bytes{0x42}, response}),
        row("NW_SendIpmiRpc", +[](void *out) { return NW_SendIpmiRpc(out, timeout); }, {request}),
    };
}

std::vector<Row> queryRows()
{
    return {
        UNALIGNED_ROW(LIB_NW_GetLanConfig, {text("eth1"), poisoned<NW_ETHER_INS_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetAllLanConfig, {poisoned<NW_LAN_CFG_DB_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetAllDnsInfo, {poisoned<NW_DNS_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetLLDP, {poisoned<NW_LLDP_DB_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetInterfaceState, {poisoned<NW_IFC_STATE_INFO_S>()}),
        row(
            "NW_CheckChannel", +[](std::uint32_t *index) { return NW_CheckChannel(8, index); },
            {Bytes(4)}, NW_ERR_PORT_NOT_SUPPORTED),
        UNALIGNED_ROW(LIB_NW_GetAnConfig, {poisoned<NW_AN_CFG_DB_INFO_S>()}),
        UNALIGNED_ROW(LIB_NW_GetShareLinkMode, {Bytes{setters::poison}}),
        row("NW_DecomposeBitmap",
            +[](NW_LAN_BITMAP_S *bitmap) { NW_DecomposeBitmap(bitmap, 0x0F0F0F0F, 1); },
            {filled<NW_LAN_BITMAP_S>()}),
    };
}

std::vector<Row> setterRows()
{
    return {
        UNALIGNED_ROW(LIB_NW_SetLanConfig,
                      {lanBitmap(), filled<NW_LAN_SET_CFG_S>(), operationLog()}),
        UNALIGNED_ROW(LIB_NW_SetNetWorkAll, {combinedSet(), operationLog()}),
        UNALIGNED_ROW(LIB_NW_SetAllDnsConf, {dnsSet(), operationLog()}),
        UNALIGNED_ROW(LIB_NW_SetLLDP, {filled<NW_LLDP_SET_S>(), operationLog()}),
        UNALIGNED_ROW(LIB_NW_SetNetMode, {filled<NW_NET_MODE_SET_S>(), operationLog()}),
        UNALIGNED_ROW(LIB_NW_SetLanReverse, {filled<NW_LAN_REVERSE_SET_S>(), operationLog()}),
        UNALIGNED_ROW(LIB_NW_SetAnPortConfig,
                      {setters::pattern(NW_AN_BITMAP_SIZE), setters::pattern(NW_AN_CONFIG_SIZE),
                       operationLog()}),
        UNALIGNED_ROW(LIB_NW_SuspendBMCArp,
                      {filled<NW_ARP_SUSPEND_REQ_S>(), Bytes{setters::poison}, operationLog()}),
        row("LIB_NW_UpdateArpStatus",
            +[](std::uint8_t *status) {
                return LIB_NW_UpdateArpStatus(0x11223344, 0x55, 0x66778899, status);
            },
            {Bytes{setters::poison}}),
        row("LIB_NW_SetHostName",
            +[](const void *conf, NW_OPER_LOG_S *log) { return LIB_NW_SetHostName(1, conf, log); },
            {hostName(), operationLog()}),
        row("LIB_NW_LLDPRxEnable", +[](NW_OPER_LOG_S *log) { return LIB_NW_LLDPRxEnable(1, log); },
            {operationLog()}),
        row("LIB_NW_IPMI_LLDPEnable",
            +[](NW_OPER_LOG_S *log) { return LIB_NW_IPMI_LLDPEnable(7, log); }, {operationLog()}),
    };
}

} // namespace

// Everything of port 1 that has a bit.
Bytes lanBitmap()
{
    Bytes bitmap(sizeof(NW_LAN_BITMAP_S));
    std::fill_n(bitmap.begin() + 8, 8, std::uint8_t{0xFF});
    return bitmap;
}

Bytes lanSet()
{
    Bytes request(4);
    for (const Bytes &part : {lanBitmap(), Bytes(4), filled<NW_LAN_SET_CFG_S>()}) {
        request.insert(request.end(), part.begin(), part.end());
    }
    request.resize(sizeof(NW_LAN_SET_REQ_S));
    return request;
}

Bytes dnsSet()
{
    constexpr std::size_t entry = 12 + sizeof(NW_DNS_PORT_S); // of port 1
    Bytes request(NW_DNS_SET_SIZE);
    request[4 + 2] = request[4 + 3] = 0xFF;
    request[entry + 4] = request[entry + 280] = 1;
    support::put(request, entry + 5, setters::pattern(12));
    support::put(request, entry + 281, setters::pattern(48));
    support::putText(request, entry + 20, "bmc.example.org");
    support::putText(request, entry + 332, "bmc6.example.org");
    return request;
}

Bytes combinedSet()
{
    Bytes request(sizeof(NW_SET_NETWORK_ALL_S));
    support::putU32(request, 0, NW_LOG_LAN | NW_LOG_DNS | NW_LOG_NET_MODE);
    support::put(request, 16, lanSet());
    support::put(request, 522, dnsSet());
    support::put(request, 2446, filled<NW_NET_MODE_SET_S>());
    return request;
}

std::vector<Row> settingRows()
{
    return joined({channelRows(), queryRows(), setterRows()});
}

} // namespace unaligned
