// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class CheckRoutes : public samples::ConfiguredTest {
protected:
    /* eth0 gets a route into the network of eth1. */
    void storeConflict()
    {
        NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
        auto &route = record.astPort[0].astIpv4Route[1];
        route.ucState = 1;
        samples::storeIpv4(route.aucAddr, "192.168.20.0");
        samples::storeIpv4(route.aucMask, "255.255.255.0");
        samples::storeIpv4(route.aucGateway, "192.168.10.9");
        platform.setRecord(NW_KEY_LAN_CFG, record);
    }
};

TEST_F(CheckRoutes, FindsNothingInAGoodRecord)
{
    const auto ran = samples::run({"check", "routes", "0"});

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, "eth0: addresses: no conflict\neth0: routes: no conflict\n");
    EXPECT_EQ(samples::run({"--json", "check", "routes", "eth1"}).json(),
              nlohmann::json::parse(R"({"port": "eth1", "index": 1, "valid": true, "checks": [
        {"check": "addresses", "valid": true, "code": null, "name": null, "meaning": null},
        {"check": "routes", "valid": true, "code": null, "name": null, "meaning": null}]})"));
}

/* The route is wrong where it is configured, the address where it is met. */
TEST_F(CheckRoutes, TellsThePortsConflicts)
{
    storeConflict();

    const auto eth0 = samples::run({"check", "routes", "eth0"});
    EXPECT_EQ(eth0.status, Exit::refused);
    EXPECT_EQ(eth0.out,
              "eth0: addresses: no conflict\n"
              "eth0: routes: 0x1e000a4a (NW_ERR_IPV4_ROUTE2): IPv4 static route 2 lies in "
              "the segment of an address, of another route or of the wireless interface\n");

    const auto document = samples::run({"--json", "check", "routes", "eth1"}).json();
    EXPECT_EQ(document["valid"], false);
    EXPECT_EQ(document["checks"][0]["valid"], false);
    EXPECT_EQ(document["checks"][0]["code"], "0x1e000a52");
    EXPECT_EQ(document["checks"][0]["name"], "NW_ERR_IPV4_IN_ROUTE2");
    EXPECT_EQ(document["checks"][1]["valid"], true);
}

TEST_F(CheckRoutes, MeetsTheWirelessInterfaceWhileBonded)
{
    auto interfaces = samples::interfaces();
    interfaces.ucIfcState = NW_IFC_STATE_ADAPTIVE;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);
    auto record = samples::lanRecord();
    record.astPort[2].ucIpv4Enable = 1;
    record.astPort[2].astIpv4Route[0].ucState = 1;
    samples::storeIpv4(record.astPort[2].astIpv4Route[0].aucAddr, "10.1.0.0");
    samples::storeIpv4(record.astPort[2].astIpv4Route[0].aucMask, "255.255.0.0");
    platform.setRecord(NW_KEY_LAN_CFG, record);
    platform.setWireless(true, "10.1.2.3");

    EXPECT_THAT(samples::run({"check", "routes", "bond0"}).out,
                HasSubstr("routes: 0x1e000a49 (NW_ERR_IPV4_ROUTE1)"));
    EXPECT_THAT(samples::run({"check", "routes", "eth0"}).err,
                HasSubstr("not served in network mode active-standby"));
}

TEST_F(CheckRoutes, NeedsTheRecord)
{
    platform.failGet(NW_KEY_LAN_CFG, -5);

    EXPECT_EQ(samples::run({"check", "routes", "eth0"}).status, Exit::internal);
}

class SetRoute : public samples::ConfiguredTest {};

TEST_F(SetRoute, RefusesOneIntoTheOtherPortsNetworkBeforeSending)
{
    const auto ran = samples::run({"lan", "set", "eth0", "--ipv4-gateway", "192.168.10.1",
                                   "--ipv4-route2", "192.168.0.0/16,192.168.10.9"});

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.err, HasSubstr("nwctl: --ipv4-route2 '192.168.0.0/16,192.168.10.9': the change "
                                   "would make two networks overlap\nnwctl: result 0x1e000a4a "));
    EXPECT_THAT(platform.callsTo("MRPC_Call"), IsEmpty());
}

class Discovery : public samples::ConfiguredTest {
protected:
    /* libc reads its resolver's settings once and keeps them: not for the heap watch to find. */
    static void SetUpTestSuite()
    {
        ASSERT_EQ(samples::run({"resolve", "192.0.2.7"}).status, Exit::success);
    }
};

/* A name of both families would have libc note the machine's addresses anew. */
TEST_F(Discovery, ResolvesAnAddress)
{
    EXPECT_EQ(samples::run({"resolve", "2001:db8::7"}).out, "2001:db8::7\n");
    EXPECT_EQ(samples::run({"resolve", "192.0.2.7", "--json"}).json(),
              (nlohmann::json{{"name", "192.0.2.7"}, {"address", "192.0.2.7"}}));
}

TEST_F(Discovery, TellsWhatIsNotFound)
{
    const auto error = samples::run({"gateway-mac", "eth0", "--json"}).json()["error"];
    EXPECT_EQ(error["status"], 6);
    EXPECT_EQ(error["reason"], "the port has no IPv4 gateway");

    const auto ran = samples::run({"ntp", "eth1"});
    EXPECT_EQ(ran.status, Exit::notFound);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_EQ(ran.err, "nwctl: PORT 'eth1': DHCP gave the port no NTP server\n");
}

} // namespace
} // namespace nwctl
