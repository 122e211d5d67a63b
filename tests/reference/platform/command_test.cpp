// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands without a shell. */
#include <csignal>

#include <sys/time.h>

#include "bmc_platform.h"
#include "support.hpp"

namespace {

using bmc::test::Environment;
using bmc::test::StateTest;
using bmc::test::stderrOf;

struct Command {
    const char *name;
    const char *line;
    int answer;
};

std::string nameOf(const ::testing::TestParamInfo<Command> &row)
{
    return row.param.name;
}

class Status : public ::testing::TestWithParam<Command> {};

TEST_P(Status, IsTheProgramsOwn)
{
    EXPECT_EQ(GetParam().answer, BMC_SafeSystem(GetParam().line));
}

/* Words are compared by test(1), which the command runs. */
/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Status, ::testing::Values(
    Command{"Success",          "true", 0},
    Command{"Failure",          "false", 1},
    Command{"AnyStatus",        "sh -c 'exit 42'", 42},
    Command{"Killed",           "sh -c 'kill -TERM $$'", 128 + SIGTERM},
    Command{"AbsolutePath",     "/bin/true", 0},
    Command{"BlanksAround",     "  \t true  ", 0},
    Command{"PlainWords",       "test a = a", 0},
    Command{"SingleQuotes",     "test 'a b' = a\\ b", 0},
    Command{"DoubleQuotes",     "test \"a b\" = 'a b'", 0},
    Command{"QuotesInAWord",    "test a' 'b\" \"c = 'a b c'", 0},
    Command{"EmptyWord",        "test '' = \"\"", 0},
    Command{"QuotedMeta",       "test ';|&<>`$()' = \";|&<>`$()\"", 0},
    Command{"EscapedMeta",      "test \\;\\| = ';|'", 0},
    Command{"EscapeInDouble",   "test \"\\\"\\\\\\$\\`\" = '\"\\$`'", 0},
    Command{"BackslashInDouble","test \"\\a\" = '\\a'", 0},
    Command{"BackslashInSingle","test '\\' = \\\\", 0},
    Command{"NothingIsExpanded","test '$HOME*~' = \"$HOME*~\"", 0},
    Command{"GlobIsAWord",      "test * = '*'", 0}), nameOf);
/* clang-format on */

class Refused : public ::testing::TestWithParam<Command> {};

TEST_P(Refused, RunsNothingAndSaysSo)
{
    int answer = 0;
    const std::string line = stderrOf([&] { answer = BMC_SafeSystem(GetParam().line); });
    EXPECT_EQ(-1, answer);
    EXPECT_TRUE(line.starts_with("<4>libbmc_platform:")) << line;
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, Refused, ::testing::Values(
    Command{"Null",        nullptr, -1},
    Command{"Empty",       "", -1},
    Command{"Blanks",      " \t", -1},
    Command{"NoProgram",   "/nonexistent/program", -1},
    Command{"EmptyProgram","''", -1},
    Command{"Directory",   "/", -1},
    Command{"Semicolon",   "true;true", -1},
    Command{"Pipe",        "true|true", -1},
    Command{"Ampersand",   "true&", -1},
    Command{"Input",       "true </dev/null", -1},
    Command{"Output",      "true >/dev/null", -1},
    Command{"Backquote",   "true `true`", -1},
    Command{"Dollar",      "true $HOME", -1},
    Command{"Parenthesis", "(true)", -1},
    Command{"CloseParenthesis", "true )", -1},
    Command{"Newline",     "true\ntrue", -1},
    Command{"OpenSingle",  "true 'a", -1},
    Command{"OpenDouble",  "true \"a", -1},
    Command{"OpenBackslash", "true \\", -1}), nameOf);
/* clang-format on */

class CommandRunner : public StateTest {};

TEST_F(CommandRunner, RefusedCommandHasNoEffect)
{
    const std::string file = (state() / "made").string();
    stderrOf([&] { EXPECT_EQ(-1, BMC_SafeSystem(("touch " + file + "; true").c_str())); });
    EXPECT_FALSE(std::filesystem::exists(file));

    EXPECT_EQ(0, BMC_SafeSystem(("touch " + file).c_str()));
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(CommandRunner, WaitsThroughSignals)
{
    struct sigaction action {};
    struct sigaction before {};
    action.sa_handler = [](int) {};
    ASSERT_EQ(0, sigaction(SIGALRM, &action, &before));
    const itimerval often{{0, 5000}, {0, 5000}};
    const itimerval never{};

    ASSERT_EQ(0, setitimer(ITIMER_REAL, &often, nullptr));
    EXPECT_EQ(7, BMC_SafeSystem("sh -c 'sleep 0.1; exit 7'"));
    ASSERT_EQ(0, setitimer(ITIMER_REAL, &never, nullptr));
    sigaction(SIGALRM, &before, nullptr);
}

TEST_F(CommandRunner, ProgramStartsWithUnblockedSignals)
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(0, pthread_sigmask(SIG_BLOCK, &blocked, &before));
    EXPECT_EQ(0, BMC_SafeSystem("grep -q 'SigBlk:.0000000000000000' /proc/self/status"));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(CommandRunner, StatusThatSomebodyElseCollectsIsAFailure)
{
    const auto before = signal(SIGCHLD, SIG_IGN);
    stderrOf([] { EXPECT_EQ(-1, BMC_SafeSystem("true")); });
    signal(SIGCHLD, before);
}

} // namespace
