// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The NTP servers that the DHCP client recorded: lease files of the test's own beneath a /run that
// only this program sees. Runs in the sandbox.
#include <sys/un.h>

#include "fake_matchers.hpp"
#include "files.hpp"
#include "guarded.hpp"
#include "lan_record.hpp"
#include "log_text.hpp"
#include "network_mng/discovery.h"

namespace {

using support::Bytes;
using support::debugLine;
using support::errorLine;
using support::Guarded;
using support::Lines;

const std::string folder = "/run/systemd/netif/dhcp/";
const std::string noServer = errorLine("Ntp server ip is null.");

std::string server(const std::string &text)
{
    return support::lineText("10/0/6", "NTP server IP:" + text + ".");
}
std::string noFile(const std::string &path)
{
    return errorLine("EthLeasePath " + path + " is not exist, return.");
}

class NtpServers : public fake::FakePlatformTest {
protected:
    static void SetUpTestSuite()
    {
        support::separateMounts();
        support::mountMemory("/run");
    }
    NtpServers() : free_(support::lowestFreeDescriptor())
    {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        for (std::size_t port = 0; port < 3; ++port) {
            lan.port(port).set(support::at::ipv4Type, 2).set(support::at::ipv6Type, 2);
        }
    }
    ~NtpServers() override
    {
        EXPECT_EQ(support::lowestFreeDescriptor(), free_) << "a file was left open";
    }

    // What the caller's size bytes hold behind the call; 0xEE where nothing was written.
    Bytes askBytes(std::uint8_t family, const std::string &name, std::uint8_t port,
                   std::uint32_t size)
    {
        platform.setRecord(0x10610003, lan.bytes());
        const Guarded text(size, 0xEE);
        LIB_NW_ParseNTPInfo(family, name.c_str(), port, size,
                            static_cast<char *>(static_cast<void *>(text.data())));
        return {text.bytes().begin(), text.bytes().end()};
    }
    // The text written, "untouched" for none.
    std::string ask(std::uint8_t family = 2, const std::string &name = "eth1",
                    std::uint8_t port = 1, std::uint32_t size = 300)
    {
        const Bytes bytes = askBytes(family, name, port, size);
        const auto end = std::ranges::find(bytes, 0);
        return end == bytes.end() ? "untouched" : std::string(bytes.begin(), end);
    }

