// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the library itself costs. The LAN query stands beside its floor in the same run: the same
// reads of the database and the wireless record and one address dump, done by hand. Diagnostics are
// thrown away unformatted. Both ask the kernel of the machine they run on.
#include <benchmark/benchmark.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include "bmc_platform.h"
#include "network_mng.h"
#include "query_model.hpp"

namespace {

namespace at = support::at;

query::Board portBoard()
{
    query::Board board{support::ifcRecord(0), {}, true, {1, support::ipv4("10.3.0.1")}};
    board.lan.port(0).ipv4Address("10.1.0.1", "255.255.255.0").ipv6Address("2001:db8:1::1", 64);
    board.lan.port(1)
        .set(at::lanEnable, 1)
        .ipv4Address("10.2.0.1", "255.255.255.0")
        .ipv4Route(0, "172.16.0.0", "255.255.0.0", "10.2.0.254")
        .ipv6Address("2001:db8:2::1", 64)
        .ipv6Route(0, "fd00::", 64, "2001:db8:2::fe")
        .ipv6Further(0, "2001:db8:3::1", 64)
        .set(at::ipv6Count, 4);
    return board;
}

void preparePlatform()
{
    fake::platform().reset();
    portBoard().install();
    fake::platform().setRecording(false);
}

void lanQuery(benchmark::State &state)
{
    preparePlatform();
    for (auto _ : state) {
        NW_ETHER_INS_INFO_S view{};
        if (LIB_NW_GetLanConfig("eth1", &view) != NW_OK) {
            state.SkipWithError("the query failed");
        }
        benchmark::DoNotOptimize(view);
    }
}
BENCHMARK(lanQuery);

bool readRecord(std::uint32_t key, void *record, std::uint32_t size)
{
    return DB_Get(DB_GetCurrentDb(DB_Open()), key, size, record) == 0;
}

ssize_t dumpAddresses()
{
    struct {
        nlmsghdr header;
        ifaddrmsg body;
    } request{{sizeof(request), RTM_GETADDR, NLM_F_REQUEST | NLM_F_DUMP, 0, 0},
              {AF_INET6, 0, 0, 0, 0}};
    alignas(nlmsghdr) std::array<char, 8192> answer{};

    const int descriptor = socket(AF_NETLINK, SOCK_DGRAM, NETLINK_ROUTE);
    if (descriptor < 0) {
        return -1;
    }
    const ssize_t sent = send(descriptor, &request, sizeof(request), 0);
    const ssize_t received = sent < 0 ? -1 : recv(descriptor, answer.data(), answer.size(), 0);
    close(descriptor);
    return received;
}

void lanQueryFloor(benchmark::State &state)
{
    preparePlatform();
    for (auto _ : state) {
        NW_IFC_STATE_DB_INFO_S ifc{};
        NW_LAN_CFG_DB_INFO_S lan{};
        std::array<std::uint8_t, BMC_WIRELESS_INFO_SIZE> wireless{};
        if (!readRecord(NW_KEY_IFC_STATE, &ifc, sizeof(ifc)) ||
            !readRecord(NW_KEY_LAN_CFG, &lan, sizeof(lan)) || dumpAddresses() < 0 ||
            USBMANAGE_GetWirelessServiceInfo(wireless.data()) != 0) {
            state.SkipWithError("a read failed");
        }
        benchmark::DoNotOptimize(ifc);
        benchmark::DoNotOptimize(lan);
        benchmark::DoNotOptimize(wireless);
    }
}
BENCHMARK(lanQueryFloor);

// Every field of one port, by far the longest sentence.
void operateLogBuild(benchmark::State &state)
{
    preparePlatform();
    NW_LAN_SET_REQ_S request{};
    std::memset(&request.stConfig.astPort[1], 0x5A, sizeof(request.stConfig.astPort[1]));
    request.stBitmap.aauiWord[1][0] = static_cast<std::uint32_t>(state.range(0));
    request.stBitmap.aauiWord[1][1] = static_cast<std::uint32_t>(state.range(1));
    for (auto _ : state) {
        NW_OPER_LOG_S log{};
        NW_OperateLogBuild(NW_LOG_LAN, NW_OK, 1, &request, &log);
        benchmark::DoNotOptimize(log);
    }
}
BENCHMARK(operateLogBuild)
    ->ArgNames({"word0", "word1"})
    ->Args({NW_LAN_BIT_IPV4_ADDR, 0})
    ->Args({0xFFFFFFFFLL, 0xFFFFFFFFLL});

void sameSegment(benchmark::State &state)
{
    preparePlatform();
    const auto lan = support::fromBytes<NW_LAN_CFG_DB_INFO_S>(portBoard().lan.bytes());
    const NW_WIFI_ADDR_S wifi{1, {10, 3, 0, 1}};
    for (auto _ : state) {
        if (LIB_NW_CheckIPv4v6SameSegment(0, NW_PORTSET_ALL, 7, &wifi, &lan) != NW_OK) {
            state.SkipWithError("a conflict");
        }
    }
}
BENCHMARK(sameSegment);

} // namespace
