// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Static routes: in the kernel as in the record, whatever happens on the way. */
#include <algorithm>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "manager_system.hpp"

namespace nwtest {

namespace {

constexpr std::uint32_t kernelRefused = 0x1E000002;

using Texts = std::vector<std::string>;

/* Every field of one route; all empty clears it. Numbers from 0. */
LanRequest &ipv4Route(LanRequest &request, unsigned port, unsigned number,
                      const std::string &destination, const std::string &mask,
                      const std::string &gateway)
{
    auto &route = request.select(port, 0, 0x07U << (3 * number)).port(port).astIpv4Route[number];
    put(route.aucAddr, destination);
    put(route.aucMask, mask);
    put(route.aucGateway, gateway);
    return request;
}

LanRequest &ipv6Route(LanRequest &request, unsigned port, unsigned number,
                      const std::string &destination, std::uint8_t prefix,
                      const std::string &gateway)
{
    auto &route = request.select(port, 0x001C0000U << (3 * number)).port(port).astIpv6Route[number];
    put(route.aucAddr, destination);
    route.ucPrefix = prefix;
    put(route.aucGateway, gateway);
    return request;
}

/* One route of each family on port 1. */
LanRequest bothFamilies()
{
    LanRequest request;
    ipv4Route(request, 1, 0, "10.1.0.0", "255.255.0.0", "192.168.20.9");
    return ipv6Route(request, 1, 1, "2001:db8:a::", 48, "2001:db8:20::9");
}
const Texts bothRoutes{"10.1.0.0/16 via 192.168.20.9 202",
                       "2001:db8:a::/48 via 2001:db8:20::9 203"};

LanRequest ipv4Change(unsigned port, const std::string &address)
{
    LanRequest request;
    request.select(port, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(port).aucIpv4Addr, address);
    return request;
}

using Routes = ManagerTest;

} // namespace

TEST_F(Routes, FourOfAPortAreSetAndCleared)
{
    LanRequest all = bothFamilies();
    ipv4Route(all, 1, 1, "10.2.0.0", "255.255.255.0", "192.168.20.8");
    ipv6Route(all, 1, 0, "2001:db8:b::", 64, "fe80::9");
    expectAnswer(all, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"),
              (Texts{"10.1.0.0/16 via 192.168.20.9 202", "10.2.0.0/24 via 192.168.20.8 203",
                     "2001:db8:a::/48 via 2001:db8:20::9 203", "2001:db8:b::/64 via fe80::9 202"}));

    LanRequest fewer;
    ipv4Route(fewer, 1, 1, "0.0.0.0", "0.0.0.0", "0.0.0.0");
    ipv6Route(fewer, 1, 0, "::", 0, "::");
    expectAnswer(fewer, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
}

TEST_F(Routes, BothPortsHaveTheirOwn)
{
    expectAnswer(bothFamilies(), NW_OK, 1);
    LanRequest other;
    ipv4Route(other, 0, 0, "10.3.0.0", "255.255.0.0", "192.168.10.9");
    expectAnswer(other, NW_OK, 0);

    EXPECT_EQ(kernelRoutes("eth0"), Texts{"10.3.0.0/16 via 192.168.10.9 200"});
    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
}

TEST_F(Routes, StandBesideTheDefaultRoute)
{
    LanRequest request = bothFamilies();
    request.select(1, NW_LAN_BIT_IPV4_GATEWAY);
    put(request.port(1).aucIpv4Gateway, "192.168.20.1");
    expectAnswer(request, NW_OK, 1);

    EXPECT_EQ(kernelGateways("eth1"), Texts{"192.168.20.1 101"});
    EXPECT_EQ(kernelRoutes("eth1").size(), 3U);
}

TEST_F(Routes, DestinationKeepsItsHostBitsInTheRecordAlone)
{
    LanRequest request;
    ipv4Route(request, 1, 0, "10.1.2.3", "255.255.0.0", "192.168.20.9");
    ipv6Route(request, 1, 1, "2001:db8:a::1", 48, "2001:db8:20::9");
    expectAnswer(request, NW_OK, 1);

    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
    const auto &route = storedLan().astPort[1].astIpv4Route[0];
    EXPECT_TRUE(std::ranges::equal(raw("10.1.2.3"), std::span(route.aucAddr)));
}

TEST_F(Routes, WithoutGatewayIsOnTheLink)
{
    LanRequest request;
    ipv4Route(request, 1, 0, "10.1.0.0", "255.255.0.0", "0.0.0.0");
    ipv6Route(request, 1, 0, "2001:db8:a::", 48, "::");
    expectAnswer(request, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), (Texts{"10.1.0.0/16 202", "2001:db8:a::/48 202"}));

    LanRequest none;
    none.select(1, NW_LAN_BIT_IPV6_ROUTE1_ADDR, NW_LAN_BIT_IPV4_ROUTE1_ADDR);
    expectAnswer(none, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), Texts{});
}

