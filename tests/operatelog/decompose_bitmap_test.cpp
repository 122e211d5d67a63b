// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Narrowing the LAN change bitmap, from which the operation log's LAN texts are split. */
#include <cstring>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using testing::IsEmpty;

constexpr std::uint32_t words[6] = {0xFFFFFFFF, 0x0000FFFF, 0x12345678,
                                    0x9ABCDEF0, 0x00FC0000, 0x0000003F};

class DecomposeBitmap : public fake::FakePlatformTest,
                        public testing::WithParamInterface<std::size_t> {
protected:
    /* The bitmap, alone in its block but for the bytes that misalign it. */
    Bytes narrowed(std::uint32_t mask, std::uint32_t word) const
    {
        Bytes block(GetParam() + sizeof(words), 0xA5);
        std::memcpy(block.data() + GetParam(), words, sizeof(words));
        NW_DecomposeBitmap(reinterpret_cast<NW_LAN_BITMAP_S *>(block.data() + GetParam()), mask,
                           word);
        return Bytes(block.begin() + static_cast<long>(GetParam()), block.end());
    }

    static Bytes expected(std::uint32_t mask, std::uint32_t word)
    {
        std::uint32_t narrowed[6];
        for (std::uint32_t index = 0; index < 6; ++index) {
            narrowed[index] = index % 2 == word ? words[index] & mask : words[index];
        }
        return fake::bytesOf(narrowed);
    }
};

TEST_P(DecomposeBitmap, MasksTheWordOfAllThreePorts)
{
    for (const std::uint32_t mask :
         {0U, 0xFFFFFFFFU, 0x00FC0000U, 0xFF03FFFFU, 0x3FU, 0x80000001U}) {
        for (const std::uint32_t word : {0U, 1U}) {
            EXPECT_EQ(narrowed(mask, word), expected(mask, word));
        }
    }
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_P(DecomposeBitmap, LeavesTheBitmapForAnyOtherWord)
{
    for (const std::uint32_t word : {2U, 3U, 5U, 6U, 0x40000000U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(narrowed(0, word), fake::bytesOf(words)) << word;
    }
}

INSTANTIATE_TEST_SUITE_P(Misalignment, DecomposeBitmap, testing::Values(0U, 1U, 2U, 3U));

using DecomposeNull = fake::FakePlatformTest;

TEST_F(DecomposeNull, IsLoggedAlone)
{
    NW_DecomposeBitmap(nullptr, 0, 0);

    EXPECT_THAT(lines(), testing::ElementsAre(fake::isNullLine("pstBitmap", "NW_DecomposeBitmap")));
    EXPECT_EQ(platform.calls().size(), 1U);
}

} // namespace
