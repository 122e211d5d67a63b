// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

enum Bit : std::uint32_t { autoNegBit = 1, speedBit = 2, duplexBit = 4 };

/* Values of the record: 10, 100 and 1000 Mbit/s. */
constexpr std::uint32_t speedCount = 3;

void editPort(std::uint32_t bits, const NW_AN_SET_PORT_S &request, NW_AN_CFG_PORT_S &entry)
{
    require((bits & ~(autoNegBit | speedBit | duplexBit)) == 0, Result::unknownField,
            "auto-negotiation");
    if ((bits & autoNegBit) != 0) {
        require(request.ucAutoNeg <= 1, Result::badLinkMode, "auto-negotiation");
        entry.ucAutoNeg = request.ucAutoNeg;
    }
    if ((bits & duplexBit) != 0) {
        require(request.ucDuplex <= 1, Result::badLinkMode, "duplex");
        entry.ucDuplex = request.ucDuplex;
    }
    if ((bits & speedBit) != 0) {
        require(request.uiSpeed < speedCount, Result::badLinkMode, "speed");
        entry.ucSpeed = static_cast<std::uint8_t>(request.uiSpeed);
    }
    require(entry.ucSpeed < speedCount, Result::badLinkMode, "speed");
    settings::linkModeMarkIn(entry) = 1;
}

} // namespace

void editLinkModes(Change &change, Payload payload)
{
    const auto request = contentOf<NW_AN_SET_REQ_S>(payload);
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        const std::uint32_t bits = request.auiBitmap[port];
        if (bits == 0) {
            continue;
        }
        change.scope.select(NW_LOG_AN, port);
        require(change.after.state.aucPortPresent[port] != 0, Result::portNotServed,
                "port " + std::to_string(port));
        editPort(bits, request.astPort[port], change.after.an.astPort[port]);
    }
}

} // namespace bmc::manager
