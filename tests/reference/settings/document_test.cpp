// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/document.hpp"

#include <cstring>

#include <gtest/gtest.h>

#include "fake_matchers.hpp"
#include "samples.hpp"
#include "settings/difference.hpp"

namespace bmc::settings {

namespace {

const std::string ports = R"("ports": {"dedicated": {"name": "eth0", "channel": 1},
    "shared": {"name": "eth1", "channel": 8, "present": true},
    "bond": {"name": "bond0", "channel": 1}})";

/* Short enough to be read, but it would be searched for each key. */
std::string manyKeys()
{
    std::string text = "{";
    for (int key = 0; key < 80000; ++key) {
        text += (key == 0 ? "\"" : ",\"") + std::to_string(key) + "\":1";
    }
    return text + "}";
}

struct Row {
    const char *name;
    std::string text;
    const char *place;
    const char *reason;
};

/* clang-format off */
const Row rows[] = {
    {"Empty",            "",                                        "document", "not JSON"},
    {"Half",             "{",                                       "document", "not JSON"},
    {"Zero",             std::string("{}\0", 3),                    "document", "not JSON"},
    {"List",             "[]",                                      "document", "expected an object"},
    {"Deep",             std::string(20, '['),                      "document", "nested too deeply"},
    {"ManyKeys",         manyKeys(),                            "document", "has too many keys"},
    {"VeryDeep",         std::string(1000000, '['),                 "document", "nested too deeply"},
    {"Large",            std::string(documentMax + 1, ' '),         "document", "has more than 1048576 bytes"},
    {"Number",           R"({"mode": 1e999})",                      "document", "holds a number that is out of range"},
    {"KeyTwice",         R"({"lan": {}, "lan": {}})",               "document", "the key is given twice"},
    {"KeyTwiceInside",   R"({"lan": {"eth0": {"vlan": 1, "vlan": 2}}})", "document", "the key is given twice"},
    {"Part",             R"({"wifi": {}})",                         "wifi", "no such part, expected ports, mode, switchover, hostname, lldp, lan, dns, an"},
    {"Mode",             R"({"mode": "bonded"})",                   "mode", "expected separate or active-standby"},
    {"ModeNull",         R"({"mode": null})",                       "mode", "has to have a value"},
    {"Switchover",       R"({"switchover": 1})",                    "switchover", "expected off or on"},
    {"HostName",         R"({"hostname": {"name": "-"}})",          "hostname.name", "a host name is made of letters, digits and inner hyphens"},
    {"Lan",              R"({"lan": 7})",                           "lan", "expected an object"},
    {"LanPort",          R"({"lan": {"eth7": {}}})",                "lan.eth7", "no such port, expected eth0, eth1, bond0, dedicated, shared, bond, 0, 1, 2 or channel:N"},
    {"LanChannel",       R"({"lan": {"channel:7": {}}})",           "lan.channel:7", "no such port, expected eth0, eth1, bond0, dedicated, shared, bond, 0, 1, 2 or channel:N"},
    {"LanChannelTwice",  R"({"lan": {"shared": {}, "channel:8": {}}})", "lan.channel:8", "the port is given twice"},
    {"LanPortTwice",     R"({"lan": {"eth1": {}, "shared": {}}})",  "lan.shared", "the port is given twice"},
    {"LanPortValue",     R"({"lan": {"eth1": null}})",              "lan.eth1", "expected an object"},
    {"LanKey",           R"({"lan": {"eth1": {"colour": 1}}})",     "lan.eth1.colour", "no such setting"},
    {"LanFlag",          R"({"lan": {"eth1": {"lan": "yes"}}})",    "lan.eth1.lan", "expected off or on"},
    {"LanNull",          R"({"lan": {"eth1": {"lan": null}}})",     "lan.eth1.lan", "has to have a value"},
    {"Ipv4",             R"({"lan": {"1": {"ipv4": "10.0.0.1"}}})", "lan.1.ipv4", "the prefix length is missing, expected ADDR/LEN"},
    {"Ipv4Object",       R"({"lan": {"1": {"ipv4": {}}}})",         "lan.1.ipv4", "expected a text, a whole number, true, false, null or a list of these"},
    {"Ipv4Fraction",     R"({"lan": {"1": {"vlan": 1.5}}})",        "lan.1.vlan", "expected a text, a whole number, true, false, null or a list of these"},
    {"Ipv4ListInList",   R"({"lan": {"1": {"ipv4": [["on"]]}}})",   "lan.1.ipv4", "expected a text, a whole number, true, false, null or a list of these"},
    {"Ipv4Twice",        R"({"lan": {"1": {"ipv4": ["10.0.0.1/8", "10.0.0.2/8"]}}})", "lan.1.ipv4", "contradicts another value for the same setting"},
    {"Ipv4Control",      R"({"lan": {"1": {"ipv4": "10.0.0.1\u0000/8"}}})", "lan.1.ipv4", "expected ADDR/LEN, on, off or none"},
    {"Vlan",             R"({"lan": {"1": {"vlan": 4095}}})",       "lan.1.vlan", "expected off or a number from 1 to 4094"},
    {"VlanNegative",     R"({"lan": {"1": {"vlan": -1}}})",         "lan.1.vlan", "expected off or a number from 1 to 4094"},
    {"AnBond",           R"({"an": {"bond": {}}})",                 "an.bond", "the port has no such settings"},
    {"AnTwice",          R"({"an": {"0": {"auto": true}, "eth0": null}})", "an.eth0", "the port is given twice"},
    {"Ports",            R"({"ports": []})",                        "ports", "expected an object"},
    {"PortsName",        R"({"ports": {"bond": {"name": 1}}})",     "ports.bond.name", "must be a text of 1 to 15 characters"},
};

