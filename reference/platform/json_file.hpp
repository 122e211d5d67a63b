// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* State that is kept as JSON. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>

#include <nlohmann/json.hpp>

#include "platform/failure.hpp"

namespace bmc {

/* What a file of up to 1 MiB holds. Throws Failure or std::system_error. */
nlohmann::json readJson(const std::filesystem::path &path);

/* The integer in a JSON value when the type can hold it; otherwise Failure, which calls the value
 * by its name. */
template <typename Integer>
Integer integerOf(const nlohmann::json &value, const std::string &name)
{
    /* Zero and above is stored unsigned, whatever is below zero is out of range. */
    if (!value.is_number_unsigned() ||
        value.get<std::uint64_t>() > std::numeric_limits<Integer>::max()) {
        throw Failure(ERANGE, name + " is not an integer of 0 to " +
                                  std::to_string(std::numeric_limits<Integer>::max()));
    }
    return value.get<Integer>();
}

} // namespace bmc
