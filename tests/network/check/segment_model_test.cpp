// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The two whole checks against a second description of them, over many random records.
#include <iostream>

#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "log_text.hpp"
#include "network_mng/check.h"
#include "random_records.hpp"
#include "route_model.hpp"

namespace {

using support::Guarded;
using support::LanRecord;
using support::Wifi;

using Selection = std::uint32_t;
struct WholeCheck {
    std::string name;
    decltype(&LIB_NW_CheckIPv4v6SameSegment) library;
    decltype(&support::sameSegment) model;
    Selection selections; // below which every value is drawn
    std::size_t verdicts; // 0 and every code that the check can answer
};
const WholeCheck checks[] = {
    {"SameSegment", LIB_NW_CheckIPv4v6SameSegment, support::sameSegment, 16, 11},
    {"RouteSameSegment", LIB_NW_CheckIPv4v6RouteSameSegment, support::routeSegment, 256, 9},
};

constexpr std::uint32_t seeds = 32;
constexpr std::size_t recordsOfSeed = 16250; // 520000 for each check

using Figures = std::map<std::uint32_t, std::size_t>; // records by result
std::map<std::string, Figures> figuresOfChecks;

void print(const std::string &what, const Figures &figures)
{
    std::size_t records = 0;
    std::string codes;
    for (const auto &[code, count] : figures) {
        records += count;
        codes += fake::formatted(" 0x%08X:%zu", code, count);
    }
    std::cout << what << ": " << records << " records equal," << codes << std::endl;
}

// Totals of what this program ran, behind the figures of each seed.
class Totals : public ::testing::Environment {
    void TearDown() override
    {
        for (const auto &[check, figures] : figuresOfChecks) {
            print(check + " in all", figures);
        }
    }
};
const auto *const totals = ::testing::AddGlobalTestEnvironment(new Totals);

// Fast, unlike the comparison of texts that prints the difference.
bool spoke(const std::vector<std::string> &texts)
{
    return std::ranges::equal(
        fake::platform().lines(), texts, [](const auto &line, const auto &text) {
            return line.module == 10 && line.category == 0 && line.level == 7 &&
                   line.file == fake::networkUnit && line.text == text;
        });
}

struct Draw {
    std::uint32_t standby;
    std::uint32_t portSet;
    Selection selection;
    Wifi wifi;
    LanRecord record;
};

Draw draw(support::RandomRecords &random, Selection selections)
{
    Draw drawn;
    random.fill(drawn.record);
    drawn.wifi = {random.pick(support::flags), random.pick(support::addresses4)};
    drawn.standby = random.below(8) == 0 ? random.below(3) : 0;
    drawn.portSet = random.below(2) == 0 ? 7 : random.below(16);
    drawn.selection = random.below(selections);
    return drawn;
}

std::uint32_t ask(const WholeCheck &check, const Draw &drawn, const Guarded &wifi,
                  const Guarded &record)
{
    wifi.data()[0] = drawn.wifi.enable;
    std::ranges::copy(drawn.wifi.address, wifi.data() + 1);
    std::ranges::copy(drawn.record.bytes(), record.data());
    fake::platform().reset();
    return check.library(drawn.standby, drawn.portSet, drawn.selection, wifi.as<NW_WIFI_ADDR_S>(),
                         record.as<NW_LAN_CFG_DB_INFO_S>());
}

class SegmentModel : public ::testing::TestWithParam<std::tuple<WholeCheck, std::uint32_t>> {};

TEST_P(SegmentModel, AnswersAndSpeaksAsTheModelDoes)
{
    const auto &[check, seed] = GetParam();
    support::RandomRecords random(seed);
    const Guarded record(support::kLanRecordSize);
    const Guarded wifi(5);
    Figures figures;

    for (std::size_t round = 0; round < recordsOfSeed; ++round) {
        Draw drawn = draw(random, check.selections);
        const std::uint32_t result = ask(check, drawn, wifi, record);
        const auto expected =
            check.model(drawn.standby, drawn.portSet, drawn.selection, drawn.wifi, drawn.record);

        ASSERT_EQ(result, expected.result) << "round " << round;
        if (!spoke(expected.lines)) {
            ASSERT_EQ(support::loggedLines(), support::debugLines(expected.lines))
                << "round " << round;
            FAIL() << "lines differ in round " << round;
        }
        ++figures[result];
        ++figuresOfChecks[check.name][result];
    }
    print(check.name + " seed " + std::to_string(seed), figures);
    EXPECT_EQ(figures.size(), check.verdicts)
        << "a verdict that the records never produced proves nothing";
}

INSTANTIATE_TEST_SUITE_P(Seeds, SegmentModel,
                         ::testing::Combine(::testing::ValuesIn(checks),
                                            ::testing::Range(1U, seeds + 1)),
                         [](const auto &row) {
                             return std::get<0>(row.param).name + "Seed" +
                                    std::to_string(std::get<1>(row.param));
                         });

} // namespace
