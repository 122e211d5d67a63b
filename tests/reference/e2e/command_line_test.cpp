// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The command line against the running system. */
#include "system.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace e2e {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;

using CommandLine = System;

TEST_F(CommandLine, ShowsThePort)
{
    const Outcome result = nwctl("lan show eth1");

    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("192.168.20.2"));
    EXPECT_THAT(result.output, HasSubstr("2001:db8:20::2/64"));
    EXPECT_EQ(result.errors, "");
}

TEST_F(CommandLine, ShowsEveryPortOfTheModeAsOneDocument)
{
    const Outcome result = nwctl("--json lan show");
    ASSERT_EQ(result.status, 0);
    const json document = json::parse(result.output);

    ASSERT_EQ(document.at("ports").size(), 2U);
    EXPECT_EQ(document["ports"][0]["port"], "eth0");
    EXPECT_EQ(document["ports"][0]["ipv4"]["address"], "192.168.10.2");
    EXPECT_EQ(document["ports"][1]["port"], "eth1");
    EXPECT_EQ(document["ports"][1]["ipv4"]["address"], "192.168.20.2");
    EXPECT_EQ(document["ports"][1]["ipv4"]["mask"], "255.255.255.0");
}

TEST_F(CommandLine, AnswerThatCannotBeWrittenIsAFailure)
{
    const Outcome result = nwctl("lan show >/dev/full");

    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("could not be written"));
}

TEST_F(CommandLine, ClosedDescriptorsAreNotTakenForTheDatabase)
{
    EXPECT_EQ(nwctl("lan show eth1 <&- >&-").status, 1);
    EXPECT_EQ(nwctl("lan show eth1 >&-").status, 1);
    nwctl("lan show bond0 <&- 2>&- >/dev/null");
    nwctl("lan show <&- >&- 2>&-");

    const Outcome result = nwctl("lan show eth1");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("192.168.20.2"));
}

TEST_F(CommandLine, ADryRunLooksAtTheKernelsRoutes)
{
    const std::string outside = "lan set eth1 --ipv6-gateway 2001:db8:99::1";
    const Outcome result = nwctl(outside + " --dry-run");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, HasSubstr("NW_MANAGER_KERNEL_REFUSED"));
    EXPECT_EQ(nwctl(outside).status, 4);

    shell("ip -6 route add 2001:db8:99::/64 dev eth1");
    EXPECT_EQ(nwctl(outside + " --dry-run").status, 0);
    EXPECT_EQ(nwctl(outside).status, 0);
}

TEST_F(CommandLine, ChangesThePortAndSaysSo)
{
    const Outcome result = nwctl("lan set eth1 --ipv4 192.168.20.7/25");

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "LAN settings configured successfully for shared port, "
                             "IPv4 address: 192.168.20.7, IPv4 mask: 255.255.255.128.\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(kernelAddresses("eth1"), ::testing::Contains("192.168.20.7/25"));
    const json shown = json::parse(nwctl("--json lan show eth1").output);
    EXPECT_EQ(shown["ports"][0]["ipv4"]["address"], "192.168.20.7");
}

struct Row {
    const char *name;
    const char *arguments;
    int status;
    const char *output; /* of standard output and error together */
    const char *json;   /* code of the error document, empty for none */
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.name;
}

class RefusedCommand : public CommandLine, public ::testing::WithParamInterface<Row> {};

TEST_P(RefusedCommand, ChangesNothingAndSaysWhy)
{
    const Bytes record = storedLanRecord();
    const std::vector<std::string> addresses = kernelAddresses("eth1");

    const Outcome result = nwctl(GetParam().arguments);

    EXPECT_EQ(result.status, GetParam().status);
    EXPECT_THAT(result.output + result.errors, HasSubstr(GetParam().output));
    EXPECT_THAT(result.output, Not(HasSubstr("successfully")));
    EXPECT_EQ(storedLanRecord(), record);
    EXPECT_EQ(kernelAddresses("eth1"), addresses);
}

TEST_P(RefusedCommand, AnswersADocumentToo)
{
    const Outcome result = nwctl(std::string("--json ") + GetParam().arguments);

    EXPECT_EQ(result.status, GetParam().status);
    const json error = json::parse(result.output).at("error");
    EXPECT_EQ(error.at("status"), GetParam().status);
    EXPECT_EQ(error.at("code").is_null(), *GetParam().json == '\0');
    if (error["code"].is_string()) {
        EXPECT_STRCASEEQ(error["code"].get<std::string>().c_str(), GetParam().json);
    }
}

const Row rows[] = {
    {"NoAddress", "lan set eth1 --ipv4 banana/24", 2, "--ipv4 'banana/24'", ""},
    {"NoOption", "lan set eth1 --ipv9 x", 2, "--ipv9", ""},
    {"NothingToChange", "lan set eth1", 2, "nothing to change", ""},
    {"SegmentOfEth0", "lan set eth1 --ipv4 192.168.10.7/24", 3, "--ipv4 '192.168.10.7/24'",
     "0x1E000A27"},
    {"SegmentOfEth0Unchecked", "lan set eth1 --ipv4 192.168.10.7/24 --no-check", 4,
     "Failed to configure LAN settings for shared port.", "0x1E000A27"},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedCommand, ::testing::ValuesIn(rows),
                         [](const auto &test) { return test.param.name; });

TEST_F(CommandLine, TellsThatTheManagerIsMissing)
{
    stopManager();

    const Outcome result = nwctl("lan set eth1 --ipv4 192.168.20.7/24");

    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.output, HasSubstr("Failed to configure LAN settings for dedicated port."));
    EXPECT_THAT(result.errors, HasSubstr("0x81000013"));
}

TEST_F(CommandLine, TellsThatTheBusIsMissing)
{
    const Outcome result = run("DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/nowhere " NW_BINARY_DIR
                               "/nwctl --json lan set eth1 --ipv4 192.168.20.7/24");

    EXPECT_EQ(result.status, 5);
    const json error = json::parse(result.output).at("error");
    EXPECT_STRCASEEQ(error.at("code").get<std::string>().c_str(), "0x81000013");
    EXPECT_EQ(error.at("sentence"), "Failed to configure LAN settings for dedicated port.");
}

TEST_F(CommandLine, TellsThatThereIsNoConfiguration)
{
    const Outcome result = run("BMC_STATE_DIR=/run/nowhere " NW_BINARY_DIR "/nwctl lan show eth1");

    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.errors, "");
}

} // namespace e2e
