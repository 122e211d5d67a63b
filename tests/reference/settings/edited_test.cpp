// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a change is refused for, however it was put together, and what follows from it. */
#include <cstring>
#include <functional>

#include <gtest/gtest.h>

#include "fake_matchers.hpp"
#include "network_mng/lan.h"
#include "network_mng/settings.h"
#include "samples.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

/* An edit as a request would make it. */
template <typename Request>
Edit editWith(Section section, unsigned port, ChangeBits bits,
              const std::function<void(Request &)> &fill)
{
    Request request{};
    fill(request);
    Edit edit{.section = section, .port = port, .bits = bits};
    edit.request.resize(sizeof(request));
    std::memcpy(edit.request.data(), &request, sizeof(request));
    return edit;
}

Edit lan(unsigned port, ChangeBits bits, const std::function<void(NW_LAN_SET_PORT_S &)> &fill)
{
    return editWith<NW_LAN_SET_PORT_S>(Section::lan, port, bits, fill);
}

Edit dns(unsigned port, std::uint32_t bits, const std::function<void(NW_DNS_PORT_S &)> &fill)
{
    return editWith<NW_DNS_PORT_S>(Section::dns, port, {bits, 0}, fill);
}

Edit an(unsigned port, std::uint32_t bits, const std::function<void(NW_AN_SET_PORT_S &)> &fill)
{
    return editWith<NW_AN_SET_PORT_S>(Section::an, port, {bits, 0}, fill);
}

Edit host(std::uint32_t bits, const std::function<void(NW_HOSTNAME_SET_REQ_S &)> &fill)
{
    return editWith<NW_HOSTNAME_SET_REQ_S>(Section::hostName, 0, {bits, 0}, fill);
}

Edit lldp(std::uint32_t bits, const std::function<void(NW_LLDP_SET_S &)> &fill)
{
    return editWith<NW_LLDP_SET_S>(Section::lldp, 0, {bits, 0}, fill);
}

Edit mode(std::uint32_t bits, std::uint8_t value)
{
    return editWith<NW_NET_MODE_SET_S>(Section::mode, 0, {bits, 0},
                                       [=](auto &request) { request.ucNetMode = value; });
}

Edit switchover(std::uint32_t bits, std::uint8_t value)
{
    return editWith<NW_LAN_REVERSE_SET_S>(Section::switchover, 0, {bits, 0},
                                          [=](auto &request) { request.ucEnable = value; });
}

void put(std::uint8_t *field, std::initializer_list<unsigned> bytes)
{
    for (const unsigned byte : bytes) {
        *field++ = static_cast<std::uint8_t>(byte);
    }
}

struct Row {
    const char *name;
    Edit edit;
    Result result;
    const char *key; /* blamed; null: none */
};

