// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every showing command: its text and its document, word for word. */
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Golden {
    const char *name;
    const char *line;
    const char *text;
    const char *json;
};

class ShownSetting : public samples::ConfiguredTest, public ::testing::WithParamInterface<Golden> {
protected:
    ShownSetting()
    {
        NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
        record.astPort[1].stVlan.usVlanid = 300;
        record.astPort[1].stVlan.aucReserved0[0] = 1;
        record.astPort[1].stVlan.aucReserved5[0] = 5;
        record.astPort[1].aucReserved787[0] = 3;
        record.astPort[1].aucReserved787[1] = 20;
        record.astPort[1].aucReserved787[2] = 1;
        platform.setRecord(NW_KEY_LAN_CFG, record);

        NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
        interfaces.ucIfcValue1 = 1;
        platform.setRecord(NW_KEY_IFC_STATE, interfaces);
    }
};

TEST_P(ShownSetting, AsText)
{
    const auto ran = samples::runLine(GetParam().line);

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, GetParam().text);
    EXPECT_THAT(ran.err, IsEmpty());
}

TEST_P(ShownSetting, AsJson)
{
    EXPECT_EQ(samples::runLine(std::string(GetParam().line) + " --json").json(),
              nlohmann::json::parse(GetParam().json));
}

/* clang-format off */
const Golden goldens[] = {
    {"HostName", "hostname show",
     "  Mode          manual\n"
     "  Host name     bmc-1\n"
     "  BMC name      rack-7\n",
     R"({"mode": "manual", "name": "bmc-1", "bmcName": "rack-7"})"},
    {"DnsOfAPort", "dns show eth1",
     "  Port          eth1, shared port\n"
     "  Index         1\n"
     "  IPv4 mode     manual\n"
     "  IPv4 domain   rack1.example.net\n"
     "  IPv4 servers  192.168.20.53, -, 192.168.20.54\n"
     "  IPv6 mode     disabled\n"
     "  IPv6 domain   -\n"
     "  IPv6 servers  -, -, -\n",
     R"({"ports": [{"port": "eth1", "role": "shared", "index": 1, "ipv4Mode": "manual", "ipv4Domain": "rack1.example.net",
         "ipv4Servers": ["192.168.20.53", null, "192.168.20.54"], "ipv6Mode": "disabled",
         "ipv6Domain": null, "ipv6Servers": [null, null, null]}]})"},
    {"Lldp", "lldp show",
     "  LLDP          enabled\n"
     "  Work mode     txrx\n",
     R"({"enabled": true, "workMode": "txrx"})"},
    {"Mode", "mode show",
     "  Mode          separate\n"
     "  Ports served  eth0, eth1\n",
     R"({"mode": "separate", "ports": ["eth0", "eth1"]})"},
    {"Switchover", "switchover show",
     "  Switchover    enabled\n",
     R"({"enabled": true})"},
    {"ShareLink", "share-link show",
     "  Shared link   shared\n",
     R"({"mode": "shared"})"},
    {"VlanOfBothPorts", "vlan show",
     "  Port          eth0, dedicated port\n"
     "  Index         0\n"
     "  VLAN          disabled\n"
     "  VLAN ID       -\n"
     "  VLAN priority 0\n"
     "\n"
     "  Port          eth1, shared port\n"
     "  Index         1\n"
     "  VLAN          enabled\n"
     "  VLAN ID       300\n"
     "  VLAN priority 5\n",
     R"({"ports": [{"port": "eth0", "role": "dedicated", "index": 0, "enabled": false, "id": null, "priority": 0},
                   {"port": "eth1", "role": "shared", "index": 1, "enabled": true, "id": 300, "priority": 5}]})"},
    {"Arp", "arp show 1",
     "  Port          eth1, shared port\n"
     "  Index         1\n"
     "  ARP control   both\n"
     "  ARP interval  20\n"
     "  ARP suspend   announcements\n",
     R"({"ports": [{"port": "eth1", "role": "shared", "index": 1, "control": "both", "interval": 20, "suspend": "announcements"}]})"},
    {"An", "an show",
     "  Port          eth0, dedicated port\n"
     "  Index         0\n"
     "  Negotiation   disabled\n"
     "  Duplex        half\n"
     "  Speed         100\n"
     "\n"
     "  Port          eth1, shared port\n"
     "  Index         1\n"
     "  Negotiation   enabled\n"
     "  Duplex        full\n"
     "  Speed         1000\n",
     R"({"ports": [{"port": "eth0", "role": "dedicated", "index": 0, "auto": false, "duplex": "half", "speed": "100"},
                   {"port": "eth1", "role": "shared", "index": 1, "auto": true, "duplex": "full", "speed": "1000"}]})"},
    {"Ncsi", "ncsi show",
     "  NC-SI         disabled\n"
     "  NC-SI init    complete\n"
     "  Auto port     enabled\n"
     "  Auto card     disabled\n"
     "  Adapter       1\n"
     "  Port          3\n"
     "  Port offset   1\n",
     R"({"enabled": false, "initialisation": "complete", "automaticPort": true, "automaticCard": false,
         "adapter": 1, "selectedPort": 3, "channelOffset": 1})"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, ShownSetting, ::testing::ValuesIn(goldens), fake::RowName());

class Unreadable
    : public samples::ConfiguredTest,
      public ::testing::WithParamInterface<std::tuple<const char *, std::uint32_t, const char *>> {
};

