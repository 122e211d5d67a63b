// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/spawn.hpp"

#include <csignal>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

#include "support.hpp"

namespace {

using namespace std::chrono_literals;
using namespace bmc::test;
using bmc::runProgram;
using bmc::Streams;

int shell(const char *script, const bmc::SpawnOptions &options = {})
{
    return runProgram({"sh", "-c", script}, options);
}

TEST(Spawn, AnswersTheExitStatus)
{
    EXPECT_EQ(0, runProgram({"true"}));
    EXPECT_EQ(7, shell("exit 7"));
    EXPECT_EQ(128 + SIGKILL, shell("kill -9 $$"));
    EXPECT_EQ(3, shell("exit 3", {Streams::closed, 20s}));
}

TEST(Spawn, ThrowsWhenThereIsNoSuchProgram)
{
    try {
        runProgram({"no-such-program"});
        ADD_FAILURE() << "it was run";
    } catch (const std::system_error &error) {
        EXPECT_EQ(ENOENT, error.code().value());
    }
}

TEST(Spawn, TakesWordsAsTheyAre)
{
    EXPECT_EQ(0, runProgram({"test", "a b;$(c)", "=", "a b;$(c)"}));
}

TEST(Spawn, KillsWhatTakesTooLong)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(128 + SIGKILL, runProgram({"sleep", "30"}, {Streams::inherited, 50ms}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST(Spawn, ClosesTheStreamsWhenAsked)
{
    const char *const script = "echo text; echo text >&2; ! read line";
    EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(0, shell(script, {Streams::closed, {}})); }));
    EXPECT_EQ("text\n", stderrOf([] { EXPECT_EQ(0, shell("echo text >&2")); }));
}

TEST(Spawn, StartsWithSignalsAsALoginGivesThem)
{
    inChild([] {
        sigset_t all;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, nullptr);
        for (const int number : {SIGHUP, SIGINT, SIGPIPE, SIGTERM}) {
            signal(number, SIG_IGN);
        }
        EXPECT_EQ(0, runProgram({"grep", "-q", "SigBlk:.0000000000000000", "/proc/self/status"}));
        EXPECT_EQ(128 + SIGPIPE, shell("kill -PIPE $$"));
        EXPECT_EQ(128 + SIGTERM, shell("kill -TERM $$"));
    });
}

} // namespace
