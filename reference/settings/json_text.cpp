// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/json_text.hpp"

#include <algorithm>
#include <functional>
#include <set>

namespace bmc::settings {

namespace {

const std::string wholeDocument = "document";

/* No document of ours is nested deeper. */
constexpr int deepest = 16;

/* Far more than there are settings: an object's keys are searched one by one. */
constexpr int mostKeys = 4096;

/* Notes the first key that one object has twice. */
class KeyWatch {
public:
    bool operator()(int depth, Json::parse_event_t event, const Json &parsed)
    {
        if (depth > deepest) {
            throw DocumentError(wholeDocument, "", "nested too deeply");
        }
        if (event == Json::parse_event_t::key && ++keys_ > mostKeys) {
            throw DocumentError(wholeDocument, "", "has too many keys");
        }
        if (event == Json::parse_event_t::object_start) {
            open_.emplace_back();
        } else if (event == Json::parse_event_t::object_end) {
            open_.pop_back();
        } else if (event == Json::parse_event_t::key && !open_.back().insert(parsed).second) {
            throw DocumentError(wholeDocument, parsed, "the key is given twice");
        }
        return true;
    }

private:
    std::vector<std::set<std::string>> open_;
    int keys_ = 0;
};

std::optional<std::string> textOf(const Node &node)
{
    const Json &value = node.value;
    if (value.is_null()) {
        return std::nullopt;
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "on" : "off";
    }
    if (!value.is_string() && !value.is_number_integer()) {
        refuse(node, "expected a text, a whole number, true, false, null or a list of these");
    }
    return shown(value);
}

std::string atByte(std::size_t position)
{
    return "byte " + std::to_string(position);
}

} // namespace

Json parseJson(std::string_view text)
{
    if (text.size() > documentMax) {
        throw DocumentError(wholeDocument, "",
                            "has more than " + std::to_string(documentMax) + " bytes");
    }
    if (const auto zero = text.find('\0'); zero != text.npos) {
        throw DocumentError(wholeDocument, atByte(zero + 1), "not JSON");
    }
    KeyWatch watch;
    try {
        return Json::parse(text, std::ref(watch));
    } catch (const Json::parse_error &error) {
        throw DocumentError(wholeDocument, atByte(error.byte), "not JSON");
    } catch (const Json::exception &) {
        throw DocumentError(wholeDocument, "", "holds a number that is out of range");
    }
}

void refuse(const Node &node, const std::string &reason)
{
    throw DocumentError(node.place.empty() ? wholeDocument : node.place, shown(node.value), reason);
}

void expectObject(const Node &node)
{
    if (!node.value.is_object()) {
        refuse(node, "expected an object");
    }
}

void expectKeys(const Node &node, std::initializer_list<std::string_view> keys)
{
    expectObject(node);
    for (const auto &[key, value] : node.value.items()) {
        if (std::ranges::find(keys, key) == keys.end()) {
            std::string known;
            for (const std::string_view each : keys) {
                known += (known.empty() ? "" : ", ") + std::string(each);
            }
            refuse(memberOf(node, key), "no such key, expected " + known);
        }
    }
}

Node memberOf(const Node &node, const std::string &key)
{
    static const Json missing;
    const auto found = node.value.find(key);
    return {node.place.empty() ? key : node.place + "." + key,
            found == node.value.end() ? missing : *found};
}

bool flagOf(const Node &node)
{
    if (!node.value.is_boolean()) {
        refuse(node, "must be true or false");
    }
    return node.value.get<bool>();
}

unsigned numberOf(const Node &node, unsigned most)
{
    if (!node.value.is_number_unsigned() || node.value.get<std::uint64_t>() > most) {
        refuse(node, "must be a number from 0 to " + std::to_string(most));
    }
    return node.value.get<unsigned>();
}

std::vector<std::optional<std::string>> textsOf(const Node &node)
{
    if (!node.value.is_array()) {
        return {textOf(node)};
    }
    std::vector<std::optional<std::string>> texts;
    for (const Json &each : node.value) {
        texts.push_back(textOf({node.place, each}));
    }
    return texts;
}

std::string shown(const Json &value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

} // namespace bmc::settings
