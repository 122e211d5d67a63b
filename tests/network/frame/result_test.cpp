// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Result codes and their IPMI completion codes. */
#include <cstdint>
#include <map>

#include <gtest/gtest.h>

#include "network_mng.h"

namespace {

struct Code {
    const char *name;
    std::uint32_t actual;
    std::uint32_t expected;
};

/* clang-format off */
constexpr Code codes[] = {
    {"Ok",                    NW_OK,                      0},
    {"General",               NW_ERR_GENERAL,             0x81000001},
    {"NullPointer",           NW_ERR_NULL_POINTER,        0x81000002},
    {"OutOfRange",            NW_ERR_OUT_OF_RANGE,        0x81000003},
    {"DbEnvironment",         NW_ERR_DB_ENVIRONMENT,      0x81000005},
    {"DbRead",                NW_ERR_DB_READ,             0x81000006},
    {"DbWrite",               NW_ERR_DB_WRITE,            0x81000007},
    {"RpcTransport",          NW_ERR_RPC_TRANSPORT,       0x81000013},
    {"MacNullPointer",        NW_ERR_MAC_NULL_POINTER,    0x31000001},
    {"PortNotSupported",      NW_ERR_PORT_NOT_SUPPORTED,  0x01000002},
    {"OperLogLocalFail",      NW_OPERLOG_LOCAL_FAIL,      0x9E0000FF},
    {"ArpSuspend",            NW_ERR_ARP_SUSPEND,         0x1E000005},
    {"ArpUpdate",             NW_ERR_ARP_UPDATE,          0x1E000006},
    {"ArpResume",             NW_ERR_ARP_RESUME,          0x1E000007},
    {"Ipv4SameSegment",       NW_ERR_IPV4_SAME_SEGMENT,   0x1E000A27},
    {"Ipv6SameSegment",       NW_ERR_IPV6_SAME_SEGMENT,   0x1E000A28},
    {"IfcNoDb",               NW_ERR_IFC_NO_DB,           0x1E000A33},
    {"IfcWrite",              NW_ERR_IFC_WRITE,           0x1E000A34},
    {"Ipv4Route1",            NW_ERR_IPV4_ROUTE1,         0x1E000A49},
    {"Ipv4Route2",            NW_ERR_IPV4_ROUTE2,         0x1E000A4A},
    {"Ipv6Route1",            NW_ERR_IPV6_ROUTE1,         0x1E000A4D},
    {"Ipv6Route2",            NW_ERR_IPV6_ROUTE2,         0x1E000A4E},
    {"Ipv4InRoute1",          NW_ERR_IPV4_IN_ROUTE1,      0x1E000A51},
    {"Ipv4InRoute2",          NW_ERR_IPV4_IN_ROUTE2,      0x1E000A52},
    {"Ipv6InRoute1",          NW_ERR_IPV6_IN_ROUTE1,      0x1E000A53},
    {"Ipv6InRoute2",          NW_ERR_IPV6_IN_ROUTE2,      0x1E000A54},
    {"Ipv4Route1Gateway",     NW_ERR_IPV4_ROUTE1_GATEWAY, 0x1E000A55},
    {"Ipv4Route2Gateway",     NW_ERR_IPV4_ROUTE2_GATEWAY, 0x1E000A56},
    {"Ipv6Route1Gateway",     NW_ERR_IPV6_ROUTE1_GATEWAY, 0x1E000A57},
    {"Ipv6Route2Gateway",     NW_ERR_IPV6_ROUTE2_GATEWAY, 0x1E000A58},
    {"Ipv4HoldsGateway1",     NW_ERR_IPV4_HOLDS_GATEWAY1, 0x1E000A59},
    {"Ipv4HoldsGateway2",     NW_ERR_IPV4_HOLDS_GATEWAY2, 0x1E000A5A},
    {"Ipv6HoldsGateway1",     NW_ERR_IPV6_HOLDS_GATEWAY1, 0x1E000A5B},
    {"Ipv6HoldsGateway2",     NW_ERR_IPV6_HOLDS_GATEWAY2, 0x1E000A5C},
};
/* clang-format on */

TEST(ResultCode, HasItsFixedValue)
{
    for (const Code &code : codes) {
        EXPECT_EQ(code.actual, code.expected) << code.name;
    }
    static_assert(sizeof(NW_RESULT) == 4 && static_cast<NW_RESULT>(-1) > 0);
}

struct Completion {
    std::uint32_t code;
    std::uint32_t completion;
};

/* clang-format off */
constexpr Completion completions[] = {
    {0x1E000010, 0xCC}, {0x1E000011, 0xCC}, {0x9E000006, 0xCC}, {0x1E000009, 0xCC},
    {0x1E00000A, 0xCC}, {0x1E00000B, 0xCC}, {0x9E000008, 0xCC}, {0x1E00000C, 0xCC},
    {0x1E00000D, 0xCC}, {0x1E00000E, 0xCC}, {0x1E000012, 0xCC}, {0x1E000012, 0xCC},
    {0x1E000013, 0xCC}, {0x1E000014, 0xCC}, {0x1E000015, 0xCC}, {0x1E000017, 0xCC},
    {0x1E000018, 0xCC}, {0x1E000019, 0xCC}, {0x1E00001A, 0xCC}, {0x1E00001A, 0xCC},
    {0x1E000023, 0xC9}, {0x1E00000F, 0xCC}, {0x1E00001D, 0xCC}, {0x1E00001E, 0xCC},
    {0x1E00001F, 0xCC}, {0x1E000001, 0xCC}, {0x1E000021, 0xCC}, {0x81000003, 0xCC},
    {0x1E000036, 0xCC}, {0x1E000004, 0xD5}, {0x1E00001C, 0xD5}, {0x01000002, 0xC1},
    {0x1E00002C, 0xCC},
};
/* clang-format on */
static_assert(std::size(completions) == 33);

TEST(CompletionCode, FollowsItsRow)
{
    for (const Completion &row : completions) {
        EXPECT_EQ(LIB_NW_ChangeInvErr2IpmiCC(row.code), row.completion) << std::hex << row.code;
    }
}

TEST(CompletionCode, IgnoresBitsNineToEleven)
{
    for (const Completion &row : completions) {
        for (std::uint32_t mark = 0; mark <= 0xE00; mark += 0x200) {
            EXPECT_EQ(LIB_NW_ChangeInvErr2IpmiCC(row.code | mark), row.completion)
                << std::hex << (row.code | mark);
        }
    }
}

TEST(CompletionCode, MindsTheBitsBesideTheMark)
{
    for (const Completion &row : completions) {
        EXPECT_EQ(LIB_NW_ChangeInvErr2IpmiCC(row.code | 0x100), 0xFFU) << std::hex << row.code;
        EXPECT_EQ(LIB_NW_ChangeInvErr2IpmiCC(row.code | 0x1000), 0xFFU) << std::hex << row.code;
    }
}

TEST(CompletionCode, IsUnspecifiedWithoutARow)
{
    std::map<std::uint32_t, std::uint32_t> known;
    for (const Completion &row : completions) {
        known.emplace(row.code, row.completion);
    }

    for (const std::uint32_t family : {0x00000000U, 0x01000000U, 0x1E000000U, 0x31000000U,
                                       0x81000000U, 0x9E000000U, 0xFFFF0000U}) {
        for (std::uint32_t low = 0; low <= 0xFFFF; ++low) {
            const auto row = known.find((family | low) & ~0xE00U);
            ASSERT_EQ(LIB_NW_ChangeInvErr2IpmiCC(family | low),
                      row == known.end() ? 0xFFU : row->second)
                << std::hex << (family | low);
        }
    }
}

TEST(CompletionCode, NamedCases)
{
    constexpr Completion cases[] = {
        {0x1E000A33, 0xFF}, {0x1E000033, 0xFF}, {0x1E000E23, 0xC9}, {0x81000003, 0xCC},
        {0x81000002, 0xFF}, {0x01000002, 0xC1}, {0x00000000, 0xFF}, {0xFFFFFFFF, 0xFF},
        {0x1E000006, 0xFF}, {0x9E000004, 0xFF}, {0x1E000A36, 0xCC}, {0x9E0000FF, 0xFF},
    };
    for (const Completion &row : cases) {
        EXPECT_EQ(LIB_NW_ChangeInvErr2IpmiCC(row.code), row.completion) << std::hex << row.code;
    }
}

} // namespace
