// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Records stand anywhere: a call's result, its output, what it asks of the platform and what it
// logs are those of a call with aligned records, and the bytes around the records stay as they are.
#include "process.hpp"
#include "tool_output.hpp"
#include "unaligned.hpp"

namespace unaligned {
namespace {

std::vector<Row> allRows()
{
    return joined({storeRows(), settingRows(), checkRows(), operateLogRows(), messageRows(),
                   discoveryRows()});
}

class UnalignedRecords : public fake::FakePlatformRows<Row> {
protected:
    // libc reads its resolver's settings once and keeps them: not for the heap watch to find.
    static void SetUpTestSuite()
    {
        char address[NW_RESOLVED_TEXT_SIZE];
        ASSERT_EQ(LIB_NW_ConverHostnameToIP("127.0.0.1", address), NW_OK);
    }
};

void expectSame(const Outcome &moved, const Outcome &aligned)
{
    EXPECT_EQ(moved.result, aligned.result);
    EXPECT_EQ(moved.buffers, aligned.buffers);
    EXPECT_EQ(moved.calls, aligned.calls);
    EXPECT_TRUE(moved.surroundingsKept);
}

void expectSameAtEveryOffset(const Row &row, Manager manager, const Outcome &aligned)
{
    for (std::size_t offset = 0; offset < 8; ++offset) {
        SCOPED_TRACE(offset);
        expectSame(run(row, manager, offset, 3), aligned);
    }
}

// A row that ends at once would show nothing.
void expectWork(const Row &row, const Outcome &outcome)
{
    EXPECT_EQ(outcome.result, row.result);
    EXPECT_TRUE(outcome.result != 0 || outcome.buffers != row.buffers || outcome.calls.size() > 2)
        << "the call did nothing";
}

TEST_P(UnalignedRecords, GiveWhatAlignedOnesGive)
{
    const Row &row = GetParam();
    const Outcome aligned = run(row, Manager::accepts, 0, 0);

    expectWork(row, aligned);
    expectSameAtEveryOffset(row, Manager::accepts, aligned);
}

TEST_P(UnalignedRecords, FailAsAlignedOnesFail)
{
    const Row &row = GetParam();

    expectSameAtEveryOffset(row, Manager::refuses, run(row, Manager::refuses, 0, 0));
}

INSTANTIATE_TEST_SUITE_P(Exports, UnalignedRecords, testing::ValuesIn(allRows()),
                         [](const testing::TestParamInfo<Row> &row) {
                             return row.param.function + row.param.variant;
                         });

// Records and bytes; a socket's buffers and addresses go to the system as they are.
TEST(UnalignedRows, CoverEveryExportThatTakesARecordOrBytes)
{
    const std::string header = support::shell(NW_PREPROCESS_HEADER " " NW_HEADER_FILE);
    const auto taking = support::allMatches(
        header, "visibility\\(\"default\"\\)\\)\\)[^;(]*?(\\w+)\\((?!int sockfd)"
                "[^;]*(?:_S|void|uint8_t|char) \\*[^;]*\\);");

    std::set<std::string> covered;
    for (const Row &row : allRows()) {
        covered.insert(row.function);
    }
    EXPECT_FALSE(taking.empty());
    for (const std::string &function : taking) {
        EXPECT_TRUE(covered.contains(function)) << function;
    }
}

} // namespace
} // namespace unaligned
