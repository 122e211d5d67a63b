// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Auto-negotiation: the sentence of a change, and the stored settings merged with the live ones.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::mainSlot;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

/* ---- Sentences ---- */

struct SentenceRow {
    std::string name;
    std::uint32_t dedicated, shared; /* words of the bitmap */
    std::string sentences;
};

class AutoNegotiationSentence : public fake::FakePlatformRows<SentenceRow> {};

// Behind four bytes that are not told: six bytes for each port, the speed a word.
const Bytes config = {0xE0, 0xE1, 0xE2, 0xE3, 1, 0, 0xE8, 0x03, 0, 0, 0, 1, 0xFF, 0xFF, 0xFF, 0xFF};

TEST_P(AutoNegotiationSentence, TellsThePortsThatChange)
{
    Bytes bitmap(8);
    support::putU32(bitmap, 0, GetParam().dedicated);
    support::putU32(bitmap, 4, GetParam().shared);
    Context context;

    EXPECT_EQ(setters::send(setters::named("AutoNegotiation"), {config, bitmap}, context), 0U);

    setters::expectSentence(context, GetParam().sentences);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(GetParam().sentences)));
}

/* clang-format off */
const std::string dedicated = "Configured auto-negotiation for the dedicated network port successfully";
const std::string shared = "Configured auto-negotiation for the shared network port successfully";
INSTANTIATE_TEST_SUITE_P(Changes, AutoNegotiationSentence, testing::Values(
    SentenceRow{"Dedicated", 7, 0, dedicated + ", auto-negotiation: Enabled, duplex: half, speed: 1000."},
    SentenceRow{"Shared",    0, 7, shared + ", auto-negotiation: Disabled, duplex: full, speed: -1."},
    SentenceRow{"Both",      1, 4, dedicated + ", auto-negotiation: Enabled." + shared + ", duplex: full."},
    SentenceRow{"Speed",     2, 0, dedicated + ", speed: 1000."},
    SentenceRow{"HighBit",   0x80000000, 0, dedicated + "."}),
    fake::RowName());
/* clang-format on */

/* ---- Reading ---- */

Bytes storedSettings(std::uint8_t firstOn)
{
    Bytes record = setters::pattern(21);
    record[0] = firstOn;
    return record;
}

std::vector<std::uint32_t> portsAsked()
{
    std::vector<std::uint32_t> ports;
    for (const fake::Call &call : fake::platform().callsTo("NW_GetAnStatus")) {
        ports.push_back(call.key);
    }
    return ports;
}

struct Row {
    std::string name;
    std::uint8_t firstOn;
    std::vector<std::uint32_t> asked;
};

class AutoNegotiation : public fake::FakePlatformRows<Row> {
protected:
    void install()
    {
        platform.setRecord(NW_KEY_AN_CFG, storedSettings(GetParam().firstOn));
        platform.setAnStatus(0, {0xA0, 0xA1, 0xA2});
        platform.setAnStatus(1, {0xB0, 0xB1, 0xB2});
        platform.setAnStatus(2, {0xC0, 0xC1, 0xC2});
    }
    bool firstIsLive() const
    {
        return GetParam().asked.front() == 0;
    }
};

// Port 0 keeps its stored auto-negotiation even when the rest is live.
TEST_P(AutoNegotiation, ShowsTheLiveStateInTheStoredSettings)
{
    install();
    Bytes expected = storedSettings(GetParam().firstOn);
    if (firstIsLive()) {
        support::put(expected, 1, Bytes{0xA1, 0xA2});
    }
    support::put(expected, 7, Bytes{0xB0, 0xB1, 0xB2});
    support::put(expected, 14, Bytes{0xC0, 0xC1, 0xC2});

    const setters::Answer answer = setters::get(LIB_NW_GetAnConfig);

    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(answer.record, expected);
    EXPECT_EQ(portsAsked(), GetParam().asked);
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_P(AutoNegotiation, IgnoresAFailedStatus)
{
    platform.setRecord(NW_KEY_AN_CFG, storedSettings(GetParam().firstOn));

    const setters::Answer answer = setters::get(LIB_NW_GetAnConfig);

    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(answer.record, storedSettings(GetParam().firstOn));
    EXPECT_EQ(portsAsked(), GetParam().asked);
    EXPECT_THAT(lines(), IsEmpty());
}

// What a failing status leaves in its outputs is taken as it is.
TEST_P(AutoNegotiation, TakesWhatAFailedStatusLeft)
{
    install();
    platform.setAnStatus(1, {.autoNegotiation = 0xB0, .duplex = 0xB1, .speed = 0xB2, .code = -1});

    const setters::Answer answer = setters::get(LIB_NW_GetAnConfig);

    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(Bytes(answer.record.begin() + 7, answer.record.begin() + 10),
              (Bytes{0xB0, 0xB1, 0xB2}));
    EXPECT_EQ(portsAsked(), GetParam().asked);
    EXPECT_THAT(lines(), IsEmpty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Modes, AutoNegotiation, testing::Values(
    Row{"On",    1,   {0, 1, 2}},
    Row{"Off",   0,   {1, 2}},
    Row{"Two",   2,   {1, 2}},
    Row{"Other", 255, {1, 2}}),
    fake::RowName());
/* clang-format on */

/* ---- Failures ---- */

struct Failure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    std::uint32_t result;
    fake::LineMatcher line;
};

class NoAutoNegotiation : public fake::FakePlatformRows<Failure> {};

TEST_P(NoAutoNegotiation, LeavesTheRecordAndAsksNoPort)
{
    platform.setRecord(NW_KEY_AN_CFG, storedSettings(1));
    GetParam().script(platform);

    const setters::Answer answer = setters::get(LIB_NW_GetAnConfig);

    EXPECT_EQ(answer.result, GetParam().result);
    EXPECT_EQ(answer.record, Bytes(21, setters::poison));
    EXPECT_THAT(portsAsked(), IsEmpty());
    EXPECT_THAT(lines(),
                ElementsAre(GetParam().line,
                            setters::codeLine("NW_LMDB_GetAnCfgInfo get AN status failed! iRet %d.",
                                              GetParam().result)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Failures, NoAutoNegotiation, testing::Values(
    Failure{"NoEnvironment", [](auto &platform) { platform.failOpen(); }, 0x81000001,
            fake::isErrorLine("Failed to open lmdb database.")},
    Failure{"NoDatabase", [](auto &platform) { platform.failCurrentDb(); }, 0x81000005,
            fake::isErrorLine("Failed to create LMDB environment.")},
    Failure{"NoRecord", [](auto &platform) { platform.failGet(NW_KEY_AN_CFG, 22, Bytes(21, 1)); }, 0x81000006,
            fake::isErrorLine("Get Ancfg info failed, Ret:%d", 22)}),
    fake::RowName());
/* clang-format on */

using AutoNegotiationRead = fake::FakePlatformTest;

TEST_F(AutoNegotiationRead, GoesIntoAZeroedRecord)
{
    platform.setRecord(NW_KEY_AN_CFG, storedSettings(0));

    setters::get(LIB_NW_GetAnConfig);

    ASSERT_EQ(setters::databaseReads().size(), 1U);
    EXPECT_EQ(setters::databaseReads()[0].data, Bytes(21));
}

} // namespace
