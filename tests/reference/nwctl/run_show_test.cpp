// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Show : public samples::ConfiguredTest {};

TEST_F(Show, PrintsThePortAskedForByNameOrIndex)
{
    for (const char *port : {"eth1", "1"}) {
        const auto ran = samples::run({"lan", "show", port});

        EXPECT_EQ(ran.status, Exit::success);
        EXPECT_THAT(ran.out, HasSubstr("Port eth1, shared port (index 1, channel 2)"));
        EXPECT_THAT(ran.out, HasSubstr("192.168.20.2"));
        EXPECT_THAT(ran.out, Not(HasSubstr("eth0")));
        EXPECT_THAT(ran.err, IsEmpty());
    }
}

TEST_F(Show, PrintsAllPortsOfSeparateMode)
{
    const auto ran = samples::run({"lan", "show"});

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_THAT(ran.out, HasSubstr("Port eth0, dedicated port (index 0, channel 1)"));
    EXPECT_THAT(ran.out, HasSubstr("\n\nPort eth1, shared port (index 1, channel 2)"));
    EXPECT_THAT(ran.out, Not(HasSubstr("bond0")));
}

TEST_F(Show, PrintsTheBondOfActiveStandbyMode)
{
    NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
    interfaces.ucIfcState = NW_IFC_STATE_ADAPTIVE;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    const auto document = samples::run({"lan", "show", "--json"}).json();

    EXPECT_EQ(document["mode"], "active-standby");
    ASSERT_EQ(document["ports"].size(), 1U);
    EXPECT_EQ(document["ports"][0]["port"], "bond0");
}

TEST_F(Show, AnswersInJsonWhereverTheFlagStands)
{
    const std::vector<std::string> places[] = {{"--json", "lan", "show", "eth1"},
                                               {"lan", "--json", "show", "eth1"},
                                               {"lan", "show", "eth1", "--json"}};
    for (const auto &arguments : places) {
        const auto ran = samples::run(arguments);
        const auto document = ran.json();

        EXPECT_EQ(ran.status, Exit::success);
        EXPECT_EQ(document["mode"], "separate");
        EXPECT_EQ(document["ports"][0]["ipv4"]["address"], "192.168.20.2");
        EXPECT_EQ(document["ports"][0]["ipv6"]["addresses"][0]["address"], "2001:db8:20::2");
    }
}

TEST_F(Show, TakesThePortsNamesFromTheRecord)
{
    NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
    std::memcpy(interfaces.acIfcName[0], "management-0123456", NW_IFC_NAME_SIZE);
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    EXPECT_EQ(samples::run({"lan", "show", "eth0"}).status, Exit::usage);
}

TEST_F(Show, RefusesAPortThatTheModeDoesNotServe)
{
    const auto ran = samples::run({"lan", "show", "bond0"});

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_EQ(ran.err, "nwctl: PORT 'bond0': the port is not served in network mode separate\n");
}

TEST_F(Show, LeavesOutAPortThatIsNotOnTheBoard)
{
    NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
    interfaces.aucPortPresent[1] = 0;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    EXPECT_THAT(samples::run({"lan", "show"}).out, Not(HasSubstr("eth1")));
    EXPECT_THAT(samples::run({"status"}).out, Not(HasSubstr("eth1")));
    const auto ran = samples::run({"lan", "show", "eth1"});
    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_EQ(ran.err, "nwctl: PORT 'eth1': the port is not on this board\n");
}

TEST_F(Show, RefusesAPortThatDoesNotExist)
{
    const auto ran = samples::run({"lan", "show", "eth7\n"});

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.err, "nwctl: PORT 'eth7\\x0a': no such port, expected eth0, eth1, bond0, "
                       "dedicated, shared, bond, 0, 1, 2 or channel:N\n");
}

TEST_F(Show, RefusesAnEmptyPort)
{
    const auto ran = samples::run({"lan", "show", ""});

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_THAT(ran.err, HasSubstr("PORT '': no such port"));
}

TEST_F(Show, SaysWhichRecordCannotBeRead)
{
    platform.failGet(NW_KEY_LAN_CFG, -5);

    const auto ran = samples::run({"lan", "show", "eth1"});

    EXPECT_EQ(ran.status, Exit::internal);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_EQ(ran.err,
              "nwctl: cannot read the port's LAN settings\n"
              "nwctl: result 0x81000006 (NW_ERR_DB_READ): a configuration record could not "
              "be read; IPMI completion code 0xff\n");
}

TEST_F(Show, PassesTheDatabasesOwnCodeOn)
{
    platform.failGet(NW_KEY_IFC_STATE, -30798);

    const auto error = samples::run({"lan", "show", "--json"}).json()["error"];

    EXPECT_EQ(error["code"], "0xffff87b2");
    EXPECT_EQ(error["name"], "PLATFORM");
    EXPECT_EQ(error["reason"], "cannot read the interface state");
}

TEST_F(Show, RefusesAnUnknownMode)
{
    NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
    interfaces.ucIfcState = 3;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    const auto ran = samples::run({"lan", "show"});

    EXPECT_EQ(ran.status, Exit::internal);
    EXPECT_EQ(ran.err, "nwctl: the interface state record holds the unknown network mode 3\n");
}

TEST_F(Show, ShowsAConflictWithTheWirelessInterface)
{
    platform.setWireless(true, "192.168.20.9");

    EXPECT_EQ(samples::run({"lan", "show", "eth1", "--json"}).json()["ports"][0]["conflicts"],
              nlohmann::json::array({"ipv4"}));
}

} // namespace
} // namespace nwctl
