// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "option.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "failure.hpp"

namespace nwctl {

namespace {

/* "off or on", "disabled, manual or auto" */
std::string choices(std::span<const Word> words)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool last = i + 1 == words.size();
        text += (i == 0 ? "" : last ? " or " : ", ") + std::string(words[i].text);
    }
    return text;
}

} // namespace

void requireSomething(std::span<const GivenOption> given)
{
    if (given.empty()) {
        throw Failure(Exit::usage, "", "", "nothing to change: give at least one setting");
    }
}

void misused(const GivenOption &given, const std::string &reason)
{
    throw Failure(Exit::usage, given.name, given.value, reason);
}

void refuseFor(const GivenOption &given, const std::optional<std::string> &reason)
{
    if (reason) {
        throw Failure(Exit::refused, given.name, given.value, *reason, NW_ERR_OUT_OF_RANGE);
    }
}

const Word *findWord(std::span<const Word> words, std::string_view text)
{
    const auto word = std::ranges::find(words, text, &Word::text);
    return word == words.end() ? nullptr : &*word;
}

std::uint8_t wordValue(const GivenOption &given, std::span<const Word> words)
{
    const Word *word = findWord(words, given.value);
    if (word == nullptr) {
        misused(given, "expected " + choices(words));
    }
    return static_cast<std::uint8_t>(word->value);
}

std::string wordName(std::span<const Word> words, std::uint32_t value)
{
    const auto word = std::ranges::find(words, value, &Word::value);
    return word == words.end() ? "unknown (" + std::to_string(value) + ")"
                               : std::string(word->text);
}

unsigned numberValue(const GivenOption &given, unsigned min, unsigned max)
{
    const auto number = parseNumber(given.value, max);
    if (!number || *number < min) {
        misused(given,
                "expected a number from " + std::to_string(min) + " to " + std::to_string(max));
    }
    return *number;
}

} // namespace nwctl
