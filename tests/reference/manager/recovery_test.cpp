// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the kernel refuses, what a killed manager leaves behind, and how both come right again. */
#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstring>
#include <fstream>
#include <random>
#include <set>
#include <thread>

#include <lmdb.h>

#include "manager/engine/store.hpp"
#include "manager_system.hpp"

namespace nwtest {

namespace {

constexpr std::uint32_t kernelRefused = 0x1E000002;

LanRequest ipv4Change(unsigned port, const std::string &address)
{
    LanRequest request;
    request.select(port, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(port).aucIpv4Addr, address);
    return request;
}

LanRequest ipv6Change(LanRequest request, const std::string &address)
{
    request.select(1, NW_LAN_BIT_IPV6_ADDR);
    put(request.port(1).aucIpv6Addr, address);
    return request;
}

/* A small file system for the database, in the place of the state directory. */
class SmallDisk {
public:
    SmallDisk()
    {
        shell("mkdir -p /run/small && mount -t tmpfs -o size=768k small /run/small");
        setenv("BMC_STATE_DIR", "/run/small/bmc", 1);
    }

    ~SmallDisk()
    {
        setenv("BMC_STATE_DIR", "/run/bmc", 1);
        support::run("umount -l /run/small");
    }

    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    /* Leaves that many pages free. */
    void fill(unsigned pages) const
    {
        shell("dd if=/dev/zero of=/run/small/filler bs=4096 count=$(("
              "$(stat -f -c %a /run/small) - " +
              std::to_string(pages) + ")) 2>/dev/null");
    }

    void empty() const
    {
        shell("rm /run/small/filler");
    }
};

/* A reader that stays: while it does, the database takes new room for every write. */
class LongReader {
public:
    LongReader()
    {
        const std::string path = std::string(std::getenv("BMC_STATE_DIR")) + "/config-db";
        EXPECT_EQ(mdb_env_create(&environment_), 0);
        EXPECT_EQ(mdb_env_open(environment_, path.c_str(), MDB_NOTLS | MDB_RDONLY, 0), 0);
        EXPECT_EQ(mdb_txn_begin(environment_, nullptr, MDB_RDONLY, &transaction_), 0);
    }

    ~LongReader()
    {
        mdb_txn_abort(transaction_);
        mdb_env_close(environment_);
    }

    LongReader(const LongReader &) = delete;
    LongReader &operator=(const LongReader &) = delete;

private:
    MDB_env *environment_ = nullptr;
    MDB_txn *transaction_ = nullptr;
};

class Recovery : public ManagerTest {
protected:
    void expectRolledBack(const LanRequest &request, unsigned port)
    {
        expectUntouched(request, kernelRefused, port);
    }

