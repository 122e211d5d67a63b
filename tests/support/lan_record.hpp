// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The stored LAN configuration, built by offsets alone: a second description of the record, kept
// apart from the library's own so that a mistake in either shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "bytes.hpp"

namespace support {

inline constexpr std::size_t kLanRecordSize = 2377;
inline constexpr std::size_t kPortEntrySize = 791;
inline constexpr std::size_t kIfcRecordSize = 84;

/* clang-format off */
// Offsets within a port entry.
namespace at {
inline constexpr std::size_t name = 0;
inline constexpr std::size_t byte40 = 40;
inline constexpr std::size_t byte42 = 42;
inline constexpr std::size_t lanEnable = 46;
inline constexpr std::size_t ipv4Enable = 49;
inline constexpr std::size_t ipv6Enable = 50;
inline constexpr std::size_t mac = 52;
inline constexpr std::size_t ipv4Type = 58;
inline constexpr std::size_t ipv4Addr = 60;
inline constexpr std::size_t ipv4Mask = 64;
inline constexpr std::size_t ipv4Gateway = 68;
inline constexpr std::size_t ipv4Addr2 = 76;
inline constexpr std::size_t ipv4Route[] = {83, 108};     // state, 4 destination, 4 mask, 4 gateway
inline constexpr std::size_t ipv6Type = 269;
inline constexpr std::size_t ipv6Addr = 272;
inline constexpr std::size_t ipv6Further = 288;           // 16 of 16 bytes
inline constexpr std::size_t ipv6LinkLocal = 528;
inline constexpr std::size_t ipv6Gateway = 544;
inline constexpr std::size_t ipv6Prefix = 576;
inline constexpr std::size_t ipv6FurtherPrefix = 577;
inline constexpr std::size_t ipv6Count = 624;
inline constexpr std::size_t ipv6Gateway2 = 625;
inline constexpr std::size_t ipv6Route[] = {641, 708};    // state, 16 destination, prefix, 16 gateway
inline constexpr std::size_t tail = 780;
} // namespace at
/* clang-format on */

// One port's entry.
class PortEntry {
public:
    explicit PortEntry(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint8_t &operator[](std::size_t offset)
    {
        return bytes_[offset];
    }
    std::uint8_t *data()
    {
        return bytes_.data();
    }

    PortEntry &ipv4Address(const std::string &address, const std::string &mask,
                           std::uint8_t enable = 1)
    {
        bytes_[at::ipv4Enable] = enable;
        put(bytes_, at::ipv4Addr, ipv4(address));
        put(bytes_, at::ipv4Mask, ipv4(mask));
        return *this;
    }
    PortEntry &ipv4Route(std::size_t route, const std::string &destination, const std::string &mask,
                         const std::string &gateway, std::uint8_t state = 1)
    {
        const std::size_t offset = at::ipv4Route[route];
        bytes_[offset] = state;
        put(bytes_, offset + 1, ipv4(destination));
        put(bytes_, offset + 5, ipv4(mask));
        put(bytes_, offset + 9, ipv4(gateway));
        return *this;
    }
    PortEntry &ipv6Address(const std::string &address, std::uint8_t prefix, std::uint8_t enable = 1)
    {
        bytes_[at::ipv6Enable] = enable;
        put(bytes_, at::ipv6Addr, ipv6(address));
        bytes_[at::ipv6Prefix] = prefix;
        return *this;
    }
    PortEntry &ipv6Further(std::size_t index, const std::string &address, std::uint8_t prefix)
    {
        put(bytes_, at::ipv6Further + 16 * index, ipv6(address));
        bytes_[at::ipv6FurtherPrefix + index] = prefix;
        return *this;
    }
    PortEntry &ipv6Route(std::size_t route, const std::string &destination, std::uint8_t prefix,
                         const std::string &gateway, std::uint8_t state = 1)
    {
        const std::size_t offset = at::ipv6Route[route];
        bytes_[offset] = state;
        put(bytes_, offset + 1, ipv6(destination));
        bytes_[offset + 17] = prefix;
        put(bytes_, offset + 18, ipv6(gateway));
        return *this;
    }
    PortEntry &set(std::size_t offset, std::uint8_t value)
    {
        bytes_[offset] = value;
        return *this;
    }

private:
    std::span<std::uint8_t> bytes_;
};

class LanRecord {
public:
    LanRecord() : bytes_(kLanRecordSize) {}

    PortEntry port(std::size_t index)
    {
        return PortEntry(std::span(bytes_).subspan(4 + kPortEntrySize * index, kPortEntrySize));
    }
    const Bytes &bytes() const
    {
        return bytes_;
    }
    Bytes &bytes()
    {
        return bytes_;
    }

private:
    Bytes bytes_;
};

// Interface state record with the names of a standard board.
inline Bytes ifcRecord(std::uint8_t mode = 0)
{
    Bytes record(kIfcRecordSize);
    record[0] = mode;
    const char *const names[] = {"eth0", "eth1", "bond0"};
    for (std::size_t port = 0; port < 3; ++port) {
        putU32(record, 8 + 4 * port, static_cast<std::uint32_t>(11 + port));
        record[32 + port] = static_cast<std::uint8_t>(0x71 + port);
        putText(record, 35 + 16 * port, names[port]);
    }
    return record;
}

} // namespace support
