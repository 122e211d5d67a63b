// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/address_probe.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include <net/if.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "common/address.hpp"
#include "common/descriptor.hpp"
#include "network_mng/check.h"
#include "nwctl/stored.hpp"

namespace nwctl {

namespace {

using Address = std::array<std::uint8_t, NW_IPV4_SIZE>;

/* The address that the edit gives, unless the port has it. */
std::optional<Address> newAddress(const bmc::settings::Edit &edit)
{
    if ((edit.bits[0] & NW_LAN_BIT_IPV4_ADDR) == 0) {
        return std::nullopt;
    }
    Address address{};
    std::memcpy(address.data(), edit.request.data() + offsetof(NW_LAN_SET_PORT_S, aucIpv4Addr),
                address.size());
    const NW_LAN_CFG_DB_INFO_S stored = readLanRecord();
    const bool isStored = std::ranges::equal(address, stored.astPort[edit.port].aucIpv4Addr);
    return isStored ? std::nullopt : std::optional(address);
}

bool isUp(unsigned interfaceIndex)
{
    ifreq request{};
    const bmc::Descriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const bool isRead = if_indextoname(interfaceIndex, request.ifr_name) != nullptr &&
                        ioctl(any.get(), SIOCGIFFLAGS, &request) == 0;
    return isRead && (request.ifr_flags & IFF_UP) != 0;
}

bool isInstalled(const std::string &program)
{
    const char *path = std::getenv("PATH");
    std::istringstream directories(path == nullptr ? "" : path);
    for (std::string directory; std::getline(directories, directory, ':');) {
        if (access((directory + "/" + program).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<Probe> probeAddress(const bmc::settings::Edit &edit,
                                  const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    const std::optional<Address> address = newAddress(edit);
    if (!address || !isUp(interfaces.auiIfIndex[edit.port])) {
        return std::nullopt;
    }
    const std::string text = textOf(bmc::ipv4(address->data()));
    if (!isInstalled("arping")) {
        return Probe{text, ProbeResult::noTool};
    }
    const std::string name = bmc::settings::nameOf(interfaces, edit.port);
    const bool isTaken = NW_IPV4AddressConflict(name.c_str(), address->data()) != 0;
    return Probe{text, isTaken ? ProbeResult::taken : ProbeResult::free};
}

} // namespace nwctl
