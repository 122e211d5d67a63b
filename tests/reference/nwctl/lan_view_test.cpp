// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include <arpa/inet.h>
#include <nlohmann/json.hpp>

#include "nwctl/lan_view.hpp"

namespace nwctl {
namespace {

template <std::size_t Size>
void put(char (&field)[Size], const char *text)
{
    std::strncpy(field, text, Size);
}

/* A port with everything that can be shown. */
NW_ETHER_INS_INFO_S fullPort()
{
    NW_ETHER_INS_INFO_S info{};
    info.ucChannel = 8;
    info.ucSameSegment = NW_SAME_SEGMENT_IPV4 | NW_SAME_SEGMENT_IPV6;
    info.ucLanEnable = 1;
    put(info.szEthName, "eth1");
    put(info.szMacAddr, "52:54:00:12:34:57");

    info.ucIpv4Enable = 1;
    info.ucIpv4Type = 2;
    put(info.szIpv4Addr, "192.168.20.2");
    put(info.szIpv4Mask, "255.255.255.0");
    put(info.szIpv4Gateway, "192.168.20.1");
    put(info.szIpv4Addr2, "192.168.21.2");
    info.ucIpv4Route1State = 1;
    put(info.szIpv4Route1Addr, "10.0.0.0");
    put(info.szIpv4Route1Mask, "255.0.0.0");
    put(info.szIpv4Route1Gateway, "192.168.20.254");
    info.ucIpv4Route2State = 1;
    put(info.szIpv4Route2Addr, "172.16.0.0");
    put(info.szIpv4Route2Mask, "255.240.0.0");
    put(info.szIpv4Route2Gateway, "0.0.0.0");

    info.ucIpv6Enable = 1;
    info.ucIpv6Type = 1;
    put(info.aszIpv6Addr[NW_IPV6_SLOT_STATIC], "2001:db8:20::2");
    info.aucIpv6PrefixLen[0] = 64;
    info.astIpv6AddrState[NW_IPV6_STATE_STATIC].ucState = NW_IPV6_ADDR_VALID;
    put(info.aszIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL], "fe80::5054:ff:fe12:3457");
    info.astIpv6AddrState[NW_IPV6_STATE_LINK_LOCAL].ucState = NW_IPV6_ADDR_TENTATIVE;
    info.ucIpv6AddrCount = 1;
    put(info.aszIpv6Addr[NW_IPV6_SLOT_FURTHER], "2001:db8:30::2");
    info.aucIpv6PrefixLen[1] = 56;
    info.astIpv6AddrState[NW_IPV6_STATE_FURTHER].ucState = NW_IPV6_ADDR_DAD_FAILED;
    put(info.szIpv6Gateway, "fe80::1");
    put(info.szIpv6Gateway2, "fe80::2");
    info.ucIpv6Route1State = 1;
    put(info.szIpv6Route1Addr, "2001:db8:40::");
    info.ucIpv6Route1Prefix = 48;
    put(info.szIpv6Route1Gateway, "2001:db8:20::1");
    info.ucIpv6Route2State = 1;
    info.ucIpv6Route2Prefix = 32;

    info.aucCfgTail[3] = 0x2C;
    info.aucCfgTail[4] = 0x01;
    return info;
}

/* What the query fills for a port whose families are off. */
NW_ETHER_INS_INFO_S barePort()
{
    NW_ETHER_INS_INFO_S info{};
    put(info.szEthName, "bond0");
    info.ucIpv4Type = 2;
    put(info.szIpv4Addr, "192.168.20.2");
    info.ucIpv4Route1State = 1;
    put(info.aszIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL], "fe80::1");
    info.astIpv6AddrState[NW_IPV6_STATE_LINK_LOCAL].ucState = NW_IPV6_ADDR_TENTATIVE;
    info.ucIpv6Route1State = 1;
    return info;
}

template <std::size_t Size>
void store(std::uint8_t (&field)[Size], const char *text)
{
    if (*text != '\0') {
        ASSERT_EQ(inet_pton(Size == NW_IPV4_SIZE ? AF_INET : AF_INET6, text, field), 1) << text;
    }
}

void storeIpv4(const NW_ETHER_INS_INFO_S &info, NW_LAN_CFG_PORT_S &entry)
{
    entry.ucIpv4Enable = info.ucIpv4Enable;
    entry.ucIpv4Type = info.ucIpv4Type;
    store(entry.aucIpv4Addr, info.szIpv4Addr);
    store(entry.aucIpv4Mask, info.szIpv4Mask);
    store(entry.aucIpv4Gateway, info.szIpv4Gateway);
    store(entry.astIpv4Route[0].aucAddr, info.szIpv4Route1Addr);
    store(entry.astIpv4Route[0].aucMask, info.szIpv4Route1Mask);
    store(entry.astIpv4Route[0].aucGateway, info.szIpv4Route1Gateway);
    store(entry.astIpv4Route[1].aucAddr, info.szIpv4Route2Addr);
    store(entry.astIpv4Route[1].aucMask, info.szIpv4Route2Mask);
    store(entry.astIpv4Route[1].aucGateway, info.szIpv4Route2Gateway);
}