/* clang-format off */
const Row rows[] = {
    {"BondIsNotServed",   lan(2, {NW_LAN_BIT_LAN_ENABLE, 0}, [](auto &) {}), Result::portNotServed, nullptr},
    {"UnknownBit0",       lan(0, {0x4000, 0}, [](auto &) {}), Result::unknownField, nullptr},
    {"UnknownBit1",       lan(0, {0, 0x40}, [](auto &) {}), Result::unknownField, nullptr},
    {"UnknownBitFirst",   lan(0, {0x4001, 0}, [](auto &port) { port.ucLanEnable = 2; }), Result::unknownField, nullptr},
    {"LanEnable",         lan(0, {NW_LAN_BIT_LAN_ENABLE, 0}, [](auto &port) { port.ucLanEnable = 2; }), Result::badFlag, "lan"},
    {"Ipv4Enable",        lan(0, {NW_LAN_BIT_IPV4_ENABLE, 0}, [](auto &port) { port.ucIpv4Enable = 2; }), Result::badFlag, "ipv4-enabled"},
    {"Ipv6Enable",        lan(0, {NW_LAN_BIT_IPV6_ENABLE, 0}, [](auto &port) { port.ucIpv6Enable = 2; }), Result::badFlag, "ipv6-enabled"},
    {"Ipv4Origin",        lan(0, {NW_LAN_BIT_IPV4_TYPE, 0}, [](auto &port) { port.ucIpv4Type = 3; }), Result::badOrigin, "ipv4-origin"},
    {"Ipv6Origin",        lan(0, {NW_LAN_BIT_IPV6_TYPE, 0}, [](auto &port) { port.ucIpv6Type = 4; }), Result::badOrigin, "ipv6-origin"},
    {"Ipv4Address",       lan(0, {NW_LAN_BIT_IPV4_ADDR, 0}, [](auto &port) { put(port.aucIpv4Addr, {127, 0, 0, 1}); }), Result::badIpv4Address, "ipv4"},
    {"Ipv4Mask",          lan(0, {NW_LAN_BIT_IPV4_MASK, 0}, [](auto &port) { put(port.aucIpv4Mask, {255, 0, 255, 0}); }), Result::badIpv4Mask, "ipv4"},
    {"Ipv4MaskMissing",   lan(0, {NW_LAN_BIT_IPV4_ADDR, 0}, [](auto &port) { put(port.aucIpv4Addr, {10, 0, 0, 1}); }), Result::badIpv4Mask, "ipv4"},
    {"Ipv4Gateway",       lan(0, {NW_LAN_BIT_IPV4_GATEWAY, 0}, [](auto &port) { put(port.aucIpv4Gateway, {224, 0, 0, 1}); }), Result::badIpv4Gateway, "ipv4-gateway"},
    {"GatewayOutside",    lan(1, {NW_LAN_BIT_IPV4_GATEWAY, 0}, [](auto &port) { put(port.aucIpv4Gateway, {192, 168, 21, 1}); }), Result::gatewayOutside, "ipv4-gateway"},
    {"GatewayIsThePort",  lan(1, {NW_LAN_BIT_IPV4_GATEWAY, 0}, [](auto &port) { put(port.aucIpv4Gateway, {192, 168, 20, 2}); }), Result::gatewayOutside, "ipv4-gateway"},
    {"Ipv6Address",       lan(0, {NW_LAN_BIT_IPV6_ADDR, 0}, [](auto &port) { put(port.aucIpv6Addr, {0xFE, 0x80, 1}); }), Result::badIpv6Address, "ipv6"},
    {"Ipv6GatewayFirst",  lan(0, {NW_LAN_BIT_IPV6_GATEWAY | NW_LAN_BIT_IPV6_PREFIX, 0}, [](auto &port) { put(port.aucIpv6Gateway, {0xFF, 2}); port.ucIpv6Prefix = 129; }), Result::badIpv6Gateway, "ipv6-gateway"},
    {"Ipv6Prefix",        lan(0, {NW_LAN_BIT_IPV6_PREFIX, 0}, [](auto &port) { port.ucIpv6Prefix = 129; }), Result::badIpv6Prefix, "ipv6"},
    {"Ipv6PrefixMissing", lan(0, {NW_LAN_BIT_IPV6_ADDR, 0}, [](auto &port) { put(port.aucIpv6Addr, {0x20, 1}); }), Result::badIpv6Prefix, "ipv6"},
    {"ArpControl",        lan(0, {NW_LAN_BIT_ARP_CONTROL, 0}, [](auto &port) { port.ucArpControl = 4; }), Result::badArpFlags, "arp-control"},
    {"ArpSuspend",        lan(0, {NW_LAN_BIT_ARP_SUSPEND, 0}, [](auto &port) { port.ucArpSuspend = 4; }), Result::badArpFlags, "arp-suspend"},
    {"VlanEnable",        lan(0, {NW_LAN_BIT_VLAN_ENABLE, 0}, [](auto &port) { port.ucVlanEnable = 2; }), Result::badFlag, "vlan"},
    {"VlanId",            lan(0, {NW_LAN_BIT_VLAN_ID, 0}, [](auto &port) { port.usVlanid = 4095; }), Result::badVlanId, "vlan"},
    {"VlanPriority",      lan(0, {NW_LAN_BIT_VLAN_PRIORITY, 0}, [](auto &port) { port.ucVlanPriority = 8; }), Result::badVlanPriority, "vlan-priority"},
    {"Ipv4Route",         lan(0, {0, NW_LAN_BIT_IPV4_ROUTE2_ADDR}, [](auto &port) { put(port.astIpv4Route[1].aucAddr, {127, 0, 0, 0}); }), Result::badIpv4Route, "ipv4-route2"},
    {"Ipv4RouteExtent",   lan(0, {0, NW_LAN_BIT_IPV4_ROUTE1_ADDR}, [](auto &port) { put(port.astIpv4Route[0].aucAddr, {11, 0, 0, 0}); }), Result::badIpv4Route, "ipv4-route1"},
    {"Ipv6Route",         lan(0, {NW_LAN_BIT_IPV6_ROUTE1_PREFIX, 0}, [](auto &port) { port.astIpv6Route[0].ucPrefix = 129; }), Result::badIpv6Route, "ipv6-route1"},
    {"Ipv6RouteExtent",   lan(0, {NW_LAN_BIT_IPV6_ROUTE2_ADDR, 0}, [](auto &port) { put(port.astIpv6Route[1].aucAddr, {0x20, 2}); }), Result::badIpv6Route, "ipv6-route2"},

    {"DnsBondNotServed",  dns(2, 1, [](auto &) {}), Result::portNotServed, nullptr},
    {"DnsUnknown",        dns(0, 0x20, [](auto &) {}), Result::unknownField, nullptr},
    {"DnsMode",           dns(0, 1, [](auto &port) { port.ucIpv4DnsMode = 3; }), Result::badDnsMode, "ipv4-mode"},
    {"DnsDomain",         dns(0, 2, [](auto &port) { put(reinterpret_cast<std::uint8_t *>(port.szIpv4DnsDomain), {'a'}); }), Result::badDnsDomain, "ipv4-domain"},
    {"DnsDomainEndless",  dns(0, 0x200, [](auto &port) { std::memset(port.szIpv6DnsDomain, 'a', sizeof(port.szIpv6DnsDomain)); }), Result::badDnsDomain, "ipv6-domain"},
    {"DnsServer4",        dns(0, 0x10, [](auto &port) { put(port.aucIpv4DnsServer[2], {255, 255, 255, 255}); }), Result::badDnsServer, "ipv4-server3"},
    {"DnsServer6",        dns(0, 0x400, [](auto &port) { put(port.aucIpv6DnsServer[0], {0xFF, 2}); }), Result::badDnsServer, "ipv6-server1"},

    {"HostUnknown",       host(8, [](auto &) {}), Result::unknownField, nullptr},
    {"HostMode",          host(1, [](auto &request) { request.ucByte4 = 2; }), Result::badHostNameMode, "mode"},
    {"HostNameAndAuto",   host(3, [](auto &request) { request.ucByte4 = 1; request.ucLength = 1; request.acHostName[0] = 'a'; }), Result::badHostNameMode, "name"},
    {"HostNameEmpty",     host(2, [](auto &) {}), Result::badHostName, "name"},
    {"HostNameTooLong",   host(2, [](auto &request) { request.ucLength = 64; std::memset(request.acHostName, 'a', 64); }), Result::badHostName, "name"},
    {"HostNameFarTooLong", host(2, [](auto &request) { request.ucLength = 255; std::memset(request.acHostName, 'a', 64); }), Result::badHostName, "name"},
    {"HostNameZero",      host(2, [](auto &request) { request.ucLength = 3; put(reinterpret_cast<std::uint8_t *>(request.acHostName), {'a', 0, 'b'}); }), Result::badHostName, "name"},
    {"BmcNameEndless",    host(4, [](auto &request) { std::memset(request.acTail, 'a', 64); }), Result::badHostName, "bmc-name"},

    {"LldpUnknown",       lldp(4, [](auto &) {}), Result::unknownField, nullptr},
    {"LldpState",         lldp(1, [](auto &request) { request.ucLldpEnable = 2; }), Result::badLldpMode, "state"},
    {"LldpNoMode",        lldp(2, [](auto &) {}), Result::badLldpMode, "work-mode"},
    {"LldpWorkMode",      lldp(2, [](auto &request) { request.ucLldpWorkMode = 4; }), Result::badLldpMode, "work-mode"},

    {"ModeUnknown",       mode(2, 0), Result::unknownField, nullptr},
    {"Mode",              mode(1, 2), Result::badNetMode, "mode"},
    {"SwitchoverUnknown", switchover(2, 0), Result::unknownField, nullptr},
    {"Switchover",        switchover(1, 2), Result::badNetMode, "switchover"},

    {"AnBond",            an(2, 1, [](auto &) {}), Result::portNotServed, nullptr},
    {"AnUnknown",         an(0, 8, [](auto &) {}), Result::unknownField, nullptr},
    {"AnAuto",            an(0, 1, [](auto &port) { port.ucAutoNeg = 2; }), Result::badLinkMode, "auto"},
    {"AnDuplex",          an(0, 4, [](auto &port) { port.ucDuplex = 2; }), Result::badLinkMode, "duplex"},
    {"AnSpeed",           an(0, 2, [](auto &port) { port.uiSpeed = 3; }), Result::badLinkMode, "speed"},
    {"AnSpeedHigh",       an(0, 2, [](auto &port) { port.uiSpeed = 0x100; }), Result::badLinkMode, "speed"},
};
/* clang-format on */

