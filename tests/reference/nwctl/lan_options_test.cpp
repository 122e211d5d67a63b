// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Options of "lan set": what each sends, and which values it refuses. */
#include <cstring>
#include <functional>

#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

struct GivenOption {
    const char *name;
    const char *value;
};

struct Built {
    const char *name;
    GivenOption given;
    std::uint32_t bits;
    std::function<void(NW_LAN_SET_PORT_S &)> fill;
    std::uint32_t word1 = 0;
};

class BuiltChange : public samples::ConfiguredTest, public ::testing::WithParamInterface<Built> {};

TEST_P(BuiltChange, SelectsAndFillsTheFieldsOfTheOption)
{
    const Built &row = GetParam();
    NW_LAN_SET_REQ_S expected{};
    expected.stBitmap.aauiWord[2][0] = row.bits;
    expected.stBitmap.aauiWord[2][1] = row.word1;
    row.fill(expected.stConfig.astPort[2]);

    samples::run({"lan", "set", "2", row.given.name, row.given.value, "--no-check"});

    ASSERT_THAT(sentRequests(), SizeIs(1));
    NW_LAN_SET_REQ_S sent{};
    std::memcpy(&sent, sentRequests()[0].payload.data(), sizeof(sent));
    EXPECT_EQ(fake::bytesOf(sent), fake::bytesOf(expected));
}

using Port = NW_LAN_SET_PORT_S;

void fillIpv4Route(Port &port, unsigned number)
{
    samples::storeIpv4(port.astIpv4Route[number].aucAddr, "10.1.0.0");
    samples::storeIpv4(port.astIpv4Route[number].aucMask, "255.255.240.0");
    samples::storeIpv4(port.astIpv4Route[number].aucGateway, "192.168.20.9");
}

void fillIpv6Route(Port &port, unsigned number)
{
    samples::storeIpv6(port.astIpv6Route[number].aucAddr, "2001:db8:a::");
    port.astIpv6Route[number].ucPrefix = 48;
    samples::storeIpv6(port.astIpv6Route[number].aucGateway, "fe80::9");
}

/* clang-format off */
const Built builtRows[] = {
    {"LanOn",      {"--lan", "on"},   0x1,    [](Port &port) { port.ucLanEnable = 1; }},
    {"LanOff",     {"--lan", "off"},  0x1,    [](Port &) {}},
    {"Ipv4On",     {"--ipv4", "on"},  0x2,    [](Port &port) { port.ucIpv4Enable = 1; }},
    {"Ipv4Off",    {"--ipv4", "off"}, 0x2,    [](Port &) {}},
    {"Ipv4",       {"--ipv4", "10.1.2.3/20"}, 0x18, [](Port &port) {
        samples::storeIpv4(port.aucIpv4Addr, "10.1.2.3");
        samples::storeIpv4(port.aucIpv4Mask, "255.255.240.0");
    }},
    {"Ipv4Gateway",    {"--ipv4-gateway", "10.1.2.1"}, 0x20,
        [](Port &port) { samples::storeIpv4(port.aucIpv4Gateway, "10.1.2.1"); }},
    {"Ipv4GatewayOff", {"--ipv4-gateway", "off"},  0x20, [](Port &) {}},
    {"Ipv4Static",     {"--ipv4-origin", "static"}, 0x4, [](Port &port) { port.ucIpv4Type = 1; }},
    {"Ipv4Dhcp",       {"--ipv4-origin", "dhcp"},   0x4, [](Port &port) { port.ucIpv4Type = 2; }},
    {"Ipv6On",     {"--ipv6", "on"},  0x40,   [](Port &port) { port.ucIpv6Enable = 1; }},
    {"Ipv6Off",    {"--ipv6", "off"}, 0x40,   [](Port &) {}},
    {"Ipv6",       {"--ipv6", "2001:db8::5/48"}, 0x500, [](Port &port) {
        samples::storeIpv6(port.aucIpv6Addr, "2001:db8::5");
        port.ucIpv6Prefix = 48;
    }},
    {"Ipv6Longest",    {"--ipv6", "2001:db8::5/128"}, 0x500, [](Port &port) {
        samples::storeIpv6(port.aucIpv6Addr, "2001:db8::5");
        port.ucIpv6Prefix = 128;
    }},
    {"Ipv6Gateway",    {"--ipv6-gateway", "fe80::1"}, 0x200,
        [](Port &port) { samples::storeIpv6(port.aucIpv6Gateway, "fe80::1"); }},
    {"Ipv6GatewayOff", {"--ipv6-gateway", "off"},   0x200, [](Port &) {}},
    {"Ipv6Static",     {"--ipv6-origin", "static"}, 0x80, [](Port &port) { port.ucIpv6Type = 1; }},
    {"Ipv6Dhcp",       {"--ipv6-origin", "dhcp"},   0x80, [](Port &port) { port.ucIpv6Type = 2; }},
    {"Ipv6Slaac",      {"--ipv6-origin", "slaac"},  0x80, [](Port &port) { port.ucIpv6Type = 3; }},
    {"Ipv4Enabled",    {"--ipv4-enabled", "on"},    0x2,  [](Port &port) { port.ucIpv4Enable = 1; }},
    {"Ipv6Enabled",    {"--ipv6-enabled", "off"},   0x40, [](Port &) {}},
    {"Vlan",       {"--vlan", "4094"}, 0x18000, [](Port &port) {
        port.ucVlanEnable = 1;
        port.usVlanid = 4094;
    }},
    {"VlanOff",      {"--vlan", "off"},        0x8000, [](Port &) {}},
    {"VlanPriority", {"--vlan-priority", "7"}, 0x20000, [](Port &port) { port.ucVlanPriority = 7; }},
    {"Ipv4Route1",    {"--ipv4-route1", "10.1.0.0/20,192.168.20.9"}, 0, [](Port &port) { fillIpv4Route(port, 0); }, 0x07},
    {"Ipv4Route2",    {"--ipv4-route2", "10.1.0.0/20,192.168.20.9"}, 0, [](Port &port) { fillIpv4Route(port, 1); }, 0x38},
    {"Ipv4Route1Off", {"--ipv4-route1", "off"},                      0, [](Port &) {}, 0x07},
    {"Ipv4Route2Off", {"--ipv4-route2", "off"},                      0, [](Port &) {}, 0x38},
    {"Ipv6Route1",    {"--ipv6-route1", "2001:db8:a::/48,fe80::9"}, 0x1C0000, [](Port &port) { fillIpv6Route(port, 0); }},
    {"Ipv6Route2",    {"--ipv6-route2", "2001:db8:a::/48,fe80::9"}, 0xE00000, [](Port &port) { fillIpv6Route(port, 1); }},
    {"Ipv6Route1Off", {"--ipv6-route1", "off"},                     0x1C0000, [](Port &) {}},
    {"Ipv6Route2Off", {"--ipv6-route2", "off"},                     0xE00000, [](Port &) {}},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, BuiltChange, ::testing::ValuesIn(builtRows), fake::RowName());

