// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands 5 to 7 and the ARP fields of the LAN set: what the far end of the wire sees. */
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>

#include <arpa/inet.h>
#include <net/ethernet.h>
#include <net/if.h>
#include <netinet/if_ether.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "requests.hpp"

namespace nwtest {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/* The far end of a port's wire. */
class FarEnd {
public:
    explicit FarEnd(const char *interface)
        : socket_(socket(AF_PACKET, SOCK_DGRAM, htons(ETH_P_ARP)))
    {
        address_.sll_family = AF_PACKET;
        address_.sll_protocol = htons(ETH_P_ARP);
        address_.sll_ifindex = static_cast<int>(if_nametoindex(interface));
        EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr *>(&address_), sizeof(address_)), 0);
    }

    ~FarEnd()
    {
        close(socket_);
    }

    FarEnd(const FarEnd &) = delete;
    FarEnd &operator=(const FarEnd &) = delete;

    bool isAnswered(const std::string &asked) const
    {
        ether_arp packet{};
        packet.ea_hdr = {htons(1), htons(ETH_P_IP), 6, 4, htons(ARPOP_REQUEST)};
        packet.arp_sha[0] = 2;
        std::ranges::copy(raw(asked), packet.arp_tpa);
        sockaddr_ll to = address_;
        to.sll_halen = 6;
        std::fill_n(to.sll_addr, 6, std::uint8_t{0xFF});
        EXPECT_EQ(sendto(socket_, &packet, sizeof(packet), 0, reinterpret_cast<sockaddr *>(&to),
                         sizeof(to)),
                  static_cast<ssize_t>(sizeof(packet)));
        return count(ARPOP_REPLY, asked, milliseconds(300), 1) == 1;
    }

    /* Announcements of the address within a time, up to a number. */
    unsigned announcements(const std::string &address, milliseconds time, unsigned most = 99) const
    {
        return count(ARPOP_REQUEST, address, time, most);
    }

private:
    unsigned count(std::uint16_t operation, const std::string &sender, milliseconds time,
                   unsigned most) const
    {
        unsigned found = 0;
        const auto end = Clock::now() + time;
        while (found < most) {
            const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
            pollfd waiting{socket_, POLLIN, 0};
            if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) != 1) {
                break;
            }
            ether_arp packet{};
            sockaddr_ll from{};
            socklen_t size = sizeof(from);
            recvfrom(socket_, &packet, sizeof(packet), 0, reinterpret_cast<sockaddr *>(&from),
                     &size);
            const bool isOurs = from.sll_pkttype != PACKET_OUTGOING &&
                                packet.ea_hdr.ar_op == htons(operation) &&
                                std::ranges::equal(packet.arp_spa, raw(sender));
            const bool isAnnouncement = std::ranges::equal(packet.arp_spa, packet.arp_tpa);
            found += isOurs && (operation == ARPOP_REPLY || isAnnouncement);
        }
        return found;
    }

    int socket_;
    sockaddr_ll address_{};
};

std::vector<std::uint8_t> suspend(std::uint8_t port, std::uint8_t value)
{
    return requestOf(NW_CMD_SUSPEND_ARP, NW_ARP_SUSPEND_REQ_S{port, value});
}

std::vector<std::uint8_t> update(std::uint32_t port, std::uint8_t subject, std::uint32_t value)
{
    return requestOf(NW_CMD_UPDATE_ARP, NW_ARP_UPDATE_REQ_S{port, subject, value});
}

std::vector<std::uint8_t> resume(std::uint32_t value)
{
    return requestOf(NW_CMD_RESUME_ARP, value);
}

/* Byte of the whole response. */
unsigned answered(const std::vector<std::uint8_t> &request, std::size_t offset)
{
    const auto response = call(request);
    EXPECT_TRUE(response && response->uiResult == NW_OK);
    return response ? response->aucResData[offset - 8] : 0xFFU;
}

const std::uint8_t *arpBytes(const NW_LAN_CFG_DB_INFO_S &lan, unsigned port)
{
    return lan.astPort[port].aucReserved787;
}

/* The platform's file that tells whether the watchdog timer runs. */
void runWatchdog(bool isRunning)
{
    std::ofstream(std::string(std::getenv("BMC_STATE_DIR")) + "/watchdog-running")
        << (isRunning ? "1\n" : "0\n");
}

class Arp : public ManagerTest {
protected:
    void TearDown() override
    {
        runWatchdog(false);
    }
};

} // namespace

