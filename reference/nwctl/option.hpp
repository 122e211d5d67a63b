// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Options of a change as rows: what each is called and what it changes. */
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "results.hpp"

namespace nwctl {

/* An option as the user gave it. */
struct GivenOption {
    std::string name;
    std::string value;
};

/* Throws Failure (usage) when no option is given. */
void requireSomething(std::span<const GivenOption> given);

/* Throws Failure (usage) about the option. */
[[noreturn]] void misused(const GivenOption &given, const std::string &reason);
/* Throws Failure (refused) about the option if there is a reason. */
void refuseFor(const GivenOption &given, const std::optional<std::string> &reason);

/* What the command line says of an option. */
struct OptionText {
    const char *name;
    const char *valueName;
    const char *description;
};

template <typename Change>
struct Option {
    const char *name;
    const char *valueName;
    const char *description;
    Subject subject;
    /* Adds the option to the change. Throws Failure: usage when the value cannot be understood or
     * contradicts an earlier one, refused when a check of the library refuses it. */
    void (*apply)(const GivenOption &given, Change &change);
};

template <typename Change>
std::vector<OptionText> optionTexts(std::span<const Option<Change>> rows)
{
    std::vector<OptionText> texts;
    for (const Option<Change> &row : rows) {
        texts.push_back({row.name, row.valueName, row.description});
    }
    return texts;
}

/* What the rows make of the options given. Throws Failure as above, usage when there is none. */
template <typename Change>
Change buildChange(std::span<const Option<Change>> rows, std::span<const GivenOption> given,
                   Change change = {})
{
    for (const Option<Change> &row : rows) {
        for (const GivenOption &option : given) {
            if (option.name == row.name) {
                row.apply(option, change);
            }
        }
    }
    requireSomething(given);
    return change;
}

/* Marks bits of a change. A setting has one new value at most: throws Failure (usage) when one of
 * the bits is marked already. */
template <typename Bits>
void mark(const GivenOption &given, Bits &marked, std::uint32_t bits)
{
    if ((marked & bits) != 0) {
        misused(given, "contradicts another value for the same setting");
    }
    marked = static_cast<Bits>(marked | bits);
}

/* A value that has a name. */
struct Word {
    std::string_view text;
    std::uint32_t value;
};
inline constexpr Word switchWords[] = {{"off", 0}, {"on", 1}};

const Word *findWord(std::span<const Word> words, std::string_view text);
/* Value of the word that the option gives. Throws Failure (usage) for another text. */
std::uint8_t wordValue(const GivenOption &given, std::span<const Word> words);
/* Name of the value, "unknown (N)" without one. */
std::string wordName(std::span<const Word> words, std::uint32_t value);

/* The number that the option gives. Throws Failure (usage) for anything else. */
unsigned numberValue(const GivenOption &given, unsigned min, unsigned max);

} // namespace nwctl