struct Rejection {
    const char *name;
    GivenOption given;
    const char *reason;
};

class RejectedOption : public samples::ConfiguredTest,
                       public ::testing::WithParamInterface<Rejection> {
protected:
    /* The failure names the option, its value and the reason. */
    void expectRejection(Exit status, const nlohmann::json &code) const
    {
        const auto &[name, given, reason] = GetParam();
        const auto ran = samples::run({"lan", "set", "eth0", given.name, given.value, "--json"});
        const auto error = ran.json()["error"];

        EXPECT_EQ(ran.status, status);
        EXPECT_EQ(error["option"], given.name);
        EXPECT_EQ(error["value"], given.value);
        EXPECT_EQ(error["reason"], reason);
        EXPECT_EQ(error["code"], code);
        EXPECT_THAT(sentRequests(), IsEmpty());
    }
};

class MisusedOption : public RejectedOption {};

TEST_P(MisusedOption, IsAUsageErrorWithoutACode)
{
    expectRejection(Exit::usage, nullptr);
}

/* clang-format off */
const Rejection misusedRows[] = {
    {"Lan",              {"--lan", "yes"},                 "expected off or on"},
    {"LanEmpty",         {"--lan", ""},                    "expected off or on"},
    {"Ipv4Text",         {"--ipv4", "host/24"},            "expected ADDR/LEN, on, off or none"},
    {"Ipv4Empty",        {"--ipv4", ""},                   "expected ADDR/LEN, on, off or none"},
    {"Ipv4WrongFamily",  {"--ipv4", "2001:db8::1/64"},     "expected ADDR/LEN, on, off or none"},
    {"Ipv4NoPrefix",     {"--ipv4", "10.0.0.2"},           "the prefix length is missing, expected ADDR/LEN"},
    {"Ipv4EmptyPrefix",  {"--ipv4", "10.0.0.2/"},          "the prefix length is not a number from 1 to 32"},
    {"Ipv4ZeroPrefix",   {"--ipv4", "10.0.0.2/0"},         "the prefix length is not a number from 1 to 32"},
    {"Ipv4LongPrefix",   {"--ipv4", "10.0.0.2/33"},        "the prefix length is not a number from 1 to 32"},
    {"Ipv4Mask",         {"--ipv4", "10.0.0.2/255.0.0.0"}, "the prefix length is not a number from 1 to 32"},
    {"Ipv4Gateway",      {"--ipv4-gateway", "router"},     "expected an address of the family or off"},
    {"Ipv4Gateway6",     {"--ipv4-gateway", "fe80::1"},    "expected an address of the family or off"},
    {"Ipv4Origin",       {"--ipv4-origin", "auto"},        "expected static or dhcp"},
    {"Ipv6Text",         {"--ipv6", "x/64"},               "expected ADDR/LEN, on, off or none"},
    {"Ipv6NoPrefix",     {"--ipv6", "2001:db8::1"},        "the prefix length is missing, expected ADDR/LEN"},
    {"Ipv6ZeroPrefix",   {"--ipv6", "2001:db8::1/0"},      "the prefix length is not a number from 1 to 128"},
    {"Ipv6LongPrefix",   {"--ipv6", "2001:db8::1/129"},    "the prefix length is not a number from 1 to 128"},
    {"Ipv6Gateway",      {"--ipv6-gateway", "10.0.0.1"},   "expected an address of the family or off"},
    {"Ipv6Origin",       {"--ipv6-origin", "auto"},        "expected static, dhcp or slaac"},
    {"Route4Empty",      {"--ipv4-route1", ""},            "expected DEST/LEN,GATEWAY of the family or off"},
    {"Route4NoGateway",  {"--ipv4-route1", "10.0.0.0/8"},  "expected DEST/LEN,GATEWAY of the family or off"},
    {"Route4BadGateway", {"--ipv4-route2", "10.0.0.0/8,x"}, "expected DEST/LEN,GATEWAY of the family or off"},
    {"Route4ThreeParts", {"--ipv4-route1", "10.0.0.0/8,10.9.9.9,1"}, "expected DEST/LEN,GATEWAY of the family or off"},
    {"Route4NoPrefix",   {"--ipv4-route2", "10.0.0.0,192.168.20.9"}, "the prefix length is missing, expected ADDR/LEN"},
    {"Route4LongPrefix", {"--ipv4-route1", "10.0.0.0/33,192.168.20.9"}, "the prefix length is not a number from 1 to 32"},
    {"Route4Family",     {"--ipv4-route1", "2001:db8::/48,192.168.20.9"}, "expected DEST/LEN,GATEWAY of the family or off"},
    {"Route6Family",     {"--ipv6-route1", "2001:db8::/48,192.168.20.9"}, "expected DEST/LEN,GATEWAY of the family or off"},
    {"Route6LongPrefix", {"--ipv6-route2", "2001:db8::/129,fe80::1"}, "the prefix length is not a number from 1 to 128"},
    {"VlanZero",         {"--vlan", "0"},                  "expected off or a number from 1 to 4094"},
    {"VlanLarge",        {"--vlan", "4095"},               "expected off or a number from 1 to 4094"},
    {"VlanText",         {"--vlan", "on"},                 "expected off or a number from 1 to 4094"},
    {"VlanPriority",     {"--vlan-priority", "8"},         "expected a number from 0 to 7"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, MisusedOption, ::testing::ValuesIn(misusedRows), fake::RowName());

class SeveralOptions : public samples::ConfiguredTest {};

TEST_F(SeveralOptions, RefusesTwoValuesForOneSetting)
{
    const auto ran = samples::runLine("lan set eth0 --ipv4 10.0.0.2/8 --ipv4 10.0.0.3/8 --json");

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.json()["error"]["option"], "--ipv4");
    EXPECT_EQ(ran.json()["error"]["value"], "10.0.0.3/8");
    EXPECT_EQ(ran.json()["error"]["reason"], "contradicts another value for the same setting");
}

