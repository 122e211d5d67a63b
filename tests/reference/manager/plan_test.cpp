// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a port's record asks of the kernel, step by step. */
#include <gtest/gtest.h>

#include <algorithm>

#include <arpa/inet.h>

#include "plan.hpp"
#include "transaction.hpp"

namespace bmc::manager {

namespace {

Address address(const std::string &text, unsigned prefix)
{
    const int family = text.find(':') == std::string::npos ? AF_INET : AF_INET6;
    Address result{family, prefix, {}};
    EXPECT_EQ(inet_pton(family, text.c_str(), result.bytes.data()), 1) << text;
    return result;
}

const Address oldV4 = address("192.0.2.1", 24);
const Address newV4 = address("192.0.2.2", 24);
const Address oldV6 = address("2001:db8::1", 64);
const Address newV6 = address("2001:db8::2", 64);
const Address foreignV4 = address("192.0.2.9", 24);
const Route gateV4{address("0.0.0.0", 0), address("192.0.2.254", 32), 100};
const Route gateV6{address("::", 0), address("fe80::1", 128), 100};
const Route routeV4{address("10.0.0.0", 8), address("192.0.2.253", 32), 200};
const Route linkV6{address("2001:db8:5::", 48), address("::", 128), 201};

const PortState off{true, false, {}, {}};
const PortState idle{true, true, {}, {}};
const PortState notServed{false, false, {}, {}};

using Texts = std::vector<std::string>;

struct Row {
    const char *name;
    KernelState actual;
    std::vector<Address> managed;
    PortState wanted;
    Texts steps;
};

/* clang-format off */
const Row rows[] = {
    {"NothingToDo",     {true, {oldV4}, {}},        {oldV4},        {true, true, {oldV4}, {}}, {}},
    {"FirstStart",      {false, {}, {}},            {newV4},        {true, true, {newV4}, {gateV4}},
        {"enable link", "add address 192.0.2.2/24", "add route default via 192.0.2.254"}},
    {"NewBeforeOldV4",  {true, {oldV4}, {gateV4}},  {oldV4},        {true, true, {newV4}, {gateV4}},
        {"remove route default via 192.0.2.254", "add address 192.0.2.2/24", "remove address 192.0.2.1/24", "add route default via 192.0.2.254"}},
    {"OldBeforeNewV6",  {true, {oldV6}, {gateV6}},  {oldV6},        {true, true, {newV6}, {gateV6}},
        {"remove route default via fe80::1", "remove address 2001:db8::1/64", "add address 2001:db8::2/64", "add route default via fe80::1"}},
    {"OtherFamilyStays", {true, {oldV4, oldV6}, {gateV4, gateV6}}, {oldV4, oldV6}, {true, true, {newV4, oldV6}, {gateV6}},
        {"remove route default via 192.0.2.254", "add address 192.0.2.2/24", "remove address 192.0.2.1/24"}},
    {"GatewayAlone",    {true, {oldV4}, {}},        {oldV4},        {true, true, {oldV4}, {gateV4}}, {"add route default via 192.0.2.254"}},
    {"StaticRoutes",    {true, {oldV4}, {gateV4}},  {oldV4},        {true, true, {oldV4}, {gateV4, routeV4, linkV6}},
        {"add route 10.0.0.0/8 via 192.0.2.253", "add route 2001:db8:5::/48"}},
    {"StaticRouteGoes", {true, {oldV4}, {gateV4, routeV4}}, {oldV4}, {true, true, {oldV4}, {gateV4}},
        {"remove route 10.0.0.0/8 via 192.0.2.253"}},
    {"RoutesMoveWithTheAddress", {true, {oldV4}, {gateV4, routeV4, linkV6}}, {oldV4}, {true, true, {newV4}, {gateV4, routeV4, linkV6}},
        {"remove route default via 192.0.2.254", "remove route 10.0.0.0/8 via 192.0.2.253", "add address 192.0.2.2/24", "remove address 192.0.2.1/24",
         "add route default via 192.0.2.254", "add route 10.0.0.0/8 via 192.0.2.253"}},
    {"ForeignStays",    {true, {oldV4, foreignV4}, {}}, {oldV4},    idle, {"remove address 192.0.2.1/24"}},
    {"ForeignIsWanted", {true, {foreignV4}, {}},    {oldV4},        {true, true, {foreignV4}, {}}, {"add address 192.0.2.9/24"}},
    {"LostAddress",     {true, {}, {}},             {oldV4},        {true, true, {oldV4}, {}}, {"add address 192.0.2.1/24"}},
    {"LinkDownIsLast",  {true, {oldV4, oldV6}, {gateV4}}, {oldV4, oldV6}, off,
        {"remove route default via 192.0.2.254", "remove address 192.0.2.1/24", "remove address 2001:db8::1/64", "disable link"}},
    {"NotServedKeepsItsLink", {true, {oldV4}, {gateV4}}, {oldV4},   notServed,
        {"remove route default via 192.0.2.254", "remove address 192.0.2.1/24"}},
    {"DownAndNotServed", {false, {}, {}},           {},             notServed, {}},
};
/* clang-format on */

} // namespace

TEST(Plan, Steps)
{
    for (const Row &row : rows) {
        Texts steps;
        for (const Change &change : planChanges(row.actual, row.managed, row.wanted)) {
            steps.push_back(textOf(change));
        }
        EXPECT_EQ(steps, row.steps) << row.name;
    }
}

TEST(Plan, InverseOfAnInverse)
{
    for (const Action action : {Action::linkUp, Action::linkDown, Action::addAddress,
                                Action::removeAddress, Action::addRoute, Action::removeRoute}) {
        const Change change{action, oldV4, gateV4};
        EXPECT_NE(inverseOf(change), change);
        EXPECT_EQ(inverseOf(inverseOf(change)), change);
    }
}

TEST(Plan, ServedPorts)
{
    NW_IFC_STATE_DB_INFO_S state{};
    std::ranges::fill(state.aucPortPresent, 1);
    const auto served = [&state](std::uint8_t mode) {
        state.ucIfcState = mode;
        return std::vector{isServed(state, 0), isServed(state, 1), isServed(state, 2)};
    };
    EXPECT_EQ(served(0), (std::vector{true, true, false}));
    EXPECT_EQ(served(1), (std::vector{false, false, true}));
    EXPECT_EQ(served(2), (std::vector{false, false, false}));

    state.aucPortPresent[1] = 0;
    EXPECT_EQ(served(0), (std::vector{true, false, false}));
}

TEST(Plan, WantedFollowsTheEnables)
{
    NW_IFC_STATE_DB_INFO_S state{};
    std::ranges::fill(state.aucPortPresent, 1);
    NW_LAN_CFG_DB_INFO_S lan{};
    NW_LAN_CFG_PORT_S &port = lan.astPort[1];
    std::copy_n(oldV4.bytes.begin(), NW_IPV4_SIZE, port.aucIpv4Addr);
    std::ranges::copy(maskOf(24), port.aucIpv4Mask);
    std::copy_n(gateV4.gateway.bytes.begin(), NW_IPV4_SIZE, port.aucIpv4Gateway);
    std::ranges::copy(oldV6.bytes, port.aucIpv6Addr);
    port.ucIpv6Prefix = 64;

    const auto wanted = [&](std::uint8_t link, std::uint8_t v4, std::uint8_t v6) {
        port.ucLanEnable = link;
        port.ucIpv4Enable = v4;
        port.ucIpv6Enable = v6;
        return wantedState(state, lan, 1).addresses;
    };
    EXPECT_EQ(wanted(1, 1, 1), (std::vector{oldV4, oldV6}));
    EXPECT_EQ(wanted(1, 1, 0), (std::vector{oldV4}));
    EXPECT_EQ(wanted(1, 0, 1), (std::vector{oldV6}));
    EXPECT_TRUE(wanted(0, 1, 1).empty());
    wanted(1, 1, 1);
    EXPECT_EQ(wantedState(state, lan, 1).routes,
              (std::vector{Route{gateV4.destination, gateV4.gateway, 101}}));
    EXPECT_EQ(addressesIn(port), (std::vector{oldV4, oldV6}));
}

TEST(Plan, WantedStaticRoutes)
{
    NW_IFC_STATE_DB_INFO_S state{};
    std::ranges::fill(state.aucPortPresent, 1);
    NW_LAN_CFG_DB_INFO_S lan{};
    NW_LAN_CFG_PORT_S &port = lan.astPort[1];
    port.ucLanEnable = 1;
    const Address beyond = address("10.1.2.3", 32);
    std::copy_n(beyond.bytes.begin(), NW_IPV4_SIZE, port.astIpv4Route[1].aucAddr);
    std::ranges::copy(maskOf(16), port.astIpv4Route[1].aucMask);
    std::copy_n(gateV4.gateway.bytes.begin(), NW_IPV4_SIZE, port.astIpv4Route[1].aucGateway);
    std::ranges::copy(address("2001:db8:5::1", 128).bytes, port.astIpv6Route[0].aucAddr);
    port.astIpv6Route[0].ucPrefix = 48;

    const auto wanted = [&](std::uint8_t enable, std::uint8_t valid) {
        port.ucIpv4Enable = port.ucIpv6Enable = enable;
        port.astIpv4Route[1].ucState = port.astIpv6Route[0].ucState = valid;
        return wantedState(state, lan, 1).routes;
    };
    /* The destination without its host bits; metrics 200 + 2 * port + number. */
    EXPECT_EQ(wanted(1, 1), (std::vector{Route{address("10.1.0.0", 16), gateV4.gateway, 203},
                                         Route{linkV6.destination, linkV6.gateway, 202}}));
    EXPECT_TRUE(wanted(1, 0).empty());
    EXPECT_TRUE(wanted(0, 1).empty());
    port.ucLanEnable = 0;
    EXPECT_TRUE(wanted(1, 1).empty());
}

TEST(TransactionTest, UndoesInReverseOrderUnlessCommitted)
{
    std::string undone;
    {
        Transaction transaction;
        transaction.undoWith([&] { undone += "a"; });
        transaction.undoWith([] { throw std::runtime_error("cannot"); });
        transaction.undoWith([&] { undone += "c"; });
    }
    EXPECT_EQ(undone, "ca");

    {
        Transaction transaction;
        transaction.undoWith([&] { undone += "x"; });
        transaction.commit();
    }
    EXPECT_EQ(undone, "ca");
}

TEST(AddressTest, SubnetsAndMasks)
{
    EXPECT_TRUE(isInSubnetOf(newV4, oldV4));
    EXPECT_FALSE(isInSubnetOf(address("192.0.3.1", 24), oldV4));
    EXPECT_TRUE(isInSubnetOf(address("192.0.3.1", 24), address("192.0.2.1", 23)));
    EXPECT_FALSE(isInSubnetOf(newV6, oldV4));
    EXPECT_EQ(networkOf(address("10.255.255.255", 9)), address("10.128.0.0", 9));
    EXPECT_EQ(networkOf(address("2001:db8:ffff::1", 33)), address("2001:db8:8000::", 33));
    EXPECT_EQ(networkOf(gateV6.gateway), gateV6.gateway);
    for (unsigned prefix = 0; prefix <= 32; prefix++) {
        EXPECT_EQ(prefixOf(maskOf(prefix).data()), prefix);
    }
    EXPECT_EQ(textOf(oldV6), "2001:db8::1/64");
    EXPECT_EQ(textOf(gateV6.gateway), "fe80::1");
}

} // namespace bmc::manager