TEST_P(Unreadable, SaysWhichRecord)
{
    const auto &[line, key, reason] = GetParam();
    platform.failGet(key, -5);

    const auto ran = samples::runLine(line);

    EXPECT_EQ(ran.status, Exit::internal);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_THAT(ran.err, HasSubstr(std::string("nwctl: cannot read ") + reason));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Unreadable,
    ::testing::Values(std::tuple{"hostname show", NW_KEY_HOSTNAME, "the host name"},
                      std::tuple{"dns show", NW_KEY_DNS, "the DNS settings"},
                      std::tuple{"lldp show", NW_KEY_LLDP, "the LLDP settings"},
                      std::tuple{"mode show", NW_KEY_IFC_STATE, "the interface state"},
                      std::tuple{"switchover show", NW_KEY_IFC_STATE, "the interface state"},
                      std::tuple{"share-link show", NW_KEY_LAN_CFG, "the shared-link mode"},
                      std::tuple{"vlan show", NW_KEY_LAN_CFG, "the LAN configuration"},
                      std::tuple{"arp show", NW_KEY_LAN_CFG, "the LAN configuration"},
                      std::tuple{"an show", NW_KEY_AN_CFG, "the auto-negotiation settings"},
                      std::tuple{"ncsi show", NW_KEY_IFC_STATE, "the interface state"},
                      std::tuple{"status", NW_KEY_LAN_CFG, "the port's LAN settings"}));

class ShownState : public samples::ConfiguredTest {};

TEST_F(ShownState, DnsOfAPortThatIsNotServedIsRefused)
{
    const auto ran = samples::runLine("dns show bond0");

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_EQ(ran.err, "nwctl: PORT 'bond0': the port is not served in network mode separate\n");
}

TEST_F(ShownState, UnknownValuesAreShownAsNumbers)
{
    NW_LLDP_DB_INFO_S lldp{};
    lldp.ucLldpWorkMode = 9;
    platform.setRecord(NW_KEY_LLDP, lldp);

    EXPECT_EQ(samples::runLine("lldp show --json").json()["workMode"], "unknown (9)");
}

TEST_F(ShownState, NcsiWithoutRecordAndCapability)
{
    platform.failGet(NW_KEY_NCSI, -5);
    platform.failCapability("SharePort", "ChannelIdOffset", -1);
    platform.setProc("/proc/sys/tollmere/ncsi/InitComplete", {'0'});

    const auto document = samples::runLine("ncsi show --json").json();

    EXPECT_EQ(document, nlohmann::json::parse(R"({"enabled": null, "initialisation": "not complete",
        "automaticPort": null, "automaticCard": null, "adapter": null, "selectedPort": null,
        "channelOffset": null})"));
}

TEST_F(ShownState, StatusIsOneScreen)
{
    EXPECT_EQ(samples::runLine("status").out,
              "  Mode          separate\n"
              "  Shared link   shared\n"
              "  Lock          free\n"
              "  NC-SI         disabled, initialisation complete\n"
              "  eth0          dedicated port, channel 1, LAN enabled, 192.168.10.2, no VLAN\n"
              "  eth1          shared port, channel 2, LAN enabled, 192.168.20.2, 2001:db8:20::2, "
              "no VLAN\n"
              "  Conflicts     none\n");
}

TEST_F(ShownState, StatusShowsPortsLockAndNcsiInJson)
{
    const auto document = samples::runLine("status --json").json();

    EXPECT_EQ(document["mode"], "separate");
    EXPECT_EQ(document["shareLink"], "shared");
    EXPECT_EQ(document["lock"],
              nlohmann::json::parse(R"({"changing": false, "restarting": false})"));
    EXPECT_EQ(document["ncsi"]["initialisation"], "complete");
    ASSERT_EQ(document["ports"].size(), 2U);
    EXPECT_EQ(document["ports"][1]["ipv4"]["address"], "192.168.20.2");
}

TEST_F(ShownState, StatusShowsTheLockOfAChangeAndOfARestart)
{
    platform.setPathExists("/tmp/network/NetworkRestartFlag");
    EXPECT_THAT(samples::runLine("status").out,
                HasSubstr("  Lock          a restart is pending\n"));
    EXPECT_EQ(samples::runLine("status --json").json()["lock"]["restarting"], true);

    platform.setRecord(NW_KEY_NET_STATUS, NW_NET_STATUS_S{1});
    EXPECT_THAT(samples::runLine("status").out,
                HasSubstr("  Lock          a change is in progress\n"));
    EXPECT_EQ(samples::runLine("status --json").json()["lock"]["changing"], true);
}

TEST_F(ShownState, StatusDoesWithoutTheNetworkStatus)
{
    platform.failGet(NW_KEY_NET_STATUS, -5);

    EXPECT_THAT(samples::runLine("status").out, HasSubstr("  Lock          unknown\n"));
    EXPECT_EQ(samples::runLine("status --json").json()["lock"]["changing"], nullptr);
}

TEST_F(ShownState, StatusShowsConflicts)
{
    platform.setWireless(true, "192.168.20.9");

    EXPECT_THAT(samples::runLine("status").out, HasSubstr("  Conflicts     IPv4\n"));
    EXPECT_EQ(samples::runLine("status --json").json()["ports"][1]["conflicts"],
              nlohmann::json::array({"ipv4"}));
}

} // namespace
} // namespace nwctl
