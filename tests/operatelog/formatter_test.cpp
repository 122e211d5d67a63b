// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The formatters that need nothing but their value: words, edge values, and every size of output.
 */
#include <algorithm>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

struct FormatterRow {
    std::string name;
    NW_OPERATE_LOG_FORMAT_FN format;
    Bytes value; /* exactly what may be read */
    std::string text;
};

Bytes text(const std::string &characters)
{
    Bytes bytes(characters.begin(), characters.end());
    bytes.push_back(0);
    return bytes;
}

Bytes ipv6(std::uint8_t first, std::uint8_t last)
{
    Bytes bytes(16);
    bytes.front() = first;
    bytes.back() = last;
    return bytes;
}

#define GRATUITOUS "BMC-generated Gratuitous ARPs"
#define RESPONSES "BMC-generated ARP responses"
#define WATCHDOG " while the Watchdog Timer is running"

/* clang-format off */
const FormatterRow rows[] = {
    {"EnableZero",       NW_OperateLogParEnable,     {0},   "Disabled"},
    {"EnableOne",        NW_OperateLogParEnable,     {1},   "Enabled"},
    {"EnableTwo",        NW_OperateLogParEnable,     {2},   "Enabled"},
    {"EnableMax",        NW_OperateLogParEnable,     {255}, "Enabled"},

    {"ManualAutoZero",   NW_OperateLogParManualAuto, {0},   "Manual"},
    {"ManualAutoOne",    NW_OperateLogParManualAuto, {1},   "Auto"},
    {"ManualAutoMax",    NW_OperateLogParManualAuto, {255}, "Auto"},

    {"DnsModeZero",      NW_OperateLogParDnsMode,    {0},   "Disabled"},
    {"DnsModeOne",       NW_OperateLogParDnsMode,    {1},   "Manual"},
    {"DnsModeTwo",       NW_OperateLogParDnsMode,    {2},   "Auto"},

    {"LanSrcZero",       NW_OperateLogParLanSrc,     {0},   "Static"},
    {"LanSrcOne",        NW_OperateLogParLanSrc,     {1},   "Static"},
    {"LanSrcTwo",        NW_OperateLogParLanSrc,     {2},   "DHCP"},
    {"LanSrcThree",      NW_OperateLogParLanSrc,     {3},   "Static"},

    {"DuplexZero",       NW_OperateLogParDuplex,     {0},   "half"},
    {"DuplexOne",        NW_OperateLogParDuplex,     {1},   "full"},
    {"DuplexMax",        NW_OperateLogParDuplex,     {255}, "full"},

    {"NetModeZero",      NW_OperateLogParNetMode,    {0},   "Normal"},
    {"NetModeOne",       NW_OperateLogParNetMode,    {1},   "Active/standby"},
    {"NetModeMax",       NW_OperateLogParNetMode,    {255}, "Active/standby"},

    {"LldpZero",         NW_OperateLogLLDPMode,      {0},   "Unknown"},
    {"LldpOne",          NW_OperateLogLLDPMode,      {1},   "TX"},
    {"LldpTwo",          NW_OperateLogLLDPMode,      {2},   "RX"},
    {"LldpThree",        NW_OperateLogLLDPMode,      {3},   "TXRX"},
    {"LldpFour",         NW_OperateLogLLDPMode,      {4},   "Unknown"},
    {"LldpMax",          NW_OperateLogLLDPMode,      {255}, "Unknown"},

    {"ArpCtlNone",       NW_OperateLogParARPCtl,     {0},
     "disable " GRATUITOUS ", disable " RESPONSES},
    {"ArpCtlGratuitous", NW_OperateLogParARPCtl,     {1},
     "enable " GRATUITOUS ", disable " RESPONSES},
    {"ArpCtlResponses",  NW_OperateLogParARPCtl,     {2},
     "disable " GRATUITOUS ", enable " RESPONSES},
    {"ArpCtlBoth",       NW_OperateLogParARPCtl,     {3},
     "enable " GRATUITOUS ", enable " RESPONSES},
    {"ArpCtlOtherBits",  NW_OperateLogParARPCtl,     {0xFC},
     "disable " GRATUITOUS ", disable " RESPONSES},

    {"ArpSuspendNone",       NW_OperateLogParARPSuspend, {0},
     "do not suspend " GRATUITOUS WATCHDOG ", do not suspend " RESPONSES WATCHDOG},
    {"ArpSuspendGratuitous", NW_OperateLogParARPSuspend, {1},
     "suspend " GRATUITOUS WATCHDOG ", do not suspend " RESPONSES WATCHDOG},
    /* One of the four lacks its article. */
    {"ArpSuspendResponses",  NW_OperateLogParARPSuspend, {2},
     "do not suspend " GRATUITOUS WATCHDOG ", suspend " RESPONSES " while Watchdog Timer is running"},
    {"ArpSuspendBoth",       NW_OperateLogParARPSuspend, {3},
     "suspend " GRATUITOUS WATCHDOG ", suspend " RESPONSES " while Watchdog Timer is running"},
    {"ArpSuspendOtherBits",  NW_OperateLogParARPSuspend, {0xFC},
     "do not suspend " GRATUITOUS WATCHDOG ", do not suspend " RESPONSES WATCHDOG},

    {"StrEmpty",         NW_OperateLogParStr,        text(""),                    ""},
    {"StrShort",         NW_OperateLogParStr,        text("bmc"),                 "bmc"},
    {"StrFillsBuffer",   NW_OperateLogParStr,        text(std::string(299, 'a')), std::string(299, 'a')},
    {"StrPercent",       NW_OperateLogParStr,        text("100%s%n"),             "100%s%n"},

    {"DomainEmpty",      NW_OperateLogParDNSDomain,  text(""),                    ""},
    {"DomainShort",      NW_OperateLogParDNSDomain,  text("example.org"),         "example.org"},
    {"Domain31",         NW_OperateLogParDNSDomain,  text(std::string(31, 'd')),  std::string(31, 'd')},
    {"Domain32",         NW_OperateLogParDNSDomain,  text(std::string(32, 'd')),  std::string(32, 'd')},

    {"UshortZero",       NW_OperateLogParUshort,     {0, 0},                      "0"},
    {"UshortVlan",       NW_OperateLogParUshort,     {0xFE, 0x0F},                "4094"},
    {"UshortMax",        NW_OperateLogParUshort,     {0xFF, 0xFF},                "65535"},

    {"IntZero",          NW_OperateLogParInt,        {0, 0, 0, 0},                "0"},
    {"IntSpeed",         NW_OperateLogParInt,        {0xE8, 0x03, 0, 0},          "1000"},
    {"IntLargest",       NW_OperateLogParInt,        {0xFF, 0xFF, 0xFF, 0x7F},    "2147483647"},
    {"IntNegative",      NW_OperateLogParInt,        {0, 0, 0, 0x80},             "-2147483648"},
    {"IntMinusOne",      NW_OperateLogParInt,        {0xFF, 0xFF, 0xFF, 0xFF},    "-1"},

    {"Ipv4Zero",         NW_OperateLogParIpv4,       {0, 0, 0, 0},                ""},
    {"Ipv4Address",      NW_OperateLogParIpv4,       {192, 168, 1, 20},           "192.168.1.20"},
    {"Ipv4Last",         NW_OperateLogParIpv4,       {0, 0, 0, 1},                "0.0.0.1"},
    {"Ipv4Full",         NW_OperateLogParIpv4,       {255, 255, 255, 255},        "255.255.255.255"},

    {"Ipv6Zero",         NW_OperateLogParIpv6,       Bytes(16),                   ""},
    {"Ipv6Loopback",     NW_OperateLogParIpv6,       ipv6(0, 1),                  "::1"},
    {"Ipv6First",        NW_OperateLogParIpv6,       ipv6(1, 0),                  "100::"},
    {"Ipv6Address",      NW_OperateLogParIpv6,
     {0x20, 0x01, 0x0D, 0xB8, 0x00, 0x20, 0, 0, 0, 0, 0, 0, 0xAB, 0xCD, 0, 2},    "2001:db8:20::abcd:2"},
    {"Ipv6Full",         NW_OperateLogParIpv6,       Bytes(16, 0xFF),
     "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},
    {"Ipv6Mapped",       NW_OperateLogParIpv6,
     {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 10, 1, 2, 3},                     "::ffff:10.1.2.3"},

    {"HeaderZero",       NW_OperateLogParIpv4Header, {0, 0, 0},
     "TTL: 0x00, Header Flags: 0x00, Precedence: 0x00, Type Of Service: 0x00"},
    {"HeaderFull",       NW_OperateLogParIpv4Header, {0xFF, 0xFF, 0xFF},
     "TTL: 0xff, Header Flags: 0xff, Precedence: 0xe0, Type Of Service: 0x1e"},
    {"HeaderInPlace",    NW_OperateLogParIpv4Header, {0x40, 0x02, 0x31},
     "TTL: 0x40, Header Flags: 0x02, Precedence: 0x20, Type Of Service: 0x10"},
};
/* clang-format on */

/* Formats into a block of exactly that size, poisoned before. */
std::string formatInto(const FormatterRow &row, std::uint32_t size)
{
    std::vector<char> output(size, 'x');
    row.format(row.value.data(), size, output.data());
    return std::string(output.data(), strnlen(output.data(), size));
}

class Formatter : public fake::FakePlatformRows<FormatterRow> {};

TEST_P(Formatter, ReplacesTheOutputByTheWords)
{
    EXPECT_EQ(formatInto(GetParam(), 300), GetParam().text);
    EXPECT_THAT(platform.calls(), IsEmpty());
}

TEST_P(Formatter, CutsAtEverySmallerSize)
{
    const std::string &text = GetParam().text;
    const auto length = static_cast<std::uint32_t>(text.size());
    for (std::uint32_t size = 1; size <= std::min(length + 2, 300U); ++size) {
        EXPECT_EQ(formatInto(GetParam(), size), text.substr(0, size - 1)) << "size " << size;
    }
}

TEST_P(Formatter, WritesNothingIntoASizeOfZero)
{
    char output = 'x';
    GetParam().format(GetParam().value.data(), 0, &output);
    EXPECT_EQ(output, 'x');
}

TEST_P(Formatter, ReadsAtAnyAlignment)
{
    for (const std::size_t misalignment : {1U, 2U, 3U}) {
        Bytes shifted(misalignment, 0xA5);
        shifted.insert(shifted.end(), GetParam().value.begin(), GetParam().value.end());
        shifted.shrink_to_fit();
        std::vector<char> output(300, 'x');

        GetParam().format(shifted.data() + misalignment, 300, output.data());

        EXPECT_EQ(std::string(output.data()), GetParam().text);
    }
}

INSTANTIATE_TEST_SUITE_P(Values, Formatter, testing::ValuesIn(rows), fake::RowName());

class DnsMode : public fake::FakePlatformTest, public testing::WithParamInterface<int> {};

TEST_P(DnsMode, OutsideTheWordsLeavesTheOutput)
{
    const auto mode = static_cast<std::uint8_t>(GetParam());
    Bytes output(300, 'x');

    NW_OperateLogParDnsMode(&mode, 300, reinterpret_cast<char *>(output.data()));

    EXPECT_THAT(output, Each('x'));
    EXPECT_THAT(platform.calls(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Unknown, DnsMode, testing::Values(3, 4, 128, 255));

class LongDomain : public fake::FakePlatformTest, public testing::WithParamInterface<std::size_t> {
protected:
    static Bytes domain(std::size_t length)
    {
        std::string characters(length, 'd');
        characters[31] = 'e';
        characters[32] = 'f';
        return text(characters);
    }

    const std::string expected = std::string(31, 'd') + "e...";
};

TEST_P(LongDomain, GivesThirtyTwoCharactersDotsAndALine)
{
    const FormatterRow row{"", NW_OperateLogParDNSDomain, domain(GetParam()), expected};

    for (std::uint32_t size = 1; size <= 40; ++size) {
        platform.clearCalls();
        EXPECT_EQ(formatInto(row, size), expected.substr(0, size - 1)) << "size " << size;
        EXPECT_THAT(lines(), ElementsAre(fake::isLine(fake::operateLogUnit, fake::info,
                                                      "DNS domain exceeds 32 characters.")));
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, LongDomain, testing::Values(33U, 34U, 255U, 259U, 400U));

/* The stored field may lack its terminator: nothing behind the deciding character is needed. */
TEST_F(LongDomain, NeedsNoTerminatorBehindTheThirtyThirdCharacter)
{
    Bytes unterminated = domain(33);
    unterminated.resize(260, 'd');
    unterminated.shrink_to_fit();
    std::replace(unterminated.begin(), unterminated.end(), std::uint8_t{0}, std::uint8_t{'d'});
    const FormatterRow row{"", NW_OperateLogParDNSDomain, unterminated, expected};

    EXPECT_EQ(formatInto(row, 300), expected);
}

} // namespace
