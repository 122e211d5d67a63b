// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every setting through the real library, bus, network manager and database. */
#include "system.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace nwctl {
namespace {

using e2e::nwctl;
using e2e::Outcome;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/* What a showing command tells at the place. */
json shown(const std::string &command, const char *place)
{
    return json::parse(nwctl(command + " --json").output).at(json::json_pointer(place));
}

struct Row {
    const char *name;
    const char *before; /* sets what an earlier test may have set already */
    const char *set;
    const char *output;
    const char *show;
    const char *place;
    json value;
};

class Settings : public e2e::System, public ::testing::WithParamInterface<Row> {};

TEST_P(Settings, AreChangedToldAndShown)
{
    const Row &row = GetParam();
    ASSERT_EQ(nwctl(row.before).status, 0);
    ASSERT_NE(shown(row.show, row.place), row.value) << "nothing would change";

    const Outcome result = nwctl(row.set);

    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, row.output);
    EXPECT_EQ(shown(row.show, row.place), row.value);
}

TEST_P(Settings, AreLeftAloneByADryRun)
{
    const Row &row = GetParam();
    const json before = shown(row.show, row.place);

    const Outcome result = nwctl(std::string(row.set) + " --dry-run");

    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, StartsWith("Dry run, nothing was sent."));
    EXPECT_EQ(shown(row.show, row.place), before);
}

TEST_P(Settings, AreNoSuccessWithoutTheManager)
{
    stopManager();

    const Outcome result = nwctl(GetParam().set);

    EXPECT_THAT(result.status, ::testing::AnyOf(4, 5));
    EXPECT_THAT(result.output, ::testing::Not(HasSubstr("successfully")));
    EXPECT_THAT(result.errors, HasSubstr("cannot be reached"));
}

/* clang-format off */
const Row rows[] = {
    {"HostName", "hostname set --mode auto", "hostname set --mode manual --name bmc-7 --bmc-name rack-7",
     "Host name set successfully, host name mode: Manual, host name BMC: bmc-7, BMC name: rack-7.\n",
     "hostname show", "", {{"mode", "manual"}, {"name", "bmc-7"}, {"bmcName", "rack-7"}}},
    {"Dns", "dns set eth1 --ipv4-mode manual --ipv4-server2 off", "dns set eth1 --ipv4-mode manual --ipv4-server2 192.168.20.53 --ipv4-domain rack1.example.net",
     "DNS settings configured successfully for shared port, IPv4 DNS mode: Manual, IPv4 DNS domain suffix: "
     "rack1.example.net, IPv4 DNS server 2: 192.168.20.53.\n",
     "dns show eth1", "/ports/0/ipv4Servers", {nullptr, "192.168.20.53", nullptr}},
    {"Lldp", "lldp set --state off", "lldp set --state on --work-mode rx",
     "Configured LLDP settings successfully, LLDP state: Enabled, LLDP work mode: RX.\n",
     "lldp show", "", {{"enabled", true}, {"workMode", "rx"}}},
    {"LldpReceive", "lldp set --state on --work-mode tx", "lldp set --receive on",
     "Configured LLDP settings successfully, LLDP state: Enabled, LLDP work mode: TXRX.\n",
     "lldp show", "", {{"enabled", true}, {"workMode", "txrx"}}},
    {"Mode", "status", "mode set active-standby --force",
     "Configured network port mode successfully, network port mode: Active/standby.\n",
     "mode show", "", {{"mode", "active-standby"}, {"ports", {"bond0"}}}},
    {"Switchover", "status", "switchover set on",
     "Configured port number switchover successfully, port number switchover: Enabled.\n",
     "switchover show", "/enabled", true},
    {"ShareLink", "status", "share-link set dedicated", "Done: shared-link mode; the operation log has no sentence.\n",
     "share-link show", "/mode", "dedicated"},
    {"ShareLinkBond", "status", "share-link set active-standby --force", "Done: shared-link mode; the operation log has no sentence.\n",
     "share-link show", "/mode", "active-standby"},
    {"VlanPriority", "status", "vlan set eth1 --vlan-priority 5",
     "LAN settings configured successfully for shared port, VLAN priority: 5.\n",
     "vlan show eth1", "/ports/0/priority", 5},
    {"ArpInterval", "status", "arp set eth1 --arp-interval 10",
     "LAN settings configured successfully for shared port, ARP interval: 10.\n",
     "arp show eth1", "/ports/0/interval", 10},
    {"ArpSuspend", "status", "arp suspend eth1 --arp-suspend responses",
     "LAN settings configured successfully for shared port, ARP suspend: do not suspend BMC-generated Gratuitous "
     "ARPs while the Watchdog Timer is running, suspend BMC-generated ARP responses while Watchdog Timer is "
     "running.\nARP suspended while the watchdog timer runs: responses\n",
     "arp show eth1", "/ports/0/suspend", "responses"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, Settings, ::testing::ValuesIn(rows),
                         [](const auto &test) { return test.param.name; });

class Commands : public e2e::System {};

TEST_F(Commands, ArpIsResumedAndSuspendedAgain)
{
    nwctl("arp suspend eth1 --arp-suspend both");
    EXPECT_EQ(nwctl("arp status eth1").output,
              "ARP suspended while the watchdog timer runs: both\n");

    EXPECT_EQ(nwctl("arp resume").status, 0);
    EXPECT_EQ(nwctl("arp status eth1").output,
              "ARP suspended while the watchdog timer runs: none\n");

    EXPECT_EQ(nwctl("arp resume suspend").status, 0);
    EXPECT_EQ(nwctl("arp status eth1").output,
              "ARP suspended while the watchdog timer runs: both\n");
}

TEST_F(Commands, RestartIsDoneOrNoSuccess)
{
    EXPECT_EQ(nwctl("restart").status, 0);

    stopManager();
    const Outcome result = nwctl("restart --json");

    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(json::parse(result.output)["error"]["code"], "0x81000013");
}

/* A virtual interface has no PHY to set. */
TEST_F(Commands, AutoNegotiationIsRefusedWithItsReason)
{
    const Outcome result = nwctl("an set eth0 --auto off --speed 100");

    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.output, "Failed to configure PHY negotiation.\n");
    EXPECT_THAT(result.errors, HasSubstr("does not let its speed and duplex be set"));

    stopManager();
    EXPECT_EQ(nwctl("an set eth0 --auto off").status, 5);
}

