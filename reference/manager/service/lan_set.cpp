// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include <set>

#include "lan_fields.hpp"
#include "manager/service/lan_checks.hpp"
#include "network_mng/operate_log.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* The change bits of a port, out of the packed request. */
struct PortBits {
    ChangeBits words;

    PortBits(const NW_LAN_BITMAP_S &bitmap, unsigned port)
        : words{bitmap.aauiWord[port][0], bitmap.aauiWord[port][1]}
    {
    }
};

std::set<unsigned> selectedPorts(const NW_LAN_BITMAP_S &bitmap)
{
    std::set<unsigned> ports;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const PortBits bits(bitmap, port);
        if ((bits.words[0] | bits.words[1]) != 0) {
            ports.insert(port);
        }
    }
    return ports;
}

} // namespace

void editLan(Change &change, Payload payload)
{
    const auto set = contentOf<NW_LAN_SET_REQ_S>(payload);
    const std::set<unsigned> ports = selectedPorts(set.stBitmap);
    if (ports.empty()) {
        return;
    }
    for (const unsigned port : ports) {
        change.scope.select(NW_LOG_LAN, port);
    }

    const NW_IFC_STATE_DB_INFO_S &state = change.after.state;
    NW_LAN_CFG_DB_INFO_S &lan = change.after.lan;
    SegmentChecks checks;
    for (const unsigned port : ports) {
        const PortBits bits(set.stBitmap, port);
        require(isServed(state, port), Result::portNotServed, "port " + std::to_string(port));
        checkFields(bits.words, set.stConfig.astPort[port]);
        applyFields(bits.words, set.stConfig.astPort[port], lan.astPort[port]);
        checkPort(lan.astPort[port]);
        addChecks(checks, port, bits.words);
    }
    checkSegments(state, lan, checks);
}

} // namespace bmc::manager
