// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "address_probe.hpp"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <net/if.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "network_mng/check.h"
#include "stored.hpp"

namespace nwctl {

namespace {

bool changesAddress(const LanChange &change)
{
    const std::uint8_t(&address)[NW_IPV4_SIZE] = change.fields.aucIpv4Addr;
    return (change.bits[0] & NW_LAN_BIT_IPV4_ADDR) != 0 &&
           !std::ranges::equal(address, readLanRecord().astPort[change.port].aucIpv4Addr);
}

bool isUp(unsigned interfaceIndex)
{
    ifreq request{};
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const bool isRead = if_indextoname(interfaceIndex, request.ifr_name) != nullptr &&
                        ioctl(descriptor, SIOCGIFFLAGS, &request) == 0;
    close(descriptor);
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

ProbeResult probeAddress(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    if (!changesAddress(change) || !isUp(interfaces.auiIfIndex[change.port])) {
        return ProbeResult::notAsked;
    }
    if (!isInstalled("arping")) {
        return ProbeResult::noTool;
    }
    return NW_IPV4AddressConflict(portName(interfaces, change.port).c_str(),
                                  change.fields.aucIpv4Addr) != 0
               ? ProbeResult::taken
               : ProbeResult::free;
}

} // namespace nwctl
