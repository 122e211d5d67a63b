// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Which of the settings given a code is due to. */
#include <algorithm>

#include "settings/change.hpp"

namespace bmc::settings {

namespace {

/* Settings of a port that would explain the code, the likelier one first. */
struct Cause {
    NW_RESULT code;
    const char *keys[2];
};

constexpr Cause cause(Result result, const char *first, const char *second)
{
    return {static_cast<NW_RESULT>(result), {first, second}};
}

/* clang-format off */
constexpr Cause causes[] = {
    cause(Result::gatewayOutside,   "ipv4-gateway", "ipv4"),
    {NW_ERR_IPV4_SAME_SEGMENT,     {"ipv4",         "ipv4-enabled"}},
    {NW_ERR_IPV6_SAME_SEGMENT,     {"ipv6",         "ipv6-enabled"}},
    {NW_ERR_IPV4_ROUTE1,           {"ipv4-route1",  "ipv4"}},
    {NW_ERR_IPV4_ROUTE2,           {"ipv4-route2",  "ipv4"}},
    {NW_ERR_IPV6_ROUTE1,           {"ipv6-route1",  "ipv6"}},
    {NW_ERR_IPV6_ROUTE2,           {"ipv6-route2",  "ipv6"}},
    {NW_ERR_IPV4_IN_ROUTE1,        {"ipv4",         "ipv4-route1"}},
    {NW_ERR_IPV4_IN_ROUTE2,        {"ipv4",         "ipv4-route2"}},
    {NW_ERR_IPV6_IN_ROUTE1,        {"ipv6",         "ipv6-route1"}},
    {NW_ERR_IPV6_IN_ROUTE2,        {"ipv6",         "ipv6-route2"}},
    {NW_ERR_IPV4_ROUTE1_GATEWAY,   {"ipv4-route1",  "ipv4"}},
    {NW_ERR_IPV4_ROUTE2_GATEWAY,   {"ipv4-route2",  "ipv4"}},
    {NW_ERR_IPV6_ROUTE1_GATEWAY,   {"ipv6-route1",  "ipv6"}},
    {NW_ERR_IPV6_ROUTE2_GATEWAY,   {"ipv6-route2",  "ipv6"}},
    {NW_ERR_IPV4_HOLDS_GATEWAY1,   {"ipv4",         "ipv4-route1"}},
    {NW_ERR_IPV4_HOLDS_GATEWAY2,   {"ipv4",         "ipv4-route2"}},
    {NW_ERR_IPV6_HOLDS_GATEWAY1,   {"ipv6",         "ipv6-route1"}},
    {NW_ERR_IPV6_HOLDS_GATEWAY2,   {"ipv6",         "ipv6-route2"}},
};
/* clang-format on */

template <typename Fits>
std::optional<Given> findGiven(const std::vector<Given> &given, const Fits &fits)
{
    const auto found =
        std::ranges::find_if(given, [&](const Given &each) { return fits(*each.setting); });
    return found == given.end() ? std::nullopt : std::optional(*found);
}

std::optional<Given> namedCause(std::uint32_t code, const std::vector<Given> &given)
{
    const auto *row = std::ranges::find(causes, code, &Cause::code);
    if (row == std::end(causes)) {
        return std::nullopt;
    }
    for (const std::string_view key : row->keys) {
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

bool isAbout(const Setting &setting, Subject subject)
{
    const std::string_view prefix = subject == Subject::ipv4 ? "ipv4" : "ipv6";
    return subject != Subject::none && setting.section == Section::lan &&
           std::string_view(setting.key).starts_with(prefix);
}

} // namespace

std::optional<Given> blamed(std::uint32_t code, const Change &change)
{
    const std::vector<Given> given = givenIn(change);
    const Subject subject = describe(code).subject;
    if (const auto named = namedCause(code, given)) {
        return named;
    }
    if (const auto own = findGiven(
            given, [code](const Setting &setting) { return isRefusedWith(setting, code); })) {
        return own;
    }
    if (const auto kin = findGiven(
            given, [subject](const Setting &setting) { return isAbout(setting, subject); })) {
        return kin;
    }
    /* A conflict that the mode brings about: its ports come to stand side by side. */
    return subject == Subject::none ? std::nullopt : findGiven(given, [](const Setting &setting) {
        return setting.section == Section::mode;
    });
}

} // namespace bmc::settings