    void killManager()
    {
        manager_->signal(SIGKILL);
        EXPECT_EQ(manager_->wait(), 128 + SIGKILL);
    }
};

} // namespace

TEST_F(Recovery, AddressThatIsThereAlready)
{
    shell("ip address add 192.168.20.9/24 dev eth1");
    expectRolledBack(ipv6Change(ipv4Change(1, "192.168.20.9"), "2001:db8:20::9"), 1);

    /* Nor does a restart take it for the manager's own. */
    stopManager();
    startManager();
    EXPECT_EQ(
        kernelAddresses("eth1"),
        (std::vector<std::string>{"192.168.20.2/24", "192.168.20.9/24", "2001:db8:20::2/64"}));
}

TEST_F(Recovery, Ipv6RefusedAfterIpv4WasApplied)
{
    shell("ip address del 2001:db8:20::2/64 dev eth1");
    std::ofstream("/proc/sys/net/ipv6/conf/eth1/disable_ipv6") << 1;
    ASSERT_EQ(shell("cat /proc/sys/net/ipv6/conf/eth1/disable_ipv6"), "1\n");
    expectRolledBack(ipv6Change(ipv4Change(1, "192.168.20.9"), "2001:db8:20::9"), 1);

    std::ofstream("/proc/sys/net/ipv6/conf/eth1/disable_ipv6") << 0;
    expectAnswer(ipv6Change(ipv4Change(1, "192.168.20.9"), "2001:db8:20::9"), NW_OK, 1);
}

TEST_F(Recovery, GatewayOutOfReach)
{
    LanRequest request = ipv6Change(ipv4Change(1, "192.168.20.9"), "2001:db8:20::9");
    request.select(1, NW_LAN_BIT_IPV6_GATEWAY | NW_LAN_BIT_IPV4_GATEWAY);
    put(request.port(1).aucIpv6Gateway, "2001:db8:99::1");
    put(request.port(1).aucIpv4Gateway, "192.168.20.1");
    expectRolledBack(request, 1);
}

TEST_F(Recovery, LinkDownIsUndoneWithItsGateways)
{
    LanRequest gateways;
    gateways.select(0, NW_LAN_BIT_IPV4_GATEWAY);
    put(gateways.port(0).aucIpv4Gateway, "192.168.10.1");
    expectAnswer(gateways, NW_OK, 0);
    shell("ip address add 192.168.20.9/24 dev eth1");

    /* Port 0 goes down first, then port 1 is refused. */
    LanRequest request = ipv4Change(1, "192.168.20.9");
    request.select(0, NW_LAN_BIT_LAN_ENABLE);
    expectRolledBack(request, 0);
    EXPECT_EQ(kernelGateways("eth0"), std::vector<std::string>{"192.168.10.1 100"});
}

TEST_F(Recovery, InterfaceIsGoneAndComesBack)
{
    shell("ip link del eth1");
    expectRolledBack(ipv4Change(1, "192.168.20.9"), 1);

    shell("ip link add eth1 index 99 type veth peer name peer1 && ip link set peer1 up");
    expectAnswer(ipv4Change(1, "192.168.20.9"), NW_OK, 1);
    const std::uint32_t index = storedState().auiIfIndex[1];
    EXPECT_EQ(index, 99U);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.9/24", "2001:db8:20::2/64"}));
}

TEST_F(Recovery, ForeignAddressesAndRoutesStay)
{
    shell("ip address add 192.168.20.50/24 dev eth1 && ip address add 10.9.9.9/32 dev eth1 &&"
          "ip address add 2001:db8:20::50/64 dev eth1 && ip route add 10.8.0.0/16 dev eth1 &&"
          "ip route add default via 192.168.20.200 dev eth1 metric 7");

    expectAnswer(ipv6Change(ipv4Change(1, "192.168.20.3"), "2001:db8:20::3"), NW_OK, 1);
    LanRequest moved = ipv4Change(1, "192.168.40.3");
    expectAnswer(moved, NW_OK, 1);

    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"10.9.9.9/32", "192.168.20.50/24", "192.168.40.3/24",
                                        "2001:db8:20::3/64", "2001:db8:20::50/64"}));
    EXPECT_NE(shell("ip route").find("10.8.0.0/16"), std::string::npos);
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"192.168.20.200 7"});
}

TEST_F(Recovery, ChangeSurvivesARestart)
{
    expectAnswer(ipv6Change(ipv4Change(1, "192.168.20.9"), "2001:db8:20::9"), NW_OK, 1);
    stopManager();
    shell("ip address flush dev eth1 && ip link set eth1 down");
    startManager();

    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.9/24", "2001:db8:20::9/64"}));
}

/* One refusal on start keeps neither the rest of the configuration nor the service away. */
TEST_F(Recovery, StartWithoutWhatTheKernelRefuses)
{
    stopManager();
    shell("ip link del eth0 && ip address flush dev eth1");
    std::ofstream("/proc/sys/net/ipv6/conf/eth1/disable_ipv6") << 1;
    startManager();
    EXPECT_EQ(kernelAddresses("eth1"), std::vector<std::string>{"192.168.20.2/24"});
    EXPECT_NE(manager_->errorText().find("there is no interface eth0"), std::string::npos);
    EXPECT_NE(manager_->errorText().find("add address 2001:db8:20::2/64"), std::string::npos);

    /* The next change of the port makes up for it. */
    std::ofstream("/proc/sys/net/ipv6/conf/eth1/disable_ipv6") << 0;
    expectAnswer(ipv4Change(1, "192.168.20.3"), NW_OK, 1);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.3/24", "2001:db8:20::2/64"}));
}

