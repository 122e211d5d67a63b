// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Two processes exchange packages: records through full queues, waiting on both sides, queues that
 * are created again under those who wait. Runs in an IPC namespace of its own. */
#include <thread>

#include "network_mng.h"
#include "package.hpp"
#include "real_queue.hpp"

namespace {

using fake::Bytes;
using ipc::Child;
using ipc::outcome;
using package::Package;
using testing::Each;
using testing::IsEmpty;

using std::chrono::milliseconds;
constexpr milliseconds moment{100};

constexpr std::size_t areaSize = 246;
constexpr std::uint32_t packageCount = 500;
/* Types of the records in a package. */
constexpr std::uint8_t number = 1, filler = 2, rest = 3;

/* Text of a package: its number, a filler as long as the number says, the rest of the area. */
Bytes textOf(std::uint32_t index)
{
    Bytes area(areaSize);
    std::uint32_t total = 0;
    const Bytes value(areaSize, static_cast<std::uint8_t>(index));
    NW_FillTlv(sizeof(index), number, &index, &total, area.data());
    NW_FillTlv(static_cast<std::uint8_t>(index % 200), filler, value.data(), &total, area.data());
    NW_FillTlv(static_cast<std::uint8_t>(areaSize - total - 2), rest, value.data(), &total,
               area.data());
    return area;
}

struct Record {
    std::uint8_t type;
    Bytes value;

    bool operator==(const Record &) const = default;
};

std::vector<Record> recordsOf(const Bytes &text)
{
    std::vector<Record> records;
    for (std::size_t at = 0; at + 2 <= text.size(); at += 2U + text[at + 1]) {
        const auto value = text.begin() + static_cast<long>(at) + 2;
        records.push_back({text[at], Bytes(value, value + text[at + 1])});
    }
    return records;
}

std::vector<Record> expectedRecords(std::uint32_t index)
{
    const auto byte = static_cast<std::uint8_t>(index);
    const std::size_t length = index % 200;
    return {{number, fake::bytesOf(index)},
            {filler, Bytes(length, byte)},
            {rest, Bytes(areaSize - 6 - 2 - length - 2, byte)}};
}

long typeOf(std::uint32_t index)
{
    return static_cast<long>(index) + 1;
}

class MessageExchange : public ipc::RealQueueTest {
protected:
    MessageExchange()
    {
        EXPECT_EQ(NM_CreateMsg(queue.path(), project), 0U);
        fullCount = queue.room() / areaSize;
    }

    std::uint32_t send(std::uint32_t index)
    {
        Package package(typeOf(index), textOf(index));
        return NW_SendMsg(queue.path(), project, areaSize, package.get());
    }

    /* Sends packages 0, 1, ... until one fails. */
    std::string sendUntilFailure()
    {
        std::uint32_t result = 0;
        for (std::uint32_t index = 0; result == 0; ++index) {
            platform.clearCalls();
            result = send(index);
        }
        return outcome(result, lines());
    }

    std::string receiveOne()
    {
        Package package(255);
        const std::uint32_t result = NW_ReceiveMsg(queue.path(), project, 255, package.get());
        return outcome(result, lines());
    }

    void expectPackage(std::uint32_t index)
    {
        Package package(areaSize);
        ASSERT_EQ(NW_ReceiveMsg(queue.path(), project, areaSize, package.get()), 0U);
        ASSERT_EQ(package.type(), typeOf(index));
        ASSERT_EQ(recordsOf(package.text()), expectedRecords(index));
    }

    std::size_t fullCount = 0;
};

TEST_F(MessageExchange, PassesEveryRecordThroughAFullQueue)
{
    Child sender([&] {
        std::uint32_t failures = 0;
        for (std::uint32_t index = 0; index < packageCount; ++index) {
            failures += send(index) == 0 ? 0U : 1U;
        }
        const bool traced = testing::Matches(
            Each(fake::isLine(fake::networkUnit, fake::info, "msgsnd success\n")))(lines());
        return fake::formatted("%u failures, %zu lines, traced: %d", failures, lines().size(),
                               traced ? 1 : 0);
    });

    ASSERT_GT(packageCount, 2 * fullCount);
    ASSERT_TRUE(ipc::reaches(queue, fullCount));
    EXPECT_FALSE(sender.endsWithin(moment)) << "a full queue must block";
    EXPECT_EQ(queue.count(), fullCount);
    for (std::uint32_t index = 0; index < packageCount; ++index) {
        expectPackage(index);
        ASSERT_FALSE(HasFatalFailure()) << index;
    }

    EXPECT_EQ(sender.report(), "0 failures, 500 lines, traced: 1");
    EXPECT_EQ(queue.count(), 0U);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(MessageExchange, OnePackageTakenLetsOnePackageIn)
{
    Child sender([&] { return sendUntilFailure(); });

    for (std::uint32_t index = 0; index < 3; ++index) {
        ASSERT_TRUE(ipc::reaches(queue, fullCount));
        EXPECT_FALSE(sender.endsWithin(moment));
        expectPackage(index);
    }
    EXPECT_TRUE(ipc::reaches(queue, fullCount));
}

TEST_F(MessageExchange, ReceiverWaitsForAPackage)
{
    Child receiver([&] { return receiveOne(); });

    EXPECT_FALSE(receiver.endsWithin(moment)) << "an empty queue must block";
    EXPECT_EQ(send(5), 0U);

    EXPECT_EQ(receiver.report(), "0:");
    EXPECT_EQ(queue.count(), 0U);
}

/* The child may be between two calls when the queue is created again: then it goes on with the new
 * queue and the next time finds it waiting. */
bool endsUnderNewQueues(Child &child, const ipc::RealQueue &queue, std::size_t waitingAt)
{
    for (int attempt = 0; attempt < 50; ++attempt) {
        if (!ipc::reaches(queue, waitingAt) || child.endsWithin(moment)) {
            return false;
        }
        EXPECT_EQ(NM_CreateMsg(queue.path(), queue.project()), 0U);
        if (child.endsWithin(moment)) {
            return true;
        }
    }
    return false;
}

TEST_F(MessageExchange, ANewQueueEndsTheReceiversWait)
{
    Child receiver([&] { return receiveOne(); });

    EXPECT_TRUE(endsUnderNewQueues(receiver, queue, 0));

    EXPECT_EQ(receiver.report(), "81000001: (10, 0, 4) Msgrcv failed, iRet:-1\n");
    EXPECT_TRUE(queue.exists());
    EXPECT_EQ(queue.count(), 0U);
}

TEST_F(MessageExchange, ANewQueueEndsTheSendersWait)
{
    Child sender([&] { return sendUntilFailure(); });

    EXPECT_TRUE(endsUnderNewQueues(sender, queue, fullCount));

    EXPECT_EQ(sender.report(), "81000001: (10, 0, 4) ERROR: msgsnd failed iRet:-1\n");
    EXPECT_EQ(queue.count(), 0U);
}

TEST_F(MessageExchange, ANewQueueServesTheNextReceiver)
{
    send(1);
    EXPECT_EQ(NM_CreateMsg(queue.path(), project), 0U);
    platform.clearCalls();
    Child receiver([&] { return receiveOne(); });

    EXPECT_FALSE(receiver.endsWithin(moment)) << "the earlier queue's package is gone";
    EXPECT_EQ(send(2), 0U);

    EXPECT_EQ(receiver.report(), "0:");
}

} // namespace
