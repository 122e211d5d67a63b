// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/facts.hpp"

#include <algorithm>

#include "bmc_platform.h"
#include "manager/log.hpp"

namespace bmc::manager {

namespace {

void noteInterface(Configuration &configuration, const Actual &actual, unsigned port)
{
    const std::string name = settings::nameOf(configuration.state, port);
    const auto found = actual.links.find(name);
    const Link link = found != actual.links.end() ? found->second : Link{};
    NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
    /* The sixteenth further address has the same place as the link-local one. */
    const bool hasRoom = entry.ucIpv6FurtherCount < NW_IPV6_FURTHER_COUNT;
    if (hasRoom && !std::ranges::equal(link.mac, entry.aucMacAddr)) {
        std::ranges::fill(entry.stLinkLocal.aucAddr, std::uint8_t{0}); /* another's */
    }
    configuration.state.auiIfIndex[port] = static_cast<std::uint32_t>(link.index);
    std::ranges::copy(link.mac, entry.aucMacAddr);
    BMC_Strlcpy(entry.szIfcName, name.c_str(), sizeof(entry.szIfcName));

    const auto linkLocal = std::ranges::find_if(actual.items, [&](const Item &item) {
        return item.kind == Kind::address && item.subject == name && isLinkLocal(item.address);
    });
    if (linkLocal != actual.items.end() && hasRoom) {
        std::ranges::copy(linkLocal->address.bytes, entry.stLinkLocal.aucAddr);
    }
}

} // namespace

void repair(NW_LAN_CFG_DB_INFO_S &lan)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        std::uint8_t &count = lan.astPort[port].ucIpv6FurtherCount;
        if (count > NW_IPV6_FURTHER_COUNT) {
            log(Level::error, "port " + std::to_string(port) + ": the record counted " +
                                  std::to_string(count) +
                                  " further IPv6 addresses where 16 fit; it now counts 16");
            count = NW_IPV6_FURTHER_COUNT;
        }
    }
}

void noteInterfaces(Configuration &configuration, const Actual &actual)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        noteInterface(configuration, actual, port);
    }
}

} // namespace bmc::manager