Configuration presentConfiguration()
{
    Configuration present = sampleConfiguration();
    put(present.lan.astPort[1].aucIpv4Addr, {192, 168, 20, 2});
    put(present.lan.astPort[1].aucIpv4Mask, {255, 255, 255, 0});
    present.lan.astPort[0].ucIpv4Enable = present.lan.astPort[1].ucIpv4Enable = 1;
    present.lan.astPort[0].ucLanEnable = present.lan.astPort[1].ucLanEnable = 1;
    return present;
}

class RefusedEdit : public ::testing::TestWithParam<Row> {};

/* The refusal of a change; fails where there is none. */
Refusal refusalOf(const Configuration &present, const Change &change,
                  const std::optional<NW_WIFI_ADDR_S> &wireless = noWireless)
{
    try {
        edited(present, change, wireless);
    } catch (const Refusal &refusal) {
        return refusal;
    }
    ADD_FAILURE() << "not refused";
    return Refusal(NW_OK, "");
}

Edit address(unsigned port, std::initializer_list<unsigned> bytes)
{
    return lan(port, {NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK, 0},
               [bytes](NW_LAN_SET_PORT_S &request) {
                   put(request.aucIpv4Addr, bytes);
                   put(request.aucIpv4Mask, {255, 255, 255, 0});
               });
}

} // namespace

