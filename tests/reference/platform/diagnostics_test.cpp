// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines. */
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "bmc_platform.h"
#include "support.hpp"

namespace {

using bmc::test::Child;
using bmc::test::Environment;
using bmc::test::inChild;
using bmc::test::stderrOf;

constexpr std::size_t longestLine = 4096;

struct Diagnostics : ::testing::Test {
    Environment level{"BMC_LOG_LEVEL", nullptr};
    Environment target{"BMC_LOG_TARGET", nullptr};
};

std::string lineOf(std::uint32_t level, const char *text)
{
    return stderrOf(
        [&] { EXPECT_EQ(0, BMC_DiagLogOut(10, 0, level, 123, "libnetwork_mng", "%s", text)); });
}

TEST_F(Diagnostics, LineNamesLevelUnitModuleAndCategory)
{
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] Ret:-5 eth0\n", stderrOf([] {
                  EXPECT_EQ(
                      0, BMC_DiagLogOut(10, 0, 4, 123, "libnetwork_mng", "Ret:%d %s", -5, "eth0"));
              }));
    EXPECT_EQ("<2>libnetwork_operatelog:7 [1/4] text\n",
              stderrOf([] { BMC_DiagLogOut(1, 4, 2, 7, "libnetwork_operatelog", "text"); }));
}

TEST_F(Diagnostics, NewlinesOfTheTextMakeNoFurtherLines)
{
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] Get ncsi info failed!\n",
              lineOf(4, "Get ncsi info failed!\n"));
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] one two\n", lineOf(4, "one\ntwo\n\n"));
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] \n", lineOf(4, ""));
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] \n", lineOf(4, "\n"));
}

TEST_F(Diagnostics, ControlCharactersAreEscaped)
{
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] eth\\x1b[31m\\x0d\\x7f\\x09!\n",
              lineOf(4, "eth\x1b[31m\r\x7f\t!"));
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] \\xc2\\x9b1m\n", lineOf(4, "\xc2\x9b"
                                                                       "1m"));
    EXPECT_EQ("<4>u\\x1b:1 [10/0] text\n",
              stderrOf([] { BMC_DiagLogOut(10, 0, 4, 1, "u\x1b", "text"); }));

    const std::string text = lineOf(4, std::string(2 * longestLine, '\x1b').c_str());
    EXPECT_LE(text.size(), longestLine);
    EXPECT_TRUE(text.ends_with("\\x1b...\n")) << text.substr(text.size() - 20);
}

struct Filter {
    const char *name;
    const char *variable; /* null: unset */
    std::uint32_t highest;
};

class LevelFilter : public Diagnostics, public ::testing::WithParamInterface<Filter> {};

