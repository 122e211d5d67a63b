// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "programs.hpp"

#include <stdexcept>

namespace e2e {

namespace {

/* The name is claimed first; whoever answers is ready. */
bool answersOnTheBus(std::uint32_t service)
{
    return run("dbus-send --system --print-reply --reply-timeout=2000 "
               "--dest=io.networkmng.Service" +
               std::to_string(service) + " /io/networkmng/Rpc org.freedesktop.DBus.Peer.Ping")
               .status == 0;
}

} // namespace

std::string nwctlLine(const std::string &arguments)
{
    return NW_BINARY_DIR "/nwctl " + arguments;
}

Outcome nwctl(const std::string &arguments)
{
    return run(nwctlLine(arguments));
}

std::unique_ptr<Process> startDaemon(const std::string &arguments, std::uint32_t service)
{
    auto daemon =
        std::make_unique<Process>(support::inShell("exec " NW_BINARY_DIR "/" + arguments));
    const bool isReady =
        eventually([&] { return !daemon->isRunning() || answersOnTheBus(service); });
    if (!isReady || !daemon->isRunning()) {
        throw std::runtime_error(arguments + " doesn't become ready: " + daemon->errorText());
    }
    return daemon;
}

} // namespace e2e
