// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/setting.hpp"

#include <algorithm>
#include <vector>

#include "network_mng/lan.h"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "settings/detail/rows.hpp"

namespace bmc::settings {

namespace {

/* Ports that have a PHY of their own. */
constexpr unsigned physicalPorts = 2;

/* clang-format off */
#define ENTRY(member) offsetof(Configuration, member)
constexpr SectionInfo infos[] = {
    {Section::mode,       "mode",       "network port mode",      NW_LOG_NET_MODE,    0,             true,  sizeof(NW_NET_MODE_SET_S),     ENTRY(state),       0},
    {Section::switchover, "switchover", "port number switchover", NW_LOG_LAN_REVERSE, 0,             true,  sizeof(NW_LAN_REVERSE_SET_S),  ENTRY(state),       0},
    {Section::hostName,   "hostname",   "host name settings",     NW_LOG_HOSTNAME,    0,             false, sizeof(NW_HOSTNAME_SET_REQ_S), ENTRY(hostName),    0},
    {Section::lldp,       "lldp",       "LLDP settings",          NW_LOG_LLDP,        0,             false, sizeof(NW_LLDP_SET_S),         ENTRY(lldp),        0},
    {Section::lan,        "lan",        "LAN settings",           NW_LOG_LAN,         NW_PORT_COUNT, false, sizeof(NW_LAN_SET_PORT_S),     ENTRY(lan.astPort), sizeof(NW_LAN_CFG_PORT_S)},
    {Section::dns,        "dns",        "DNS settings",           NW_LOG_DNS,         NW_PORT_COUNT, false, sizeof(NW_DNS_PORT_S),         ENTRY(dns.astPort), sizeof(NW_DNS_PORT_S)},
    {Section::an,         "an",         "auto-negotiation",       NW_LOG_AN,          physicalPorts, false, sizeof(NW_AN_SET_PORT_S),      ENTRY(an.astPort),  sizeof(NW_AN_CFG_PORT_S)},
};
#undef ENTRY
/* clang-format on */

} // namespace

std::span<const SectionInfo> sections()
{
    return infos;
}

const SectionInfo &infoOf(Section section)
{
    return *std::ranges::find(infos, section, &SectionInfo::section);
}

const SectionInfo *findSection(std::string_view key)
{
    const auto *found = std::ranges::find(infos, key, &SectionInfo::key);
    return found == std::end(infos) ? nullptr : found;
}

std::span<const Setting> allSettings()
{
    static const std::vector<Setting> all = [] {
        std::vector<Setting> rows;
        for (const auto group :
             {machineSettings(), lanSettings(), dnsSettings(), linkModeSettings()}) {
            rows.insert(rows.end(), group.begin(), group.end());
        }
        return rows;
    }();
    return all;
}

std::span<const Setting> settingsOf(Section section)
{
    const std::span<const Setting> all = allSettings();
    const auto isOfSection = [section](const Setting &setting) {
        return setting.section == section;
    };
    const auto begin = std::ranges::find_if(all, isOfSection);
    const auto end = std::find_if_not(begin, all.end(), isOfSection);
    return {begin, end};
}

const Setting *findSetting(Section section, std::string_view key)
{
    const auto rows = settingsOf(section);
    const auto found = std::ranges::find(rows, key, &Setting::key);
    return found == rows.end() ? nullptr : &*found;
}

std::string helpOf(const Setting &setting)
{
    const Kind &kind = *setting.kind;
    const bool hasRange = kind.most != 0;
    std::string help = setting.help;
    if (hasRange) {
        help += ", " + std::to_string(kind.least) + " to " + std::to_string(kind.most);
    }
    if (kind.unit != nullptr) {
        help += (hasRange ? " units of " : " in ") + std::string(kind.unit);
    }
    if (!setting.isUsed) {
        help += "; stored, without effect yet";
    }
    for (const Word &word : kind.words) {
        if (word.lack != nullptr) {
            help += "; " + std::string(word.text) + " " + word.lack + " yet";
        }
    }
    return help;
}

std::string effectNote(const Setting &setting, std::string_view value, std::string_view port)
{
    const Word *word = findWord(setting.kind->words, value);
    const char *lack = !setting.isUsed ? withoutEffect : word != nullptr ? word->lack : nullptr;
    return lack == nullptr ? "" : setting.key + (" of " + std::string(port)) + " " + lack;
}

std::string_view commandOf(const Setting &setting)
{
    return setting.show.command != nullptr ? setting.show.command : infoOf(setting.section).key;
}

std::vector<const Setting *> settingsOf(std::string_view command)
{
    std::vector<const Setting *> found;
    for (const Setting &setting : allSettings()) {
        if (command == commandOf(setting) || command == infoOf(setting.section).key) {
            found.push_back(&setting);
        }
    }
    return found;
}

std::string valueNameOf(const Setting &setting)
{
    const Kind &kind = *setting.kind;
    if (kind.valueName != nullptr) {
        return kind.valueName;
    }
    std::string names;
    for (const Word &word : kind.words) {
        names += (names.empty() ? "" : "|") + std::string(word.text);
    }
    return names;
}

std::string listed(std::span<const Word> words)
{
    std::string text;
    for (const Word &word : words) {
        const bool isLast = &word == &words.back();
        text += (&word == &words.front() ? "" : isLast ? " or " : ", ") + std::string(word.text);
    }
    return text;
}

std::string_view wordOf(std::span<const Word> words, std::uint32_t value)
{
    const auto found = std::ranges::find(words, value, &Word::value);
    return found == words.end() ? std::string_view() : found->text;
}

const Word *findWord(std::span<const Word> words, std::string_view text)
{
    const auto found = std::ranges::find(words, text, &Word::text);
    return found == words.end() ? nullptr : &*found;
}

const std::uint8_t *entryOf(const Configuration &configuration, Section section, unsigned port)
{
    const SectionInfo &info = infoOf(section);
    return reinterpret_cast<const std::uint8_t *>(&configuration) + info.entry + port * info.stride;
}

std::uint8_t *entryOf(Configuration &configuration, Section section, unsigned port)
{
    const SectionInfo &info = infoOf(section);
    return reinterpret_cast<std::uint8_t *>(&configuration) + info.entry + port * info.stride;
}

} // namespace bmc::settings
