// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 12: all parts take effect or none, whatever happens in between. */
#include <atomic>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include "requests.hpp"

namespace nwtest {

namespace {

using Addresses = std::vector<std::string>;

constexpr std::uint32_t lanPart = 0x02;
constexpr std::uint32_t dnsPart = 0x04;
constexpr std::uint32_t modePart = 0x20;

/* A combined set, put together part by part. */
class Combined {
public:
    NW_LAN_SET_PORT_S &lan(unsigned port, std::uint32_t bits)
    {
        set_.ulModuleMask |= lanPart;
        set_.stLan.stBitmap.aauiWord[port][0] |= bits;
        return set_.stLan.stConfig.astPort[port];
    }

    NW_DNS_PORT_S &dns(unsigned port, std::uint16_t bits)
    {
        set_.ulModuleMask |= dnsPart;
        dns_.bits[port] = bits;
        return dns_.ports[port];
    }

    void mode(std::uint8_t mode)
    {
        set_.ulModuleMask |= modePart;
        set_.aucNetMode[4] = 1;
        set_.aucNetMode[5] = mode;
    }

    /* Overrides which parts count. */
    void mask(std::uint32_t modules)
    {
        set_.ulModuleMask = modules;
    }

    std::vector<std::uint8_t> request() const
    {
        NW_SET_NETWORK_ALL_S set = set_;
        std::memcpy(set.aucDns, &dns_, sizeof(dns_));
        return requestOf(NW_CMD_SET_ALL, set);
    }

private:
    NW_SET_NETWORK_ALL_S set_{};
    DnsSet dns_{};
};

/* Port 0 gets 192.168.10.HOST and the DNS server 10.0.0.HOST. */
Combined addressAndServer(unsigned host)
{
    Combined set;
    const std::string text = std::to_string(host);
    put(set.lan(0, NW_LAN_BIT_IPV4_ADDR).aucIpv4Addr, "192.168.10." + text);
    NW_DNS_PORT_S &dns = set.dns(0, 0x0005);
    dns.ucIpv4DnsMode = 1;
    put(dns.aucIpv4DnsServer[0], "10.0.0." + text);
    return set;
}

/* The bond's address, and a mode that serves it. */
Combined bondWithAddress(unsigned host)
{
    Combined set;
    NW_LAN_SET_PORT_S &lan = set.lan(2, NW_LAN_BIT_LAN_ENABLE | NW_LAN_BIT_IPV4_ENABLE |
                                            NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK);
    lan.ucLanEnable = 1;
    lan.ucIpv4Enable = 1;
    put(lan.aucIpv4Addr, "192.168.30." + std::to_string(host));
    put(lan.aucIpv4Mask, "255.255.255.0");
    NW_DNS_PORT_S &dns = set.dns(2, 0x0005);
    dns.ucIpv4DnsMode = 1;
    put(dns.aucIpv4DnsServer[0], "10.0.3." + std::to_string(host));
    set.mode(1);
    return set;
}

std::uint32_t failedModule(const std::vector<std::uint8_t> &request)
{
    const auto response = call(request);
    std::uint32_t module = 0;
    std::memcpy(&module, response->aucResData, sizeof(module));
    return module;
}

class CombinedSet : public ManagerTest {
protected:
    void SetUp() override
    {
        bmc::manager::Store().put(bmc::manager::dnsRecord, {});
        ManagerTest::SetUp();
    }

