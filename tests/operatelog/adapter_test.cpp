// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The formatters that ask the capability store: channel, adapter name, adapter priority list. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

std::string format(NW_OPERATE_LOG_FORMAT_FN formatter, const Bytes &value, std::uint32_t size = 300)
{
    std::vector<char> output(size, '\0');
    formatter(value.data(), size, output.data());
    return std::string(output.data(), strnlen(output.data(), size));
}

class AdapterTest : public OperateLogTest {
protected:
    void setOffset(std::uint16_t offset)
    {
        platform.setCapability("SharePort", "ChannelIdOffset", offset);
    }
    void setCount(std::uint16_t count)
    {
        platform.setCapability("SharePort", "CardSupportNumber", count);
    }
    void setName(const std::string &item, const std::string &name)
    {
        platform.setCapability("SharePort", item, name);
    }
};

TEST_F(AdapterTest, ChannelAddsTheOffset)
{
    setOffset(1);
    EXPECT_EQ(format(NW_OperateLogParChannel, {1}), "2");
    setOffset(0);
    EXPECT_EQ(format(NW_OperateLogParChannel, {0}), "0");
    setOffset(65535);
    EXPECT_EQ(format(NW_OperateLogParChannel, {255}), "65790");
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(AdapterTest, ChannelWithoutAnOffsetIsPrintedAsItIs)
{
    platform.failCapability("SharePort", "ChannelIdOffset", -3);

    EXPECT_EQ(format(NW_OperateLogParChannel, {9}), "9");

    EXPECT_THAT(platform.callNames(), ElementsAre("CAP_GetShortCapabilityWithName"));
}

TEST_F(AdapterTest, ChannelIsCutAtEverySize)
{
    setOffset(65535);
    for (std::uint32_t size = 1; size <= 7; ++size) {
        EXPECT_EQ(format(NW_OperateLogParChannel, {255}, size),
                  std::string("65790").substr(0, size - 1));
    }
}

TEST_F(AdapterTest, NameIsTheCapabilityOfTheIndex)
{
    const char *items[] = {"NIC1Name", "NIC2Name", "NIC3Name"};
    const char *names[] = {"NIC one", "NIC two", "NIC three"};
    for (std::uint8_t index = 0; index < 3; ++index) {
        platform.clearCalls();

        EXPECT_EQ(format(NW_OperateLogParNicPri, {index}), names[index]);

        ASSERT_THAT(platform.callNames(), ElementsAre("CAP_GetCommonCapabilityWithName"));
        EXPECT_EQ(platform.calls().front().text, "SharePort");
        EXPECT_EQ(platform.calls().front().item, items[index]);
        EXPECT_LE(platform.calls().front().size, 20U);
    }
}

TEST_F(AdapterTest, NameOfAnotherIndexIsEmpty)
{
    for (const int index : {3, 4, 128, 255}) {
        EXPECT_EQ(format(NW_OperateLogParNicPri, {static_cast<std::uint8_t>(index)}), "");
    }
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_F(AdapterTest, NameThatCannotBeReadIsEmptyAndNotReported)
{
    platform.failCapability("SharePort", "NIC1Name", -3);

    EXPECT_EQ(format(NW_OperateLogParNicPri, {0}), "");

    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(AdapterTest, NameReplacesTheOutputAndIsCutAtEverySize)
{
    const std::string name = "NIC one";
    for (std::uint32_t size = 1; size <= 9; ++size) {
        std::vector<char> output(size, 'x');
        const std::uint8_t index = 0;
        NW_OperateLogParNicPri(&index, size, output.data());
        EXPECT_STREQ(output.data(), name.substr(0, size - 1).c_str());
    }
}

/* The store cuts a long name without a terminator. */
TEST_F(AdapterTest, NameOfTwentyCharactersOrMoreIsPrintedWithinItsBuffer)
{
    for (const std::size_t length : {19U, 20U, 21U, 60U}) {
        setName("NIC1Name", std::string(length, 'n'));

        const std::string printed = format(NW_OperateLogParNicPri, {0});

        EXPECT_GE(printed.size(), 19U);
        EXPECT_LE(printed.size(), std::min<std::size_t>(length, 20));
        EXPECT_THAT(printed, Each('n'));
    }
}

constexpr const char *firstOne = ", first priority network adapter: NIC one";
constexpr const char *secondThree = ", second priority network adapter: NIC three";
constexpr const char *thirdTwo = ", third priority network adapter: NIC two";
constexpr const char *fourthNone = ", fourth priority network adapter: ";

TEST_F(AdapterTest, PriorityListNamesAsManyAdaptersAsTheBoardSupports)
{
    const std::string items[] = {firstOne, secondThree, thirdTwo, fourthNone};
    std::string expected;
    for (std::uint16_t count = 0; count <= 4; ++count) {
        setCount(count);

        EXPECT_EQ(format(NW_OperateLogParCardPri, {0, 2, 1, 9}), expected) << count;

        if (count < 4) {
            expected += items[count];
        }
    }
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(AdapterTest, PriorityListReadsNoRuleBeyondTheCount)
{
    setCount(2);
    EXPECT_EQ(format(NW_OperateLogParCardPri, {0, 2}), std::string(firstOne) + secondThree);
}

TEST_F(AdapterTest, PriorityListAsksForTheCountThenForEachName)
{
    setCount(2);

    format(NW_OperateLogParCardPri, {0, 2});

    ASSERT_THAT(platform.callNames(),
                ElementsAre("CAP_GetShortCapabilityWithName", "CAP_GetCommonCapabilityWithName",
                            "CAP_GetCommonCapabilityWithName"));
    EXPECT_EQ(platform.calls()[0].text, "SharePort");
    EXPECT_EQ(platform.calls()[0].item, "CardSupportNumber");
    EXPECT_EQ(platform.calls()[1].item, "NIC1Name");
    EXPECT_EQ(platform.calls()[2].item, "NIC3Name");
}

TEST_F(AdapterTest, PriorityListWithoutACountIsLoggedAndWritesNothing)
{
    for (const int code : {-3, 17}) {
        platform.clearCalls();
        platform.failCapability("SharePort", "CardSupportNumber", code);
        const Bytes rules{0, 1, 2, 0};
        Bytes output(300, 'x');

        NW_OperateLogParCardPri(rules.data(), 300, reinterpret_cast<char *>(output.data()));

        EXPECT_THAT(output, Each('x'));
        EXPECT_THAT(lines(),
                    ElementsAre(errorLine(
                        "Get ncsi card support number from cap failed! iRet = %d.", code)));
    }
}

TEST_F(AdapterTest, PriorityListKeepsItsItemsWithoutNames)
{
    setCount(2);
    platform.failCapability("SharePort", "NIC1Name", -3);

    EXPECT_EQ(format(NW_OperateLogParCardPri, {0, 0}),
              ", first priority network adapter: , second priority network adapter: ");
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(AdapterTest, PriorityListIsCutAtEverySize)
{
    setCount(4);
    const std::string whole = std::string(firstOne) + secondThree + thirdTwo + fourthNone;
    for (std::uint32_t size = 1; size <= whole.size() + 1; ++size) {
        EXPECT_EQ(format(NW_OperateLogParCardPri, {0, 2, 1, 9}, size), whole.substr(0, size - 1));
    }
}

/* Four positions have an ordinal and a rule; a store that reports more is no reason to leave
 * either table. */
TEST_F(AdapterTest, PriorityListSurvivesACountAboveFour)
{
    const std::string four = std::string(firstOne) + secondThree + thirdTwo + fourthNone;
    for (const int count : {5, 6, 100, 65535}) {
        setCount(static_cast<std::uint16_t>(count));
        EXPECT_THAT(format(NW_OperateLogParCardPri, {0, 2, 1, 9}), StartsWith(four)) << count;
    }
}

} // namespace
} // namespace operatelog