TEST_F(Routes, FollowTheirFamilysAddressAndSwitch)
{
    expectAnswer(bothFamilies(), NW_OK, 1);
    expectAnswer(ipv4Change(1, "192.168.20.7"), NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);

    LanRequest ipv4Off;
    ipv4Off.select(1, NW_LAN_BIT_IPV4_ENABLE);
    expectAnswer(ipv4Off, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), Texts{bothRoutes[1]});

    LanRequest lanOff;
    lanOff.select(1, NW_LAN_BIT_LAN_ENABLE);
    expectAnswer(lanOff, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), Texts{});

    LanRequest on;
    on.select(1, NW_LAN_BIT_LAN_ENABLE | NW_LAN_BIT_IPV4_ENABLE);
    on.port(1).ucLanEnable = 1;
    on.port(1).ucIpv4Enable = 1;
    expectAnswer(on, NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
}

/* The address and the IPv4 route take effect before the kernel refuses the IPv6 route. */
TEST_F(Routes, GatewayOutOfReachTakesBackEverything)
{
    expectAnswer(bothFamilies(), NW_OK, 1);
    LanRequest request = ipv4Change(1, "192.168.20.7");
    ipv4Route(request, 1, 0, "10.7.0.0", "255.255.0.0", "192.168.20.9");
    ipv6Route(request, 1, 0, "2001:db8:b::", 48, "2001:db8:99::9");

    expectUntouched(request, kernelRefused, 1);

    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
}

/* In the new subnet the gateway of the route is out of reach. */
TEST_F(Routes, AddressCannotLeaveItsRoutesBehind)
{
    expectAnswer(bothFamilies(), NW_OK, 1);

    expectUntouched(ipv4Change(1, "192.168.40.7"), kernelRefused, 1);

    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
}

TEST_F(Routes, OthersRoutesAreNotTouched)
{
    shell("ip route add 10.1.0.0/16 via 192.168.20.77 metric 5 &&"
          "ip route add 10.2.0.0/16 via 192.168.20.77 metric 202");
    expectAnswer(bothFamilies(), NW_OK, 1);
    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);

    LanRequest taken;
    ipv4Route(taken, 1, 0, "10.2.0.0", "255.255.0.0", "192.168.20.9");
    expectUntouched(taken, kernelRefused, 1);

    LanRequest none;
    none.select(1, 0, NW_LAN_BIT_IPV4_ROUTE1_ADDR);
    expectAnswer(none, NW_OK, 1);
    EXPECT_EQ(shell("ip route show root 10.0.0.0/8 dev eth1 | wc -l"), "2\n");
}

TEST_F(Routes, SurviveARestart)
{
    expectAnswer(bothFamilies(), NW_OK, 1);
    const std::string kernel = kernelSnapshot();
    stopManager();
    startManager();
    EXPECT_EQ(kernel, kernelSnapshot());

    stopManager();
    shell("ip route flush proto 124 && ip -6 route flush proto 124 && ip address flush dev eth1");
    startManager();
    EXPECT_EQ(kernelRoutes("eth1"), bothRoutes);
}

TEST_F(Routes, ThoseOfAReplacedConfigurationGo)
{
    expectAnswer(bothFamilies(), NW_OK, 1);
    stopManager();
    configure(separatePorts);
    startManager();

    EXPECT_EQ(kernelRoutes("eth1"), Texts{});
}