TEST_F(Arp, SuspendedResponsesStayAway)
{
    const FarEnd far("peer1");
    EXPECT_TRUE(far.isAnswered("192.168.20.2"));

    runWatchdog(true);
    EXPECT_EQ(answered(suspend(1, 2), 13), 2U);
    expectAnswer(suspend(1, 2), NW_OK, 1);
    EXPECT_FALSE(far.isAnswered("192.168.20.2"));
    EXPECT_TRUE(FarEnd("peer0").isAnswered("192.168.10.2"));
    EXPECT_EQ(arpBytes(storedLan(), 1)[2], 2);
    EXPECT_EQ(answered(update(1, 0, 0), 12), 2U);

    expectAnswer(resume(0), NW_OK);
    EXPECT_TRUE(far.isAnswered("192.168.20.2"));
    EXPECT_EQ(arpBytes(storedLan(), 1)[2], 2);
    EXPECT_EQ(answered(update(1, 0, 0), 12), 0U);

    expectAnswer(resume(1), NW_OK);
    EXPECT_FALSE(far.isAnswered("192.168.20.2"));

    /* Nor after a restart. */
    stopManager();
    shell("echo 0 >/proc/sys/net/ipv4/conf/eth1/arp_ignore");
    startManager();
    EXPECT_FALSE(far.isAnswered("192.168.20.2"));

    EXPECT_EQ(answered(suspend(1, 1), 13), 1U);
    EXPECT_TRUE(far.isAnswered("192.168.20.2"));
}

TEST_F(Arp, SuspensionFollowsTheWatchdog)
{
    const FarEnd far("peer1");
    EXPECT_EQ(answered(suspend(1, 2), 13), 2U);
    EXPECT_TRUE(far.isAnswered("192.168.20.2"));

    runWatchdog(true);
    EXPECT_TRUE(eventually([&] { return !far.isAnswered("192.168.20.2"); }));
    stopManager();
    startManager();
    EXPECT_FALSE(far.isAnswered("192.168.20.2"));

    runWatchdog(false);
    EXPECT_TRUE(eventually([&] { return far.isAnswered("192.168.20.2"); }));
}

TEST_F(Arp, ControlSwitchesResponses)
{
    const FarEnd far("peer0");
    expectAnswer(update(0, 1, 0), NW_OK, 0);
    EXPECT_EQ(arpBytes(storedLan(), 0)[0], 0);
    EXPECT_FALSE(far.isAnswered("192.168.10.2"));

    LanRequest request;
    request.select(0, NW_LAN_BIT_ARP_CONTROL);
    request.port(0).ucArpControl = 2;
    expectAnswer(request, NW_OK, 0);
    EXPECT_TRUE(far.isAnswered("192.168.10.2"));
}

TEST_F(Arp, AnnouncementsComeAtTheirInterval)
{
    const FarEnd far("peer1");
    EXPECT_EQ(far.announcements("192.168.20.2", milliseconds(700)), 0U);

    /* Once. */
    expectAnswer(update(1, 1, 3), NW_OK, 1);
    EXPECT_EQ(far.announcements("192.168.20.2", milliseconds(1200)), 1U);

    /* Each 500 ms; with a margin for a busy machine. */
    expectAnswer(update(1, 2, 1), NW_OK, 1);
    EXPECT_EQ(arpBytes(storedLan(), 1)[1], 1);
    EXPECT_EQ(far.announcements("192.168.20.2", milliseconds(5000), 4), 4U);

    runWatchdog(true);
    expectAnswer(suspend(1, 1), NW_OK, 1);
    far.announcements("192.168.20.2", milliseconds(50));
    EXPECT_EQ(far.announcements("192.168.20.2", milliseconds(1200)), 0U);

    expectAnswer(resume(0), NW_OK);
    EXPECT_EQ(far.announcements("192.168.20.2", milliseconds(2000), 1), 1U);

    /* A new address is announced, the old one no more. */
    LanRequest moved;
    moved.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(moved.port(1).aucIpv4Addr, "192.168.20.9");
    expectAnswer(moved, NW_OK, 1);
    EXPECT_EQ(far.announcements("192.168.20.9", milliseconds(2000), 2), 2U);
    EXPECT_EQ(far.announcements("192.168.20.2", milliseconds(800)), 0U);
}

TEST_F(Arp, EachRefusalHasItsCode)
{
    expectRefused(suspend(2, 0), 0x1E000004, 2);
    expectRefused(suspend(3, 0), 0x1E000004, 0);
    expectRefused(suspend(1, 4), 0x1E000017, 1);
    expectRefused(update(2, 1, 0), 0x1E000004, 2);
    expectRefused(update(0x10000, 1, 0), 0x1E000004, 0);
    expectRefused(update(1, 1, 4), 0x1E000017, 1);
    expectRefused(update(1, 2, 256), 0x1E000017, 1);
    expectRefused(update(1, 3, 0x80000000), 0x1E000017, 1);
    expectRefused(update(1, 4, 0), 0x1E000021, 1);
}

TEST_F(Arp, InterfaceThatIsGone)
{
    shell("ip link del eth1");
    expectRefused(suspend(1, 2), 0x1E000002, 1);
}

} // namespace nwtest
