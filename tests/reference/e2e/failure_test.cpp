// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Parts of the system that are missing or die. */
#include "system.hpp"

#include <csignal>
#include <fstream>
#include <future>
#include <thread>

namespace e2e {

class Failure : public System {
protected:
    static void expectTransportFailure()
    {
        LanChange change = changeEth1();
        EXPECT_EQ(change.ipv4("192.168.20.9", "255.255.255.0").send(), NW_ERR_RPC_TRANSPORT);
        /* Without a response the port that the sentence names is the first one. */
        EXPECT_STREQ(change.log().szOperLog,
                     "Failed to configure LAN settings for dedicated port.");
    }

    using Pending = std::future<NW_RESULT>;

    struct Kill {
        bool answered;
        bool inProgress; /* as the status record had it afterwards */
    };

    static bool isReady(const Pending &pending)
    {
        return pending.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }

    /* Sends a change, kills the manager when waitForMoment returns, starts another, and checks that
     * it leaves one configuration whole, the old or the new one. */
    Kill killDuringChange(int last, const std::function<void(const Pending &)> &waitForMoment)
    {
        const std::string address = "192.168.20." + std::to_string(last);
        const std::vector<std::string> before = storedAddresses(NW_PORT_ETH1);
        Pending pending = std::async(std::launch::async, [&address] {
            return changeEth1().ipv4(address, "255.255.255.0").send();
        });
        waitForMoment(pending);
        manager().kill();
        const Kill kill{pending.get() == NW_OK, changeIsInProgress()};
        startManager();

        const std::vector<std::string> after = {address + "/24", "2001:db8:20::2/64"};
        const std::vector<std::string> stored = storedAddresses(NW_PORT_ETH1);
        EXPECT_TRUE(stored == after || (!kill.answered && stored == before)) << address;
        EXPECT_EQ(kernelAddresses("eth1"), stored);
        EXPECT_FALSE(changeIsInProgress());
        return kill;
    }

    void expectServingAndConsistent()
    {
        EXPECT_FALSE(changeIsInProgress());
        EXPECT_EQ(kernelAddresses("eth1"), storedAddresses(NW_PORT_ETH1));
        EXPECT_EQ(changeEth1().ipv4("192.168.20.2", "255.255.255.0").send(), NW_OK);
    }
};

TEST_F(Failure, ManagerMissing)
{
    stopManager();
    const Bytes before = storedLanRecord();

    expectTransportFailure();

    EXPECT_EQ(storedLanRecord(), before);
    startManager();
    expectServingAndConsistent();
}

TEST_F(Failure, QueryNeedsNoManager)
{
    stopManager();

    EXPECT_STREQ(queryPort("eth1").szIpv4Addr, "192.168.20.2");
}

TEST_F(Failure, ManagerDiesWhileTheCallerWaits)
{
    manager().signal(SIGSTOP);
    Pending result = std::async(std::launch::async, [] {
        return changeEth1().ipv4("192.168.20.7", "255.255.255.0").send();
    });
    EXPECT_EQ(result.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);

    manager().kill();

    /* At once, not after the time-out of ten seconds. */
    ASSERT_EQ(result.wait_for(std::chrono::seconds(3)), std::future_status::ready);
    EXPECT_EQ(result.get(), NW_ERR_RPC_TRANSPORT);
    startManager();
    expectServingAndConsistent();
}

/* Killed at moments that are spread over a change, some before and some behind it. */
TEST_F(Failure, ManagerKilledDuringAChange)
{
    int unanswered = 0;
    for (int i = 0; i < 24; ++i) {
        const Kill kill = killDuringChange(100 + i, [i](const Pending &) {
            std::this_thread::sleep_for(std::chrono::microseconds(250 * i));
        });
        unanswered += kill.answered ? 0 : 1;
    }
    EXPECT_GT(unanswered, 0);
}

/* Killed while the status record says that a change is in progress. */
TEST_F(Failure, ManagerKilledBetweenBeginAndEndOfAChange)
{
    int inProgress = 0;
    for (int i = 0; i < 60 && inProgress < 10; ++i) {
        const Kill kill = killDuringChange(100 + i, [i](const Pending &pending) {
            while (!changeIsInProgress() && !isReady(pending)) {
            }
            std::this_thread::sleep_for(std::chrono::microseconds(50 * (i % 10)));
        });
        inProgress += kill.inProgress ? 1 : 0;
    }
    EXPECT_GT(inProgress, 0);
}

TEST_F(Failure, LostAddressesAndAStaleStatusAreMendedAtTheStart)
{
    const std::vector<std::string> before = kernelAddresses("eth1");
    manager().kill();
    ASSERT_EQ(NW_LMDB_Put_NetStatus(1), NW_OK);
    shell("ip address flush dev eth1");
    shell("ip link set eth1 down");

    startManager();

    EXPECT_EQ(kernelAddresses("eth1"), before);
    expectServingAndConsistent();
}

TEST_F(Failure, BusGoneAndBack)
{
    int bus = 0;
    std::ifstream("/run/dbus/pid") >> bus;
    ASSERT_GT(bus, 1);
    ASSERT_EQ(::kill(bus, SIGKILL), 0);
    ASSERT_TRUE(eventually([bus] { return ::kill(bus, 0) != 0; }));

    expectTransportFailure();

    manager().kill();
    shell("rm /run/dbus/pid");
    shell("dbus-daemon --config-file=/run/dbus/system.conf --nosyslog --fork");
    startManager();
    expectServingAndConsistent();
}

TEST_F(Failure, TwoCallersAreServedOneByOne)
{
    const auto change = [](int last) {
        return std::async(std::launch::async, [last] {
            return changeEth1()
                .ipv4("192.168.20." + std::to_string(last), "255.255.255.0")
                .ipv6("2001:db8:20::" + std::to_string(last), 64)
                .send();
        });
    };
    for (int i = 0; i < 5; ++i) {
        Pending one = change(11);
        Pending two = change(22);
        ASSERT_EQ(one.get(), NW_OK);
        ASSERT_EQ(two.get(), NW_OK);

        const std::vector<std::string> stored = storedAddresses(NW_PORT_ETH1);
        const std::vector<std::string> first = {"192.168.20.11/24", "2001:db8:20::11/64"};
        const std::vector<std::string> second = {"192.168.20.22/24", "2001:db8:20::22/64"};
        ASSERT_TRUE(stored == first || stored == second);
        ASSERT_EQ(kernelAddresses("eth1"), stored);
    }
}

} // namespace e2e
