// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "auto_negotiation.hpp"

#include <array>
#include <cerrno>

#include <linux/ethtool.h>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "ports.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

enum Bit : std::uint32_t { autoNegBit = 1, speedBit = 2, duplexBit = 4 };

/* Mbit/s by the value of the record. */
constexpr std::array<std::uint32_t, 3> speeds{10, 100, 1000};

/* In the first reserved byte of a port's entry. */
constexpr std::uint8_t isSetMark = 1;

/* An interface's link mode, by way of the kernel's ethtool call. */
class LinkMode {
public:
    explicit LinkMode(const std::string &interface)
        : interface_(interface), socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
    }
    ~LinkMode()
    {
        close(socket_);
    }
    LinkMode(const LinkMode &) = delete;
    LinkMode &operator=(const LinkMode &) = delete;

    ethtool_cmd get() const
    {
        ethtool_cmd mode{};
        mode.cmd = ETHTOOL_GSET;
        exchange(mode);
        return mode;
    }

    void set(ethtool_cmd mode) const
    {
        mode.cmd = ETHTOOL_SSET;
        exchange(mode);
    }

private:
    void exchange(ethtool_cmd &mode) const
    {
        ifreq request{};
        interface_.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
        request.ifr_data = reinterpret_cast<char *>(&mode);
        if (ioctl(socket_, SIOCETHTOOL, &request) == 0) {
            return;
        }
        require(errno != EOPNOTSUPP, Result::noLinkMode, interface_);
        throw KernelError("link mode of " + interface_ + ": " + std::strerror(errno));
    }

    std::string interface_;
    int socket_;
};

ethtool_cmd modeOf(const NW_AN_CFG_PORT_S &entry, ethtool_cmd mode)
{
    mode.autoneg = entry.ucAutoNeg == 1 ? AUTONEG_ENABLE : AUTONEG_DISABLE;
    mode.duplex = entry.ucDuplex == 0 ? DUPLEX_HALF : DUPLEX_FULL;
    ethtool_cmd_speed_set(&mode, speeds.at(entry.ucSpeed));
    if (entry.ucAutoNeg == 1) {
        mode.advertising = mode.supported;
    }
    return mode;
}

void editPort(std::uint32_t bits, const NW_AN_SET_PORT_S &request, NW_AN_CFG_PORT_S &entry)
{
    require((bits & ~(autoNegBit | speedBit | duplexBit)) == 0, Result::unknownField,
            "auto-negotiation");
    if ((bits & autoNegBit) != 0) {
        require(request.ucAutoNeg <= 1, Result::badLinkMode, "auto-negotiation");
        entry.ucAutoNeg = request.ucAutoNeg;
    }
    if ((bits & duplexBit) != 0) {
        require(request.ucDuplex <= 1, Result::badLinkMode, "duplex");
        entry.ucDuplex = request.ucDuplex;
    }
    if ((bits & speedBit) != 0) {
        require(request.uiSpeed < speeds.size(), Result::badLinkMode, "speed");
        entry.ucSpeed = static_cast<std::uint8_t>(request.uiSpeed);
    }
    require(entry.ucSpeed < speeds.size(), Result::badLinkMode, "speed");
    entry.aucAnReserved[0] = isSetMark;
}

} // namespace

void editLinkModes(Draft &draft, Payload payload)
{
    const auto request = contentOf<NW_AN_SET_REQ_S>(payload);
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        const std::uint32_t bits = request.auiBitmap[port];
        if (bits == 0) {
            continue;
        }
        draft.modules |= NW_LOG_AN;
        draft.details.emplace(NW_LOG_AN, port);
        require(draft.after.state.aucPortPresent[port] != 0, Result::portNotServed,
                "port " + std::to_string(port));
        editPort(bits, request.astPort[port], draft.after.an.astPort[port]);
        draft.linkModes.insert(port);
    }
}

void applyLinkModes(const Context &context)
{
    const Configuration &wanted = context.draft.after;
    for (const unsigned port : context.draft.linkModes) {
        const std::string name = nameOf(wanted.state, port);
        const LinkMode link(name);
        const ethtool_cmd former = link.get();
        link.set(modeOf(wanted.an.astPort[port], former));
        context.transaction.undoWith([name, former] { LinkMode(name).set(former); });
    }
}

std::set<unsigned> portsWithLinkMode(const NW_AN_CFG_DB_INFO_S &record)
{
    std::set<unsigned> ports;
    for (const unsigned port : {NW_PORT_ETH0, NW_PORT_ETH1}) {
        if (record.astPort[port].aucAnReserved[0] == isSetMark) {
            ports.insert(port);
        }
    }
    return ports;
}

} // namespace bmc::manager