TEST_P(RefusedEdit, NamesCodeSectionPortAndSetting)
{
    const Row &row = GetParam();
    const Refusal refusal = refusalOf(presentConfiguration(), {row.edit});
    EXPECT_EQ(refusal.code(), static_cast<std::uint32_t>(row.result)) << refusal.what();
    EXPECT_EQ(refusal.section(), row.edit.section);
    EXPECT_EQ(refusal.module(), infoOf(row.edit.section).module);
    EXPECT_STREQ(refusal.setting() == nullptr ? nullptr : refusal.setting()->key, row.key);
    if (infoOf(row.edit.section).portCount != 0) {
        EXPECT_EQ(refusal.port(), row.edit.port);
    }
}
INSTANTIATE_TEST_SUITE_P(Rows, RefusedEdit, ::testing::ValuesIn(rows), fake::RowName());

/* clang-format off */
const Edit limits[] = {
    lan(0, {NW_LAN_BIT_IPV4_TYPE, 0},        [](auto &port) { port.ucIpv4Type = 0; }),
    lan(0, {NW_LAN_BIT_IPV6_TYPE, 0},        [](auto &port) { port.ucIpv6Type = 3; }),
    lan(0, {NW_LAN_BIT_IPV6_PREFIX, 0},      [](auto &port) { port.ucIpv6Prefix = 128; }),
    lan(0, {NW_LAN_BIT_IPV6_ROUTE1_PREFIX, 0}, [](auto &port) { port.astIpv6Route[0].ucPrefix = 128; }),
    lan(0, {NW_LAN_BIT_VLAN_ID, 0},          [](auto &port) { port.usVlanid = 4094; }),
    lan(0, {NW_LAN_BIT_VLAN_ID, 0},          [](auto &port) { port.usVlanid = 0; }),
    lan(0, {NW_LAN_BIT_VLAN_PRIORITY, 0},    [](auto &port) { port.ucVlanPriority = 7; }),
    lan(0, {NW_LAN_BIT_HOP_LIMIT, 0},        [](auto &port) { port.ucHopLimit = 255; }),
    lan(0, {NW_LAN_BIT_ARP_CONTROL, 0},      [](auto &port) { port.ucArpControl = 3; }),
    lan(0, {NW_LAN_BIT_ARP_INTERVAL, 0},     [](auto &port) { port.ucArpInterval = 255; }),
    dns(0, 1,                                [](auto &port) { port.ucIpv4DnsMode = 2; }),
    lldp(2,                                  [](auto &request) { request.ucLldpWorkMode = 1; }),
    lldp(2,                                  [](auto &request) { request.ucLldpWorkMode = 3; }),
    an(0, 2,                                 [](auto &port) { port.uiSpeed = 2; }),
};
/* clang-format on */

