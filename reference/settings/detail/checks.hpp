// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a field of a request may hold. The library's checks judge what it knows; all zeros mean
 * "none" for every address, mask and gateway. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "network_mng/check.h"
#include "settings/setting.hpp"

namespace bmc::settings {

inline constexpr std::size_t longestName = 63; /* of a label */

/* In a part's row: what the setting's kind allows. */
inline constexpr std::nullptr_t ofKind = nullptr;

/* May a request have the value for this part of the setting? */
bool isValid(const Setting &setting, const Part &part, const std::uint8_t *value);

/* Bits of an address. */
unsigned longestPrefix(int family);

/* All zeros. */
bool isUnset(const std::uint8_t *value, std::size_t size);

bool isAny(const std::uint8_t *value);

bool isAddressV4(const std::uint8_t *value);
bool isMaskV4(const std::uint8_t *value);
bool isAddressV6(const std::uint8_t *value);
bool isGatewayV6(const std::uint8_t *value);

/* A name behind its length, one that ends with a zero, and a domain. */
bool isCountedName(const std::uint8_t *value);
bool isName(const std::uint8_t *value);
bool isDomain(const std::uint8_t *value);

} // namespace bmc::settings
