// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::IsEmpty;

struct Judged {
    const char *kind;
    std::string text;
    Exit status;
    std::string detail;
};

class CheckCommand : public fake::FakePlatformRows<Judged> {};

TEST_P(CheckCommand, GivesItsVerdictInWords)
{
    const auto &[kind, text, status, detail] = GetParam();
    const auto ran = samples::run({"check", kind, "--", text});

    EXPECT_EQ(ran.status, status);
    EXPECT_EQ(ran.out,
              text + (status == Exit::success ? ": valid, " : ": not valid, ") + detail + "\n");
    EXPECT_THAT(ran.err, IsEmpty());
}

TEST_P(CheckCommand, GivesItsVerdictInJson)
{
    const auto &[kind, text, status, detail] = GetParam();
    const auto ran = samples::run({"--json", "check", kind, "--", text});

    EXPECT_EQ(ran.status, status);
    EXPECT_EQ(ran.json(), (nlohmann::json{{"kind", kind},
                                          {"text", text},
                                          {"valid", status == Exit::success},
                                          {"detail", detail}}));
}

constexpr const char *hostRule = "a host name is made of letters, digits and inner hyphens";
constexpr const char *domainRule =
    "a domain is made of two labels or more, with points between them: letters, digits and inner "
    "hyphens, 63 characters a label, 255 in all";

/* clang-format off */
const Judged judged[] = {
    {"address", "192.168.10.2",      Exit::success, "IPv4 address"},
    {"address", "2001:db8::1",       Exit::success, "IPv6 address"},
    {"address", "127.0.0.1",         Exit::refused, "a loopback address"},
    {"address", "::1",               Exit::refused, "the loopback address"},
    {"address", "fe80::1",           Exit::refused, "a link-local address"},
    {"address", "a:b",               Exit::refused, "neither an IPv4 nor an IPv6 address"},
    {"address", "bmc.example.net",   Exit::refused, "neither an IPv4 nor an IPv6 address"},
    {"address", "",                  Exit::refused, "neither an IPv4 nor an IPv6 address"},
    {"mask",    "255.255.255.0",     Exit::success, "IPv4 mask of prefix length 24"},
    {"mask",    "255.255.255.255",   Exit::success, "IPv4 mask of prefix length 32"},
    {"mask",    "0.0.0.0",           Exit::success, "IPv4 mask of prefix length 0"},
    {"mask",    "255.0.255.0",       Exit::refused, "the ones of the mask are not contiguous"},
    {"mask",    "254.0.0.0",         Exit::refused, "the first byte of a mask is 255, or the mask is 0.0.0.0"},
    {"mask",    "24",                Exit::refused, "not four bytes in dotted form"},
    {"host",    "bmc-1",             Exit::success, "host name"},
    {"host",    "-bmc",              Exit::refused, hostRule},
    {"host",    "a.b",               Exit::refused, hostRule},
    {"host",    "",                  Exit::refused, hostRule},
    {"host",    std::string(64, 'a'), Exit::success, "host name"},
    {"host",    std::string(65, 'a'), Exit::refused, "longer than 64 characters"},
    {"domain",  "rack1.example.net", Exit::success, "domain"},
    {"domain",  "",                  Exit::success, "no domain"},
    {"domain",  "example",           Exit::refused, domainRule},
    {"domain",  "a..b",              Exit::refused, domainRule},
    {"mac",     "52:54:00:12:34:56", Exit::success, "MAC address 52:54:00:12:34:56"},
    {"mac",     "2:4:6:8:A:C",       Exit::success, "MAC address 02:04:06:08:0a:0c"},
    {"mac",     "00:00:00:00:00:00", Exit::refused, "the all-zero address"},
    {"mac",     "01:00:5e:00:00:01", Exit::refused, "a group address"},
    {"mac",     "52:54:00:12:34",    Exit::refused, "not six bytes in the form xx:xx:xx:xx:xx:xx"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, CheckCommand, ::testing::ValuesIn(judged), [](const auto &row) {
    return row.param.kind + std::to_string(row.index);
});

class CheckOutput : public fake::FakePlatformTest {};

TEST_F(CheckOutput, IsEscaped)
{
    const std::string text = "a\x1b[2J\xff\n";

    EXPECT_EQ(samples::run({"check", "host", text}).out,
              R"(a\x1b[2J\xff\x0a: not valid, )" + std::string(hostRule) + "\n");
    const auto ran = samples::run({"check", "host", text, "--json"});
    EXPECT_EQ(ran.json()["valid"], false);
    EXPECT_EQ(ran.out.find('\x1b'), std::string::npos);
}

} // namespace
} // namespace nwctl
