// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Every field of the LAN query's view, and every byte that it must leave alone.
#include <functional>

#include "query_fixture.hpp"

namespace {

using query::Board;
using query::Bytes;
using support::PortEntry;
using ::testing::Values;
namespace at = support::at;

const Bytes poison(query::viewSize, 0xA5);

TEST(ViewLayout, FillsTheRecord)
{
    EXPECT_EQ(query::offsetOf("pad"), 2798U);
    EXPECT_EQ(sizeof(NW_ETHER_INS_INFO_S), query::viewSize);
}

struct Case {
    std::string name;
    std::uint8_t mode;
    std::size_t port;
    std::function<void(Board &, PortEntry &)> script;
};
using LanQueryFields = fake::FakePlatformRows<Case>;

TEST_P(LanQueryFields, AreThoseOfTheModelAndNothingElseIsTouched)
{
    const Case &row = GetParam();
    Board board = query::distinctBoard(row.mode, row.port);
    PortEntry entry = board.lan.port(row.port);
    row.script(board, entry);
    query::prepare(board);

    const query::Answer answer = query::getLanConfig(query::portNames[row.port], poison);
    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(query::difference(answer.view, query::expectedView(board, row.port, poison).bytes()),
              "");

    const bool asksKernel = entry[at::ipv6Enable] == 1;
    const auto kernelLines =
        asksKernel ? query::exchangeLines({"Receive data is done."}) : support::Lines{};
    EXPECT_EQ(support::loggedLines(),
              support::operator+(kernelLines, query::expectedEndLines(board)));
    EXPECT_EQ(kernel::script().calls, asksKernel ? query::oneExchange : std::vector<std::string>{});
}

void zero(PortEntry &entry, std::size_t offset, std::size_t count)
{
    std::fill_n(&entry[offset], count, std::uint8_t{0});
}

// Sets one byte of the entry.
auto byte(std::size_t offset, std::uint8_t value)
{
    return [=](Board &, PortEntry &entry) { entry[offset] = value; };
}
auto zeroed(std::size_t offset, std::size_t count)
{
    return [=](Board &, PortEntry &entry) { zero(entry, offset, count); };
}
auto named(const std::string &name)
{
    return [=](Board &, PortEntry &entry) {
        std::ranges::copy(name, entry.data());
        if (name.size() < 40) {
            entry[name.size()] = 0;
        }
    };
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Ports, LanQueryFields, Values(
    Case{"Eth0",  0, 0, [](Board &, PortEntry &) {}},
    Case{"Eth1",  0, 1, [](Board &, PortEntry &) {}},
    Case{"Bond0", 1, 2, [](Board &, PortEntry &) {}}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(Head, LanQueryFields, Values(
    Case{"LanOff",         0, 0, byte(at::lanEnable, 0)},
    Case{"LanTwo",         0, 1, byte(at::lanEnable, 2)},
    Case{"EmptyName",      0, 0, named("")},
    Case{"Name15",         0, 0, named("abcdefghijklmno")},
    Case{"Name16",         0, 0, named("abcdefghijklmnop")},
    Case{"Name17",         0, 1, named("abcdefghijklmnopq")},
    Case{"NameNotEnded",   0, 1, named(std::string(40, 'n'))}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(Ipv4, LanQueryFields, Values(
    Case{"Off",            0, 0, byte(at::ipv4Enable, 0)},
    Case{"Two",            0, 1, byte(at::ipv4Enable, 2)},
    Case{"NoAddress",      0, 0, zeroed(at::ipv4Addr, 4)},
    Case{"NoMask",         0, 0, zeroed(at::ipv4Mask, 4)},
    Case{"NoGateway",      0, 0, zeroed(at::ipv4Gateway, 4)},
    Case{"NoFurther",      0, 0, zeroed(at::ipv4Addr2, 4)},
    Case{"LastByteOnly",   0, 0, zeroed(at::ipv4Addr, 3)},
    Case{"Route1Off",      0, 0, byte(at::ipv4Route[0], 0)},
    Case{"Route1Two",      0, 0, byte(at::ipv4Route[0], 2)},
    Case{"Route2Off",      0, 1, byte(at::ipv4Route[1], 0)},
    Case{"Route2Two",      0, 1, byte(at::ipv4Route[1], 255)},
    Case{"ZeroRoutesHaveTexts", 0, 1, [](Board &, PortEntry &entry) {
             zero(entry, at::ipv4Route[0] + 1, 12); zero(entry, at::ipv4Route[1] + 1, 12); }}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(Ipv6, LanQueryFields, Values(
    Case{"Off",            0, 0, byte(at::ipv6Enable, 0)},
    Case{"Two",            0, 1, byte(at::ipv6Enable, 2)},
    Case{"OffNoLinkLocal", 0, 0, [](Board &, PortEntry &entry) {
             entry[at::ipv6Enable] = 0; zero(entry, at::ipv6LinkLocal, 16); }},
    Case{"NoLinkLocal",    0, 0, zeroed(at::ipv6LinkLocal, 16)},
    Case{"NoAddress",      0, 0, zeroed(at::ipv6Addr, 16)},
    Case{"NoGateway",      0, 0, zeroed(at::ipv6Gateway, 16)},
    Case{"NoGateway2",     0, 0, zeroed(at::ipv6Gateway2, 16)},
    Case{"NoRoute1",       0, 0, zeroed(at::ipv6Route[0] + 1, 16)},
    Case{"NoRoute1Gateway", 0, 0, zeroed(at::ipv6Route[0] + 18, 16)},
    Case{"NoRoute2",       0, 1, zeroed(at::ipv6Route[1] + 1, 16)},
    Case{"NoRoute2Gateway", 0, 1, zeroed(at::ipv6Route[1] + 18, 16)},
    Case{"Route2GatewayZeroHead", 0, 1, zeroed(at::ipv6Route[1] + 18, 4)},
    Case{"RouteStateNotAsked", 0, 1, byte(at::ipv6Route[1], 0)},
    Case{"Count0",         0, 0, byte(at::ipv6Count, 0)},
    Case{"Count1",         0, 0, byte(at::ipv6Count, 1)},
    Case{"Count15",        0, 0, byte(at::ipv6Count, 15)},
    Case{"Count16",        0, 0, byte(at::ipv6Count, 16)},
    Case{"Count17",        0, 1, byte(at::ipv6Count, 17)},
    Case{"Count255",       0, 1, byte(at::ipv6Count, 255)},
    Case{"Count255Bond0",  1, 2, byte(at::ipv6Count, 255)},
    Case{"EmptyFurther",   0, 0, [](Board &, PortEntry &entry) {
             zero(entry, at::ipv6Further, 16); zero(entry, at::ipv6Further + 48, 16); }}),
    fake::RowName{});

// The wireless record only matters to the conflict bits.
void quiet(Board &board, PortEntry &entry)
{
    std::ranges::fill(board.lan.bytes(), std::uint8_t{0});
    entry.ipv4Address("10.77.88.1", "255.255.255.0").set(at::ipv6Enable, 1);
}
INSTANTIATE_TEST_SUITE_P(Wireless, LanQueryFields, Values(
    Case{"Conflict",       0, 1, quiet},
    Case{"NoConflict",     0, 1, [](Board &board, PortEntry &entry) {
             quiet(board, entry); board.wifi.address = support::ipv4("10.77.89.9"); }},
    Case{"Off",            0, 1, [](Board &board, PortEntry &entry) {
             quiet(board, entry); board.wifi.enable = 0; }},
    Case{"EnableTwo",      0, 1, [](Board &board, PortEntry &entry) {
             quiet(board, entry); board.wifi.enable = 2; }},
    Case{"Unreadable",     0, 1, [](Board &board, PortEntry &entry) {
             quiet(board, entry); board.wirelessRead = false; }},
    Case{"BondConflict",   1, 2, quiet},
    Case{"BondUnreadable", 1, 2, [](Board &board, PortEntry &entry) {
             quiet(board, entry); board.wirelessRead = false; }},
    Case{"BothFamilies",   0, 0, [](Board &board, PortEntry &entry) {
             quiet(board, entry);
             entry.ipv6Address("2001:db8::1", 64);
             board.lan.port(1).ipv6Address("2001:db8::2", 64); }},
    Case{"Ipv6SlaacOnly",  0, 0, [](Board &board, PortEntry &entry) {
             quiet(board, entry); board.wifi.enable = 0;
             entry.ipv6Address("2001:db8:1::1", 64).ipv6Further(0, "2001:db8::1", 64);
             board.lan.port(1).ipv6Address("2001:db8:2::1", 64).ipv6Further(0, "2001:db8::2", 64); }}),
    fake::RowName{});
/* clang-format on */

struct ConflictBits {
    std::string name;
    std::uint8_t mode;
    std::size_t port;
    std::function<void(Board &, PortEntry &)> script;
    std::uint8_t expected;
};
using LanQueryConflicts = fake::FakePlatformRows<ConflictBits>;

// The bits once more with plain values, apart from the model.
TEST_P(LanQueryConflicts, SetTheirBits)
{
    Board board = query::distinctBoard(GetParam().mode, GetParam().port);
    PortEntry entry = board.lan.port(GetParam().port);
    GetParam().script(board, entry);
    query::prepare(board);
    const query::Answer answer = query::getLanConfig(query::portNames[GetParam().port], poison);
    EXPECT_EQ(answer.view[1], GetParam().expected);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, LanQueryConflicts, Values(
    ConflictBits{"Ipv4", 0, 1, quiet, 1},
    ConflictBits{"Standby", 1, 2, quiet, 1},
    ConflictBits{"None", 0, 1, [](Board &board, PortEntry &entry) {
                     quiet(board, entry); board.wifi.enable = 0; }, 0},
    ConflictBits{"Both", 0, 1, [](Board &board, PortEntry &entry) {
                     quiet(board, entry); entry.ipv6Address("2001:db8::1", 64);
                     board.lan.port(0).ipv6Address("2001:db8::2", 64); }, 3},
    ConflictBits{"Slaac", 0, 1, [](Board &board, PortEntry &entry) {
                     quiet(board, entry); board.wifi.enable = 0;
                     entry.ipv6Address("2001:db8:1::1", 64).ipv6Further(0, "2001:db8::1", 64);
                     board.lan.port(0).ipv6Address("2001:db8:2::1", 64).ipv6Further(0, "2001:db8::2", 64); }, 2}),
    fake::RowName{});
/* clang-format on */

TEST(LanQuery, ReadsTheRecordsOnceEachAndTheWirelessRecordLast)
{
    query::prepare(query::distinctBoard(0, 0));
    ASSERT_EQ(query::getLanConfig("eth0", poison).result, 0U);

    std::vector<std::string> names = fake::platform().callNames();
    std::erase(names, "BMC_DiagLogOut");
    EXPECT_EQ(names, (std::vector<std::string>{"DB_Open", "DB_GetCurrentDb", "DB_Get", "DB_Open",
                                               "DB_GetCurrentDb", "DB_Get",
                                               "USBMANAGE_GetWirelessServiceInfo"}));
    const auto reads = fake::platform().callsTo("DB_Get");
    EXPECT_EQ(reads[0].key, 0x10610007U);
    EXPECT_EQ(reads[0].size, 84U);
    EXPECT_EQ(reads[1].key, 0x10610003U);
    EXPECT_EQ(reads[1].size, 2377U);
}

TEST(LanQuery, OfARubbishWirelessAddressOnlyTheEnableByteCounts)
{
    Board board = query::distinctBoard(0, 1);
    PortEntry entry = board.lan.port(1);
    quiet(board, entry);
    query::prepare(board);
    fake::platform().setWireless(true, "10.77.88.99.1");
    const query::Answer answer = query::getLanConfig("eth1", poison);
    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(answer.view[1], 0U);
}

} // namespace
