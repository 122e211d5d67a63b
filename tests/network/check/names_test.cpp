// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Host names, domain names and the indexes of a DNS request.
#include "fake_matchers.hpp"
#include "log_text.hpp"
#include "network_mng/check.h"

namespace {

using support::Lines;
using ::testing::ElementsAre;
using ::testing::Values;

struct Name {
    std::string name;
    std::string text;
    std::uint32_t expected;
    const char *line = nullptr; // why it was refused, null: no word
};

using HostName = fake::FakePlatformRows<Name>;

TEST_P(HostName, IsOneLabel)
{
    EXPECT_EQ(LIB_NW_CheckHostName(GetParam().text.c_str()), GetParam().expected);
    EXPECT_TRUE(lines().empty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, HostName, Values(
    Name{"OneLetter",        "a",                    1},
    Name{"OneDigit",         "7",                    1},
    Name{"DigitAndLetter",   "9z",                   1},
    Name{"InnerHyphen",      "a-b",                  1},
    Name{"ManyHyphens",      "a---b",                1},
    Name{"BothCases",        "AZaz09",               1},
    Name{"NoUpperLength",    std::string(300, 'x'),  1},
    Name{"Empty",            "",                     0},
    Name{"HyphenFirst",      "-ab",                  0},
    Name{"HyphenLast",       "ab-",                  0},
    Name{"OneHyphen",        "-",                    0},
    Name{"TwoEndingHyphen",  "a-",                   0},
    Name{"Underscore",       "a_b",                  0},
    Name{"Dot",              "a.b",                  0},
    Name{"Blank",            "a b",                  0},
    Name{"BeforeUpperA",     "@",                    0},
    Name{"BehindUpperZ",     "[",                    0},
    Name{"BeforeLowerA",     "`",                    0},
    Name{"BehindLowerZ",     "{",                    0},
    Name{"BeforeZero",       "/",                    0},
    Name{"BehindNine",       ":",                    0},
    Name{"AboveAscii",       "\xC1",                 0},
    Name{"AboveAsciiInside", "a\xE1" "b",            0},
    Name{"ControlCharacter", "a\x01" "b",            0},
    Name{"FoldsOntoADigit",  "a\x10" "b",            0}),
    fake::RowName{});
/* clang-format on */

class Names : public fake::FakePlatformTest {};

TEST_F(Names, NullTextsAreLoggedAndRefused)
{
    EXPECT_EQ(LIB_NW_CheckHostName(nullptr), 0U);
    EXPECT_EQ(LIB_NW_DomainValidityCheck(nullptr), 0U);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pcHostName", "LIB_NW_CheckHostName"),
                                     fake::isNullLine("pcDomain", "LIB_NW_DomainValidityCheck")));
}

TEST_F(Names, EveryCharacterInEveryPlaceOfAHostName)
{
    for (int code = 1; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const bool inner = code < 0x80 && (std::isalnum(code) != 0 || code == '-');
        const bool outer = inner && code != '-';
        EXPECT_EQ(LIB_NW_CheckHostName(std::string{character, 'x', 'x'}.c_str()) == 1, outer);
        EXPECT_EQ(LIB_NW_CheckHostName(std::string{'x', character, 'x'}.c_str()) == 1, inner);
        EXPECT_EQ(LIB_NW_CheckHostName(std::string{'x', 'x', character}.c_str()) == 1, outer);
    }
}

// Labels of 63 letters behind dots, cut or filled to the length.
std::string domainOfLength(std::size_t length)
{
    const std::string labels = std::string(63, 'a') + "." + std::string(63, 'b') + "." +
                               std::string(63, 'c') + "." + std::string(63, 'd') + ".e";
    return labels.substr(0, length);
}

const char *const tooLong = "Domain length is out of range!";
const char *const zero = "Domain length is zero.";
const char *const badHead = "Domain head must be letter";
const char *const badTail = "Domain fail must is letter or number";
const char *const doublePoint = "Domain has double point";
const char *const noPoint = "Domain has no point";

using Domain = fake::FakePlatformRows<Name>;

