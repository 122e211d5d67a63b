// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The two whole checks against a second description of them, over many random records.
#include <iostream>

#include "random_records.hpp"
#include "segment_check.hpp"

namespace {

using segment::Board;
using segment::Selection;
using segment::WholeCheck;

const WholeCheck checks[] = {segment::sameSegment, segment::routeSegment};

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
    Selection selection;
    Board board;
};

Draw draw(support::RandomRecords &random, std::uint32_t selections)
{
    Draw drawn;
    random.fill(drawn.board.record);
    drawn.board.wifi = {random.pick(support::flags), random.pick(support::addresses4)};
    drawn.selection.standby = random.below(8) == 0 ? random.below(3) : 0;
    drawn.selection.portSet = random.below(2) == 0 ? 7 : random.below(16);
    drawn.selection.kinds = random.below(selections);
    return drawn;
}

class SegmentModel : public ::testing::TestWithParam<std::tuple<WholeCheck, std::uint32_t>> {};

TEST_P(SegmentModel, AnswersAndSpeaksAsTheModelDoes)
{
    const auto &[check, seed] = GetParam();
    support::RandomRecords random(seed);
    const segment::Question question;
    Figures figures;

    for (std::size_t round = 0; round < recordsOfSeed; ++round) {
        Draw drawn = draw(random, check.selections);
        auto &[selection, board] = drawn;
        fake::platform().reset();
        const std::uint32_t result = question.ask(check, selection, board);
        const auto expected = check.model(selection.standby, selection.portSet, selection.kinds,
                                          board.wifi, board.record);

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
