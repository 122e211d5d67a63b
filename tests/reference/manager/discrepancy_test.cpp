// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/state/discrepancy.hpp"

#include <gtest/gtest.h>
#include <linux/ethtool.h>

#include "worlds.hpp"

namespace nwtest {

namespace {

using namespace bmc::manager;

/* What is wanted of one thing, what is there of it, and what is told. */
struct Row {
    const char *name;
    Items wanted;
    Items there;
    std::vector<Discrepancy> told;
};

Item value(Kind kind, const std::string &interface, std::uint64_t number)
{
    return {kind, interface, {}, {}, {}, number};
}

Item file(Kind kind, const std::string &text)
{
    return {kind, {}, text};
}

const Item ownAddress = addressOn("eth1", "192.0.2.1", 24);
const Item others = addressOn("eth1", "203.0.113.9", 24);
const std::uint64_t fast = linkModeNumber(false, DUPLEX_FULL, 100);
const std::uint64_t slow = linkModeNumber(false, DUPLEX_HALF, 10);
const std::uint64_t automatic = linkModeNumber(true, 0, 0);

/* clang-format off */
const Row rows[] = {
    {"Nothing", {ownAddress}, {ownAddress}, {}},
    {"Missing", {ownAddress}, {}, {{"eth1", "address 192.0.2.1/24", ""}}},
    {"TooMuch", {}, {ownAddress}, {{"eth1", "", "address 192.0.2.1/24"}}},
    {"SomebodyElses", {}, {others}, {{"eth1", "", "address 203.0.113.9/24", true}}},
    {"LinkLocal", {}, {addressOn("eth1", "fe80::1", 64)}, {}},
    {"OfNoPort", {}, {addressOn("usb0", "203.0.113.9", 24)}, {}},
    {"LinkDown", {value(Kind::link, "eth1", 1)}, {value(Kind::link, "eth1", 0)}, {{"eth1", "link up", "link down"}}},
    {"Unread", {value(Kind::hopLimit, "eth1", 7)}, {}, {{"eth1", "hop_limit 7", ""}}},
    {"Number", {value(Kind::arpIgnore, "eth1", 8)}, {value(Kind::arpIgnore, "eth1", 0)}, {{"eth1", "arp_ignore 8", "arp_ignore 0"}}},
    {"LinkMode", {value(Kind::linkMode, "eth1", fast)}, {value(Kind::linkMode, "eth1", slow)}, {{"eth1", "link mode 100 full", "link mode 10 half"}}},
    {"LinkModeAutomatic", {value(Kind::linkMode, "eth1", automatic)}, {value(Kind::linkMode, "eth1", fast)}, {{"eth1", "link mode automatic", "link mode 100 full"}}},
    {"HostName", {file(Kind::hostName, "one")}, {file(Kind::hostName, "two")}, {{"", "host name one", "host name two"}}},
    {"File", {file(Kind::resolver, "a\nb\n")}, {file(Kind::resolver, "")}, {{"", "resolv.conf a; b", "resolv.conf none"}}},
};
/* clang-format on */

class Discrepancies : public ::testing::TestWithParam<Row> {};

} // namespace

TEST_P(Discrepancies, AreToldAsTheyAre)
{
    World world;
    world.items = GetParam().wanted;
    world.ports = {{"eth0", 0}, {"eth1", 1}};
    Actual actual;
    actual.links["eth1"] = {};
    actual.items = GetParam().there;
    EXPECT_EQ(discrepancies(world, actual, {ownAddress}), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(Rows, Discrepancies, ::testing::ValuesIn(rows),
                         [](const auto &test) { return test.param.name; });

} // namespace nwtest
