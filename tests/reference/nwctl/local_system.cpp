// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "local_system.hpp"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace local_test {

namespace {

void mountOn(const std::string &source, const char *directory, const char *type,
             unsigned long flags)
{
    if (mount(source.c_str(), directory, type, flags, nullptr) != 0) {
        throw std::system_error(errno, std::generic_category(), directory);
    }
}

/* The programs stay where they are, also when that is beneath the directory. */
void coverWithTmpfs(const char *directory)
{
    const int programs = open(NW_BINARY_DIR, O_PATH | O_CLOEXEC);
    mountOn("tmpfs", directory, "tmpfs", 0);
    std::filesystem::create_directories(NW_BINARY_DIR);
    mountOn("/proc/self/fd/" + std::to_string(programs), NW_BINARY_DIR, nullptr, MS_BIND);
    close(programs);
}

} // namespace

Beside::Beside(const std::string &arguments)
    : Process(support::inShell("exec " + e2e::nwctlLine(arguments)))
{
}

bool Beside::endsWithin(std::chrono::milliseconds time)
{
    return e2e::eventually([this] { return !isRunning(); }, time);
}

std::string exampleOf(const std::string &command)
{
    const std::string help = nwctl(command + " --help").output;
    const std::string program = "nwctl ";
    const auto example = help.find(program, help.find("Example:"));
    if (example == help.npos) {
        throw std::runtime_error("no example in: " + help);
    }
    return help.substr(example + program.size(),
                       help.find('\n', example) - example - program.size());
}

void LocalTest::SetUpTestSuite()
{
    static const bool covered = [] {
        for (const char *directory : {"/tmp", "/var"}) {
            coverWithTmpfs(directory);
        }
        return true;
    }();
    static_cast<void>(covered);
}

void LocalTest::SetUp()
{
    std::ofstream("/run/queue");
}

/* Ends waiting receivers, too. */
void LocalTest::TearDown()
{
    e2e::run("ipcrm --all=msg");
    e2e::run("rm -rf /var/heartbeat.key /tmp/network $BMC_STATE_DIR/capabilities.json");
}

} // namespace local_test
