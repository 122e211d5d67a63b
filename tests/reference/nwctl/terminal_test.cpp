// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The question whether a change shall stay, on a terminal. */
#include <array>
#include <csignal>

#include <gmock/gmock.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "system.hpp"

namespace nwctl {
namespace {

using e2e::nwctl;
using std::chrono::milliseconds;
using ::testing::HasSubstr;

/* A command on a terminal of its own. */
class Terminal {
public:
    explicit Terminal(const std::string &arguments)
    {
        const std::string line = "exec " + e2e::nwctlLine(arguments);
        pid_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (pid_ == 0) {
            execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
            _exit(127);
        }
    }

    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    ~Terminal()
    {
        hangUp();
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }

    /* Whether it came to be shown. */
    bool shows(const std::string &text, milliseconds limit = support::patience)
    {
        return e2e::eventually(
            [&] {
                readOn();
                return shown_.find(text) != std::string::npos;
            },
            limit);
    }

    void type(const std::string &text)
    {
        shown_.clear();
        EXPECT_EQ(write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    void signal(int number)
    {
        kill(pid_, number);
    }

    void hangUp()
    {
        if (terminal_ >= 0) {
            close(terminal_);
            terminal_ = -1;
        }
    }

    int status()
    {
        int status = -1;
        EXPECT_TRUE(e2e::eventually([&] {
            readOn();
            return waitpid(pid_, &status, WNOHANG) == pid_;
        }));
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

    const std::string &shown() const
    {
        return shown_;
    }

private:
    void readOn()
    {
        pollfd waiting{terminal_, POLLIN, 0};
        std::array<char, 1024> part{};
        while (terminal_ >= 0 && poll(&waiting, 1, 0) > 0) {
            const ssize_t length = read(terminal_, part.data(), part.size());
            if (length <= 0) {
                return;
            }
            shown_.append(part.data(), static_cast<std::size_t>(length));
        }
    }

    int terminal_ = -1;
    pid_t pid_ = -1;
    std::string shown_;
};

class Asking : public e2e::System {
protected:
    static constexpr const char *change =
        "hostname set --mode manual --name asked --confirm-within 60";

    static bool isChanged()
    {
        return e2e::shell("hostname") == "asked\n";
    }
    static bool isPending()
    {
        return nwctl("pending").output != "Nothing waits to be confirmed.\n";
    }

    void SetUp() override
    {
        e2e::System::SetUp();
        nwctl("hostname set --mode manual --name before");
    }
};

} // namespace

TEST_F(Asking, YesLetsItStay)
{
    Terminal terminal(change);
    ASSERT_TRUE(terminal.shows("Keep this change? ")) << terminal.shown();
    EXPECT_TRUE(isChanged());
    terminal.type("maybe\n");
    EXPECT_TRUE(terminal.shows(" s left to say yes or no: "));
    EXPECT_TRUE(isPending());
    terminal.type("yes\n");
    EXPECT_TRUE(terminal.shows("Confirmed: the change stays."));
    EXPECT_EQ(terminal.status(), 0);
    EXPECT_TRUE(isChanged());
    EXPECT_FALSE(isPending());
}

TEST_F(Asking, NoTakesItBack)
{
    Terminal terminal(change);
    ASSERT_TRUE(terminal.shows("Keep this change? "));
    terminal.type("no\n");
    EXPECT_TRUE(terminal.shows("Taken back: what held before holds again."));
    EXPECT_EQ(terminal.status(), 4);
    EXPECT_FALSE(isChanged());
    EXPECT_FALSE(isPending());
}

TEST_F(Asking, AnEndOfInputOrASignalTakesItBack)
{
    for (const int signal : {0, SIGINT, SIGQUIT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        Terminal terminal(change);
        ASSERT_TRUE(terminal.shows("Keep this change? "));
        if (signal == 0) {
            terminal.type("\x04");
        } else {
            terminal.signal(signal);
        }
        EXPECT_EQ(terminal.status(), 4);
        EXPECT_FALSE(isChanged());
        EXPECT_FALSE(isPending());
    }
}

TEST_F(Asking, ATerminalThatGoesAwayTakesItBack)
{
    Terminal terminal(change);
    ASSERT_TRUE(terminal.shows("Keep this change? "));
    EXPECT_TRUE(isChanged());
    terminal.hangUp();
    EXPECT_TRUE(e2e::eventually([] { return !isChanged() && !isPending(); }));
}

TEST_F(Asking, NobodyAnswers)
{
    Terminal terminal("hostname set --mode manual --name asked --confirm-within 10");
    ASSERT_TRUE(terminal.shows("Keep this change? 10 s left"));
    ASSERT_TRUE(terminal.shows("Taken back: what held before holds again."));
    EXPECT_EQ(terminal.status(), 4);
    EXPECT_TRUE(e2e::eventually([] { return !isChanged(); }));
}

/* Whoever confirms it, from wherever. */
TEST_F(Asking, SomebodyElseAnswers)
{
    {
        Terminal terminal(change);
        ASSERT_TRUE(terminal.shows("Keep this change? "));
        EXPECT_EQ(nwctl("confirm").status, 0);
        EXPECT_TRUE(terminal.shows("Confirmed: the change stays."));
        EXPECT_EQ(terminal.status(), 0);
        EXPECT_TRUE(isChanged());
    }
    nwctl("hostname set --mode manual --name before");
    Terminal terminal(change);
    ASSERT_TRUE(terminal.shows("Keep this change? "));
    EXPECT_EQ(nwctl("revert").status, 0);
    EXPECT_TRUE(terminal.shows("Taken back: what held before holds again."));
    EXPECT_EQ(terminal.status(), 4);
}

/* Nobody is asked where JSON is wanted. */
TEST_F(Asking, NotInJson)
{
    Terminal terminal(std::string("--json ") + change);
    EXPECT_EQ(terminal.status(), 0);
    EXPECT_THAT(terminal.shown(), HasSubstr("\"token\""));
    EXPECT_TRUE(isPending());
}

} // namespace nwctl