TEST_P(LevelFilter, DropsLinesAboveIt)
{
    const Environment variable("BMC_LOG_LEVEL", GetParam().variable);
    for (std::uint32_t line = 0; line <= 7; ++line) {
        EXPECT_EQ(line <= GetParam().highest, !lineOf(line, "text").empty()) << line;
    }
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, LevelFilter, ::testing::Values(
    Filter{"Unset",     nullptr, 4},
    Filter{"Empty",     "",      4},
    Filter{"None",      "0",     0},
    Filter{"Critical",  "2",     2},
    Filter{"Information","6",    6},
    Filter{"Debug",     "7",     7},
    Filter{"NoNumber",  "high",  4},
    Filter{"Unit",      "7x",    4},
    Filter{"Negative",  "-1",    4},
    Filter{"HugeNumber","99999999999", 4}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(Diagnostics, LevelBeyondSyslogIsTheLowestPriority)
{
    const Environment variable("BMC_LOG_LEVEL", "100");
    EXPECT_EQ("<7>libnetwork_mng:123 [10/0] text\n", lineOf(50, "text"));
}

TEST_F(Diagnostics, LongLineIsCutAndMarked)
{
    for (const std::size_t length : {longestLine - 100, longestLine, 100 * longestLine}) {
        const std::string text = lineOf(4, std::string(length, 'x').c_str());
        ASSERT_FALSE(text.empty());
        EXPECT_LE(text.size(), longestLine);
        EXPECT_TRUE(text.starts_with("<4>libnetwork_mng:123 [10/0] xxx"));
        EXPECT_EQ(length < longestLine - 50 ? "xxxx\n" : "x...\n", text.substr(text.size() - 5));
    }
}

TEST_F(Diagnostics, LineThatJustFitsIsWhole)
{
    const std::size_t prefix = lineOf(4, "").size() - 1;
    const std::string fits(longestLine - 1 - prefix, 'x');
    EXPECT_EQ(longestLine, lineOf(4, fits.c_str()).size());
    EXPECT_TRUE(lineOf(4, fits.c_str()).ends_with("xxxx\n"));
    EXPECT_TRUE(lineOf(4, (fits + "x").c_str()).ends_with("x...\n"));
}

TEST_F(Diagnostics, ErrnoIsKeptAndMayBePrinted)
{
    for (const char *highest : {"0", "4"}) {
        const Environment variable("BMC_LOG_LEVEL", highest);
        stderrOf([] {
            errno = ENOSPC;
            BMC_DiagLogOut(10, 0, 4, 1, "unit", "text");
            EXPECT_EQ(ENOSPC, errno);
        });
    }
    const char *volatile format = "%s%m";
    EXPECT_EQ("<4>unit:1 [10/0] No such file or directory\n", stderrOf([&] {
                  errno = ENOENT;
                  BMC_DiagLogOut(10, 0, 4, 1, "unit", format, "");
              }));
}

TEST_F(Diagnostics, LineIsKeptWhenItsPartsAreMissingOrCannotBeFormatted)
{
    const char *volatile none = nullptr;
    EXPECT_EQ("<4>?:1 [10/0] text\n", stderrOf([&] { BMC_DiagLogOut(10, 0, 4, 1, none, "text"); }));
    EXPECT_EQ("<4>unit:1 [10/0] (null)\n",
              stderrOf([&] { BMC_DiagLogOut(10, 0, 4, 1, "unit", none, ""); }));

    const wchar_t wide[] = {static_cast<wchar_t>(0x4E00), 0};
    EXPECT_EQ("<4>unit:1 [10/0] (text cannot be formatted: ab%ls)\n",
              stderrOf([&] { BMC_DiagLogOut(10, 0, 4, 1, "unit", "ab%ls", wide); }));
}

TEST_F(Diagnostics, AnswersThatALineIsLost)
{
    const int before = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    close(STDERR_FILENO);
    errno = 0;
    const int answer = BMC_DiagLogOut(10, 0, 4, 1, "unit", "text");
    const int error = errno;
    dup2(before, STDERR_FILENO);
    close(before);
    EXPECT_EQ(-1, answer);
    EXPECT_EQ(0, error);
}

/* Standard error is one end of the pair; both are gone with the child that makes it. */
int becomeStderr(std::array<int, 2> pair)
{
    dup2(pair[1], STDERR_FILENO);
    close(pair[1]);
    return pair[0];
}

std::array<int, 2> pipePair()
{
    std::array<int, 2> pair{};
    EXPECT_EQ(0, pipe2(pair.data(), O_CLOEXEC));
    return pair;
}

std::array<int, 2> socketPair()
{
    std::array<int, 2> pair{};
    EXPECT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()));
    return pair;
}

int logLine(const std::string &text = "text")
{
    return BMC_DiagLogOut(10, 0, 4, 1, "unit", "%s", text.c_str());
}

struct Kind {
    const char *name;
    std::array<int, 2> (*make)();
};

class StderrPair : public Diagnostics, public ::testing::WithParamInterface<Kind> {
protected:
    static std::array<int, 2> make()
    {
        return GetParam().make();
    }
};

TEST_P(StderrPair, ThatIsClosedKillsNobody)
{
    inChild([] {
        signal(SIGPIPE, SIG_DFL);
        close(becomeStderr(make()));
        EXPECT_EQ(-1, logLine());
        sigset_t pending;
        sigpending(&pending);
        EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
    });
}

TEST_P(StderrPair, ThatIsClosedLeavesTheCallersOwnSignals)
{
    inChild([] {
        sigset_t pipes;
        sigemptyset(&pipes);
        sigaddset(&pipes, SIGPIPE);
        sigprocmask(SIG_BLOCK, &pipes, nullptr);
        raise(SIGPIPE);
        close(becomeStderr(make()));
        EXPECT_EQ(-1, logLine());
        sigset_t pending;
        sigpending(&pending);
        EXPECT_EQ(1, sigismember(&pending, SIGPIPE));
    });
}

