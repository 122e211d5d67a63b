// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Address texts as raw bytes, and typed access to records kept as plain bytes.
#pragma once

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace support {

using Bytes = std::vector<std::uint8_t>;
using Ipv4 = std::array<std::uint8_t, 4>;
using Ipv6 = std::array<std::uint8_t, 16>;

template <typename ADDRESS>
ADDRESS parseAddress(int family, const std::string &text)
{
    ADDRESS address{};
    if (inet_pton(family, text.c_str(), address.data()) != 1) {
        throw std::invalid_argument("not an address: " + text);
    }
    return address;
}

inline Ipv4 ipv4(const std::string &text)
{
    return parseAddress<Ipv4>(AF_INET, text);
}

inline Ipv6 ipv6(const std::string &text)
{
    return parseAddress<Ipv6>(AF_INET6, text);
}

// Text of the 4 or 16 bytes at the address.
inline std::string addressText(int family, const std::uint8_t *address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(family, address, text.data(), text.size()) != nullptr ? text.data() : "";
}

template <typename RECORD>
Bytes toBytes(const RECORD &record)
{
    Bytes bytes(sizeof(record));
    std::memcpy(bytes.data(), &record, sizeof(record));
    return bytes;
}

template <typename RECORD>
RECORD fromBytes(std::span<const std::uint8_t> bytes)
{
    RECORD record;
    if (bytes.size() != sizeof(record)) {
        throw std::invalid_argument("bytes do not fill the record");
    }
    std::memcpy(&record, bytes.data(), sizeof(record));
    return record;
}

inline void put(std::span<std::uint8_t> record, std::size_t offset,
                std::span<const std::uint8_t> value)
{
    std::ranges::copy(value, record.subspan(offset, value.size()).begin());
}

inline void putU32(std::span<std::uint8_t> record, std::size_t offset, std::uint32_t value)
{
    std::memcpy(record.subspan(offset, sizeof(value)).data(), &value, sizeof(value));
}

inline void putText(std::span<std::uint8_t> record, std::size_t offset, const std::string &text)
{
    std::memcpy(record.subspan(offset, text.size()).data(), text.data(), text.size());
}

} // namespace support
