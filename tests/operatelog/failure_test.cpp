// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Failure messages: the first row whose module is equal and whose result is any or equal. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using testing::ElementsAre;

struct FailureCase {
    std::string name;
    std::uint32_t module;
    std::uint32_t result;
    std::uint32_t port;
    std::string text;
};

constexpr std::uint32_t local = 0x9E0000FF;
constexpr std::uint32_t transport = 0x81000013;

/* clang-format off */
const FailureCase cases[] = {
    {"Lldp",              0x08, transport,  0, "Failed to configure LLDP settings."},
    {"LldpLocal",         0x08, local,      2, "Failed to configure LLDP settings."},
    {"LldpOne",           0x08, 1,          1, "Failed to configure LLDP settings."},
    {"An",                0x40, transport,  0, "Failed to configure PHY negotiation."},
    {"AnLocal",           0x40, local,      0, "Failed to configure PHY negotiation."},
    {"Ncsi",              0x10, 0x1E000001, 0, "Failed to configure NCSI settings."},
    {"LanLocal",          0x02, local,      1, "Failed to configure LAN settings."},
    {"LanDedicated",      0x02, transport,  0, "Failed to configure LAN settings for dedicated port."},
    {"LanShared",         0x02, 0x1E000A27, 1, "Failed to configure LAN settings for shared port."},
    {"LanStandby",        0x02, 1,          2, "Failed to configure LAN settings for active/standby port."},
    {"LanPortThree",      0x02, 1,          3, "Failed to configure LAN settings for ."},
    {"LanPortMax",        0x02, 1, 0xFFFFFFFF, "Failed to configure LAN settings for ."},
    {"LanNearlyLocal",    0x02, 0x1E0000FF, 0, "Failed to configure LAN settings for dedicated port."},
    {"DnsLocal",          0x04, local,      1, "Failed to configure DNS settings."},
    {"DnsDedicated",      0x04, transport,  0, "Failed to configure DNS settings for dedicated port."},
    {"DnsShared",         0x04, 2,          1, "Failed to configure DNS settings for shared port."},
    {"DnsStandby",        0x04, 0xFFFFFFFF, 2, "Failed to configure DNS settings for active/standby port."},
    {"DnsPortThree",      0x04, 2,          3, "Failed to configure DNS settings for ."},
    {"HostName",          0x01, transport,  0, "Failed to configure host name settings."},
    {"NetMode",           0x20, transport,  0, "Failed to configure the network port mode."},
    {"LanReverse",        0x80, transport,  0, "Failed to configure port number switchover."},
};
/* clang-format on */

class Failure : public OperateLogTest, public testing::WithParamInterface<FailureCase> {
protected:
    /* The request is there, but no byte of it is needed. */
    void fail(const FailureCase &row)
    {
        const auto request = std::make_unique<std::uint8_t>();
        poisonOtherSlots();
        NW_OperateLogBuild(row.module, row.result, row.port, request.get(), log.get());
        expectOtherSlotsUntouched();
        EXPECT_EQ(log->ucLogLevel, 6);
    }
};

TEST_P(Failure, GivesTheMessageOfTheFirstMatchingRow)
{
    fail(GetParam());

    EXPECT_EQ(textOf(log->szOperLog), GetParam().text);
    EXPECT_THAT(lines(), ElementsAre(operLogLine(GetParam().text)));
    EXPECT_EQ(platform.calls().size(), 1U);
}

TEST_P(Failure, ReplacesWhatTheSlotHeld)
{
    std::memset(log->szOperLog, 'x', 511);

    fail(GetParam());

    EXPECT_EQ(textOf(log->szOperLog), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Rows, Failure, testing::ValuesIn(cases), fake::RowName());

class FailureWithoutRow : public Failure {};

TEST_P(FailureWithoutRow, LeavesTheSlotButSetsTheLevelAndLogs)
{
    std::strcpy(log->szOperLog, "as before");

    fail(GetParam());

    EXPECT_EQ(textOf(log->szOperLog), "as before");
    EXPECT_THAT(lines(), ElementsAre(operLogLine("as before")));
}

const FailureCase unmatched[] = {
    {"None", 0x00, 1, 0, ""},
    {"LanAndDns", 0x06, 1, 0, ""},
    {"LanAndDnsLocal", 0x06, local, 0, ""},
    {"LldpAndMore", 0x0A, 1, 0, ""},
    {"Unknown", 0x100, 1, 0, ""},
    {"All", 0xFF, transport, 0, ""},
};

INSTANTIATE_TEST_SUITE_P(Modules, FailureWithoutRow, testing::ValuesIn(unmatched), fake::RowName());

} // namespace
} // namespace operatelog
