// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/edits.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

#include "bmc_platform.h"
#include "network_mng/check.h"
#include "network_mng/operate_log.h"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

enum Bit : std::uint8_t { modeBit = 1, hostNameBit = 2, bmcNameBit = 4 };

enum Mode : std::uint8_t { manual = 0, automatic = 1 };

constexpr std::size_t longestName = 63;

/* Text of a field that need not have a terminator. */
std::string textOf(const char *field, std::size_t size)
{
    return {field, strnlen(field, size)};
}

void checkName(const std::string &name, const char *what)
{
    const bool isName = !name.empty() && name.size() <= longestName &&
                        name.find('\0') == std::string::npos &&
                        LIB_NW_CheckHostName(name.c_str()) != 0;
    require(isName, Result::badHostName, what);
}

template <std::size_t size>
void store(char (&field)[size], const std::string &text)
{
    std::ranges::fill(field, '\0');
    BMC_Strlcpy(field, text.c_str(), size);
}

/* "bmc-" and the MAC address of the first port that is on the board. */
std::string automaticName(const Configuration &configuration)
{
    const auto *present = std::ranges::find_if(configuration.state.aucPortPresent,
                                               [](std::uint8_t byte) { return byte != 0; });
    const auto port =
        static_cast<std::size_t>(present - std::begin(configuration.state.aucPortPresent));
    const std::uint8_t *mac = configuration.lan.astPort[port % NW_PORT_COUNT].aucMacAddr;
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "bmc-%02x%02x%02x%02x%02x%02x", mac[0], mac[1], mac[2],
                  mac[3], mac[4], mac[5]);
    return text.data();
}

} // namespace

void editHostName(Change &change, Payload payload)
{
    const auto request = contentOf<NW_HOSTNAME_SET_REQ_S>(payload);
    NW_HOSTNAME_DB_INFO_S &record = change.after.hostName;
    const std::uint8_t bits = request.ucSetMask;
    require((bits & ~(modeBit | hostNameBit | bmcNameBit)) == 0, Result::unknownField, "host name");
    if ((bits & modeBit) != 0) {
        require(request.ucByte4 <= automatic, Result::badHostNameMode, "host name");
        record.ucHostNameMode = request.ucByte4;
    }
    if ((bits & hostNameBit) != 0) {
        require(record.ucHostNameMode == manual, Result::badHostNameMode, "host name");
        require(request.ucLength <= longestName, Result::badHostName, "host name");
        const std::string name(request.acHostName, request.ucLength);
        checkName(name, "host name");
        store(record.szBmcHostName, name);
    }
    if ((bits & bmcNameBit) != 0) {
        const std::string name = textOf(request.acTail, sizeof(request.acTail));
        checkName(name, "BMC name");
        store(record.szBmcName, name);
    }
    if (record.ucHostNameMode != manual) {
        store(record.szBmcHostName, automaticName(change.after));
    }
    if (bits != 0) {
        change.scope.select(NW_LOG_HOSTNAME);
    }
}

} // namespace bmc::manager