TEST_F(Recovery, ReplacedConfigurationLeavesNoOldAddress)
{
    LanRequest gateway;
    gateway.select(1, NW_LAN_BIT_IPV4_GATEWAY);
    put(gateway.port(1).aucIpv4Gateway, "192.168.20.1");
    expectAnswer(gateway, NW_OK, 1);
    stopManager();
    std::string json = separatePorts;
    json.replace(json.find("192.168.20.2"), 12, "192.168.77.2");
    configure(json);
    startManager();

    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.77.2/24", "2001:db8:20::2/64"}));
    EXPECT_TRUE(kernelGateways("eth1").empty());
}

TEST_F(Recovery, StaleStatusIsCleared)
{
    stopManager();
    for (const std::uint8_t stale : {std::uint8_t{1}, std::uint8_t{7}}) {
        bmc::manager::Store().put(bmc::manager::netStatusRecord, {stale});
        startManager();
        EXPECT_EQ(storedStatus(), 0);
        stopManager();
    }
}

TEST_F(Recovery, CountOfFurtherAddressesIsRepaired)
{
    stopManager();
    NW_LAN_CFG_DB_INFO_S lan = storedLan();
    lan.astPort[0].ucIpv6FurtherCount = 16;
    lan.astPort[1].ucIpv6FurtherCount = 17;
    lan.astPort[2].ucIpv6FurtherCount = 255;
    put(lan.astPort[0].aaucIpv6FurtherAddr[15], "2001:db8::16");
    putLan(lan);
    startManager();

    for (const NW_LAN_CFG_PORT_S &port : storedLan().astPort) {
        EXPECT_EQ(port.ucIpv6FurtherCount, 16);
    }
    EXPECT_TRUE(
        std::ranges::equal(storedLan().astPort[0].aaucIpv6FurtherAddr[15], raw("2001:db8::16")));
}

TEST_F(Recovery, CountIsRepairedByAChangeToo)
{
    NW_LAN_CFG_DB_INFO_S lan = storedLan();
    lan.astPort[0].ucIpv6FurtherCount = 17;
    lan.astPort[1].ucIpv6FurtherCount = 255;
    putLan(lan);

    expectAnswer(ipv4Change(1, "192.168.20.9"), NW_OK, 1);
    EXPECT_EQ(storedLan().astPort[0].ucIpv6FurtherCount, 16);
    EXPECT_EQ(storedLan().astPort[1].ucIpv6FurtherCount, 16);
}

TEST_F(Recovery, NameThatNoInterfaceCanHaveIsServedAround)
{
    stopManager();
    NW_IFC_STATE_DB_INFO_S state = storedState();
    std::ranges::fill(state.acIfcName[0], 'A');
    ASSERT_EQ(NW_LMDB_Put_IfcState(&state), NW_OK);
    startManager();

    expectAnswer(ipv4Change(1, "192.168.20.9"), NW_OK, 1);
}

TEST_F(Recovery, RecordsHoldTheKernelsFacts)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const auto state = storedState();
        const auto lan = storedLan();
        const std::string name = state.acIfcName[port];
        EXPECT_STREQ(lan.astPort[port].szIfcName, name.c_str());
        std::string mac;
        for (const unsigned byte : lan.astPort[port].aucMacAddr) {
            char text[4];
            std::snprintf(text, sizeof(text), "%02x:", byte);
            mac += text;
        }
        mac.back() = '\n';
        EXPECT_EQ(mac, shell("cat /sys/class/net/" + name + "/address"));
        const std::uint32_t index = state.auiIfIndex[port];
        EXPECT_EQ(std::to_string(index) + "\n", shell("cat /sys/class/net/" + name + "/ifindex"));
    }
}

