// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The interface state for callers, and the port that an IPMI channel selects.
#include <optional>

#include "lan_record.hpp"
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::size_t viewSize = 57;

fake::LineMatcher stateLine(const char *format)
{
    return fake::isLine(fake::networkUnit, fake::ifcFail, format);
}

using InterfaceState = fake::FakePlatformTest;

TEST_F(InterfaceState, ShowsItsPartOfTheRecord)
{
    const Bytes record = setters::pattern(84);
    platform.setRecord(NW_KEY_IFC_STATE, record);
    Bytes expected(viewSize);
    support::put(expected, 0, std::span(record).first(5));
    expected[5] = record[6];
    support::put(expected, 6, std::span(record).subspan(32, 51));

    const setters::Answer answer = setters::get(LIB_NW_GetInterfaceState);

    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(answer.record, expected);
    EXPECT_THAT(lines(), IsEmpty());
    ASSERT_EQ(setters::databaseReads().size(), 1U);
    EXPECT_EQ(setters::databaseReads()[0].data, Bytes(84)) << "not read into a zeroed record";
}

struct Failure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    std::uint32_t result;
    const char *line;
};

/* clang-format off */
const Failure failures[] = {
    {"NoEnvironment", [](auto &platform) { platform.failOpen(); }, 0x81000001, "Failed to open lmdb database."},
    {"NoDatabase", [](auto &platform) { platform.failCurrentDb(); }, 0x81000001,
     "Failed to get interface state lmdb information!\n"},
    // The database's own code passes through.
    {"NoRecord", [](auto &platform) { platform.failGet(NW_KEY_IFC_STATE, -30798, Bytes(84, 1)); },
     static_cast<std::uint32_t>(-30798), "Get interface state info failed!\n"},
};
/* clang-format on */

class NoInterfaceState : public fake::FakePlatformRows<Failure> {
protected:
    NoInterfaceState()
    {
        platform.setRecord(NW_KEY_IFC_STATE, support::ifcRecord());
        GetParam().script(platform);
    }
};

TEST_P(NoInterfaceState, IsAnsweredWithTheAccessorsCode)
{
    const setters::Answer answer = setters::get(LIB_NW_GetInterfaceState);

    EXPECT_EQ(answer.result, GetParam().result);
    EXPECT_EQ(answer.record, Bytes(viewSize, setters::poison));
    EXPECT_THAT(lines(), ElementsAre(stateLine(GetParam().line),
                                     stateLine("Failed to get interface state info.")));
}

// The record is read before the channel is looked at.
TEST_P(NoInterfaceState, SelectsNoChannel)
{
    for (const std::uint32_t channel : {1U, 2U}) {
        platform.clearCalls();
        std::uint32_t index = 77;

        EXPECT_EQ(NW_CheckChannel(channel, &index), 0x81000001U);

        EXPECT_EQ(index, 77U);
        EXPECT_THAT(lines(), ElementsAre(stateLine(GetParam().line),
                                         fake::isErrorLine("failed to get netmode.")));
    }
}

INSTANTIATE_TEST_SUITE_P(Failures, NoInterfaceState, testing::ValuesIn(failures), fake::RowName());

/* ---- Channels ---- */

using Channels = std::array<std::uint8_t, 3>;
using Present = std::array<std::uint8_t, 3>;

struct Row {
    std::string name;
    std::uint32_t channel;
    std::uint8_t mode;
    Channels channels;
    Present present;
    std::uint32_t result;
    std::optional<std::uint32_t> index;
    std::vector<fake::LineMatcher> lines;
};

class Channel : public fake::FakePlatformRows<Row> {};

TEST_P(Channel, SelectsAPort)
{
    const Row &row = GetParam();
    Bytes record(84, setters::poison);
    record[0] = row.mode;
    support::put(record, 2, row.present);
    support::put(record, 32, row.channels);
    platform.setRecord(NW_KEY_IFC_STATE, record);
    const support::Guarded index(4, 0xEE);

    EXPECT_EQ(NW_CheckChannel(row.channel, reinterpret_cast<std::uint32_t *>(index.data())),
              row.result);

    std::uint32_t stored = 0;
    std::memcpy(&stored, index.data(), sizeof(stored));
    EXPECT_EQ(stored, row.index.value_or(0xEEEEEEEEU));
    EXPECT_THAT(lines(), ElementsAreArray(row.lines));
}