TEST_F(Commands, NcsiIsRefusedWithoutItsKernelInterface)
{
    EXPECT_EQ(nwctl("ncsi set on").status, 3);
    EXPECT_EQ(shown("ncsi show", "/initialisation"), "not complete");
}

/* The kernel's files where the platform keeps them; a directory takes no write. */
TEST_F(Commands, NcsiIsOnInTheKernelOrNoSuccess)
{
    namespace fs = std::filesystem;
    const fs::path proc = fs::path(std::getenv("BMC_STATE_DIR")) / "proc";
    const fs::path directory = proc / "proc/sys/tollmere/ncsi";
    fs::create_directories(directory / "Enable");
    std::ofstream(directory / "InitComplete") << "1\n";

    const Outcome refused = nwctl("ncsi set on");
    fs::remove(directory / "Enable");
    const Outcome done = nwctl("ncsi set on");
    fs::remove_all(proc);

    EXPECT_EQ(refused.status, 4);
    EXPECT_THAT(refused.errors, HasSubstr("the kernel does not show whether NC-SI is on"));
    EXPECT_EQ(done.status, 0) << done.errors;
}

class File : public Commands {
protected:
    Outcome apply(const std::string &document) const
    {
        const std::filesystem::path file =
            std::filesystem::path(::testing::TempDir()) / "nwctl-system.json";
        std::ofstream(file) << document;
        const Outcome result = nwctl("apply " + file.string());
        std::filesystem::remove(file);
        return result;
    }
};

TEST_F(File, ChangesEveryPart)
{
    const Outcome result = apply(R"({"mode": "separate",
        "lan": {"eth0": {"ipv4": "192.168.30.7/24"}, "eth1": {"arp-interval": 9}},
        "dns": {"eth0": {"ipv4-mode": "manual", "ipv4-server1": "192.168.30.53"}}})");

    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, StartsWith("Changed:\n"));
    EXPECT_THAT(result.output,
                HasSubstr("  lan.dedicated.ipv4: 192.168.10.2/24 -> 192.168.30.7/24\n"));
    EXPECT_THAT(result.output, HasSubstr("  lan.shared.arp-interval: 0 -> 9\n"));
    EXPECT_THAT(result.output, HasSubstr("  dns.dedicated.ipv4-server1: off -> 192.168.30.53\n"));
    EXPECT_EQ(e2e::kernelAddresses("eth0"), std::vector<std::string>{"192.168.30.7/24"});
    EXPECT_EQ(shown("dns show eth0", "/ports/0/ipv4Servers/0"), "192.168.30.53");
}

TEST_F(File, ChangesNothingWhenOnePartIsRefused)
{
    const e2e::Bytes record = e2e::storedLanRecord();

    const Outcome result = apply(R"({"lan": {"eth0": {"ipv4": "192.168.30.7/24"}},
        "an": {"eth0": {"auto": false, "speed": "100"}}})"); /* there is no PHY to set */

    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(result.errors, HasSubstr("the network manager refused the change"));
    EXPECT_EQ(e2e::storedLanRecord(), record);
}

TEST_F(File, WithWhatIsExportedChangesNothing)
{
    const Outcome result = apply(nwctl("export").output);

    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output,
              "Nothing has changed: the stored configuration is as the document says.\n");
}

TEST_F(File, IsNoSuccessWithoutTheManager)
{
    stopManager();

    EXPECT_EQ(apply(R"({"lan": {"eth1": {"vlan": 30}}})").status, 5);
}

TEST_F(Commands, StatusIsOneScreen)
{
    const Outcome result = nwctl("status");

    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("  Mode          separate\n"
                                          "  Shared link   shared\n"
                                          "  Lock          free\n"));
    EXPECT_THAT(result.output, HasSubstr("192.168.20.2, 2001:db8:20::2"));
    EXPECT_THAT(result.output, HasSubstr("  Conflicts     none\n"));
    EXPECT_EQ(result.errors, "");
}

} // namespace
} // namespace nwctl
