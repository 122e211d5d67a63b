// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What makes the LAN query fail, with which code and line; nothing is written then.
#include <functional>

#include "query_fixture.hpp"

namespace {

using query::Board;
using query::Bytes;
using support::errorLine;
using support::ifcFailLine;
using support::Lines;
using ::testing::ElementsAre;
using ::testing::Values;

const Bytes poison(query::viewSize, 0xA5);

struct Failure {
    std::string name;
    std::string port;
    std::uint8_t mode;
    std::function<void(Board &)> script;
    std::function<void(fake::Platform &)> fail;
    std::uint32_t expected;
    Lines lines;
};
using LanQueryFailure = fake::FakePlatformRows<Failure>;

TEST_P(LanQueryFailure, HasItsCodeAndLinesAndWritesNothing)
{
    Board board = query::distinctBoard(GetParam().mode, 0);
    GetParam().script(board);
    query::prepare(board);
    GetParam().fail(platform);

    const query::Answer answer = query::getLanConfig(GetParam().port, poison);
    EXPECT_EQ(answer.result, GetParam().expected);
    EXPECT_EQ(answer.view, poison);
    EXPECT_EQ(support::loggedLines(), GetParam().lines);
    EXPECT_TRUE(kernel::script().calls.empty());
    EXPECT_TRUE(platform.callsTo("USBMANAGE_GetWirelessServiceInfo").empty());
}

void asItIs(Board &) {}
void healthy(fake::Platform &) {}

void putName(Board &board, std::size_t port, const std::string &name)
{
    std::fill_n(board.ifc.begin() + static_cast<std::ptrdiff_t>(35 + 16 * port), 16,
                std::uint8_t{0});
    support::putText(board.ifc, 35 + 16 * port, name);
}

const std::string noMode = "Get netmode from LMDB failed.";
const std::string noLan = "Get lan config info from LMDB failed.";

Lines badName(const std::string &name)
{
    return {errorLine("Ethernet name[" + name + "] is invalid.")};
}
Lines badMode(const std::string &name, int mode)
{
    return {errorLine(
        fake::formatted("Can not get %s eth info when net-mode is %d.", name.c_str(), mode))};
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(InterfaceState, LanQueryFailure, Values(
    Failure{"NoDatabase", "eth0", 0, asItIs, [](auto &platform) { platform.failOpen(); }, 0x81000001,
            {ifcFailLine("Failed to open lmdb database."), errorLine(noMode)}},
    Failure{"NoCurrentDatabase", "eth0", 0, asItIs, [](auto &platform) { platform.failCurrentDb(); }, 0x81000001,
            {ifcFailLine("Failed to get interface state lmdb information!\n"), errorLine(noMode)}},
    Failure{"ReadFails", "eth0", 0, asItIs, [](auto &platform) { platform.failGet(0x10610007, -30, Bytes(84, 1)); },
            static_cast<std::uint32_t>(-30),
            {ifcFailLine("Get interface state info failed!\n"), errorLine(noMode)}},
    Failure{"ReadFirst", "nosuch", 0, asItIs, [](auto &platform) { platform.failGet(0x10610007, 5); }, 5,
            {ifcFailLine("Get interface state info failed!\n"), errorLine(noMode)}}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(Name, LanQueryFailure, Values(
    Failure{"Unknown",      "eth2",   0, asItIs, healthy, 0x81000001, badName("eth2")},
    Failure{"Empty",        "",       0, asItIs, healthy, 0x81000001, badName("")},
    Failure{"Beginning",    "eth",    0, asItIs, healthy, 0x81000001, badName("eth")},
    Failure{"Longer",       "eth00",  0, asItIs, healthy, 0x81000001, badName("eth00")},
    Failure{"OtherCase",    "ETH0",   0, asItIs, healthy, 0x81000001, badName("ETH0")},
    Failure{"NotFixed",     "eth0",   0, [](Board &board) { putName(board, 0, "lan0"); }, healthy,
            0x81000001, badName("eth0")},
    Failure{"NamesNotEnded", "eth0",  0, [](Board &board) {
                for (std::size_t port = 0; port < 3; ++port) { putName(board, port, std::string(16, 'e')); }
                board.ifc[83] = 'e'; }, healthy, 0x81000001, badName("eth0")},
    Failure{"LongerThanNotEnded", std::string(17, 'e'), 0, [](Board &board) {
                putName(board, 2, std::string(16, 'e')); board.ifc[83] = 'e'; }, healthy,
            0x81000001, badName(std::string(17, 'e'))}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(NetMode, LanQueryFailure, Values(
    Failure{"Bond0Separate", "bond0", 0,   asItIs, healthy, 0x81000001, badMode("bond0", 0)},
    Failure{"Eth0Bonded",    "eth0",  1,   asItIs, healthy, 0x81000001, badMode("eth0", 1)},
    Failure{"Eth1Bonded",    "eth1",  1,   asItIs, healthy, 0x81000001, badMode("eth1", 1)},
    Failure{"Eth0OtherMode", "eth0",  2,   asItIs, healthy, 0x81000001, badMode("eth0", 2)},
    Failure{"Bond0OtherMode", "bond0", 255, asItIs, healthy, 0x81000001, badMode("bond0", 255)},
    Failure{"FirstMatchCounts", "eth0", 1, [](Board &board) { putName(board, 2, "eth0"); }, healthy,
            0x81000001, badMode("eth0", 1)},
    Failure{"GateBeforeRecord", "eth0", 1, asItIs, [](auto &platform) { platform.failGet(0x10610003, -1); },
            0x81000001, badMode("eth0", 1)}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(LanRecord, LanQueryFailure, Values(
    Failure{"ReadFails", "eth0", 0, asItIs,
            [](auto &platform) { platform.failGet(0x10610003, -30, Bytes(2377, 0x11)); }, 0x81000006,
            {errorLine("Get lancfg info failed, Ret:-30"), errorLine(noLan)}},
    Failure{"OtherSize", "eth1", 0, asItIs,
            [](auto &platform) { platform.setRecord(0x10610003, Bytes(2376)); }, 0x81000006,
            {errorLine("Get lancfg info failed, Ret:-413"), errorLine(noLan)}}),
    fake::RowName{});
/* clang-format on */

class LanQueryNulls : public fake::FakePlatformTest {};

TEST_F(LanQueryNulls, AreNamedInOrderBeforeAnythingIsRead)
{
    NW_ETHER_INS_INFO_S view{};
    EXPECT_EQ(LIB_NW_GetLanConfig(nullptr, &view), 0x81000002U);
    EXPECT_EQ(LIB_NW_GetLanConfig("eth0", nullptr), 0x81000002U);
    EXPECT_EQ(LIB_NW_GetLanConfig(nullptr, nullptr), 0x81000002U);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pcEthName", "LIB_NW_GetLanConfig"),
                                     fake::isNullLine("pstEtherInsInfo", "LIB_NW_GetLanConfig"),
                                     fake::isNullLine("pcEthName", "LIB_NW_GetLanConfig")));
    EXPECT_TRUE(platform.callsTo("DB_Open").empty());
}

// The names are the record's, whatever they are.
TEST(LanQueryNames, ComeFromTheRecord)
{
    Board board = query::distinctBoard(0, 1);
    putName(board, 1, "a-name-of-15-ch");
    query::prepare(board);
    const query::Answer answer = query::getLanConfig("a-name-of-15-ch", poison);
    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(query::difference(answer.view, query::expectedView(board, 1, poison).bytes()), "");
}

class AllLanConfig : public fake::FakePlatformTest {
protected:
    std::uint32_t read(const Bytes &before)
    {
        const support::Guarded record(before);
        const std::uint32_t result = LIB_NW_GetAllLanConfig(record.as<NW_LAN_CFG_DB_INFO_S>());
        after_.assign(record.bytes().begin(), record.bytes().end());
        return result;
    }
    const Bytes before_ = Bytes(support::kLanRecordSize, 0xA5);
    Bytes after_;
};

TEST_F(AllLanConfig, IsTheStoredRecord)
{
    const Board board = query::distinctBoard(0, 1);
    board.install();
    EXPECT_EQ(read(before_), 0U);
    EXPECT_EQ(after_, board.lan.bytes());
    EXPECT_EQ(platform.callNames(),
              (std::vector<std::string>{"DB_Open", "DB_GetCurrentDb", "DB_Get"}));
}

TEST_F(AllLanConfig, OnAFailedReadStaysAsItWas)
{
    platform.failGet(0x10610003, 77, Bytes(2377, 0x33));
    EXPECT_EQ(read(before_), 0x81000006U);
    EXPECT_EQ(after_, before_);
    platform.reset();
    platform.failOpen();
    EXPECT_EQ(read(before_), 0x81000001U);
    EXPECT_EQ(after_, before_);
    platform.reset();
    platform.failCurrentDb();
    EXPECT_EQ(read(before_), 0x81000005U);
    EXPECT_EQ(after_, before_);
}

TEST_F(AllLanConfig, SaysNoMoreThanTheAccessorDoes)
{
    platform.failGet(0x10610003, 77);
    read(before_);
    EXPECT_EQ(support::loggedLines(), Lines{errorLine("Get lancfg info failed, Ret:77")});
}

TEST_F(AllLanConfig, NeedsARecord)
{
    EXPECT_EQ(LIB_NW_GetAllLanConfig(nullptr), 0x81000002U);
    EXPECT_THAT(lines(),
                ElementsAre(fake::isNullLine("pstLanCfgDbInfo", "LIB_NW_GetAllLanConfig")));
}

} // namespace
