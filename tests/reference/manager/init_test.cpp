// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The configuration file of nwmanagerd --init: what it means, and how its errors read. */
#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include "manager/service/init_config.hpp"
#include "manager/service/json_node.hpp"

namespace bmc::manager {

namespace {

const std::string otherPorts =
    R"({"name": "eth1", "channel": 8, "enabled": true,
        "ipv4": {"enabled": true, "address": "10.2.0.1/16"}},
       {"name": "bond0", "channel": 1, "enabled": false})";

/* A file whose port 0 has the text in addition to its name and channel. */
std::string withPort0(const std::string &text)
{
    return R"({"mode": "separate", "ports": [{"name": "eth0", "channel": 1, "enabled": true)" +
           text + "}, " + otherPorts + "]}";
}

InitialConfig read(const std::string &text)
{
    std::istringstream file(text);
    return readConfig(file);
}

std::string errorOf(const std::string &text)
{
    try {
        read(text);
        return "no error";
    } catch (const ConfigError &error) {
        return error.what();
    }
}

struct Row {
    const char *text; /* of port 0 */
    const char *error;
};

/* clang-format off */
const Row portRows[] = {
    {R"(, "colour": 1)", "ports[0]: unknown key \"colour\""},
    {R"(, "col\u001b[31m": 1)", "ports[0]: unknown key \"col\\u001b[31m\""},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1\u0000/24"})", "ports[0].ipv4.address: \"10.1.0.1\\u0000/24\" holds a control character"},
    {R"(, "ipv4": 7)", "ports[0].ipv4: must be an object"},
    {R"(, "ipv4": {})", "ports[0].ipv4: key \"enabled\" is missing"},
    {R"(, "ipv4": {"enabled": 1})", "ports[0].ipv4.enabled: must be true or false"},
    {R"(, "ipv4": {"enabled": true, "origin": "bios"})", "ports[0].ipv4.origin: must be one of \"static\", \"dhcp\""},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1"})", "ports[0].ipv4.address: \"10.1.0.1\" is not an address with its prefix length"},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1/33"})", "ports[0].ipv4.address: \"10.1.0.1/33\" is not"},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1/2x"})", "ports[0].ipv4.address: \"10.1.0.1/2x\" is not"},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0/24"})", "ports[0].ipv4.address: \"10.1.0\" is not an IPv4 address"},
    {R"(, "ipv4": {"enabled": true, "address": "127.0.0.1/8"})", "ports[0].ipv4.address: IPv4 address: "},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1/0"})", "ports[0]: IPv4 mask: "},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1/7"})", "ports[0].ipv4.address: IPv4 mask: "},
    {R"(, "ipv4": {"enabled": true, "address": "10.1.0.1/16", "gateway": "10.2.0.9"})", "ports[0]: IPv4 gateway: "},
    {R"(, "ipv4": {"enabled": true, "gateway": "fe80::1"})", "ports[0].ipv4.gateway: \"fe80::1\" is not an IPv4 address"},
    {R"(, "ipv4": {"enabled": true, "address": "10.2.0.1/16"})", "ports: an address or a route in another's segment"},
    {R"(, "ipv6": {"enabled": true, "address": "ff02::1/64"})", "ports[0].ipv6.address: IPv6 address: "},
    {R"(, "ipv6": {"enabled": true, "address": "2001:db8::1/129"})", "ports[0].ipv6.address: \"2001:db8::1/129\" is not"},
    {R"(, "ipv6": {"enabled": true, "address": "2001:db8::1/0"})", "ports[0]: IPv6 prefix length: "},
    {R"(, "ipv6": {"enabled": true, "gateway": "10.0.0.1"})", "ports[0].ipv6.gateway: \"10.0.0.1\" is not an IPv6 address"},
    {R"(, "vlan": {"enabled": true, "id": 4095})", "ports[0].vlan.id: must be a number from 0 to 4094"},
    {R"(, "vlan": {"enabled": true, "priority": -1})", "ports[0].vlan.priority: must be a number from 0 to 7"},
    {R"(, "present": "yes")", "ports[0].present: must be true or false"},
};

