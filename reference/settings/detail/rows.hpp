// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the tables of settings are written with, and the tables themselves. */
#pragma once

#include <utility>

#include <sys/socket.h>

#include "settings/detail/checks.hpp"
#include "settings/setting.hpp"

namespace bmc::settings {

/* Of what the system makes no use. */
inline constexpr const char *withoutEffect = "is stored without effect";

struct Place {
    std::size_t at;
    std::size_t size;
};

/* Where a record has a member. */
#define PLACE(record, member)                                                                      \
    Place                                                                                          \
    {                                                                                              \
        offsetof(record, member), sizeof(std::declval<record &>().member)                          \
    }

/* A place in a record that begins at an offset of another. */
constexpr Place within(std::size_t offset, Place place)
{
    return {offset + place.at, place.size};
}

using IsValid = bool (*)(const std::uint8_t *value);

constexpr Part part(const char *name, unsigned word, std::uint32_t bit, Place request, Place record,
                    IsValid isValid, Result refusal)
{
    return {name, word, bit, request.at, request.size, record.at, record.size, isValid, refusal};
}

inline constexpr Word switchWords[] = {{"off", 0}, {"on", 1}};

/* clang-format off */
inline constexpr Kind switchKind{.shape = Shape::flag, .valueName = "on|off", .words = switchWords};
inline constexpr Kind byteKind{.shape = Shape::number, .valueName = "N", .most = 255};
inline constexpr Kind addressV4Kind{.shape = Shape::address, .valueName = "ADDR|off", .family = AF_INET, .unset = "off"};
inline constexpr Kind addressV6Kind{.shape = Shape::address, .valueName = "ADDR|off", .family = AF_INET6, .unset = "off"};
/* clang-format on */

std::span<const Setting> machineSettings(); /* mode, switchover, host name, LLDP */
std::span<const Setting> lanSettings();
std::span<const Setting> dnsSettings();
std::span<const Setting> linkModeSettings();

} // namespace bmc::settings
