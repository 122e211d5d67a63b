/* VLAN sub-interfaces of the ports. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

void applyVlans(const Context &context);

} // namespace bmc::manager
