// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Texts of values, as the bytes of a request. */
#pragma once

#include <string_view>
#include <vector>

#include "settings/setting.hpp"

namespace bmc::settings {

using Bytes = std::vector<std::uint8_t>;

/* Bytes of one of a setting's parts. */
struct Field {
    const Part *part;
    Bytes bytes;
    bool isHeld = false; /* stored without effect */
};

/* How strictly a text is read: what a file brings back may be incomplete in ways in which nobody
 * would set it: a mask without its address, a route without gateway. */
enum class Source { commandLine, file };

struct Text {
    const Setting *setting; /* that the value is for */
    const Setting *given;   /* that is named when it is wrong */
    std::string_view text;
    Source source;
};

/* A number as requests have it, little-endian and cut to the part's width; and the other way. */
Field numberField(const Part &part, std::uint32_t number);
std::uint32_t numberIn(const Bytes &bytes);

/* Throws BadValue. */
std::vector<Field> parseValue(const Text &text);

} // namespace bmc::settings