TEST(Edited, TheEndsOfARangeAreInIt)
{
    for (const Edit &edit : limits) {
        EXPECT_NO_THROW(edited(presentConfiguration(), {edit}, noWireless)) << edit.bits[0];
    }
}

TEST(Edited, NothingSelectedChangesNothing)
{
    const Configuration present = presentConfiguration();
    const Configuration after =
        edited(present, {lan(2, {}, [](auto &) {}), mode(0, 9)}, noWireless);
    EXPECT_EQ(std::memcmp(&after, &present, sizeof(present)), 0);
}

TEST(Edited, PortsMayNotShareASegment)
{
    const Refusal refusal = refusalOf(presentConfiguration(), {address(0, {192, 168, 20, 7})});
    EXPECT_EQ(refusal.code(), NW_ERR_IPV4_SAME_SEGMENT);
    EXPECT_EQ(refusal.section(), Section::lan);
    EXPECT_STREQ(refusal.setting()->key, "ipv4");
    EXPECT_EQ(refusal.port(), 0U);
}

TEST(Edited, TheWirelessInterfaceIsANeighbourToo)
{
    const NW_WIFI_ADDR_S wireless{1, {10, 9, 9, 1}};
    EXPECT_EQ(refusalOf(presentConfiguration(), {address(0, {10, 9, 9, 7})}, wireless).code(),
              NW_ERR_IPV4_SAME_SEGMENT);
    EXPECT_NO_THROW(edited(presentConfiguration(), {address(0, {10, 9, 9, 7})}, noWireless));
}

/* Nobody can tell whether they overlap; what has nothing to do with that is made all the same. */
TEST(Edited, AWirelessInterfaceThatIsNotKnownStopsWhatItMattersTo)
{
    const Refusal refusal =
        refusalOf(presentConfiguration(), {address(0, {10, 9, 9, 7})}, std::nullopt);
    EXPECT_EQ(refusal.code(), static_cast<NW_RESULT>(Result::wirelessUnknown));
    EXPECT_EQ(refusal.setting(), findSetting(Section::lan, "ipv4"));
    EXPECT_EQ(refusalOf(presentConfiguration(), {mode(1, 0)}, std::nullopt).code(),
              static_cast<NW_RESULT>(Result::wirelessUnknown));
    Change other;
    assign(other, *findSetting(Section::lan, "hop-limit"), 1, "9");
    EXPECT_NO_THROW(edited(presentConfiguration(), other, std::nullopt));
}

TEST(Edited, ThePortsThatANewModeServesMayNotShareASegment)
{
    Configuration bonded = presentConfiguration();
    bonded.state.ucIfcState = NW_IFC_STATE_ADAPTIVE;
    put(bonded.lan.astPort[0].aucIpv4Addr, {192, 168, 20, 7});
    put(bonded.lan.astPort[0].aucIpv4Mask, {255, 255, 255, 0});
    const Refusal refusal = refusalOf(bonded, {mode(1, 0)});
    EXPECT_EQ(refusal.code(), NW_ERR_IPV4_SAME_SEGMENT);
    EXPECT_EQ(refusal.section(), Section::mode);
    EXPECT_NO_THROW(edited(bonded, {address(0, {10, 1, 1, 1}), mode(1, 0)}, noWireless));
}

TEST(Edited, AModeThatServesNoPortIsRefused)
{
    Configuration present = presentConfiguration();
    present.state.aucPortPresent[2] = 0;
    EXPECT_EQ(refusalOf(present, {mode(1, 1)}).code(),
              static_cast<std::uint32_t>(Result::portNotServed));
}

TEST(Edited, TheModeCountsForWhatIsSetAlongWithIt)
{
    const Change change{
        lan(2, {NW_LAN_BIT_LAN_ENABLE, 0}, [](auto &port) { port.ucLanEnable = 1; }), mode(1, 1)};
    EXPECT_EQ(edited(presentConfiguration(), change, noWireless).lan.astPort[2].ucLanEnable, 1);
}

TEST(Edited, SettingsOfAPortThatIsNotServedAreStoredWhereTheyMayBe)
{
    Edit edit = address(2, {192, 168, 20, 9}); /* as eth1, but without effect */
    edit.mayBeIdle = true;
    const Configuration after = edited(presentConfiguration(), {edit}, noWireless);
    EXPECT_EQ(after.lan.astPort[2].aucIpv4Addr[3], 9);
    EXPECT_EQ(idlePorts({edit}, after), std::vector<unsigned>{2});
    EXPECT_EQ(idlePorts({address(1, {10, 0, 0, 1})}, after), std::vector<unsigned>{});
}

