// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands 4 and 11: separate ports and bond, switchover; and the VLAN of the LAN set. */
#include "manager/engine/ledger.hpp"
#include "requests.hpp"

namespace nwtest {

namespace {

using Addresses = std::vector<std::string>;
using bmc::manager::Item;
using bmc::manager::Ledger;
using bmc::manager::ledgerRecord;
using bmc::manager::Store;

NW_NET_MODE_SET_S modeSet(std::uint8_t bits, std::uint8_t mode)
{
    NW_NET_MODE_SET_S set{};
    set.ucSetMask = bits;
    set.ucNetMode = mode;
    return set;
}

std::vector<std::uint8_t> modeRequest(std::uint8_t mode)
{
    return requestOf(NW_CMD_SET_NET_MODE, modeSet(1, mode));
}

std::vector<std::uint8_t> reverseRequest(std::uint8_t enable, std::uint8_t bits = 1)
{
    NW_LAN_REVERSE_SET_S set{};
    set.ucSetMask = bits;
    set.ucEnable = enable;
    return requestOf(NW_CMD_SET_LAN_REVERSE, set);
}

/* Separate ports, and settings for the bond that wait. */
constexpr const char *bondInWaiting = R"({
  "mode": "separate",
  "ports": {"dedicated": {"name": "eth0", "channel": 1},
            "shared": {"name": "eth1", "channel": 8},
            "bond": {"name": "bond0", "channel": 1}},
  "lan": {
    "dedicated": {"lan": true, "ipv4-enabled": true, "ipv4": "192.168.10.2/24",
                  "ipv4-gateway": "192.168.10.1"},
    "shared": {"lan": true, "ipv6-enabled": true, "ipv6": "2001:db8:20::2/64"},
    "bond": {"lan": true, "ipv4-enabled": true, "ipv4": "192.168.30.2/24",
             "ipv4-gateway": "192.168.30.1"}}})";

class NetMode : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        stopManager();
        configure(bondInWaiting);
        startManager();
    }
};

using Switchover = NetMode;
using VlanTest = ManagerTest;

bool canMake(const std::string &kind)
{
    return shell("ip link add probe9 " + kind +
                 " 2>/dev/null && ip link del probe9 && echo yes || "
                 "true") == "yes\n";
}

LanRequest vlanChange(std::uint8_t enable, std::uint16_t id, const std::string &address = "")
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_VLAN_ENABLE | NW_LAN_BIT_VLAN_ID | NW_LAN_BIT_VLAN_PRIORITY);
    request.port(1).ucVlanEnable = enable;
    request.port(1).usVlanid = id;
    request.port(1).ucVlanPriority = 5;
    if (!address.empty()) {
        request.select(1, NW_LAN_BIT_IPV4_ADDR);
        put(request.port(1).aucIpv4Addr, address);
    }
    return request;
}

} // namespace

TEST_F(NetMode, AddressesMoveToTheBondAndBack)
{
    expectAnswer(modeRequest(1), NW_OK);
    EXPECT_EQ(stored().state.ucIfcState, 1);
    EXPECT_TRUE(kernelAddresses("eth0").empty());
    EXPECT_TRUE(kernelAddresses("eth1").empty());
    EXPECT_TRUE(kernelGateways("eth0").empty());
    EXPECT_EQ(kernelAddresses("bond0"), Addresses{"192.168.30.2/24"});
    EXPECT_EQ(kernelGateways("bond0"), Addresses{"192.168.30.1 102"});
    EXPECT_TRUE(isUp("bond0"));
    EXPECT_NE(manager_->errorText().find("bond0 is no bond of the kernel's"), std::string::npos);

    /* Once more changes nothing. */
    const std::string before = everything();
    expectAnswer(modeRequest(1), NW_OK);
    EXPECT_EQ(before, everything());

    expectAnswer(modeRequest(0), NW_OK);
    EXPECT_EQ(stored().state.ucIfcState, 0);
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10.2/24"});
    EXPECT_EQ(kernelGateways("eth0"), Addresses{"192.168.10.1 100"});
    EXPECT_EQ(kernelAddresses("eth1"), Addresses{"2001:db8:20::2/64"});
    EXPECT_TRUE(kernelAddresses("bond0").empty());
}

TEST_F(NetMode, ModeSurvivesARestart)
{
    expectAnswer(modeRequest(1), NW_OK);
    const std::string kernel = kernelSnapshot();
    stopManager();
    startManager();
    EXPECT_EQ(kernel, kernelSnapshot());
}

