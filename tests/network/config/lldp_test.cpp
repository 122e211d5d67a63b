// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// LLDP: the record with its fixed names, and the two setters that make a request of one value.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::mainSlot;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::size_t recordSize = 604;

Bytes storedRecord(std::uint8_t state, std::uint8_t mode)
{
    Bytes record = setters::pattern(recordSize);
    record[0] = state;
    record[1] = mode;
    return record;
}

Bytes requestOf(std::uint8_t mask, std::uint8_t state, std::uint8_t mode)
{
    return setters::requestOf(2, {0, 0, 0, 0, mask, state, mode, 0});
}

const fake::LineMatcher failedSet = setters::failureLine(setters::named("Lldp"), 0);
const char *const failedSentence = "Failed to configure LLDP settings.";

/* ---- Reading ---- */

using Lldp = fake::FakePlatformTest;

// What stands behind the names' terminators is the database's.
TEST_F(Lldp, IsReadWholeWithTheNamesOfTheTwoPorts)
{
    Bytes expected = storedRecord(7, 9);
    platform.setRecord(NW_KEY_LLDP, expected);
    support::putText(expected, 8, std::string("eth0") + '\0');
    support::putText(expected, 308, std::string("eth1") + '\0');

    const setters::Answer answer = setters::get(LIB_NW_GetLLDP);

    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(answer.record, expected);
    EXPECT_THAT(lines(), IsEmpty());
}

struct ReadFailure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    std::uint32_t result;
    fake::LineMatcher line;
};

/* clang-format off */
const ReadFailure readFailures[] = {
    {"NoEnvironment", [](auto &platform) { platform.failOpen(); }, 0x81000001,
     fake::isErrorLine("Failed to open lmdb database.")},
    {"NoDatabase", [](auto &platform) { platform.failCurrentDb(); }, 0x81000005,
     fake::isErrorLine("Failed to create LMDB environment.")},
    {"NoRecord", [](auto &platform) { platform.failGet(NW_KEY_LLDP, -30, Bytes(604, 3)); }, 0x81000006,
     fake::isErrorLine("Get lldp info failed, Ret:%d", -30)},
};
/* clang-format on */

class LldpReadFailure : public fake::FakePlatformRows<ReadFailure> {
protected:
    LldpReadFailure()
    {
        GetParam().script(platform);
    }
};

TEST_P(LldpReadFailure, AnswersTheAccessorsCodeAndLeavesTheRecord)
{
    const setters::Answer answer = setters::get(LIB_NW_GetLLDP);

    EXPECT_EQ(answer.result, GetParam().result);
    EXPECT_EQ(answer.record, Bytes(recordSize, setters::poison));
    EXPECT_THAT(lines(),
                ElementsAre(GetParam().line, fake::isErrorLine("Failed to get lldp info!")));
}

TEST_P(LldpReadFailure, RefusesAChangeOfReception)
{
    for (const std::uint32_t request : {0U, 1U}) {
        platform.clearCalls();
        Context context(setters::poison);

        EXPECT_EQ(LIB_NW_LLDPRxEnable(request, context.get()), 0x81000001U);

        setters::expectSentence(context, failedSentence);
        EXPECT_THAT(setters::sentRequests(), IsEmpty());
        EXPECT_THAT(
            lines(),
            ElementsAre(GetParam().line, fake::isErrorLine("Failed to get lldp info!"),
                        setters::codeLine("LIB_NW_GetLLDP failed iRet is %d.", GetParam().result),
                        setters::operLogLine(failedSentence)));
    }
}

INSTANTIATE_TEST_SUITE_P(Failures, LldpReadFailure, testing::ValuesIn(readFailures),
                         fake::RowName());

/* ---- Setting the record ---- */

struct SentenceRow {
    std::string name;
    Bytes request; /* bytes 4 to 6 */
    std::string sentence;
};

class LldpSentence : public fake::FakePlatformRows<SentenceRow> {};

