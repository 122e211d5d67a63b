// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The four RPC channels: what they send, and what each makes of every kind of answer. */
#include <numeric>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using fake::RpcAnswer;
using testing::ElementsAre;

constexpr std::size_t responseSize = 264;
constexpr std::uint8_t poison = 0xA5;
constexpr std::uint32_t poisonWord = 0xA5A5A5A5U;

using Send = std::uint32_t (*)(void *request, std::uint32_t *response, std::uint32_t timeout);

struct Channel {
    std::string name;
    Send send;
    std::uint32_t service;
    std::uint32_t function;
    std::uint32_t length; /* of the request */
};

std::uint32_t sendToBlade(void *request, std::uint32_t *response, std::uint32_t timeout)
{
    return LIB_BLADE_RPC_WriteConfig(request, timeout, response);
}

std::uint32_t sendToIpmi(void *request, std::uint32_t *, std::uint32_t timeout)
{
    return NW_SendIpmiRpc(request, timeout);
}

const Channel network{"Network", Network_RPC_Comm, 24, 28, 3074};
const Channel chassis{"Chassis", NetworkOa_RPC_Comm, 52, 30, 3074};
const Channel blade{"Blade", sendToBlade, 52, 51, 1};
const Channel ipmi{"Ipmi", sendToIpmi, 80, 31, 3074};

Bytes poisonedResponse()
{
    return Bytes(responseSize, poison);
}

std::uint32_t *words(Bytes &response, std::size_t at = 0)
{
    return reinterpret_cast<std::uint32_t *>(response.data() + at);
}

