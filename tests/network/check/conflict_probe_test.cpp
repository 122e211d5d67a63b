// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The duplicate-address probe on tools of the test's own: command, verdict, failures.
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "files.hpp"
#include "guarded.hpp"
#include "log_text.hpp"
#include "network_mng/check.h"

namespace {

// Every command line that was given to popen.
std::vector<std::pair<std::string, std::string>> opened;

} // namespace

extern "C" {
FILE *__real_popen(const char *command, const char *mode);
FILE *__wrap_popen(const char *command, const char *mode);

FILE *__wrap_popen(const char *command, const char *mode)
{
    opened.emplace_back(command, mode);
    return __real_popen(command, mode);
}
}

namespace {

using support::criticalLine;
using support::Lines;
using ::testing::ElementsAre;

// arping, tail and awk on the path: each notes its arguments; the first prints a text, the others
// are the system's own unless a test says otherwise.
class ConflictProbe : public fake::FakePlatformTest {
protected:
    static void SetUpTestSuite()
    {
        setPath(std::getenv("PATH")); // the first change makes libc copy the environment
    }
    ConflictProbe()
    {
        opened.clear();
        setPath(directory_.path().string() + ":" + path_);
        arpingPrints("Received 0 response(s)\n");
        tool("tail", "PATH=" + path_ + " exec tail \"$@\"");
        tool("awk", "PATH=" + path_ + " exec awk \"$@\"");
    }
    ~ConflictProbe() override
    {
        setPath(path_);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a process was left behind";
        EXPECT_EQ(support::lowestFreeDescriptor(), free_) << "a descriptor was left open";
    }

