// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Netlink datagrams by hand, rubbish lengths included.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "bytes.hpp"

namespace datagram {

using support::Bytes;

inline constexpr std::uint16_t newAddress = 20;
inline constexpr std::uint16_t error = 2;
inline constexpr std::uint16_t done = 3;

struct Attribute {
    std::uint16_t type = 0;
    Bytes data{};
    std::optional<std::uint16_t> length{}; // none: 4 + size of the data
};

struct Message {
    std::uint32_t index = 0;
    std::vector<Attribute> attributes{};
    std::uint16_t type = newAddress;
    std::uint8_t family = 10;
    std::uint8_t prefix = 64;
    std::uint8_t flags = 0x80;
    std::optional<std::uint32_t> length{}; // none: as long as it is
};

template <typename Number>
void append(Bytes &bytes, Number number)
{
    const auto *from = reinterpret_cast<const std::uint8_t *>(&number);
    bytes.insert(bytes.end(), from, from + sizeof(number));
}

inline void align(Bytes &bytes)
{
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

inline Bytes build(const Message &message)
{
    Bytes body = {message.family, message.prefix, message.flags, 0};
    append(body, message.index);
    for (const Attribute &attribute : message.attributes) {
        align(body);
        append(body,
               attribute.length.value_or(static_cast<std::uint16_t>(4 + attribute.data.size())));
        append(body, attribute.type);
        body.insert(body.end(), attribute.data.begin(), attribute.data.end());
    }
    Bytes bytes;
    append(bytes, message.length.value_or(static_cast<std::uint32_t>(16 + body.size())));
    append(bytes, message.type);
    append(bytes, std::uint16_t{2}); // multi-part
    append(bytes, std::uint64_t{0}); // sequence, port
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
}

inline Bytes build(std::initializer_list<Message> messages)
{
    Bytes bytes;
    for (const Message &message : messages) {
        align(bytes);
        const Bytes next = build(message);
        bytes.insert(bytes.end(), next.begin(), next.end());
    }
    return bytes;
}

inline Attribute address(const std::string &text)
{
    const support::Ipv6 bytes = support::ipv6(text);
    return {1, Bytes(bytes.begin(), bytes.end())};
}

inline Attribute flags(std::uint32_t value)
{
    Attribute attribute{8};
    append(attribute.data, value);
    return attribute;
}

} // namespace datagram