TEST_P(LldpSentence, TellsWhatTheRequestChanges)
{
    Bytes request = setters::pattern(8);
    support::put(request, 4, GetParam().request);
    Context context;

    EXPECT_EQ(setters::send(setters::named("Lldp"), {request}, context), 0U);

    setters::expectSentence(context, GetParam().sentence);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(GetParam().sentence)));
}

const std::string done = "Configured LLDP settings successfully";
/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Changes, LldpSentence, testing::Values(
    SentenceRow{"State",    {1, 1, 3}, done + ", LLDP state: Enabled."},
    SentenceRow{"Off",      {1, 0, 3}, done + ", LLDP state: Disabled."},
    SentenceRow{"Mode",     {2, 1, 2}, done + ", LLDP work mode: RX."},
    SentenceRow{"Both",     {3, 9, 1}, done + ", LLDP state: Enabled, LLDP work mode: TX."},
    SentenceRow{"Unknown",  {2, 0, 4}, done + ", LLDP work mode: Unknown."},
    SentenceRow{"OtherBit", {4, 1, 3}, done + "."}),
    fake::RowName());
/* clang-format on */

/* ---- Reception ---- */

struct ReceptionRow {
    std::string name;
    std::uint32_t request;
    std::uint8_t storedState, storedMode;
    std::uint8_t state, mode; /* sent */
};

class LldpReception : public fake::FakePlatformRows<ReceptionRow> {};

TEST_P(LldpReception, IsSwitchedInTheStoredMode)
{
    const ReceptionRow &row = GetParam();
    platform.setRecord(NW_KEY_LLDP, storedRecord(row.storedState, row.storedMode));
    Context context;

    EXPECT_EQ(LIB_NW_LLDPRxEnable(row.request, context.get()), 0U);

    EXPECT_THAT(setters::sentRequests(), ElementsAre(requestOf(3, row.state, row.mode)));
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(context.text(mainSlot))));
    EXPECT_THAT(context.text(mainSlot), testing::StartsWith(done + ", LLDP state: "));
    context.expectUntouchedBut({mainSlot});
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Modes, LldpReception, testing::Values(
    ReceptionRow{"OnFromNone",         1, 0, 0,    1, 2},
    ReceptionRow{"OnFromTransmit",     1, 0, 1,    1, 3},
    ReceptionRow{"OnFromReceive",      1, 1, 2,    1, 2},
    ReceptionRow{"OnFromBoth",         1, 1, 3,    1, 3},
    ReceptionRow{"OnFromOddState",     1, 7, 1,    1, 3},
    ReceptionRow{"OnFromOddMode",      1, 1, 0xFC, 1, 0xFE},
    ReceptionRow{"OffFromNone",        0, 1, 0,    1, 0},
    ReceptionRow{"OffFromTransmit",    0, 1, 1,    1, 1},
    // Receive only: nothing would be left, so LLDP goes off as a whole and keeps its mode.
    ReceptionRow{"OffFromReceive",     0, 1, 2,    0, 2},
    ReceptionRow{"OffFromReceiveOdd",  0, 7, 2,    0, 2},
    ReceptionRow{"OffFromBoth",        0, 1, 3,    1, 1},
    ReceptionRow{"OffFromBothDisabled", 0, 0, 3,   0, 1},
    ReceptionRow{"OffKeepsOddState",   0, 7, 3,    7, 1},
    ReceptionRow{"OffFromOddMode",     0, 1, 6,    1, 4},
    ReceptionRow{"OffFromFullMode",    0, 1, 0xFF, 1, 0xFD}),
    fake::RowName());
/* clang-format on */

class LldpSwitch : public fake::FakePlatformTest {
protected:
    LldpSwitch()
    {
        platform.setRecord(NW_KEY_LLDP, storedRecord(1, 3));
    }
};

/* The two functions that make a request of one value. */
struct Switch {
    std::string name;
    std::uint32_t (*call)(std::uint32_t value, NW_OPER_LOG_S *context);
    std::vector<std::uint32_t> invalid;
    const char *invalidLine;
    const char *failedLine;
    bool passesOn; /* the setter's code instead of the general one */
};

