// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwmanagerd --init: what it writes, what it refuses, and that it writes all or nothing. */
#include <csignal>
#include <cstring>
#include <fstream>
#include <thread>

#include "manager/engine/journal.hpp"
#include "manager_system.hpp"

namespace nwtest {

namespace {

using bmc::manager::Configuration;
using bmc::manager::Store;

const std::string configPath = "/run/config.json";

class Init : public ManagerTest {
protected:
    void SetUp() override
    {
        configure(separatePorts);
    }
};

Outcome init(const std::string &text, const std::vector<std::string> &more = {"--force"})
{
    std::ofstream(configPath) << text;
    std::vector<std::string> arguments{"--init", configPath};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runManager(arguments);
}

Configuration stored()
{
    return Store().readConfiguration();
}

bool isSame(const Configuration &one, const Configuration &other)
{
    return std::memcmp(&one, &other, sizeof(one)) == 0;
}

const std::string ports = R"("ports": {"dedicated": {"name": "eth0", "channel": 1},
    "shared": {"name": "eth1", "channel": 8}, "bond": {"name": "bond0", "channel": 1}})";

/* Two configurations that differ in each of the records. */
std::string everyRecord(const std::string &digit)
{
    const bool isFirst = digit == "1";
    return "{" + ports + R"(, "mode": ")" + (isFirst ? "separate" : "active-standby") +
           R"(", "hostname": {"mode": "manual", "name": "bmc-)" + digit +
           R"("}, "lldp": {"state": )" + (isFirst ? "true" : "false") +
           R"(}, "lan": {"dedicated": {"ipv4": "10.1.1.)" + digit +
           R"(/24"}}, "dns": {"dedicated": {"ipv4-server1": "10.9.9.)" + digit +
           R"("}}, "an": {"dedicated": {"auto": true, "speed": ")" + (isFirst ? "100" : "1000") +
           R"(", "duplex": "full"}}})";
}

struct Row {
    const char *name;
    std::string text;
    const char *error;
};

const Row rows[] = {
    {"Empty", "", "document: not JSON"},
    {"Truncated", "{", "document: not JSON"},
    {"NoPorts", R"({"mode": "separate"})", "ports"},
    {"ListOfPorts", R"({"mode": "separate", "ports": [{}, {}, {}]})",
     "ports: must be an object with the ports dedicated, shared and bond"},
    {"OldWord", "{" + ports + R"(, "mode": "bonded"})", "mode: "},
    {"UnknownKey", "{" + ports + R"(, "lan": {"shared": {"colour": 1}}})", "lan.shared.colour: "},
    {"RefusedAddress", "{" + ports + R"(, "lan": {"shared": {"ipv4": "127.0.0.1/8"}}})",
     "lan.shared.ipv4: "},
    {"RefusedGateway",
     "{" + ports + R"(, "lan": {"shared": {"ipv4": "10.1.0.2/24", "ipv4-gateway": "10.2.0.1"}}})",
     "lan.shared.ipv4-gateway: "},
};

} // namespace

TEST_F(Init, ErrorsNameThePlaceAndChangeNothing)
{
    const Configuration before = stored();
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const Outcome outcome = init(row.text);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find("nwmanagerd: " + configPath + ": " + row.error),
                  std::string::npos)
            << outcome.errors;
        EXPECT_TRUE(isSame(before, stored()));
    }
}

TEST_F(Init, ReplacesOnlyWhenForced)
{
    const Configuration before = stored();
    const Outcome outcome = init(everyRecord("1"), {});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("--force"), std::string::npos) << outcome.errors;
    EXPECT_TRUE(isSame(before, stored()));
    EXPECT_EQ(init(everyRecord("1")).status, 0);
    EXPECT_FALSE(isSame(before, stored()));
}

TEST_F(Init, AFileThatCannotBeReadIsNamedOnce)
{
    shell("truncate -s 2M /run/large");
    const std::pair<const char *, const char *> files[] = {
        {"/run/no-such-file", "/run/no-such-file: No such file or directory"},
        {"/run", "/run: Is a directory"},
        {"/dev/zero", "/dev/zero is no regular file: Invalid argument"},
        {"/run/large", "/run/large: File too large"},
    };
    for (const auto &[file, reason] : files) {
        const Outcome outcome = runManager({"--init", file});
        EXPECT_EQ(outcome.status, 1) << file;
        EXPECT_EQ(outcome.errors, std::string("nwmanagerd: ") + reason + "\n");
    }
}

