// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/spawn.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bmc {

namespace {

constexpr int signalStatus = 128;

class Attributes {
public:
    Attributes()
    {
        sigset_t blocked;
        sigset_t defaults;
        sigemptyset(&blocked);
        sigemptyset(&defaults);
        for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGCHLD}) {
            sigaddset(&defaults, number);
        }
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &blocked);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;

    ~Attributes()
    {
        posix_spawnattr_destroy(&attributes_);
    }

    const posix_spawnattr_t *get() const
    {
        return &attributes_;
    }

private:
    posix_spawnattr_t attributes_;
};

class FileActions {
public:
    explicit FileActions(Streams streams)
    {
        posix_spawn_file_actions_init(&actions_);
        if (streams == Streams::closed) {
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
                posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
            }
        }
    }

    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;

    ~FileActions()
    {
        posix_spawn_file_actions_destroy(&actions_);
    }

    const posix_spawn_file_actions_t *get() const
    {
        return &actions_;
    }

private:
    posix_spawn_file_actions_t actions_;
};

pid_t start(std::vector<std::string> &words, Streams streams)
{
    std::vector<char *> arguments;
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    const FileActions actions(streams);
    const Attributes attributes;
    pid_t child = -1;
    const int error = posix_spawnp(&child, arguments[0], actions.get(), attributes.get(),
                                   arguments.data(), environ);
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), words[0]);
    }
    return child;
}

/* Whether the child has ended; waits for that unless the options say WNOHANG. */
bool hasEnded(pid_t child, int &status, int options)
{
    pid_t ended = -1;
    while ((ended = waitpid(child, &status, options)) < 0) {
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "a program's status is lost");
        }
    }
    return ended == child;
}

int waitFor(pid_t child, std::optional<std::chrono::milliseconds> patience)
{
    constexpr std::chrono::milliseconds shortest{1};
    constexpr std::chrono::milliseconds longest{20};

    int status = 0;
    if (patience) {
        const auto end = std::chrono::steady_clock::now() + *patience;
        auto pause = shortest;
        while (!hasEnded(child, status, WNOHANG)) {
            if (std::chrono::steady_clock::now() > end) {
                kill(child, SIGKILL);
                hasEnded(child, status, 0);
                break;
            }
            std::this_thread::sleep_for(pause);
            pause = std::min(2 * pause, longest);
        }
    } else {
        hasEnded(child, status, 0);
    }
    return WIFSIGNALED(status) ? signalStatus + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace

int runProgram(std::vector<std::string> words, const SpawnOptions &options)
{
    return waitFor(start(words, options.streams), options.patience);
}

} // namespace bmc
