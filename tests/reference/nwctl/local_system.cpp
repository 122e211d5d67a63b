// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "local_system.hpp"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <sys/mount.h>

namespace local_test {

namespace {

void coverWithTmpfs(const char *directory)
{
    if (mount("tmpfs", directory, "tmpfs", 0, nullptr) != 0) {
        throw std::system_error(errno, std::generic_category(), directory);
    }
}

} // namespace

void startBeside(const std::string &name, const std::string &arguments)
{
    const std::string path = "/run/" + name;
    e2e::outputOf("rm -f " + path + ".*; { " NW_BINARY_DIR "/nwctl " + arguments + " >" + path +
                  ".out 2>" + path + ".err; echo $? >" + path + ".new; mv " + path + ".new " +
                  path + ".status; } & :");
}

bool hasEnded(const std::string &name)
{
    return std::filesystem::exists("/run/" + name + ".status");
}

e2e::CommandResult resultBeside(const std::string &name)
{
    if (!e2e::eventually([&] { return hasEnded(name); })) {
        throw std::runtime_error(name + " doesn't end");
    }
    const std::string path = "/run/" + name;
    return {std::stoi(e2e::outputOf("cat " + path + ".status")),
            e2e::outputOf("cat " + path + ".out"), e2e::outputOf("cat " + path + ".err")};
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