TEST_P(Domain, IsTestedInOrderAndTheFirstRefusalSpeaks)
{
    EXPECT_EQ(LIB_NW_DomainValidityCheck(GetParam().text.c_str()), GetParam().expected);
    EXPECT_EQ(support::loggedLines(),
              GetParam().line == nullptr ? Lines{} : Lines{support::errorLine(GetParam().line)});
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Accepted, Domain, Values(
    Name{"TwoLabels",            "a.b",                                1},
    Name{"DigitFirst",           "1abc.com",                           1},
    Name{"DigitLast",            "abc.c0",                             1},
    Name{"Hyphens",              "a-b.c-d",                            1},
    Name{"Empty",                "",                                   1, zero},
    Name{"Label63",              std::string(63, 'a') + ".b",          1},
    Name{"Length255",            domainOfLength(253) + "dd",           1},
    Name{"Length255FiveLabels",  domainOfLength(192) + std::string(61, 'd') + ".e", 1}),
    fake::RowName{});
INSTANTIATE_TEST_SUITE_P(Refused, Domain, Values(
    Name{"Length256",            domainOfLength(192) + std::string(62, 'd') + ".e", 0, tooLong},
    Name{"LengthBeforeHead",     "-" + std::string(300, 'a'),          0, tooLong},
    Name{"Length257",            std::string(257, 'a'),                0, tooLong},
    Name{"Label64",              std::string(64, 'a') + ".b",          0},
    Name{"Label64Last",          "b." + std::string(64, 'a'),          0},
    Name{"HyphenFirst",          "-a.b",                               0, badHead},
    Name{"PointFirst",           ".a.b",                               0, badHead},
    Name{"HeadBeforeTail",       "-a.b-",                              0, badHead},
    Name{"HyphenLast",           "a.b-",                               0, badTail},
    Name{"PointLast",            "a.b.",                               0, badTail},
    Name{"TailBeforeDouble",     "a..b-",                              0, badTail},
    Name{"DoublePoint",          "a..b",                               0, doublePoint},
    Name{"NoPoint",              "example",                            0, noPoint},
    Name{"NoPointBeforeLabels",  "a_b",                                0, noPoint},
    Name{"OneLongLabel",         std::string(255, 'a'),                0, noPoint},
    Name{"Underscore",           "a_b.com",                            0},
    Name{"InnerLabelHyphenEnd",  "a.b-.c",                             0},
    Name{"InnerLabelHyphenHead", "a.-b.c",                             0},
    Name{"HeadAboveAscii",       "\xC1" "a.b",                         0, badHead}),
    fake::RowName{});
/* clang-format on */

struct Indexes {
    std::string name;
    std::uint32_t port;
    std::uint32_t family;
    std::uint32_t expected;
    Lines expectedLines;
};
using DnsIndexes = fake::FakePlatformRows<Indexes>;

TEST_P(DnsIndexes, AreTestedOneByOne)
{
    EXPECT_EQ(LIB_DnsCheckReqIndexField(GetParam().port, GetParam().family), GetParam().expected);
    EXPECT_EQ(support::loggedLines(), GetParam().expectedLines);
}

Lines lines(std::initializer_list<std::string> texts)
{
    Lines all;
    for (const std::string &text : texts) {
        all.push_back(support::errorLine(text));
    }
    return all;
}

const std::string badPort = "invalid req EthIndex!, ucEthIndex = ";
const std::string badFamily = "invalid req IpFamily!, ucIpFamily = ";

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, DnsIndexes, Values(
    Indexes{"FirstOfBoth",  0, 0, 1, {}},
    Indexes{"LastOfBoth",   2, 1, 1, {}},
    Indexes{"Port3",        3, 0, 0, lines({badPort + "3"})},
    Indexes{"Port3Family1", 3, 1, 0, lines({badPort + "3"})},
    Indexes{"Family2",      0, 2, 0, lines({badFamily + "2"})},
    Indexes{"Both",         4, 5, 0, lines({badPort + "4", badFamily + "5"})},
    Indexes{"NotCutToByte", 256, 256, 0, lines({badPort + "256", badFamily + "256"})},
    Indexes{"Largest",      0xFFFFFFFFU, 0xFFFFFFFFU, 0, lines({badPort + "-1", badFamily + "-1"})}),
    fake::RowName{});
/* clang-format on */

} // namespace