TEST_F(NetMode, ResolverFollowsThePortsThatAreServed)
{
    DnsSet set{};
    set.bits[0] = 0x0005;
    set.ports[0].ucIpv4DnsMode = 1;
    put(set.ports[0].aucIpv4DnsServer[0], "10.0.0.53");
    expectAnswer(requestOf(NW_CMD_SET_DNS, set), NW_OK);
    EXPECT_NE(resolverText().find("10.0.0.53"), std::string::npos);
    expectAnswer(modeRequest(1), NW_OK);
    EXPECT_EQ(resolverText().find("10.0.0.53"), std::string::npos);
    expectAnswer(modeRequest(0), NW_OK);
    EXPECT_NE(resolverText().find("10.0.0.53"), std::string::npos);
}

TEST_F(NetMode, EachRefusalHasItsCode)
{
    expectRefused(modeRequest(2), 0x1E00001F);
    expectRefused(requestOf(NW_CMD_SET_NET_MODE, modeSet(2, 0)), 0x1E000021);
    expectRefused(requestOf(NW_CMD_SET_NET_MODE, modeSet(0x81, 0)), 0x1E000021);
    const std::string before = everything();
    expectAnswer(requestOf(NW_CMD_SET_NET_MODE, modeSet(0, 9)), NW_OK);
    EXPECT_EQ(before, everything());
}

TEST_F(NetMode, BondThatIsNotOnTheBoard)
{
    stopManager();
    std::string json = bondInWaiting;
    json.replace(json.find("\"bond0\","), 8, "\"bond0\", \"present\": false,");
    configure(json);
    startManager();
    expectRefused(modeRequest(1), 0x1E000004);
}

TEST_F(NetMode, PortsThatWouldShareASegment)
{
    expectAnswer(modeRequest(1), NW_OK);
    NW_LAN_CFG_DB_INFO_S lan = storedLan();
    lan.astPort[1].ucIpv4Enable = 1;
    put(lan.astPort[1].aucIpv4Addr, "192.168.10.9");
    put(lan.astPort[1].aucIpv4Mask, "255.255.255.0");
    putLan(lan);
    expectRefused(modeRequest(0), NW_ERR_IPV4_SAME_SEGMENT);
}

/* The old ports are clear by the time the bond's address is refused. */
TEST_F(NetMode, KernelRefusalPutsEverythingBack)
{
    shell("ip link set bond0 up && ip address add 192.168.30.2/24 dev bond0");
    expectRefused(modeRequest(1), 0x1E000002);
    EXPECT_EQ(kernelGateways("eth0"), Addresses{"192.168.10.1 100"});
}

/* Fails over between both ports, and looks at their links to know when. */
void expectRealBond()
{
    const std::string bond = shell("ip -d link show bond0");
    EXPECT_NE(bond.find("mode active-backup"), std::string::npos) << bond;
    EXPECT_NE(bond.find("miimon 100"), std::string::npos) << bond;
    EXPECT_EQ(shell("ip -br link show master bond0 | wc -l"), "2\n");
    EXPECT_EQ(kernelAddresses("bond0"), Addresses{"192.168.30.2/24"});
    EXPECT_TRUE(kernelAddresses("eth0").empty());
}

TEST_F(NetMode, MakesABondWhereNoInterfaceStandsForOne)
{
    const bool hasBonds = canMake("type bond");
    shell("ip link del bond0");
    if (!hasBonds) {
        expectRefused(modeRequest(1), 0x1E00041C);
        EXPECT_NE(manager_->errorText().find("the kernel has no bonds"), std::string::npos);
        return;
    }
    const NW_LAN_CFG_DB_INFO_S before = storedLan();
    expectAnswer(modeRequest(1), NW_OK);
    expectRealBond();
    for (const unsigned port : {0U, 1U}) { /* a member shows the bond's */
        EXPECT_TRUE(std::ranges::equal(storedLan().astPort[port].aucMacAddr,
                                       before.astPort[port].aucMacAddr));
    }

    expectAnswer(modeRequest(0), NW_OK);
    EXPECT_EQ(shell("ip -br link | grep -c bond0 || true"), "0\n");
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10.2/24"});

    const Ledger ledger(Store().read(ledgerRecord));
    for (const Item &item : ledger.withFound({}).items) {
        EXPECT_NE(item.subject, "bond0") << "waits for an interface that is gone";
    }
}

