// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fields of a LAN set request: where each stands, and what it may hold. */
#pragma once

#include <cstdint>
#include <span>

#include "manager_results.hpp"
#include "network_mng/lan.h"

namespace bmc::manager {

/* Segment checks that a change of a field calls for. */
struct Reach {
    std::uint32_t addresses = 0;        /* NW_SEGCHK_* */
    std::uint32_t ownRoutes = 0;        /* NW_ROUTESET_* of the port itself */
    std::uint32_t neighboursRoutes = 0; /* ... and of the port beside it */
};

struct LanField {
    const char *name;
    unsigned word;     /* of the port's change bits */
    std::uint32_t bit; /* in that word */
    std::size_t from;  /* offset in NW_LAN_SET_PORT_S */
    std::size_t to;    /* offset in NW_LAN_CFG_PORT_S */
    std::size_t size;
    bool (*isValid)(const std::uint8_t *value);
    Result refusal; /* when it isn't */
    Reach reach;
};

std::span<const LanField> lanFields();

using ChangeBits = std::uint32_t[NW_LAN_WORD_COUNT];

bool isSelected(const LanField &field, const ChangeBits &bits);

/* Throws Refusal for a bit that selects no field and for a selected field with a bad value. */
void checkFields(const ChangeBits &bits, const NW_LAN_SET_PORT_S &request);

/* Copies the selected fields, and keeps in step what follows from them: a static route is valid
 * while it has a destination, and a port whose VLAN is switched off has no VLAN ID. */
void applyFields(const ChangeBits &bits, const NW_LAN_SET_PORT_S &request, NW_LAN_CFG_PORT_S &port);

} // namespace bmc::manager