class LldpSwitches : public LldpSwitch, public testing::WithParamInterface<Switch> {};

TEST_P(LldpSwitches, RefuseOtherValuesUnread)
{
    for (const std::uint32_t value : GetParam().invalid) {
        platform.clearCalls();
        Context context(setters::poison);

        EXPECT_EQ(GetParam().call(value, context.get()), 0x81000001U);

        setters::expectSentence(context, failedSentence);
        EXPECT_THAT(lines(), ElementsAre(setters::codeLine(GetParam().invalidLine, value),
                                         setters::operLogLine(failedSentence)));
        EXPECT_THAT(platform.callNames(), ElementsAre("BMC_DiagLogOut", "BMC_DiagLogOut"));
    }
}

struct Refusal {
    fake::RpcAnswer answer;
    std::uint32_t result;
};
const Refusal refusals[] = {{fake::RpcAnswer::response(0x1E000031, 2), 0x1E000031},
                            {fake::RpcAnswer::failure(-1), setters::transportFailed}};

// The setter has written the operation log; it is not written again.
TEST_P(LldpSwitches, ReportAFailedChangeOnce)
{
    for (const auto &[answer, result] : refusals) {
        platform.clearCalls();
        platform.answerRpc([&reply = answer](const fake::Call &) { return reply; });
        Context context(setters::poison);

        EXPECT_EQ(GetParam().call(1, context.get()), GetParam().passesOn ? result : 0x81000001U);

        setters::expectSentence(context, failedSentence);
        EXPECT_THAT(lines(), ElementsAre(failedSet, setters::operLogLine(failedSentence),
                                         setters::codeLine(GetParam().failedLine, result)));
    }
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Functions, LldpSwitches, testing::Values(
    Switch{"Reception", LIB_NW_LLDPRxEnable, {2, 256, 257, 0x80000000, 0xFFFFFFFF},
           "invalid req value[%d].", "Set lldp rx enable failed: %d.", false},
    Switch{"Ipmi", LIB_NW_IPMI_LLDPEnable, {8, 9, 255, 256, 257, 0x80000001, 0xFFFFFFFF},
           "Lldp enable[%d] is invalid.", "Ipmi set lldp enable failed: %d.", true}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

/* ---- IPMI values ---- */

struct IpmiRow {
    std::uint32_t value;
    std::uint8_t mask, state, mode;
    std::string fields;
};

class LldpIpmi : public fake::FakePlatformTest, public testing::WithParamInterface<IpmiRow> {};

TEST_P(LldpIpmi, IsSentWithoutReadingTheRecord)
{
    const IpmiRow &row = GetParam();
    Context context;

    EXPECT_EQ(LIB_NW_IPMI_LLDPEnable(row.value, context.get()), 0U);

    EXPECT_THAT(setters::sentRequests(), ElementsAre(requestOf(row.mask, row.state, row.mode)));
    EXPECT_EQ(context.text(mainSlot), done + row.fields);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(done + row.fields)));
    EXPECT_THAT(setters::databaseReads(), IsEmpty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Values, LldpIpmi, testing::Values(
    IpmiRow{0, 1, 0, 0, ", LLDP state: Disabled."},
    IpmiRow{1, 1, 1, 0, ", LLDP state: Enabled."},
    IpmiRow{2, 3, 0, 1, ", LLDP state: Disabled, LLDP work mode: TX."},
    IpmiRow{3, 3, 1, 1, ", LLDP state: Enabled, LLDP work mode: TX."},
    IpmiRow{4, 3, 0, 2, ", LLDP state: Disabled, LLDP work mode: RX."},
    IpmiRow{5, 3, 1, 2, ", LLDP state: Enabled, LLDP work mode: RX."},
    IpmiRow{6, 3, 0, 3, ", LLDP state: Disabled, LLDP work mode: TXRX."},
    IpmiRow{7, 3, 1, 3, ", LLDP state: Enabled, LLDP work mode: TXRX."}),
    [](const auto &row) { return "Value" + std::to_string(row.param.value); });
/* clang-format on */

} // namespace
