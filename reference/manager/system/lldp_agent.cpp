// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/system/lldp_agent.hpp"

#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "manager/log.hpp"

namespace bmc::manager {

namespace {

constexpr std::chrono::seconds patience{2};

constexpr int missingProgram = 127;

/* Waits for a process, which is killed when it takes too long; answers its exit status. */
int statusOf(pid_t process)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    int status = 0;
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end) {
            kill(process, SIGKILL);
            waitpid(process, &status, 0);
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/* Runs a program found in PATH, with the standard streams closed off and signals as usual. */
int run(std::vector<std::string> words)
{
    std::vector<char *> arguments;
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);

    pid_t process = 0;
    const int failure =
        posix_spawnp(&process, arguments[0], &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return failure == 0 ? statusOf(process) : missingProgram;
}

} // namespace

void tellLldpAgent(const std::string &settings)
{
    const std::size_t gap = settings.find(' ');
    const int status = run({"lldpcli", "configure", "ports", settings.substr(0, gap), "lldp",
                            "status", settings.substr(gap + 1)});
    if (status == missingProgram) {
        log(Level::information, "LLDP: there is no lldpcli; the settings are kept");
    } else if (status != 0) {
        log(Level::error,
            "LLDP: lldpcli ends with status " + std::to_string(status) + "; the settings are kept");
    }
}

} // namespace bmc::manager
