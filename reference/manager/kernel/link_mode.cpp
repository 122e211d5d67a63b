// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/kernel/link_mode.hpp"

#include <cerrno>
#include <system_error>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "common/descriptor.hpp"
#include "manager/state/actual.hpp"

namespace bmc::manager {

namespace {

/* 0 or errno as the driver answers. */
int exchange(const std::string &interface, ethtool_cmd &mode)
{
    ifreq request{};
    interface.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
    request.ifr_data = reinterpret_cast<char *>(&mode);
    const Descriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!any) {
        throw MachineError(std::generic_category().message(errno));
    }
    return ioctl(any.get(), SIOCETHTOOL, &request) == 0 ? 0 : errno;
}

void requireExchange(const std::string &interface, ethtool_cmd &mode)
{
    switch (const int status = exchange(interface, mode)) {
    case 0:
        return;
    case ENODEV:
        throw MissingInterface(interface);
    case EOPNOTSUPP:
        throw Unsupported(interface + " does not let its speed and duplex be set");
    default:
        throw MachineError(std::generic_category().message(status));
    }
}

} // namespace

std::optional<std::uint64_t> linkModeOf(const std::string &interface)
{
    ethtool_cmd mode{};
    mode.cmd = ETHTOOL_GSET;
    if (exchange(interface, mode) != 0) {
        return std::nullopt;
    }
    return linkModeNumber(mode.autoneg == AUTONEG_ENABLE, mode.duplex, ethtool_cmd_speed(&mode));
}

void setLinkMode(const std::string &interface, std::uint64_t number)
{
    ethtool_cmd mode{};
    mode.cmd = ETHTOOL_GSET;
    requireExchange(interface, mode);

    const bool isAuto = (number & linkModeNumber(true, 0, 0)) != 0;
    mode.cmd = ETHTOOL_SSET;
    mode.autoneg = isAuto ? AUTONEG_ENABLE : AUTONEG_DISABLE;
    mode.duplex = static_cast<std::uint8_t>(number >> 32);
    ethtool_cmd_speed_set(&mode, static_cast<std::uint32_t>(number));
    if (isAuto) {
        mode.advertising = mode.supported;
    }
    requireExchange(interface, mode);
}

} // namespace bmc::manager
