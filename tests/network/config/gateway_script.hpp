// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Stands in for the ARP cache file and the packet socket of the gateway search: the test program is
// linked so that the calls named in gateway_script.cpp arrive here.
#pragma once

#include <deque>
#include <linux/if_packet.h>
#include <optional>
#include <string>
#include <vector>

#include "bytes.hpp"

namespace gateway {

using support::Bytes;

inline constexpr int descriptor = 777; // never a real one, below FD_SETSIZE

// What one read of the cache file gives: text, or an error.
struct Piece {
    std::string text;
    bool fails = false;
};

// One attempt of the active probe.
struct Attempt {
    int sent = 28;      // -1: fails
    int ready = 1;      // answer of select
    bool isSet = true;  // whether the socket's bit stays set
    bool fails = false; // receiving
    Bytes packet{};     // received
};

struct Script {
    bool cacheOpens = true;
    std::vector<Piece> cache;
    bool socketOpens = true;
    bool binds = true;
    bool named = true;
    std::uint8_t addressLength = 6;
    std::deque<Attempt> attempts{Attempt{}, Attempt{}};

    std::vector<std::string> calls; // in order: "fopen /proc/net/arp r", "socket 17 2 0", ...
    int openFiles = 0;
    std::optional<sockaddr_ll> bound;
    std::vector<Bytes> requests;
    std::vector<sockaddr_ll> destinations;
    Attempt current;
};

// Sender hardware address that the scripted socket is bound to.
inline constexpr std::uint8_t ownMac[] = {0x02, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77};

Script &script();

} // namespace gateway