/* One that the kernel refuses on start keeps neither the others nor the service away. */
TEST_F(Routes, StartWithoutTheOneThatIsRefused)
{
    expectAnswer(bothFamilies(), NW_OK, 1);
    stopManager();
    NW_LAN_CFG_DB_INFO_S lan = storedLan();
    put(lan.astPort[1].astIpv4Route[0].aucGateway, "192.168.99.9");
    putLan(lan);
    startManager();

    EXPECT_EQ(kernelRoutes("eth1"), Texts{bothRoutes[1]});
    EXPECT_NE(manager_->errorText().find("add route 10.1.0.0/16 via 192.168.99.9"),
              std::string::npos);
}

/* Old routes, new ones or parts of both are in the kernel when the manager dies. */
TEST_F(Routes, KilledWhileChanging)
{
    std::mt19937 random(9);
    LanRequest changes[2] = {bothFamilies(), {}};
    ipv4Route(changes[1], 1, 0, "10.4.0.0", "255.255.0.0", "192.168.20.8");
    ipv6Route(changes[1], 1, 1, "2001:db8:b::", 48, "2001:db8:20::8");
    const Texts expected[2] = {
        bothRoutes, {"10.4.0.0/16 via 192.168.20.8 202", "2001:db8:b::/48 via 2001:db8:20::8 203"}};
    expectAnswer(changes[0], NW_OK, 1);

    for (int round = 0; round < 10; round++) {
        SCOPED_TRACE(round);
        std::atomic<bool> isOver = false;
        std::thread sender([&] {
            for (unsigned step = 1; !isOver; step++) {
                call(changes[step % 2].bytes());
            }
        });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30000));
        manager_->signal(SIGKILL);
        EXPECT_EQ(manager_->wait(), 128 + SIGKILL);
        isOver = true;
        sender.join();
        startManager();

        const auto &stored = storedLan().astPort[1].astIpv4Route[0];
        const bool isFirst = std::ranges::equal(raw("10.1.0.0"), std::span(stored.aucAddr));
        EXPECT_EQ(kernelRoutes("eth1"), expected[isFirst ? 0 : 1]);
    }
}

namespace {

struct Conflict {
    const char *name;
    void (*fill)(LanRequest &request);
    std::uint32_t result;
    unsigned port;
};

/* clang-format off */
const Conflict conflicts[] = {
    {"RouteToTheOthersAddress", [](auto &request) { ipv4Route(request, 0, 0, "192.168.20.0", "255.255.255.0", "192.168.10.9"); }, NW_ERR_IPV4_ROUTE1, 0},
    {"Route2ToTheOthersAddress", [](auto &request) { ipv4Route(request, 0, 1, "192.168.0.0", "255.255.0.0", "192.168.10.9"); }, NW_ERR_IPV4_ROUTE2, 0},
    {"GatewayAtTheOthersAddress", [](auto &request) { ipv4Route(request, 0, 0, "10.9.0.0", "255.255.0.0", "192.168.20.9"); }, NW_ERR_IPV4_ROUTE1_GATEWAY, 0},
    {"RouteToTheOthersRoute", [](auto &request) { ipv4Route(request, 0, 1, "10.1.2.0", "255.255.255.0", "192.168.10.9"); }, NW_ERR_IPV4_ROUTE2, 0},
    {"RouteToTheWireless", [](auto &request) { ipv4Route(request, 1, 1, "172.16.0.0", "255.240.0.0", "192.168.20.9"); }, NW_ERR_IPV4_ROUTE2, 1},
    {"GatewayIsTheWireless", [](auto &request) { ipv4Route(request, 1, 1, "10.9.0.0", "255.255.0.0", "172.16.5.5"); }, NW_ERR_IPV4_ROUTE2_GATEWAY, 1},
    {"AddressInTheOthersRoute", [](auto &request) { request = ipv4Change(0, "10.1.2.3"); }, NW_ERR_IPV4_IN_ROUTE1, 0},
    {"Ipv6RouteToTheOthersAddress", [](auto &request) { ipv6Route(request, 0, 0, "2001:db8:20::", 48, "2001:db8:10::9"); }, NW_ERR_IPV6_ROUTE1, 0},
    {"Ipv6GatewayAtTheOthersAddress", [](auto &request) { ipv6Route(request, 0, 0, "2001:db8:c::", 48, "2001:db8:20::9"); }, NW_ERR_IPV6_ROUTE1_GATEWAY, 0},
    {"Ipv6RouteToTheOthersRoute", [](auto &request) { ipv6Route(request, 0, 1, "2001:db8:a:1::", 64, "2001:db8:10::9"); }, NW_ERR_IPV6_ROUTE2, 0},
};
/* clang-format on */

} // namespace