/* As the kernel's driver makes one by itself: round robin, and without a look at the links. */
TEST_F(NetMode, TakesABondThatIsThereAlready)
{
    const bool hasBonds = canMake("type bond");
    shell("ip link del bond0");
    if (!hasBonds) {
        expectRefused(modeRequest(1), 0x1E00041C);
        return;
    }
    shell("ip link add bond0 type bond mode balance-rr miimon 0");
    expectAnswer(modeRequest(1), NW_OK);
    expectRealBond();

    expectAnswer(modeRequest(0), NW_OK);
    EXPECT_EQ(shell("ip -br link show master bond0 | wc -l"), "0\n");
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10.2/24"});
}

TEST_F(Switchover, PortsTradeTheirInterfaces)
{
    const auto before = stored();
    expectAnswer(reverseRequest(1), NW_OK);
    auto after = stored();
    EXPECT_STREQ(after.state.acIfcName[0], "eth1");
    EXPECT_STREQ(after.state.acIfcName[1], "eth0");
    EXPECT_EQ(after.state.ucIfcValue1, 1);
    EXPECT_EQ(after.state.aucChannel[0], before.state.aucChannel[0]);
    const std::uint32_t swapped = after.state.auiIfIndex[0];
    const std::uint32_t former = before.state.auiIfIndex[1];
    EXPECT_EQ(swapped, former);
    EXPECT_STREQ(after.lan.astPort[0].szIfcName, "eth1");
    EXPECT_EQ(std::memcmp(after.lan.astPort[0].aucMacAddr, before.lan.astPort[1].aucMacAddr, 6), 0);
    EXPECT_EQ(kernelAddresses("eth1"), Addresses{"192.168.10.2/24"});
    EXPECT_EQ(kernelGateways("eth1"), Addresses{"192.168.10.1 100"});
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"2001:db8:20::2/64"});

    const std::string once = everything();
    expectAnswer(reverseRequest(1), NW_OK);
    EXPECT_EQ(once, everything());

    stopManager();
    startManager();
    EXPECT_EQ(kernelAddresses("eth1"), Addresses{"192.168.10.2/24"});

    expectAnswer(reverseRequest(0), NW_OK);
    EXPECT_STREQ(stored().state.acIfcName[0], "eth0");
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10.2/24"});
    EXPECT_EQ(kernelAddresses("eth1"), Addresses{"2001:db8:20::2/64"});
}

TEST_F(Switchover, EachRefusalHasItsCode)
{
    expectRefused(reverseRequest(2), 0x1E00001F);
    expectRefused(reverseRequest(1, 3), 0x1E000021);
    const std::string before = everything();
    expectAnswer(reverseRequest(1, 0), NW_OK);
    EXPECT_EQ(before, everything());
}

TEST_F(Switchover, KernelRefusalPutsEverythingBack)
{
    shell("ip address add 192.168.10.2/24 dev eth1");
    expectRefused(reverseRequest(1), 0x1E000002);
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10.2/24"});
}

TEST_F(VlanTest, SubInterfaceComesAndGoes)
{
    if (!canMake("link eth1 type vlan id 9")) {
        /* A kernel without VLANs: refused, and the rest of the request undone. */
        shell("ip -j link show eth1 >/run/before");
        const auto lan = storedLan();
        expectAnswer(vlanChange(1, 100, "192.168.20.9"), 0x1E00021C, 1);
        const auto after = storedLan();
        EXPECT_EQ(std::memcmp(&lan, &after, sizeof(lan)), 0);
        EXPECT_EQ(kernelAddresses("eth1"), (Addresses{"192.168.20.2/24", "2001:db8:20::2/64"}));
        EXPECT_NE(manager_->errorText().find("the kernel has no VLANs"), std::string::npos);
        return;
    }
    expectAnswer(vlanChange(1, 100), NW_OK, 1);
    const std::string made = shell("ip -d link show eth1.100");
    EXPECT_NE(made.find("id 100"), std::string::npos);
    EXPECT_NE(made.find("egress-qos-map { 0:5 }"), std::string::npos) << made;
    expectAnswer(vlanChange(1, 101), NW_OK, 1);
    EXPECT_EQ(shell("ip -br link | grep -c 'eth1[.]'"), "1\n");
    expectAnswer(vlanChange(0, 0), NW_OK, 1);
    EXPECT_EQ(shell("ip -br link | grep -c 'eth1[.]' || true"), "0\n");
}

} // namespace nwtest