    support::LanRecord lan;

private:
    const int free_;
};

struct Lease {
    std::string name;
    std::string content;
    std::string expected;
    Lines lines;
};
class NtpLease : public NtpServers, public ::testing::WithParamInterface<Lease> {};

TEST_P(NtpLease, IsRead)
{
    support::writeFile(folder + "eth1.ntpv4", GetParam().content);
    EXPECT_EQ(ask(), GetParam().expected);
    EXPECT_EQ(support::loggedLines(), GetParam().lines);
}

/* clang-format off */
// A line is read in pieces of at most 254 characters.
const std::string long249(249, 'a');

INSTANTIATE_TEST_SUITE_P(Rows, NtpLease, ::testing::Values(
    Lease{"One",            "NTP=10.0.0.1\n", "10.0.0.1", {server("10.0.0.1")}},
    Lease{"Several",        "NTP=10.0.0.1 10.0.0.2\n", "10.0.0.1 10.0.0.2", {server("10.0.0.1 10.0.0.2")}},
    Lease{"AmongOthers",    "ADDRESS=10.0.0.9\nNTP=10.0.0.1\nDNS=10.0.0.8\n", "10.0.0.1", {server("10.0.0.1")}},
    Lease{"LastWins",       "NTP=10.0.0.1\nNTP=10.0.0.2\n", "10.0.0.2", {server("10.0.0.1"), server("10.0.0.2")}},
    Lease{"ShorterLastWins", "NTP=10.0.0.100\nNTP=a\n", "a", {server("10.0.0.100"), server("a")}},
    Lease{"WithoutNewline", "NTP=10.0.0.1", "10.0.0.", {server("10.0.0.")}},
    Lease{"AnyFourthCharacter", "NTP:10.0.0.1\n", "10.0.0.1", {server("10.0.0.1")}},
    Lease{"LongerWord",     "NTPSERVERS=10.0.0.1\n", "ERVERS=10.0.0.1", {server("ERVERS=10.0.0.1")}},
    Lease{"CarriageReturn", "NTP=10.0.0.1\r\n", "10.0.0.1\r", {server("10.0.0.1\r")}},
    Lease{"Empty",          "NTP=\n", "", {server(""), noServer}},
    Lease{"EmptyWithoutNewline", "NTP=", "", {server(""), noServer}},
    Lease{"OneCharacter",   "NTP=a", "", {server(""), noServer}},
    Lease{"PrefixCut",      "NTP\n", "", {server(""), noServer}},
    Lease{"PrefixCutWithoutNewline", "NTP", "", {server(""), noServer}},
    Lease{"EmptyEndsTheSearch", "NTP=\nNTP=10.0.0.1\n", "", {server(""), noServer}},
    Lease{"EmptyBehindAServer", "NTP=10.0.0.1\nNTP=\n", "", {server("10.0.0.1"), server(""), noServer}},
    Lease{"NoFileContent",  "", "untouched", {}},
    Lease{"NoNtpLine",      "DNS=10.0.0.8\n\nnothing\n", "untouched", {}},
    Lease{"LowerCase",      "ntp=10.0.0.1\n", "untouched", {}},
    Lease{"LeadingBlank",   " NTP=10.0.0.1\n", "untouched", {}},
    Lease{"TwoLetters",     "NT", "untouched", {}},
    Lease{"Formats",        "NTP=%s%n%d\n", "%s%n%d", {server("%s%n%d")}},
    Lease{"LineOf254",      "NTP=" + long249 + "\n", long249, {server(long249)}},
    Lease{"LineOf255",      "NTP=" + long249 + "b\n", long249, {server(long249)}},
    Lease{"RestIsALine",    "NTP=" + long249 + "bNTP=10.0.0.1\n", "10.0.0.1", {server(long249), server("10.0.0.1")}},
    Lease{"RestOfAnotherLine", std::string(254, 'x') + "NTP=10.0.0.1\n", "10.0.0.1", {server("10.0.0.1")}}),
    fake::RowName{});
/* clang-format on */

struct Choice {
    std::string name;
    std::uint8_t family;
    std::string interface;
    std::uint8_t port;
    std::string expected;
};
class NtpChoice : public NtpServers, public ::testing::WithParamInterface<Choice> {};

TEST_P(NtpChoice, SelectsTheFile)
{
    for (const char *name : {"eth0", "eth1", "bond0"}) {
        support::writeFile(folder + name + ".ntpv4", "NTP=four of " + std::string(name) + "\n");
        support::writeFile(folder + name + ".ntpv6", "NTP=six of " + std::string(name) + "\n");
    }
    const Choice &row = GetParam();
    EXPECT_EQ(ask(row.family, row.interface, row.port), row.expected);
    EXPECT_EQ(support::loggedLines(), Lines{server(row.expected)});
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NtpChoice, ::testing::Values(
    Choice{"Eth0Ipv4",   2,   "eth0",  0, "four of eth0"},
    Choice{"Eth1Ipv6",   10,  "eth1",  1, "six of eth1"},
    Choice{"Bond0Ipv4",  2,   "bond0", 2, "four of bond0"},
    Choice{"FamilyZero", 0,   "eth0",  0, "six of eth0"},
    Choice{"FamilyAny",  255, "eth0",  0, "six of eth0"},
    Choice{"NameAndPortAreIndependent", 2, "eth0", 2, "four of eth0"}), fake::RowName{});
/* clang-format on */

// Each port has an origin of its own for each family.
TEST_F(NtpServers, OriginMustBeDhcp)
{
    for (const char *suffix : {".ntpv4", ".ntpv6"}) {
        support::writeFile(folder + "eth1" + suffix, "NTP=10.0.0.1\n");
    }
    for (std::uint8_t port = 0; port < 3; ++port) {
        for (const std::uint8_t origin : Bytes{0, 1, 3, 255}) {
            lan.port(port).set(support::at::ipv4Type, origin).set(support::at::ipv6Type, 2);
            platform.clearCalls();
            EXPECT_EQ(ask(2, "eth1", port), "untouched");
            EXPECT_EQ(ask(10, "eth1", port), "10.0.0.1");
            lan.port(port).set(support::at::ipv4Type, 2).set(support::at::ipv6Type, origin);
            EXPECT_EQ(ask(2, "eth1", port), "10.0.0.1");
            EXPECT_EQ(ask(10, "eth1", port), "untouched");
            EXPECT_EQ(support::loggedLines(),
                      (Lines{debugLine("eth1 ipv4 dhcp is not enabled."), server("10.0.0.1"),
                             server("10.0.0.1"), debugLine("eth1 ipv6 dhcp is not enabled.")}));
        }
        lan.port(port).set(support::at::ipv4Type, 2).set(support::at::ipv6Type, 2);
    }
}

TEST_F(NtpServers, MissingFileIsLogged)
{
    EXPECT_EQ(ask(2), "untouched");
    EXPECT_EQ(ask(10), "untouched");
    EXPECT_EQ(support::loggedLines(),
              (Lines{noFile(folder + "eth1.ntpv4"), noFile(folder + "eth1.ntpv6")}));
}

TEST_F(NtpServers, UnreadableFileIsLogged)
{
    // A socket's name exists and cannot be opened.
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, (folder + "eth1.ntpv4").c_str());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(socket, static_cast<sockaddr *>(static_cast<void *>(&address)), sizeof(address)),
              0);
    EXPECT_EQ(ask(), "untouched");
    close(socket);
    EXPECT_EQ(support::loggedLines(), Lines{errorLine("Open " + folder + "eth1.ntpv4 failed.")});
}

