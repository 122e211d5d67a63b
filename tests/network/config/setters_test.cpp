// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What all setters have in common: the request that travels, the checks before it, the result, the
// line and the sentence behind it.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::Setter;
using testing::ElementsAre;

class EverySetter : public fake::FakePlatformRows<Setter> {
protected:
    std::vector<Bytes> zeros() const
    {
        std::vector<Bytes> records;
        for (const std::size_t size : GetParam().sizes) {
            records.emplace_back(size);
        }
        return records;
    }
    std::vector<Bytes> patterns() const
    {
        std::vector<Bytes> records;
        for (const std::size_t size : GetParam().sizes) {
            records.push_back(setters::pattern(size, records.size()));
        }
        return records;
    }
    /* The records that a success reads back. */
    void installRecords()
    {
        platform.setRecord(NW_KEY_HOSTNAME, Bytes(260));
        platform.setRecord(NW_KEY_DNS, Bytes(1776));
    }
};

TEST_P(EverySetter, SendsItsRecordsInAZeroedRequest)
{
    const std::vector<Bytes> records = patterns();
    Context context;
    installRecords();

    setters::send(GetParam(), records, context);

    EXPECT_THAT(setters::sentRequests(),
                ElementsAre(setters::requestOf(GetParam().command, GetParam().payload(records))));
}

TEST_P(EverySetter, SendsZerosToo)
{
    const std::vector<Bytes> records = zeros();
    Context context;
    installRecords();

    EXPECT_EQ(setters::send(GetParam(), records, context), 0U);

    EXPECT_THAT(setters::sentRequests(),
                ElementsAre(setters::requestOf(GetParam().command, Bytes())));
}

TEST_P(EverySetter, ThatChangesNothingSaysNothing)
{
    Context context;
    installRecords();

    EXPECT_EQ(setters::send(GetParam(), zeros(), context), 0U);

    EXPECT_EQ(context.text(setters::mainSlot), "");
    context.expectUntouchedBut({});
}

TEST_P(EverySetter, TakesAnEmptyAnswerForSuccess)
{
    for (const auto &answer : {fake::RpcAnswer::noMessage(), fake::RpcAnswer::noData()}) {
        platform.reset();
        installRecords();
        platform.answerRpc(answer);
        Context context;

        EXPECT_EQ(setters::send(GetParam(), zeros(), context), 0U);

        EXPECT_EQ(context.text(setters::mainSlot), "");
    }
}

TEST_P(EverySetter, NamesTheFirstNullPointerInItsOrder)
{
    const Setter &setter = GetParam();
    const std::vector<Bytes> records = patterns();
    const std::size_t count = records.size();
    for (std::size_t missing = 1; missing < (2U << count); ++missing) {
        platform.reset();
        Context context;
        Setter::Records pointers;
        std::string first;
        for (std::size_t i = 0; i <= count; ++i) {
            const bool null = (missing >> i & 1U) != 0;
            if (null && first.empty()) {
                first = i < count ? setter.parameters[i] : "pstOperLog";
            }
            if (i < count) {
                pointers.push_back(null ? nullptr : records[i].data());
            }
        }
        NW_OPER_LOG_S *log = (missing >> count & 1U) != 0 ? nullptr : context.get();

        EXPECT_EQ(setter.call(pointers, log), 0x81000002U) << missing;

        EXPECT_THAT(lines(), ElementsAre(fake::isNullLine(first, setter.function))) << missing;
        EXPECT_EQ(platform.calls().size(), 1U) << "something else was asked of the platform";
        context.expectUntouched();
    }
}

INSTANTIATE_TEST_SUITE_P(Setters, EverySetter, testing::ValuesIn(setters::all()), fake::RowName());

/* ---- Failures ---- */

struct Answer {
    std::string name;
    fake::RpcAnswer answer;
    std::uint32_t result;
    std::uint32_t word; /* of the response */
    const char *port;
};

/* clang-format off */
const Answer answers[] = {
    {"Refused",      fake::RpcAnswer::response(0x1E000A27, 1), 0x1E000A27, 0x1E000A27, "shared port"},
    {"RefusedPort0", fake::RpcAnswer::response(0x1E000004, 0), 0x1E000004, 0x1E000004, "dedicated port"},
    {"RefusedPort2", fake::RpcAnswer::response(1, 2),          1,          1, "active/standby port"},
    {"RefusedPort3", fake::RpcAnswer::response(0xFFFFFFFF, 3), 0xFFFFFFFF, 0xFFFFFFFF, ""},
    {"Transport",    fake::RpcAnswer::failure(-7),             setters::transportFailed, 0, "dedicated port"},
    {"TransportWithMessage", fake::RpcAnswer::failureWithMessage(9), setters::transportFailed, 0, "dedicated port"},
};
/* clang-format on */

struct FailureRow {
    std::string name;
    Setter setter;
    Answer answer;
};

std::vector<FailureRow> failureRows()
{
    std::vector<FailureRow> rows;
    for (const Setter &setter : setters::all()) {
        for (const Answer &answer : answers) {
            rows.push_back({setter.name + answer.name, setter, answer});
        }
    }
    return rows;
}

class FailedSetter : public fake::FakePlatformRows<FailureRow> {};

TEST_P(FailedSetter, AnswersLogsAndLeavesItsSentence)
{
    const auto &[name, setter, answer] = GetParam();
    std::vector<Bytes> records;
    for (const std::size_t size : setter.sizes) {
        records.push_back(setters::pattern(size));
    }
    platform.answerRpc(answer.answer);
    Context context(setters::poison);

    EXPECT_EQ(setters::send(setter, records, context),
              setter.answersWord ? answer.word : answer.result);

    const auto failure = setters::failureLine(setter, answer.result);
    if (setter.failure == nullptr) {
        EXPECT_THAT(lines(), ElementsAre(failure));
        context.expectUntouched();
        return;
    }
    const std::string sentence = fake::formatted(setter.failure, answer.port);
    setters::expectSentence(context, sentence);
    EXPECT_THAT(lines(), ElementsAre(failure, setters::operLogLine(sentence)));
    EXPECT_THAT(platform.callNames(),
                ElementsAre("MRPC_Call", "MRPC_MsgFree", "BMC_DiagLogOut", "BMC_DiagLogOut"));
}

INSTANTIATE_TEST_SUITE_P(Setters, FailedSetter, testing::ValuesIn(failureRows()), fake::RowName());

} // namespace
