// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the platform knows of the wireless service, for the system's own programs. */
#pragma once

extern "C" {

#pragma GCC visibility push(default)

enum { BMC_WIRELESS_ABSENT = 0, BMC_WIRELESS_READ = 1, BMC_WIRELESS_MALFORMED = 2 };

/* Tells apart why USBMANAGE_GetWirelessServiceInfo gives no record: there is no such service, or
 * what is said of it cannot be read or understood. */
int BMC_GetWirelessState(void);

#pragma GCC visibility pop
}

namespace bmc {

enum class WirelessState {
    absent = BMC_WIRELESS_ABSENT,
    read = BMC_WIRELESS_READ,
    malformed = BMC_WIRELESS_MALFORMED,
};

inline WirelessState wirelessState()
{
    return static_cast<WirelessState>(BMC_GetWirelessState());
}

} // namespace bmc
