// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change of one port's LAN settings, sent with the library. */
#pragma once

#include <cstdint>
#include <string>

#include "network_mng.h"

namespace e2e {

class LanChange {
public:
    explicit LanChange(std::uint32_t port) : port_(port) {}

    LanChange &lanEnable(bool on);
    LanChange &ipv4(const std::string &address, const std::string &mask);
    LanChange &ipv4Gateway(const std::string &gateway);
    LanChange &ipv6(const std::string &address, std::uint8_t prefix);

    NW_RESULT send();

    /* Texts of the operation log after send. */
    const NW_OPER_LOG_S &log() const
    {
        return log_;
    }

private:
    NW_LAN_SET_PORT_S &select(std::uint32_t bits);

    std::uint32_t port_;
    NW_LAN_BITMAP_S bitmap_{};
    NW_LAN_SET_CFG_S config_{};
    NW_OPER_LOG_S log_{};
};

} // namespace e2e
