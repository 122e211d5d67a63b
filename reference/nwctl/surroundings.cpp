// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/surroundings.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <sstream>
#include <system_error>

#include <ifaddrs.h>
#include <netinet/in.h>
#include <unistd.h>

#include "common/files.hpp"
#include "settings/ways_in.hpp"

namespace nwctl {

namespace {

using bmc::Address;

/* Of a file in the process's folder of /proc; empty for one that may not be read. */
std::string contentOf(const std::string &process, const char *file)
{
    constexpr std::size_t most = 4 << 20;
    try {
        return bmc::readStart("/proc/" + process + "/" + file, most);
    } catch (const std::system_error &) {
        return "";
    }
}

/* What follows the key at the beginning of one of the parts that the text ends with the mark. */
std::string valueIn(const std::string &text, char mark, std::string_view key)
{
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, mark);) {
        if (part.starts_with(key)) {
            return part.substr(key.size());
        }
    }
    return "";
}

/* "192.0.2.9 50000 192.0.2.2 22": the other end and this one. */
std::optional<Address> serverAddressIn(const std::string &connection)
{
    constexpr std::string_view mapping = "::ffff:";
    std::istringstream words(connection);
    std::string ignored;
    std::string text;
    words >> ignored >> ignored >> text;
    text = text.substr(0, text.find('%'));
    if (text.starts_with(mapping) && text.find('.') != std::string::npos) {
        text = text.substr(mapping.size());
    }
    const int family = text.find(':') == std::string::npos ? AF_INET : AF_INET6;
    return bmc::parseAddress(family, text);
}

/* Of this process, or else of the next one above that has one. */
std::optional<Address> serverAddress()
{
    for (std::string process = "self"; !process.empty() && process != "0";
         process = valueIn(contentOf(process, "status"), '\n', "PPid:\t")) {
        const auto text = valueIn(contentOf(process, "environ"), '\0', "SSH_CONNECTION=");
        if (const auto address = serverAddressIn(text)) {
            return address;
        }
    }
    return std::nullopt;
}

bool hasAddress(const ifaddrs &entry, const Address &address)
{
    if (entry.ifa_addr == nullptr || entry.ifa_addr->sa_family != address.family) {
        return false;
    }
    const std::size_t offset = address.family == AF_INET ? offsetof(sockaddr_in, sin_addr)
                                                         : offsetof(sockaddr_in6, sin6_addr);
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(entry.ifa_addr) + offset;
    return std::equal(bytes, bytes + bmc::sizeOf(address.family), address.bytes.begin());
}

std::optional<std::string> interfaceWith(const Address &address)
{
    ifaddrs *list = nullptr;
    if (getifaddrs(&list) != 0) {
        return std::nullopt;
    }
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(list, freeifaddrs);
    for (const ifaddrs *entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (hasAddress(*entry, address)) {
            return entry->ifa_name;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<RemoteSession> remoteSession()
{
    const std::optional<Address> address = serverAddress();
    const auto interface = address ? interfaceWith(*address) : std::nullopt;
    return interface ? std::optional(RemoteSession{*address, *interface}) : std::nullopt;
}

std::vector<Address> connectedAddresses()
{
    return bmc::settings::knownConnected();
}

std::optional<bool> linkOf(const std::string &interface)
{
    return bmc::settings::knownLink(interface);
}

} // namespace nwctl