const Row firstRows[] = {
    {"NoPorts",          "{}",                                      "ports", "must be an object with the ports dedicated, shared and bond"},
    {"PortList",         R"({"ports": [{}, {}, {}]})",              "ports", "must be an object with the ports dedicated, shared and bond"},
    {"TwoPorts",         R"({"ports": {"0": {}, "1": {}}})",        "ports", "must be an object with the ports dedicated, shared and bond"},
    {"UnknownPort",      R"({"ports": {"0": {"name": "a", "channel": 1}, "1": {"name": "b", "channel": 1}, "eth": {}}})", "ports.eth", "no such port, expected dedicated, shared, bond, 0, 1 or 2"},
    {"PortTwice",        R"({"ports": {"0": {"name": "a", "channel": 1}, "dedicated": {}, "2": {}}})", "ports.dedicated", "the port is given twice"},
    {"NoName",           R"({"ports": {"0": {"channel": 1}, "1": {}, "2": {}}})", "ports.0", "key \"name\" is missing"},
    {"NoChannel",        R"({"ports": {"0": {"name": "a"}, "1": {}, "2": {}}})", "ports.0", "key \"channel\" is missing"},
    {"Channel",          R"({"ports": {"0": {"name": "a", "channel": 256}, "1": {}, "2": {}}})", "ports.0.channel", "must be a number from 0 to 255"},
    {"Present",          R"({"ports": {"0": {"name": "a", "channel": 1, "present": 1}, "1": {}, "2": {}}})", "ports.0.present", "must be true or false"},
    {"PortKey",          R"({"ports": {"0": {"enabled": true}, "1": {}, "2": {}}})", "ports.0.enabled", "no such key, expected name, channel, present"},
    {"SameName",         R"({"ports": {"0": {"name": "a", "channel": 1}, "1": {"name": "a", "channel": 1}, "2": {}}})", "ports.1.name", "another port has this name"},
    {"OtherRole",        R"({"ports": {"0": {"name": "shared", "channel": 1}, "1": {}, "2": {}}})", "ports.0.name", "names another port already, by its role or index"},
    {"OtherIndex",       R"({"ports": {"bond": {"name": "1", "channel": 1}, "1": {}, "2": {}}})", "ports.bond.name", "names another port already, by its role or index"},
    {"LongName",         R"({"ports": {"0": {"name": "sixteencharacter"}, "1": {}, "2": {}}})", "ports.0.name", "must be a text of 1 to 15 characters"},
    {"EmptyName",        R"({"ports": {"0": {"name": ""}, "1": {}, "2": {}}})", "ports.0.name", "must be a text of 1 to 15 characters"},
    {"SlashName",        R"({"ports": {"0": {"name": "a/b"}, "1": {}, "2": {}}})", "ports.0.name", "is not the name of an interface"},
    {"ControlName",      R"({"ports": {"0": {"name": "a\u0000b"}, "1": {}, "2": {}}})", "ports.0.name", "is not the name of an interface"},
    {"Gateway",          "{" + ports + R"(, "lan": {"eth1": {"ipv4": "10.1.0.1/16", "ipv4-gateway": "10.2.0.9"}}})", "lan.eth1.ipv4-gateway", "IPv4 gateway: the IPv4 gateway is outside the port's own subnet or the port itself"},
    {"Segment",          "{" + ports + R"(, "lan": {"0": {"ipv4": ["on", "10.1.0.1/16"]}, "1": {"ipv4": ["10.1.0.2/16", "on"]}}})", "lan.0.ipv4", "an address or a route in another's segment"},
    {"Loopback",         "{" + ports + R"(, "lan": {"0": {"ipv4": "127.0.0.1/8"}}})", "lan.0.ipv4", "a loopback address"},
    {"NothingServed",    R"({"mode": "active-standby", "ports": {"0": {"name": "a", "channel": 1}, "1": {"name": "b", "channel": 1}, "2": {"name": "c", "channel": 1, "present": false}}})", "mode", "network port mode: the port is not on this board or not served in the present network mode"},
};
/* clang-format on */

