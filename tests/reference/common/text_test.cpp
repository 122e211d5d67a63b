// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/text.hpp"

#include <gtest/gtest.h>

namespace {

TEST(BoundedText, EndsAtTheTerminatorOrWithTheField)
{
    const char terminated[8] = "eth0";
    const char whole[4] = {'e', 't', 'h', '0'};
    EXPECT_EQ("eth0", bmc::boundedText(terminated));
    EXPECT_EQ("eth0", bmc::boundedText(whole));
}

TEST(EscapedText, HasPrintableAsciiAloneAndIsUnambiguous)
{
    EXPECT_EQ("2001:db8::1/64 ~!", bmc::escaped("2001:db8::1/64 ~!"));
    EXPECT_EQ(R"(a\x0ab\x1b[31m\x7f)", bmc::escaped("a\nb\x1b[31m\x7f"));
    EXPECT_EQ(R"(\xc3\xbc)", bmc::escaped("\xc3\xbc"));
    EXPECT_EQ(R"(\x00)", bmc::escaped(std::string_view("\0", 1)));
    EXPECT_EQ(R"(\\x41)", bmc::escaped(R"(\x41)"));
}

} // namespace
