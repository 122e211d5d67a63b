// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include "network_mng/lan.h"
#include "network_mng/operate_log.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

struct Part {
    std::uint32_t module;
    std::size_t at; /* in the request */
    void (*edit)(Change &change, Payload payload);
};

/* The mode comes first: the other parts are checked against the ports that it serves. */
constexpr Part parts[] = {
    {NW_LOG_NET_MODE, offsetof(NW_SET_NETWORK_ALL_S, aucNetMode), selectNetMode},
    {NW_LOG_LAN, offsetof(NW_SET_NETWORK_ALL_S, stLan), editLan},
    {NW_LOG_DNS, offsetof(NW_SET_NETWORK_ALL_S, aucDns), editDns},
};

} // namespace

void editAll(Change &change, Payload payload)
{
    const auto mask = contentOf<std::uint32_t>(payload);
    require((mask & ~std::uint32_t{NW_LOG_NET_MODE | NW_LOG_LAN | NW_LOG_DNS}) == 0,
            Result::unknownField, "combined set");
    for (const Part &part : parts) {
        if ((mask & part.module) != 0) {
            blaming(part.module, [&] { part.edit(change, payload.subspan(part.at)); });
        }
    }
    if (change.scope.has(NW_LOG_NET_MODE)) {
        blaming(NW_LOG_NET_MODE, [&] { checkNetMode(change); });
    }
}

} // namespace bmc::manager
