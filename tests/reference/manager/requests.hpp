// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Requests of any command, and everything that a refused one must leave alone. */
#pragma once

#include <cstring>

#include "manager/engine/store.hpp"
#include "manager_system.hpp"
#include "network_mng/settings.h"

namespace nwtest {

template <typename Payload>
std::vector<std::uint8_t> requestOf(std::uint8_t command, const Payload &payload)
{
    std::vector<std::uint8_t> request(sizeof(NW_RPC_REQUEST_S));
    request[1] = command;
    std::memcpy(request.data() + 2, &payload, sizeof(payload));
    return request;
}

/* Payload of command 1. */
struct NW_PACKED DnsSet {
    std::uint32_t head;
    std::uint16_t bits[NW_PORT_COUNT];
    std::uint8_t reserved[2];
    NW_DNS_PORT_S ports[NW_PORT_COUNT];
};
static_assert(sizeof(DnsSet) == NW_DNS_SET_SIZE);

NW_HOSTNAME_SET_REQ_S hostNameSet(std::uint8_t bits, std::uint8_t mode, const std::string &hostName,
                                  const std::string &bmcName = "");

void expectAnswer(const std::vector<std::uint8_t> &request, std::uint32_t result,
                  std::uint32_t detail = 0);
/* Refused: result and detail, and neither records nor kernel nor files have changed. */
void expectRefused(const std::vector<std::uint8_t> &request, std::uint32_t result,
                   std::uint32_t detail = 0);

bmc::manager::Configuration stored();
/* Records, kernel and files as one text. */
std::string everything();

std::string fileText(const std::string &path);
std::string resolverText();

} // namespace nwtest
