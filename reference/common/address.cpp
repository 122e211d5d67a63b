// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/address.hpp"

#include <algorithm>
#include <bit>

#include <arpa/inet.h>

namespace bmc {

namespace {

Address withPrefix(Address address, unsigned prefix)
{
    address.prefix = prefix;
    return address;
}

bool bitAt(const Address &address, unsigned bit)
{
    return ((address.bytes[bit / 8] >> (7 - bit % 8)) & 1) != 0;
}

} // namespace

std::optional<Address> parseAddress(int family, std::string_view text)
{
    std::array<std::uint8_t, NW_IPV6_SIZE> bytes{};
    const bool isWhole = text.find('\0') == std::string_view::npos;
    if (!isWhole || inet_pton(family, std::string(text).c_str(), bytes.data()) != 1) {
        return std::nullopt;
    }
    return addressOf(family, bytes.data());
}

Address addressOf(int family, const std::uint8_t *bytes)
{
    const std::size_t size = sizeOf(family);
    Address address{family, static_cast<unsigned>(8 * size), {}};
    std::copy_n(bytes, size, address.bytes.begin());
    return address;
}

Address ipv4(const std::uint8_t *bytes, unsigned prefix)
{
    return withPrefix(addressOf(AF_INET, bytes), prefix);
}

Address ipv6(const std::uint8_t *bytes, unsigned prefix)
{
    return withPrefix(addressOf(AF_INET6, bytes), prefix);
}

std::size_t sizeOf(int family)
{
    return family == AF_INET ? NW_IPV4_SIZE : NW_IPV6_SIZE;
}

bool isUnset(const Address &address)
{
    return std::ranges::all_of(address.bytes, [](std::uint8_t byte) { return byte == 0; });
}

bool isLinkLocal(const Address &address)
{
    return address.family == AF_INET6 && address.bytes[0] == 0xFE &&
           (address.bytes[1] & 0xC0) == 0x80;
}

Address networkOf(Address address)
{
    for (unsigned bit = address.prefix; bit < 8 * address.bytes.size(); bit++) {
        address.bytes[bit / 8] &= static_cast<std::uint8_t>(~(0x80U >> (bit % 8)));
    }
    return address;
}

bool isInSubnetOf(const Address &address, const Address &subnet)
{
    for (unsigned bit = 0; bit < subnet.prefix; bit++) {
        if (bitAt(address, bit) != bitAt(subnet, bit)) {
            return false;
        }
    }
    return address.family == subnet.family;
}

unsigned prefixOf(const std::uint8_t *mask)
{
    unsigned ones = 0;
    for (std::size_t index = 0; index < NW_IPV4_SIZE; index++) {
        ones += static_cast<unsigned>(std::popcount(mask[index]));
    }
    return ones;
}

std::array<std::uint8_t, NW_IPV4_SIZE> maskOf(unsigned prefix)
{
    std::array<std::uint8_t, NW_IPV4_SIZE> mask{};
    for (unsigned bit = 0; bit < prefix; bit++) {
        mask[bit / 8] = static_cast<std::uint8_t>(mask[bit / 8] | (0x80U >> (bit % 8)));
    }
    return mask;
}

std::string textOf(const Address &address)
{
    std::array<char, INET6_ADDRSTRLEN> text{};
    inet_ntop(address.family, address.bytes.data(), text.data(), text.size());
    const bool isWhole = address.prefix == 8 * sizeOf(address.family);
    return std::string(text.data()) + (isWhole ? "" : "/" + std::to_string(address.prefix));
}

} // namespace bmc