    static void expectPartRefused(const Combined &set, std::uint32_t result, std::uint32_t detail,
                                  std::uint32_t module)
    {
        expectRefused(set.request(), result, detail);
        EXPECT_EQ(failedModule(set.request()), module);
    }
};

} // namespace

TEST_F(CombinedSet, AllPartsInOneChange)
{
    expectAnswer(bondWithAddress(7).request(), NW_OK, 2);

    EXPECT_EQ(kernelAddresses("bond0"), Addresses{"192.168.30.7/24"});
    EXPECT_TRUE(kernelAddresses("eth0").empty());
    EXPECT_TRUE(kernelAddresses("eth1").empty());
    EXPECT_EQ(stored().state.ucIfcState, 1);
    EXPECT_EQ(resolverText(), "# Written by nwmanagerd.\nnameserver 10.0.3.7\n");
}

TEST_F(CombinedSet, OnlyTheNamedPartsCount)
{
    Combined set = bondWithAddress(7);
    set.lan(1, NW_LAN_BIT_IPV4_ADDR);
    set.mask(0);
    const std::string before = everything();
    expectAnswer(set.request(), NW_OK, 0);
    EXPECT_EQ(before, everything());
    EXPECT_EQ(failedModule(set.request()), 0U);
}

TEST_F(CombinedSet, EachPartNamesItself)
{
    Combined badLan = addressAndServer(9);
    put(badLan.lan(1, NW_LAN_BIT_IPV4_ADDR).aucIpv4Addr, "127.0.0.1");
    expectPartRefused(badLan, 0x1E00000B, 0, lanPart);

    Combined badDns = addressAndServer(9);
    badDns.dns(1, 0x0001).ucIpv4DnsMode = 9;
    badDns.dns(0, 0);
    expectPartRefused(badDns, 0x1E00001E, 1, dnsPart);

    Combined badMode = addressAndServer(9);
    badMode.mode(2);
    expectPartRefused(badMode, 0x1E00001F, 0, modePart);

    Combined unknown = addressAndServer(9);
    unknown.mask(lanPart | dnsPart | 0x08);
    expectPartRefused(unknown, 0x1E000021, 0, 0);
}

/* The kernel and the system refuse after other parts have taken effect. */
TEST_F(CombinedSet, LateRefusalsNameTheirPart)
{
    shell("ip link set bond0 up && ip address add 192.168.30.7/24 dev bond0");
    expectPartRefused(bondWithAddress(7), 0x1E000002, 2, lanPart);

    const std::string path = std::string(std::getenv("BMC_STATE_DIR")) + "/resolv.conf";
    std::filesystem::remove(path);
    std::filesystem::create_directories(path + "/in-the-way");
    expectAnswer(bondWithAddress(8).request(), 0x1E000016, 2);
    EXPECT_EQ(failedModule(bondWithAddress(8).request()), dnsPart);
    EXPECT_EQ(stored().state.ucIfcState, 0);
    EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10.2/24"});
    std::filesystem::remove_all(path);
}

/* Whenever it is killed: records, kernel and file tell of one and the same change. */
TEST_F(CombinedSet, KilledInBetween)
{
    std::mt19937 random(12);
    constexpr unsigned first = 3;
    const auto began = std::chrono::steady_clock::now();
    ASSERT_TRUE(call(addressAndServer(first).request()));
    const std::chrono::microseconds whole = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - began);
    unsigned seen = 0;
    for (unsigned round = 0; round < 25; round++) {
        SCOPED_TRACE(round);
        std::atomic<bool> isOver = false;
        std::thread sender([&] {
            for (unsigned host = first + 1; !isOver; host = host == 200 ? first + 1 : host + 1) {
                call(addressAndServer(host).request());
            }
        });
        /* Up to twice the time of a change: before, amid and after one. */
        std::this_thread::sleep_for(whole * (random() % 200) / 100);
        manager_->signal(SIGKILL);
        EXPECT_EQ(manager_->wait(), 128 + SIGKILL);
        isOver = true;
        sender.join();
        startManager();

        const auto configuration = stored();
        const unsigned lan = configuration.lan.astPort[0].aucIpv4Addr[3];
        const unsigned dns = configuration.dns.astPort[0].aucIpv4DnsServer[0][3];
        EXPECT_EQ(dns == 0 ? 2 : dns, lan);
        EXPECT_EQ(kernelAddresses("eth0"), Addresses{"192.168.10." + std::to_string(lan) + "/24"});
        EXPECT_EQ(resolverText().find("10.0.0." + std::to_string(lan) + "\n") != std::string::npos,
                  dns != 0);
        EXPECT_EQ(storedStatus(), 0);
        seen += lan != first;
    }
    EXPECT_GT(seen, 0U);
}

/* Two programs at once: each answered change is there, and no record holds halves of two. */
TEST_F(CombinedSet, TwoSettersAtOnce)
{
    constexpr unsigned rounds = 40;
    const auto setters = [](unsigned port) {
        for (unsigned round = 1; round <= rounds; round++) {
            Combined set;
            NW_LAN_SET_PORT_S &lan = set.lan(port, NW_LAN_BIT_TRAFFIC_CLASS | NW_LAN_BIT_HOP_LIMIT);
            lan.ucTrafficClass = static_cast<std::uint8_t>(round);
            lan.ucHopLimit = static_cast<std::uint8_t>(round);
            NW_DNS_PORT_S &dns = set.dns(port, 0x0006);
            put(dns.aucIpv4DnsServer[0],
                "10.0." + std::to_string(port) + "." + std::to_string(round));
            const std::string domain = "r" + std::to_string(round) + ".example.org";
            std::memcpy(dns.szIpv4DnsDomain, domain.c_str(), domain.size() + 1);
            const auto response = call(set.request());
            const bool isDone = response && response->uiResult == NW_OK;
            const auto held = stored();
            const auto &entry = held.dns.astPort[port];
            const bool isThere = entry.aucIpv4DnsServer[0][3] == round &&
                                 entry.szIpv4DnsDomain == domain &&
                                 held.lan.astPort[port].aucReserved775[3] == round &&
                                 held.lan.astPort[port].aucReserved775[4] == round;
            if (!isDone || !isThere) {
                return 1;
            }
        }
        return 0;
    };
    support::Child other([&] { EXPECT_EQ(setters(1), 0); });
    EXPECT_EQ(setters(0), 0);
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(stored().dns.astPort[0].aucIpv4DnsServer[0][3], rounds);
    EXPECT_EQ(stored().dns.astPort[1].aucIpv4DnsServer[0][3], rounds);
}

} // namespace nwtest
