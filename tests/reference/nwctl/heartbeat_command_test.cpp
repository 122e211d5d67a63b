// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwctl heartbeat on a real queue, with the platform's capability on, off and missing. */
#include "local_system.hpp"

#include <cstdlib>
#include <cstring>
#include <fstream>

#include <sys/ipc.h>
#include <sys/msg.h>

#include "network_mng/message.h"

namespace local_test {

using ::testing::HasSubstr;

class Heartbeat : public LocalTest {
protected:
    static void setCapability(const std::string &text)
    {
        std::ofstream(std::string(std::getenv("BMC_STATE_DIR")) + "/capabilities.json") << text;
    }

    static void support(int value)
    {
        setCapability(json{{"NIC", {{"KezOemSupport", value}}}}.dump());
    }

    static int makeQueue()
    {
        std::ofstream(NW_HEARTBEAT_KEY_FILE);
        return msgget(ftok(NW_HEARTBEAT_KEY_FILE, 5), IPC_CREAT | 0600);
    }

    static e2e::Outcome send(const std::string &options = "")
    {
        return nwctl("heartbeat send 5 01020304050607fF " + options);
    }

    /* The failure, in both forms; nothing else may stand on standard output. */
    static void expectFailure(int status, const std::string &reason)
    {
        const auto text = send("--timeout 1");
        EXPECT_EQ(text.status, status);
        EXPECT_EQ(text.output, "");
        EXPECT_THAT(text.errors, HasSubstr("nwctl: " + reason + "\n"));

        const auto document = send("--timeout 1 --json");
        EXPECT_EQ(document.status, status);
        const json error = json::parse(document.output).at("error");
        EXPECT_EQ(error["reason"], reason);
        EXPECT_EQ(error["status"], status);
    }
};

TEST_F(Heartbeat, IsPostedWithTheCapability)
{
    support(1);
    const int queue = makeQueue();

    const auto result = send();

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "heartbeat sent\n");
    EXPECT_EQ(result.errors, "");
    HEARTBEAT_MSG_S message{};
    ASSERT_EQ(msgrcv(queue, &message, sizeof(message.aucPayload), 0, IPC_NOWAIT), 8);
    EXPECT_EQ(long{message.lMsgType}, 1);
    EXPECT_EQ(std::memcmp(message.aucPayload, "\x01\x02\x03\x04\x05\x06\x07\xff", 8), 0);
}

TEST_F(Heartbeat, AnswersADocument)
{
    support(1);
    makeQueue();

    EXPECT_EQ(json::parse(send("--json").output), (json{{"id", 5}, {"bytes", "01020304050607ff"}}));
}

TEST_F(Heartbeat, IsRefusedWhereTheCapabilityIsOff)
{
    support(0);
    const int queue = makeQueue();

    expectFailure(3, "the platform has no heartbeat: Get Kez Oem Support failed or not support. "
                     "iRet = 0, bKezOemSupport = 0");

    msqid_ds state{};
    ASSERT_EQ(msgctl(queue, IPC_STAT, &state), 0);
    EXPECT_EQ(state.msg_qnum, 0U);
}

TEST_F(Heartbeat, FailsWhereTheCapabilityIsMissing)
{
    makeQueue();

    expectFailure(1, "Failed to get KezOem support from CAP, iRet = 2Get Kez Oem Support failed or "
                     "not support. iRet = 0x81000001, bKezOemSupport = 0");
}

TEST_F(Heartbeat, FailsWithoutTheKeyFile)
{
    support(1);

    expectFailure(1, "In HeartbeatPostLogMsg, failed to ftok /var/heartbeat.key.");
}

TEST_F(Heartbeat, FailsWithoutAQueue)
{
    support(1);
    std::ofstream(NW_HEARTBEAT_KEY_FILE);

    expectFailure(1, "In HeartbeatPostLogMsg, iMsgFd: -1 error.");
}

TEST_F(Heartbeat, WaitsNoLongerThanTheLimit)
{
    support(1);
    const int queue = makeQueue();
    HEARTBEAT_MSG_S message{};
    message.lMsgType = 1;
    while (msgsnd(queue, &message, sizeof(message.aucPayload), IPC_NOWAIT) == 0) {
    }

    expectFailure(5, "the time limit is over");
}

TEST_F(Heartbeat, RefusesOtherThanEightBytes)
{
    for (const std::string bytes : {"0102030405060", "01020304050607", "010203040506070809", "x"}) {
        const auto result = nwctl("--json heartbeat send 5 " + bytes);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(json::parse(result.output)["error"]["option"], "BYTES");
    }
    EXPECT_EQ(nwctl("heartbeat send 256 0102030405060708").status, 2);
}

TEST_F(Heartbeat, ExampleOfTheHelpWorks)
{
    support(1);
    std::ofstream(NW_HEARTBEAT_KEY_FILE);
    ASSERT_EQ(nwctl("queue create " NW_HEARTBEAT_KEY_FILE " 1").status, 0);

    EXPECT_EQ(nwctl(exampleOf("heartbeat send")).status, 0);
}

} // namespace local_test
