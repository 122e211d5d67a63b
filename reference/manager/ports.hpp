// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Links, addresses and routes of the ports, and the bond of two of them. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

std::string nameOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port);

/* Throws KernelError when there is none. */
Interface interfaceOf(const Kernel &kernel, const std::string &name);

void applyPorts(const Context &context);

/* The same for one port of a manager that starts, step by step: what the kernel refuses is logged
 * and left out. managed: addresses that may be the manager's. Answers whether all went well. */
bool bringInLine(const Kernel &kernel, const Configuration &configuration, unsigned port,
                 const std::vector<Address> &managed);

/* Copies the kernel's facts about a port's interface into the records. */
void noteInterface(const Kernel &kernel, Configuration &configuration, unsigned port);

} // namespace bmc::manager
