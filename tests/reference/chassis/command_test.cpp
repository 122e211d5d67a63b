// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwctl chassis: through library, bus, chassis manager and database. */
#include "chassis_system.hpp"

#include <gmock/gmock.h>

namespace chassis_test {

using ::testing::EndsWith;
using ::testing::HasSubstr;

class ChassisCommand : public ChassisTest {
protected:
    void SetUp() override
    {
        ChassisTest::SetUp();
        start();
    }
};

struct Sent {
    const char *name;
    const char *arguments;
    const char *what;
    json kept;
};

void PrintTo(const Sent &row, std::ostream *stream)
{
    *stream << row.name;
}

class Sending : public ChassisCommand, public ::testing::WithParamInterface<Sent> {};

TEST_P(Sending, ReachesTheChassisManager)
{
    const auto result = nwctl("chassis " + std::string(GetParam().arguments));

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, std::string(GetParam().what) + " sent\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(kept(), GetParam().kept);
}

TEST_P(Sending, AnswersADocument)
{
    const auto result = nwctl("--json chassis " + std::string(GetParam().arguments));

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(json::parse(result.output), (json{{"sent", GetParam().what}}));
    EXPECT_EQ(kept(), GetParam().kept);
}

TEST_P(Sending, FailsWithoutTheChassisManager)
{
    ASSERT_EQ(stop(), 0);

    const auto result = nwctl("chassis " + std::string(GetParam().arguments));

    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("nwctl: no answer from the chassis manager\n"));
    EXPECT_THAT(result.errors, HasSubstr("0x81000013"));
    EXPECT_TRUE(kept().is_null());
}

/* clang-format off */
const Sent sent[] = {
    {"PowerOn",       "send-power-on 0102030405fF", "power-on request", {{"powerOn",   {{"count", 1}, {"request", "0102030405ff"}}}}},
    {"PowerOnZeros",  "send-power-on",              "power-on request", {{"powerOn",   {{"count", 1}, {"request", "000000000000"}}}}},
    {"PostState",     "send-post-state 255",        "POST state",       {{"postState", {{"count", 1}, {"state", 255}}}}},
    {"OcpTemps",      "send-ocp-temps 41 65535",    "OCP temperatures", {{"ocpTemperatures", {{"count", 1}, {"celsius", {41, 65535}}}}}},
    {"Fan",           "send-fan 4294967295 25",     "fan speed and inlet temperature", {{"fan", {{"count", 1}, {"speed", 4294967295U}, {"inlet", 25}}}}},
};
/* clang-format on */

INSTANTIATE_TEST_SUITE_P(Rows, Sending, ::testing::ValuesIn(sent),
                         [](const auto &test) { return test.param.name; });

TEST_F(ChassisCommand, ShowsTemperatures)
{
    EXPECT_EQ(nwctl("chassis temps").output, "sensor: none\nOCP adapter: none\n");

    ASSERT_EQ(nwctl("chassis send-fan 5400 25").status, 0);
    ASSERT_EQ(nwctl("chassis send-ocp-temps 41 0 43").status, 0);

    EXPECT_EQ(nwctl("chassis temps").output,
              "sensor 0: 25\nOCP adapter 0: 41\nOCP adapter 1: 0\nOCP adapter 2: 43\n");
    EXPECT_EQ(json::parse(nwctl("chassis temps --json").output),
              (json{{"sensors", {25}}, {"ocp", {41, 0, 43}}}));
}

TEST_F(ChassisCommand, ShowsFans)
{
    EXPECT_EQ(nwctl("chassis fans").output, "fan: none\n");

    ASSERT_EQ(nwctl("chassis send-fan 4294967295 25").status, 0);

    EXPECT_EQ(nwctl("chassis fans").output, "fan 0: 4294967295\n");
    EXPECT_EQ(json::parse(nwctl("chassis fans --json").output), (json{{"fans", {4294967295U}}}));
}