class RefusedOption : public RejectedOption {};

TEST_P(RefusedOption, IsRefusedWithTheCodeOfAParameterOutOfRange)
{
    expectRejection(Exit::refused, "0x81000003");
}

/* clang-format off */
const Rejection refusedRows[] = {
    {"Ipv4Loopback",     {"--ipv4", "127.0.0.1/8"},           "a loopback address"},
    {"Ipv4Multicast",    {"--ipv4", "224.0.0.1/24"},          "a multicast or reserved address"},
    {"Ipv4Zero",         {"--ipv4", "0.0.0.0/24"},            "the all-zero address"},
    {"Ipv4NetworkZero",  {"--ipv4", "0.1.2.3/24"},            "an address of network 0"},
    {"Ipv4ShortMask",    {"--ipv4", "10.0.0.2/7"},            "the first byte of a mask is 255, or the mask is 0.0.0.0"},
    {"Ipv4Gateway",      {"--ipv4-gateway", "224.0.0.1"},     "a multicast or reserved address"},
    {"Ipv4GatewayZero",  {"--ipv4-gateway", "0.0.0.0"},       "the all-zero address"},
    {"Route4Loopback",   {"--ipv4-route1", "127.0.0.0/8,192.168.20.9"}, "a loopback address"},
    {"Route4Default",    {"--ipv4-route1", "0.0.0.0/8,192.168.20.9"}, "the all-zero address"},
    {"Route4ShortMask",  {"--ipv4-route2", "10.0.0.0/7,192.168.20.9"}, "the first byte of a mask is 255, or the mask is 0.0.0.0"},
    {"Route4Gateway",    {"--ipv4-route2", "10.0.0.0/8,224.0.0.1"}, "a multicast or reserved address"},
    {"Route6LinkLocal",  {"--ipv6-route1", "fe80::/64,fe80::1"}, "a link-local address"},
    {"Route6Gateway",    {"--ipv6-route2", "2001:db8:a::/48,ff02::1"}, "a multicast address"},
    {"Ipv6LinkLocal",    {"--ipv6", "fe80::1/64"},            "a link-local address"},
    {"Ipv6Multicast",    {"--ipv6", "ff02::1/64"},            "a multicast address"},
    {"Ipv6Loopback",     {"--ipv6", "::1/128"},               "the loopback address"},
    {"Ipv6Gateway",      {"--ipv6-gateway", "::"},            "the all-zero address"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, RefusedOption, ::testing::ValuesIn(refusedRows), fake::RowName());

struct Blame {
    const char *name;
    const char *options;
    NW_RESULT code;
    const char *option;
};

class Blamed : public samples::ConfiguredTest, public ::testing::WithParamInterface<Blame> {};

TEST_P(Blamed, IsTheOptionThatTheResultIsAbout)
{
    platform.answerRpc(fake::RpcAnswer::response(GetParam().code, 0));

    const auto ran =
        samples::runLine(std::string("lan set eth0 --no-check --json ") + GetParam().options);

    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_EQ(ran.json()["error"]["option"], GetParam().option);
}

constexpr NW_RESULT gatewayOutside = 0x1E00000E;
constexpr NW_RESULT badIpv4Route = 0x1E00000F;
constexpr const char *routes = "--ipv4 10.0.0.2/8 --ipv4-route1 11.0.0.0/8,10.0.0.1 "
                               "--ipv4-route2 12.0.0.0/8,10.0.0.1";
/* clang-format off */
const Blame blames[] = {
    {"AddressFirst",  "--ipv6 on --ipv4-gateway 10.0.0.1 --ipv4 10.0.0.2/8", NW_ERR_IPV4_SAME_SEGMENT, "--ipv4"},
    {"Switch",        "--ipv6 on --ipv4-gateway 10.0.0.1 --ipv4 10.0.0.2/8", NW_ERR_IPV6_SAME_SEGMENT, "--ipv6"},
    {"Nothing",       "--ipv6 on --lan on",                                  NW_ERR_DB_READ,           "PORT"},
    {"Gateway",       "--ipv4 10.0.0.2/8 --ipv4-gateway 11.0.0.1",           gatewayOutside,           "--ipv4-gateway"},
    {"GatewayOfAddress", "--lan on --ipv4 10.0.0.2/8",                       gatewayOutside,           "--ipv4"},
    {"Route1",        routes,                                                NW_ERR_IPV4_ROUTE1,         "--ipv4-route1"},
    {"Route2Gateway", routes,                                                NW_ERR_IPV4_ROUTE2_GATEWAY, "--ipv4-route2"},
    {"InRoute1",      routes,                                                NW_ERR_IPV4_IN_ROUTE1,      "--ipv4"},
    {"BadRoute",      routes,                                                badIpv4Route,               "--ipv4-route1"},
    {"BadRoute2",     "--ipv4-route2 12.0.0.0/8,10.0.0.1 --lan on",          badIpv4Route,               "--ipv4-route2"},
    {"Route2NotGiven", "--ipv4 10.0.0.2/8 --ipv4-route1 11.0.0.0/8,10.0.0.1", NW_ERR_IPV4_ROUTE2,        "--ipv4"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, Blamed, ::testing::ValuesIn(blames), fake::RowName());

} // namespace
} // namespace nwctl
