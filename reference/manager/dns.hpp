/* Command 1: DNS. */
#pragma once

#include "effects.hpp"

namespace bmc::manager {

/* Checks a request and notes what it asks for; throws Refusal. */
void editDns(Draft &draft, Payload payload);

void applyDns(const Context &context);

} // namespace bmc::manager
