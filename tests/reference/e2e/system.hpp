// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fixture: a freshly configured system, and what its parts say about it. */
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "lan_change.hpp"
#include "programs.hpp"

namespace e2e {

using Bytes = std::vector<std::uint8_t>;

/* The kernel's addresses of an interface as "ADDRESS/LENGTH", sorted, link-local ones left out. */
std::vector<std::string> kernelAddresses(const std::string &interface);

/* The stored LAN record, byte for byte; throws when it cannot be read. */
Bytes storedLanRecord();

/* Addresses that the record says a port has, in the form of kernelAddresses. */
std::vector<std::string> storedAddresses(std::uint32_t port);

/* True while the stored status says that a change is in progress. */
bool changeIsInProgress();

/* What the library tells about a port; throws when it tells nothing. */
NW_ETHER_INS_INFO_S queryPort(const std::string &interface);

class System : public ::testing::Test {
protected:
    /* Stores the initial configuration, takes what an earlier test left from the interfaces and
     * starts the manager. */
    void SetUp() override;

    void startManager();
    Process &manager()
    {
        return *manager_;
    }
    /* SIGTERM; the addresses stay with the kernel. */
    void stopManager();

private:
    std::unique_ptr<Process> manager_;
};

/* A change to make, and to name the port that has it. */
inline LanChange changeEth1()
{
    return LanChange(NW_PORT_ETH1);
}

} // namespace e2e
