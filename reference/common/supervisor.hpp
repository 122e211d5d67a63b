// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a service tells whoever started it. */
#pragma once

namespace bmc {

/* Says that the service has done what others wait for. Nothing happens when nobody asked, by the
 * variable NOTIFY_SOCKET, to be told. */
void tellSupervisorReady() noexcept;

} // namespace bmc
