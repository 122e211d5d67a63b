// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/setting.hpp"

#include <algorithm>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "samples.hpp"
#include "settings/detail/checks.hpp"

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
    EXPECT_EQ(count, allSettings().size());
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

/* Settings of one place form a list, which only those of one kind can. */
TEST(Settings, HaveAPlaceInShow)
{
    std::map<std::string, const Kind *> places;
    for (const Setting &setting : allSettings()) {
        const Show &show = setting.show;
        EXPECT_TRUE(show.group != nullptr || (show.label != nullptr && show.key != nullptr))
            << setting.key;
        if (show.key != nullptr) {
            const std::string place = std::string(commandOf(setting)) + "." +
                                      (show.group != nullptr ? show.group->key : "") + "." +
                                      show.key;
            EXPECT_EQ(places.emplace(place, setting.kind).first->second, setting.kind) << place;
        }
    }
}

TEST(Settings, AreSetByTheirOwnCommandAndBySectionsCommand)
{
    const auto isSetBy = [](std::string_view command, const Setting *setting) {
        return std::ranges::count(settingsOf(command), setting) == 1;
    };
    const Setting *vlan = findSetting(Section::lan, "vlan");
    const Setting *gateway = findSetting(Section::lan, "ipv4-gateway");

    EXPECT_TRUE(isSetBy("vlan", vlan) && isSetBy("lan", vlan) && isSetBy("lan", gateway));
    EXPECT_FALSE(isSetBy("arp", vlan) || isSetBy("vlan", gateway));
    EXPECT_TRUE(settingsOf("colour").empty());
}

TEST(Settings, TellRangeAndUnitWithTheirHelp)
{
    EXPECT_EQ(helpOf(*findSetting(Section::lan, "vlan")), "VLAN of the port, 1 to 4094");
    EXPECT_EQ(helpOf(*findSetting(Section::lan, "arp-interval")),
              "time between two announcements, 0 to 255 units of 500 ms");
    EXPECT_EQ(helpOf(*findSetting(Section::an, "speed")), "speed in Mbit/s");
    EXPECT_EQ(helpOf(*findSetting(Section::an, "duplex")), "duplex");
}

bool takes(const Setting &setting, const Part &part, std::uint32_t value)
{
    std::vector<std::uint8_t> bytes(part.requestSize);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes[index] = static_cast<std::uint8_t>(value >> (8 * index));
    }
    return isValid(setting, part, bytes.data());
}

void expectRange(const Setting &setting, const Part &part)
{
    const Kind &kind = *setting.kind;
    const std::uint64_t largest = (std::uint64_t{1} << (8 * part.requestSize)) - 1;
    EXPECT_TRUE(takes(setting, part, kind.least)) << setting.key;
    EXPECT_TRUE(takes(setting, part, kind.most)) << setting.key;
    EXPECT_TRUE(kind.most == largest || !takes(setting, part, kind.most + 1)) << setting.key;
}

/* 0 may also stand for what was never set. */
void expectWords(const Setting &setting, const Part &part)
{
    for (std::uint32_t value = 0; value < 256; ++value) {
        const bool isWord = !wordOf(setting.kind->words, value).empty();
        EXPECT_TRUE(takes(setting, part, value) == isWord || value == 0)
            << setting.key << " " << value;
    }
}

/* People are told the range and the words that a request may have. */
TEST(Settings, TakeTheValuesThatTheyTell)
{
    for (const Setting &setting : allSettings()) {
        const Shape shape = setting.kind->shape;
        if (!setting.kind->words.empty()) {
            expectWords(setting, setting.parts[0]);
        } else if (shape == Shape::number || shape == Shape::switchedNumber) {
            expectRange(setting, setting.parts[shape == Shape::number ? 0 : 1]);
        }
    }
}

TEST(Settings, TellWhatIsStoredWithoutEffect)
{
    const Setting &origin = *findSetting(Section::lan, "ipv6-origin");
    EXPECT_EQ(effectNote(origin, "static", "eth1"), "");
    EXPECT_EQ(effectNote(origin, "slaac", "eth1"), "ipv6-origin of eth1 is stored without effect");
    EXPECT_TRUE(helpOf(origin).ends_with("; slaac is stored without effect yet")) << helpOf(origin);

    const Setting &mode = *findSetting(Section::dns, "ipv6-mode");
    EXPECT_EQ(effectNote(mode, "manual", "eth1"), "");
    EXPECT_EQ(effectNote(mode, "auto", "eth1"),
              "ipv6-mode of eth1 is stored, but brings no servers");
    EXPECT_TRUE(helpOf(mode).ends_with("; auto is stored, but brings no servers yet"))
        << helpOf(mode);

    const Setting &trafficClass = *findSetting(Section::lan, "traffic-class");
    EXPECT_EQ(effectNote(trafficClass, "0", "eth1"),
              "traffic-class of eth1 is stored without effect");
    EXPECT_TRUE(helpOf(trafficClass).ends_with("; stored, without effect yet"))
        << helpOf(trafficClass);

    EXPECT_EQ(effectNote(*findSetting(Section::lan, "hop-limit"), "7", "eth1"), "");
}

TEST(Settings, TellTheirValuesAsTheyAreWritten)
{
    for (const Setting &setting : allSettings()) {
        const Kind &kind = *setting.kind;
        if (kind.words.empty()) {
            continue;
        }
        std::set<std::string> words;
        for (const Word &word : kind.words) {
            words.emplace(word.text);
        }
        std::set<std::string> listed;
        std::string text(valueNameOf(setting) + "|");
        for (auto bar = text.find('|'); bar != text.npos; bar = text.find('|')) {
            listed.insert(text.substr(0, bar));
            text.erase(0, bar + 1);
        }
        EXPECT_EQ(words, listed) << setting.key;
    }
}

} // namespace bmc::settings
