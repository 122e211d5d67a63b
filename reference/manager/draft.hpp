// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change on its way: the configuration that holds, the one that is wanted, and what to apply. */
#pragma once

#include <chrono>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <span>

#include "network_mng/rpc.h"
#include "store.hpp"

namespace bmc::manager {

struct Draft {
    explicit Draft(const Configuration &present) : before(present), after(present) {}

    Configuration before;
    Configuration after;
    std::uint32_t modules = 0;      /* NW_OPER_LOG_MODULE_E of what is to be applied */
    std::set<unsigned> ports{};     /* whose links and addresses are to be applied */
    std::set<unsigned> linkModes{}; /* ports whose auto-negotiation is to be applied */
    std::optional<std::chrono::seconds> restartDelay{};

    /* Answered as the detail word, by the module that is refused; otherwise the first one's. */
    std::map<std::uint32_t, std::uint32_t> details{};
    NW_RPC_RESPONSE_S response{};
};

using Payload = std::span<const std::uint8_t>;

/* A record that begins at an offset of the payload. */
template <typename Content>
Content contentOf(Payload payload, std::size_t offset = 0)
{
    Content content;
    std::memcpy(&content, payload.subspan(offset, sizeof(content)).data(), sizeof(content));
    return content;
}

} // namespace bmc::manager
