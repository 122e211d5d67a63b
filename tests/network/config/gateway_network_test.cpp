// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The gateway's address on a real link: the kernel's ARP cache and another host. Runs in the
// sandbox; a silent gateway costs its two waits of 2 seconds.
#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <poll.h>
#include <sys/syscall.h>

#include "fake_matchers.hpp"
#include "files.hpp"
#include "guarded.hpp"
#include "lan_record.hpp"
#include "log_text.hpp"
#include "network_mng/discovery.h"
#include "peer_host.hpp"

namespace {

using namespace std::chrono_literals;
using support::Bytes;
using support::debugLine;
using support::errorLine;
using support::Lines;
using support::PeerHost;
using support::operator+;

const std::string ownAddress = "10.60.0.2";
const std::string gateway = "10.60.0.1";
const std::string untouched = "ee:ee:ee:ee:ee:ee";
const std::string peerMac = PeerHost::mac;

const std::string found = support::lineText("10/0/6", "Get gatewayMac compare cache success");
const Lines probing = {errorLine("No default entry in gateway info.\n"),
                       debugLine("Dropping To original socket method")};
const Lines success = {support::lineText("10/0/6", "RecvPack success.")};
const Lines foreign = {errorLine("RecvPack no dstmac."), errorLine("Recv message failed.")};
const Lines silent = {errorLine("Get gateway mac by arp select other failed"),
                      errorLine("Recv message failed.")};

std::string macText(std::span<const std::uint8_t> mac)
{
    return fake::formatted("%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4],
                           mac[5]);
}

// An ARP packet of the other host's in the name of an address.
Bytes packet(std::uint8_t operation, const std::string &sender, const std::string &target)
{
    Bytes bytes = {0, 1, 8, 0, 6, 4, 0, operation, 0x02, 0, 0, 0, 0, 0x99};
    bytes.resize(28);
    support::put(bytes, 14, support::ipv4(sender));
    support::put(bytes, 24, support::ipv4(target));
    return bytes;
}

// Sends one packet to the link for each request that it sees, and keeps the requests.
class Responder {
public:
    Responder(const PeerHost &host, std::vector<Bytes> packets)
        : descriptor_(host.arpSocket()), packets_(std::move(packets)), thread_([this] { serve(); })
    {
    }
    ~Responder()
    {
        thread_.join();
        close(descriptor_);
    }
    // Behind the call that asks.
    const std::vector<Bytes> &requests() const
    {
        return requests_;
    }

private:
    void serve()
    {
        for (const Bytes &answer : packets_) {
            pollfd ready{descriptor_, POLLIN, 0};
            Bytes request(4096);
            if (poll(&ready, 1, 5000) != 1) {
                return;
            }
            const ssize_t size = recv(descriptor_, request.data(), request.size(), 0);
            request.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
            requests_.push_back(request);
            sockaddr_ll link{};
            socklen_t length = sizeof(link);
            auto *address = static_cast<sockaddr *>(static_cast<void *>(&link));
            getsockname(descriptor_, address, &length);
            std::memset(link.sll_addr, 0xFF, 6);
            sendto(descriptor_, answer.data(), answer.size(), 0, address, sizeof(link));
        }
    }

    int descriptor_;
    std::vector<Bytes> packets_;
    std::vector<Bytes> requests_;
    std::thread thread_;
};

class GatewayOnTheWire : public fake::FakePlatformTest {
protected:
    GatewayOnTheWire() : free_(support::lowestFreeDescriptor())
    {
        support::shell("ip address add " + ownAddress + "/24 dev near0");
        support::put(lan.bytes(), entry + support::at::ipv4Addr, support::ipv4(ownAddress));
        support::put(lan.bytes(), entry + support::at::ipv4Gateway, support::ipv4(gateway));
        ifc = Bytes(84);
        support::putText(ifc, 35 + 16, "near0");
        support::putU32(ifc, 8 + 4, if_nametoindex("near0"));
    }
    ~GatewayOnTheWire() override
    {
        EXPECT_EQ(support::lowestFreeDescriptor(), free_) << "a descriptor was left open";
    }

