// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Runs programs, without a shell. */
#include <cerrno>
#include <csignal>
#include <initializer_list>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bmc_platform.h"
#include "command_words.hpp"
#include "failure.hpp"

namespace {

using bmc::Failure;

constexpr int signalStatus = 128;

/* The program starts with signals as a login gives them, whatever this process blocks. */
class SpawnAttributes {
public:
    SpawnAttributes()
    {
        sigset_t blocked;
        sigset_t defaults;
        sigemptyset(&blocked);
        sigemptyset(&defaults);
        for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGCHLD}) {
            sigaddset(&defaults, number);
        }
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigmask(&m_attributes, &blocked);
        posix_spawnattr_setsigdefault(&m_attributes, &defaults);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    SpawnAttributes(const SpawnAttributes &) = delete;
    SpawnAttributes &operator=(const SpawnAttributes &) = delete;

    ~SpawnAttributes()
    {
        posix_spawnattr_destroy(&m_attributes);
    }

    const posix_spawnattr_t *get() const
    {
        return &m_attributes;
    }

private:
    posix_spawnattr_t m_attributes;
};

pid_t start(std::vector<std::string> words)
{
    std::vector<char *> arguments;
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    const SpawnAttributes attributes;
    pid_t child = -1;
    const int error =
        posix_spawnp(&child, arguments[0], nullptr, attributes.get(), arguments.data(), environ);
    if (error != 0) {
        throw Failure(error, "command " + words[0] + ": " + bmc::errnoText(error));
    }
    return child;
}

int waitFor(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            throw Failure(errno, "command: its status is lost: " + bmc::errnoText(errno));
        }
    }
    return WIFSIGNALED(status) ? signalStatus + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

/* 128 and the signal's number when the program was killed. */
int BMC_SafeSystem(const char *pcCommand)
{
    int status = -1;
    const int failed = bmc::guarded([&] {
        bmc::require(pcCommand != nullptr, "command: null argument");
        std::vector<std::string> words = bmc::splitCommand(pcCommand);
        bmc::require(!words.empty(), "command: empty");
        status = waitFor(start(std::move(words)));
    });
    return failed != 0 ? -1 : status;
}