    void tool(const std::string &name, const std::string &body)
    {
        const auto file = directory_ / name;
        support::writeFile(file, "#!/bin/sh\nfor word; do echo \"<$word>\"; done >" + notes(name) +
                                     "\n" + body + "\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    void arpingPrints(const std::string &text)
    {
        support::writeFile(directory_ / "text", text);
        tool("arping", "PATH=" + path_ + " exec cat " + (directory_ / "text").string());
    }
    std::string arguments(const std::string &name) const
    {
        return support::readFile(notes(name));
    }
    bool arpingRan() const
    {
        return std::filesystem::exists(notes("arping"));
    }

    static std::uint32_t probe(const std::string &interface,
                               const std::string &address = "192.168.1.2")
    {
        const support::Guarded bytes(support::ipv4(address));
        return NW_IPV4AddressConflict(interface.c_str(), bytes.data());
    }

private:
    // setenv would keep a copy for good.
    static void setPath(const std::string &path)
    {
        static std::array<char, 4096> variable;
        std::snprintf(variable.data(), variable.size(), "PATH=%s", path.c_str());
        putenv(variable.data());
    }
    std::string notes(const std::string &name) const
    {
        return (directory_ / (name + ".arguments")).string();
    }

    const int free_ = support::lowestFreeDescriptor();
    const std::string path_ = std::getenv("PATH");
    const support::TemporaryDirectory directory_;
};

std::string command(const std::string &interface, const std::string &address)
{
    return "arping -c 1 -D -f -I " + interface + " " + address + "  | tail  -1 | awk '{print $2 }'";
}

TEST_F(ConflictProbe, RunsExactlyTheCommand)
{
    EXPECT_EQ(probe("eth0", "10.0.200.255"), 0U);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].first, command("eth0", "10.0.200.255"));
    EXPECT_EQ(opened[0].second.substr(0, 1), "r");
    EXPECT_EQ(arguments("arping"), "<-c>\n<1>\n<-D>\n<-f>\n<-I>\n<eth0>\n<10.0.200.255>\n");
    EXPECT_EQ(arguments("tail"), "<-1>\n");
    EXPECT_EQ(arguments("awk"), "<{print $2 }>\n");
    EXPECT_TRUE(lines().empty());
}

struct Verdict {
    std::string name;
    std::string printed; // by arping
    std::uint32_t expected;
};
class ConflictVerdict : public ConflictProbe, public ::testing::WithParamInterface<Verdict> {};

TEST_P(ConflictVerdict, IsTheFirstByteOfTheLastLinesSecondWord)
{
    arpingPrints(GetParam().printed);
    EXPECT_EQ(probe("eth0"), GetParam().expected);
    EXPECT_TRUE(lines().empty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, ConflictVerdict, ::testing::Values(
    Verdict{"None",            "ARPING 192.168.1.2\nSent 1 probes\nReceived 0 response(s)\n", 0},
    Verdict{"One",             "ARPING 192.168.1.2\nSent 1 probes\nReceived 1 response(s)\n", 1},
    Verdict{"OnlyTheLastLine", "Received 1 response(s)\nReceived 0 response(s)\n", 0},
    Verdict{"WithoutNewline",  "Received 1 response(s)", 1},
    Verdict{"Ten",             "Received 10 response(s)\n", 1},
    Verdict{"Two",             "Received 2 response(s)\n", 0},
    Verdict{"LeadingZero",     "Received 01 response(s)\n", 0},
    Verdict{"Letter",          "Received x1\n", 0},
    Verdict{"OneWord",         "1\n", 0},
    Verdict{"EmptyLine",       "Received 1\n\n", 0}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

/* Signals that interrupt every blocking call, as long as it lives. */
class Interruptions {
public:
    Interruptions()
    {
        struct sigaction action {};
        action.sa_handler = [](int) { count = count + 1; };
        sigaction(SIGALRM, &action, &before_);
        set(20000);
    }
    ~Interruptions()
    {
        set(0);
        sigaction(SIGALRM, &before_, nullptr);
    }

    static inline volatile std::sig_atomic_t count = 0;

private:
    static void set(long microseconds)
    {
        const itimerval timer{{0, microseconds}, {0, microseconds}};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }

    struct sigaction before_ {};
};

TEST_F(ConflictProbe, SignalIsNoVerdict)
{
    arpingPrints("Received 1 response(s)\n");
    tool("tail", "PATH=/usr/bin:/bin sleep 0.4; PATH=/usr/bin:/bin exec tail \"$@\"");
    std::uint32_t verdict = 0;
    {
        const Interruptions interruptions;
        verdict = probe("eth0");
    }
    EXPECT_EQ(verdict, 1U);
    EXPECT_GT(Interruptions::count, 1);
    EXPECT_TRUE(lines().empty());
}

TEST_F(ConflictProbe, NothingPrintedIsLogged)
{
    arpingPrints("");
    EXPECT_EQ(probe("eth9", "10.1.2.3"), 0U);
    EXPECT_EQ(support::loggedLines(),
              Lines{criticalLine("Error in fread : " + command("eth9", "10.1.2.3") + ".")});
}

TEST_F(ConflictProbe, ToolsMissingIsNothingPrinted)
{
    tool("awk", "exit 127");
    EXPECT_EQ(probe("eth0"), 0U);
    EXPECT_EQ(support::loggedLines(),
              Lines{criticalLine("Error in fread : " + command("eth0", "192.168.1.2") + ".")});
}

// Only one byte is read: the rest of a long answer does not matter.
TEST_F(ConflictProbe, LongAnswerDoesNotMatter)
{
    tool("awk",
         "PATH=" + std::string("/usr/bin:/bin") + " yes 1 | PATH=/usr/bin:/bin head -c 300000");
    EXPECT_EQ(probe("eth0"), 1U);
    EXPECT_TRUE(lines().empty());
}

TEST_F(ConflictProbe, NoPipeIsLogged)
{
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(support::lowestFreeDescriptor());
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const std::uint32_t verdict = probe("eth0");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);

    EXPECT_EQ(verdict, 0U);
    EXPECT_EQ(support::loggedLines(),
              Lines{criticalLine("Error while popen : " + command("eth0", "192.168.1.2") + ".")});
}

// The buffer ends the command; what is left of it is run.
TEST_F(ConflictProbe, LongNameIsCut)
{
    const std::string name(300, 'a');
    arpingPrints("1\n");
    EXPECT_EQ(probe(name), 1U);
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].first, command(name, "").substr(0, 255));
    EXPECT_EQ(arguments("arping"),
              "<-c>\n<1>\n<-D>\n<-f>\n<-I>\n<" + std::string(234, 'a') + ">\n");
}

TEST_F(ConflictProbe, EveryPermittedCharacterIsRun)
{
    for (const std::string name :
         {"abcdefghijklmnopqrstuvwxyz", "ABCDEFGHIJKLMNOPQRSTUVWXYZ", "0123456789", "eth0.7",
          "br_lan", "eth0:1", "veth0@if5", "wlan-2"}) {
        opened.clear();
        EXPECT_EQ(probe(name), 0U);
        ASSERT_EQ(opened.size(), 1U) << name;
        EXPECT_EQ(opened[0].first, command(name, "192.168.1.2"));
    }
    EXPECT_TRUE(lines().empty());
}

// Every byte outside the permitted ones, alone and within a name.
TEST_F(ConflictProbe, HostileNamesStartNoShell)
{
    const std::string permitted = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                  "0123456789._:@-";
    for (int byte = 1; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        if (permitted.find(letter) != std::string::npos) {
            continue;
        }
        for (const std::string &name :
             {std::string(1, letter), "eth0" + std::string(1, letter), letter + std::string("x")}) {
            platform.reset();
            EXPECT_EQ(probe(name), 0U);
            EXPECT_EQ(
                support::loggedLines(),
                Lines{criticalLine("Error while popen : " + command(name, "192.168.1.2") + ".")});
        }
    }
    EXPECT_TRUE(opened.empty());
    EXPECT_FALSE(arpingRan());
}

struct Attack {
    std::string name;
    std::string interface;
};
class ConflictAttack : public ConflictProbe, public ::testing::WithParamInterface<Attack> {};

TEST_P(ConflictAttack, DoesNothing)
{
    const support::TemporaryDirectory target;
    const auto marker = target / "marker";
    std::string name = GetParam().interface;
    name.replace(name.find('%'), 1, marker.string());
    arpingPrints("Received 1 response(s)\n");

    EXPECT_EQ(probe(name), 0U);
    EXPECT_FALSE(std::filesystem::exists(marker));
    EXPECT_FALSE(arpingRan());
    EXPECT_TRUE(opened.empty());
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(lines()[0].format, "Error while popen : %s.");
    EXPECT_EQ(lines()[0].level, 2U);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, ConflictAttack, ::testing::Values(
    Attack{"Semicolon",    "eth0; touch %; echo"},
    Attack{"Substitution", "$(touch %)"},
    Attack{"Backquotes",   "`touch %`"},
    Attack{"Pipe",         "eth0|touch %|cat"},
    Attack{"Background",   "eth0&touch %&"},
    Attack{"Newline",      "eth0\ntouch %\n"},
    Attack{"Redirection",  "eth0>%"},
    Attack{"BehindCut",    std::string(280, 'a') + ";touch %"}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(ConflictProbe, NullsAreLogged)
{
    const support::Guarded bytes(4);
    EXPECT_EQ(NW_IPV4AddressConflict(nullptr, bytes.data()), 0U);
    EXPECT_EQ(NW_IPV4AddressConflict("eth0", nullptr), 0U);
    EXPECT_EQ(NW_IPV4AddressConflict(nullptr, nullptr), 0U);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pcIfname", "NW_IPV4AddressConflict"),
                                     fake::isNullLine("pucAddr", "NW_IPV4AddressConflict"),
                                     fake::isNullLine("pcIfname", "NW_IPV4AddressConflict")));
    EXPECT_TRUE(opened.empty());
}

} // namespace
