// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/ways_in.hpp"

#include <functional>
#include <sstream>

#include <gtest/gtest.h>

#include "common/address.hpp"
#include "samples.hpp"
#include "settings/manager_bytes.hpp"
#include "settings/refusal.hpp"

namespace bmc::settings {
namespace {

Address address(const char *text)
{
    const int family = std::string(text).find(':') == std::string::npos ? AF_INET : AF_INET6;
    return parseAddress(family, text).value();
}

/* Both families on all ports, which are on; ports 0 and 1 are served. */
Configuration reachable()
{
    Configuration configuration = blankConfiguration();
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
        configuration.state.aucPortPresent[port] = 1;
        std::snprintf(configuration.state.acIfcName[port],
                      sizeof(configuration.state.acIfcName[port]), "port%u", port);
        entry.ucLanEnable = entry.ucIpv4Enable = entry.ucIpv6Enable = 1;
        const auto v4 = address("192.0.2.1").bytes;
        const auto v6 = address("2001:db8::1").bytes;
        std::copy_n(v4.begin(), NW_IPV4_SIZE, entry.aucIpv4Addr);
        std::ranges::copy(v6, entry.aucIpv6Addr);
        entry.aucIpv4Addr[3] = entry.aucIpv6Addr[15] = static_cast<std::uint8_t>(port + 1);
        putArp(entry, {arpAll, 0, 0, 0});
    }
    return configuration;
}

std::string waysOf(const Configuration &configuration)
{
    std::string text;
    for (const WayIn &way : waysIn(configuration)) {
        text += way.interface + " " + textOf(way.address) + "; ";
    }
    return text;
}

struct Row {
    const char *name;
    std::function<void(Configuration &, NW_LAN_CFG_PORT_S &)> change; /* of port 1 */
    const char *ways;                                                 /* what is left */
};

constexpr const char *portZero = "port0 192.0.2.1; port0 2001:db8::1; ";

const Row rows[] = {
    {"Nothing", [](auto &, auto &) {}, "port1 192.0.2.2; port1 2001:db8::2; "},
    {"Off", [](auto &, auto &port) { port.ucLanEnable = 0; }, ""},
    {"Ipv4Off", [](auto &, auto &port) { port.ucIpv4Enable = 0; }, "port1 2001:db8::2; "},
    {"Ipv6Off", [](auto &, auto &port) { port.ucIpv6Enable = 0; }, "port1 192.0.2.2; "},
    {"NoIpv4", [](auto &, auto &port) { std::ranges::fill(port.aucIpv4Addr, std::uint8_t{0}); },
     "port1 2001:db8::2; "},
    {"NoIpv6", [](auto &, auto &port) { std::ranges::fill(port.aucIpv6Addr, std::uint8_t{0}); },
     "port1 192.0.2.2; "},
    {"NoAnswers",
     [](auto &, auto &port) {
         putArp(port, {arpAnnouncements, 0, 0, 0});
     },
     "port1 2001:db8::2; "},
    {"NotPresent", [](auto &configuration, auto &) { configuration.state.aucPortPresent[1] = 0; },
     ""},
};

class WaysIn : public ::testing::TestWithParam<Row> {};

} // namespace

TEST_P(WaysIn, AreThoseThatAnswer)
{
    Configuration configuration = reachable();
    GetParam().change(configuration, configuration.lan.astPort[1]);
    EXPECT_EQ(waysOf(configuration), std::string(portZero) + GetParam().ways);
}

INSTANTIATE_TEST_SUITE_P(Rows, WaysIn, ::testing::ValuesIn(rows),
                         [](const auto &test) { return test.param.name; });

