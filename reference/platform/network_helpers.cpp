// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* State of PHYs and of the wireless service, and whether a path exists. */
#include <array>
#include <cerrno>
#include <cstring>

#include <arpa/inet.h>
#include <sys/stat.h>

#include "bmc_platform.h"
#include "common/state_directory.hpp"
#include "platform/failure.hpp"
#include "platform/json_file.hpp"
#include "platform/wireless.hpp"

namespace {

using bmc::Failure;
using nlohmann::json;

constexpr std::size_t ipv4TextSize = 16;

[[noreturn]] void refuse(const char *file, const std::string &text)
{
    throw Failure(EBADMSG, std::string(file) + ": " + text);
}

const json *memberOf(const json &object, const char *name)
{
    const auto found = object.find(name);
    return found != object.end() ? &*found : nullptr;
}

std::uint8_t portByte(const json &port, const char *name)
{
    const json *value = port.is_object() ? memberOf(port, name) : nullptr;
    if (value == nullptr) {
        refuse("an-status.json", std::string("a port has no \"") + name + "\"");
    }
    return bmc::integerOf<std::uint8_t>(*value, std::string("an-status.json: ") + name);
}

/* The service's address; empty while it has none. */
std::string wirelessAddress(const json &service)
{
    const json *address = memberOf(service, "ipv4");
    if (address == nullptr) {
        return {};
    }

    in_addr binary{};
    if (!address->is_string() ||
        inet_pton(AF_INET, address->get_ref<const std::string &>().c_str(), &binary) != 1) {
        refuse("wireless.json", "\"ipv4\" is not a dotted quad");
    }
    std::array<char, ipv4TextSize> text{};
    return inet_ntop(AF_INET, &binary, text.data(), text.size());
}

bool wirelessEnabled(const json &service)
{
    const json *enabled = memberOf(service, "enabled");
    if (enabled == nullptr || !enabled->is_boolean()) {
        refuse("wireless.json", "\"enabled\" is not true or false");
    }
    return enabled->get<bool>();
}

} // namespace

int BMC_CheckDirVaildStatus(const char *pcPath)
{
    struct stat status;
    return pcPath != nullptr && stat(pcPath, &status) == 0 ? 1 : 0;
}

int NW_GetAnStatus(uint32_t uiPort, uint8_t *pucAutoNeg, uint8_t *pucDuplex, uint8_t *pucSpeed)
{
    return bmc::guarded([&] {
        bmc::require(pucAutoNeg != nullptr && pucDuplex != nullptr && pucSpeed != nullptr,
                     "an-status: null argument");

        const json ports = bmc::readJson(bmc::stateDirectory() / "an-status.json");
        if (!ports.is_array()) {
            refuse("an-status.json", "not an array of ports");
        }
        if (uiPort >= ports.size()) {
            throw Failure(ENODEV, "an-status.json: no port " + std::to_string(uiPort),
                          bmc::Level::information);
        }

        const json &port = ports[uiPort];
        const std::array values{portByte(port, "autoNeg"), portByte(port, "duplex"),
                                portByte(port, "speed")};
        *pucAutoNeg = values[0];
        *pucDuplex = values[1];
        *pucSpeed = values[2];
    });
}

int USBMANAGE_GetWirelessServiceInfo(void *pBuffer)
{
    return bmc::guarded([&] {
        bmc::require(pBuffer != nullptr, "wireless: null argument");

        const json service = bmc::readJson(bmc::stateDirectory() / "wireless.json");
        if (!service.is_object()) {
            refuse("wireless.json", "not an object");
        }
        std::array<std::uint8_t, BMC_WIRELESS_INFO_SIZE> record{};
        record[BMC_WIRELESS_ENABLE_OFFSET] = wirelessEnabled(service) ? 1 : 0;
        const std::string address = wirelessAddress(service);
        std::memcpy(&record[BMC_WIRELESS_IPV4_TEXT_OFFSET], address.c_str(), address.size() + 1);

        std::memcpy(pBuffer, record.data(), record.size());
    });
}

int BMC_GetWirelessState(void)
{
    std::array<std::uint8_t, BMC_WIRELESS_INFO_SIZE> record;
    const int code = USBMANAGE_GetWirelessServiceInfo(record.data());
    if (code == 0) {
        return BMC_WIRELESS_READ;
    }
    return code == ENOENT ? BMC_WIRELESS_ABSENT : BMC_WIRELESS_MALFORMED;
}
