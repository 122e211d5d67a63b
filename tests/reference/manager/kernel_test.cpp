// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Reading and changing a real kernel. */
#include <algorithm>
#include <fstream>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "manager/kernel/kernel.hpp"
#include "manager_system.hpp"
#include "worlds.hpp"

namespace {

std::size_t received;

} // namespace

/* Stands before libc's function for everything in this process. */
extern "C" [[gnu::visibility("default")]] ssize_t recvmsg(int descriptor, msghdr *message,
                                                          int flags)
{
    const ssize_t size = syscall(SYS_recvmsg, descriptor, message, flags);
    received += size > 0 && (flags & MSG_PEEK) == 0 ? static_cast<std::size_t>(size) : 0;
    return size;
}

namespace nwtest {

namespace {

using namespace bmc;
using namespace bmc::manager;

/* Without what every kernel need not have, and what isn't the kernel's. */
World kernelWorld(std::mt19937 &random)
{
    World world = wanted(anyConfiguration(random), {});
    std::erase_if(world.items, [](const Item &item) {
        const bool isOfVlan = item.subject.find('.') != std::string::npos;
        return isOfVlan || item.kind == Kind::bond || item.kind == Kind::member ||
               item.subject.empty();
    });
    return world;
}

class KernelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char *name : {"eth0", "eth1", "bond0"}) {
            shell(std::string("ip address flush dev ") + name + "; ip link set " + name + " down");
        }
    }

    bool isRefused(const Item &item, bool isRemoval = false)
    {
        try {
            kernel_.apply({item, isRemoval});
            return false;
        } catch (const MachineError &) {
            return true;
        }
    }

    std::size_t bytesOfRead()
    {
        received = 0;
        kernel_.read();
        return received;
    }

    bool holds(const Item &item)
    {
        return kernel_.read().items.contains(item);
    }

    Kernel kernel_;
};

} // namespace

TEST_F(KernelTest, RandomWorldsAreMadeSoAndWhatIsForeignStays)
{
    std::mt19937 random(3);
    Items owned;
    for (const char *name : {"eth0", "eth1", "bond0"}) {
        shell(std::string("sysctl -qw net.ipv6.conf.") + name + ".accept_dad=0 || true");
    }
    for (unsigned round = 0; round < 60; round++) {
        SCOPED_TRACE(round);
        const World world = kernelWorld(random);
        unsigned rounds = 0;
        for (; rounds < 6; rounds++) {
            const std::vector<Step> steps = plan(world, kernel_.read(), owned);
            if (steps.empty()) {
                break;
            }
            for (const Step &step : steps) {
                if (isRefused(step.item, step.isRemoval)) {
                    break;
                }
                if (!step.isRemoval) {
                    owned.insert(step.item);
                }
            }
        }
        std::string left;
        for (const Step &step : plan(world, kernel_.read(), owned)) {
            left += textOf(step) + "; ";
        }
        ASSERT_EQ(left, "");
        EXPECT_LE(rounds, 4U);
        shell("ip address replace 10.9.9.9/32 dev eth0");
        EXPECT_TRUE(holds(addressOn("eth0", "10.9.9.9", 32)));
    }
}

TEST_F(KernelTest, ReadsWhatOthersMade)
{
    shell("ip link set eth1 up && ip address add 192.0.2.1/24 dev eth1 &&"
          "ip address add 2001:db8::1/64 dev eth1 nodad &&"
          "ip route add 10.0.0.0/8 via 192.0.2.9 metric 200 proto 124 &&"
          "ip route add 10.0.0.0/8 via 192.0.2.9 metric 7 &&"
          "ip route add default dev eth1 metric 9 proto 124");
    std::ofstream("/proc/sys/net/ipv4/conf/eth1/arp_ignore") << 8;
    std::ofstream("/proc/sys/net/ipv6/conf/eth1/hop_limit") << 33;
    std::ofstream("/proc/sys/net/ipv6/conf/default/hop_limit") << 44;
    const Actual actual = kernel_.read();
    Items routes;
    for (const Item &item : actual.items) {
        if (item.kind == Kind::route) {
            routes.insert(item);
        }
    }
    EXPECT_EQ(routes, (Items{routeOn("eth1", "10.0.0.0", 8, "192.0.2.9", 200),
                             routeOn("eth1", "0.0.0.0", 0, "", 9)}));
    EXPECT_TRUE(actual.items.contains(addressOn("eth1", "192.0.2.1", 24)));
    EXPECT_TRUE(actual.items.contains(addressOn("eth1", "2001:db8::1", 64)));
    EXPECT_TRUE(actual.items.contains(linkOf("eth1", true)));
    EXPECT_TRUE(actual.items.contains(linkOf("eth0", false)));
    EXPECT_TRUE(actual.items.contains({Kind::arpIgnore, "eth1", {}, {}, {}, 8}));
    EXPECT_TRUE(actual.items.contains({Kind::hopLimit, "eth1", {}, {}, {}, 33}));
    EXPECT_TRUE(actual.items.contains({Kind::hopLimit, newInterface, {}, {}, {}, 44}));
    EXPECT_TRUE(actual.items.contains({Kind::subnet, "eth1", {}, address("192.0.2.0", 24)}));
    EXPECT_EQ(actual.links.at("eth1").type, "veth");
    EXPECT_EQ(std::to_string(actual.links.at("eth1").index) + "\n",
              shell("cat /sys/class/net/eth1/ifindex"));
    std::ofstream("/proc/sys/net/ipv4/conf/eth1/arp_ignore") << 0;
}

