// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "text.hpp"

#include <algorithm>

namespace nwctl {

std::string escaped(std::string_view text)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string safe;

    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\\') {
            safe += "\\\\";
        } else if (byte >= 0x20 && byte < 0x7F) {
            safe += character;
        } else {
            safe += {'\\', 'x', digits[byte >> 4], digits[byte & 0xF]};
        }
    }
    return safe;
}

std::string labelled(const std::string &label, const std::string &value)
{
    constexpr std::size_t labelWidth = 16;
    std::string line = "  " + label;
    line.resize(std::max(labelWidth, line.size() + 1), ' ');
    return line + value + "\n";
}

std::string onOff(bool on)
{
    return on ? "enabled" : "disabled";
}

} // namespace nwctl