/* With more room each time, another of the change's writes is the first to fail. */
TEST_F(Recovery, DatabaseWithoutRoom)
{
    constexpr std::uint32_t databaseFailed = 0x1E000003;
    stopManager();
    std::set<std::uint32_t> results;
    std::string lines;
    for (unsigned pages = 0; pages < 24; pages++) {
        SCOPED_TRACE(pages);
        shell("ip address flush dev eth1");
        const SmallDisk disk;
        EXPECT_EQ(runManager({"--init", "/run/config.json"}).status, 0);
        startManager();

        const LongReader reader;
        disk.fill(pages);
        const auto response = call(ipv4Change(1, "192.168.20.9").bytes());
        ASSERT_TRUE(response.has_value());
        results.insert(response->uiResult);
        const std::string held =
            response->uiResult == NW_OK ? "192.168.20.9/24" : "192.168.20.2/24";
        EXPECT_EQ(kernelAddresses("eth1").front(), held);

        /* What was answered is what a restart finds. */
        stopManager();
        lines += manager_->errorText();
        disk.empty();
        shell("ip address flush dev eth1");
        startManager();
        EXPECT_EQ(kernelAddresses("eth1").front(), held);
        EXPECT_EQ(kernelAddresses("eth1").size(), 2U);
        stopManager();
    }
    EXPECT_EQ(results, (std::set{std::uint32_t{NW_OK}, databaseFailed}));
    EXPECT_NE(lines.find("write the change's outcome record"), std::string::npos) << lines;
}

/* The kernel may hold the old or the new configuration, or parts of both, when the manager dies. */
TEST_F(Recovery, KilledWhileChanging)
{
    std::mt19937 random(7);
    const std::vector<std::string> v4{"192.168.20.2", "192.168.20.3", "192.168.40.4"};
    const std::vector<std::string> v6{"2001:db8:20::2", "2001:db8:40::3"};
    for (int round = 0; round < 15; round++) {
        SCOPED_TRACE(round);
        std::atomic<bool> isOver = false;
        std::thread sender([&] {
            for (unsigned step = 0; !isOver; step++) {
                call(ipv6Change(ipv4Change(1, v4[step % v4.size()]), v6[step % v6.size()]).bytes());
            }
        });
        /* The neighbours are asked first. */
        std::this_thread::sleep_for(std::chrono::microseconds(200000 + random() % 30000));
        killManager();
        isOver = true;
        sender.join();
        startManager();

        const auto port = storedLan().astPort[1];
        const auto isStored = [&](const std::string &text, const std::uint8_t *bytes) {
            return std::ranges::equal(raw(text), std::span(bytes, raw(text).size()));
        };
        const auto stored4 = std::ranges::find_if(
            v4, [&](const auto &text) { return isStored(text, port.aucIpv4Addr); });
        const auto stored6 = std::ranges::find_if(
            v6, [&](const auto &text) { return isStored(text, port.aucIpv6Addr); });
        ASSERT_TRUE(stored4 != v4.end() && stored6 != v6.end());
        EXPECT_EQ(kernelAddresses("eth1"),
                  (std::vector<std::string>{*stored4 + "/24", *stored6 + "/64"}));
        EXPECT_EQ(storedStatus(), 0);
    }
}

TEST_F(Recovery, StatusSaysWhenAChangeIsUnderWay)
{
    std::atomic<bool> isOver = false;
    std::thread sender([&] {
        for (unsigned step = 0; !isOver; step++) {
            call(ipv4Change(1, step % 2 == 0 ? "192.168.20.3" : "192.168.20.2").bytes());
        }
    });
    EXPECT_TRUE(eventually([] { return storedStatus() == 1; }));
    isOver = true;
    sender.join();
    EXPECT_EQ(storedStatus(), 0);
}

} // namespace nwtest