void storeIpv6(const NW_ETHER_INS_INFO_S &info, NW_LAN_CFG_PORT_S &entry)
{
    entry.ucIpv6Enable = info.ucIpv6Enable;
    entry.ucIpv6Type = info.ucIpv6Type;
    store(entry.aucIpv6Gateway, info.szIpv6Gateway);
    entry.astIpv6Route[0].ucPrefix = info.ucIpv6Route1Prefix;
    store(entry.astIpv6Route[0].aucAddr, info.szIpv6Route1Addr);
    store(entry.astIpv6Route[0].aucGateway, info.szIpv6Route1Gateway);
    entry.astIpv6Route[1].ucPrefix = info.ucIpv6Route2Prefix;
    store(entry.astIpv6Route[1].aucAddr, info.szIpv6Route2Addr);
    store(entry.astIpv6Route[1].aucGateway, info.szIpv6Route2Gateway);
}

/* The settings that the library tells so. */
NW_LAN_CFG_PORT_S storedAs(const NW_ETHER_INS_INFO_S &info)
{
    NW_LAN_CFG_PORT_S entry{};
    entry.ucLanEnable = info.ucLanEnable;
    storeIpv4(info, entry);
    storeIpv6(info, entry);
    return entry;
}

std::string tableOf(unsigned index, const NW_ETHER_INS_INFO_S &info)
{
    return textOf(portRows({index, info, storedAs(info)}));
}

std::string jsonOf(unsigned index, const NW_ETHER_INS_INFO_S &info)
{
    return documentOf(portRows({index, info, storedAs(info)}));
}

TEST(PortTable, ShowsEverythingOfAFullPort)
{
    EXPECT_EQ(tableOf(1, fullPort()),
              R"(Port eth1, shared port (index 1, channel 8)
  LAN           enabled
  MAC           52:54:00:12:34:57
  IPv4          enabled, dhcp
    address     192.168.20.2
    mask        255.255.255.0
    gateway     192.168.20.1
    address 2   192.168.21.2
    route 1     10.0.0.0 mask 255.0.0.0 via 192.168.20.254
    route 2     172.16.0.0 mask 255.240.0.0 via 0.0.0.0
    header      0,0,0
  IPv6          enabled, static
    address     2001:db8:20::2/64            static      valid
    address     2001:db8:30::2/56            further     duplicate
    address     fe80::5054:ff:fe12:3457      link-local  tentative
    gateway     fe80::1
    gateway 2   fe80::2
    route 1     2001:db8:40::/48 via 2001:db8:20::1
    route 2     -/32 via -
    hop limit   0
    traffic class 0
  VLAN          300
  Conflict      IPv4: two ports, or a port and the wireless interface, share a segment
  Conflict      IPv6: two ports share a segment
)");
}

TEST(PortTable, ShowsLittleOfABarePort)
{
    EXPECT_EQ(tableOf(2, barePort()),
              R"(Port bond0, bond (index 2, channel 0)
  LAN           disabled
  MAC           -
  IPv4          disabled
  IPv6          disabled
    address     fe80::1                      link-local  not checked
  VLAN          none
  Conflicts     none
)");
}

TEST(PortTable, EscapesWhatTheRecordHolds)
{
    NW_ETHER_INS_INFO_S info{};
    std::memset(info.szEthName, '\x1b', sizeof(info.szEthName));
    put(info.szMacAddr, "52\n  MAC");

    const std::string table = tableOf(0, info);

    std::string name;
    for (std::size_t i = 0; i < NW_IFC_NAME_SIZE; ++i) {
        name += R"(\x1b)";
    }
    EXPECT_THAT(table, ::testing::StartsWith("Port " + name + ", dedicated port (index 0"));
    EXPECT_THAT(table, ::testing::HasSubstr(R"(52\x0a  MAC)"));
}