template <typename Read>
void expectError(const Row &row, const Read &read)
{
    try {
        read();
        ADD_FAILURE() << "no error";
    } catch (const DocumentError &error) {
        EXPECT_EQ(error.place(), row.place);
        EXPECT_EQ(error.reason(), row.reason);
    }
}

class BadDocument : public ::testing::TestWithParam<Row> {};
class BadFirstDocument : public ::testing::TestWithParam<Row> {};

Configuration applied(const std::string &text, const Configuration &present)
{
    return edited(present, readDocument(text, present).change, noWireless);
}

} // namespace

TEST_P(BadDocument, IsRefusedWithPlaceAndReason)
{
    expectError(GetParam(), [] { readDocument(GetParam().text, sampleConfiguration()); });
}
INSTANTIATE_TEST_SUITE_P(Rows, BadDocument, ::testing::ValuesIn(rows), fake::RowName());

TEST_P(BadFirstDocument, IsRefusedWithPlaceAndReason)
{
    expectError(GetParam(), [] { firstConfiguration(GetParam().text, noWireless); });
}
INSTANTIATE_TEST_SUITE_P(Rows, BadFirstDocument, ::testing::ValuesIn(firstRows), fake::RowName());

TEST(Document, OfNothingChangesNothing)
{
    const Configuration present = sampleConfiguration();
    const Reading reading = readDocument("{}", present);
    EXPECT_TRUE(reading.change.empty());
    EXPECT_TRUE(reading.given.empty());
}

TEST(Document, TakesValuesAsJsonAndAsTheirTexts)
{
    const Configuration present = sampleConfiguration();
    const Configuration json = applied(
        R"({"lan": {"eth1": {"lan": true, "ipv4-enabled": true, "vlan": 30, "hop-limit": 7, "ipv4": "10.1.0.1/16"}},
            "an": {"0": {"speed": 100}}, "switchover": true})",
        present);
    const Configuration texts = applied(
        R"({"lan": {"shared": {"lan": "on", "ipv4": ["on", "10.1.0.1/16"], "vlan": "30", "hop-limit": "7"}},
            "an": {"dedicated": {"speed": "100"}}, "switchover": "on"})",
        present);
    EXPECT_EQ(std::memcmp(&json, &texts, sizeof(json)), 0);
    EXPECT_EQ(differences(present, json).size(), 9U);
}

TEST(Document, NullBringsBackWhatIsNotSet)
{
    const Configuration present = sampleConfiguration();
    const Configuration set = applied(
        R"({"hostname": {"name": "a", "bmc-name": "b"}, "lldp": {"work-mode": "tx"}, "an": {"0": {"speed": 10}},
            "lan": {"1": {"ipv4": "10.1.0.1/16", "ipv4-gateway": "10.1.0.9", "ipv4-origin": "dhcp", "vlan": 7, "ipv6-route1": "2001:db8::/32"}},
            "dns": {"1": {"ipv4-domain": "a.b", "ipv6-server3": "2001:db8::1"}}})",
        present);
    Configuration back = applied(
        R"({"hostname": {"name": null, "bmc-name": null}, "lldp": {"work-mode": null}, "an": {"0": null},
            "lan": {"1": {"ipv4": null, "ipv4-gateway": null, "ipv4-origin": null, "vlan": null, "ipv6-route1": null}},
            "dns": {"1": {"ipv4-domain": null, "ipv6-server3": null}}})",
        set);
    EXPECT_EQ(back.lldp.ucLldpWorkMode, 0);
    back.lldp = present.lldp;
    EXPECT_EQ(std::memcmp(&back, &present, sizeof(back)), 0);
}