    // The six bytes behind the call, which held 0xEE before.
    std::string ask(std::uint8_t port = 1)
    {
        platform.setRecord(0x10610007, ifc);
        platform.setRecord(0x10610003, lan.bytes());
        const support::Guarded mac(6, 0xEE);
        duration = support::durationOf([&] { NW_GetV4DefaultGwMacAddr(port, mac.data()); });
        return macText(mac.bytes());
    }
    // Lines from the one that ends the scan of the cache.
    static Lines linesOfTheProbe()
    {
        const Lines lines = support::loggedLines();
        return {std::ranges::find(lines, probing[0]), lines.end()};
    }
    static Bytes nearMac()
    {
        std::ifstream file("/sys/class/net/near0/address");
        Bytes mac;
        for (std::string byte; std::getline(file, byte, ':');) {
            mac.push_back(static_cast<std::uint8_t>(std::stoul(byte, nullptr, 16)));
        }
        return mac;
    }

    static constexpr std::size_t entry = 4 + support::kPortEntrySize;
    const int free_;
    const PeerHost peer;
    Bytes ifc;
    support::LanRecord lan;
    std::chrono::milliseconds duration{};
};

TEST_F(GatewayOnTheWire, PermanentCacheEntryIsTaken)
{
    support::shell("ip neigh replace 10.60.0.7 lladdr 02:00:00:00:00:07 dev near0");
    support::shell("ip neigh replace " + gateway + " lladdr 02:00:00:00:00:ab dev near0");
    EXPECT_EQ(ask(), "02:00:00:00:00:ab");
    EXPECT_EQ(support::loggedLines().back(), found);
    EXPECT_LT(duration, 1s);
}

TEST_F(GatewayOnTheWire, CacheEntryOfTrafficIsTaken)
{
    peer.own(gateway + "/24");
    support::shell("bash -c 'echo hello >/dev/udp/" + gateway + "/9'");
    EXPECT_TRUE(support::eventually([&] {
        return support::run("ip neigh show " + gateway + " dev near0 | grep " + peerMac).status ==
               0;
    }));
    EXPECT_EQ(ask(), peerMac);
    EXPECT_EQ(support::loggedLines().back(), found);
}

TEST_F(GatewayOnTheWire, CacheEntryOfAnotherDeviceIsNot)
{
    support::shell("ip link add other0 type veth peer name other1 && ip link set other0 up");
    support::shell("ip neigh replace " + gateway + " lladdr 02:00:00:00:00:ab dev other0");
    peer.own(gateway + "/24");
    EXPECT_EQ(ask(), peerMac);
    EXPECT_EQ(linesOfTheProbe(), probing + success + success);
    support::shell("ip link del other0");
}

// Programs that other threads start meanwhile inherit neither the cache file nor the socket.
TEST_F(GatewayOnTheWire, DescriptorsAreKeptFromOtherPrograms)
{
    peer.own(gateway + "/24");
    const int opened = support::lowestFreeDescriptor();
    int seen = 0;
    platform.onLine([&] {
        const int descriptorFlags = fcntl(opened, F_GETFD);
        if (descriptorFlags >= 0) {
            ++seen;
            EXPECT_EQ(descriptorFlags, FD_CLOEXEC) << lines().back().text;
        }
    });
    EXPECT_EQ(ask(), peerMac);
    EXPECT_GE(seen, 4) << "lines of the scan and of both answers";
}

TEST_F(GatewayOnTheWire, HostThatAnswersIsFound)
{
    peer.own(gateway + "/24");
    EXPECT_EQ(ask(), peerMac);
    EXPECT_EQ(linesOfTheProbe(), probing + success + success);
    EXPECT_LT(duration, 2s);
}

TEST_F(GatewayOnTheWire, SilentHostTakesFourSeconds)
{
    EXPECT_EQ(ask(), untouched);
    EXPECT_EQ(linesOfTheProbe(), probing + silent + silent);
    EXPECT_GE(duration, 3900ms);
    EXPECT_LT(duration, 6s);
}

TEST_F(GatewayOnTheWire, RequestsGoToTheWholeLink)
{
    const Bytes answer = packet(2, gateway, ownAddress);
    std::vector<Bytes> requests;
    {
        const Responder responder(peer, {answer, answer});
        EXPECT_EQ(ask(), peerMac);
        requests = responder.requests();
    }
    Bytes expected = {0, 1, 8, 0, 6, 4, 0, 1};
    for (const Bytes &part :
         {nearMac(), Bytes{10, 60, 0, 2}, Bytes(6, 0xFF), Bytes{10, 60, 0, 1}}) {
        expected.insert(expected.end(), part.begin(), part.end());
    }
    EXPECT_EQ(requests, (std::vector<Bytes>{expected, expected}));
}

TEST_F(GatewayOnTheWire, ForeignPacketIsRefused)
{
    const Bytes other = packet(2, "10.60.0.77", ownAddress);
    const Responder responder(peer, {other, other});
    EXPECT_EQ(ask(), untouched);
    EXPECT_EQ(linesOfTheProbe(), probing + foreign + foreign);
    EXPECT_LT(duration, 2s);
}

// Only one packet is read of an attempt.
TEST_F(GatewayOnTheWire, ForeignPacketUsesUpItsAttempt)
{
    const Responder responder(
        peer, {packet(2, "10.60.0.77", ownAddress), packet(2, gateway, ownAddress)});
    EXPECT_EQ(ask(), peerMac);
    EXPECT_EQ(linesOfTheProbe(), probing + foreign + success);
}

TEST_F(GatewayOnTheWire, UnsolicitedRequestOfTheGatewayIsAnAnswer)
{
    const Bytes request = packet(1, gateway, "10.60.0.88");
    const Responder responder(peer, {request, request});
    EXPECT_EQ(ask(), peerMac);
    EXPECT_EQ(linesOfTheProbe(), probing + success + success);
}

TEST_F(GatewayOnTheWire, UnknownInterfaceCannotBeBound)
{
    support::putU32(ifc, 8 + 4, 4711);
    EXPECT_EQ(ask(), untouched);
    EXPECT_EQ(linesOfTheProbe(), probing + Lines{errorLine("Failure in Binding")});
}

TEST_F(GatewayOnTheWire, NothingIsSentWhileTheLinkIsDown)
{
    support::shell("ip link set near0 down");
    EXPECT_EQ(ask(), untouched);
    EXPECT_EQ(linesOfTheProbe(), probing + Lines(2, errorLine("Send message failed.")));
}

TEST_F(GatewayOnTheWire, PacketSocketsNeedTheirRight)
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct before[2]{}, without[2]{};
    ASSERT_EQ(syscall(SYS_capget, &header, before), 0);
    std::ranges::copy(before, without);
    without[0].effective &= ~(1U << CAP_NET_RAW);
    ASSERT_EQ(syscall(SYS_capset, &header, without), 0);
    const std::string mac = ask();
    ASSERT_EQ(syscall(SYS_capset, &header, before), 0);

    EXPECT_EQ(mac, untouched);
    EXPECT_EQ(linesOfTheProbe(), probing + Lines{errorLine("Open socket faild.")});
}

TEST_F(GatewayOnTheWire, PortsThatDoNotExistReturnAtOnce)
{
    peer.own(gateway + "/24");
    for (const std::uint8_t port : Bytes{3, 200, 255}) {
        EXPECT_EQ(ask(port), untouched);
        EXPECT_LT(duration, 500ms);
    }
    EXPECT_EQ(support::loggedLines(), Lines{});
}

TEST_F(GatewayOnTheWire, UnconfiguredGatewayReturnsAtOnce)
{
    EXPECT_EQ(ask(0), untouched);
    EXPECT_EQ(ask(2), untouched);
    EXPECT_EQ(support::loggedLines(), Lines{});
}

} // namespace
