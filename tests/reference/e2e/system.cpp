// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "system.hpp"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>

#include <arpa/inet.h>
#include <nlohmann/json.hpp>

namespace e2e {

namespace {

NW_LAN_CFG_DB_INFO_S readLanRecord()
{
    NW_LAN_CFG_DB_INFO_S record{};
    if (const NW_RESULT result = LIB_NW_GetAllLanConfig(&record); result != NW_OK) {
        throw std::runtime_error("the LAN record cannot be read: " + std::to_string(result));
    }
    return record;
}

std::string addressText(int family, const std::uint8_t *address, int length)
{
    char text[INET6_ADDRSTRLEN] = {};
    ::inet_ntop(family, address, text, sizeof(text));
    return std::string(text) + "/" + std::to_string(length);
}

int maskLength(const std::uint8_t (&mask)[NW_IPV4_SIZE])
{
    int length = 0;
    for (const std::uint8_t byte : mask) {
        length += std::popcount(byte);
    }
    return length;
}

template <std::size_t size>
bool isSet(const std::uint8_t (&address)[size])
{
    return std::any_of(address, address + size, [](std::uint8_t byte) { return byte != 0; });
}

} // namespace

std::vector<std::string> kernelAddresses(const std::string &interface)
{
    const auto links = nlohmann::json::parse(shell("ip -json address show dev " + interface));
    std::vector<std::string> addresses;
    for (const auto &address : links.at(0).at("addr_info")) {
        if (address.at("scope") != "link") {
            addresses.push_back(address.at("local").get<std::string>() + "/" +
                                std::to_string(address.at("prefixlen").get<int>()));
        }
    }
    std::sort(addresses.begin(), addresses.end());
    return addresses;
}

Bytes storedLanRecord()
{
    const NW_LAN_CFG_DB_INFO_S record = readLanRecord();
    Bytes bytes(sizeof(record));
    std::memcpy(bytes.data(), &record, sizeof(record));
    return bytes;
}

std::vector<std::string> storedAddresses(std::uint32_t port)
{
    const NW_LAN_CFG_DB_INFO_S record = readLanRecord();
    const NW_LAN_CFG_PORT_S &entry = record.astPort[port];
    std::vector<std::string> addresses;

    if (entry.ucIpv4Enable == 1 && isSet(entry.aucIpv4Addr)) {
        addresses.push_back(addressText(AF_INET, entry.aucIpv4Addr, maskLength(entry.aucIpv4Mask)));
    }
    if (entry.ucIpv6Enable == 1 && isSet(entry.aucIpv6Addr)) {
        addresses.push_back(addressText(AF_INET6, entry.aucIpv6Addr, entry.ucIpv6Prefix));
    }
    std::sort(addresses.begin(), addresses.end());
    return addresses;
}

bool changeIsInProgress()
{
    std::uint8_t status = 0;
    if (NW_LMDB_Get_NetStatus(&status) != NW_OK) {
        throw std::runtime_error("the status record cannot be read");
    }
    return status == 1;
}

NW_ETHER_INS_INFO_S queryPort(const std::string &interface)
{
    NW_ETHER_INS_INFO_S info{};
    const NW_RESULT result = LIB_NW_GetLanConfig(interface.c_str(), &info);
    if (result != NW_OK) {
        throw std::runtime_error("the library tells nothing about " + interface + ": " +
                                 std::to_string(result));
    }
    return info;
}

void System::SetUp()
{
    shell(NW_BINARY_DIR "/nwmanagerd --init " NW_CONFIG_FILE " --force");
    for (const std::string interface : {"eth0", "eth1", "bond0"}) {
        shell("ip address flush dev " + interface + " scope global");
    }
    startManager();
}

void System::startManager()
{
    manager_.reset();
    manager_ = startDaemon();
}

void System::stopManager()
{
    EXPECT_EQ(manager_->stop(), 0);
}

} // namespace e2e