TEST_F(Init, EverySectionLandsInItsRecord)
{
    ASSERT_EQ(init(everyRecord("1")).status, 0);
    const Configuration held = stored();
    EXPECT_EQ(held.state.aucChannel[1], 8);
    EXPECT_STREQ(held.state.acIfcName[2], "bond0");
    EXPECT_EQ(held.lan.astPort[0].aucIpv4Addr[3], 1);
    EXPECT_EQ(held.dns.astPort[0].aucIpv4DnsServer[0][3], 1);
    EXPECT_STREQ(held.hostName.szBmcHostName, "bmc-1");
    EXPECT_EQ(held.lldp.ucLldpEnable, 1);
    EXPECT_EQ(held.an.astPort[0].ucSpeed, 1);
}

TEST_F(Init, ExampleIsValid)
{
    EXPECT_EQ(runManager({"--init", EXAMPLE_FILE, "--force"}).status, 0);
    EXPECT_EQ(stored().lan.astPort[1].ucIpv6Prefix, 64);
}

TEST_F(Init, WritesWhatReadersNeed)
{
    NW_HOSTNAME_DB_INFO_S hostName;
    NW_DNS_DB_INFO_S dns;
    NW_LLDP_DB_INFO_S lldp;
    NW_NCSI_DB_INFO_S ncsi;
    NW_AN_CFG_DB_INFO_S an;
    NW_IFC_STATE_DB_INFO_S state;
    NW_LAN_CFG_DB_INFO_S lan;
    std::uint8_t status = 9;
    EXPECT_EQ(LIB_NW_GetHostName(&hostName), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_DNS(&dns), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_LLDP(&lldp), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_NCSI(&ncsi), NW_OK);
    EXPECT_EQ(NW_LMDB_GetAnCfgInfo(&an), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_IfcState(&state), NW_OK);
    EXPECT_EQ(NW_LMDB_GetLanCfgInfo(&lan), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_NetStatus(&status), NW_OK);
    EXPECT_EQ(status, 0);
}

/* What the document doesn't give, outside LAN settings, stays. */
TEST_F(Init, RecordsThatAreNotGivenStay)
{
    const Store store;
    NW_HOSTNAME_DB_INFO_S hostName = store.read(bmc::manager::hostNameRecord);
    std::strcpy(hostName.szBmcName, "kept");
    store.put(bmc::manager::hostNameRecord, hostName);
    configure(separatePorts);
    EXPECT_STREQ(store.read(bmc::manager::hostNameRecord).szBmcName, "kept");
}

/* Which MAC addresses there are is seen at the start. */
TEST_F(Init, AutomaticHostNameFollowsTheInterface)
{
    const std::string automatic = R"(, "hostname": {"mode": "auto"}})";
    ASSERT_EQ(init("{" + ports + automatic).status, 0);
    startManager();
    const std::string mac = shell("tr -d ':\n' < /sys/class/net/eth0/address");
    EXPECT_EQ(shell("hostname"), "bmc-" + mac + "\n");
    EXPECT_EQ(stored().hostName.szBmcHostName, "bmc-" + mac);
    stopManager();
}

/* A change that was under way is over with the configuration that it was about. */
TEST_F(Init, ClosesTheJournal)
{
    using namespace bmc::manager;
    const Store store;
    startManager();
    stopManager();
    store.put(journalHeadRecord, {journalVersion, 1});
    ASSERT_EQ(init(everyRecord("1")).status, 0);
    EXPECT_EQ(store.read(journalHeadRecord).isOpen, 0U);
}

/* Killed at points spread over the whole run, it leaves the one configuration or the other. */
TEST_F(Init, KilledAnywhereItLeavesOldOrNew)
{
    ASSERT_EQ(init(everyRecord("2")).status, 0);
    const Configuration second = stored();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(init(everyRecord("1")).status, 0);
    const auto whole = std::chrono::steady_clock::now() - begin;
    const Configuration first = stored();
    ASSERT_FALSE(isSame(first, second));

    constexpr int points = 60;
    unsigned replaced = 0;
    std::ofstream("/run/second.json") << everyRecord("2");
    for (int point = 0; point < points; point++) {
        const Outcome before = init(everyRecord("1"));
        ASSERT_EQ(before.status, 0) << before.errors;
        Process process({NWMANAGERD, "--init", "/run/second.json", "--force"});
        std::this_thread::sleep_for(whole * point / points);
        process.signal(SIGKILL);
        process.wait();
        const Configuration held = stored();
        EXPECT_TRUE(isSame(held, first) || isSame(held, second)) << "point " << point;
        replaced += isSame(held, second);
    }
    EXPECT_LT(replaced, points);
}

} // namespace nwtest
