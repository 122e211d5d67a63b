// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Sentences of the two changes that have one field: network port mode and port number switchover.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::mainSlot;
using testing::ElementsAre;

struct Row {
    std::string name;
    const char *setter;
    std::uint8_t mask, value;
    std::string sentence;
};

class PlainSentence : public fake::FakePlatformRows<Row> {};

TEST_P(PlainSentence, TellsTheOneFieldOfTheRequest)
{
    const Row &row = GetParam();
    Bytes request = setters::pattern(8);
    request[4] = row.mask;
    request[5] = row.value;
    Context context;

    EXPECT_EQ(setters::send(setters::named(row.setter), {request}, context), 0U);

    setters::expectSentence(context, row.sentence);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(row.sentence)));
}

/* clang-format off */
const std::string mode = "Configured network port mode successfully";
const std::string switchover = "Configured port number switchover successfully";
INSTANTIATE_TEST_SUITE_P(Rows, PlainSentence, testing::Values(
    Row{"ModeSeparate",  "NetMode", 1, 0,   mode + ", network port mode: Normal."},
    Row{"ModeBonded",    "NetMode", 1, 1,   mode + ", network port mode: Active/standby."},
    Row{"ModeOther",     "NetMode", 1, 255, mode + ", network port mode: Active/standby."},
    Row{"ModeOtherBit",  "NetMode", 2, 1,   mode + "."},
    Row{"ModeUnchanged", "NetMode", 0, 1,   ""},
    Row{"SwitchoverOn",  "Switchover", 1, 1, switchover + ", port number switchover: Enabled."},
    Row{"SwitchoverOff", "Switchover", 1, 0, switchover + ", port number switchover: Disabled."},
    Row{"SwitchoverOtherBit",  "Switchover", 0x80, 1, switchover + "."},
    Row{"SwitchoverUnchanged", "Switchover", 0, 1, ""}),
    fake::RowName());
/* clang-format on */

} // namespace
