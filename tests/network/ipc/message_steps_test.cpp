// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Messages step by step: which queue calls each function makes, how it ends at each of them. */
#include <climits>
#include <functional>

#include "fake_matchers.hpp"
#include "network_mng.h"
#include "package.hpp"
#include "queue_calls.hpp"

namespace {

using fake::LineMatcher;
using queue_calls::creates;
using queue_calls::looksUp;
using queue_calls::makesKey;
using queue_calls::removes;
using queue_calls::Script;
using testing::ElementsAreArray;

constexpr std::uint32_t failed = 0x81000001;
constexpr const char *path = "/some/file";
constexpr int project = 7;

struct Step {
    std::string name;
    Script script;
    std::function<std::uint32_t()> call;
    std::uint32_t result;
    std::vector<std::string> calls;
    std::vector<LineMatcher> lines;
};

using Call = std::function<std::uint32_t()>;

std::uint32_t create()
{
    return NM_CreateMsg(path, project);
}

Call send(std::uint32_t length, long type = 1)
{
    return [=] {
        package::Package package(type, package::counted(length <= 255 ? length : 0));
        return NW_SendMsg(path, project, length, package.get());
    };
}

Call receive(std::uint32_t length)
{
    return [=] {
        package::Package package(length <= 255 ? length : 0);
        return NW_ReceiveMsg(path, project, length, package.get());
    };
}

LineMatcher isError(const char *format, long number = 0)
{
    return fake::isErrorLine(format, number);
}

LineMatcher isSent()
{
    return fake::isLine(fake::networkUnit, fake::info, "msgsnd success\n");
}

const char *const keyText = "Ftok fail! iKey:%d\n";
const char *const createText = "Msgget failed! iMsgId:%d\n";
const char *const removeText = "Msgctl failed\n";

/* clang-format off */
const Step createSteps[] = {
    {"New",             {.found = -1}, create, 0, {makesKey, looksUp, creates}, {}},
    {"NoneByAnyNegative", {.found = -9}, create, 0, {makesKey, looksUp, creates}, {}},
    {"Again",           {}, create, 0, {makesKey, looksUp, removes, creates}, {}},
    {"AgainQueueZero",  {.found = 0, .created = 0}, create, 0,
     {makesKey, looksUp, "msgctl(0, 0)", creates}, {}},
    {"KeyZero",         {.key = 0, .found = -1}, create, failed, {makesKey}, {isError(keyText, 0)}},
    {"NoKey",           {.key = -1}, create, failed, {makesKey}, {isError(keyText, -1)}},
    {"NegativeKey",     {.key = INT_MIN}, create, failed, {makesKey}, {isError(keyText, INT_MIN)}},
    {"NotRemoved",      {.controlled = -1}, create, failed,
     {makesKey, looksUp, removes}, {isError(removeText)}},
    {"NotCreated",      {.found = -1, .created = -1}, create, failed,
     {makesKey, looksUp, creates}, {isError(createText, -1)}},
    {"RemovedNotCreated", {.created = -3}, create, failed,
     {makesKey, looksUp, removes, creates}, {isError(createText, -3)}},
};

const char *const typeText = "Invalid  MsgType!, lMsgType:%ld\n";
const char *const noKeyText = "Creat key error\n";
const char *const noQueueText = "Msgget failed, iMsgId:%d\n";
const char *const lengthText = "Msg length out of range, iMsgId:%d\n";
const char *const sendText = "ERROR: msgsnd failed iRet:%d\n";
const char *const receiveText = "Msgrcv failed, iRet:%d\n";

const Step sendSteps[] = {
    {"Sent",         {}, send(8), 0, {makesKey, looksUp, "msgsnd(31, 8, 0)"}, {isSent()}},
    {"NoText",       {}, send(0), 0, {makesKey, looksUp, "msgsnd(31, 0, 0)"}, {isSent()}},
    {"Longest",      {}, send(255), 0, {makesKey, looksUp, "msgsnd(31, 255, 0)"}, {isSent()}},
    {"GreatestType", {}, send(1, LONG_MAX), 0, {makesKey, looksUp, "msgsnd(31, 1, 0)"}, {isSent()}},
    {"QueueZero",    {.found = 0}, send(1), 0, {makesKey, looksUp, "msgsnd(0, 1, 0)"}, {isSent()}},
    {"KeyZero",      {.key = 0}, send(1), failed, {makesKey}, {isError(noKeyText)}},
    {"TypeZero",     {}, send(1, 0), failed, {}, {isError(typeText, 0)}},
    {"TypeNegative", {}, send(1, -1), failed, {}, {isError(typeText, -1)}},
    {"LeastType",    {}, send(1, LONG_MIN), failed, {}, {isError(typeText, LONG_MIN)}},
    {"TypeBeforeKeyAndLength", {.key = -1}, send(256, 0), failed, {}, {isError(typeText, 0)}},
    {"NoKey",        {.key = -1}, send(256), failed, {makesKey}, {isError(noKeyText)}},
    {"NegativeKey",  {.key = -5}, send(1), failed, {makesKey}, {isError(noKeyText)}},
    {"NoQueue",      {.found = -1}, send(256), failed,
     {makesKey, looksUp}, {isError(noQueueText, -1)}},
    {"NegativeQueue", {.found = -7}, send(1), failed,
     {makesKey, looksUp}, {isError(noQueueText, -7)}},
    {"TooLong",      {}, send(256), failed, {makesKey, looksUp}, {isError(lengthText, 31)}},
    {"FarTooLong",   {}, send(0xFFFFFFFF), failed, {makesKey, looksUp}, {isError(lengthText, 31)}},
    {"SignedTooLong", {}, send(0x80000000), failed, {makesKey, looksUp}, {isError(lengthText, 31)}},
    {"NotSent",      {.sent = -1}, send(4), failed,
     {makesKey, looksUp, "msgsnd(31, 4, 0)"}, {isError(sendText, -1)}},
};

const Step receiveSteps[] = {
    {"Received",     {.received = 8}, receive(8), 0, {makesKey, looksUp, "msgrcv(31, 8, 0, 0)"}, {}},
    {"NoText",       {}, receive(0), 0, {makesKey, looksUp, "msgrcv(31, 0, 0, 0)"}, {}},
    {"Shorter",      {.received = 3}, receive(9), 0, {makesKey, looksUp, "msgrcv(31, 9, 0, 0)"}, {}},
    {"Longest",      {.received = 255}, receive(255), 0,
     {makesKey, looksUp, "msgrcv(31, 255, 0, 0)"}, {}},
    {"QueueZero",    {.found = 0}, receive(1), 0, {makesKey, looksUp, "msgrcv(0, 1, 0, 0)"}, {}},
    {"KeyZero",      {.key = 0}, receive(1), failed, {makesKey}, {isError(noKeyText)}},
    {"NoKey",        {.key = -1}, receive(256), failed, {makesKey}, {isError(noKeyText)}},
    {"NegativeKey",  {.key = -5}, receive(1), failed, {makesKey}, {isError(noKeyText)}},
    {"NoQueue",      {.found = -1}, receive(256), failed,
     {makesKey, looksUp}, {isError(noQueueText, -1)}},
    {"NegativeQueue", {.found = -7}, receive(1), failed,
     {makesKey, looksUp}, {isError(noQueueText, -7)}},
    {"TooLong",      {}, receive(256), failed, {makesKey, looksUp}, {isError(lengthText, 31)}},
    {"FarTooLong",   {}, receive(0xFFFFFFFF), failed,
     {makesKey, looksUp}, {isError(lengthText, 31)}},
    {"SignedTooLong", {}, receive(0x80000000), failed,
     {makesKey, looksUp}, {isError(lengthText, 31)}},
    {"NotReceived",  {.received = -1}, receive(4), failed,
     {makesKey, looksUp, "msgrcv(31, 4, 0, 0)"}, {isError(receiveText, -1)}},
};
/* clang-format on */

class MessageSteps : public fake::FakePlatformRows<Step> {};

TEST_P(MessageSteps, EndWhereTheyMust)
{
    const Step &step = GetParam();
    queue_calls::play(step.script);

    EXPECT_EQ(step.call(), step.result);

    EXPECT_EQ(queue_calls::calls(), step.calls);
    EXPECT_THAT(lines(), ElementsAreArray(step.lines));
    EXPECT_EQ(platform.calls().size(), step.lines.size());
}

INSTANTIATE_TEST_SUITE_P(Create, MessageSteps, testing::ValuesIn(createSteps), fake::RowName());
INSTANTIATE_TEST_SUITE_P(Send, MessageSteps, testing::ValuesIn(sendSteps), fake::RowName());
INSTANTIATE_TEST_SUITE_P(Receive, MessageSteps, testing::ValuesIn(receiveSteps), fake::RowName());

} // namespace
