// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* JSON out of the hands of others: bounded, and without a key that stands twice. */
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/document.hpp"

namespace bmc::settings {

/* A value and where it stands. */
struct Node {
    std::string place;
    const Json &value;
};

/* Throw DocumentError. */

Json parseJson(std::string_view text);
[[noreturn]] void refuse(const Node &node, const std::string &reason);
void expectObject(const Node &node);
/* An object with no other keys than these. */
void expectKeys(const Node &node, std::initializer_list<std::string_view> keys);

/* The member of an object. */
Node memberOf(const Node &node, const std::string &key);

bool flagOf(const Node &node);
unsigned numberOf(const Node &node, unsigned most);

/* Texts of a value or of each in a list, as they would stand on a command line; an empty optional
 * stands for null. */
std::vector<std::optional<std::string>> textsOf(const Node &node);

/* As the value is told to people. */
std::string shown(const Json &value);

} // namespace bmc::settings
