// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/text.hpp"

#include <charconv>

#include "common/hex.hpp"

namespace bmc {

std::array<char, 4> hexEscape(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return {'\\', 'x', hexDigits[byte >> 4], hexDigits[byte & 0xF]};
}

std::string escaped(std::string_view text)
{
    std::string safe;
    for (const char character : text) {
        if (character == '\\') {
            safe += "\\\\";
        } else if (isPrintable(character)) {
            safe += character;
        } else {
            const auto escape = hexEscape(character);
            safe.append(escape.data(), escape.size());
        }
    }
    return safe;
}

std::optional<unsigned> parseNumber(std::string_view text, unsigned most)
{
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    if (error != std::errc{} || end != text.end() || number > most) {
        return std::nullopt;
    }
    return number;
}

} // namespace bmc
