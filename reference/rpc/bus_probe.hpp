// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Is the message bus alive? */
#pragma once

#include "common/deadline.hpp"

namespace bmc::rpc {

/* Returns once the system bus has answered a few bytes, so that connecting, which knows no time-out
 * of its own, will not hang. Throws std::system_error when the bus is absent, or silent until the
 * deadline. An address of an uncommon form is not probed. */
void probeBus(const Deadline &deadline);

} // namespace bmc::rpc
