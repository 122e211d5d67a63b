// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The host name request, and the sentence that is read back from the database.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::mainSlot;
using testing::ElementsAre;

constexpr std::size_t confSize = 134;

std::uint32_t setHostName(std::uint8_t mask, const Bytes &conf, Context &context)
{
    const support::Guarded guarded(conf);
    return LIB_NW_SetHostName(mask, guarded.data(), context.get());
}

/* ---- Length of the name ---- */

struct LengthRow {
    std::string name;
    std::uint8_t length;
    std::size_t copied;
};

class HostNameLength : public fake::FakePlatformRows<LengthRow> {};

TEST_P(HostNameLength, BoundsWhatIsCopied)
{
    Bytes conf = setters::pattern(confSize);
    conf[5] = GetParam().length;
    Context context;

    EXPECT_EQ(setHostName(0xC0, conf, context), 0U);

    Bytes payload(136);
    support::put(payload, 0, std::span(conf).first(4));
    payload[4] = 0xC0;
    payload[5] = conf[4];
    payload[6] = GetParam().length;
    support::put(payload, 7, std::span(conf).subspan(6, GetParam().copied));
    support::put(payload, 71, std::span(conf).subspan(70, 64));
    EXPECT_THAT(setters::sentRequests(), ElementsAre(setters::requestOf(0, payload)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Lengths, HostNameLength, testing::Values(
    LengthRow{"None",         0,   0},
    LengthRow{"One",          1,   1},
    LengthRow{"OneShort",     63,  63},
    LengthRow{"Full",         64,  64},
    LengthRow{"OneTooLong",   65,  64},
    LengthRow{"AllThereIs",   128, 64},
    LengthRow{"Longest",      255, 64}),
    fake::RowName());
/* clang-format on */

/* ---- Sentences ---- */

struct SentenceRow {
    std::string name;
    std::uint8_t mask;
    std::uint8_t mode;
    std::string sentence;
};

class HostNameSentence : public fake::FakePlatformRows<SentenceRow> {};

TEST_P(HostNameSentence, TellsWhatTheDatabaseHolds)
{
    Bytes record(260, setters::poison);
    record[0] = GetParam().mode;
    support::putText(record, 68, std::string("node-7") + '\0');
    support::putText(record, 132, std::string("rack 12") + '\0');
    platform.setRecord(NW_KEY_HOSTNAME, record);
    Context context;

    EXPECT_EQ(setHostName(GetParam().mask, setters::pattern(confSize), context), 0U);

    setters::expectSentence(context, GetParam().sentence);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(GetParam().sentence)));
}

const std::string done = "Host name set successfully";
/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Masks, HostNameSentence, testing::Values(
    SentenceRow{"Nothing",      0x00, 0, ""},
    // A change of the mode alone also tells the name.
    SentenceRow{"Mode",         0x01, 0, done + ", host name mode: Manual, host name BMC: node-7."},
    SentenceRow{"AutomaticMode", 0x01, 9, done + ", host name mode: Auto, host name BMC: node-7."},
    SentenceRow{"Name",         0x02, 0, done + ", host name BMC: node-7."},
    SentenceRow{"BmcName",      0x04, 0, done + ", BMC name: rack 12."},
    SentenceRow{"All",          0x07, 1, done + ", host name mode: Auto, host name BMC: node-7, BMC name: rack 12."},
    SentenceRow{"UnknownBit",   0x80, 1, done + "."}),
    fake::RowName());
/* clang-format on */

/* ---- Results ---- */

using HostNameSet = fake::FakePlatformTest;

TEST_F(HostNameSet, SucceedsWithoutASentenceWhenItCannotBeReadBack)
{
    platform.failGet(NW_KEY_HOSTNAME, -5);
    Context context;

    EXPECT_EQ(setHostName(1, Bytes(confSize), context), 0U);

    EXPECT_EQ(context.text(mainSlot), "");
    EXPECT_EQ(context.level(), 6U);
    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Get hostname info failed, Ret:%d", -5),
                                     fake::isErrorLine("Failed to get hostname info!"),
                                     setters::operLogErrorLine(
                                         "[%d]Get BMCHostName Info from DB Failed.", 0x81000006U),
                                     setters::operLogLine("")));
}

// A request that never arrived is answered with success, but the failure is on record.
TEST_F(HostNameSet, ReportsSuccessAfterATransportFailure)
{
    platform.answerRpc(fake::RpcAnswer::failure(-110));
    Context context;

    EXPECT_EQ(setHostName(1, Bytes(confSize), context), 0U);

    EXPECT_EQ(context.text(mainSlot), "Failed to configure host name settings.");
    EXPECT_TRUE(setters::databaseReads().empty());
}

} // namespace
