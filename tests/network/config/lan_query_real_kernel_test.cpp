// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The LAN query on a real interface: the states that a real kernel reports. Runs in a network of
// its own, whose eth1 has its far end in peer1.
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <net/if.h>
#include <thread>

#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "network_mng/lan.h"
#include "process.hpp"
#include "query_model.hpp"

namespace {

using query::Board;
using query::Bytes;
namespace at = support::at;

const char *const linkLocal = "fe80::aa";
const char *const validAddress = "2001:db8:20::1";
const char *const takenAddress = "2001:db8:20::f";
const char *const newAddress = "2001:db8:20::2";
const char *const absentAddress = "2001:db8:20::99";

void addAddress(const std::string &device, const std::string &address, const std::string &options)
{
    support::shell("ip -6 address add " + address + "/64 dev " + device + " " + options);
}

// Probes of a new address, one a second.
void setProbes(const std::string &device, int count)
{
    std::ofstream("/proc/sys/net/ipv6/conf/" + device + "/dad_transmits") << count << std::flush;
}

class LanQueryRealKernel : public fake::FakePlatformTest {
protected:
    static void SetUpTestSuite()
    {
        support::shell("ip link set peer1 up");
        support::shell("ip link set eth1 up");
        addAddress("peer1", takenAddress, "nodad");
        addAddress("eth1", linkLocal, "nodad");
        addAddress("eth1", validAddress, "nodad");
        addAddress("eth1", takenAddress, "");
        waitUntilTaken();
        setProbes("eth1", 100);
        addAddress("eth1", newAddress, "");
    }

    static void waitUntilTaken()
    {
        ASSERT_TRUE(support::eventually([] {
            return support::run("ip -6 -o address show dev eth1 dadfailed | grep " +
                                std::string(takenAddress))
                       .status == 0;
        })) << "the kernel found no duplicate";
    }

    Board board()
    {
        Board board{support::ifcRecord(0), {}, true, {}};
        support::putU32(board.ifc, 12, if_nametoindex("eth1"));
        support::PortEntry entry = board.lan.port(1);
        entry.ipv6Address(validAddress, 64).set(at::ipv6Count, 3);
        entry.ipv6Further(0, takenAddress, 64).ipv6Further(1, newAddress, 64);
        entry.ipv6Further(2, absentAddress, 64);
        support::put(board.lan.bytes(), 4 + 791 + at::ipv6LinkLocal, support::ipv6(linkLocal));
        return board;
    }

    Bytes ask(const Board &board, const std::function<void()> &observe = {})
    {
        platform.reset();
        platform.onLine(observe);
        board.install();
        const support::Guarded view(query::viewSize);
        EXPECT_EQ(LIB_NW_GetLanConfig("eth1", view.as<NW_ETHER_INS_INFO_S>()), 0U);
        return Bytes(view.bytes().begin(), view.bytes().end());
    }
};

TEST_F(LanQueryRealKernel, ReportsValidFailedAndTentativeAddresses)
{
    const Board asked = board();
    query::View expected = query::expectedView(asked, 1, Bytes(query::viewSize));
    expected.state(0, 3); // link-local
    expected.state(1, 3);
    expected.state(2, 2); // the far end has it
    expected.state(3, 1); // still probed
    expected.state(4, 1); // the kernel doesn't know it
    EXPECT_EQ(query::difference(ask(asked), expected.bytes()), "");
}

TEST_F(LanQueryRealKernel, IgnoresTheOtherInterfaces)
{
    Board asked = board();
    support::putU32(asked.ifc, 12, if_nametoindex("eth0"));
    EXPECT_EQ(query::difference(ask(asked),
                                query::expectedView(asked, 1, Bytes(query::viewSize)).bytes()),
              "");
}

TEST_F(LanQueryRealKernel, FollowsAnAddressThatTheKernelDrops)
{
    const Board asked = board();
    const std::size_t states = query::offsetOf("astIpv6AddrState");
    support::shell("ip -6 address del " + std::string(validAddress) + "/64 dev eth1");
    EXPECT_EQ(ask(asked)[states + 4], 1U);
    addAddress("eth1", validAddress, "nodad");
    EXPECT_EQ(ask(asked)[states + 4], 3U);
}

int lowestFree()
{
    const int descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return descriptor;
}

// Programs that other threads start meanwhile do not inherit the socket.
TEST_F(LanQueryRealKernel, KeepsItsSocketFromOtherPrograms)
{
    const int socket = lowestFree();
    int seen = 0;
    ask(board(), [&] {
        const int descriptorFlags = fcntl(socket, F_GETFD);
        if (descriptorFlags >= 0) {
            ++seen;
            EXPECT_EQ(descriptorFlags, FD_CLOEXEC) << lines().back().text;
        }
    });
    EXPECT_GT(seen, 2);
}

// The lowest free descriptor is the same before and after.
TEST_F(LanQueryRealKernel, LeavesNoSocketBehind)
{
    const Board asked = board();
    const int before = lowestFree();
    ask(asked);
    ask(asked);
    EXPECT_EQ(lowestFree(), before);
}

} // namespace
