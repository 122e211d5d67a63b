// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// LAN configuration records drawn from a few addresses, masks and flags.
#pragma once

#include <random>

#include "lan_record.hpp"

namespace support {

// Few values, so that conflicts of every kind are common.
inline const Ipv4 addresses4[] = {ipv4("0.0.0.0"),     ipv4("10.1.2.3"),    ipv4("10.1.2.200"),
                                  ipv4("10.1.3.7"),    ipv4("10.2.0.1"),    ipv4("192.168.1.1"),
                                  ipv4("192.168.2.1"), ipv4("192.168.1.77")};
inline const Ipv4 masks4[] = {ipv4("0.0.0.0"),         ipv4("255.0.0.0"),
                              ipv4("255.255.0.0"),     ipv4("255.255.255.0"),
                              ipv4("255.255.255.128"), ipv4("255.255.255.255")};
inline const Ipv6 addresses6[] = {ipv6("::"),
                                  ipv6("2001:db8:1::1"),
                                  ipv6("fd00::1"),
                                  ipv6("2001:db8:2::1"),
                                  ipv6("2001:db8:1:8::2"),
                                  ipv6("2001:db8:1::2")};
inline const std::uint8_t prefixes[] = {0, 1, 7, 8, 15, 32, 45, 48, 64, 127, 128, 129, 200, 255};
inline const std::uint8_t counts[] = {0, 0, 1, 1, 2, 15, 16, 17, 254, 255};
inline const std::uint8_t flags[] = {0, 1, 1, 1, 2};

class RandomRecords {
public:
    explicit RandomRecords(std::uint32_t seed) : random_(seed) {}

    template <typename Pool>
    const auto &pick(const Pool &pool)
    {
        return pool[random_() % std::size(pool)];
    }
    std::uint32_t below(std::uint32_t end)
    {
        return static_cast<std::uint32_t>(random_() % end);
    }

    void fill(LanRecord &record)
    {
        for (std::size_t port = 0; port < 3; ++port) {
            fillPort(record.port(port));
        }
    }

private:
    void fillPort(PortEntry port)
    {
        using namespace at;
        for (const std::size_t flag : {ipv4Enable, ipv6Enable, ipv6Type, ipv4Route[0], ipv4Route[1],
                                       ipv6Route[0], ipv6Route[1]}) {
            port[flag] = pick(flags);
        }
        for (const std::size_t prefix : {ipv6Prefix, ipv6Route[0] + 17, ipv6Route[1] + 17}) {
            port[prefix] = pick(prefixes);
        }
        port[ipv6Count] = pick(counts);
        for (std::size_t index = 0; index < 16; ++index) {
            port[ipv6FurtherPrefix + index] = pick(prefixes);
            std::ranges::copy(pick(addresses6), &port[ipv6Further + 16 * index]);
        }
        for (const std::size_t mask : {ipv4Mask, ipv4Route[0] + 5, ipv4Route[1] + 5}) {
            std::ranges::copy(pick(masks4), &port[mask]);
        }
        for (const std::size_t address :
             {ipv4Addr, ipv4Route[0] + 1, ipv4Route[0] + 9, ipv4Route[1] + 1, ipv4Route[1] + 9}) {
            std::ranges::copy(pick(addresses4), &port[address]);
        }
        for (const std::size_t address :
             {ipv6Addr, ipv6Route[0] + 1, ipv6Route[0] + 18, ipv6Route[1] + 1, ipv6Route[1] + 18}) {
            std::ranges::copy(pick(addresses6), &port[address]);
        }
    }

    std::mt19937 random_;
};

} // namespace support
