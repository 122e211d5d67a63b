// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Operation-log sentences of a change. */
#include <algorithm>
#include <set>

#include "common/text.hpp"
#include "nwctl/sending.hpp"

namespace nwctl {

namespace {

/* "heading, field, field." as its parts. */
std::set<std::string> partsOf(std::string_view sentence)
{
    constexpr std::string_view separator = ", ";
    std::set<std::string> parts;

    if (sentence.ends_with('.')) {
        sentence.remove_suffix(1);
    }
    while (!sentence.empty()) {
        const auto end = sentence.find(separator);
        parts.emplace(sentence.substr(0, end));
        sentence.remove_prefix(end == sentence.npos ? sentence.size() : end + separator.size());
    }
    return parts;
}

bool saysAll(const std::string &longer, const std::string &shorter)
{
    return std::ranges::includes(partsOf(longer), partsOf(shorter));
}

} // namespace

std::vector<std::string> lanSentences(const NW_OPER_LOG_S &log)
{
    std::vector<std::string> kept;
    for (const std::string &sentence :
         {bmc::boundedText(log.szLanOtherLog), bmc::boundedText(log.szLanIpv4RouteLog),
          bmc::boundedText(log.szLanIpv6RouteLog)}) {
        if (sentence.empty() || std::ranges::any_of(kept, [&](const auto &other) {
                return saysAll(other, sentence);
            })) {
            continue;
        }
        std::erase_if(kept, [&](const auto &other) { return saysAll(sentence, other); });
        kept.push_back(sentence);
    }
    return kept;
}

bool saysFailure(const NW_OPER_LOG_S &log, std::uint32_t module)
{
    const std::string sentence = bmc::boundedText(log.szOperLog);
    return std::ranges::any_of(g_astFailureOperateLogDefault, [&](const auto &row) {
        return row.uiModuleBit == module && sentence == bmc::boundedText(row.acDesc);
    });
}

} // namespace nwctl
