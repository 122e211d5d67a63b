#include "samples.hpp"

#include <arpa/inet.h>

#include <cstring>
#include <sstream>

namespace samples {

namespace {

constexpr std::uint32_t noInterface = 0x7FFFFFF0;

} // namespace

void storeIpv4(std::uint8_t (&field)[NW_IPV4_SIZE], const char *text)
{
    ASSERT_EQ(inet_pton(AF_INET, text, field), 1) << text;
}

void storeIpv6(std::uint8_t (&field)[NW_IPV6_SIZE], const char *text)
{
    ASSERT_EQ(inet_pton(AF_INET6, text, field), 1) << text;
}

NW_IFC_STATE_DB_INFO_S interfaces()
{
    NW_IFC_STATE_DB_INFO_S record{};
    const char *names[] = {"eth0", "eth1", "bond0"};
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        record.aucPortPresent[port] = 1;
        record.auiIfIndex[port] = noInterface + port;
        record.aucChannel[port] = static_cast<std::uint8_t>(port + 1);
        std::strcpy(record.acIfcName[port], names[port]);
    }
    return record;
}

NW_LAN_CFG_DB_INFO_S lanRecord()
{
    NW_LAN_CFG_DB_INFO_S record{};
    const NW_IFC_STATE_DB_INFO_S ports = interfaces();
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        NW_LAN_CFG_PORT_S &entry = record.astPort[port];
        std::strcpy(entry.szIfcName, ports.acIfcName[port]);
        std::memcpy(entry.aucMacAddr, "\x52\x54\x00\x12\x34\x56", NW_MAC_SIZE);
        entry.aucMacAddr[5] = static_cast<std::uint8_t>(0x56 + port);
        storeIpv4(entry.aucIpv4Mask, "255.255.255.0");
    }
    for (NW_LAN_CFG_PORT_S *entry : {&record.astPort[0], &record.astPort[1]}) {
        entry->ucLanEnable = 1;
        entry->ucIpv4Enable = 1;
        entry->ucIpv4Type = 1;
    }
    storeIpv4(record.astPort[0].aucIpv4Addr, "192.168.10.2");
    storeIpv4(record.astPort[1].aucIpv4Addr, "192.168.20.2");
    storeIpv4(record.astPort[1].aucIpv4Gateway, "192.168.20.1");
    record.astPort[1].ucIpv6Enable = 1;
    record.astPort[1].ucIpv6Type = 1;
    record.astPort[1].ucIpv6Prefix = 64;
    storeIpv6(record.astPort[1].aucIpv6Addr, "2001:db8:20::2");
    return record;
}

nlohmann::json Ran::json() const
{
    const auto document = nlohmann::json::parse(out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << out;
    return document;
}

Ran run(const std::vector<std::string> &arguments)
{
    std::ostringstream out;
    std::ostringstream err;
    const auto status = nwctl::run(arguments, out, err);
    return {status, out.str(), err.str()};
}

ConfiguredTest::ConfiguredTest()
{
    platform.setRecord(NW_KEY_IFC_STATE, interfaces());
    platform.setRecord(NW_KEY_LAN_CFG, lanRecord());
}

} // namespace samples
