// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/wireless.hpp"

#include <array>
#include <cstdint>

#include <arpa/inet.h>

#include "bmc_platform.h"

namespace bmc::settings {

NW_WIFI_ADDR_S readWireless()
{
    std::array<char, BMC_WIRELESS_INFO_SIZE + 1> info{}; /* the last byte ends the text */
    NW_WIFI_ADDR_S wireless{};
    if (USBMANAGE_GetWirelessServiceInfo(info.data()) != 0) {
        return wireless;
    }

    /* A text that is no address leaves the field as it is. */
    inet_pton(AF_INET, &info[BMC_WIRELESS_IPV4_TEXT_OFFSET], wireless.aucIpv4Addr);
    wireless.ucIpv4Enable = static_cast<std::uint8_t>(info[BMC_WIRELESS_ENABLE_OFFSET]);
    return wireless;
}

} // namespace bmc::settings