TEST(RequireWayIn, OneHasToBeLeft)
{
    const auto linked = [](std::optional<bool> zero, std::optional<bool> one) {
        return [=](const std::string &interface) { return interface == "port0" ? zero : one; };
    };
    const Configuration before = reachable();
    Configuration after = before;
    after.lan.astPort[1].ucLanEnable = 0;
    EXPECT_NO_THROW(requireWayIn(before, after, linked(true, true)));
    EXPECT_NO_THROW(requireWayIn(before, after, linked(std::nullopt, true)));
    EXPECT_THROW(requireWayIn(before, after, linked(false, true)), Refusal);
    EXPECT_NO_THROW(requireWayIn(before, after, linked(false, false)));
    after.state.ucIfcState = 1; /* the bond's link is not known before it is up */
    EXPECT_NO_THROW(requireWayIn(before, after, linked(true, std::nullopt)));
    after.lan.astPort[NW_PORT_BOND0].ucLanEnable = 0;
    EXPECT_THROW(requireWayIn(before, after, linked(true, std::nullopt)), Refusal);
    EXPECT_EQ(knownLink("missing7"), false);
    EXPECT_NO_THROW(requireWayIn(after, after, linked(true, true)));
}

TEST(ConnectedIn, EstablishedConnectionsOfOthers)
{
    std::istringstream lines(
        "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid\n"
        "   0: 020200C0:0016 090200C0:C350 01 00000000:00000000 00:00000000 00000000     0\n"
        "   1: 030200C0:0016 00000000:0000 0A 00000000:00000000 00:00000000 00000000     0\n"
        "   7: 060200C0:D431 090200C0:0050 01 00000000:00000000 00:00000000 00000000     0\n"
        "   2: 040200C0:0016 040200C0:C351 01 00000000:00000000 00:00000000 00000000     0\n"
        "   3: 0000000000000000FFFF0000050200C0:0016 0000000000000000FFFF0000090200C0:C350 01\n"
        "   4: B80D0120000000000000000002000000:0016 B80D0120000000000000000009000000:C350 01\n"
        "   5: zz0200C0:0016 090200C0:C350 01\n"
        "   6: 02:0016 090200C0:C350 01\n"
        "junk\n\n");
    EXPECT_EQ(connectedIn(lines),
              (std::vector{address("192.0.2.2"), address("192.0.2.5"), address("2001:db8::2")}));
}

TEST(CutOff, AddressesThatGoWhileSomebodyIsConnected)
{
    const Configuration before = reachable();
    Configuration after = before;
    after.lan.astPort[1].aucIpv4Addr[3] = 99;
    const std::vector all{address("192.0.2.1"), address("192.0.2.2"), address("2001:db8::2"),
                          address("203.0.113.1")};
    EXPECT_EQ(cutOff(before, after, all), std::vector{address("192.0.2.2")});
    EXPECT_TRUE(cutOff(before, after, {address("192.0.2.1")}).empty());
    EXPECT_TRUE(cutOff(before, before, all).empty());
    after = before;
    exchangeInterfaces(after.state);
    EXPECT_EQ(cutOff(before, after, all).size(), 3U);
}

TEST(Touches, ThePortAndWhatBelongsToIt)
{
    const Configuration before = reachable();
    const auto changed = [&](const auto &change) {
        Configuration after = before;
        change(after);
        return after;
    };
    const Configuration lan = changed([](auto &after) { after.lan.astPort[1].ucLanEnable = 0; });
    EXPECT_TRUE(touches(before, lan, 1));
    EXPECT_FALSE(touches(before, lan, 0));
    EXPECT_FALSE(touches(before, lan, NW_PORT_COUNT));
    const Configuration an = changed([](auto &after) {
        after.an.astPort[1].aucAnReserved[0] = 1;
        after.an.astPort[1].ucSpeed ^= 1;
    });
    EXPECT_TRUE(touches(before, an, 1));
    EXPECT_TRUE(touches(before, an, NW_PORT_BOND0));
    EXPECT_FALSE(touches(before, an, 0));
    EXPECT_TRUE(touches(before, changed([](auto &after) { after.state.ucIfcState = 1; }), 0));
    EXPECT_TRUE(touches(before, changed([](auto &after) { switchoverIn(after.state) = 1; }), 0));
    EXPECT_FALSE(
        touches(before, changed([](auto &after) { after.hostName.ucHostNameMode = 1; }), 0));
    EXPECT_FALSE(touches(before, before, 0));
}

} // namespace bmc::settings
