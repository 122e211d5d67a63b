// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 9: link modes, on a virtual interface that keeps what it is told; and command 8. */
#include <cstring>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "requests.hpp"

namespace nwtest {

namespace {

std::string linkMode(const std::string &interface)
{
    ethtool_cmd mode{};
    mode.cmd = ETHTOOL_GSET;
    ifreq request{};
    interface.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
    request.ifr_data = reinterpret_cast<char *>(&mode);
    const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    EXPECT_EQ(ioctl(descriptor, SIOCETHTOOL, &request), 0);
    close(descriptor);
    return std::to_string(ethtool_cmd_speed(&mode)) + (mode.duplex == 1 ? " full" : " half") +
           (mode.autoneg == 1 ? " auto" : " forced");
}

/* Port 0's bits and mode, and for the second port a mode with other bits. */
std::vector<std::uint8_t> linkModeSet(std::uint32_t bits, NW_AN_SET_PORT_S mode,
                                      std::uint32_t sharedBits = 0)
{
    NW_AN_SET_REQ_S set{};
    set.auiBitmap[0] = bits;
    set.auiBitmap[1] = sharedBits;
    set.astPort[0] = mode;
    set.astPort[1] = {1, 1, 1};
    return requestOf(NW_CMD_SET_AN, set);
}

std::vector<std::uint8_t> restart(std::uint32_t delay)
{
    return requestOf(NW_CMD_RESTART, delay);
}

/* Port 0 is an interface with link modes, port 1 has none. */
class LinkMode : public ManagerTest {
protected:
    void SetUp() override
    {
        bmc::manager::Store().put(bmc::manager::anRecord, {});
        ManagerTest::SetUp();
        stopManager();
        shell("ip link del eth0 && ip tuntap add eth0 mode tap");
        startManager();
    }