TEST_F(ChassisCommand, TellsThatTheLinkIsDown)
{
    ASSERT_EQ(nwctl("chassis send-fan 5400 25").status, 0);
    ASSERT_EQ(stop(), 0);

    for (const std::string command : {"chassis temps", "chassis fans"}) {
        const auto result = nwctl(command);
        EXPECT_EQ(result.status, 5);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, EndsWith("nwctl: the chassis manager is not connected\n"));

        const json error = json::parse(nwctl("--json " + command).output).at("error");
        EXPECT_EQ(error["status"], 5);
        EXPECT_EQ(error["reason"], "the chassis manager is not connected");
    }
}

TEST_F(ChassisCommand, TellsThatTheBusIsMissing)
{
    const auto result = e2e::run("DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/nowhere " NW_BINARY_DIR
                                 "/nwctl --json chassis send-fan 5400 25");

    EXPECT_EQ(result.status, 5);
    EXPECT_EQ(json::parse(result.output)["error"]["code"], "0x81000013");
}

TEST_F(ChassisCommand, TellsTheManagersRefusal)
{
    /* A directory in the way of what the chassis manager wants to keep. */
    ASSERT_EQ(e2e::run("mkdir $BMC_STATE_DIR/chassis.json").status, 0);
    const auto result = nwctl("--json chassis send-fan 5400 25");
    ASSERT_EQ(e2e::run("rmdir $BMC_STATE_DIR/chassis.json").status, 0);

    EXPECT_EQ(result.status, 4);
    const json error = json::parse(result.output).at("error");
    EXPECT_EQ(error["reason"], "the chassis manager refused the request");
    EXPECT_EQ(error["code"], "0x1e000003");
}

struct Misuse {
    const char *name;
    const char *arguments;
    const char *option;
    const char *value;
};

class Misused : public ChassisCommand, public ::testing::WithParamInterface<Misuse> {};

TEST_P(Misused, SendsNothing)
{
    const auto result = nwctl("--json chassis " + std::string(GetParam().arguments));

    EXPECT_EQ(result.status, 2);
    const json error = json::parse(result.output).at("error");
    EXPECT_EQ(error["option"], GetParam().option);
    EXPECT_EQ(error["value"], GetParam().value);
    EXPECT_TRUE(kept().is_null());
}

const Misuse misuses[] = {
    {"PowerOnShort", "send-power-on 0102030405", "BYTES", "0102030405"},
    {"PowerOnLong", "send-power-on 01020304050607", "BYTES", "01020304050607"},
    {"PowerOnOdd", "send-power-on 01020304050", "BYTES", "01020304050"},
    {"PowerOnNoDigits", "send-power-on 01020304050g", "BYTES", "01020304050g"},
    {"PowerOnEmpty", "send-power-on ''", "BYTES", ""},
    {"PostStateLarge", "send-post-state 256", "STATE", "256"},
    {"PostStateNegative", "send-post-state -- -1", "STATE", "-1"},
    {"PostStateMissing", "send-post-state", "STATE", ""},
    {"OcpTempLarge", "send-ocp-temps 41 65536", "CELSIUS", "65536"},
    {"OcpTempsMissing", "send-ocp-temps", "CELSIUS", ""},
    {"FanSpeedLarge", "send-fan 4294967296 25", "SPEED", "4294967296"},
    {"FanSpeedHuge", "send-fan 18446744073709551617 25", "SPEED", "18446744073709551617"},
    {"InletLarge", "send-fan 5400 256", "INLET", "256"},
    {"InletMissing", "send-fan 5400", "INLET", ""},
};

INSTANTIATE_TEST_SUITE_P(Rows, Misused, ::testing::ValuesIn(misuses),
                         [](const auto &test) { return test.param.name; });

TEST_F(ChassisCommand, ExamplesOfTheHelpWork)
{
    for (const std::string command :
         {"temps", "fans", "send-power-on", "send-post-state", "send-ocp-temps", "send-fan"}) {
        const std::string help = nwctl("chassis " + command + " --help").output;
        const auto example = help.find("nwctl chassis", help.find("Example:"));
        const auto end = help.find('\n', example);
        ASSERT_NE(example, help.npos) << help;

        EXPECT_EQ(e2e::run(NW_BINARY_DIR "/" + help.substr(example, end - example)).status, 0)
            << help;
    }
}

} // namespace chassis_test