TEST_F(Routes, ConflictsAreRefusedWithTheirCodes)
{
    std::ofstream(std::filesystem::path(std::getenv("BMC_STATE_DIR")) / "wireless.json")
        << R"({"enabled": true, "ipv4": "172.16.5.5"})";
    LanRequest ipv6;
    ipv6.select(0, NW_LAN_BIT_IPV6_ENABLE | NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX);
    ipv6.port(0).ucIpv6Enable = 1;
    ipv6.port(0).ucIpv6Prefix = 64;
    put(ipv6.port(0).aucIpv6Addr, "2001:db8:10::2");
    expectAnswer(ipv6, NW_OK, 0);
    expectAnswer(bothFamilies(), NW_OK, 1);

    for (const Conflict &row : conflicts) {
        SCOPED_TRACE(row.name);
        LanRequest request;
        row.fill(request);
        expectUntouched(request, row.result, row.port);
    }
}

/* A conflict that is there already stops what could have made it, and nothing else. */
TEST_F(Routes, OldConflictStopsItsOwnRouteAndTheAddressItMeets)
{
    NW_LAN_CFG_DB_INFO_S lan = storedLan();
    auto &route = lan.astPort[0].astIpv4Route[0];
    route.ucState = 1;
    put(route.aucAddr, "10.1.0.0");
    put(route.aucMask, "255.255.0.0");
    put(route.aucGateway, "192.168.10.9");
    lan.astPort[1].astIpv4Route[1] = route;
    put(lan.astPort[1].astIpv4Route[1].aucGateway, "192.168.20.9");
    putLan(lan);

    LanRequest unrelated;
    ipv4Route(unrelated, 1, 0, "10.7.0.0", "255.255.0.0", "192.168.20.9");
    expectAnswer(unrelated, NW_OK, 1);

    LanRequest same;
    ipv4Route(same, 1, 1, "10.1.2.0", "255.255.255.0", "192.168.20.9");
    expectUntouched(same, NW_ERR_IPV4_ROUTE2, 1);
    expectUntouched(ipv4Change(1, "192.168.20.3"), NW_ERR_IPV4_ROUTE1, 1);

    LanRequest cure;
    ipv4Route(cure, 1, 1, "10.8.0.0", "255.255.0.0", "192.168.20.9");
    expectAnswer(cure, NW_OK, 1);
}

TEST_F(Routes, BondMeetsTheWirelessInterface)
{
    std::ofstream(std::filesystem::path(std::getenv("BMC_STATE_DIR")) / "wireless.json")
        << R"({"enabled": true, "ipv4": "172.16.5.5"})";
    stopManager();
    configure(bondedPorts);
    startManager();

    LanRequest conflict;
    ipv4Route(conflict, 2, 0, "172.16.0.0", "255.255.0.0", "192.168.30.9");
    expectUntouched(conflict, NW_ERR_IPV4_ROUTE1, 2);

    LanRequest gateway;
    ipv4Route(gateway, 2, 1, "10.1.0.0", "255.255.0.0", "172.16.5.99");
    expectUntouched(gateway, NW_ERR_IPV4_ROUTE2_GATEWAY, 2);

    LanRequest good;
    ipv4Route(good, 2, 0, "10.1.0.0", "255.255.0.0", "192.168.30.9");
    expectAnswer(good, NW_OK, 2);
    EXPECT_EQ(kernelRoutes("bond0"),
              (Texts{"10.1.0.0/16 via 192.168.30.9 204", "default via 192.168.30.1 102"}));
}

} // namespace nwtest
