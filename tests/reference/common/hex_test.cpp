// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/hex.hpp"

#include <gtest/gtest.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(Hex, IsTwoDigitsForEachByte)
{
    EXPECT_EQ("", bmc::hexText({}));
    EXPECT_EQ("000fa5ff", bmc::hexText(Bytes{0, 15, 0xA5, 255}));
}

TEST(Hex, ComesBackInEitherCase)
{
    EXPECT_EQ((Bytes{0, 15, 0xA5, 255}), bmc::parseHex("000fA5fF"));
    EXPECT_EQ(Bytes{}, bmc::parseHex(""));
    for (const char *text : {"0", "0g", "g0", "000", " 00", "0x00"}) {
        EXPECT_EQ(std::nullopt, bmc::parseHex(text)) << text;
    }
}

TEST(Hex, TailOfZerosIsLeftOut)
{
    const Bytes bytes{0, 1, 0, 2, 0, 0};
    EXPECT_EQ(4U, bmc::withoutZeroTail(bytes).size());
    EXPECT_TRUE(bmc::withoutZeroTail(Bytes{0, 0}).empty());
}

} // namespace
