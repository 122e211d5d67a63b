// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Messages on the kernel's queues: what is created, sent and received, and what stays as it was.
 * Runs in an IPC namespace of its own. */
#include <climits>
#include <csignal>
#include <fstream>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include "network_mng.h"
#include "package.hpp"
#include "real_queue.hpp"

namespace {

using fake::Bytes;
using ipc::Child;
using ipc::Message;
using ipc::outcome;
using ipc::RealQueue;
using package::Package;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t failed = 0x81000001;
const char *const noKeyText = "Creat key error\n";

class MessageQueue : public ipc::RealQueueTest {
protected:
    std::uint32_t create()
    {
        return NM_CreateMsg(queue.path(), project);
    }
    std::uint32_t send(const Message &message)
    {
        return NW_SendMsg(queue.path(), project, static_cast<std::uint32_t>(message.text.size()),
                          Package(message.type, message.text).get());
    }
    std::uint32_t receive(Package &package)
    {
        return NW_ReceiveMsg(queue.path(), project,
                             static_cast<std::uint32_t>(package.text().size()), package.get());
    }
    void expectFailure(const char *format, int number)
    {
        EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine(format, number)));
        platform.clearCalls();
    }
};

class Umask : public MessageQueue, public testing::WithParamInterface<mode_t> {};

