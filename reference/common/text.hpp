// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Texts from records and users. */
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace bmc {

/* Text of a field that may lack its terminator. */
template <std::size_t Size>
std::string boundedText(const char (&field)[Size])
{
    return {field, strnlen(field, Size)};
}

inline bool isPrintable(char character)
{
    return character >= ' ' && character <= '~';
}

/* "\xNN" */
std::array<char, 4> hexEscape(char character);

/* The text with backslashes and everything that is not a printable ASCII character written as
 * \\ and \xNN, so that nothing in it can act on a terminal or pass for another line. */
std::string escaped(std::string_view text);

/* Decimal digits alone, at most the number. */
std::optional<unsigned> parseNumber(std::string_view text, unsigned most);

} // namespace bmc
