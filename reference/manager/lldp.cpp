// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lldp.hpp"

#include <array>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

enum Bit : std::uint8_t { enableBit = 1, workModeBit = 2 };

/* By work mode; a work mode of 0 stands for none that was ever set. */
constexpr std::array<const char *, 4> statusWords{"rx-and-tx", "tx-only", "rx-only", "rx-and-tx"};

constexpr std::chrono::seconds patience{2};

constexpr int missingProgram = 127;

std::string interfaceNames(const NW_IFC_STATE_DB_INFO_S &state)
{
    std::string names;
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        names += (names.empty() ? "" : ",") + std::string(state.acIfcName[port]);
    }
    return names;
}

std::vector<std::string> commandFor(const Configuration &configuration)
{
    const NW_LLDP_DB_INFO_S &lldp = configuration.lldp;
    const char *status =
        lldp.ucLldpEnable == 1 ? statusWords[lldp.ucLldpWorkMode & 3U] : "disabled";
    return {"lldpcli", "configure", "ports", interfaceNames(configuration.state),
            "lldp",    "status",    status};
}

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

/* The record is what counts: an agent that is missing or doesn't listen is worth a line. */
void tellAgent(const Configuration &configuration)
{
    const int status = run(commandFor(configuration));
    if (status == missingProgram) {
        log(Level::information, "LLDP: there is no lldpcli; the settings are kept");
    } else if (status != 0) {
        log(Level::error,
            "LLDP: lldpcli ends with status " + std::to_string(status) + "; the settings are kept");
    }
}

} // namespace

void editLldp(Draft &draft, Payload payload)
{
    const auto request = contentOf<NW_LLDP_SET_S>(payload);
    NW_LLDP_DB_INFO_S &record = draft.after.lldp;
    require((request.ucSetMask & ~(enableBit | workModeBit)) == 0, Result::unknownField, "LLDP");
    if ((request.ucSetMask & enableBit) != 0) {
        require(request.ucLldpEnable <= 1, Result::badLldpMode, "LLDP state");
        record.ucLldpEnable = request.ucLldpEnable;
    }
    if ((request.ucSetMask & workModeBit) != 0) {
        require(request.ucLldpWorkMode >= 1 && request.ucLldpWorkMode <= 3, Result::badLldpMode,
                "LLDP work mode");
        record.ucLldpWorkMode = request.ucLldpWorkMode;
    }
    draft.modules |= request.ucSetMask != 0 ? NW_LOG_LLDP : 0;
}

void applyLldp(const Context &context)
{
    context.transaction.undoWith([former = context.draft.before] { tellAgent(former); });
    tellAgent(context.draft.after);
}

} // namespace bmc::manager
