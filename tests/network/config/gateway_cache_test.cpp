// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The gateway's address from the ARP cache: every kind of line, and the rules at the end of the
// file. The active probe behind it opens no socket here.
#include "gateway_fixture.hpp"

namespace {

using gateway::infoLine;
using gateway::Lines;
using gateway::Piece;
using gateway::script;
using gateway::untouched;
using support::Bytes;
using support::debugLine;
using support::errorLine;
using support::operator+;

const std::string path = "/proc/net/arp";
const std::string heading =
    "IP address       HW type     Flags       HW address            Mask     Device\n";
const std::string own = "10.0.1.254"; // gateway of eth1
const std::string mac = "02:aa:bb:cc:dd:0e";

std::string row(const std::string &ip, const std::string &hardware, const std::string &device,
                const std::string &end = "\n")
{
    return ip + "       0x1         0x2         " + hardware + "     *        " + device + end;
}

/* ---- Lines that the library logs ---- */

const std::string firstLine = infoLine("First line  while scanning " + path + ".");
const std::string noData = errorLine("No data while scanning " + path + ".");
const std::string found = infoLine("Get gatewayMac compare cache success");
const std::string badMac = errorLine("Convert mac str to net failed.");
const Lines atTheEnd = {errorLine("No default entry in gateway info.\n"),
                        debugLine("Dropping To original socket method"),
                        errorLine("Open socket faild.")};

Lines compared(const std::string &ip, const std::string &device, const std::string &name = "eth1")
{
    return {debugLine("IpTmp:" + ip + ", GatewayIp:" + own),
            debugLine("IfcNameTmp:" + device + ", IfcName:" + name)};
}
Lines refused(const std::string &text)
{
    return {errorLine("Mac Addr[" + text + "] is not intacted."), badMac};
}

struct Cache {
    std::string name;
    std::vector<Piece> pieces;
    std::string expected;
    Lines lines;
};

class GatewayCache : public gateway::GatewayTest {
protected:
    GatewayCache()
    {
        script().socketOpens = false;
    }
};
class GatewayCacheRows : public GatewayCache, public ::testing::WithParamInterface<Cache> {};

TEST_P(GatewayCacheRows, AreReadAsTold)
{
    script().cache = GetParam().pieces;
    EXPECT_EQ(ask(1), GetParam().expected);
    EXPECT_EQ(support::loggedLines(), GetParam().lines);
}

const Lines start = {firstLine};
const Lines matched = compared(own, "eth1");
const Lines foreignIp = compared("10.0.1.25", "eth1");
const Lines foreignDevice = compared(own, "eth0");

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Matches, GatewayCacheRows, ::testing::Values(
    Cache{"OnlyLine",       {{heading}, {row(own, mac, "eth1")}}, mac, start + matched + Lines{found}},
    Cache{"OneRead",        {{heading + row(own, mac, "eth1") + row(own, "02:00:00:00:00:01", "eth1")}}, mac, start + matched + Lines{found}},
    Cache{"SingleBlanks",   {{heading}, {own + " 0x1 0x2 " + mac + " * eth1\n"}}, mac, start + matched + Lines{found}},
    Cache{"Tabs",           {{heading}, {"\t" + own + "\t0x1\t0x2\t" + mac + "\t*\teth1\n"}}, mac, start + matched + Lines{found}},
    Cache{"SeventhWord",    {{heading}, {row(own, mac, "eth1", " more\n")}}, mac, start + matched + Lines{found}},
    Cache{"UpperCase",      {{heading}, {row(own, "02:AA:BB:CC:DD:0E", "eth1")}}, mac, start + matched + Lines{found}},
    Cache{"Incomplete",     {{heading}, {own + " 0x1 0x0 00:00:00:00:00:00 * eth1\n"}}, "00:00:00:00:00:00", start + matched + Lines{found}},
    Cache{"BehindOthers",   {{heading}, {row("10.0.1.25", mac, "eth1")}, {row(own, "02:00:00:00:00:01", "eth0")}, {row(own, mac, "eth1")}}, mac,
          start + foreignIp + foreignDevice + matched + Lines{found}},
    Cache{"FirstOfTwo",     {{heading}, {row(own, mac, "eth1")}, {row(own, "02:00:00:00:00:01", "eth1")}}, mac, start + matched + Lines{found}},
    Cache{"BehindBadMac",   {{heading}, {row(own, "02:aa:bb", "eth1")}, {row(own, mac, "eth1")}}, mac,
          start + matched + refused("02:aa:bb") + matched + Lines{found}},
    Cache{"BehindReadError", {{heading}, {"", true}, {row(own, mac, "eth1")}}, mac, start + Lines{noData} + matched + Lines{found}},
    Cache{"ReadErrorFirst", {{"", true}, {heading}, {row(own, mac, "eth1")}}, mac, Lines{noData} + start + matched + Lines{found}}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(NoMatch, GatewayCacheRows, ::testing::Values(
    Cache{"Empty",          {}, untouched, Lines{noData} + atTheEnd},
    Cache{"HeadingOnly",    {{heading}}, untouched, start + Lines{noData} + atTheEnd},
    Cache{"HeadingCut",     {{"IP address"}}, untouched, start + atTheEnd},
    Cache{"HeadingIsNeverRead", {{row(own, mac, "eth1")}}, untouched, start + Lines{noData} + atTheEnd},
    Cache{"OtherAddress",   {{heading}, {row("10.0.1.25", mac, "eth1")}}, untouched, start + foreignIp + Lines{noData} + atTheEnd},
    Cache{"LongerAddress",  {{heading}, {row("10.0.1.2544", mac, "eth1")}}, untouched, start + compared("10.0.1.2544", "eth1") + Lines{noData} + atTheEnd},
    Cache{"OtherDevice",    {{heading}, {row(own, mac, "eth0")}}, untouched, start + foreignDevice + Lines{noData} + atTheEnd},
    Cache{"LongerDevice",   {{heading}, {row(own, mac, "eth1.7")}}, untouched, start + compared(own, "eth1.7") + Lines{noData} + atTheEnd},
    Cache{"ShorterDevice",  {{heading}, {row(own, mac, "eth")}}, untouched, start + compared(own, "eth") + Lines{noData} + atTheEnd},
    Cache{"BadMac",         {{heading}, {row(own, "02:aa:bb:cc:dd", "eth1")}}, untouched,
          start + matched + refused("02:aa:bb:cc:dd") + Lines{noData} + atTheEnd},
    Cache{"NoMac",          {{heading}, {row(own, "*", "eth1")}}, untouched, start + matched + refused("*") + Lines{noData} + atTheEnd}),
    fake::RowName{});

// The file ends when the C library has seen its end: only a last line without a newline shows it.
INSTANTIATE_TEST_SUITE_P(End, GatewayCacheRows, ::testing::Values(
    Cache{"MatchWithoutNewline", {{heading}, {row(own, mac, "eth1", "")}}, mac, start + matched + Lines{found} + atTheEnd},
    Cache{"OtherWithoutNewline", {{heading}, {row("10.0.1.25", mac, "eth1", "")}}, untouched, start + foreignIp + atTheEnd},
    Cache{"BadMacWithoutNewline", {{heading}, {row(own, "02", "eth1", "")}}, untouched, start + matched + refused("02") + atTheEnd},
    Cache{"MatchThenUnfinishedLine", {{heading}, {row(own, mac, "eth1")}, {"10."}}, mac, start + matched + Lines{found}}),
    fake::RowName{});
/* clang-format on */

// A line that holds nothing is passed over without a word.
TEST_F(GatewayCache, EmptyLineIsSkipped)
{
    script().cache = {{heading}, {"\n"}, {row(own, mac, "eth1")}};
    EXPECT_EQ(ask(1), mac);
    EXPECT_EQ(support::loggedLines(), start + matched + Lines{found});
}

// What a short line lacks is not taken from the line before.
TEST_F(GatewayCache, ShortLineDoesNotMatch)
{
    script().cache = {{heading},
                      {row("10.0.1.25", mac, "eth1")},
                      {own + "\n"},
                      {own + " 0x1 0x2 02:01:02:03:04:05\n"}};
    EXPECT_EQ(ask(1), untouched);
}

struct LongWord {
    std::string name;
    std::string line;
};
class GatewayLongWords : public GatewayCache, public ::testing::WithParamInterface<LongWord> {};

// Whatever the words of other lines are, nothing is overrun and the right line still matches.
TEST_P(GatewayLongWords, DoNoHarm)
{
    script().cache = {{heading}, {GetParam().line + "\n"}, {row(own, mac, "eth1")}};
    EXPECT_EQ(ask(1), mac);
    EXPECT_EQ(support::loggedLines().back(), found);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, GatewayLongWords, ::testing::Values(
    LongWord{"Address",      std::string(200, '1') + " 0x1 0x2 " + mac + " * eth1"},
    LongWord{"Type",         own + " " + std::string(200, 'x') + " 0x2 " + mac + " * eth0"},
    LongWord{"Flags",        own + " 0x1 " + std::string(200, 'x') + " " + mac + " * eth0"},
    LongWord{"Mac",          own + " 0x1 0x2 " + std::string(200, 'a') + " * eth0"},
    LongWord{"Mask",         own + " 0x1 0x2 " + mac + " " + std::string(180, '*') + " eth0"},
    LongWord{"Device",       own + " 0x1 0x2 " + mac + " * " + std::string(180, 'e')},
    LongWord{"OneWord254",   std::string(254, 'w')},
    LongWord{"OneWord255",   std::string(255, 'w')},
    LongWord{"OneWord256",   std::string(256, 'w')},
    LongWord{"OneWord3000",  std::string(3000, 'w')},
    LongWord{"Blanks",       std::string(1000, ' ')},
    LongWord{"Formats",      "%s%n %s%n %n %s %n %n"},
    LongWord{"HighBytes",    std::string(100, '\xFF') + " \x80 \x81 \x82 \x83 \x84"}),
    fake::RowName{});
/* clang-format on */

TEST_F(GatewayCache, UnreadableFileIsLogged)
{
    script().cacheOpens = false;
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), (Lines{errorLine("fopen failed for " + path + "\n"),
                                             debugLine("Dropping To original socket method"),
                                             errorLine("Open socket faild.")}));
}

