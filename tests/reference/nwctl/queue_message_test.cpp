// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/queue_message.hpp"

#include "nwctl/failure.hpp"
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::ElementsAre;

MessageBytes pack(const std::vector<std::string> &texts)
{
    return packTlv("--tlv", texts);
}

MessageBytes wholeText(MessageBytes bytes)
{
    bytes.resize(NW_MSG_TEXT_SIZE);
    return bytes;
}

std::string record(unsigned type, std::size_t size)
{
    return std::to_string(type) + ":" + std::string(2 * size, 'a');
}

TEST(PackTlv, PutsRecordsOneBehindTheOther)
{
    EXPECT_THAT(pack({"1:0a0B", "255:", "0:ff"}), ElementsAre(1, 2, 10, 11, 255, 0, 0, 1, 0xFF));
}

TEST(PackTlv, FillsTheAreaToItsEnd)
{
    EXPECT_EQ(pack({record(1, 244)}).size(), 246U);
    EXPECT_EQ(pack({record(1, 242), record(2, 0)}).size(), 246U);
}

class BadRecord : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(BadRecord, IsNamed)
{
    try {
        pack(GetParam());
        ADD_FAILURE() << "accepted";
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.status, Exit::usage);
        EXPECT_EQ(failure.optionName, "--tlv");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadRecord,
    ::testing::Values(std::vector<std::string>{"1"}, std::vector<std::string>{""},
                      std::vector<std::string>{":00"}, std::vector<std::string>{"256:00"},
                      std::vector<std::string>{"-1:00"}, std::vector<std::string>{"1:0"},
                      std::vector<std::string>{"1:zz"}, std::vector<std::string>{"1:00:00"},
                      std::vector<std::string>{record(1, 245)},
                      std::vector<std::string>{record(1, 256)},
                      std::vector<std::string>{record(1, 300)},
                      std::vector<std::string>{record(1, 243), "2:"}));

TEST(UnpackTlv, FindsWhatWasPacked)
{
    const auto records = unpackTlv(wholeText(pack({"1:0a00", "2:", "3:07"})));

    ASSERT_TRUE(records);
    ASSERT_EQ(records->size(), 3U);
    EXPECT_EQ((*records)[0].type, 1);
    EXPECT_THAT((*records)[0].value, ElementsAre(10, 0));
    EXPECT_EQ((*records)[1].type, 2);
    EXPECT_TRUE((*records)[1].value.empty());
    EXPECT_EQ((*records)[2].type, 3);
    EXPECT_THAT((*records)[2].value, ElementsAre(7));
}

TEST(UnpackTlv, FindsNothingInZeros)
{
    const auto records = unpackTlv(wholeText({}));

    ASSERT_TRUE(records);
    EXPECT_TRUE(records->empty());
}

TEST(UnpackTlv, RefusesARecordThatPassesTheEnd)
{
    EXPECT_TRUE(unpackTlv(wholeText({1, 253})));
    EXPECT_FALSE(unpackTlv(wholeText({1, 254})));

    MessageBytes lone(NW_MSG_TEXT_SIZE);
    lone[1] = 252; /* a record that leaves one byte */
    lone[254] = 5;
    EXPECT_FALSE(unpackTlv(lone));
}

} // namespace
} // namespace nwctl