fake::LineMatcher wrongChannel(std::uint32_t channel)
{
    return setters::codeLine("Channel[%d] is invalid,param is out of range.", channel);
}

/* clang-format off */
const Present all = {1, 1, 1};
const auto absent = fake::isErrorLine("Current port is not supported.");
const auto badMode = fake::isErrorLine("Invalid netmode param.");
// The mode is printed where one would expect the channel.
const auto notBonds = fake::isErrorLine("Channel num is invalid,channel is only %d in adapt mode .", 1);
INSTANTIATE_TEST_SUITE_P(Rows, Channel, testing::Values(
    Row{"FirstPort",          1, 0, {1, 8, 1}, all, 0, 0, {}},
    Row{"SecondPort",         8, 0, {1, 8, 1}, all, 0, 1, {}},
    Row{"FirstPortIsEight",   8, 0, {8, 1, 1}, all, 0, 0, {}},
    Row{"SecondPortIsOne",    1, 0, {8, 1, 8}, all, 0, 1, {}},
    // What is not the first port's is the second's, without a look at its channel.
    Row{"SecondPortUnasked",  1, 0, {8, 5, 8}, all, 0, 1, {}},
    Row{"BothTheSame",        8, 0, {8, 8, 8}, all, 0, 0, {}},
    Row{"Bonded",             1, 1, {9, 9, 1}, all, 0, 2, {}},
    Row{"BondedEight",        8, 1, {1, 1, 8}, all, 0, 2, {}},
    Row{"OnlyTheFirstPort",   1, 0, {1, 8, 1}, {0xFF, 0, 0}, 0, 0, {}},
    Row{"OnlyTheSecondPort",  8, 0, {1, 8, 1}, {0, 2, 0}, 0, 1, {}},
    Row{"OnlyTheBond",        1, 1, {9, 9, 1}, {0, 0, 0x80}, 0, 2, {}},
    Row{"FirstPortAbsent",    1, 0, {1, 8, 1}, {0, 1, 1}, 0x01000002, 0, {absent}},
    Row{"SecondPortAbsent",   8, 0, {1, 8, 1}, {1, 0, 1}, 0x01000002, 1, {absent}},
    Row{"BondAbsent",         8, 1, {1, 8, 8}, {1, 1, 0}, 0x01000002, 2, {absent}},
    Row{"NotTheBonds",        1, 1, {1, 1, 8}, all, 0x81000003, {}, {notBonds}},
    Row{"NotTheBondsEight",   8, 1, {8, 8, 1}, all, 0x81000003, {}, {notBonds}},
    Row{"Mode2",              1, 2, {1, 1, 1}, all, 0x81000003, {}, {badMode}},
    Row{"Mode255",            8, 255, {8, 8, 8}, all, 0x81000003, {}, {badMode}},
    Row{"Channel0",           0, 0, {0, 0, 0}, all, 0x81000003, {}, {wrongChannel(0)}},
    Row{"Channel2",           2, 0, {2, 2, 2}, all, 0x81000003, {}, {wrongChannel(2)}},
    Row{"Channel2Bonded",     2, 1, {2, 2, 2}, all, 0x81000003, {}, {wrongChannel(2)}},
    // The channel is judged before the mode.
    Row{"Channel2InMode2",    2, 2, {2, 2, 2}, all, 0x81000003, {}, {wrongChannel(2)}},
    Row{"Channel7",           7, 1, {7, 7, 7}, all, 0x81000003, {}, {wrongChannel(7)}},
    Row{"Channel9",           9, 0, {9, 9, 9}, all, 0x81000003, {}, {wrongChannel(9)}},
    // A word, not a byte.
    Row{"Channel257",       257, 0, {1, 1, 1}, all, 0x81000003, {}, {wrongChannel(257)}},
    Row{"ChannelHighest", 0xFFFFFFFF, 0, {255, 255, 255}, all, 0x81000003, {}, {wrongChannel(0xFFFFFFFF)}}),
    fake::RowName());
/* clang-format on */

} // namespace
