// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "text.hpp"

#include <gtest/gtest.h>

#include <cstring>

namespace nwctl {
namespace {

TEST(BoundedText, EndsAtTheTerminator)
{
    const char field[8] = "eth0";
    EXPECT_EQ(boundedText(field), "eth0");
}

TEST(BoundedText, EndsWithTheFieldWhenThereIsNoTerminator)
{
    struct {
        char field[4];
        char behind[4];
    } record;
    std::memset(&record, 'x', sizeof(record));

    EXPECT_EQ(boundedText(record.field), "xxxx");
}

TEST(Escaped, LeavesPrintableAsciiAlone)
{
    EXPECT_EQ(escaped("2001:db8::1/64 ~!"), "2001:db8::1/64 ~!");
}

TEST(Escaped, WritesEverythingElseInHex)
{
    EXPECT_EQ(escaped("a\nb\x1b[31m\x7f"), R"(a\x0ab\x1b[31m\x7f)");
    EXPECT_EQ(escaped("\xc3\xbc"), R"(\xc3\xbc)");
    EXPECT_EQ(escaped(std::string_view("\0", 1)), R"(\x00)");
}

TEST(Escaped, DoublesBackslashes)
{
    EXPECT_EQ(escaped(R"(\x41)"), R"(\\x41)");
}

} // namespace
} // namespace nwctl