/* Others' routes are left out by the kernel itself: thirty thousand of them would fill the memory
 * of a small board only to be thrown away. */
TEST_F(KernelTest, OthersRoutesAreNotEvenSent)
{
    constexpr std::size_t routes = 30000;
    shell("ip link set eth1 up");
    const std::size_t without = bytesOfRead();
    shell("for i in $(seq 0 119); do for j in $(seq 0 249); do "
          "echo route add 10.$i.$j.0/24 dev eth1; done; done | ip -batch -");
    const std::size_t with = bytesOfRead();
    EXPECT_GT(without, 0U);
    EXPECT_LT(with, without + routes);
    EXPECT_TRUE(std::ranges::none_of(kernel_.read().items,
                                     [](const Item &item) { return item.kind == Kind::route; }));
}

/* What cannot be read now is not what is not there. */
TEST_F(KernelTest, AFileThatCannotBeOpenedIsAnError)
{
    kernel_.read();
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_THROW(kernel_.read(), MachineError);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_NO_THROW(kernel_.read());
}

TEST_F(KernelTest, RefusalsAndWhatIsMissing)
{
    const Item there = addressOn("eth1", "192.0.2.1", 24);
    EXPECT_FALSE(isRefused(there));
    EXPECT_TRUE(isRefused(there));
    EXPECT_FALSE(isRefused(there, true));
    EXPECT_FALSE(isRefused(there, true));
    EXPECT_TRUE(isRefused(routeOn("eth1", "10.0.0.0", 8, "203.0.113.9", 200)));
    EXPECT_THROW(kernel_.apply({addressOn("eth7", "192.0.2.1", 24)}), MissingInterface);
    EXPECT_THROW(kernel_.apply({linkOf(std::string(40, 'x'), true)}), MissingInterface);
    EXPECT_THROW(kernel_.apply({{Kind::hopLimit, "eth7", {}, {}, {}, 9}}), MissingInterface);
    try {
        kernel_.apply({{Kind::hopLimit, "eth1", {}, {}, {}, 999}});
        ADD_FAILURE() << "no limit";
    } catch (const MachineError &error) {
        EXPECT_STREQ(error.what(), "Invalid argument");
    }
    EXPECT_THROW(kernel_.apply({{Kind::hopLimit, "../conf/eth1", {}, {}, {}, 9}}),
                 MissingInterface);
    EXPECT_FALSE(isRefused(addressOn("eth7", "192.0.2.1", 24), true));
    /* The next call works as ever. */
    EXPECT_FALSE(isRefused(linkOf("eth1", true)));
    EXPECT_TRUE(holds(linkOf("eth1", true)));
}

/* A flushed route of the kernel's own is made as the kernel makes it: it goes with its address. */
TEST_F(KernelTest, SubnetIsMadeAgain)
{
    const Item subnet{Kind::subnet, "eth1", {}, address("192.0.2.0", 24), address("192.0.2.1", 24)};
    shell("ip link set eth1 up && ip address add 192.0.2.1/24 dev eth1");
    const std::string before = shell("ip route show dev eth1");
    shell("ip route flush dev eth1");
    EXPECT_FALSE(isRefused(subnet));
    EXPECT_EQ(shell("ip route show dev eth1"), before);
    shell("ip address del 192.0.2.1/24 dev eth1");
    EXPECT_EQ(shell("ip route show dev eth1"), "");
}

} // namespace nwtest
