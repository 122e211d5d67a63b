// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Rows become tests of the framework's names, in their order, and none is lost unseen.
#include "rows.hpp"

#include <gmock/gmock.h>

namespace support {
namespace {

using ::testing::ExitedWithCode;

const Place set{"Set", "file.cpp", 1};
const Place first{"First", "file.cpp", 2};
const Place second{"Second", "file.cpp", 3};
const int one = 1;
const int two = 2;

std::vector<std::string> registered;
std::vector<int> values;

void record(const std::string &suite, const std::string &name, const Place &,
            const RowTable::Factory &)
{
    registered.push_back(suite + "." + name);
}

RowTable::Factory recordRow(const void *row)
{
    values.push_back(*static_cast<const int *>(row));
    return nullptr;
}

RowTable tableOfTests()
{
    RowTable table("Fixture", record);
    table.addTest(first, recordRow);
    table.addTest(second, recordRow);
    return table;
}

TEST(Rows, AreTestedInTheOrderOfTheTests)
{
    RowTable table = tableOfTests();

    table.addRows(set, {{"One", &one}, {"Two", &two}});
    table.requireRows();

    EXPECT_THAT(registered,
                testing::ElementsAre("Set/Fixture.First/One", "Set/Fixture.First/Two",
                                     "Set/Fixture.Second/One", "Set/Fixture.Second/Two"));
    EXPECT_THAT(values, testing::ElementsAre(1, 2, 1, 2));
}

TEST(RowsDeathTest, HaveNamesThatAreChosenByThem)
{
    RowTable table = tableOfTests();

    EXPECT_EXIT(table.addRows(set, {{"One", &one}, {"One", &two}}), ExitedWithCode(1),
                "file.cpp:1: Set/Fixture: no row can be called \"One\"");
    EXPECT_EXIT(table.addRows(set, {{"a row", &one}}), ExitedWithCode(1), "\"a row\"");
    EXPECT_EXIT(table.addRows(set, {{"", &one}}), ExitedWithCode(1), "\"\"");
}

TEST(RowsDeathTest, HaveATestAndATestHasRows)
{
    RowTable empty("Fixture", record);

    EXPECT_EXIT(tableOfTests().requireRows(), ExitedWithCode(1),
                "file.cpp:2: First/Fixture: a test without rows");
    EXPECT_EXIT(tableOfTests().addRows(set, {}), ExitedWithCode(1), "Set/Fixture: no rows");
    EXPECT_EXIT(empty.addRows(set, {{"One", &one}}), ExitedWithCode(1), "rows without a test");
}

struct Indexed : testing::TestWithParam<int> {};

TEST_P(Indexed, AreNamedByTheirPlace)
{
    EXPECT_EQ(testing::UnitTest::GetInstance()->current_test_info()->name(),
              "AreNamedByTheirPlace/" + std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(OfOneKind, Indexed, testing::Values(0, 1, 2));
INSTANTIATE_TEST_SUITE_P(OfAnother, Indexed, testing::Range(0, 3));

} // namespace
} // namespace support