TEST(Document, SettingsOfAPortThatIsNotServedAreStoredAndTold)
{
    const Configuration present = sampleConfiguration();
    const std::string text = R"({"lan": {"bond": {"lan": true}}})";
    const Configuration after = applied(text, present);
    EXPECT_EQ(after.lan.astPort[2].ucLanEnable, 1);
    EXPECT_EQ(idlePorts(readDocument(text, present).change, after), std::vector<unsigned>{2});
}

TEST(Document, PortsStayTheMachinesOwn)
{
    const Configuration present = sampleConfiguration();
    const std::string text =
        R"({"ports": {"dedicated": {"name": "en7", "channel": 1, "present": true}, "bond": {"present": false}}})";
    const Reading reading = readDocument(text, present);
    EXPECT_EQ(reading.ignored,
              (std::vector<std::string>{
                  "ports.dedicated.name: stays eth0, which is this machine's own, not en7",
                  "ports.bond.present: stays true, which is this machine's own, not false"}));
    const Configuration after = edited(present, reading.change, noWireless);
    EXPECT_EQ(std::memcmp(&after, &present, sizeof(after)), 0);
    EXPECT_TRUE(readDocument("{" + ports + "}", present).ignored.empty());
}

TEST(Document, PortsAreThoseThatHoldWithItsSwitchover)
{
    const Configuration off = sampleConfiguration();
    const Configuration on = applied(R"({"switchover": true})", off);
    EXPECT_EQ(nameOf(on.state, 0), "eth1");
    EXPECT_EQ(readDocument(documentOf(on).dump(), off).ignored, std::vector<std::string>{});
    EXPECT_EQ(readDocument(documentOf(off).dump(), on).ignored, std::vector<std::string>{});
}

TEST(Document, GivesBackWhatItWasAskedFor)
{
    const Reading reading =
        readDocument(R"({"lan": {"eth1": {"ipv4": ["on", "10.0.0.1/8"], "vlan": null}}})",
                     sampleConfiguration());
    std::vector<std::string> given;
    for (const GivenValue &value : reading.given) {
        given.push_back(value.place + " " + value.setting->key + " " + value.text);
    }
    EXPECT_EQ(given, (std::vector<std::string>{"lan.eth1.ipv4 ipv4-enabled on",
                                               "lan.eth1.ipv4 ipv4 10.0.0.1/8",
                                               "lan.eth1.vlan vlan null"}));
}

TEST(Document, ARefusalIsPlacedInItsWords)
{
    const Configuration present = sampleConfiguration();
    const Reading reading = readDocument(
        R"({"lan": {"eth1": {"ipv4": "10.0.0.1/8", "ipv4-gateway": "11.0.0.1"}}})", present);
    try {
        edited(present, reading.change, noWireless);
        FAIL() << "not refused";
    } catch (const Refusal &refusal) {
        EXPECT_EQ(placeOf(refusal, reading), "lan.eth1.ipv4-gateway");
    }
}

TEST(FirstConfiguration, HasTheValuesOfItsBaseWhereTheDocumentHasNone)
{
    const Configuration first = firstConfiguration("{" + ports + "}", noWireless);
    const Configuration sample = sampleConfiguration();
    EXPECT_EQ(std::memcmp(&first, &sample, sizeof(first)), 0);
}

TEST(FirstConfiguration, TheNamesGivenAreThoseThatHoldWithTheSwitchover)
{
    const Configuration first =
        firstConfiguration("{" + ports + R"(, "switchover": true})", noWireless);
    EXPECT_EQ(first.state.ucIfcValue1, 1);
    EXPECT_EQ(nameOf(first.state, 0), "eth0");
}

} // namespace bmc::settings