const Row fileRows[] = {
    {"", "not JSON: "},
    {"{", "not JSON: "},
    {"[]", "configuration: must be an object"},
    {"{}", "configuration: key \"mode\" is missing"},
    {R"({"mode": "both", "ports": []})", "mode: must be one of \"separate\", \"bonded\""},
    {R"({"mode": 0, "ports": []})", "mode: must be one of "},
    {R"({"mode": "separate", "ports": []})", "ports: must be a list of 3"},
    {R"({"mode": "separate", "ports": {}})", "ports: must be a list of 3"},
    {R"({"mode": "separate", "ports": [1, 2, 3]})", "ports[0]: must be an object"},
    {R"({"mode": "separate", "ports": [{}, {}, {}]})", "ports[0]: key \"name\" is missing"},
    {R"({"mode": "separate", "ports": [{"name": ""}, {}, {}]})", "ports[0].name: must be a text of 1 to 15"},
    {R"({"mode": "separate", "ports": [{"name": "sixteencharacter"}, {}, {}]})", "ports[0].name: must be a text of 1 to 15"},
    {R"({"mode": "separate", "ports": [{"name": "a/b"}, {}, {}]})", "ports[0].name: \"a/b\" is not the name of an interface"},
    {R"({"mode": "separate", "ports": [{"name": "a", "channel": 256}, {}, {}]})", "ports[0].channel: must be a number from 0 to 255"},
    {R"({"mode": "separate", "ports": [{"name": "a", "channel": 1, "enabled": true}, {"name": "a"}, {}]})", "ports[1].name: another port has this name"},
};
/* clang-format on */

} // namespace

TEST(InitConfig, ErrorsNameTheKeyAndTheReason)
{
    for (const Row &row : portRows) {
        EXPECT_EQ(errorOf(withPort0(row.text)).rfind(row.error, 0), 0U)
            << row.text << " gave " << errorOf(withPort0(row.text));
    }
    for (const Row &row : fileRows) {
        EXPECT_EQ(errorOf(row.text).rfind(row.error, 0), 0U)
            << row.text << " gave " << errorOf(row.text);
    }
}

TEST(InitConfig, EverySettingLandsInTheRecords)
{
    const InitialConfig config = read(withPort0(R"(, "present": true,
            "ipv4": {"enabled": true, "origin": "dhcp", "address": "10.1.0.2/20", "gateway": "10.1.0.1"},
            "ipv6": {"enabled": true, "origin": "static", "address": "2001:db8::2/60", "gateway": "fe80::1"},
            "vlan": {"enabled": true, "id": 4094, "priority": 7})"));
    EXPECT_EQ(config.state.ucIfcState, 0);
    EXPECT_STREQ(config.state.acIfcName[2], "bond0");
    EXPECT_EQ(config.state.aucChannel[1], 8);
    EXPECT_EQ(config.state.aucPortPresent[2], 1);

    const NW_LAN_CFG_PORT_S &port = config.lan.astPort[0];
    EXPECT_STREQ(port.szIfcName, "eth0");
    EXPECT_EQ(port.ucLanEnable, 1);
    EXPECT_EQ(port.ucIpv4Type, 2);
    EXPECT_TRUE(std::ranges::equal(port.aucIpv4Addr, std::array{10, 1, 0, 2}));
    EXPECT_TRUE(std::ranges::equal(port.aucIpv4Mask, std::array{255, 255, 240, 0}));
    EXPECT_TRUE(std::ranges::equal(port.aucIpv4Gateway, std::array{10, 1, 0, 1}));
    EXPECT_EQ(port.ucIpv6Type, 1);
    EXPECT_EQ(port.ucIpv6Prefix, 60);
    EXPECT_EQ(port.aucIpv6Gateway[0], 0xFE);
    const std::uint16_t vlan = port.stVlan.usVlanid;
    EXPECT_EQ(vlan, 4094);
    EXPECT_EQ(port.stVlan.aucReserved0[0], 1);
    EXPECT_EQ(port.stVlan.aucReserved5[0], 7);
    EXPECT_EQ(config.lan.astPort[2].ucLanEnable, 0);
}

TEST(InitConfig, ExampleIsValid)
{
    std::ifstream file(EXAMPLE_FILE);
    const InitialConfig config = readConfig(file);
    EXPECT_STREQ(config.state.acIfcName[1], "eth1");
    EXPECT_EQ(config.lan.astPort[1].ucIpv6Prefix, 64);
}

} // namespace bmc::manager