TEST(PortJson, HoldsEverythingOfAFullPort)
{
    EXPECT_EQ(jsonOf(1, fullPort()), R"({
  "port": "eth1",
  "role": "shared",
  "index": 1,
  "channel": 8,
  "lan": true,
  "mac": "52:54:00:12:34:57",
  "ipv4": {
    "enabled": true,
    "origin": "dhcp",
    "address": "192.168.20.2",
    "mask": "255.255.255.0",
    "gateway": "192.168.20.1",
    "address2": "192.168.21.2",
    "routes": [
      {
        "number": 1,
        "destination": "10.0.0.0",
        "mask": "255.0.0.0",
        "gateway": "192.168.20.254"
      },
      {
        "number": 2,
        "destination": "172.16.0.0",
        "mask": "255.240.0.0",
        "gateway": "0.0.0.0"
      }
    ],
    "header": "0,0,0"
  },
  "ipv6": {
    "enabled": true,
    "origin": "static",
    "addresses": [
      {
        "address": "2001:db8:20::2",
        "prefix": 64,
        "kind": "static",
        "state": "valid"
      },
      {
        "address": "2001:db8:30::2",
        "prefix": 56,
        "kind": "further",
        "state": "duplicate"
      },
      {
        "address": "fe80::5054:ff:fe12:3457",
        "prefix": null,
        "kind": "link-local",
        "state": "tentative"
      }
    ],
    "gateway": "fe80::1",
    "gateway2": "fe80::2",
    "routes": [
      {
        "number": 1,
        "destination": "2001:db8:40::",
        "prefix": 48,
        "gateway": "2001:db8:20::1"
      },
      {
        "number": 2,
        "destination": null,
        "prefix": 32,
        "gateway": null
      }
    ],
    "hopLimit": 0,
    "trafficClass": 0
  },
  "vlan": 300,
  "conflicts": [
    "ipv4",
    "ipv6"
  ]
}
)");
}

TEST(PortJson, KeepsItsKeysWithoutValues)
{
    EXPECT_EQ(
        nlohmann::ordered_json::parse(jsonOf(2, barePort())).dump(),
        R"({"port":"bond0","role":"bond","index":2,"channel":0,"lan":false,"mac":null,)"
        R"("ipv4":{"enabled":false,"origin":null,"address":null,"mask":null,"gateway":null,)"
        R"("address2":null,"routes":[],"header":null},)"
        R"("ipv6":{"enabled":false,"origin":null,"addresses":[{"address":"fe80::1",)"
        R"("prefix":null,"kind":"link-local","state":"not checked"}],"gateway":null,)"
        R"("gateway2":null,"routes":[],"hopLimit":null,"trafficClass":null},"vlan":null,"conflicts":[]})");
}

TEST(PortTable, ShowsTheHeadersOfWhatThePortSends)
{
    NW_LAN_CFG_PORT_S entry = storedAs(fullPort());
    for (std::size_t at = 0; at < sizeof(entry.aucReserved775); ++at) {
        entry.aucReserved775[at] = static_cast<std::uint8_t>(64 + at);
    }

    const std::string text = textOf(portRows({1, fullPort(), entry}));

    EXPECT_THAT(text, ::testing::HasSubstr("    header      64,65,66\n"));
    EXPECT_THAT(text, ::testing::HasSubstr("    hop limit   67\n    traffic class 68\n"));
}

TEST(PortTable, NamesTheOrigins)
{
    NW_LAN_CFG_PORT_S entry{};
    entry.ucIpv4Enable = 1;
    entry.ucIpv6Enable = 1;
    entry.ucIpv6Type = 9;

    const std::string text = textOf(portRows({1, {}, entry}));

    EXPECT_THAT(text, ::testing::HasSubstr("  IPv4          enabled, static\n"));
    EXPECT_THAT(text, ::testing::HasSubstr("  IPv6          enabled, unknown (9)\n"));
}

TEST(ViewPort, ReadsNoFurtherThanTheRecordHolds)
{
    NW_ETHER_INS_INFO_S info{};
    info.ucIpv6Enable = 1;
    info.ucIpv6AddrCount = 255;
    for (auto &slot : info.aszIpv6Addr) {
        std::memset(slot, 'f', sizeof(slot));
    }

    const auto addresses = nlohmann::json::parse(jsonOf(0, info))["ipv6"]["addresses"];

    EXPECT_EQ(addresses.size(), NW_IPV6_SLOT_COUNT);
    for (const auto &address : addresses) {
        EXPECT_EQ(address["address"], std::string(NW_ADDR_TEXT_SIZE, 'f'));
        EXPECT_EQ(address["state"], "unknown");
    }
}

TEST(ViewPort, TakesEverySlotsOwnState)
{
    NW_ETHER_INS_INFO_S info{};
    info.ucIpv6Enable = 1;
    info.ucIpv6AddrCount = 16;
    put(info.aszIpv6Addr[17], "2001:db8::f");
    info.aucIpv6PrefixLen[16] = 77;
    info.astIpv6AddrState[17].ucState = NW_IPV6_ADDR_DAD_FAILED;

    const auto addresses = nlohmann::json::parse(jsonOf(0, info))["ipv6"]["addresses"];

    ASSERT_EQ(addresses.size(), 1U);
    EXPECT_EQ(addresses[0]["prefix"], 77U);
    EXPECT_EQ(addresses[0]["state"], "duplicate");
}

} // namespace
} // namespace nwctl
