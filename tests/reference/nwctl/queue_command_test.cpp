// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwctl queue on real message queues. */
#include "local_system.hpp"

#include <sys/ipc.h>
#include <sys/msg.h>

namespace local_test {

using ::testing::HasSubstr;

class Queue : public LocalTest {
protected:
    void SetUp() override
    {
        LocalTest::SetUp();
        ASSERT_EQ(nwctl("queue create /run/queue 7").status, 0);
    }

    static msqid_ds state(int id = 7)
    {
        msqid_ds state{};
        EXPECT_EQ(msgctl(msgget(ftok("/run/queue", id), 0), IPC_STAT, &state), 0);
        return state;
    }

    /* Until no further message of one byte has room. */
    static void fill()
    {
        struct {
            long type = 1;
            char text = 0;
        } message;
        const int queue = msgget(ftok("/run/queue", 7), 0);
        while (msgsnd(queue, &message, 1, IPC_NOWAIT) == 0) {
        }
        ASSERT_EQ(errno, EAGAIN);
    }
};

TEST_F(Queue, IsCreatedEmptyForEverybody)
{
    ASSERT_EQ(nwctl("queue send /run/queue 7 old").status, 0);
    const auto result = nwctl("queue create /run/queue 7");

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "queue created\n");
    EXPECT_EQ(state().msg_qnum, 0U);
    EXPECT_EQ(state().msg_perm.mode & 0777, 0666);
    EXPECT_EQ(json::parse(nwctl("queue create /run/queue 127 --json").output),
              (json{{"path", "/run/queue"}, {"id", 127}}));
}

TEST_F(Queue, CarriesTextsInOrder)
{
    const auto sent = nwctl("queue send /run/queue 7 --type 2147483647 'one two'");
    EXPECT_EQ(sent.status, 0);
    EXPECT_EQ(sent.output, "message sent\n");
    EXPECT_EQ(json::parse(nwctl("--json queue send /run/queue 7 ab").output),
              (json{{"type", 1}, {"bytes", "6162"}}));

    const auto first = nwctl("queue receive /run/queue 7 --timeout 5");
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.output, "type 2147483647\ntext one two\n");
    EXPECT_EQ(json::parse(nwctl("--json queue receive /run/queue 7 --timeout 5").output),
              (json{{"type", 1}, {"text", "ab"}, {"bytes", "6162"}, {"records", nullptr}}));
    EXPECT_EQ(state().msg_qnum, 0U);
}

TEST_F(Queue, CarriesRecords)
{
    for (int times = 0; times < 2; ++times) {
        ASSERT_EQ(nwctl("queue send /run/queue 7 --tlv 1:0a00 --tlv 255: --tlv 3:07").status, 0);
    }
    EXPECT_EQ(state().msg_cbytes, 2U * 9U);

    EXPECT_EQ(nwctl("queue receive /run/queue 7 --tlv").output,
              "type 1\nrecord 1: 0a00\nrecord 255: \nrecord 3: 07\n");
    const json document = json::parse(nwctl("--json queue receive /run/queue 7 --tlv").output);
    EXPECT_EQ(document["bytes"], "01020a00ff00030107");
    EXPECT_EQ(document["records"], (json{{{"type", 1}, {"value", "0a00"}},
                                         {{"type", 255}, {"value", ""}},
                                         {{"type", 3}, {"value", "07"}}}));
}

TEST_F(Queue, ShowsTheBytesOfWhatIsNoRecord)
{
    for (int times = 0; times < 2; ++times) {
        ASSERT_EQ(nwctl("queue send /run/queue 7 " + std::string(255, 'c')).status, 0);
    }
    std::string bytes;
    for (int index = 0; index < 255; ++index) {
        bytes += "63";
    }

    const auto result = nwctl("queue receive /run/queue 7 --tlv");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, HasSubstr("--tlv '" + bytes + "': the message holds no records"));
    const auto document = nwctl("--json queue receive /run/queue 7 --tlv");
    EXPECT_EQ(document.status, 3);
    EXPECT_EQ(json::parse(document.output)["error"]["value"], bytes);
}

TEST_F(Queue, EscapesTexts)
{
    ASSERT_EQ(nwctl("queue send /run/queue 7 \"$(printf 'a\\033[2J\\377')\"").status, 0);

    EXPECT_EQ(nwctl("queue receive /run/queue 7").output, "type 1\ntext a\\x1b[2J\\xff\n");
}

TEST_F(Queue, CarriesTextsOfUpTo255Bytes)
{
    const std::string longest(255, 'x');
    EXPECT_EQ(nwctl("queue send /run/queue 7 " + longest).status, 0);
    EXPECT_EQ(nwctl("queue send /run/queue 7 ''").status, 0);

    EXPECT_EQ(nwctl("queue receive /run/queue 7").output, "type 1\ntext " + longest + "\n");
    EXPECT_EQ(nwctl("queue receive /run/queue 7").output, "type 1\ntext \n");
}

TEST_F(Queue, ReceiverWaitsForTheSender)
{
    Beside receiver("queue receive /run/queue 7 --timeout 30");
    EXPECT_FALSE(receiver.endsWithin(std::chrono::milliseconds(300)));

    ASSERT_EQ(nwctl("queue send /run/queue 7 --type 9 late").status, 0);

    const auto received = receiver.outcome();
    EXPECT_EQ(received.status, 0);
    EXPECT_EQ(received.output, "type 9\ntext late\n");
}

