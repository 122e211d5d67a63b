// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "results.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nwctl {
namespace {

using ::testing::StartsWith;

struct Named {
    NW_RESULT code;
    const char *name;
    const char *completion;
    Subject subject;
};

class NamedResult : public ::testing::TestWithParam<Named> {};

TEST_P(NamedResult, HasNameMeaningAndCompletionCode)
{
    const Named &row = GetParam();
    const ResultInfo info = describeResult(row.code);

    EXPECT_EQ(info.code, row.code);
    EXPECT_EQ(info.name, row.name);
    EXPECT_FALSE(info.meaning.empty());
    EXPECT_EQ(info.subject, row.subject);
    EXPECT_EQ(completionText(row.code), row.completion);
}

/* clang-format off */
constexpr Named namedRows[] = {
    {0x81000001, "NW_ERR_GENERAL",             "0xff", Subject::none},
    {0x81000002, "NW_ERR_NULL_POINTER",        "0xff", Subject::none},
    {0x81000003, "NW_ERR_OUT_OF_RANGE",        "0xcc", Subject::none},
    {0x81000005, "NW_ERR_DB_ENVIRONMENT",      "0xff", Subject::none},
    {0x81000006, "NW_ERR_DB_READ",             "0xff", Subject::none},
    {0x81000007, "NW_ERR_DB_WRITE",            "0xff", Subject::none},
    {0x81000013, "NW_ERR_RPC_TRANSPORT",       "0xff", Subject::none},
    {0x31000001, "NW_ERR_MAC_NULL_POINTER",    "0xff", Subject::none},
    {0x01000002, "NW_ERR_PORT_NOT_SUPPORTED",  "0xc1", Subject::none},
    {0x9E0000FF, "NW_OPERLOG_LOCAL_FAIL",      "0xff", Subject::none},
    {0x1E000005, "NW_ERR_ARP_SUSPEND",         "0xff", Subject::none},
    {0x1E000006, "NW_ERR_ARP_UPDATE",          "0xff", Subject::none},
    {0x1E000007, "NW_ERR_ARP_RESUME",          "0xff", Subject::none},
    {0x1E000A27, "NW_ERR_IPV4_SAME_SEGMENT",   "0xff", Subject::ipv4},
    {0x1E000A28, "NW_ERR_IPV6_SAME_SEGMENT",   "0xff", Subject::ipv6},
    {0x1E000A33, "NW_ERR_IFC_NO_DB",           "0xff", Subject::none},
    {0x1E000A34, "NW_ERR_IFC_WRITE",           "0xff", Subject::none},
    {0x1E000A49, "NW_ERR_IPV4_ROUTE1",         "0xff", Subject::ipv4},
    {0x1E000A4A, "NW_ERR_IPV4_ROUTE2",         "0xff", Subject::ipv4},
    {0x1E000A4D, "NW_ERR_IPV6_ROUTE1",         "0xff", Subject::ipv6},
    {0x1E000A4E, "NW_ERR_IPV6_ROUTE2",         "0xff", Subject::ipv6},
    {0x1E000A51, "NW_ERR_IPV4_IN_ROUTE1",      "0xff", Subject::ipv4},
    {0x1E000A52, "NW_ERR_IPV4_IN_ROUTE2",      "0xff", Subject::ipv4},
    {0x1E000A53, "NW_ERR_IPV6_IN_ROUTE1",      "0xff", Subject::ipv6},
    {0x1E000A54, "NW_ERR_IPV6_IN_ROUTE2",      "0xff", Subject::ipv6},
    {0x1E000A55, "NW_ERR_IPV4_ROUTE1_GATEWAY", "0xff", Subject::ipv4},
    {0x1E000A56, "NW_ERR_IPV4_ROUTE2_GATEWAY", "0xff", Subject::ipv4},
    {0x1E000A57, "NW_ERR_IPV6_ROUTE1_GATEWAY", "0xff", Subject::ipv6},
    {0x1E000A58, "NW_ERR_IPV6_ROUTE2_GATEWAY", "0xff", Subject::ipv6},
    {0x1E000A59, "NW_ERR_IPV4_HOLDS_GATEWAY1", "0xff", Subject::ipv4},
    {0x1E000A5A, "NW_ERR_IPV4_HOLDS_GATEWAY2", "0xff", Subject::ipv4},
    {0x1E000A5B, "NW_ERR_IPV6_HOLDS_GATEWAY1", "0xff", Subject::ipv6},
    {0x1E000A5C, "NW_ERR_IPV6_HOLDS_GATEWAY2", "0xff", Subject::ipv6},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, NamedResult, ::testing::ValuesIn(namedRows),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(ManagerResult, IsNamedByItsCompletionCode)
{
    for (const NW_RESULT code :
         {0x1E000001U, 0x1E000009U, 0x1E00000AU, 0x1E00000BU, 0x1E00000CU, 0x1E00000DU, 0x1E00000EU,
          0x1E00000FU, 0x1E000010U, 0x1E000011U, 0x1E000012U, 0x1E000013U, 0x1E000014U, 0x1E000015U,
          0x1E000017U, 0x1E000018U, 0x1E000019U, 0x1E00001AU, 0x1E00001DU, 0x1E00001EU, 0x1E00001FU,
          0x1E000021U, 0x1E00002CU, 0x1E000036U, 0x9E000006U, 0x9E000008U}) {
        EXPECT_EQ(describeResult(code).name, "NW_MANAGER_INVALID_DATA");
        EXPECT_THAT(describeResult(code).meaning, StartsWith("refused by the network manager: "));
        EXPECT_EQ(completionText(code), "0xcc");
    }
    EXPECT_EQ(describeResult(0x1E000023).name, "NW_MANAGER_OUT_OF_RANGE");
    EXPECT_EQ(completionText(0x1E000023), "0xc9");
    for (const NW_RESULT code : {0x1E000004U, 0x1E00001CU}) {
        EXPECT_EQ(describeResult(code).name, "NW_MANAGER_NOT_IN_STATE");
        EXPECT_EQ(completionText(code), "0xd5");
    }
}

TEST(ManagerResult, HasGeneralWordsWhereTheManagerHasNone)
{
    EXPECT_EQ(describeResult(0x1E000A36).meaning,
              "refused by the network manager: invalid data field");
    EXPECT_EQ(describeResult(0x1E000A23).meaning,
              "refused by the network manager: parameter out of range");
}

TEST(ManagerResult, HasTheManagersWordsWhereItHasThem)
{
    EXPECT_EQ(
        describeResult(0x1E00000E).meaning,
        "refused by the network manager: the IPv4 gateway is outside the port's own subnet or "
        "the port itself");
    EXPECT_EQ(describeResult(0x1E000002).meaning,
              "refused by the network manager: the kernel refused the change; nothing was changed");
    EXPECT_EQ(describeResult(0x1E000002).name, "NW_MANAGER_OTHER");
}

TEST(Result, IsTheSameErrorWithAndWithoutTheMark)
{
    EXPECT_EQ(describeResult(0x1E000027).name, "NW_ERR_IPV4_SAME_SEGMENT");
    EXPECT_EQ(describeResult(0x1E000E23).name, "NW_MANAGER_OUT_OF_RANGE");
    EXPECT_EQ(describeResult(0x1E000027).code, 0x1E000027U);
}

TEST(Result, WithoutARowGetsGeneralWords)
{
    EXPECT_EQ(describeResult(0x1E0001FF).name, "NW_MANAGER_OTHER");
    EXPECT_EQ(describeResult(0x8100000F).name, "NW_ERR_OTHER");
    /* The database's own code: an error number, possibly negative; never a success. */
    EXPECT_EQ(describeResult(0x00000200).name, "PLATFORM");
    EXPECT_EQ(describeResult(0xFFFF87B2).name, "PLATFORM");
    EXPECT_EQ(describeResult(0).name, "NW_OK");
}

TEST(CodeText, HasEightDigits)
{
    EXPECT_EQ(codeText(0x1E000A27), "0x1e000a27");
    EXPECT_EQ(codeText(2), "0x00000002");
}

} // namespace
} // namespace nwctl
