// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// A second host: near0 here, its far end wire0 in a network namespace of its own. For programs that
// run in the sandbox.
#pragma once

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <sched.h>
#include <sys/socket.h>
#include <thread>

#include "process.hpp"

namespace support {

class PeerHost {
public:
    static constexpr const char *mac = "02:00:00:00:00:99";

    PeerHost()
    {
        shell("ip netns add peer");
        shell("ip link add near0 type veth peer name wire0 address " + std::string(mac) +
              " netns peer");
        command("link set wire0 up");
        shell("ip link set near0 up");
    }
    PeerHost(const PeerHost &) = delete;
    PeerHost &operator=(const PeerHost &) = delete;
    ~PeerHost()
    {
        run("ip link del near0; ip netns del peer");
    }

    // "ip" on the host.
    void command(const std::string &words) const
    {
        shell("ip -n peer " + words);
    }
    void own(const std::string &address) const
    {
        command("address add " + address + " dev wire0");
    }
    void disown() const
    {
        command("address flush dev wire0");
    }

    // A socket of the host's that sends and receives ARP packets on wire0.
    int arpSocket() const
    {
        int descriptor = -1;
        std::thread([&] { descriptor = openArpSocket(); }).join();
        if (descriptor < 0) {
            throw std::runtime_error("no ARP socket on the other host");
        }
        return descriptor;
    }

private:
    // A thread's network namespace is its own.
    static int openArpSocket()
    {
        const int space = open("/run/netns/peer", O_RDONLY | O_CLOEXEC);
        const bool entered = setns(space, CLONE_NEWNET) == 0;
        close(space);
        const int descriptor =
            entered ? socket(AF_PACKET, SOCK_DGRAM | SOCK_CLOEXEC, htons(ETH_P_ARP)) : -1;
        sockaddr_ll address{};
        address.sll_family = AF_PACKET;
        address.sll_protocol = htons(ETH_P_ARP);
        address.sll_ifindex = static_cast<int>(if_nametoindex("wire0"));
        const bool bound = bind(descriptor, static_cast<sockaddr *>(static_cast<void *>(&address)),
                                sizeof(address)) == 0;
        return bound ? descriptor : -1;
    }
};

} // namespace support
