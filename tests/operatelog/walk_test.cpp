// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The two internal steps that no caller can reach with a null pointer: the table walk, and one
 * position of the adapter priority list. */
#include "null_checks.hpp"
#include "nw_operate_log.h"
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using fake::NullRow;

const std::uint8_t bytes[512]{};
NW_OPER_LOG_S context;
char output[300];
std::int32_t length;

NullRow walkRow(const std::string &name, const std::string &parameter, const std::uint8_t *record,
                NW_OPER_LOG_S *log)
{
    const auto call = [=] {
        NW_ParseSucessConfigParam(record, lldp, 0, 0xFFFFFFFF, log);
        return 0U;
    };
    return {name, "NW_ParseSucessConfigParam", parameter, call, 0, fake::operateLogUnit};
}

NullRow positionRow(const std::string &name, const std::string &parameter,
                    const std::uint8_t *rules, std::int32_t *used, char *text)
{
    const auto call = [=] {
        NW_OperateLogOutputCardPriPar(0, rules, 300, used, text);
        return 0U;
    };
    return {name, "NW_OperateLogOutputCardPriPar", parameter, call, 0, fake::operateLogUnit};
}

const NullRow rows[] = {
    walkRow("WalkRecord", "pucNetConfig", nullptr, &context),
    walkRow("WalkContext", "pstOperLog", bytes, nullptr),
    walkRow("WalkBoth", "pucNetConfig", nullptr, nullptr),
    positionRow("PositionRules", "pucCardAutoRules", nullptr, &length, output),
    positionRow("PositionLength", "piLen", bytes, nullptr, output),
    positionRow("PositionOutput", "pcOperLogDesc", bytes, &length, nullptr),
    positionRow("PositionAll", "pucCardAutoRules", nullptr, nullptr, nullptr),
    positionRow("PositionLengthAndOutput", "piLen", bytes, nullptr, nullptr),
};

class InternalNull : public fake::NullArgument {};

TEST_P(InternalNull, OfAnInternalStepIsLoggedAlone)
{
    expectNullCheck();
}

INSTANTIATE_TEST_SUITE_P(Internal, InternalNull, testing::ValuesIn(rows), fake::RowName());

class Walk : public OperateLogTest {
protected:
    std::string walk(std::uint32_t module, std::uint32_t word, std::uint32_t bits)
    {
        *log = NW_OPER_LOG_S{};
        NW_ParseSucessConfigParam(record.data(), module, word, bits, log.get());
        return textOf(log->szOperLog);
    }

    Bytes record = Bytes(592);
};

TEST_F(Walk, TakesOnlyRowsOfTheModuleAndTheWord)
{
    EXPECT_EQ(walk(lan, 0, 0x3), ", LAN: Disabled, IPv4: Disabled");
    EXPECT_EQ(walk(lan, 1, 0x3), ", IPv4 static route 1 address: , IPv4 static route 1 mask: ");
    EXPECT_EQ(walk(lan, 2, 0x3), "");
    EXPECT_EQ(walk(lan | dns, 0, 0xFFFFFFFF), "") << "the module must be equal";
    EXPECT_EQ(walk(lldp, 0, 0), "");
    EXPECT_EQ(walk(0, 0, 0xFFFFFFFF), "");
}

class Position : public OperateLogTest {
protected:
    std::int32_t used = 0;
    std::vector<char> text = std::vector<char>(64, '\0');
};

TEST_F(Position, AppendsBehindTheLengthAndAdvancesIt)
{
    const Bytes rules{0, 1, 2, 7};
    std::vector<char> list(200, '\0');
    NW_OperateLogOutputCardPriPar(3, rules.data(), 200, &used, list.data());
    NW_OperateLogOutputCardPriPar(1, rules.data(), 200, &used, list.data());

    const std::string expected = ", fourth priority network adapter: "
                                 ", second priority network adapter: NIC two";
    EXPECT_STREQ(list.data(), expected.c_str());
    EXPECT_EQ(used, static_cast<std::int32_t>(expected.size()));
}

TEST_F(Position, CountsOnlyWhatWasReallyWritten)
{
    const Bytes rules{0, 1, 2, 7};
    NW_OperateLogOutputCardPriPar(0, rules.data(), 64, &used, text.data());
    EXPECT_EQ(used, 41);
    NW_OperateLogOutputCardPriPar(1, rules.data(), 64, &used, text.data());
    EXPECT_EQ(used, 63);
    NW_OperateLogOutputCardPriPar(2, rules.data(), 64, &used, text.data());
    EXPECT_EQ(used, 63);
    EXPECT_EQ(std::strlen(text.data()), 63U);
}

} // namespace
} // namespace operatelog