TEST_P(StderrPair, ThatIsFullBlocksNobody)
{
    inChild([] {
        const int reader = becomeStderr(make());
        int lines = 0;
        while (logLine(std::string(1000, 'x')) == 0) {
            ++lines;
        }
        EXPECT_GT(lines, 10);
        {
            std::vector<std::jthread> threads;
            for (int thread = 0; thread < 8; ++thread) {
                threads.emplace_back([] { EXPECT_EQ(-1, logLine(std::string(4000, 'x'))); });
            }
        }
        std::vector<char> buffer(1U << 20);
        ASSERT_LT(0, read(reader, buffer.data(), buffer.size()));
        EXPECT_EQ(0, logLine());
    });
}

TEST_P(StderrPair, ThatIsNearlyFullBlocksNoThread)
{
    inChild([] {
        const int reader = becomeStderr(make());
        std::vector<char> buffer(6000);
        for (int round = 0; round < 50; ++round) {
            std::vector<std::jthread> threads;
            for (int thread = 0; thread < 8; ++thread) {
                threads.emplace_back([] {
                    while (logLine(std::string(4000, 'x')) == 0) {
                    }
                });
            }
            threads.clear();
            ASSERT_LT(0, read(reader, buffer.data(), buffer.size()));
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Kinds, StderrPair,
                         ::testing::Values(Kind{"Pipe", pipePair}, Kind{"Socket", socketPair}),
                         [](const auto &row) { return row.param.name; });

TEST_F(Diagnostics, LinesOfManyThreadsDoNotMix)
{
    constexpr int threads = 8;
    constexpr int lines = 200;
    const std::string text = stderrOf([] {
        std::vector<std::jthread> writers;
        for (int thread = 0; thread < threads; ++thread) {
            writers.emplace_back([thread] {
                const std::string body(300, static_cast<char>('a' + thread));
                for (int line = 0; line < lines; ++line) {
                    BMC_DiagLogOut(10, 0, 4, 1, "unit", "%s", body.c_str());
                }
            });
        }
    });

    std::size_t position = 0;
    int count = 0;
    while (position < text.size()) {
        const std::string line = text.substr(position, text.find('\n', position) - position);
        ASSERT_TRUE(line.starts_with("<4>unit:1 [10/0] "));
        ASSERT_EQ(std::string(300, line.back()), line.substr(line.size() - 300));
        position += line.size() + 1;
        ++count;
    }
    EXPECT_EQ(threads * lines, count);
}

/* A journal's socket where the journal would have it. */
class Journal : public Diagnostics {
protected:
    void listen()
    {
        const sockaddr_un address{AF_UNIX, "/run/systemd/journal/socket"};
        std::filesystem::create_directories("/run/systemd/journal");
        unlink(address.sun_path);
        socket_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        ASSERT_EQ(0, bind(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof(address)));
    }

    std::string received() const
    {
        std::array<char, 2 * longestLine> buffer;
        const ssize_t length = recv(socket_, buffer.data(), buffer.size(), 0);
        return {buffer.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
    }

    ~Journal() override
    {
        if (socket_ >= 0) {
            close(socket_);
            unlink("/run/systemd/journal/socket");
        }
    }

private:
    Environment target_{"BMC_LOG_TARGET", "journal"};
    int socket_ = -1;
};

TEST_F(Journal, TakesTheLineAsFields)
{
    listen();
    EXPECT_EQ("", lineOf(4, "one\ntwo\n"));

    const std::string entry = received();
    for (const char *field : {"PRIORITY=4\n", "CODE_FILE=libnetwork_mng\n", "CODE_LINE=123\n",
                              "BMC_MODULE=10\n", "BMC_CATEGORY=0\n", "\nMESSAGE=one two\n"}) {
        EXPECT_NE(entry.npos, entry.find(field)) << field << entry;
    }
    EXPECT_EQ("", lineOf(5, "filtered"));
    EXPECT_EQ("", received());
}

TEST_F(Journal, TakesALongLineCut)
{
    listen();
    EXPECT_EQ("", lineOf(4, std::string(2 * longestLine, 'x').c_str()));
    EXPECT_TRUE(received().ends_with("x...\n"));
}

TEST_F(Journal, ThatIsAbsentLosesNoLine)
{
    EXPECT_EQ("<4>libnetwork_mng:123 [10/0] text\n", lineOf(4, "text"));
}

} // namespace