// Each port has a gateway, a name and an entry of its own.
TEST_F(GatewayCache, EveryPortLooksForItsOwn)
{
    const std::string names[] = {"eth0", "eth1", "bond0"};
    for (std::uint8_t port = 0; port < 3; ++port) {
        script().cache = {{heading}};
        for (int other = 2; other >= 0; --other) {
            const std::string number = std::to_string(other);
            script().cache.push_back(
                {row("10.0." + number + ".254", "02:00:00:00:00:0" + number, names[other])});
        }
        EXPECT_EQ(ask(port), "02:00:00:00:00:0" + std::to_string(port));
    }
    EXPECT_EQ(script().calls, (std::vector<std::string>{"fopen " + path, "fclose", "fopen " + path,
                                                        "fclose", "fopen " + path, "fclose"}));
}

// A stored name that fills its 16 bytes ends there.
TEST_F(GatewayCache, NameWithoutTerminatorEndsWithItsField)
{
    const std::string name = "abcdefghijklmnop";
    support::putText(ifc, 35 + 16, name);
    script().cache = {{heading}, {row(own, mac, name)}};
    EXPECT_EQ(ask(1), mac);
    EXPECT_EQ(support::loggedLines(), start + compared(own, name, name) + Lines{found});
}

TEST_F(GatewayCache, UnconfiguredGatewayReturnsAtOnce)
{
    support::put(lan.bytes(), entry(1) + support::at::ipv4Gateway, support::ipv4("0.0.0.0"));
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), Lines{});
    EXPECT_TRUE(script().calls.empty());
}

