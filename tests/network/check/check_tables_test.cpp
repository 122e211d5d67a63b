// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Order and contents of the two check tables. They are private to their file, which therefore
// takes the place of its library object in this program.
#include "nw_address.cpp"

#include "fake_matchers.hpp"

namespace {

using ::testing::Values;

struct Entry {
    std::string name;
    std::uint32_t flag;
    NW_IP_PREDICATE_FN predicate;
    std::uint8_t expected;
};

/* clang-format off */
const Entry ipv6Entries[] = {
    {"AllZero",    0x01, NW_CheckIPv6IsAllZero,   0},
    {"Loopback",   0x02, NW_CheckIPv6IsLoopback,  0},
    {"Multicast",  0x04, NW_CheckIPv6IsMulticast, 0},
    {"SiteLocal",  0x08, NW_CheckIPv6IsSitelocal, 0},
    {"LinkLocal",  0x10, NW_CheckIPv6IsLinklocal, 0},
    {"V4Mapped",   0x20, NW_CheckIPv6IsV4Mapped,  0},
    {"V4Compat",   0x40, NW_CheckIPv6IsV4Compat,  0},
};

// The netmask entry stands before the first-octet entry, out of bit order.
const Entry ipv4Entries[] = {
    {"AllZero",    0x01, NW_CheckIPv4IsAllZero,   0},
    {"Loopback",   0x02, NW_CheckIPv4IsLoopback,  0},
    {"DorE",       0x04, NW_CheckIPv4IsDorE,      0},
    {"Mask",       0x10, NW_CheckIPv4IsMask,      1},
    {"FirstZero",  0x08, NW_CheckIPv4IsFirIsZero, 0},
    {"FirstFF",    0x20, NW_CheckIPv4IsFirIsFF,   1},
};
/* clang-format on */

template <typename Table, std::size_t count>
void expectTable(const Table &table, const Entry (&entries)[count])
{
    ASSERT_EQ(NW_CountOf(table), count);
    for (std::size_t row = 0; row < count; ++row) {
        SCOPED_TRACE(entries[row].name);
        EXPECT_EQ(table[row].uiFlag, entries[row].flag);
        EXPECT_EQ(table[row].ucExpected, entries[row].expected);
        EXPECT_EQ(table[row].pfnPredicate, entries[row].predicate);
    }
}

TEST(CheckTables, Ipv6EntriesInOrder)
{
    expectTable(s_astIpv6CheckTbl, ipv6Entries);
}

TEST(CheckTables, Ipv4EntriesInOrder)
{
    expectTable(s_astIpv4CheckTbl, ipv4Entries);
}

std::string visited;

template <char name, std::uint32_t answer>
std::uint32_t visit(const std::uint8_t *)
{
    visited += name;
    return answer;
}

const NW_IP_CHECK_ITEM_S walkTable[] = {
    {0x01, 0, visit<'a', 0>}, {0x04, 1, visit<'b', 1>},        {0x02, 0, nullptr},
    {0x08, 1, visit<'c', 0>}, {0x80000000U, 0, visit<'d', 0>},
};

struct Walk {
    std::string name;
    std::uint32_t flags;
    std::uint32_t expected;
    const char *visits;
};

class CheckTableWalk : public ::testing::TestWithParam<Walk> {};

TEST_P(CheckTableWalk, VisitsTheSelectedEntriesUpToTheFirstThatFails)
{
    const std::uint8_t address[16] = {};
    visited.clear();
    EXPECT_EQ(NW_PassesChecks(walkTable, NW_CountOf(walkTable), GetParam().flags, address),
              GetParam().expected);
    EXPECT_EQ(visited, GetParam().visits);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Flags, CheckTableWalk, Values(
    Walk{"Nothing",         0x00,         1, ""},
    Walk{"NoSuchEntry",     0x7FFFFFF0U,  1, ""},
    Walk{"NoPredicate",     0x02,         1, ""},
    Walk{"TableOrder",      0x05,         1, "ab"},
    Walk{"StopsAtFailure",  0xFFFFFFFFU,  0, "abc"},
    Walk{"OnlyTheFailing",  0x08,         0, "c"},
    Walk{"HighestBit",      0x80000001U,  1, "ad"}),
    fake::RowName{});
/* clang-format on */

} // namespace
