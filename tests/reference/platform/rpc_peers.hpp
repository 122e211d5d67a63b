// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A message bus and services on it, each in a process of its own. */
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <sdbus-c++/sdbus-c++.h>

#include "support.hpp"

namespace bmc::test {

/* A bus of the test's own. It knows one service that it could start, startableService, which would
 * make the file startedFile(). DBUS_SYSTEM_BUS_ADDRESS names it as long as it lives. */
class PrivateBus {
public:
    static constexpr std::uint32_t startableService = 99;

    PrivateBus();
    ~PrivateBus();

    std::filesystem::path startedFile() const
    {
        return directory_.path() / "started";
    }

    void signal(int number) const;

    /* Ends the bus, if it lives, or begins it anew at the same address. */
    void stop();
    void start();

private:
    void writeConfiguration() const;

    TemporaryDirectory directory_;
    std::unique_ptr<support::Process> daemon_;
    Environment address_{"DBUS_SYSTEM_BUS_ADDRESS",
                         "unix:path=" + (directory_.path() / "socket").string()};
};

/* Handles one call; what it throws is its answer. */
using Handler = std::function<void(sdbus::MethodCall &call)>;

/* A service that answers each call by its handler. It owns its name when the constructor returns.
 */
class Peer {
public:
    Peer(std::uint32_t service, Handler handler, std::string signature = "ay");

    void signal(int number) const
    {
        process_->signal(number);
    }

private:
    std::unique_ptr<Child> process_;
};

} // namespace bmc::test