TEST_F(GatewayCache, PortsThatDoNotExistReturnAtOnce)
{
    script().cache = {{heading}, {row(own, mac, "eth1")}};
    for (const std::uint8_t port : Bytes{3, 4, 100, 200, 255}) {
        EXPECT_EQ(ask(port), untouched);
    }
    EXPECT_EQ(support::loggedLines(), Lines{});
    EXPECT_TRUE(script().calls.empty());
}

TEST_F(GatewayCache, UnreadableInterfaceStateIsLogged)
{
    platform.setRecord(gateway::ifcKey, ifc);
    platform.failGet(gateway::ifcKey, -5, Bytes(84, 0xDD));
    EXPECT_EQ(ask(1), untouched);
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(support::loggedLines()[1], errorLine("failed to get netmode."));
    EXPECT_TRUE(script().calls.empty());
}

TEST_F(GatewayCache, UnreadableLanConfigurationIsLogged)
{
    platform.setRecord(gateway::ifcKey, ifc);
    platform.failGet(gateway::lanKey, -5, Bytes(2377, 0xDD));
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), (Lines{errorLine("Get lancfg info failed, Ret:-5"),
                                             errorLine("Get lancfg info from LMDB failed.")}));
    EXPECT_TRUE(script().calls.empty());
}

// Both records are read into zeroed memory.
TEST_F(GatewayCache, RecordsAreReadIntoZeros)
{
    script().cache = {{heading}, {row(own, mac, "eth1")}};
    ask(1);
    const auto reads = platform.callsTo("DB_Get");
    ASSERT_EQ(reads.size(), 2U);
    EXPECT_EQ(reads[0].key, gateway::ifcKey);
    EXPECT_EQ(reads[0].data, Bytes(84));
    EXPECT_EQ(reads[1].key, gateway::lanKey);
    EXPECT_EQ(reads[1].data, Bytes(2377));
}

TEST_F(GatewayCache, NullIsLogged)
{
    NW_GetV4DefaultGwMacAddr(1, nullptr);
    EXPECT_THAT(lines(),
                ::testing::ElementsAre(fake::isNullLine("pucMacAddr", "NW_GetV4DefaultGwMacAddr")));
    EXPECT_EQ(platform.calls().size(), 1U);
}

} // namespace
