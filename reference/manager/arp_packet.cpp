// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "arp_packet.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <net/ethernet.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <netinet/if_ether.h>
#include <netpacket/packet.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "log.hpp"

namespace bmc::manager {

namespace {

using Mac = std::array<std::uint8_t, NW_MAC_SIZE>;
using Ipv4 = std::array<std::uint8_t, NW_IPV4_SIZE>;

class PacketSocket {
public:
    PacketSocket() : descriptor_(socket(AF_PACKET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}
    ~PacketSocket()
    {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }
    PacketSocket(const PacketSocket &) = delete;
    PacketSocket &operator=(const PacketSocket &) = delete;

    bool macOf(const std::string &interface, Mac &mac) const
    {
        ifreq request{};
        interface.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
        const bool isRead = ioctl(descriptor_, SIOCGIFHWADDR, &request) == 0;
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
        return sendto(descriptor_, &packet, sizeof(packet), 0,
                      reinterpret_cast<const sockaddr *>(&to),
                      sizeof(to)) == static_cast<ssize_t>(sizeof(packet));
    }

private:
    int descriptor_;
};

/* A request for one's own address. */
ether_arp announcementOf(const Mac &mac, const Ipv4 &address)
{
    ether_arp packet{};
    packet.ea_hdr.ar_hrd = htons(ARPHRD_ETHER);
    packet.ea_hdr.ar_pro = htons(ETH_P_IP);
    packet.ea_hdr.ar_hln = NW_MAC_SIZE;
    packet.ea_hdr.ar_pln = NW_IPV4_SIZE;
    packet.ea_hdr.ar_op = htons(ARPOP_REQUEST);
    std::ranges::copy(mac, packet.arp_sha);
    std::ranges::copy(address, packet.arp_spa);
    std::ranges::copy(address, packet.arp_tpa);
    return packet;
}

} // namespace

void announce(const std::string &interface, const Ipv4 &address)
{
    const PacketSocket socket;
    Mac mac{};
    if (!socket.macOf(interface, mac) ||
        !socket.broadcast(if_nametoindex(interface.c_str()), announcementOf(mac, address))) {
        log(Level::error, "ARP announcement on " + interface + ": " + std::strerror(errno));
    }
}

} // namespace bmc::manager
