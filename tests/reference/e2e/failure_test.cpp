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
    manager().sendSignal(SIGSTOP);
    std::future<NW_RESULT> result = std::async(std::launch::async, [] {
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
    int lost = 0;
    for (int i = 0; i < 24; ++i) {
        const std::string address = "192.168.20." + std::to_string(100 + i);
        const std::vector<std::string> before = storedAddresses(NW_PORT_ETH1);
        std::future<NW_RESULT> result = std::async(std::launch::async, [&address] {
            return changeEth1().ipv4(address, "255.255.255.0").send();
        });
        std::this_thread::sleep_for(std::chrono::microseconds(250 * i));
        manager().kill();
        const bool answered = result.get() == NW_OK;
        lost += answered ? 0 : 1;
        startManager();

        const std::vector<std::string> stored = storedAddresses(NW_PORT_ETH1);
        const std::vector<std::string> wanted = {address + "/24", "2001:db8:20::2/64"};
        ASSERT_FALSE(changeIsInProgress());
        ASSERT_EQ(kernelAddresses("eth1"), stored);
        ASSERT_TRUE(stored == wanted || (!answered && stored == before)) << address;
    }
    EXPECT_GT(lost, 0);
}

/* What a manager leaves that dies between applying a change and storing it. */
TEST_F(Failure, HalfAppliedChangeIsTakenBackAtTheStart)
{
    const std::vector<std::string> before = kernelAddresses("eth1");
    manager().kill();
    ASSERT_EQ(NW_LMDB_Put_NetStatus(1), NW_OK);
    outputOf("ip address del 192.168.20.2/24 dev eth1");
    outputOf("ip address add 192.168.20.7/24 dev eth1");
    outputOf("ip -6 address add 2001:db8:77::7/64 dev eth1");

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
    outputOf("rm /run/dbus/pid");
    outputOf("dbus-daemon --config-file=/run/dbus/system.conf --nosyslog --fork");
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
        std::future<NW_RESULT> one = change(11);
        std::future<NW_RESULT> two = change(22);
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
