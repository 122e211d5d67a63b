// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Static routes from the command line to the traffic. */
#include "far_host.hpp"
#include "system.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace e2e {

using support::canConnect;
using support::FarHost;
using support::hasCaller;

using nlohmann::json;
using ::testing::HasSubstr;

namespace {

constexpr std::uint16_t port = 4711;
constexpr const char *beyondV4 = "10.1.0.1";
constexpr const char *beyondV6 = "2001:db8:a::1";

} // namespace

/* Behind either port is a host, and behind both hosts the same address: only the route tells which
 * of them is called. */
class Routes : public System {
protected:
    void SetUp() override
    {
        System::SetUp();
        left.own("192.168.10.9/24");
        right.own("192.168.20.9/24");
        right.own("2001:db8:20::9/64");
        for (const FarHost *host : {&left, &right}) {
            host->ownBehind(std::string(beyondV4) + "/32");
        }
        right.ownBehind(std::string(beyondV6) + "/128");
    }

    FarHost left{"peer0"};
    FarHost right{"peer1"};
};

TEST_F(Routes, LeadTheTrafficToTheirHost)
{
    const int leftListener = left.listenOn(beyondV4, port);
    const int rightListener = right.listenOn(beyondV4, port);
    EXPECT_FALSE(canConnect(beyondV4, port));

    ASSERT_EQ(nwctl("lan set eth1 --ipv4-route1 10.1.0.0/16,192.168.20.9").status, 0);
    EXPECT_TRUE(canConnect(beyondV4, port));
    EXPECT_TRUE(hasCaller(rightListener));

    ASSERT_EQ(nwctl("lan set eth1 --ipv4-route1 off").status, 0);
    EXPECT_FALSE(canConnect(beyondV4, port));

    ASSERT_EQ(nwctl("lan set eth0 --ipv4-route2 10.1.0.0/16,192.168.10.9").status, 0);
    EXPECT_TRUE(canConnect(beyondV4, port));
    EXPECT_TRUE(hasCaller(leftListener));
    EXPECT_FALSE(hasCaller(rightListener));
    close(leftListener);
    close(rightListener);
}

TEST_F(Routes, LeadIpv6TrafficToo)
{
    const int listener = right.listenOn(beyondV6, port);
    ASSERT_TRUE(eventually(
        [] { return run("ip -6 address show dev eth1 | grep -q tentative").status != 0; }));
    EXPECT_FALSE(canConnect(beyondV6, port));

    ASSERT_EQ(nwctl("lan set eth1 --ipv6-route2 2001:db8:a::/48,2001:db8:20::9").status, 0);
    EXPECT_TRUE(canConnect(beyondV6, port));
    EXPECT_TRUE(hasCaller(listener));
    close(listener);
}

TEST_F(Routes, OutliveTheManager)
{
    ASSERT_EQ(nwctl("lan set eth1 --ipv4-route1 10.1.0.0/16,192.168.20.9").status, 0);
    manager().kill();
    shell("ip route flush proto 124");
    const int listener = right.listenOn(beyondV4, port);
    EXPECT_FALSE(canConnect(beyondV4, port));

    startManager();

    EXPECT_TRUE(canConnect(beyondV4, port));
    close(listener);
}

TEST_F(Routes, AreShownAndChecked)
{
    const Outcome set = nwctl("lan set eth1 --ipv4-route1 10.1.0.0/16,192.168.20.9 "
                              "--ipv6-route1 2001:db8:a::/48,2001:db8:20::9");
    ASSERT_EQ(set.status, 0) << set.errors;
    EXPECT_THAT(set.output, HasSubstr("10.1.0.0"));

    const json shown = json::parse(nwctl("--json lan show eth1").output)["ports"][0];
    EXPECT_EQ(shown["ipv4"]["routes"][0]["destination"], "10.1.0.0");
    EXPECT_EQ(shown["ipv4"]["routes"][0]["gateway"], "192.168.20.9");
    EXPECT_EQ(shown["ipv6"]["routes"][0]["prefix"], 48);

    const Outcome good = nwctl("check routes eth1");
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.output, "eth1: addresses: no conflict\neth1: routes: no conflict\n");

    /* A conflict that is stored already: the wireless interface joins the route's network. */
    shell(R"(echo '{"enabled": true, "ipv4": "10.1.5.5"}' > $BMC_STATE_DIR/wireless.json)");
    const Outcome bad = nwctl("check routes eth1");
    shell("rm $BMC_STATE_DIR/wireless.json");
    EXPECT_EQ(bad.status, 3);
    EXPECT_THAT(bad.output, HasSubstr("eth1: routes: 0x1e000a49 (NW_ERR_IPV4_ROUTE1)"));
}

struct Conflict {
    const char *name;
    const char *arguments;
    const char *option;
    const char *code;
};

void PrintTo(const Conflict &row, std::ostream *stream)
{
    *stream << row.name;
}

class RefusedRoute : public System, public ::testing::WithParamInterface<Conflict> {};

/* Refused by nwctl, and by the manager when nwctl doesn't check; nothing changes. */
TEST_P(RefusedRoute, IsRefusedOnBothSides)
{
    const Bytes record = storedLanRecord();
    const std::string routes = shell("ip route; ip -6 route");
    for (const auto &[suffix, status] : {std::pair{"", 3}, std::pair{" --no-check", 4}}) {
        const Outcome result =
            nwctl(std::string("--json lan set ") + GetParam().arguments + suffix);
        EXPECT_EQ(result.status, status);
        const json error = json::parse(result.output)["error"];
        EXPECT_EQ(error["option"], GetParam().option);
        EXPECT_EQ(error["code"], GetParam().code);
    }
    EXPECT_EQ(storedLanRecord(), record);
    EXPECT_EQ(shell("ip route; ip -6 route"), routes);
}

const Conflict conflicts[] = {
    {"OthersAddress", "eth0 --ipv4-route1 192.168.20.0/24,192.168.10.9", "--ipv4-route1",
     "0x1e000a49"},
    {"GatewayAtTheOther", "eth0 --ipv4-route2 10.1.0.0/16,192.168.20.9", "--ipv4-route2",
     "0x1e000a56"},
    {"Ipv6OthersAddress",
     "eth0 --ipv6 2001:db8:10::2/64 --ipv6 on --ipv6-route1 2001:db8:20::/48,2001:db8:10::9",
     "--ipv6-route1", "0x1e000a4d"},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedRoute, ::testing::ValuesIn(conflicts),
                         [](const auto &test) { return test.param.name; });

} // namespace e2e
