// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "json_document.hpp"

#include <set>

#include "failure.hpp"

namespace nwctl {

namespace {

/* No document of ours is nested deeper. */
constexpr int deepest = 16;

/* Notes the first key that one object has twice. */
class KeyWatch {
public:
    bool operator()(int depth, Json::parse_event_t event, const Json &parsed)
    {
        if (depth > deepest) {
            throw Failure(Exit::usage, "FILE", "", "nested too deeply");
        }
        if (event == Json::parse_event_t::object_start) {
            open.emplace_back();
        } else if (event == Json::parse_event_t::object_end) {
            open.pop_back();
        } else if (event == Json::parse_event_t::key && !open.back().insert(parsed).second &&
                   repeated.empty()) {
            repeated = parsed;
        }
        return true;
    }

    std::string repeated;

private:
    std::vector<std::set<std::string>> open;
};

std::string shown(const Json &value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string optionText(const std::string &key, const Json &value)
{
    if (value.is_string() || value.is_number_integer()) {
        return shown(value);
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "on" : "off";
    }
    misusedKey(key, value, "expected a text, a whole number, true, false or a list of these");
}

} // namespace

Json parseDocument(const std::string &text)
{
    KeyWatch watch;
    if (const auto zero = text.find('\0'); zero != std::string::npos) {
        throw Failure(Exit::usage, "FILE", "byte " + std::to_string(zero + 1), "not JSON");
    }
    try {
        Json document = Json::parse(text, std::ref(watch));
        if (!watch.repeated.empty()) {
            throw Failure(Exit::usage, "FILE", watch.repeated, "the key is given twice");
        }
        return document;
    } catch (const Json::parse_error &error) {
        throw Failure(Exit::usage, "FILE", "byte " + std::to_string(error.byte), "not JSON");
    } catch (const Json::exception &) {
        throw Failure(Exit::usage, "FILE", "", "holds a number that is out of range");
    }
}

void requireObject(const std::string &key, const Json &value)
{
    if (!value.is_object()) {
        misusedKey(key, value, "expected an object");
    }
}

std::vector<std::string> optionTexts(const std::string &key, const Json &value)
{
    if (!value.is_array()) {
        return {optionText(key, value)};
    }
    std::vector<std::string> texts;
    for (const Json &item : value) {
        texts.push_back(optionText(key, item));
    }
    return texts;
}

void misusedKey(const std::string &key, const Json &value, const std::string &reason)
{
    throw Failure(Exit::usage, key, shown(value), reason);
}

} // namespace nwctl
