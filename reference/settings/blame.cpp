// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Which of the settings given a code is due to. */
#include <algorithm>

#include "settings/change.hpp"

namespace bmc::settings {

namespace {

template <typename Fits>
std::optional<Given> findGiven(const std::vector<Given> &given, const Fits &fits)
{
    const auto found =
        std::ranges::find_if(given, [&](const Given &each) { return fits(*each.setting); });
    return found == given.end() ? std::nullopt : std::optional(*found);
}

std::optional<Given> namedCause(const Code &code, const std::vector<Given> &given)
{
    for (const std::string_view key : code.about) {
        const auto found = findGiven(given, [key](const Setting &setting) {
            return setting.section == Section::lan && key == setting.key;
        });
        if (found) {
            return found;
        }
    }
    return std::nullopt;
}

bool isRefusedWith(const Setting &setting, std::uint32_t code)
{
    return std::ranges::any_of(setting.parts, [code](const Part &part) {
        return code != NW_OK && static_cast<std::uint32_t>(part.refusal) == code;
    });
}

/* A setting of the family, "ipv4" or "ipv6", that the code is about. */
bool isKin(const Setting &setting, const Code &code)
{
    const std::string_view family = code.about[0].substr(0, code.about[0].find('-'));
    return !family.empty() && setting.section == Section::lan &&
           std::string_view(setting.key).starts_with(family);
}

} // namespace

std::optional<Given> blamed(std::uint32_t code, const Change &change)
{
    const std::vector<Given> given = givenIn(change);
    const Code row = describe(code);
    if (const auto own = findGiven(
            given, [code](const Setting &setting) { return isRefusedWith(setting, code); })) {
        return own;
    }
    if (const auto named = namedCause(row, given)) {
        return named;
    }
    if (const auto kin =
            findGiven(given, [&row](const Setting &setting) { return isKin(setting, row); })) {
        return kin;
    }
    /* A conflict that the mode brings about: its ports come to stand side by side. */
    return row.about[0].empty() ? std::nullopt : findGiven(given, [](const Setting &setting) {
        return setting.section == Section::mode;
    });
}

} // namespace bmc::settings
