// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/ways_in.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include "common/descriptor.hpp"
#include "common/hex.hpp"
#include "settings/codes.hpp"
#include "settings/difference.hpp"
#include "settings/manager_bytes.hpp"
#include "settings/refusal.hpp"

namespace bmc::settings {

namespace {

bool isOpen(const std::vector<WayIn> &ways, const LinkOf &linkOf)
{
    return std::ranges::any_of(ways, [&](const WayIn &way) {
        return way.port == NW_PORT_BOND0 || linkOf(way.interface).value_or(true);
    });
}

/* The kernel writes each word of an address as the number that it is here. */
std::optional<Address> addressIn(const std::string &digits)
{
    const auto bytes = parseHex(digits);
    if (!bytes || (bytes->size() != NW_IPV4_SIZE && bytes->size() != NW_IPV6_SIZE)) {
        return std::nullopt;
    }
    Address address = addressOf(bytes->size() == NW_IPV4_SIZE ? AF_INET : AF_INET6, bytes->data());
    if constexpr (std::endian::native == std::endian::little) {
        for (std::size_t word = 0; word < bytes->size(); word += 4) {
            std::reverse(address.bytes.begin() + static_cast<std::ptrdiff_t>(word),
                         address.bytes.begin() + static_cast<std::ptrdiff_t>(word + 4));
        }
    }
    return address;
}

std::string beforeColon(const std::string &text)
{
    return text.substr(0, text.find(':'));
}

std::string afterColon(const std::string &text)
{
    const auto colon = text.find(':');
    return colon == std::string::npos ? "" : text.substr(colon + 1);
}

/* "::ffff:192.0.2.1", by which a socket of both families tells an IPv4 address. */
Address withoutMapping(const Address &address)
{
    constexpr std::array<std::uint8_t, 12> mapping{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    const bool isMapped = address.family == AF_INET6 &&
                          std::equal(mapping.begin(), mapping.end(), address.bytes.begin());
    return isMapped ? addressOf(AF_INET, address.bytes.data() + mapping.size()) : address;
}

} // namespace

std::vector<WayIn> waysIn(const Configuration &configuration)
{
    std::vector<WayIn> ways;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
        if (!isServed(configuration.state, port) || entry.ucLanEnable != 1) {
            continue;
        }
        const std::string interface = nameOf(configuration.state, port);
        const bool answers = (arpOf(entry).control & arpResponses) != 0;
        if (const Address address = ipv4(entry.aucIpv4Addr);
            entry.ucIpv4Enable == 1 && answers && !isUnset(address)) {
            ways.push_back({port, interface, address});
        }
        if (const Address address = ipv6(entry.aucIpv6Addr);
            entry.ucIpv6Enable == 1 && !isUnset(address)) {
            ways.push_back({port, interface, address});
        }
    }
    return ways;
}

std::optional<bool> knownLink(const std::string &interface)
{
    const Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ifreq request{};
    interface.copy(request.ifr_name, sizeof(request.ifr_name) - 1);
    if (ioctl(socket.get(), SIOCGIFFLAGS, &request) != 0) {
        return errno == ENODEV ? std::optional(false) : std::nullopt;
    }
    const bool isUp = (request.ifr_flags & IFF_UP) != 0;
    return isUp ? std::optional((request.ifr_flags & IFF_RUNNING) != 0) : std::nullopt;
}

void requireWayIn(const Configuration &before, const Configuration &after, const LinkOf &linkOf)
{
    if (isOpen(waysIn(before), linkOf)) {
        require(isOpen(waysIn(after), linkOf), Result::locksOut, "the change");
    }
}

/* number: LOCAL:PORT REMOTE:PORT STATE and more, numbers and addresses in hexadecimal. Who comes in
 * comes to a port that is listened on. */
std::vector<Address> connectedIn(std::istream &lines)
{
    constexpr const char *established = "01";
    constexpr const char *listening = "0A";
    std::set<std::string> ports;
    std::vector<std::pair<std::string, std::string>> ends; /* here and there */
    for (std::string line; std::getline(lines, line);) {
        std::istringstream fields(line);
        std::string number;
        std::string local;
        std::string remote;
        std::string state;
        fields >> number >> local >> remote >> state;
        if (state == listening) {
            ports.insert(afterColon(local));
        } else if (state == established) {
            ends.emplace_back(local, remote);
        }
    }
    std::vector<Address> connected;
    for (const auto &[local, remote] : ends) {
        const auto address = addressIn(beforeColon(local));
        const bool isOwn = beforeColon(local) == beforeColon(remote);
        if (address && !isOwn && ports.contains(afterColon(local))) {
            connected.push_back(withoutMapping(*address));
        }
    }
    return connected;
}

std::vector<Address> knownConnected()
{
    std::vector<Address> connected;
    for (const char *path : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        std::ifstream lines(path);
        std::ranges::copy(connectedIn(lines), std::back_inserter(connected));
    }
    return connected;
}

std::vector<Address> cutOff(const Configuration &before, const Configuration &after,
                            const std::vector<Address> &connected)
{
    const std::vector<WayIn> kept = waysIn(after);
    std::vector<Address> gone;
    for (const WayIn &way : waysIn(before)) {
        const bool isUsed = std::ranges::find(connected, way.address) != connected.end();
        if (isUsed && std::ranges::find(kept, way) == kept.end()) {
            gone.push_back(way.address);
        }
    }
    return gone;
}

bool touches(const Configuration &before, const Configuration &after, unsigned port)
{
    const auto found = differences(before, after);
    return std::ranges::any_of(found, [&](const Difference &difference) {
        const Section section = difference.setting->section;
        const bool isOfPort = difference.port == port;
        const bool isOfMember = port == NW_PORT_BOND0 && section == Section::an;
        return section == Section::mode || section == Section::switchover ||
               (section == Section::lan && isOfPort) ||
               (section == Section::an && (isOfPort || isOfMember));
    });
}

} // namespace bmc::settings