TEST_P(Umask, DoesNotNarrowTheQueue)
{
    const mode_t before = umask(GetParam());
    EXPECT_EQ(create(), 0U);
    umask(before);

    EXPECT_TRUE(queue.exists());
    EXPECT_EQ(queue.mode(), 0666U);
    EXPECT_EQ(queue.count(), 0U);
    EXPECT_THAT(platform.calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Masks, Umask, testing::Values(0U, 022U, 077U, 0777U));

TEST_F(MessageQueue, IsCreatedAgainWithoutItsMessages)
{
    queue.create(0600);
    queue.put({3, {1, 2, 3}});
    const int earlier = queue.id();

    EXPECT_EQ(create(), 0U);

    EXPECT_NE(queue.id(), earlier);
    EXPECT_EQ(queue.count(), 0U);
    EXPECT_EQ(queue.mode(), 0666U);
    EXPECT_EQ(msgctl(earlier, IPC_RMID, nullptr), -1);
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_F(MessageQueue, NeedsItsFile)
{
    const std::string missing = std::string(queue.path()) + "/none";
    Package package(1, {1});

    EXPECT_EQ(NM_CreateMsg(missing.c_str(), project), failed);
    expectFailure("Ftok fail! iKey:%d\n", -1);
    EXPECT_EQ(NW_SendMsg(missing.c_str(), project, 1, package.get()), failed);
    expectFailure(noKeyText, 0);
    EXPECT_EQ(NW_ReceiveMsg(missing.c_str(), project, 1, package.get()), failed);
    expectFailure(noKeyText, 0);
}

/* A project id of 0x80 or above makes a key with the sign bit. */
class NegativeKey : public MessageQueue, public testing::WithParamInterface<int> {};

TEST_P(NegativeKey, IsRefusedAlthoughTheKernelKnowsItsQueue)
{
    const RealQueue negative(queue.path(), GetParam());
    ASSERT_LT(negative.key(), -1);
    negative.create(0666);
    negative.put({1, {5}});
    Package package(1, {1});

    EXPECT_EQ(NM_CreateMsg(negative.path(), GetParam()), failed);
    expectFailure("Ftok fail! iKey:%d\n", negative.key());
    EXPECT_EQ(NW_SendMsg(negative.path(), GetParam(), 1, package.get()), failed);
    expectFailure(noKeyText, 0);
    EXPECT_EQ(NW_ReceiveMsg(negative.path(), GetParam(), 1, package.get()), failed);
    expectFailure(noKeyText, 0);

    EXPECT_EQ(negative.count(), 1U);
    negative.remove();
}

INSTANTIATE_TEST_SUITE_P(Projects, NegativeKey,
                         testing::Values(0x80, 0x81, 0xFF, 0x180, -1, INT_MIN + 0x80));

TEST_F(MessageQueue, IsNamedByTheLowByteOfTheProject)
{
    EXPECT_EQ(NM_CreateMsg(queue.path(), project + 0x100), 0U);
    EXPECT_TRUE(queue.exists());

    EXPECT_FALSE(RealQueue(queue.path(), project + 1).exists());
}

TEST_F(MessageQueue, IsNotCreatedBySendersAndReceivers)
{
    Package package(4);

    EXPECT_EQ(send({1, {1}}), failed);
    expectFailure("Msgget failed, iMsgId:%d\n", -1);
    EXPECT_EQ(receive(package), failed);
    expectFailure("Msgget failed, iMsgId:%d\n", -1);

    EXPECT_FALSE(queue.exists());
}

/* Lets this IPC namespace hold no further queues. */
class NoFurtherQueues {
public:
    NoFurtherQueues()
    {
        std::ifstream(file) >> limit_;
        std::ofstream(file) << 0;
    }
    ~NoFurtherQueues()
    {
        std::ofstream(file) << limit_;
    }

private:
    static constexpr const char *file = "/proc/sys/kernel/msgmni";
    int limit_ = 0;
};

TEST_F(MessageQueue, IsNotLeftWhenItCannotBeCreatedAgain)
{
    queue.create(0666);
    queue.put({1, {}});
    const NoFurtherQueues noFurtherQueues;

    EXPECT_EQ(create(), failed);

    expectFailure("Msgget failed! iMsgId:%d\n", -1);
    EXPECT_FALSE(queue.exists());
}

/* Runs in the child: this process becomes another user's. */
void becomeNobody()
{
    constexpr uid_t nobody = 65534;
    if (setresuid(nobody, nobody, nobody) != 0) {
        throw std::runtime_error("cannot become another user");
    }
}

TEST_F(MessageQueue, OfAnotherUserIsNotRemoved)
{
    EXPECT_EQ(create(), 0U);
    queue.put({1, {9}});
    const int before = queue.id();

    Child other([&] {
        becomeNobody();
        return outcome(create(), lines());
    });

    EXPECT_EQ(other.report(), "81000001: (10, 0, 4) Msgctl failed\n");
    EXPECT_EQ(queue.id(), before);
    EXPECT_EQ(queue.count(), 1U);
}

TEST_F(MessageQueue, ServesEveryUser)
{
    EXPECT_EQ(create(), 0U);
    queue.put({1, {9}});

    Child other([&] {
        becomeNobody();
        Package package(1);
        const std::string received = outcome(receive(package), lines());
        return received + outcome(send({4, package.text()}), lines());
    });

    EXPECT_EQ(other.report(), "0:0: (10, 0, 6) msgsnd success\n");
    EXPECT_EQ(queue.take(), (Message{4, {9}}));
}

TEST_F(MessageQueue, ClosedToAUserIsNoneToSendTo)
{
    queue.create(0600);

    Child other([&] {
        becomeNobody();
        return outcome(send({1, {1}}), lines());
    });

    EXPECT_EQ(other.report(), "81000001: (10, 0, 4) ERROR: msgsnd failed iRet:-1\n");
    EXPECT_EQ(queue.count(), 0U);
}

class TextLength : public MessageQueue, public testing::WithParamInterface<std::size_t> {};

TEST_P(TextLength, IsSentAsItIs)
{
    queue.create(0666);
    const Message message{0x01020304, package::counted(GetParam())};

    EXPECT_EQ(send(message), 0U);

    EXPECT_THAT(lines(),
                ElementsAre(fake::isLine(fake::networkUnit, fake::info, "msgsnd success\n")));
    EXPECT_EQ(queue.count(), 1U);
    EXPECT_EQ(queue.take(), message);
}

TEST_P(TextLength, IsReceivedAsItIs)
{
    queue.create(0666);
    const Message message{77, package::counted(GetParam())};
    queue.put(message);
    Package package(GetParam());

    EXPECT_EQ(receive(package), 0U);

    EXPECT_EQ((Message{package.type(), package.text()}), message);
    EXPECT_EQ(queue.count(), 0U);
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_P(TextLength, ReceivedLeavesWhatIsBehindIt)
{
    queue.create(0666);
    Bytes text = package::counted(GetParam());
    queue.put({1, text});
    Package package(255);

    EXPECT_EQ(receive(package), 0U);

    text.resize(255, Package::poison);
    EXPECT_EQ(package.text(), text);
}

INSTANTIATE_TEST_SUITE_P(Lengths, TextLength, testing::Values(0U, 1U, 7U, 254U, 255U));

TEST_F(MessageQueue, RefusesLongerTextsByTheirLength)
{
    queue.create(0666);
    queue.put({1, {8}});
    Package package(256);

    EXPECT_EQ(send({1, Bytes(256)}), failed);
    expectFailure("Msg length out of range, iMsgId:%d\n", queue.id());
    EXPECT_EQ(receive(package), failed);
    expectFailure("Msg length out of range, iMsgId:%d\n", queue.id());

    EXPECT_EQ(package.text(), Bytes(256, Package::poison));
    EXPECT_EQ(queue.count(), 1U);
}

TEST_F(MessageQueue, KeepsAMessageLongerThanAskedFor)
{
    queue.create(0666);
    queue.put({5, package::counted(9)});
    Package tooSmall(8);

    EXPECT_EQ(receive(tooSmall), failed);
    expectFailure("Msgrcv failed, iRet:%d\n", -1);
    EXPECT_EQ(tooSmall.text(), Bytes(8, Package::poison));
    ASSERT_EQ(queue.count(), 1U);

    Package enough(9);
    EXPECT_EQ(receive(enough), 0U);
    EXPECT_EQ(enough.text(), package::counted(9));
}

TEST_F(MessageQueue, GivesMessagesOfAnyTypeInTheirOrder)
{
    queue.create(0666);
    const long types[] = {9, 1, LONG_MAX, 1, 0x7FFFFFFF};
    for (const long type : types) {
        EXPECT_EQ(send({type, {static_cast<std::uint8_t>(type)}}), 0U);
    }

    for (const long type : types) {
        Package package(1);
        EXPECT_EQ(receive(package), 0U);
        EXPECT_EQ(package.type(), type);
    }
}

TEST_F(MessageQueue, RefusesTypesBelowOneUntouched)
{
    queue.create(0666);
    for (const long type : {0L, -1L, LONG_MIN}) {
        EXPECT_EQ(send({type, {1}}), failed);
        EXPECT_THAT(lines(),
                    ElementsAre(fake::isErrorLine("Invalid  MsgType!, lMsgType:%ld\n", type)));
        platform.clearCalls();
    }
    EXPECT_EQ(queue.count(), 0U);
}

/* Interrupts this process every 20 ms while it lives. */
class Interruptions {
public:
    Interruptions()
    {
        struct sigaction action = {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, nullptr);
        const itimerval often{{0, 20000}, {0, 20000}};
        setitimer(ITIMER_REAL, &often, nullptr);
    }
    ~Interruptions()
    {
        const itimerval never{};
        setitimer(ITIMER_REAL, &never, nullptr);
    }
};

TEST_F(MessageQueue, DoesNotWaitAgainAfterASignal)
{
    queue.create(0666);
    while (queue.put({1, Bytes(255)})) {
    }
    const std::size_t full = queue.count();
    Package package(1);

    {
        const Interruptions interruptions;
        EXPECT_EQ(send({1, Bytes(255)}), failed);
    }
    expectFailure("ERROR: msgsnd failed iRet:%d\n", -1);
    EXPECT_EQ(queue.count(), full);

    queue.remove();
    queue.create(0666);
    {
        const Interruptions interruptions;
        EXPECT_EQ(receive(package), failed);
    }
    expectFailure("Msgrcv failed, iRet:%d\n", -1);
}

} // namespace
