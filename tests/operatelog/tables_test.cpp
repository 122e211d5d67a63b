// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The exported tables, row by row, and the layout of their rows. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

constexpr std::size_t pointer = sizeof(void *);

TEST(OperateLogLayout, OfTheContext)
{
    EXPECT_EQ(sizeof(NW_OPER_LOG_S), 3073U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, szOperLog), 0U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, szLanOtherLog), 512U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, szLanIpv4RouteLog), 1024U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, szLanIpv6RouteLog), 1536U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, szDnsLog), 2048U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, szNetModeLog), 2560U);
    EXPECT_EQ(offsetof(NW_OPER_LOG_S, ucLogLevel), 3072U);
}

/* 156 and 524 bytes where a pointer has four. */
TEST(OperateLogLayout, OfTheRowsGrowsWithThePointerAlone)
{
    EXPECT_EQ(sizeof(NW_OPERATE_LOG_DESC_S), 152 + pointer);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, uiModuleBit), 0U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, uiBitmapIdx), 4U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, uiBitMask), 8U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, uiPerPort), 12U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, uiExcludeMask), 16U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, pfnParamFormat), 20U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, uiParamOffset), 20 + pointer);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_DESC_S, acDesc), 24 + pointer);
    EXPECT_EQ(sizeof(NW_OPERATE_LOG_SUB_MODULE_S), 520 + pointer);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_SUB_MODULE_S, uiModuleBit), 0U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_SUB_MODULE_S, ucSkipHead), 4U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_SUB_MODULE_S, pfnBuild), 8U);
    EXPECT_EQ(offsetof(NW_OPERATE_LOG_SUB_MODULE_S, acHeadDesc), 8 + pointer);
}

TEST(OperateLogLayout, OfTheTables)
{
    EXPECT_EQ(sizeof(g_astSuccessOperateLogDescTbl), 59 * (152 + pointer));
    EXPECT_EQ(sizeof(g_astFailureOperateLogDefault), 10 * (152 + pointer));
    EXPECT_EQ(sizeof(g_astNwOperateLogSubModuleTbl), 8 * (520 + pointer));
}

TEST(OperateLogModule, HasItsBit)
{
    EXPECT_EQ(NW_LOG_HOSTNAME, 0x01);
    EXPECT_EQ(NW_LOG_LAN, 0x02);
    EXPECT_EQ(NW_LOG_DNS, 0x04);
    EXPECT_EQ(NW_LOG_LLDP, 0x08);
    EXPECT_EQ(NW_LOG_NCSI, 0x10);
    EXPECT_EQ(NW_LOG_NET_MODE, 0x20);
    EXPECT_EQ(NW_LOG_AN, 0x40);
    EXPECT_EQ(NW_LOG_LAN_REVERSE, 0x80);
}

/* The text and nothing but zeros behind it. */
Bytes padded(const char *text, std::size_t size)
{
    Bytes bytes(text, text + std::strlen(text));
    bytes.resize(size);
    return bytes;
}

TEST(SuccessTable, HoldsEveryRowInOrder)
{
    for (std::size_t index = 0; index < successRows.size(); ++index) {
        SCOPED_TRACE(index);
        const NW_OPERATE_LOG_DESC_S row = g_astSuccessOperateLogDescTbl[index];
        const SuccessRow &expected = successRows[index];

        EXPECT_EQ(row.uiModuleBit, expected.module);
        EXPECT_EQ(row.uiBitmapIdx, expected.word);
        EXPECT_EQ(row.uiBitMask, expected.mask);
        EXPECT_EQ(row.uiPerPort, 0U);
        EXPECT_EQ(row.uiExcludeMask, expected.exclude);
        EXPECT_TRUE(row.pfnParamFormat == expected.formatter);
        EXPECT_EQ(row.uiParamOffset, expected.offset);
        EXPECT_EQ(fake::bytesOf(row.acDesc), padded(expected.text, 128));
    }
}

TEST(SuccessTable, HasSevenRowsWithoutAFormatter)
{
    std::size_t count = 0;
    for (const NW_OPERATE_LOG_DESC_S &row : g_astSuccessOperateLogDescTbl) {
        if (row.pfnParamFormat == nullptr) {
            ++count;
            EXPECT_NE(std::string(row.acDesc).find("%d"), std::string::npos);
        }
    }
    EXPECT_EQ(count, 7U);
}

TEST(FailureTable, HoldsEveryRowInOrder)
{
    for (std::size_t index = 0; index < failureRows.size(); ++index) {
        SCOPED_TRACE(index);
        const NW_OPERATE_LOG_DESC_S row = g_astFailureOperateLogDefault[index];
        const FailureRow &expected = failureRows[index];

        EXPECT_EQ(row.uiModuleBit, expected.module);
        EXPECT_EQ(row.uiBitmapIdx, 0U);
        EXPECT_EQ(row.uiBitMask, expected.result);
        EXPECT_EQ(row.uiPerPort, expected.perPort);
        EXPECT_EQ(row.uiExcludeMask, 0U);
        EXPECT_TRUE(row.pfnParamFormat == nullptr);
        EXPECT_EQ(row.uiParamOffset, 0U);
        EXPECT_EQ(fake::bytesOf(row.acDesc), padded(expected.text, 128));
    }
}

class SubModuleTable : public fake::FakePlatformTest,
                       public testing::WithParamInterface<std::size_t> {
protected:
    const NW_OPERATE_LOG_SUB_MODULE_S &row() const
    {
        return g_astNwOperateLogSubModuleTbl[GetParam()];
    }
    const SubModuleRow &expected() const
    {
        return subModuleRows[GetParam()];
    }
};

TEST_P(SubModuleTable, HoldsTheRow)
{
    EXPECT_EQ(row().uiModuleBit, expected().module);
    EXPECT_EQ(row().ucSkipHead, expected().skipHead);
    EXPECT_EQ(fake::bytesOf(row().aucZero5), Bytes(3));
    EXPECT_EQ(fake::bytesOf(row().acHeadDesc), Bytes(512));
}

/* A builder's null check names the builder. */
TEST_P(SubModuleTable, NamesTheBuilderWhichChecksItsRequest)
{
    NW_OPER_LOG_S log{};

    row().pfnBuild(0, 0, nullptr, &log);

    EXPECT_THAT(lines(), testing::ElementsAre(fake::isNullLine("pNetConfig", expected().builder,
                                                               fake::operateLogUnit)));
    EXPECT_EQ(fake::bytesOf(log), Bytes(sizeof(log)));
}

TEST_P(SubModuleTable, BuilderChecksItsContext)
{
    const Bytes request(1788, 0xFF);

    row().pfnBuild(0, 0, request.data(), nullptr);

    EXPECT_THAT(lines(), testing::ElementsAre(fake::isNullLine("pstOperLog", expected().builder,
                                                               fake::operateLogUnit)));
    EXPECT_EQ(platform.calls().size(), 1U);
}

TEST_P(SubModuleTable, BuilderNamesOnlyTheFirstNullPointer)
{
    row().pfnBuild(0, 0, nullptr, nullptr);

    EXPECT_THAT(lines(), testing::ElementsAre(fake::isNullLine("pNetConfig", expected().builder,
                                                               fake::operateLogUnit)));
}

INSTANTIATE_TEST_SUITE_P(Rows, SubModuleTable, testing::Range<std::size_t>(0, 8));

} // namespace
} // namespace operatelog
