// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "sentences.hpp"

#include <algorithm>
#include <set>
#include <string_view>

#include "text.hpp"

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
         {boundedText(log.szLanOtherLog), boundedText(log.szLanIpv4RouteLog),
          boundedText(log.szLanIpv6RouteLog)}) {
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

std::vector<std::string> combinedSentences(const NW_OPER_LOG_S &log)
{
    std::vector<std::string> sentences = lanSentences(log);
    for (const std::string &sentence : {boundedText(log.szDnsLog), boundedText(log.szNetModeLog)}) {
        if (!sentence.empty()) {
            sentences.push_back(sentence);
        }
    }
    return sentences;
}

std::vector<std::string> mainSentence(const NW_OPER_LOG_S &log)
{
    const std::string sentence = boundedText(log.szOperLog);
    return sentence.empty() ? std::vector<std::string>{} : std::vector{sentence};
}

std::string failureSentence(const NW_OPER_LOG_S &log)
{
    return boundedText(log.szOperLog);
}

bool saysFailure(const NW_OPER_LOG_S &log, std::uint32_t module)
{
    const std::string sentence = boundedText(log.szOperLog);
    return std::ranges::any_of(g_astFailureOperateLogDefault, [&](const auto &row) {
        return row.uiModuleBit == module && sentence == boundedText(row.acDesc);
    });
}

} // namespace nwctl