Bytes counted(std::size_t size)
{
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

class RpcRequest : public fake::FakePlatformRows<Channel> {};

TEST_P(RpcRequest, CarriesTheChannelsNumbersTheBytesAndTheTimeOut)
{
    const Channel &channel = GetParam();
    for (const std::uint32_t timeout : {0U, 10000U, 0xFFFFFFFFU}) {
        platform.clearCalls();
        Bytes request = counted(channel.length);
        Bytes response = poisonedResponse();

        channel.send(request.data(), words(response), timeout);

        ASSERT_THAT(platform.callNames(), ElementsAre("MRPC_Call", "MRPC_MsgFree"));
        const fake::Call &call = platform.calls().front();
        EXPECT_EQ(call.service, channel.service);
        EXPECT_EQ(call.function, channel.function);
        EXPECT_EQ(call.size, channel.length);
        EXPECT_EQ(call.data, counted(channel.length));
        EXPECT_EQ(call.timeout, timeout);
        EXPECT_FALSE(call.messagePresent) << "the message pointer must be null before the call";
        EXPECT_EQ(request, counted(channel.length));
    }
}

INSTANTIATE_TEST_SUITE_P(Channels, RpcRequest, testing::Values(network, chassis, blade, ipmi),
                         fake::RowName());

struct AnswerRow {
    std::string name;
    Channel channel;
    RpcAnswer answer;
    std::uint32_t result;
    Bytes response; /* afterwards */
};

Bytes untouched()
{
    return poisonedResponse();
}

/* Only the first word was stored. */
Bytes firstWord(std::uint32_t value)
{
    Bytes bytes = poisonedResponse();
    std::memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

const RpcAnswer refusal = RpcAnswer::response(0x1E000A27, 1, counted(256));
const RpcAnswer consent = RpcAnswer::response(0, 2, counted(256));

/* clang-format off */
const AnswerRow answerRows[] = {
    {"NetworkFailed",         network, RpcAnswer::failure(-110),            0x81000013, untouched()},
    {"NetworkFailedPositive", network, RpcAnswer::failure(1),               0x81000013, untouched()},
    {"NetworkFailedMessage",  network, RpcAnswer::failureWithMessage(5),    0x81000013, untouched()},
    {"NetworkNoMessage",      network, RpcAnswer::noMessage(),              0,          firstWord(0)},
    {"NetworkNoData",         network, RpcAnswer::noData(),                 0,          firstWord(0)},
    {"NetworkDone",           network, consent,                             0,          *consent.data},
    {"NetworkRefused",        network, refusal,                             0x1E000A27, *refusal.data},

    {"ChassisFailed",         chassis, RpcAnswer::failure(-110),            0x81000013, untouched()},
    {"ChassisFailedMessage",  chassis, RpcAnswer::failureWithMessage(5),    0x81000013, untouched()},
    {"ChassisNoMessage",      chassis, RpcAnswer::noMessage(),              0,          firstWord(0)},
    {"ChassisNoData",         chassis, RpcAnswer::noData(),                 poisonWord, untouched()},
    {"ChassisDone",           chassis, consent,                             0,          *consent.data},
    {"ChassisRefused",        chassis, refusal,                             0x1E000A27, *refusal.data},

    {"BladeFailed",           blade,   RpcAnswer::failure(-110),            0x81000013, untouched()},
    {"BladeFailedMessage",    blade,   RpcAnswer::failureWithMessage(5),    0x81000013, untouched()},
    {"BladeNoMessage",        blade,   RpcAnswer::noMessage(),              0x81000002, firstWord(0x81000002)},
    {"BladeNoData",           blade,   RpcAnswer::noData(),                 0,          untouched()},
    {"BladeDone",             blade,   consent,                             0,          *consent.data},
    {"BladeRefusedIsDone",    blade,   refusal,                             0,          *refusal.data},

    {"IpmiNoMessage",         ipmi,    RpcAnswer::noMessage(),              0,          untouched()},
    {"IpmiNoData",            ipmi,    RpcAnswer::noData(),                 0,          untouched()},
    {"IpmiRefusedIsDone",     ipmi,    refusal,                             0,          untouched()},
};
/* clang-format on */

class RpcAnswered : public fake::FakePlatformRows<AnswerRow> {};

TEST_P(RpcAnswered, GivesResultAndResponseAndReleasesTheMessage)
{
    const AnswerRow &row = GetParam();
    platform.answerRpc(row.answer);
    Bytes request(row.channel.length);
    Bytes response = poisonedResponse();

    EXPECT_EQ(row.channel.send(request.data(), words(response), 10000), row.result);

    EXPECT_EQ(response, row.response);
    EXPECT_THAT(platform.callNames(), ElementsAre("MRPC_Call", "MRPC_MsgFree"));
    EXPECT_EQ(platform.calls().back().messagePresent, row.answer.message);
}

TEST_P(RpcAnswered, AtAnyAlignment)
{
    const AnswerRow &row = GetParam();
    platform.answerRpc(row.answer);
    Bytes request(row.channel.length + 1);
    Bytes response(responseSize + 1, poison);

    EXPECT_EQ(row.channel.send(request.data() + 1, words(response, 1), 10000), row.result);

    EXPECT_EQ(Bytes(response.begin() + 1, response.end()), row.response);
    EXPECT_EQ(response.front(), poison);
}

INSTANTIATE_TEST_SUITE_P(Answers, RpcAnswered, testing::ValuesIn(answerRows), fake::RowName());

class IpmiRpc : public fake::FakePlatformTest, public testing::WithParamInterface<int> {};

TEST_P(IpmiRpc, FailureIsLoggedAndAnsweredWithThePlatformsOwnCode)
{
    platform.answerRpc(RpcAnswer::failureWithMessage(GetParam()));
    Bytes request(3074);

    EXPECT_EQ(NW_SendIpmiRpc(request.data(), 500), static_cast<std::uint32_t>(GetParam()));

    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Send IPMI rpc call with struct faild.")));
    EXPECT_THAT(platform.callNames(), ElementsAre("MRPC_Call", "BMC_DiagLogOut", "MRPC_MsgFree"));
}

TEST_P(IpmiRpc, FailureWithoutAMessageReleasesToo)
{
    platform.answerRpc(RpcAnswer::failure(GetParam()));
    Bytes request(3074);

    EXPECT_EQ(NW_SendIpmiRpc(request.data(), 500), static_cast<std::uint32_t>(GetParam()));

    EXPECT_EQ(lines().size(), 1U);
    EXPECT_EQ(platform.callsTo("MRPC_MsgFree").size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Codes, IpmiRpc, testing::Values(1, -1, -110, 0x1234));

} // namespace
