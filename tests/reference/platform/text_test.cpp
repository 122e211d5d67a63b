// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Bounded text. */
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "bmc_platform.h"

namespace {

constexpr std::size_t bufferSize = 16;
constexpr char poison = '#';

struct Row {
    const char *name;
    const char *before; /* contents of the buffer, null: no terminator in it */
    const char *source;
    std::size_t size;
    std::size_t answer;
    const char *after; /* contents, up to the poison that must be left */
};

std::string nameOf(const ::testing::TestParamInfo<Row> &row)
{
    return row.param.name;
}

std::array<char, bufferSize> poisoned(const char *text)
{
    std::array<char, bufferSize> buffer;
    buffer.fill(poison);
    if (text != nullptr) {
        std::char_traits<char>::copy(buffer.data(), text, std::char_traits<char>::length(text) + 1);
    }
    return buffer;
}

using Function = std::size_t (*)(char *, const char *, std::size_t);

void expectRow(Function function, const Row &row)
{
    auto buffer = poisoned(row.before);
    auto expected = poisoned(row.before);
    if (row.after != nullptr) {
        std::char_traits<char>::copy(expected.data(), row.after,
                                     std::char_traits<char>::length(row.after) + 1);
    }

    EXPECT_EQ(row.answer, function(buffer.data(), row.source, row.size));
    EXPECT_EQ(expected, buffer);
}

class Strlcpy : public ::testing::TestWithParam<Row> {};

TEST_P(Strlcpy, CopiesWhatFits)
{
    expectRow(BMC_Strlcpy, GetParam());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Strlcpy, ::testing::Values(
    Row{"Fits",        nullptr, "eth0",  8, 4, "eth0"},
    Row{"FitsExactly", nullptr, "eth0",  5, 4, "eth0"},
    Row{"IsCut",       nullptr, "bond0", 4, 5, "bon"},
    Row{"OnlyTerminator", nullptr, "bond0", 1, 5, ""},
    Row{"SizeZero",    nullptr, "bond0", 0, 5, nullptr},
    Row{"EmptySource", nullptr, "",      8, 0, ""},
    Row{"NullSource",  nullptr, nullptr, 8, 0, ""}), nameOf);
/* clang-format on */

class Strlcat : public ::testing::TestWithParam<Row> {};

TEST_P(Strlcat, AppendsWhatFits)
{
    expectRow(BMC_Strlcat, GetParam());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Strlcat, ::testing::Values(
    Row{"Fits",           "eth",   "0",    8, 4, "eth0"},
    Row{"FitsExactly",    "eth",   "0",    5, 4, "eth0"},
    Row{"IsCut",          "eth",   "0.42", 6, 7, "eth0."},
    Row{"AlreadyFull",    "eth0",  "1",    5, 5, "eth0"},
    Row{"SizeZero",       "eth0",  "1",    0, 1, "eth0"},
    Row{"NoTerminator",   nullptr, "abc",  8, 11, nullptr},
    Row{"TerminatorBeyondSize", "eth0", "1", 3, 4, "eth0"},
    Row{"NullSource",     "eth0",  nullptr, 8, 4, "eth0"}), nameOf);
/* clang-format on */

TEST(BoundedText, NullDestinationIsLeftAlone)
{
    EXPECT_EQ(3U, BMC_Strlcpy(nullptr, "abc", 8));
    EXPECT_EQ(3U, BMC_Strlcat(nullptr, "abc", 8));
    EXPECT_EQ(0, BMC_Scnprintf(nullptr, 8, "abc"));
}

TEST(Scnprintf, AnswersTheCountReallyWritten)
{
    auto buffer = poisoned(nullptr);
    EXPECT_EQ(6, BMC_Scnprintf(buffer.data(), buffer.size(), "%s:%d", "vlan", 5));
    EXPECT_EQ(poisoned("vlan:5"), buffer);

    buffer = poisoned(nullptr);
    EXPECT_EQ(4, BMC_Scnprintf(buffer.data(), 5, "%s", "network"));
    EXPECT_EQ(poisoned("netw"), buffer);

    buffer = poisoned(nullptr);
    EXPECT_EQ(0, BMC_Scnprintf(buffer.data(), 1, "%s", "network"));
    EXPECT_EQ(poisoned(""), buffer);
}

TEST(Scnprintf, SizeZeroWritesNothing)
{
    auto buffer = poisoned(nullptr);
    EXPECT_EQ(0, BMC_Scnprintf(buffer.data(), 0, "%s", "network"));
    EXPECT_EQ(poisoned(nullptr), buffer);
}

TEST(Scnprintf, TextThatCannotBeFormattedIsEmpty)
{
    /* A wide character that the C locale has no bytes for. */
    const wchar_t wide[] = {static_cast<wchar_t>(0x4E00), 0};
    auto buffer = poisoned(nullptr);
    EXPECT_EQ(0, BMC_Scnprintf(buffer.data(), buffer.size(), "ab%ls", wide));
    EXPECT_EQ('\0', buffer[0]);

    const char *volatile none = nullptr;
    EXPECT_EQ(0, BMC_Scnprintf(buffer.data(), buffer.size(), none, ""));
}

} // namespace
