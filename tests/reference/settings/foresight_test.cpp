// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Which gateways are told to be refused, and which are left to the kernel. */
#include "settings/foresight.hpp"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "samples.hpp"
#include "settings/change.hpp"

namespace bmc::settings {

namespace {

constexpr unsigned eth1 = 1;

OnLink onLink(const char *interface, const char *network, unsigned prefix)
{
    Address address = *parseAddress(AF_INET6, network);
    address.prefix = prefix;
    return {interface, address};
}

/* The key and the text of its new value. */
using Given = std::pair<const char *, const char *>;

Configuration with(const Configuration &present, const std::vector<Given> &given)
{
    Change change;
    for (const auto &[key, text] : given) {
        assign(change, settingAt(Section::lan, key), eth1, text);
    }
    return edited(present, change, NW_WIFI_ADDR_S{});
}

Configuration running()
{
    return with(sampleConfiguration(),
                {{"lan", "on"}, {"ipv6", "on"}, {"ipv6", "2001:db8:20::2/64"}});
}

/* Key of the setting that is to blame; empty without refusal. */
std::string refusedKey(const Configuration &before, const Configuration &after,
                       const std::optional<std::vector<OnLink>> &kernel)
{
    try {
        requireGateways(before, after, kernel);
    } catch (const Refusal &refusal) {
        EXPECT_EQ(refusal.code(), static_cast<std::uint32_t>(Result::kernelRefused));
        EXPECT_EQ(refusal.section(), Section::lan);
        EXPECT_EQ(refusal.port(), eth1);
        return refusal.setting()->key;
    }
    return "";
}

struct Row {
    std::vector<Given> given;
    const char *refused;
};

const std::vector<OnLink> kernel{onLink("eth1", "2001:db8:98::", 64),
                                 onLink("eth0", "2001:db8:99::", 64), onLink("eth1", "ff00::", 8)};

/* clang-format off */
const Row rows[] = {
    {{{"ipv6-gateway", "2001:db8:20::1"}}, ""},
    {{{"ipv6-gateway", "2001:db8:20::2"}}, "ipv6-gateway"},
    {{{"ipv6-gateway", "fe80::1"}}, ""},
    {{{"ipv6-gateway", "2001:db8:98::1"}}, ""}, /* by a network that somebody else has made */
    {{{"ipv6-gateway", "2001:db8:99::1"}}, "ipv6-gateway"},
    {{{"ipv6-gateway", "off"}}, ""},
    {{{"ipv6-gateway", "2001:db8:99::1"}, {"ipv6", "off"}}, ""},
    {{{"ipv6-gateway", "2001:db8:99::1"}, {"lan", "off"}}, ""},
    {{{"ipv6-gateway", "2001:db8:99::1"}, {"ipv6", "2001:db8:99::2/64"}}, ""},
    {{{"ipv6-gateway", "2001:db8:21::1"}, {"ipv6", "2001:db8:20::2/32"}}, ""},
    {{{"ipv6-route1", "2001:db8:7::/64,2001:db8:20::1"}}, ""},
    {{{"ipv6-route1", "2001:db8:7::/64,2001:db8:7::1"}}, "ipv6-route1"},
    {{{"ipv6-route2", "2001:db8:7::/64,2001:db8:20::2"}}, "ipv6-route2"},
};
/* clang-format on */

} // namespace

TEST(Foresight, NamesTheGatewayThatCannotBe)
{
    for (const Row &row : rows) {
        const Configuration after = with(running(), row.given);
        EXPECT_EQ(refusedKey(running(), after, kernel), row.refused) << row.given.front().second;
    }
}

TEST(Foresight, LeavesToTheKernelWhatIsNotKnownOfIt)
{
    const Configuration outside = with(running(), {{"ipv6-gateway", "2001:db8:99::1"}});
    EXPECT_EQ(refusedKey(running(), outside, std::nullopt), "");
    const Configuration own = with(running(), {{"ipv6-gateway", "2001:db8:20::2"}});
    EXPECT_EQ(refusedKey(running(), own, std::nullopt), "ipv6-gateway");
}

/* A router may announce its network once the port is up. */
TEST(Foresight, LeavesAPortThatGoesUpToTheKernel)
{
    const Configuration down =
        with(running(), {{"lan", "off"}, {"ipv6-gateway", "2001:db8:99::1"}});
    EXPECT_EQ(refusedKey(down, with(down, {{"lan", "on"}}), kernel), "");
}

TEST(Foresight, JudgesWhatTheChangeTouches)
{
    const Configuration before = with(running(), {{"ipv6-gateway", "2001:db8:99::1"}});
    EXPECT_EQ(refusedKey(before, with(before, {{"hop-limit", "9"}}), kernel), "");
    EXPECT_EQ(refusedKey(before, with(before, {{"ipv6", "2001:db8:21::2/64"}}), kernel),
              "ipv6-gateway");
}

TEST(Foresight, AStaticRouteOnTheLinkLeadsToAGateway)
{
    Configuration after = with(running(), {{"ipv6-gateway", "2001:db8:7::1"}});
    NW_LAN_CFG_IPV6_ROUTE_S &route = after.lan.astPort[eth1].astIpv6Route[0];
    route.ucState = 1;
    route.ucPrefix = 64;
    const Address destination = *parseAddress(AF_INET6, "2001:db8:7::");
    std::ranges::copy(destination.bytes, route.aucAddr);
    EXPECT_EQ(refusedKey(running(), after, kernel), "");
}

/* Lines of a running kernel. */
TEST(Foresight, ReadsTheKernelsNetworks)
{
    std::istringstream routes(
        "20010db8002000000000000000000000 40 00000000000000000000000000000000 00 "
        "00000000000000000000000000000000 00000100 00000001 00000000 00000001     eth1\n"
        "00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
        "fd000000000000000000000000000001 00000400 00000002 00000000 00000003     eth0\n"
        "00000000000000000000000000000000 00 00000000000000000000000000000000 00 "
        "00000000000000000000000000000000 ffffffff 00000001 00000000 00200200       lo\n"
        "not a route\n");
    EXPECT_EQ(onLinkIn(routes), std::vector{onLink("eth1", "2001:db8:20::", 64)});
}

} // namespace bmc::settings
