// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager, or another daemon, as a process of the test. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

#include "network_mng/rpc.h"

namespace e2e {

class Manager {
public:
    /* Starts it and waits until it owns its bus name; throws when it doesn't get that far. */
    explicit Manager(const std::vector<std::string> &command = {"nwmanagerd"},
                     std::uint32_t service = NW_RPC_SERVICE_NETWORK);
    /* Kills it if it still runs. */
    ~Manager();
    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    /* Asks it to end and answers its exit status. */
    int stop();
    void sendSignal(int signal) const;
    /* Ends it as a crash would. */
    void kill();

private:
    [[noreturn]] void becomeProgram() const;
    int wait();

    std::vector<std::string> command_;
    pid_t pid_ = -1;
};

/* Whether a service's bus name has an owner; false also without a bus. */
bool isOnTheBus(std::uint32_t service);
bool managerOwnsItsName();

} // namespace e2e
