// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/codes.hpp"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "settings/setting.hpp"

namespace bmc::settings {

TEST(Codes, HaveTheCompletionCodeThatTheLibraryGives)
{
    EXPECT_EQ(codes().front().completion, 0x00U) << "the library's conversion is for failures";
    for (const Code &code : codes().subspan(1)) {
        EXPECT_EQ(code.completion, LIB_NW_ChangeInvErr2IpmiCC(code.value)) << code.name;
    }
}

TEST(Codes, HaveNamesAndValuesOfTheirOwn)
{
    std::set<std::string_view> names;
    std::set<NW_RESULT> values;
    for (const Code &code : codes()) {
        EXPECT_TRUE(names.insert(code.name).second) << code.name;
        EXPECT_TRUE(values.insert(code.value).second) << code.name;
        EXPECT_FALSE(code.meaning.empty()) << code.name;
    }
}

/* The values that a header gives names that the expression finds. */
std::set<NW_RESULT> valuesIn(const std::string &header, const std::string &expression)
{
    std::ifstream file(header);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::set<NW_RESULT> values;
    const std::regex pattern(expression);
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end;
         ++match) {
        values.insert(static_cast<NW_RESULT>(std::stoul((*match)[1], nullptr, 16)));
    }
    return values;
}

TEST(Codes, AreAllOfTheLibrarysAndTheManagers)
{
    const auto library = valuesIn(SOURCE_DIRECTORY "/include/network_mng/base.h",
                                  "#define (?:NW_ERR_\\w+|NW_OPERLOG_LOCAL_FAIL) (0x[0-9A-F]+)U");
    const auto manager =
        valuesIn(SOURCE_DIRECTORY "/reference/settings/codes.hpp", "\\w+ = (0x[0-9A-F]+),");
    std::set<NW_RESULT> expected{NW_OK};
    expected.insert(library.begin(), library.end());
    expected.insert(manager.begin(), manager.end());
    std::set<NW_RESULT> listed;
    for (const Code &code : codes()) {
        listed.insert(code.value);
    }
    EXPECT_EQ(library.size(), 34U);
    EXPECT_EQ(listed, expected);
}

/* A code that only its unit has a name for would be missing above. */
TEST(Codes, HaveNoNamesThatTheLibraryKeepsToItself)
{
    const std::regex named("constexpr NW_RESULT (\\w+) = [0-9]");
    for (const auto &entry :
         std::filesystem::recursive_directory_iterator(SOURCE_DIRECTORY "/network")) {
        if (!entry.is_regular_file()) {
            continue;
        }
        std::ifstream file(entry.path());
        const std::string text(std::istreambuf_iterator<char>(file), {});
        std::smatch found;
        EXPECT_FALSE(std::regex_search(text, found, named)) << entry.path() << ": " << found.str(1);
    }
}

/* Who is to blame is told by their keys. */
TEST(Codes, AreAboutSettingsThatThereAre)
{
    for (const Code &code : codes()) {
        for (const std::string_view key : code.about) {
            EXPECT_TRUE(key.empty() || findSetting(Section::lan, key) != nullptr) << code.name;
        }
    }
}

struct Described {
    NW_RESULT code;
    std::string_view name;
};

/* clang-format off */
constexpr Described described[] = {
    {NW_OK,                         "NW_OK"},
    {NW_ERR_DB_READ,                "NW_ERR_DB_READ"},
    {0x1E00000B,                    "NW_MANAGER_BAD_IPV4_ADDRESS"},
    {0x1E000A0B,                    "NW_MANAGER_BAD_IPV4_ADDRESS"}, /* the mark does not count */
    {0x1E00021C,                    "NW_MANAGER_NO_VLAN"},          /* ... but where it tells two apart */
    {NW_ERR_IPV4_ROUTE1 & ~0xE00U,  "NW_ERR_IPV4_ROUTE1"},
    {0x1E0000EE,                    "NW_MANAGER_OTHER"},
    {0x9E000006,                    "NW_MANAGER_OTHER"},
    {0x81000099,                    "NW_ERR_OTHER"},
    {0xFFFFFFFB,                    "PLATFORM"},
};
/* clang-format on */

TEST(Codes, AreDescribedAlsoWithoutARow)
{
    for (const Described &row : described) {
        const Code code = describe(row.code);
        EXPECT_EQ(code.value, row.code) << row.name;
        EXPECT_EQ(code.name, row.name) << std::hex << row.code;
        EXPECT_EQ(code.completion, row.code == NW_OK ? 0 : LIB_NW_ChangeInvErr2IpmiCC(row.code))
            << row.name;
    }
}

} // namespace bmc::settings