TEST_F(Queue, SenderWaitsForRoom)
{
    fill();
    const auto before = state().msg_qnum;
    Beside sender("queue send /run/queue 7 --timeout 30 x");
    EXPECT_FALSE(sender.endsWithin(std::chrono::milliseconds(300)));

    ASSERT_EQ(nwctl("queue receive /run/queue 7").status, 0);

    EXPECT_EQ(sender.wait(), 0);
    EXPECT_EQ(state().msg_qnum, before);
}

TEST_F(Queue, WaitsNoLongerThanTheLimit)
{
    const auto received = nwctl("--json queue receive /run/queue 7 --timeout 1");
    EXPECT_EQ(received.status, 5);
    EXPECT_EQ(json::parse(received.output)["error"]["reason"], "the time limit is over");

    fill();
    const auto sent = nwctl("queue send /run/queue 7 --timeout 1 x");
    EXPECT_EQ(sent.status, 5);
    EXPECT_THAT(sent.errors, HasSubstr("the time limit is over"));
}

TEST_F(Queue, TellsTheReceiverThatItWasReplaced)
{
    Beside receiver("queue receive /run/queue 7 --timeout 30");
    ASSERT_FALSE(receiver.endsWithin(std::chrono::milliseconds(300)));

    ASSERT_EQ(nwctl("queue create /run/queue 7").status, 0);

    const auto received = receiver.outcome();
    EXPECT_EQ(received.output, "");
    /* Between the removal and the creation there is none: either is what it may have seen. */
    EXPECT_THAT(received.status, testing::AnyOf(1, 3));
    EXPECT_THAT(received.errors,
                HasSubstr(received.status == 1 ? "the queue failed or was replaced meanwhile"
                                               : "there is no such queue"));
}

struct Refusal {
    const char *name;
    const char *arguments; /* behind "queue create|send|receive" */
    int status;
    const char *option;
    const char *reason;
};

class RefusedQueue : public Queue, public ::testing::WithParamInterface<Refusal> {};

TEST_P(RefusedQueue, SaysWhatIsWrong)
{
    const auto result = nwctl("--json queue " + std::string(GetParam().arguments));

    EXPECT_EQ(result.status, GetParam().status);
    const json error = json::parse(result.output).at("error");
    EXPECT_EQ(error["option"], GetParam().option);
    EXPECT_THAT(error["reason"].get<std::string>(), HasSubstr(GetParam().reason));
    EXPECT_EQ(state().msg_qnum, 0U);
}

/* clang-format off */
const Refusal refusals[] = {
    {"CreateNoFile",     "create /run/nothing 7",             3, "PATH",      "No such file"},
    {"SendNoFile",       "send /run/nothing 7 x",             3, "PATH",      "No such file"},
    {"ReceiveNoFile",    "receive /run/nothing 7",            3, "PATH",      "No such file"},
    {"CreateNegative",   "create /run/queue 128",             3, "ID",        "below 128"},
    {"SendNegative",     "send /run/queue 255 x",             3, "ID",        "below 128"},
    {"SendNoQueue",      "send /run/queue 8 x",               3, "PATH",      "no such queue"},
    {"ReceiveNoQueue",   "receive /run/queue 8",              3, "PATH",      "no such queue"},
    {"IdZero",           "create /run/queue 0",               2, "ID",        "1 to 255"},
    {"IdLarge",          "create /run/queue 256",             2, "ID",        "1 to 255"},
    {"IdText",           "receive /run/queue x",              2, "ID",        "1 to 255"},
    {"IdMissing",        "create /run/queue",                 2, "ID",        "missing"},
    {"TypeZero",         "send /run/queue 7 x --type 0",      2, "--type",    "1 to 2147483647"},
    {"TypeNegative",     "send /run/queue 7 x --type=-1",     2, "--type",    "1 to 2147483647"},
    {"TypeLarge",        "send /run/queue 7 x --type 2147483648", 2, "--type", "1 to 2147483647"},
    {"LimitText",        "send /run/queue 7 x --timeout soon", 2, "--timeout", "0 to 86400"},
    {"LimitLarge",       "receive /run/queue 7 --timeout 86401", 2, "--timeout", "0 to 86400"},
    {"NothingToSend",    "send /run/queue 7",                 2, "TEXT",      "either a text or --tlv"},
    {"TextAndRecord",    "send /run/queue 7 x --tlv 1:00",    2, "TEXT",      "either a text or --tlv"},
    {"RecordMalformed",  "send /run/queue 7 --tlv 1",         2, "--tlv",     "TYPE:HEX"},
};
/* clang-format on */

INSTANTIATE_TEST_SUITE_P(Rows, RefusedQueue, ::testing::ValuesIn(refusals),
                         [](const auto &test) { return test.param.name; });

TEST_F(Queue, RefusesTextsOfMoreThan255Bytes)
{
    const auto result = nwctl("--json queue send /run/queue 7 " + std::string(256, 'x'));

    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(json::parse(result.output)["error"]["option"], "TEXT");
    EXPECT_EQ(state().msg_qnum, 0U);
}

TEST_F(Queue, ExamplesOfTheHelpWork)
{
    for (const std::string command : {"queue create", "queue send", "queue receive"}) {
        EXPECT_EQ(nwctl(exampleOf(command)).status, 0) << command;
    }
}

} // namespace local_test
