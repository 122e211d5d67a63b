// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "--dry-run": what every change would make of the stored settings, by the manager's own checks. */
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::EndsWith;
using ::testing::IsEmpty;

struct Row {
    const char *name;
    const char *line;
    const char *changes; /* lines behind the first */
};

class DryRun : public samples::ConfiguredTest, public ::testing::WithParamInterface<Row> {};

TEST_P(DryRun, TellsOldAndNew)
{
    const auto ran = samples::runLine(std::string(GetParam().line) + " --dry-run");

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out.substr(ran.out.find('\n') + 1), GetParam().changes);
    EXPECT_THAT(ran.out.substr(0, ran.out.find('\n')), EndsWith(":"));
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* clang-format off */
const Row rows[] = {
    {"Lan",        "lan set eth1 --ipv4 192.168.20.7/24 --vlan 30", "  lan.shared.ipv4: 192.168.20.2/24 -> 192.168.20.7/24\n  lan.shared.vlan: off -> 30\n"},
    {"Switch",     "lan set 1 --ipv6 off",                          "  lan.shared.ipv6-enabled: on -> off\n"},
    {"Slaac",      "lan set shared --ipv6-origin slaac",            "  lan.shared.ipv6-origin: static -> slaac\n"
     "Note: ipv6-origin of eth1, shared port is stored without effect\n"},
    {"Route",      "lan set dedicated --ipv4-route2 10.0.0.0/8,192.168.10.9", "  lan.dedicated.ipv4-route2: off -> 10.0.0.0/8,192.168.10.9\n"},
    {"HostName",   "hostname set --bmc-name x",                     "  hostname.bmc-name: rack-7 -> x\n"},
    {"Dns",        "dns set eth1 --ipv4-mode auto --ipv4-server1 off", "  dns.shared.ipv4-mode: manual -> auto\n  dns.shared.ipv4-server1: 192.168.20.53 -> off\n"
     "Note: ipv4-mode of eth1, shared port is stored, but brings no servers\n"},
    {"Lldp",       "lldp set --state off",                          "  lldp.state: on -> off\n"},
    {"Receive",    "lldp set --receive off",                        "  lldp.work-mode: txrx -> tx\n"},
    {"Mode",       "mode set active-standby",                       "  mode: separate -> active-standby\n"},
    {"Arp",        "arp set eth0 --arp-control both",               "  lan.dedicated.arp-control: none -> both\n"},
    {"ArpSuspend", "arp suspend eth0 --arp-suspend both",           "  lan.dedicated.arp-suspend: none -> both\n"},
    {"ShareLink",  "share-link set active-standby",                 "  mode: separate -> active-standby\n"},
    {"Dedicated",  "share-link set dedicated",                      "  lan.shared.lan: on -> off\n"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, DryRun, ::testing::ValuesIn(rows), fake::RowName());

class Foreseen : public samples::ConfiguredTest {};

TEST_F(Foreseen, AChangeOfNothingIsSaidToBeOne)
{
    EXPECT_EQ(samples::runLine("mode set separate --dry-run").out,
              "Dry run, nothing was sent. Would change network port mode (command 4): MODE "
              "'separate'; nothing is different from what is stored.\n");
}

TEST_F(Foreseen, IsTheSameInJson)
{
    const auto ran = samples::runLine("dns set eth1 --ipv4-mode auto --dry-run --json");

    EXPECT_EQ(ran.json(), nlohmann::json::parse(R"({"port": "eth1", "index": 1, "dryRun": true,
        "what": "DNS settings", "commands": [1],
        "settings": [{"option": "--ipv4-mode", "value": "auto"}],
        "changes": [{"setting": "dns.shared.ipv4-mode", "port": "eth1", "before": "manual",
                     "after": "auto"}],
        "notes": ["ipv4-mode of eth1, shared port is stored, but brings no servers"]})"));
}

TEST_F(Foreseen, BothCommandsOfTheSharedLinkAreTold)
{
    EXPECT_THAT(samples::runLine("share-link set active-standby --dry-run").out,
                ::testing::StartsWith("Dry run, nothing was sent. Would change shared-link mode "
                                      "(command 3, then 4): MODE 'active-standby':\n"));
}

TEST_F(Foreseen, ARestartIsSaidToBeOne)
{
    EXPECT_EQ(samples::runLine("restart --dry-run").out,
              "Dry run, nothing was sent. Would restart the network at once (command 8).\n");
    EXPECT_EQ(samples::runLine("restart 5 --dry-run").out,
              "Dry run, nothing was sent. Would restart the network after 5 s (command 8).\n");
}

class ForeseenResumption : public samples::ConfiguredTest {
protected:
    ForeseenResumption()
    {
        NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
        record.astPort[0].aucReserved787[2] = 3;
        record.astPort[1].aucReserved787[2] = 1;
        record.astPort[1].aucReserved787[3] = 1; /* resumed already */
        platform.setRecord(NW_KEY_LAN_CFG, record);
    }
};

TEST_F(ForeseenResumption, TellsWhatRestsBeforeAndAfter)
{
    EXPECT_EQ(samples::runLine("arp resume --dry-run").out,
              "Dry run, nothing was sent. Would change ARP suspensions of all ports (command 7):\n"
              "  arp.dedicated.suspended: both -> none\n");
    EXPECT_EQ(samples::runLine("arp resume suspend --dry-run").out,
              "Dry run, nothing was sent. Would change ARP suspensions of all ports (command 7): "
              "WHAT 'suspend':\n"
              "  arp.shared.suspended: none -> announcements\n");
}

TEST_F(ForeseenResumption, IsTheSameInJson)
{
    EXPECT_EQ(samples::runLine("arp resume --dry-run --json").json()["changes"],
              nlohmann::json::parse(R"([{"setting": "arp.dedicated.suspended", "port": "eth0",
                                         "before": "both", "after": "none"}])"));
}

