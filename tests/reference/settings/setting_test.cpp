// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/setting.hpp"

#include <map>
#include <set>

#include <gtest/gtest.h>

#include "samples.hpp"

namespace bmc::settings {

TEST(Settings, AreFoundBySectionAndKey)
{
    std::size_t count = 0;
    for (const SectionInfo &info : sections()) {
        EXPECT_EQ(findSection(info.key), &info);
        for (const Setting &setting : settingsOf(info.section)) {
            EXPECT_EQ(setting.section, info.section) << setting.key;
            EXPECT_EQ(findSetting(info.section, setting.key), &setting) << setting.key;
            ++count;
        }
        EXPECT_EQ(info.isScalar, settingsOf(info.section).size() == 1) << info.key;
    }
    EXPECT_EQ(count, settings().size());
    EXPECT_EQ(findSetting(Section::lan, "colour"), nullptr);
    EXPECT_EQ(findSection("colour"), nullptr);
}

/* Two parts on one byte or one bit would overwrite each other. */
TEST(Settings, PartsAreInsideTheirRecordsAndApart)
{
    for (const SectionInfo &info : sections()) {
        std::map<std::size_t, const char *> request;
        std::map<std::size_t, const char *> record;
        std::set<std::pair<unsigned, std::uint32_t>> bits;
        for (const Setting &setting : settingsOf(info.section)) {
            for (const Part &part : setting.parts) {
                EXPECT_TRUE(bits.emplace(part.word, part.bit).second) << part.name;
                EXPECT_LE(part.request + part.requestSize, info.requestSize) << part.name;
                for (std::size_t byte = 0; byte < part.requestSize; ++byte) {
                    EXPECT_TRUE(request.emplace(part.request + byte, part.name).second)
                        << part.name;
                }
                for (std::size_t byte = 0; byte < part.size; ++byte) {
                    EXPECT_TRUE(record.emplace(part.record + byte, part.name).second) << part.name;
                }
            }
        }
        if (info.stride != 0) {
            EXPECT_LE(record.rbegin()->first, info.stride) << info.key;
        }
    }
}

TEST(Settings, TellTheirValuesAsTheyAreWritten)
{
    for (const Setting &setting : settings()) {
        const Kind &kind = *setting.kind;
        if (kind.words.empty()) {
            continue;
        }
        std::set<std::string> words;
        for (const Word &word : kind.words) {
            words.emplace(word.text);
        }
        std::set<std::string> listed;
        std::string text(std::string(kind.valueName) + "|");
        for (auto bar = text.find('|'); bar != text.npos; bar = text.find('|')) {
            listed.insert(text.substr(0, bar));
            text.erase(0, bar + 1);
        }
        EXPECT_EQ(words, listed) << setting.key;
    }
}

} // namespace bmc::settings