    void TearDown() override
    {
        stopManager();
        shell("ip tuntap del eth0 mode tap");
    }
};

class Restart : public ManagerTest {
protected:
    void SetUp() override
    {
        bmc::manager::Store().put(bmc::manager::anRecord, {});
        ManagerTest::SetUp();
    }
};

} // namespace

TEST_F(LinkMode, SelectedFieldsReachInterfaceAndRecord)
{
    const std::string first = linkMode("eth0");
    expectAnswer(linkModeSet(7, {0, 0, 1}), NW_OK, 0);
    EXPECT_EQ(linkMode("eth0"), "100 half forced");
    EXPECT_NE(linkMode("eth0"), first);

    expectAnswer(linkModeSet(4, {1, 1, 77}), NW_OK, 0);
    EXPECT_EQ(linkMode("eth0"), "100 full forced");

    expectAnswer(linkModeSet(3, {1, 0, 2}), NW_OK, 0);
    EXPECT_EQ(linkMode("eth0"), "1000 full auto");
    const NW_AN_CFG_PORT_S entry = stored().an.astPort[0];
    EXPECT_EQ(entry.ucAutoNeg, 1);
    EXPECT_EQ(entry.ucDuplex, 1);
    EXPECT_EQ(entry.ucSpeed, 2);
}

TEST_F(LinkMode, EachRefusalHasItsCode)
{
    expectRefused(linkModeSet(8, {0, 0, 0}), 0x1E000021);
    expectRefused(linkModeSet(1, {2, 0, 0}), 0x1E000036);
    expectRefused(linkModeSet(4, {0, 2, 0}), 0x1E000036);
    expectRefused(linkModeSet(2, {0, 0, 3}), 0x1E000036);
    expectRefused(linkModeSet(2, {0, 0, 0x01000000}), 0x1E000036);
    const std::string before = everything();
    expectAnswer(linkModeSet(0, {9, 9, 9}), NW_OK);
    EXPECT_EQ(before, everything());
}

/* Port 1 refuses; port 0, which was set before, goes back. */
TEST_F(LinkMode, InterfaceWithoutLinkModes)
{
    const std::string first = linkMode("eth0");
    expectRefused(linkModeSet(7, {0, 0, 1}, 7), 0x1E00061C, 0);
    EXPECT_EQ(linkMode("eth0"), first);
    expectRefused(linkModeSet(0, {}, 7), 0x1E00061C, 1);
    EXPECT_NE(manager_->errorText().find("does not let its speed and duplex be set"),
              std::string::npos);
}

TEST_F(LinkMode, StartAndRestartSetItAgain)
{
    expectAnswer(linkModeSet(7, {0, 0, 1}), NW_OK, 0);
    stopManager();
    shell("ip tuntap del eth0 mode tap && ip tuntap add eth0 mode tap");
    EXPECT_NE(linkMode("eth0"), "100 half forced");
    startManager();
    EXPECT_EQ(linkMode("eth0"), "100 half forced");

    shell("ip tuntap del eth0 mode tap && ip tuntap add eth0 mode tap");
    expectAnswer(restart(0), NW_OK);
    EXPECT_EQ(linkMode("eth0"), "100 half forced");
}

TEST_F(Restart, PutsRightWhatOthersChanged)
{
    const std::string before = everything();
    shell("ip address flush dev eth1; ip link set eth1 down; hostname other;"
          "echo 8 >/proc/sys/net/ipv4/conf/eth0/arp_ignore; rm $BMC_STATE_DIR/resolv.conf");
    expectAnswer(restart(0), NW_OK);
    EXPECT_EQ(kernelAddresses("eth1"),
              (std::vector<std::string>{"192.168.20.2/24", "2001:db8:20::2/64"}));
    shell("hostname bmc");
    EXPECT_EQ(before, everything());
}

TEST_F(Restart, ComesAfterItsDelay)
{
    shell("ip address flush dev eth1");
    expectAnswer(restart(1), NW_OK);
    EXPECT_TRUE(kernelAddresses("eth1").empty());
    EXPECT_TRUE(eventually([] { return kernelAddresses("eth1").size() == 2; }));
    EXPECT_TRUE(eventually(
        [this] { return manager_->errorText().find("restart: done") != std::string::npos; }));
}

TEST_F(Restart, DelayIsBounded)
{
    expectRefused(restart(3601), 0x1E000023);
    expectRefused(restart(0xFFFFFFFF), 0x1E000023);
}

/* A port that is missing keeps nothing from the others; it is served when it comes again. */
TEST_F(Restart, MissingPortIsLeftOut)
{
    shell("ip link del eth0; ip address flush dev eth1");
    expectAnswer(restart(0), NW_OK);
    EXPECT_EQ(kernelAddresses("eth1").size(), 2U);
    EXPECT_NE(manager_->errorText().find("there is no interface eth0"), std::string::npos);
    EXPECT_EQ(storedStatus(), 0);

    shell("ip link add eth0 type veth peer name peer0 && ip link set peer0 up");
    EXPECT_TRUE(eventually([] { return kernelAddresses("eth0").size() == 1; }));
}

TEST_F(Restart, KernelRefusalIsToldAndStopsNothingElse)
{
    shell("ip address flush dev eth1; ip address flush dev eth0");
    shell("echo 1 >/proc/sys/net/ipv6/conf/eth1/disable_ipv6");
    expectAnswer(restart(0), 0x1E000002);
    EXPECT_EQ(kernelAddresses("eth0").size(), 1U);
    EXPECT_EQ(kernelAddresses("eth1"), std::vector<std::string>{"192.168.20.2/24"});
    EXPECT_EQ(storedStatus(), 0);
}

TEST_F(Restart, RoutesThatOthersFlushedComeBack)
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_GATEWAY);
    put(request.port(1).aucIpv4Gateway, "192.168.20.1");
    expectAnswer(request, NW_OK, 1);
    const auto isFlushed = [] {
        shell("ip route flush dev eth1; ip -6 route flush dev eth1");
        return kernelGateways("eth1").empty();
    };
    ASSERT_TRUE(isFlushed());
    expectAnswer(restart(0), NW_OK);
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"192.168.20.1 101"});

    stopManager();
    ASSERT_TRUE(isFlushed());
    startManager();
    EXPECT_EQ(kernelGateways("eth1"), std::vector<std::string>{"192.168.20.1 101"});
}

TEST_F(Restart, TheLaterTakesThePlaceOfTheEarlier)
{
    expectAnswer(restart(1), NW_OK);
    expectAnswer(restart(0), NW_OK);
    shell("ip address flush dev eth1");
    EXPECT_FALSE(eventually([] { return !kernelAddresses("eth1").empty(); },
                            std::chrono::milliseconds(2000)));
}

} // namespace nwtest
