// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The link state over the life of the chassis manager, and how it starts and ends. */
#include "chassis_system.hpp"

#include <csignal>

#include <gmock/gmock.h>

#include "network_mng/chassis.h"

namespace chassis_test {

using ::testing::HasSubstr;

class Link : public ChassisTest {
protected:
    static unsigned state()
    {
        NW_OA_NETWORK_DB_INFO_S record{};
        EXPECT_EQ(NW_LMDB_Get_OaNetworkInfo(&record), NW_OK);
        return record.ucConnected;
    }

    static NW_RESULT readTemperatures()
    {
        NW_OA_TEMPERA_INFO_S record{};
        return LIB_OA_GetOATemperaInfo(&record);
    }
};

TEST_F(Link, IsUpWhileTheManagerRuns)
{
    EXPECT_EQ(state(), 0U);
    EXPECT_EQ(readTemperatures(), NW_ERR_GENERAL);

    start();
    EXPECT_EQ(state(), 1U);
    EXPECT_EQ(readTemperatures(), NW_OK);

    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(state(), 0U);
    EXPECT_EQ(readTemperatures(), NW_ERR_GENERAL);
}

TEST_F(Link, IsDownAfterAnInterrupt)
{
    start();
    daemon->signal(SIGINT);

    EXPECT_TRUE(e2e::eventually([] { return state() == 0; }));
}

TEST_F(Link, IsUpAgainAfterACrash)
{
    start();
    daemon->kill();
    EXPECT_EQ(state(), 1U) << "nobody was left to take it down";

    start();
    EXPECT_EQ(state(), 1U);
    EXPECT_EQ(stop(), 0);
    EXPECT_EQ(state(), 0U);
}

TEST_F(Link, StaysUpWhenASecondManagerIsRefused)
{
    start();

    const auto second = e2e::run("timeout 10 " NW_BINARY_DIR "/nwchassisd");

    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.errors, HasSubstr("another nwchassisd works on"));
    EXPECT_EQ(state(), 1U);
}

TEST_F(Link, StaysDownWithoutABus)
{
    const auto lost = e2e::run(
        "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/nowhere timeout 10 " NW_BINARY_DIR "/nwchassisd");

    EXPECT_EQ(lost.status, 1);
    EXPECT_THAT(lost.errors, HasSubstr("cannot connect to the message bus"));
    EXPECT_EQ(state(), 0U);
}

TEST_F(Link, GoesDownWhenTheNameHasAnotherOwner)
{
    start();

    const auto other = e2e::run(
        "mkdir -p /run/other && BMC_STATE_DIR=/run/other timeout 10 " NW_BINARY_DIR "/nwchassisd");

    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.errors, HasSubstr("cannot own the bus name io.networkmng.Service52"));
    EXPECT_EQ(state(), 1U);
    const auto fans = e2e::run("BMC_STATE_DIR=/run/other " NW_BINARY_DIR "/nwctl chassis fans");
    EXPECT_EQ(fans.status, 5) << "its own link is down";
}

struct Usage {
    const char *name;
    const char *arguments;
    int status;
    const char *output;
    const char *errors;
};

class CommandLine : public ::testing::TestWithParam<Usage> {};

TEST_P(CommandLine, IsAnswered)
{
    const auto result = e2e::run(NW_BINARY_DIR "/nwchassisd " + std::string(GetParam().arguments));

    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_THAT(result.output, HasSubstr(GetParam().output));
    EXPECT_EQ(result.errors, GetParam().errors);
}

const Usage usages[] = {
    {"Help", "--help", 0, "Usage: nwchassisd [--ipmi]", ""},
    {"Version", "--version", 0, "nwchassisd 1.", ""},
    {"UnknownOption", "--frob", 2, "", "nwchassisd: see nwchassisd --help\n"},
    {"FullDevice", "--help >/dev/full", 1, "",
     "nwchassisd: cannot write the output: No space left on device\n"},
    {"TooMuch", "--ipmi --ipmi", 2, "", "nwchassisd: see nwchassisd --help\n"},
};

INSTANTIATE_TEST_SUITE_P(Rows, CommandLine, ::testing::ValuesIn(usages),
                         [](const auto &test) { return test.param.name; });

} // namespace chassis_test
