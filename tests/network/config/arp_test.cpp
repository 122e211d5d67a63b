// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// ARP control: suspending on one port, updating the status, resuming as a whole.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::mainSlot;
using testing::ElementsAre;

constexpr std::uint8_t untouched = 0x77;

/* ---- Suspending ---- */

struct Suspended {
    std::uint32_t result;
    std::uint8_t status;
};

Suspended suspend(const Bytes &request, Context &context)
{
    const support::Guarded guarded(request), status(1, untouched);
    const std::uint32_t result = LIB_NW_SuspendBMCArp(guarded.data(), status.data(), context.get());
    return {result, *status.data()};
}

/* Data behind the two words of the response: byte 12 is not byte 13. */
const Bytes statusData = {0x20, 0x21, 0x22, 0x23, 0x12, 0x13, 0x24};

struct Row {
    std::string name;
    std::uint32_t detail;
    std::uint8_t value;
    std::string sentence;
};

class ArpSuspend : public fake::FakePlatformRows<Row> {};

TEST_P(ArpSuspend, StoresTheStatusAndTellsThePortAnswered)
{
    const Row &row = GetParam();
    platform.answerRpc(fake::RpcAnswer::response(0, row.detail, statusData));
    Context context;

    const auto [result, status] = suspend({0xC3, row.value}, context);

    EXPECT_EQ(result, 0U);
    EXPECT_EQ(status, 0x13);
    EXPECT_THAT(setters::sentRequests(), ElementsAre(setters::requestOf(5, {0xC3, row.value})));
    setters::expectSentence(context, row.sentence);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(row.sentence)));
}

/* clang-format off */
const std::string done = "LAN settings configured successfully for ";
const std::string announce = "suspend BMC-generated Gratuitous ARPs while the Watchdog Timer is running";
const std::string respond = "suspend BMC-generated ARP responses while Watchdog Timer is running";
const std::string noRespond = "do not suspend BMC-generated ARP responses while the Watchdog Timer is running";
const std::string label = ", ARP suspend: ";
INSTANTIATE_TEST_SUITE_P(Ports, ArpSuspend, testing::Values(
    Row{"First",   0, 1, done + "dedicated port" + label + announce + ", " + noRespond + "."},
    Row{"Second",  1, 3, done + "shared port" + label + announce + ", " + respond + "."},
    Row{"Bond",    2, 0, done + "active/standby port" + label + "do not " + announce + ", " + noRespond + "."},
    // No such port: none is marked.
    Row{"Port3",   3, 3, ""},
    Row{"PortWhoseOffsetWrapsAround", 0x20000000, 3, ""},
    Row{"HighestPort", 0xFFFFFFFF, 3, ""}),
    fake::RowName());
/* clang-format on */

struct Failure {
    std::string name;
    fake::RpcAnswer answer;
    std::uint32_t logged;
    const char *port;
};

class ArpSuspendFailure : public fake::FakePlatformRows<Failure> {};

