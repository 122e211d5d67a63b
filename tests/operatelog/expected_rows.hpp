// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the operation log's tables must hold, written down a second time. */
#ifndef EXPECTED_ROWS_HPP
#define EXPECTED_ROWS_HPP

#include <array>
#include <cstdint>
#include <string>

#include "network_mng.h"

namespace operatelog {

inline constexpr std::uint32_t hostName = 0x01;
inline constexpr std::uint32_t lan = 0x02;
inline constexpr std::uint32_t dns = 0x04;
inline constexpr std::uint32_t lldp = 0x08;
inline constexpr std::uint32_t ncsi = 0x10;
inline constexpr std::uint32_t netMode = 0x20;
inline constexpr std::uint32_t an = 0x40;
inline constexpr std::uint32_t lanReverse = 0x80;

struct SuccessRow {
    std::uint32_t module;
    std::uint32_t word;
    std::uint32_t mask;
    std::uint32_t exclude;
    NW_OPERATE_LOG_FORMAT_FN formatter;
    std::uint32_t offset;
    const char *text;
};

struct FailureRow {
    std::uint32_t module;
    std::uint32_t result;
    std::uint32_t perPort;
    const char *text;
};

struct SubModuleRow {
    std::uint32_t module;
    std::uint8_t skipHead;
    const char *builder;
};

extern const std::array<SuccessRow, 59> successRows;
extern const std::array<FailureRow, 10> failureRows;
extern const std::array<SubModuleRow, 8> subModuleRows;

} // namespace operatelog

#endif
