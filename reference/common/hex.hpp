// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Bytes as hexadecimal digits, two for each, without separators. */
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bmc {

inline constexpr std::string_view hexDigits = "0123456789abcdef";

inline std::string hexText(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += {hexDigits[byte >> 4], hexDigits[byte & 0xF]};
    }
    return text;
}

inline std::optional<std::uint8_t> hexDigit(char character)
{
    constexpr std::string_view upper = "0123456789ABCDEF";
    for (const auto digits : {hexDigits, upper}) {
        if (const auto value = digits.find(character); value != digits.npos) {
            return static_cast<std::uint8_t>(value);
        }
    }
    return std::nullopt;
}

/* Nothing when the text isn't made of pairs of digits. */
inline std::optional<std::vector<std::uint8_t>> parseHex(std::string_view text)
{
    std::vector<std::uint8_t> bytes;
    if (text.size() % 2 != 0) {
        return std::nullopt;
    }
    for (std::size_t at = 0; at < text.size(); at += 2) {
        const auto high = hexDigit(text[at]);
        const auto low = hexDigit(text[at + 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    return bytes;
}

/* The bytes up to the last that isn't zero. */
inline std::span<const std::uint8_t> withoutZeroTail(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty() && bytes.back() == 0) {
        bytes = bytes.first(bytes.size() - 1);
    }
    return bytes;
}

} // namespace bmc
