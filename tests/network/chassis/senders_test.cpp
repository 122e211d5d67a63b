// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The senders: the whole request, its lines, and every end of a call. */
#include "caller_record.hpp"
#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using chassis::CallerRecord;
using fake::Bytes;
using fake::LineMatcher;
using fake::RpcAnswer;
using testing::ElementsAreArray;

struct Sender {
    std::string name;
    std::uint32_t (*send)();
    std::uint8_t command;
    Bytes payload;
    std::vector<LineMatcher> before; /* lines before the request is sent */
    const char *failText;
};

/* Exactly the bytes, in memory of their own. */
template <std::uint32_t (*sender)(const std::uint8_t *)>
std::uint32_t sendBytes(const Bytes &bytes)
{
    return sender(static_cast<const std::uint8_t *>(CallerRecord(bytes).get()));
}

std::uint32_t sendOcp(const std::vector<std::uint16_t> &temperatures)
{
    return LIB_OA_SendOcpTemp(temperatures.data(),
                              static_cast<std::uint32_t>(temperatures.size() * 2));
}

LineMatcher isOcp(unsigned first, unsigned second)
{
    return fake::isDebugLine("Send ocp1temp:%u, ocp2temp:%u", first, second);
}

std::vector<LineMatcher> areFan(int speed, int temperature)
{
    return {fake::isDebugLine("Send fan speed %d.", speed),
            fake::isDebugLine("Send inlet temp %d.", temperature)};
}

const char *const powerText =
    "BMC_RPC_CallWithStruct Failed when setting interface state, iRet:%d.";
const char *const postText = "BMC_RPC_CallWithStruct Failed when SendBiosPostState, iRet:%d.";
const char *const ocpText = "BMC_RPC_CallWithStruct failed when send ocp temp, iRet: %#x.";
const char *const fanText = "Failed when send fan speed, iRet: %#x.";

/* clang-format off */
const Sender senders[] = {
    {"PowerOn", [] { return sendBytes<LIB_OA_SendPowerOnNodeRequest>({1, 2, 3, 4, 5, 0xFF}); },
     0, {1, 2, 3, 4, 5, 0xFF}, {}, powerText},
    {"PowerOnNull", [] { return LIB_OA_SendPowerOnNodeRequest(nullptr); },
     0, {}, {}, powerText},
    {"PostState", [] { return sendBytes<LIB_OA_SendBiosPostState>({0xC3}); },
     1, {0xC3}, {}, postText},
    {"PostStateZero", [] { return sendBytes<LIB_OA_SendBiosPostState>({0}); },
     1, {}, {}, postText},
    {"Ocp", [] { return sendOcp({0x0201, 65535}); },
     2, {1, 2, 0xFF, 0xFF}, {isOcp(513, 65535)}, ocpText},
    {"OcpSixteen", [] { return sendOcp({3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 0x1234}); },
     2, {3, 0, 4, 0, 5, 0, 6, 0, 7, 0, 8, 0, 9, 0, 10, 0,
         11, 0, 12, 0, 13, 0, 14, 0, 15, 0, 16, 0, 17, 0, 0x34, 0x12}, {isOcp(3, 4)}, ocpText},
    {"Fan", [] { return LIB_OA_SendFanSpeedAndInletTemp(0x12345678, 25); },
     3, {0x78, 0x56, 0x34, 0x12, 25}, areFan(0x12345678, 25), fanText},
    {"FanInletsLowByte", [] { return LIB_OA_SendFanSpeedAndInletTemp(0, 0xABCDEF01); },
     3, {0, 0, 0, 0, 1}, areFan(0, -1412567295), fanText},
    {"FanGreatest", [] { return LIB_OA_SendFanSpeedAndInletTemp(0xFFFFFFFF, 0x100); },
     3, {0xFF, 0xFF, 0xFF, 0xFF, 0}, areFan(-1, 256), fanText},
};
/* clang-format on */

struct Answer {
    const char *name;
    RpcAnswer answer;
    std::uint32_t result;
};

const Answer answers[] = {
    {"Done", RpcAnswer::response(0), 0},
    {"Refused", RpcAnswer::response(0x1E000004, 3), 0x1E000004},
    {"NoMessage", RpcAnswer::noMessage(), 0},
    {"Transport", RpcAnswer::failure(-110), 0x81000013},
    {"TransportWithMessage", RpcAnswer::failureWithMessage(9), 0x81000013},
};

class ChassisSender : public fake::FakePlatformRows<Sender> {
protected:
    std::vector<LineMatcher> expectedLines(std::uint32_t result) const
    {
        std::vector<LineMatcher> expected = GetParam().before;
        if (result != 0) {
            expected.push_back(
                fake::isLine(fake::networkUnit, fake::critical, GetParam().failText, result));
        }
        return expected;
    }

    std::vector<std::string> expectedCalls(std::uint32_t result) const
    {
        std::vector<std::string> expected(GetParam().before.size(), "BMC_DiagLogOut");
        expected.insert(expected.end(), {"MRPC_Call", "MRPC_MsgFree"});
        if (result != 0) {
            expected.push_back("BMC_DiagLogOut");
        }
        return expected;
    }
};

TEST_P(ChassisSender, SendsTheWholeRequest)
{
    Bytes expected{0, GetParam().command};
    expected.insert(expected.end(), GetParam().payload.begin(), GetParam().payload.end());
    expected.resize(3074);

    GetParam().send();

    const auto calls = platform.callsTo("MRPC_Call");
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].service, 52U);
    EXPECT_EQ(calls[0].function, 30U);
    EXPECT_EQ(calls[0].size, 3074U);
    EXPECT_EQ(calls[0].timeout, 10000U);
    EXPECT_FALSE(calls[0].messagePresent);
    EXPECT_EQ(calls[0].data, expected);
}

TEST_P(ChassisSender, AnswersWithTheChannelsResult)
{
    for (const Answer &answer : answers) {
        SCOPED_TRACE(answer.name);
        platform.reset();
        platform.answerRpc(answer.answer);

        EXPECT_EQ(GetParam().send(), answer.result);

        EXPECT_THAT(lines(), ElementsAreArray(expectedLines(answer.result)));
        EXPECT_EQ(platform.callNames(), expectedCalls(answer.result));
        EXPECT_EQ(platform.liveMessages(), 0U);
    }
}

INSTANTIATE_TEST_SUITE_P(Senders, ChassisSender, testing::ValuesIn(senders), fake::RowName());

} // namespace
