// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "far_host.hpp"

#include <cstring>
#include <stdexcept>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include "process.hpp"

namespace support {

namespace {

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t length = 0;

    SocketAddress(const std::string &text, std::uint16_t port)
    {
        sockaddr_in v4{};
        sockaddr_in6 v6{};
        if (::inet_pton(AF_INET, text.c_str(), &v4.sin_addr) == 1) {
            v4.sin_family = AF_INET;
            v4.sin_port = htons(port);
            std::memcpy(&storage, &v4, length = sizeof(v4));
        } else if (::inet_pton(AF_INET6, text.c_str(), &v6.sin6_addr) == 1) {
            v6.sin6_family = AF_INET6;
            v6.sin6_port = htons(port);
            std::memcpy(&storage, &v6, length = sizeof(v6));
        } else {
            throw std::invalid_argument(text);
        }
    }

    const sockaddr *get() const
    {
        return reinterpret_cast<const sockaddr *>(&storage);
    }
};

int openListener(const SocketAddress &address)
{
    const int listener = ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isReady =
        ::bind(listener, address.get(), address.length) == 0 && ::listen(listener, 4) == 0;
    return isReady ? listener : -1;
}

int openArpSocket(const std::string &interface)
{
    const int opened = ::socket(AF_PACKET, SOCK_DGRAM | SOCK_CLOEXEC, htons(ETH_P_ARP));
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = htons(ETH_P_ARP);
    address.sll_ifindex = static_cast<int>(::if_nametoindex(interface.c_str()));
    const bool isBound =
        ::bind(opened, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    return isBound ? opened : -1;
}

} // namespace

FarHost::FarHost(std::string interface) : interface_(std::move(interface))
{
    shell("ip netns add " + interface_ + " && ip link set " + interface_ + " netns " + interface_);
    command("link set lo up");
    command("link set " + interface_ + " up");
}

FarHost::~FarHost()
{
    run("ip -n " + interface_ + " link set " + interface_ + " netns " + std::to_string(getpid()) +
        "; ip link set " + interface_ + " up; ip netns del " + interface_);
}

void FarHost::command(const std::string &words) const
{
    shell("ip -n " + interface_ + " " + words);
}

void FarHost::own(const std::string &address) const
{
    command("address add " + address + " dev " + interface_ +
            (address.find(':') == std::string::npos ? "" : " nodad"));
}

void FarHost::ownBehind(const std::string &address) const
{
    command("address add " + address + " dev lo");
}

void FarHost::disown() const
{
    command("address flush dev " + interface_);
}

void FarHost::plug(bool isPlugged) const
{
    command("link set " + interface_ + (isPlugged ? " up" : " down"));
}

std::string FarHost::mac() const
{
    return shell("ip -n " + interface_ + " -o link show " + interface_ +
                 " | sed 's/.*ether \\([^ ]*\\).*/\\1/' | tr -d '\\n'");
}

int FarHost::listenOn(const std::string &address, std::uint16_t port) const
{
    return openThere([&] { return openListener({address, port}); });
}

int FarHost::arpSocket() const
{
    return openThere([this] { return openArpSocket(interface_); });
}

// A thread's network namespace is its own.
int FarHost::openThere(const std::function<int()> &open) const
{
    int opened = -1;
    std::thread([&] {
        const int space = ::open(("/run/netns/" + interface_).c_str(), O_RDONLY | O_CLOEXEC);
        const bool isThere = ::setns(space, CLONE_NEWNET) == 0;
        ::close(space);
        opened = isThere ? open() : -1;
    }).join();
    if (opened < 0) {
        throw std::runtime_error("no socket on the host behind " + interface_);
    }
    return opened;
}

bool canConnect(const std::string &address, std::uint16_t port)
{
    const SocketAddress target(address, port);
    const timeval limit{2, 0};
    const int caller = ::socket(target.storage.ss_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ::setsockopt(caller, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof(limit));
    const bool isConnected = ::connect(caller, target.get(), target.length) == 0;
    ::close(caller);
    return isConnected;
}

bool hasCaller(int listener)
{
    pollfd waiting{listener, POLLIN, 0};
    constexpr int limit = 100; /* ms */
    if (::poll(&waiting, 1, limit) != 1) {
        return false;
    }
    ::close(::accept(listener, nullptr, nullptr));
    return true;
}

} // namespace support
