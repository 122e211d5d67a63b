// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/kernel/arp_packet.hpp"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <system_error>
#include <thread>

#include <arpa/inet.h>
#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/ethernet.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <netinet/if_ether.h>
#include <netpacket/packet.h>
#include <poll.h>
#include <sys/ioctl.h>

#include "common/descriptor.hpp"
#include "manager/log.hpp"
#include "manager/state/actual.hpp"

namespace bmc::manager {

namespace {

using Mac = std::array<std::uint8_t, NW_MAC_SIZE>;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds probeInterval{100};
constexpr unsigned probeCount = 2;
constexpr std::chrono::milliseconds carrierInterval{20};

[[noreturn]] void cannotAsk()
{
    throw MachineError("cannot ask the neighbours: " + std::generic_category().message(errno));
}

class PacketSocket {
public:
    PacketSocket() : descriptor_(socket(AF_PACKET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        if (!descriptor_) {
            throw MachineError(std::generic_category().message(errno));
        }
    }

    /* From now on what arrives on the interface can be received. */
    bool listen(unsigned interface) const
    {
        sockaddr_ll here{};
        here.sll_family = AF_PACKET;
        here.sll_protocol = htons(ETH_P_ARP);
        here.sll_ifindex = static_cast<int>(interface);
        return bind(descriptor_.get(), reinterpret_cast<const sockaddr *>(&here), sizeof(here)) ==
               0;
    }

    /* Answers whether another than mac claims the address, by then. */
    bool hearsClaim(const Ipv4Bytes &address, const Mac &mac, Clock::time_point end) const
    {
        while (true) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
            pollfd waiting{descriptor_.get(), POLLIN, 0};
            if (left.count() <= 0) {
                return false;
            }
            if (poll(&waiting, 1, static_cast<int>(left.count())) <= 0) {
                continue; /* a signal is no verdict */
            }
            ether_arp packet{};
            const bool isWhole = recv(descriptor_.get(), &packet, sizeof(packet), 0) >=
                                 static_cast<ssize_t>(sizeof(packet));
            if (isWhole && std::ranges::equal(packet.arp_spa, address) &&
                !std::ranges::equal(packet.arp_sha, mac)) {
                return true;
            }
        }
    }

    /* One that cannot tell is asked over. An interface that is down, or gone, has none. */
    bool hasCarrier(const std::string &interface) const
    {
        ethtool_value link{ETHTOOL_GLINK, 0};
        ifreq request{};
        interface.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
        request.ifr_data = reinterpret_cast<char *>(&link);
        if (ioctl(descriptor_.get(), SIOCETHTOOL, &request) == 0) {
            return link.data != 0;
        }
        if (errno != EOPNOTSUPP && errno != ENODEV) {
            cannotAsk();
        }
        return errno == EOPNOTSUPP;
    }

    bool macOf(const std::string &interface, Mac &mac) const
    {
        ifreq request{};
        interface.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
        const bool isRead = ioctl(descriptor_.get(), SIOCGIFHWADDR, &request) == 0;
        std::copy_n(request.ifr_hwaddr.sa_data, mac.size(), mac.begin());
        return isRead;
    }

    bool broadcast(unsigned interface, const ether_arp &packet) const
    {
        sockaddr_ll to{};
        to.sll_family = AF_PACKET;
        to.sll_protocol = htons(ETH_P_ARP);
        to.sll_ifindex = static_cast<int>(interface);
        to.sll_halen = NW_MAC_SIZE;
        std::fill_n(to.sll_addr, NW_MAC_SIZE, std::uint8_t{0xFF});
        return sendto(descriptor_.get(), &packet, sizeof(packet), 0,
                      reinterpret_cast<const sockaddr *>(&to),
                      sizeof(to)) == static_cast<ssize_t>(sizeof(packet));
    }

private:
    Descriptor descriptor_;
};

bool hasCarrierBy(const PacketSocket &socket, const std::string &interface, Clock::time_point end)
{
    while (!socket.hasCarrier(interface)) {
        if (Clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(carrierInterval);
    }
    return true;
}

/* A request of the sender for the address. */
ether_arp requestOf(const Mac &mac, const Ipv4Bytes &sender, const Ipv4Bytes &address)
{
    ether_arp packet{};
    packet.ea_hdr.ar_hrd = htons(ARPHRD_ETHER);
    packet.ea_hdr.ar_pro = htons(ETH_P_IP);
    packet.ea_hdr.ar_hln = NW_MAC_SIZE;
    packet.ea_hdr.ar_pln = NW_IPV4_SIZE;
    packet.ea_hdr.ar_op = htons(ARPOP_REQUEST);
    std::ranges::copy(mac, packet.arp_sha);
    std::ranges::copy(sender, packet.arp_spa);
    std::ranges::copy(address, packet.arp_tpa);
    return packet;
}

} // namespace

void announce(const std::string &interface, const Ipv4Bytes &address)
try {
    const PacketSocket socket;
    Mac mac{};
    if (!socket.macOf(interface, mac) ||
        !socket.broadcast(if_nametoindex(interface.c_str()), requestOf(mac, address, address))) {
        throw MachineError(std::generic_category().message(errno));
    }
} catch (const MachineError &error) {
    log(Level::error, "ARP announcement on " + interface + ": " + error.what());
}

bool isTakenByNeighbour(const std::string &interface, const Ipv4Bytes &address,
                        Clock::time_point partnerBy)
{
    constexpr Ipv4Bytes nobody{};
    const PacketSocket socket;
    Mac mac{};
    const bool isMissing = !socket.macOf(interface, mac) && errno == ENODEV;
    if (isMissing || !hasCarrierBy(socket, interface, partnerBy)) {
        return false;
    }
    const unsigned index = if_nametoindex(interface.c_str());
    if (index == 0 || !socket.macOf(interface, mac) || !socket.listen(index)) {
        cannotAsk();
    }
    for (unsigned probe = 0; probe < probeCount; probe++) {
        if (!socket.broadcast(index, requestOf(mac, nobody, address))) {
            cannotAsk();
        }
        if (socket.hearsClaim(address, mac, Clock::now() + probeInterval)) {
            return true;
        }
    }
    return false;
}

} // namespace bmc::manager
