// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The heartbeat step by step: capability, key, queue, message; what each failure prints. */
#include <cerrno>

#include "bmc_platform.h"
#include "fake_matchers.hpp"
#include "network_mng.h"
#include "package.hpp"
#include "queue_calls.hpp"

namespace {

std::uint8_t capabilityBefore; /* in the output when the capability was last asked for */

} // namespace

/* The names are the linker's. */
extern "C" {
int __real_CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName,
                                         uint8_t *pucValue);
int __wrap_CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName,
                                         uint8_t *pucValue);

int __wrap_CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName, uint8_t *pucValue)
{
    capabilityBefore = *pucValue;
    return __real_CAP_GetCharCapabilityWithName(pcGroup, pcName, pucValue);
}
}

namespace {

using fake::Bytes;
using queue_calls::looksUp;
using queue_calls::Script;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t failed = 0x81000001;
constexpr std::uint8_t poison = 0xA5;

struct Capability {
    std::optional<std::uint16_t> value; /* none: the read fails with code */
    int code = 0;
};

void offer(fake::Platform &platform, const Capability &capability)
{
    if (capability.value) {
        platform.setCapability("NIC", "KezOemSupport", *capability.value);
    } else {
        platform.failCapability("NIC", "KezOemSupport", capability.code);
    }
}

struct CapabilityRow {
    std::string name;
    Capability capability;
    std::uint32_t result;
    std::uint8_t support;
    std::string printed;
};

/* clang-format off */
const CapabilityRow capabilityRows[] = {
    {"Off",         {0},            0,      0,      ""},
    {"On",          {1},            0,      1,      ""},
    {"Two",         {2},            0,      1,      ""},
    {"All",         {255},          0,      1,      ""},
    {"Fails",       {{}, -5},       failed, poison,
     "Failed to get KezOem support from CAP, iRet = fffffffb"},
    {"FailsPositive", {{}, 0x1F},   failed, poison,
     "Failed to get KezOem support from CAP, iRet = 1f"},
};
/* clang-format on */

class KezCapability : public fake::FakePlatformRows<CapabilityRow> {};

TEST_P(KezCapability, IsReadIntoAFlag)
{
    const CapabilityRow &row = GetParam();
    offer(platform, row.capability);
    capabilityBefore = poison;
    std::uint8_t support = poison;
    testing::internal::CaptureStdout();

    EXPECT_EQ(NW_CheckKezCapability(&support), row.result);

    EXPECT_EQ(testing::internal::GetCapturedStdout(), row.printed);
    EXPECT_EQ(support, row.support);
    EXPECT_EQ(capabilityBefore, 0);
    ASSERT_THAT(platform.callNames(), ElementsAre("CAP_GetCharCapabilityWithName"));
    EXPECT_EQ(platform.calls()[0].text, "NIC");
    EXPECT_EQ(platform.calls()[0].item, "KezOemSupport");
}

INSTANTIATE_TEST_SUITE_P(Values, KezCapability, testing::ValuesIn(capabilityRows), fake::RowName());

struct PostRow {
    std::string name;
    Capability capability;
    Script script;
    std::uint32_t result;
    std::string printed;
    std::vector<std::string> calls;
};

const std::string makesKey = "ftok(/var/heartbeat.key, 7)";
const std::string sends = "msgsnd(31, 8, 0)";
const std::string noKey = "In HeartbeatPostLogMsg, failed to ftok /var/heartbeat.key.";

/* clang-format off */
const PostRow postRows[] = {
    {"Sent",          {1}, {}, 0, "", {makesKey, looksUp, sends}},
    {"AnyCapability", {4}, {}, 0, "", {makesKey, looksUp, sends}},
    {"QueueZero",     {1}, {.found = 0}, 0, "", {makesKey, looksUp, "msgsnd(0, 8, 0)"}},
    {"KeyZero",       {1}, {.key = 0}, failed, noKey, {makesKey}},
    {"Off",           {0}, {}, failed,
     "Get Kez Oem Support failed or not support. iRet = 0, bKezOemSupport = 0", {}},
    {"CapabilityFails", {{}, -404}, {}, failed,
     "Failed to get KezOem support from CAP, iRet = fffffe6c"
     "Get Kez Oem Support failed or not support. iRet = 0x81000001, bKezOemSupport = 0", {}},
    {"NoKey",         {1}, {.key = -1}, failed, noKey, {makesKey}},
    {"NegativeKey",   {1}, {.key = -8}, failed, noKey, {makesKey}},
    {"NoQueue",       {1}, {.found = -1}, failed,
     "In HeartbeatPostLogMsg, iMsgFd: -1 error.", {makesKey, looksUp}},
    {"NegativeQueue", {1}, {.found = -6}, failed,
     "In HeartbeatPostLogMsg, iMsgFd: -6 error.", {makesKey, looksUp}},
    {"NotSent",       {1}, {.sent = -1, .error = ENOMEM}, failed,
     "In HeartbeatPostLogMsg, msgsnd failed (Cannot allocate memory): 12.",
     {makesKey, looksUp, sends}},
};
/* clang-format on */

class Heartbeat : public fake::FakePlatformRows<PostRow> {};

TEST_P(Heartbeat, EndsWhereItMust)
{
    const PostRow &row = GetParam();
    offer(platform, row.capability);
    queue_calls::play(row.script);
    const package::Package payload(1, package::counted(8));
    testing::internal::CaptureStdout();

    EXPECT_EQ(HeartbeatPostLogMsg(payload.text().data(), 7), row.result);

    EXPECT_EQ(testing::internal::GetCapturedStdout(), row.printed);
    EXPECT_EQ(queue_calls::calls(), row.calls);
    EXPECT_THAT(platform.callNames(), ElementsAre("CAP_GetCharCapabilityWithName"));
}

INSTANTIATE_TEST_SUITE_P(Steps, Heartbeat, testing::ValuesIn(postRows), fake::RowName());

class HeartbeatMessage : public fake::FakePlatformTest {};

TEST_F(HeartbeatMessage, IsTypeOneAndTheEightBytes)
{
    offer(platform, {1});
    queue_calls::play({});
    const Bytes payload{0, 0xFF, 1, 2, 0x80, 0, 0, 7};
    Bytes memory{poison}; /* moves the payload to an odd address */
    memory.insert(memory.end(), payload.begin(), payload.end());
    memory.shrink_to_fit();

    EXPECT_EQ(HeartbeatPostLogMsg(memory.data() + 1, 7), 0U);

    Bytes expected = fake::bytesOf(1L);
    expected.insert(expected.end(), payload.begin(), payload.end());
    EXPECT_EQ(queue_calls::message(), expected);
    EXPECT_THAT(lines(), IsEmpty());
}

} // namespace
