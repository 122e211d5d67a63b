// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "network_mng/store.h"
#include "nwctl/command.hpp"
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct Misuse {
    const char *name;
    std::vector<std::string> arguments;
    nlohmann::json option;
    nlohmann::json value;
    const char *reason;
};

class Misused : public ::testing::TestWithParam<Misuse> {};

TEST_P(Misused, NamesOptionValueAndReason)
{
    const Misuse &row = GetParam();
    auto arguments = row.arguments;
    arguments.insert(arguments.begin(), "--json");

    const auto ran = samples::run(arguments);
    const auto error = ran.json()["error"];

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(error["status"], 2);
    EXPECT_EQ(error["option"], row.option);
    EXPECT_EQ(error["value"], row.value);
    EXPECT_EQ(error["reason"], row.reason);
    EXPECT_EQ(error["code"], nullptr);
}

TEST_P(Misused, SaysSoOnStandardErrorAlone)
{
    const auto ran = samples::run(GetParam().arguments);

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_THAT(ran.err, StartsWith("nwctl: "));
    EXPECT_THAT(ran.err, HasSubstr(GetParam().reason));
}

/* clang-format off */
const Misuse misuses[] = {
    {"Nothing",        {},                                          nullptr,    nullptr, "A subcommand is required"},
    {"NoCommand",      {"lan"},                                     nullptr,    nullptr, "A subcommand is required"},
    {"UnknownCommand", {"frob"},                                    "argument", "frob",  "not expected here"},
    {"UnknownInGroup", {"lan", "frob"},                             "argument", "frob",  "not expected here"},
    {"ExtraArgument",  {"lan", "show", "eth0", "eth1"},             "argument", "eth1",  "not expected here"},
    {"BareValue",      {"lan", "set", "eth0", "10.0.0.2/8"},        "argument", "10.0.0.2/8", "not expected here"},
    {"UnknownOption",  {"lan", "set", "eth0", "--ipv5", "x"},       "--ipv5",   "x",     "no such option"},
    {"UnknownLast",    {"lan", "set", "eth0", "--ipv5"},            "--ipv5",   "",      "no such option"},
    {"NoPort",         {"lan", "set"},                              "PORT",     "",      "is missing"},
    {"NoText",         {"check", "mac"},                            "TEXT",     "",      "is missing"},
    {"NoValue",        {"lan", "set", "eth0", "--vlan"},            "--vlan",   "",      "1 required ID|off missing"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, Misused, ::testing::ValuesIn(misuses), fake::RowName());

TEST(Version, IsPrinted)
{
    const auto ran = samples::run({"--version"});

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_THAT(ran.out, ::testing::MatchesRegex("nwctl [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Help, ListsTheExitStatuses)
{
    const auto ran = samples::run({"--help"});

    EXPECT_EQ(ran.status, Exit::success);
    for (const char *text : {"0  success", "1  internal", "2  usage error", "3  refused by a check",
                             "4  refused by the network manager", "5  the network manager cannot",
                             "6  what was asked for was not found"}) {
        EXPECT_THAT(ran.out, HasSubstr(text));
    }
}

TEST(Help, OfEveryCommandHasAnExample)
{
    for (const Command &command : commands()) {
        const auto ran = samples::runLine(command.group + " " + command.name + " --help");

        EXPECT_EQ(ran.status, Exit::success);
        EXPECT_THAT(ran.out, HasSubstr(command.description));
        EXPECT_THAT(ran.out, HasSubstr("nwctl " + command.example));
    }
}

TEST(Help, OfLanSetListsEveryOption)
{
    const auto ran = samples::run({"lan", "set", "--help"});

    for (const char *option : {"--lan on|off",
                               "--ipv4 ADDR/LEN|on|off",
                               "--ipv4-gateway ADDR|off",
                               "--ipv4-origin static|dhcp",
                               "--ipv4-route1 DEST/LEN,GATEWAY|off",
                               "--ipv4-route2 DEST/LEN,GATEWAY|off",
                               "--ipv6-route1 DEST/LEN,GATEWAY|off",
                               "--ipv6-route2 DEST/LEN,GATEWAY|off",
                               "--no-probe",
                               "--ipv6 ADDR/LEN|on|off",
                               "--ipv6-gateway ADDR|off",
                               "--ipv6-origin static|dhcp|slaac",
                               "--vlan ID|off",
                               "--vlan-priority N",
                               "--hop-limit N",
                               "--traffic-class N",
                               "--ipv4-header TTL,FLAGS,TOS",
                               "--arp-interval N",
                               "--arp-control none|announcements|responses|both",
                               "--no-check",
                               "--dry-run"}) {
        EXPECT_THAT(ran.out, HasSubstr(option));
    }
}

/* Their examples need real message queues and are tried on them. */
bool needsQueue(const Command &command)
{
    return command.group == "queue" || command.group == "heartbeat";
}

/* In a directory that holds the file of the example that names one. */
class Example : public samples::ConfiguredTest {
protected:
    Example()
    {
        connectChassis();
        platform.setRecord(NW_KEY_NET_STATUS, NW_NET_STATUS_S{});
        std::filesystem::current_path(::testing::TempDir());
        answerAsked(R"({"result": 0, "reason": "", "setting": null, "changes": [], "notes": []})");
        std::ofstream("network-settings.json") << R"({"mode": "separate"})";
    }
    ~Example() override
    {
        std::filesystem::remove("network-settings.json");
    }
};

TEST_F(Example, OfEveryCommandWorks)
{
    /* These ask the network and the system's own files. */
    const std::string elsewhere[] = {"resolve", "gateway-mac", "ntp", "bmc-name"};
    for (const Command &command : commands()) {
        if (!needsQueue(command) && std::ranges::count(elsewhere, command.name) == 0) {
            const auto ran = samples::runLine(command.example);
            EXPECT_EQ(ran.status, Exit::success) << command.example << ": " << ran.err;
        }
    }
}

} // namespace
} // namespace nwctl