TEST_F(Foreseen, AResumptionOfNothingIsSaidToBeOne)
{
    EXPECT_EQ(samples::runLine("arp resume --dry-run").out,
              "Dry run, nothing was sent. Would change ARP suspensions of all ports (command 7); "
              "nothing is different from what is stored.\n");
}

struct NcsiRow {
    const char *name;
    const char *kernel; /* null: it shows nothing */
    const char *told;   /* behind what would be changed */
};

class ForeseenNcsi : public samples::ConfiguredTest, public ::testing::WithParamInterface<NcsiRow> {
protected:
    void SetUp() override
    {
        if (GetParam().kernel != nullptr) {
            const std::string content = GetParam().kernel;
            platform.setProc(enableFile, {content.begin(), content.end()});
        }
    }

    const std::string enableFile = "/proc/sys/tollmere/ncsi/Enable";
};

TEST_P(ForeseenNcsi, IsOldAndNewOfTheKernel)
{
    const auto before = platform.proc(enableFile);

    EXPECT_EQ(samples::runLine("ncsi set on --dry-run").out,
              std::string("Dry run, nothing was sent. Would change NC-SI in the kernel: STATE "
                          "'on'") +
                  GetParam().told);
    EXPECT_EQ(platform.proc(enableFile), before);
}

const NcsiRow ncsiRows[] = {
    {"Off", "0", ":\n  ncsi: off -> on\n"},
    {"On", "1", "; nothing is different from what the kernel has.\n"},
    {"Unknown", nullptr, ":\n  ncsi: unknown -> on\n"},
};
INSTANTIATE_TEST_SUITE_P(Rows, ForeseenNcsi, ::testing::ValuesIn(ncsiRows), fake::RowName());

TEST_F(Foreseen, NcsiIsTheSameInJson)
{
    platform.setProc("/proc/sys/tollmere/ncsi/Enable", {'0'});

    EXPECT_EQ(samples::runLine("ncsi set on --dry-run --json").json()["changes"],
              nlohmann::json::parse(R"([{"setting": "ncsi", "port": null, "before": "off",
                                         "after": "on"}])"));
}

TEST_F(Foreseen, NcsiThatWasTurnedOnIsOn)
{
    ASSERT_EQ(samples::runLine("ncsi set on").status, Exit::success);

    EXPECT_THAT(samples::runLine("ncsi set on --dry-run").out,
                EndsWith("; nothing is different from what the kernel has.\n"));
}

/* A dry run succeeds where the change does. */
TEST_F(Foreseen, NcsiNeedsNoSettings)
{
    platform.failGet(NW_KEY_LAN_CFG, -5);

    EXPECT_EQ(samples::runLine("ncsi set on --dry-run").status, Exit::success);
    EXPECT_EQ(samples::runLine("ncsi set on").status, Exit::success);
}

struct Refused {
    const char *name;
    const char *line;
    const char *option;
    const char *code;
};

class RefusedDryRun : public samples::ConfiguredTest,
                      public ::testing::WithParamInterface<Refused> {};

TEST_P(RefusedDryRun, IsWhatTheManagerWouldRefuse)
{
    const auto ran = samples::runLine(std::string(GetParam().line) + " --dry-run --json");
    const auto error = ran.json()["error"];

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_EQ(error["option"], GetParam().option);
    EXPECT_EQ(error["code"], GetParam().code);
    EXPECT_EQ(error["reason"], "the network manager would refuse the change");
}

/* clang-format off */
const Refused refusedRows[] = {
    {"GatewayOutside", "lan set eth1 --ipv4-gateway 10.9.9.9",     "--ipv4-gateway", "0x1e00000e"},
    {"AddressLeaves",  "lan set eth1 --lan on --ipv4 10.9.9.9/24", "--ipv4",         "0x1e00000e"},
    {"GatewayIsOwn",   "lan set eth1 --ipv6-gateway 2001:db8:20::2", "--ipv6-gateway", "0x1e000002"},
    {"PortNotServed",  "lan set bond0 --lan on",                   "PORT",           "0x1e000004"},
    {"DnsPortNotServed", "dns set bond0 --ipv4-mode auto",         "PORT",           "0x1e000004"},
    {"NameInAutoMode", "hostname set --mode auto --name x",        "--name",         "0x1e000019"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, RefusedDryRun, ::testing::ValuesIn(refusedRows), fake::RowName());

} // namespace
} // namespace nwctl
