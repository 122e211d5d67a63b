// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A running manager for tests, and independent views of what it changed. */
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "network_mng/lan.h"
#include "network_mng/rpc.h"
#include "network_mng/store.h"
#include "process.hpp"

namespace nwtest {

using support::eventually;
using support::Outcome;
using support::Process;
using support::shell;

/* The manager, with what it ends with. */
Outcome runManager(const std::vector<std::string> &arguments,
                   const std::vector<std::string> &environment = {});

/* A request of command 3, put together field by field. */
class LanRequest {
public:
    LanRequest &select(unsigned port, std::uint32_t word0, std::uint32_t word1 = 0);
    NW_LAN_SET_PORT_S &port(unsigned port);
    std::vector<std::uint8_t> bytes() const;

private:
    NW_LAN_SET_REQ_S payload_{};
};

/* An address as raw bytes. */
std::vector<std::uint8_t> raw(const std::string &text);
void put(std::uint8_t *field, const std::string &address);

/* Answer of the manager; nothing for a failed call. */
std::optional<NW_RPC_RESPONSE_S> call(std::span<const std::uint8_t> request,
                                      std::uint32_t function = NW_RPC_FUNCTION_NETWORK);
/* Result and detail must be these. */
void expectAnswer(const LanRequest &request, std::uint32_t result, std::uint32_t detail);

NW_LAN_CFG_DB_INFO_S storedLan();
NW_IFC_STATE_DB_INFO_S storedState();
std::uint8_t storedStatus();
void putLan(const NW_LAN_CFG_DB_INFO_S &lan);

/* Global addresses of an interface as the kernel's own tool shows them, sorted. */
std::vector<std::string> kernelAddresses(const std::string &interface);
/* "GATEWAY METRIC" of its default routes, sorted. */
std::vector<std::string> kernelGateways(const std::string &interface);
/* "DESTINATION via GATEWAY METRIC" of its routes with the manager's protocol, sorted; without the
 * part in the middle for a destination on the link. */
std::vector<std::string> kernelRoutes(const std::string &interface);
bool isUp(const std::string &interface);
/* All links, addresses and routes, without what changes by itself. */
std::string kernelSnapshot();

/* The request is answered that way and changes neither records nor kernel. */
void expectUntouched(const LanRequest &request, std::uint32_t result, std::uint32_t detail);

/* Interfaces as the sandbox makes them, a fresh configuration and a manager that is ready. */
class ManagerTest : public ::testing::Test {
protected:
    void SetUp() override;

    void configure(const std::string &json);
    void startManager();
    /* SIGTERM; the exit status must be 0. */
    void stopManager();

    std::optional<Process> manager_;
};

inline constexpr const char *separatePorts = R"({
  "mode": "separate",
  "ports": {"dedicated": {"name": "eth0", "channel": 1},
            "shared": {"name": "eth1", "channel": 8},
            "bond": {"name": "bond0", "channel": 1}},
  "lan": {
    "dedicated": {"lan": true, "ipv4-origin": "static", "ipv4-enabled": true,
                  "ipv4": "192.168.10.2/24"},
    "shared": {"lan": true, "ipv4-origin": "static", "ipv4-enabled": true,
               "ipv4": "192.168.20.2/24", "ipv6-origin": "static", "ipv6-enabled": true,
               "ipv6": "2001:db8:20::2/64"},
    "bond": {"lan": false}}})";

inline constexpr const char *bondedPorts = R"({
  "mode": "active-standby",
  "ports": {"dedicated": {"name": "eth0", "channel": 1},
            "shared": {"name": "eth1", "channel": 8},
            "bond": {"name": "bond0", "channel": 1}},
  "lan": {
    "dedicated": {"lan": true},
    "shared": {"lan": true},
    "bond": {"lan": true, "ipv4-enabled": true, "ipv4": "192.168.30.2/24",
             "ipv4-gateway": "192.168.30.1"}}})";

} // namespace nwtest