TEST(Edited, ASwitchoverExchangesTheInterfacesOnce)
{
    Configuration present = presentConfiguration();
    present.state.aucPortPresent[1] = 0;
    const Configuration once = edited(present, {switchover(1, 1)}, noWireless);
    EXPECT_EQ(nameOf(once.state, 0), "eth1");
    EXPECT_EQ(nameOf(once.state, 1), "eth0");
    EXPECT_EQ(once.state.aucPortPresent[0], 0);
    EXPECT_EQ(once.state.aucChannel[0], 1);
    const Configuration twice = edited(once, {switchover(1, 1)}, noWireless);
    EXPECT_EQ(std::memcmp(&once, &twice, sizeof(once)), 0);
    const Configuration back = edited(once, {switchover(1, 0)}, noWireless);
    EXPECT_EQ(std::memcmp(&back, &present, sizeof(back)), 0);
}

TEST(Edited, AnAutomaticHostNameHasTheMacAddressOfTheFirstPortOnTheBoard)
{
    Configuration present = presentConfiguration();
    present.state.aucPortPresent[0] = 0;
    put(present.lan.astPort[1].aucMacAddr, {0x52, 0x54, 0, 0xAB, 0xCD, 0xEF});
    const Configuration after =
        edited(present, {host(1, [](auto &request) { request.ucByte4 = 1; })}, noWireless);
    EXPECT_STREQ(after.hostName.szBmcHostName, "bmc-525400abcdef");
}

TEST(Edited, SettingWhatArpSuspendsEndsAResumption)
{
    Configuration present = presentConfiguration();
    NW_LAN_CFG_PORT_S &port = present.lan.astPort[0];
    putArp(port, {.control = 3, .interval = 0, .suspend = 3, .isResumed = 1});

    const auto changed = [&](std::uint32_t bit) {
        return arpOf(edited(present, {lan(0, {bit, 0}, [](auto &) {})}, noWireless).lan.astPort[0]);
    };
    EXPECT_EQ(changed(NW_LAN_BIT_ARP_SUSPEND).isResumed, 0);
    EXPECT_EQ(changed(NW_LAN_BIT_ARP_INTERVAL).isResumed, 1);
}

struct Vlan {
    std::uint32_t bits;
    std::uint8_t enabled;
    unsigned id;
    std::uint8_t enabledAfter;
    unsigned idAfter; /* of a port that had 30 */
};

TEST(Edited, AVlanThatIsSwitchedOffHasNoIdUnlessOneIsAskedFor)
{
    constexpr std::uint32_t enable = NW_LAN_BIT_VLAN_ENABLE;
    constexpr std::uint32_t id = NW_LAN_BIT_VLAN_ID;
    Configuration present = presentConfiguration();
    present.lan.astPort[0].stVlan.aucReserved0[0] = 1;
    present.lan.astPort[0].stVlan.usVlanid = 30;
    for (const Vlan &row : {Vlan{enable, 0, 0, 0, 0}, Vlan{enable, 1, 0, 1, 30},
                            Vlan{enable | id, 0, 31, 0, 31}, Vlan{id, 0, 31, 1, 31}}) {
        const Configuration after = edited(present,
                                           {lan(0, {row.bits, 0},
                                                [&](auto &port) {
                                                    port.ucVlanEnable = row.enabled;
                                                    port.usVlanid =
                                                        static_cast<std::uint16_t>(row.id);
                                                })},
                                           noWireless);
        EXPECT_EQ(vlanOf(after.lan.astPort[0]).isEnabled, row.enabledAfter);
        EXPECT_EQ(unsigned{vlanOf(after.lan.astPort[0]).id}, row.idAfter);
    }
}

TEST(Edited, ARouteIsValidWhileItHasADestination)
{
    const Configuration present = presentConfiguration();
    const Change with = changeOf(Section::lan, "ipv6-route2", 0, "2001:db8:5::/48,fe80::1");
    const Configuration after = edited(present, with, noWireless);
    EXPECT_EQ(after.lan.astPort[0].astIpv6Route[1].ucState, 1);
    const Change without = changeOf(Section::lan, "ipv6-route2", 0, "off");
    const Configuration back = edited(after, without, noWireless);
    EXPECT_EQ(std::memcmp(&back, &present, sizeof(back)), 0);
}

} // namespace bmc::settings
