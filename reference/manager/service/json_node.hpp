// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A value of a configuration file that knows its own place, for messages that name it. */
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "common/address.hpp"

namespace bmc::manager {

/* "ports[1].ipv4.address: ..." */
class ConfigError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class JsonNode {
public:
    JsonNode(const nlohmann::json &value, std::string place)
        : value_(value), place_(std::move(place))
    {
    }

    /* Throws ConfigError unless the value is an object with no other keys than these. */
    void expectKeys(std::initializer_list<std::string_view> keys) const;

    /* A member that must be there, one that need not be, and the elements of a list of that size.
     */
    JsonNode member(const std::string &key) const;
    std::optional<JsonNode> find(const std::string &key) const;
    JsonNode element(std::size_t index, std::size_t size) const;

    bool flag() const;
    std::uint64_t number(std::uint64_t last) const;
    std::string text(std::size_t longest) const;
    /* Index of the text in the list. */
    std::size_t choice(std::initializer_list<std::string_view> names) const;
    /* "ADDRESS/LENGTH", or the plain address. */
    Address subnetAddress(int family) const;
    Address address(int family) const;

    [[noreturn]] void refuse(const std::string &reason) const;

private:
    const nlohmann::json &value_;
    std::string place_;
};

} // namespace bmc::manager
