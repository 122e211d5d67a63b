// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The channel id offset comes from the capability store, unchanged. */
#include <climits>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ChannelIdOffset : public fake::FakePlatformTest {};

TEST_F(ChannelIdOffset, IsTheCapabilitysValue)
{
    for (const std::uint16_t value : {std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{0xFFFF}}) {
        platform.clearCalls();
        platform.setCapability("SharePort", "ChannelIdOffset", value);
        std::uint16_t offset = 0x7777;

        EXPECT_EQ(LIB_NW_GetNcsiChannelIdOffset(&offset), 0U);

        EXPECT_EQ(offset, value);
        EXPECT_THAT(platform.callNames(), ElementsAre("CAP_GetShortCapabilityWithName"));
        EXPECT_THAT(lines(), IsEmpty());
    }
}

TEST_F(ChannelIdOffset, FailureIsTheStoresOwnCodeWithoutALine)
{
    for (const int code : {1, -3, INT_MIN}) {
        platform.failCapability("SharePort", "ChannelIdOffset", code);
        std::uint16_t offset = 0x7777;

        EXPECT_EQ(LIB_NW_GetNcsiChannelIdOffset(&offset), static_cast<std::uint32_t>(code));

        EXPECT_EQ(offset, 0x7777);
        EXPECT_THAT(lines(), IsEmpty());
    }
}

TEST_F(ChannelIdOffset, NullAnswersWhateverTheLogAnswered)
{
    for (const int answer : {0, 77, -1}) {
        platform.clearCalls();
        platform.setLogResult(answer);

        EXPECT_EQ(LIB_NW_GetNcsiChannelIdOffset(nullptr), static_cast<std::uint32_t>(answer));

        EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pusChannelIdOffset",
                                                          "LIB_NW_GetNcsiChannelIdOffset")));
    }
}

} // namespace
