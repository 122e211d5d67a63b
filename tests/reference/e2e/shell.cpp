// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "shell.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

namespace e2e {

namespace {

std::string readAll(const std::string &path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

int exitStatus(int waitStatus)
{
    return WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
}

} // namespace

CommandResult run(const std::string &command)
{
    const std::string outputFile = "/run/e2e.stdout";
    const std::string errorFile = "/run/e2e.stderr";
    const std::string line = "{ " + command + "; } >" + outputFile + " 2>" + errorFile;
    const int waitStatus = std::system(line.c_str());

    return {exitStatus(waitStatus), readAll(outputFile), readAll(errorFile)};
}

std::string outputOf(const std::string &command)
{
    const CommandResult result = run(command);
    if (result.status != 0) {
        throw std::runtime_error(command + ": status " + std::to_string(result.status) + ", " +
                                 result.errors);
    }
    return result.output;
}

bool eventually(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

std::vector<std::string> kernelAddresses(const std::string &interface)
{
    const auto links = nlohmann::json::parse(outputOf("ip -json address show dev " + interface));
    std::vector<std::string> addresses;
    for (const auto &address : links.at(0).at("addr_info")) {
        if (address.at("scope") != "link") {
            addresses.push_back(address.at("local").get<std::string>() + "/" +
                                std::to_string(address.at("prefixlen").get<int>()));
        }
    }
    std::sort(addresses.begin(), addresses.end());
    return addresses;
}

} // namespace e2e
