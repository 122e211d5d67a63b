// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/json_node.hpp"

#include <algorithm>
#include <charconv>

#include <arpa/inet.h>

namespace bmc::manager {

namespace {

std::optional<unsigned> prefixIn(std::string_view text, std::size_t longest)
{
    unsigned prefix = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), prefix);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && prefix <= longest ? std::optional(prefix) : std::nullopt;
}

bool isControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
}

std::string familyName(int family)
{
    return family == AF_INET ? "IPv4" : "IPv6";
}

std::string listOf(std::initializer_list<std::string_view> names)
{
    std::string list;
    for (const std::string_view name : names) {
        list += (list.empty() ? "\"" : ", \"") + std::string(name) + "\"";
    }
    return list;
}

} // namespace

void JsonNode::refuse(const std::string &reason) const
{
    throw ConfigError((place_.empty() ? "configuration" : place_) + ": " + reason);
}

void JsonNode::expectKeys(std::initializer_list<std::string_view> keys) const
{
    if (!value_.is_object()) {
        refuse("must be an object");
    }
    for (const auto &[key, value] : value_.items()) {
        if (std::ranges::find(keys, key) == keys.end()) {
            refuse("unknown key " + nlohmann::json(key).dump() + "; known are " + listOf(keys));
        }
    }
}

std::optional<JsonNode> JsonNode::find(const std::string &key) const
{
    const auto found = value_.find(key);
    return found == value_.end()
               ? std::nullopt
               : std::optional<JsonNode>(std::in_place, *found,
                                         place_.empty() ? key : place_ + "." + key);
}

JsonNode JsonNode::member(const std::string &key) const
{
    const auto found = find(key);
    if (!found) {
        refuse("key \"" + key + "\" is missing");
    }
    return *found;
}

JsonNode JsonNode::element(std::size_t index, std::size_t size) const
{
    if (!value_.is_array() || value_.size() != size) {
        refuse("must be a list of " + std::to_string(size));
    }
    return {value_[index], place_ + "[" + std::to_string(index) + "]"};
}

bool JsonNode::flag() const
{
    if (!value_.is_boolean()) {
        refuse("must be true or false");
    }
    return value_.get<bool>();
}

std::uint64_t JsonNode::number(std::uint64_t last) const
{
    if (!value_.is_number_unsigned() || value_.get<std::uint64_t>() > last) {
        refuse("must be a number from 0 to " + std::to_string(last));
    }
    return value_.get<std::uint64_t>();
}

std::string JsonNode::text(std::size_t longest) const
{
    if (!value_.is_string() || value_.get_ref<const std::string &>().empty() ||
        value_.get_ref<const std::string &>().size() > longest) {
        refuse("must be a text of 1 to " + std::to_string(longest) + " characters");
    }
    const auto &given = value_.get_ref<const std::string &>();
    if (std::ranges::any_of(given, isControl)) {
        refuse(value_.dump() + " holds a control character");
    }
    return given;
}

std::size_t JsonNode::choice(std::initializer_list<std::string_view> names) const
{
    const auto *found = value_.is_string()
                            ? std::ranges::find(names, value_.get_ref<const std::string &>())
                            : names.end();
    if (found == names.end()) {
        refuse("must be one of " + listOf(names));
    }
    return static_cast<std::size_t>(found - names.begin());
}

Address JsonNode::address(int family) const
{
    const std::string given = text(INET6_ADDRSTRLEN);
    Address address{family, static_cast<unsigned>(8 * sizeOf(family)), {}};
    if (inet_pton(family, given.c_str(), address.bytes.data()) != 1) {
        refuse("\"" + given + "\" is not an " + familyName(family) + " address");
    }
    return address;
}

Address JsonNode::subnetAddress(int family) const
{
    const std::string given = text(INET6_ADDRSTRLEN + 4);
    const std::size_t slash = given.find('/');
    const auto prefix =
        slash == std::string::npos
            ? std::nullopt
            : prefixIn(std::string_view(given).substr(slash + 1), 8 * sizeOf(family));
    if (!prefix) {
        refuse("\"" + given + "\" is not an address with its prefix length, as in " +
               (family == AF_INET ? "\"192.0.2.1/24\"" : "\"2001:db8::1/64\""));
    }

    const nlohmann::json plain = given.substr(0, slash);
    Address address = JsonNode(plain, place_).address(family);
    address.prefix = *prefix;
    return address;
}

} // namespace bmc::manager
