// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Payloads of requests. */
#pragma once

#include <cstring>
#include <span>

#include "network_mng/rpc.h"

namespace bmc::manager {

using Payload = std::span<const std::uint8_t>;

/* The record at the beginning of the payload. */
template <typename Content>
Content contentOf(Payload payload)
{
    Content content;
    std::memcpy(&content, payload.first(sizeof(content)).data(), sizeof(content));
    return content;
}

} // namespace bmc::manager
