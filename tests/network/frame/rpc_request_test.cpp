// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The request builder behind the setters, and the restart request, its simplest user. */
#include <numeric>

#include "fake_matchers.hpp"
#include "network_mng.h"
#include "nw_rpc.h"

namespace {

using fake::Bytes;
using fake::RpcAnswer;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char *restartText = "BMC_RPC_CallWithStruct Failed when setting network restart!";

struct RestartRow {
    std::string name;
    RpcAnswer answer;
    std::uint32_t result;
    bool logged;
};

/* clang-format off */
const RestartRow restartRows[] = {
    {"Done",             RpcAnswer::response(0),             0,          false},
    {"Refused",          RpcAnswer::response(0x1E000004, 1), 0x1E000004, true},
    {"NoMessage",        RpcAnswer::noMessage(),             0,          false},
    {"NoData",           RpcAnswer::noData(),                0,          false},
    {"FailedReportsOk",  RpcAnswer::failure(-110),           0,          true},
    {"FailedMessage",    RpcAnswer::failureWithMessage(9),   0,          true},
};
/* clang-format on */

class Restart : public fake::FakePlatformRows<RestartRow> {};

TEST_P(Restart, AnswersTheResponseWordEvenWhenTheCallFailed)
{
    const RestartRow &row = GetParam();
    platform.answerRpc(row.answer);

    EXPECT_EQ(LIB_NW_SetNetworkRestart(1), row.result);

    if (row.logged) {
        EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine(restartText)));
        EXPECT_THAT(platform.callNames(),
                    ElementsAre("MRPC_Call", "MRPC_MsgFree", "BMC_DiagLogOut"));
    } else {
        EXPECT_THAT(platform.callNames(), ElementsAre("MRPC_Call", "MRPC_MsgFree"));
    }
}

INSTANTIATE_TEST_SUITE_P(Answers, Restart, testing::ValuesIn(restartRows), fake::RowName());

class RestartRequest : public fake::FakePlatformTest,
                       public testing::WithParamInterface<std::uint32_t> {};

TEST_P(RestartRequest, HasCommandEightTheArgumentAndZeros)
{
    const std::uint32_t argument = GetParam();
    Bytes expected(3074);
    expected[1] = 8;
    for (std::size_t byte = 0; byte < 4; ++byte) {
        expected[2 + byte] = static_cast<std::uint8_t>(argument >> (8 * byte));
    }

    LIB_NW_SetNetworkRestart(argument);

    ASSERT_EQ(platform.callsTo("MRPC_Call").size(), 1U);
    const fake::Call &call = platform.calls().front();
    EXPECT_EQ(call.service, 24U);
    EXPECT_EQ(call.function, 28U);
    EXPECT_EQ(call.timeout, 10000U);
    EXPECT_EQ(call.data, expected);
}

INSTANTIATE_TEST_SUITE_P(Arguments, RestartRequest,
                         testing::Values(0U, 1U, 0x12345678U, 0xFFFFFFFFU));

class SendRequest : public fake::FakePlatformTest {
protected:
    std::uint32_t send(const Bytes &payload)
    {
        return NW_SendRequest(setter, payload.data(), static_cast<std::uint32_t>(payload.size()),
                              &response);
    }

    NW_SETTER_S setter{Network_RPC_Comm, 3, NW_DIAG_IFC_FAIL, "setting failed, iRet:%d."};
    NW_RPC_RESPONSE_S response{};
};

TEST_F(SendRequest, PutsThePayloadBehindTheCommandAndZerosBehindIt)
{
    for (const std::size_t length : {1U, 506U, 3071U, 3072U}) {
        platform.clearCalls();
        Bytes payload(length);
        std::iota(payload.begin(), payload.end(), std::uint8_t{1});
        Bytes expected{0, 3};
        expected.insert(expected.end(), payload.begin(), payload.end());
        expected.resize(3074);

        EXPECT_EQ(send(payload), 0U);

        EXPECT_EQ(platform.calls().front().data, expected) << length;
    }
}

TEST_F(SendRequest, NeverRunsPastTheRequest)
{
    const Bytes payload(4000, 0xEE);
    Bytes expected(3074, 0xEE);
    expected[0] = 0;
    expected[1] = 3;

    send(payload);

    EXPECT_EQ(platform.calls().front().data, expected);
}

TEST_F(SendRequest, ZeroesTheResponseFirst)
{
    std::memset(&response, 0xA5, sizeof(response));
    platform.answerRpc(RpcAnswer::failure(-1));

    EXPECT_EQ(send({0}), 0x81000013U);

    EXPECT_EQ(fake::bytesOf(response), Bytes(264));
}

TEST_F(SendRequest, LogsTheSettersLineOnEveryFailure)
{
    platform.answerRpc(RpcAnswer::failure(-1));
    platform.answerRpc(RpcAnswer::response(0x1E000A33));

    EXPECT_EQ(send({0}), 0x81000013U);
    EXPECT_EQ(send({0}), 0x1E000A33U);

    const auto line = [&](std::uint32_t result) {
        return fake::isLine(fake::networkUnit, fake::ifcFail, setter.pcFailText, result);
    };
    EXPECT_THAT(lines(), ElementsAre(line(0x81000013U), line(0x1E000A33U)));
}

TEST_F(SendRequest, LogsNothingOnSuccess)
{
    EXPECT_EQ(send({1, 2, 3}), 0U);
    EXPECT_THAT(lines(), IsEmpty());
}

} // namespace
