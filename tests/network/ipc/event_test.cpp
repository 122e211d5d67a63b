// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The event table bit by bit. Tables and queues are exactly as large as they must be. */
#include <memory>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t queueSize = 255;
constexpr std::uint32_t bankSize = 765;
constexpr std::uint32_t tableSize = 1530;
constexpr std::uint32_t eventCount = 2040;

std::uint8_t bitOf(std::uint32_t event)
{
    return static_cast<std::uint8_t>(1U << (event % 8));
}

NW_NETWORK_EVENT_S *tableOf(Bytes &bytes)
{
    return reinterpret_cast<NW_NETWORK_EVENT_S *>(bytes.data());
}

class Events : public fake::FakePlatformTest {
protected:
    void expectRefusals(std::size_t count) const
    {
        EXPECT_EQ(lines().size(), count);
        EXPECT_THAT(lines(), Each(fake::isErrorLine("Event index is out of range.")));
    }
};

class QueueEvents : public Events, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(QueueEvents, EachSetsItsOneBit)
{
    for (std::uint32_t event = 0; event < eventCount; ++event) {
        Bytes bytes(tableSize);
        Bytes expected(tableSize);
        expected[GetParam() * queueSize + event / 8] = bitOf(event);

        NW_AddNetworkEvent(GetParam(), event, tableOf(bytes));

        ASSERT_EQ(bytes, expected) << event;
    }
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_P(QueueEvents, AddingKeepsTheOthers)
{
    Bytes bytes(tableSize);
    Bytes expected(tableSize);
    for (std::uint32_t event = eventCount; event-- > 0;) {
        NW_AddNetworkEvent(GetParam(), event, tableOf(bytes));
        NW_AddNetworkEvent(GetParam(), event, tableOf(bytes));

        expected[GetParam() * queueSize + event / 8] |= bitOf(event);
        ASSERT_EQ(bytes, expected) << event;
    }
}

TEST_P(QueueEvents, EachIsFoundByItsBitAlone)
{
    for (std::uint32_t event = 0; event < eventCount; ++event) {
        const std::uint32_t byte = GetParam() * queueSize + event / 8;
        Bytes only(tableSize);
        only[byte] = bitOf(event);
        Bytes allBut(tableSize, 0xFF);
        allBut[byte] = static_cast<std::uint8_t>(~bitOf(event));

        ASSERT_EQ(NW_FindNetworkEvent(GetParam(), event, tableOf(only)), 1U) << event;
        ASSERT_EQ(NW_FindNetworkEvent(GetParam(), event, tableOf(allBut)), 0U) << event;
        ASSERT_EQ(only[byte], bitOf(event)) << event;
    }
    EXPECT_THAT(platform.calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Working, QueueEvents, testing::Values(0U, 1U, 2U));

/* The queue is not checked: within the table lies the saved bank. */
class SavedQueue : public Events, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(SavedQueue, IsFoundButNotAddedTo)
{
    for (std::uint32_t event = 0; event < eventCount; ++event) {
        Bytes bytes(tableSize);
        NW_AddNetworkEvent(GetParam(), event, tableOf(bytes));
        ASSERT_EQ(bytes, Bytes(tableSize)) << event;
        ASSERT_EQ(NW_FindNetworkEvent(GetParam(), event, tableOf(bytes)), 0U) << event;

        bytes[GetParam() * queueSize + event / 8] = bitOf(event);
        ASSERT_EQ(NW_FindNetworkEvent(GetParam(), event, tableOf(bytes)), 1U) << event;
    }
    expectRefusals(eventCount);
}

INSTANTIATE_TEST_SUITE_P(Saved, SavedQueue, testing::Values(3U, 4U, 5U));

/* Beyond the table; 255 times some of these fits into it again in 32 bits. */
class QueueBeyond : public Events, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(QueueBeyond, HoldsNothing)
{
    for (const std::uint32_t event : {0U, 7U, 8U, 2039U}) {
        Bytes bytes(tableSize, 0xFF);
        EXPECT_EQ(NW_FindNetworkEvent(GetParam(), event, tableOf(bytes)), 0U) << event;
    }
    EXPECT_THAT(platform.calls(), IsEmpty());

    Bytes bytes(tableSize);
    NW_AddNetworkEvent(GetParam(), 0, tableOf(bytes));
    EXPECT_EQ(bytes, Bytes(tableSize));
    expectRefusals(1);
}

INSTANTIATE_TEST_SUITE_P(Queues, QueueBeyond,
                         testing::Values(6U, 7U, 8U, 0x01010101U, 0x01010102U, 0x7FFFFFFFU,
                                         0x80000000U, 0xFEFEFEFFU, 0xFFFFFFFFU));

class EventBeyond : public Events, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(EventBeyond, IsRefusedByEveryFunction)
{
    const std::uint32_t event = GetParam();
    for (const std::uint32_t queue : {0U, 2U, 3U, 6U}) {
        platform.clearCalls();
        Bytes empty(tableSize);
        Bytes full(tableSize, 0xFF);

        NW_AddNetworkEvent(queue, event, tableOf(empty));
        EXPECT_EQ(NW_FindNetworkEvent(queue, event, tableOf(full)), 0U);

        EXPECT_EQ(empty, Bytes(tableSize));
        expectRefusals(2);
    }
}

TEST_P(EventBeyond, IsRefusedInASingleQueue)
{
    Bytes empty(queueSize);
    Bytes full(queueSize, 0xFF);

    NW_AddNetworkEventByQ(empty.data(), GetParam());
    EXPECT_EQ(NW_FindNetworkEventByQ(full.data(), GetParam()), 0U);

    EXPECT_EQ(empty, Bytes(queueSize));
    expectRefusals(2);
}

INSTANTIATE_TEST_SUITE_P(Events, EventBeyond,
                         testing::Values(2040U, 2041U, 4080U, 0x10000U, 0x80000000U, 0xFFFFFFFFU));

TEST_F(Events, OfASingleQueueEachHaveTheirBit)
{
    Bytes all(queueSize);
    for (std::uint32_t event = 0; event < eventCount; ++event) {
        Bytes queue(queueSize);
        Bytes expected(queueSize);
        expected[event / 8] = bitOf(event);
        Bytes allBut(queueSize, 0xFF);
        allBut[event / 8] = static_cast<std::uint8_t>(~bitOf(event));

        ASSERT_EQ(NW_FindNetworkEventByQ(all.data(), event), 0U) << event;
        NW_AddNetworkEventByQ(queue.data(), event);
        NW_AddNetworkEventByQ(all.data(), event);

        ASSERT_EQ(queue, expected) << event;
        ASSERT_EQ(NW_FindNetworkEventByQ(queue.data(), event), 1U) << event;
        ASSERT_EQ(NW_FindNetworkEventByQ(allBut.data(), event), 0U) << event;
    }
    EXPECT_EQ(all, Bytes(queueSize, 0xFF));
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_F(Events, OfATableKeptByTheCallerLeaveTheProcessTableAlone)
{
    Bytes own(tableSize, 0x0F);

    NW_AddNetworkEvent(1, 4, tableOf(own));
    NW_BackUpNetworkEvent(1, tableOf(own));

    EXPECT_EQ(fake::bytesOf(g_stNetworkEvent), Bytes(tableSize));
}

Bytes banks(std::uint8_t working, std::uint8_t saved)
{
    Bytes bytes(tableSize, saved);
    std::fill_n(bytes.begin(), bankSize, working);
    return bytes;
}

class BackUp : public Events, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(BackUp, CopiesTheWorkingBankOverTheSavedOne)
{
    Bytes bytes = banks(0x3C, 0x81);

    NW_BackUpNetworkEvent(GetParam(), tableOf(bytes));

    EXPECT_EQ(bytes, banks(0x3C, 0x3C));
    EXPECT_THAT(platform.calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Nonzero, BackUp, testing::Values(1U, 2U, 0x100U, 0x80000000U, ~0U));

TEST_F(Events, RestoreCopiesTheSavedBankBack)
{
    Bytes bytes = banks(0x3C, 0x81);

    NW_BackUpNetworkEvent(0, tableOf(bytes));

    EXPECT_EQ(bytes, banks(0x81, 0x81));
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_F(Events, RestoreTakesBackWhatWasAddedSinceTheBackUp)
{
    Bytes bytes(tableSize);
    NW_AddNetworkEvent(0, 0, tableOf(bytes));
    NW_AddNetworkEvent(2, 2039, tableOf(bytes));
    NW_BackUpNetworkEvent(1, tableOf(bytes));
    const Bytes backedUp = bytes;
    NW_AddNetworkEvent(1, 1000, tableOf(bytes));
    EXPECT_EQ(NW_FindNetworkEvent(1, 1000, tableOf(bytes)), 1U);

    NW_BackUpNetworkEvent(0, tableOf(bytes));

    EXPECT_EQ(bytes, backedUp);
    EXPECT_EQ(NW_FindNetworkEvent(1, 1000, tableOf(bytes)), 0U);
    EXPECT_EQ(NW_FindNetworkEvent(2, 2039, tableOf(bytes)), 1U);
    EXPECT_EQ(NW_FindNetworkEvent(5, 2039, tableOf(bytes)), 1U);
}

} // namespace