TEST_F(NtpServers, DirectoryHasNoLines)
{
    std::filesystem::create_directory(folder + "eth1.ntpv4");
    EXPECT_EQ(ask(), "untouched");
    EXPECT_EQ(support::loggedLines(), Lines{});
}

// The path is cut to its 255 bytes.
TEST_F(NtpServers, LongNameIsCut)
{
    const std::string name(300, 'n');
    EXPECT_EQ(ask(2, name), "untouched");
    EXPECT_EQ(support::loggedLines(), Lines{noFile((folder + name).substr(0, 254))});
}

struct Size {
    std::string name;
    std::uint32_t size;
    std::string written; // '.' stands for a terminator, '#' for an untouched byte
};
class NtpSize : public NtpServers, public ::testing::WithParamInterface<Size> {};

TEST_P(NtpSize, BoundsTheResult)
{
    support::writeFile(folder + "eth1.ntpv4", "NTP=abcdef\n");
    Bytes expected;
    for (const char letter : GetParam().written) {
        const int byte = letter == '.' ? 0 : letter == '#' ? 0xEE : letter;
        expected.push_back(static_cast<std::uint8_t>(byte));
    }
    EXPECT_EQ(askBytes(2, "eth1", 1, GetParam().size), expected);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NtpSize, ::testing::Values(
    Size{"Zero",   0,  ""},
    Size{"One",    1,  "."},
    Size{"Two",    2,  ".."},         // "a", whose last character goes
    Size{"Three",  3,  "a.."},
    Size{"Four",   4,  "ab.."},
    Size{"Seven",  7,  "abcde.."},    // the cut list loses a real character
    Size{"Eight",  8,  "abcdef.."},   // the newline goes
    Size{"Wide",   10, "abcdef..##"}), fake::RowName{});
/* clang-format on */

TEST_F(NtpServers, PortsThatDoNotExistHaveNoResult)
{
    support::writeFile(folder + "eth1.ntpv4", "NTP=10.0.0.1\n");
    support::writeFile(folder + "eth1.ntpv6", "NTP=10.0.0.1\n");
    for (const std::uint8_t port : Bytes{3, 4, 200, 255}) {
        EXPECT_EQ(ask(2, "eth1", port), "untouched");
        EXPECT_EQ(ask(10, "eth1", port), "untouched");
    }
    EXPECT_EQ(support::loggedLines(), Lines{});
}

TEST_F(NtpServers, UnreadableRecordIsLogged)
{
    support::writeFile(folder + "eth1.ntpv4", "NTP=10.0.0.1\n");
    platform.failOpen();
    EXPECT_EQ(ask(), "untouched");
    EXPECT_EQ(support::loggedLines(), (Lines{errorLine("Failed to open lmdb database."),
                                             errorLine("Get lan config from LMDB failed.")}));
}

TEST_F(NtpServers, NullsReturnAtOnce)
{
    char text[8] = "before";
    const char *const function = "LIB_NW_ParseNTPInfo";
    const int loggedAnswer = 0x4D;
    fake::platform().setLogResult(loggedAnswer);
    EXPECT_EQ(loggedAnswer, LIB_NW_ParseNTPInfo(2, nullptr, 1, sizeof(text), text));
    EXPECT_EQ(loggedAnswer, LIB_NW_ParseNTPInfo(2, "eth1", 1, sizeof(text), nullptr));
    LIB_NW_ParseNTPInfo(2, nullptr, 200, 0, nullptr);
    EXPECT_THAT(lines(), ::testing::ElementsAre(fake::isNullLine("pcIfcName", function),
                                                fake::isNullLine("pcNTPStr", function),
                                                fake::isNullLine("pcIfcName", function)));
    EXPECT_EQ(platform.calls().size(), 3U);
    EXPECT_STREQ(text, "before");
}

} // namespace