TEST_P(ArpSuspendFailure, HasOneCodeAndLeavesTheStatus)
{
    const Failure &row = GetParam();
    platform.answerRpc(row.answer);
    Context context(setters::poison);

    const auto [result, status] = suspend({1, 1}, context);

    EXPECT_EQ(result, 0x1E000005U);
    EXPECT_EQ(status, untouched);
    const std::string sentence =
        fake::formatted("Failed to configure LAN settings for %s.", row.port);
    setters::expectSentence(context, sentence);
    EXPECT_THAT(lines(),
                ElementsAre(setters::codeLine("BMC_RPC_CallWithStruct Failed when suspending BMC "
                                              "ARPs, iRet:%d",
                                              row.logged),
                            setters::operLogLine(sentence)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Answers, ArpSuspendFailure, testing::Values(
    Failure{"Refused",      fake::RpcAnswer::response(0x1E000031, 1, statusData), 0x1E000031, "shared port"},
    Failure{"RefusedBond",  fake::RpcAnswer::response(1, 2, statusData), 1, "active/standby port"},
    // The local code does not reach the operation log: the port is named.
    Failure{"LocalCode",    fake::RpcAnswer::response(0x9E0000FF, 1), 0x9E0000FF, "shared port"},
    // Passed on as it is; it has no name.
    Failure{"RefusedPort3", fake::RpcAnswer::response(7, 3), 7, ""},
    Failure{"RefusedHighestPort", fake::RpcAnswer::response(7, 0xFFFFFFFF), 7, ""},
    Failure{"Transport",    fake::RpcAnswer::failure(-5), setters::transportFailed, "dedicated port"},
    Failure{"TransportWithMessage", fake::RpcAnswer::failureWithMessage(5), setters::transportFailed, "dedicated port"}),
    fake::RowName());
/* clang-format on */

using Arp = fake::FakePlatformTest;

TEST_F(Arp, SuspendedWithAnEmptyAnswerHasStatusZero)
{
    platform.answerRpc(fake::RpcAnswer::noMessage());
    Context context;

    const auto [result, status] = suspend({0, 2}, context);

    EXPECT_EQ(result, 0U);
    EXPECT_EQ(status, 0U);
    EXPECT_THAT(context.text(mainSlot), testing::StartsWith(done + "dedicated port" + label));
}

/* ---- Updating ---- */

Suspended update(std::uint32_t first, std::uint8_t second, std::uint32_t third)
{
    const support::Guarded status(1, untouched);
    const std::uint32_t result = LIB_NW_UpdateArpStatus(first, second, third, status.data());
    return {result, *status.data()};
}

TEST_F(Arp, UpdateCarriesItsArgumentsWithoutGaps)
{
    platform.answerRpc(fake::RpcAnswer::response(0, 1, statusData));

    const auto [result, status] = update(0x04030201, 0x05, 0x09080706);

    EXPECT_EQ(result, 0U);
    EXPECT_EQ(status, 0x12);
    EXPECT_THAT(setters::sentRequests(),
                ElementsAre(setters::requestOf(6, {1, 2, 3, 4, 5, 6, 7, 8, 9})));
    EXPECT_THAT(platform.callNames(), ElementsAre("MRPC_Call", "MRPC_MsgFree"));
}

TEST_F(Arp, ResumeCarriesItsArgument)
{
    EXPECT_EQ(LIB_NW_ResumeSuspendBMCArps(0xD4C3B2A1), 0U);

    EXPECT_THAT(setters::sentRequests(),
                ElementsAre(setters::requestOf(7, {0xA1, 0xB2, 0xC3, 0xD4})));
    EXPECT_THAT(platform.callNames(), ElementsAre("MRPC_Call", "MRPC_MsgFree"));
}

struct Refusal {
    std::string name;
    fake::RpcAnswer answer;
    std::uint32_t logged;
};

class ArpRefusal : public fake::FakePlatformRows<Refusal> {
protected:
    /* Update and resume share their line. */
    void expectOneLine() const
    {
        EXPECT_THAT(lines(), ElementsAre(setters::codeLine(
                                 "BMC_RPC_CallWithStruct Failed when updating ARP status, iRet:%d",
                                 GetParam().logged)));
    }
};

TEST_P(ArpRefusal, OfAnUpdateHasItsOwnCode)
{
    platform.answerRpc(GetParam().answer);

    const auto [result, status] = update(1, 2, 3);

    EXPECT_EQ(result, 0x1E000006U);
    EXPECT_EQ(status, untouched);
    expectOneLine();
}

TEST_P(ArpRefusal, OfAResumeHasItsOwnCode)
{
    platform.answerRpc(GetParam().answer);

    EXPECT_EQ(LIB_NW_ResumeSuspendBMCArps(1), 0x1E000007U);

    expectOneLine();
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Answers, ArpRefusal, testing::Values(
    Refusal{"Refused",   fake::RpcAnswer::response(0x1E000031, 1, statusData), 0x1E000031},
    Refusal{"Transport", fake::RpcAnswer::failure(-110), setters::transportFailed},
    Refusal{"TransportWithMessage", fake::RpcAnswer::failureWithMessage(5), setters::transportFailed}),
    fake::RowName());
/* clang-format on */

} // namespace
