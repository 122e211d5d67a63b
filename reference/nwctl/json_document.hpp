// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* JSON that a user wrote. */
#pragma once

#include <string>
#include <vector>

#include "session.hpp"

namespace nwctl {

/* Throws Failure (usage): no JSON, with the place; or a key that an object has twice. */
Json parseDocument(const std::string &text);

/* Throws Failure (usage) unless the value of the key is an object. */
void requireObject(const std::string &key, const Json &value);

/* What the value of the key gives an option: one text, or each of a list. Throws Failure (usage)
 * for a value that is no text, number or switch. */
std::vector<std::string> optionTexts(const std::string &key, const Json &value);

/* Throws Failure (usage) about the key and its value. */
[[noreturn]] void misusedKey(const std::string &key, const Json &value, const std::string &reason);

} // namespace nwctl
