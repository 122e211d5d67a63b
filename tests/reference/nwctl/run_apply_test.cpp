// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "apply": the combined change of a file. */
#include <filesystem>
#include <fstream>

#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Apply : public samples::ConfiguredTest {
protected:
    ~Apply() override
    {
        std::filesystem::remove(file);
    }

    samples::Ran apply(const std::string &document, std::vector<std::string> flags = {}) const
    {
        std::ofstream(file) << document;
        std::vector<std::string> arguments{"apply", file.string()};
        arguments.insert(arguments.end(), flags.begin(), flags.end());
        return samples::run(arguments);
    }

    nlohmann::json error(const std::string &document) const
    {
        return apply(document, {"--json"}).json()["error"];
    }

    const std::filesystem::path file =
        std::filesystem::path(::testing::TempDir()) /
        (std::string("nwctl-apply-") +
         ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".json");
};

constexpr const char *everything = R"({
    "mode": "separate",
    "lan": {"eth0": {"ipv4": ["on", "192.168.30.7/24"], "vlan": 300},
            "1": {"lan": true, "arp-interval": 7}},
    "dns": {"eth1": {"ipv4-mode": "manual", "ipv4-server1": "10.0.0.53", "ipv6-domain": "off"}}})";

TEST_F(Apply, SendsOneRequestWithEveryPart)
{
    const auto ran = apply(everything);

    constexpr std::size_t lan = 16;
    constexpr std::size_t dns = 522;
    constexpr std::size_t mode = 2446;
    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_THAT(sentRequests(),
                ElementsAre(samples::requestOf(12, {
                                                       {0, {0x26}},
                                                       {lan + 4, {0x1A, 0x80, 1}},
                                                       {lan + 12, {1, 0x10}},
                                                       {lan + 32 + 4, {1, 192, 168, 30, 7}},
                                                       {lan + 32 + 9, {255, 255, 255, 0}},
                                                       {lan + 32 + 151, {1, 0, 0, 0x2C, 1}},
                                                       {lan + 190 + 1, {1}},
                                                       {lan + 190 + 149, {7}},
                                                       {dns + 6, {0x05, 0x02}},
                                                       {dns + 12 + 592 + 4, {1, 10, 0, 0, 53}},
                                                       {mode + 4, {1}},
                                                   })));
}

TEST_F(Apply, PrintsTheSentencesOfEveryPart)
{
    EXPECT_EQ(
        apply(everything).out,
        "LAN settings configured successfully for dedicated port, IPv4: Enabled, IPv4 "
        "address: 192.168.30.7, IPv4 mask: 255.255.255.0, VLAN: Enabled, VLAN ID: 300."
        "LAN settings configured successfully for shared port, LAN: Enabled, ARP interval: 7.\n"
        "DNS settings configured successfully for shared port, IPv4 DNS mode: Manual, IPv4 DNS "
        "server 1: 192.168.20.53, IPv6 DNS domain suffix: .\n"
        "Configured network port mode successfully, network port mode: Normal.\n");
}

TEST_F(Apply, DryRunTellsTheSettingsByTheirKeys)
{
    const auto ran = apply(everything, {"--dry-run"});

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out,
              "Dry run, nothing was sent. Would change several settings at once (command 12): mode "
              "'separate', lan.eth0.ipv4 'on', lan.eth0.ipv4 '192.168.30.7/24', lan.eth0.vlan "
              "'300', lan.1.lan 'on', lan.1.arp-interval '7', dns.eth1.ipv4-mode 'manual', "
              "dns.eth1.ipv4-server1 '10.0.0.53', dns.eth1.ipv6-domain 'off'.\n");
    EXPECT_THAT(sentRequests(), IsEmpty());
}

TEST_F(Apply, SendsAPartAlone)
{
    EXPECT_EQ(apply(R"({"mode": "active-standby"})").status, Exit::success);
    EXPECT_THAT(sentRequests(), ElementsAre(samples::requestOf(12, {{0, {0x20}}, {2450, {1, 1}}})));
}

TEST_F(Apply, ShowsTheFailureOfThePartThatFailed)
{
    platform.answerRpc(fake::RpcAnswer::response(0x1E00001E, 1, {0x04}));

    const auto failure = error(everything);

    EXPECT_EQ(failure["status"], 4);
    EXPECT_EQ(failure["code"], "0x1e00001e");
    EXPECT_EQ(failure["sentence"], "Failed to configure DNS settings for shared port.");
}

TEST_F(Apply, TellsWhenTheManagerCannotBeReached)
{
    platform.answerRpc(fake::RpcAnswer::failure(-110));

    EXPECT_EQ(error(everything)["status"], 5);
}

TEST_F(Apply, ChecksAllPortsTogether)
{
    EXPECT_EQ(apply(R"({"lan": {"eth0": {"ipv4": "192.168.20.9/24"}}})").status, Exit::refused);
    EXPECT_EQ(apply(R"({"lan": {"eth0": {"ipv4": "192.168.20.9/24"},
                                "eth1": {"ipv4": "192.168.10.9/24"}}})")
                  .status,
              Exit::success);
    const auto failure = error(R"({"lan": {"eth0": {"ipv4": "10.7.0.9/24"},
                                           "eth1": {"ipv4": "10.7.0.8/24"}}})");
    EXPECT_EQ(failure["status"], 3);
    EXPECT_EQ(failure["option"], "lan");
    EXPECT_EQ(failure["code"], "0x1e000a27");
}

TEST_F(Apply, ChecksAsTheNewModeWillHaveIt)
{
    EXPECT_EQ(apply(R"({"mode": "active-standby",
                        "lan": {"bond0": {"ipv4": ["on", "192.168.20.9/24"], "lan": true}}})")
                  .status,
              Exit::success);
}

TEST_F(Apply, RefusesWhatIsNestedTooDeeply)
{
    constexpr std::size_t depth = 100000;
    const std::string deep = std::string(depth, '[') + std::string(depth, ']');

    EXPECT_EQ(error(R"({"mode": )" + deep + "}")["reason"], "nested too deeply");
    EXPECT_EQ(error(R"({"lan": {"eth1": {"vlan": )" + deep + "}}}")["reason"], "nested too deeply");
}

TEST_F(Apply, RefusesWhatStandsBehindAZeroByte)
{
    using namespace std::string_literals;
    EXPECT_EQ(error("{\"mode\": \"separate\"}\0{"s)["reason"], "not JSON");
}

TEST_F(Apply, RefusesAnAddressWithAZeroByte)
{
    EXPECT_EQ(error(R"({"lan": {"eth1": {"ipv4": "192.168.20.9\u0000x/24"}}})")["reason"],
              "expected ADDR/LEN, on or off");
}

struct Misuse {
    const char *name;
    const char *document;
    int status;
    const char *option;
    const char *value;
    const char *reason;
};

class MisusedFile : public samples::ConfiguredTest, public ::testing::WithParamInterface<Misuse> {};

TEST_P(MisusedFile, NamesKeyValueAndReason)
{
    const Misuse &row = GetParam();
    const std::filesystem::path path = std::filesystem::path(::testing::TempDir()) /
                                       (std::string("nwctl-misused-") + row.name + ".json");
    std::ofstream(path) << row.document;
    const auto ran = samples::run({"apply", path.string(), "--json"});
    std::filesystem::remove(path);
    const auto failure = ran.json()["error"];

    EXPECT_EQ(static_cast<int>(ran.status), row.status);
    EXPECT_EQ(failure["option"], row.option);
    EXPECT_EQ(failure["value"], row.value);
    EXPECT_EQ(failure["reason"], row.reason);
    EXPECT_THAT(sentRequests(), IsEmpty());
}

constexpr const char *noPort = "no such port, expected eth0, eth1, bond0, 0, 1, 2 or channel:N";
constexpr const char *noText = "expected a text, a whole number, true, false or a list of these";
constexpr const char *nothing = "nothing to change: give at least one setting";
/* clang-format off */
const Misuse misuses[] = {
    {"NoJson",      R"({"mode": )",                             2, "FILE", "byte 10", "not JSON"},
    {"BigNumber",   R"({"mode": 1e999})",                       2, "FILE", "", "holds a number that is out of range"},
    {"NoObject",    R"(["mode"])",                              2, "FILE", R"(["mode"])", "expected an object"},
    {"TwiceAKey",   R"({"mode": "separate", "mode": "x"})",     2, "FILE", "mode", "the key is given twice"},
    {"UnknownPart", R"({"vlan": 3})",                           2, "vlan", "3", "no such part, expected lan, dns or mode"},
    {"ModeValue",   R"({"mode": "bond"})",                      2, "mode", "bond", "expected separate or active-standby"},
    {"ModeNumber",  R"({"mode": 1})",                           2, "mode", "1", "expected a text"},
    {"LanText",     R"({"lan": "eth0"})",                       2, "lan", "eth0", "expected an object"},
    {"Port",        R"({"lan": {"eth7": {"lan": true}}})",      2, "lan", "eth7", noPort},
    {"PortTwice",   R"({"lan": {"eth1": {"lan": true}, "1": {"lan": true}}})", 2, "lan", "1", "the port is given twice"},
    {"PortText",    R"({"dns": {"eth0": "manual"}})",           2, "dns.eth0", "manual", "expected an object"},
    {"Setting",     R"({"lan": {"eth0": {"ipv5": "x"}}})",      2, "lan.eth0.ipv5", "x", "no such setting"},
    {"SettingNull", R"({"lan": {"eth0": {"vlan": null}}})",     2, "lan.eth0.vlan", "null", noText},
    {"SettingReal", R"({"lan": {"eth0": {"vlan": 3.5}}})",      2, "lan.eth0.vlan", "3.5", noText},
    {"SettingList", R"({"lan": {"eth0": {"ipv4": ["on", []]}}})", 2, "lan.eth0.ipv4", "[]", noText},
    {"Value",       R"({"lan": {"eth0": {"vlan": 4095}}})",     2, "lan.eth0.vlan", "4095", "expected off or a number from 1 to 4094"},
    {"Refused",     R"({"lan": {"eth0": {"ipv4": "127.0.0.1/8"}}})", 3, "lan.eth0.ipv4", "127.0.0.1/8", "a loopback address"},
    {"DnsRefused",  R"({"dns": {"eth0": {"ipv4-server1": "0.1.2.3"}}})", 3, "dns.eth0.ipv4-server1", "0.1.2.3", "an address of network 0"},
    {"EmptyPort",   R"({"lan": {"eth0": {}}})",                 2, "lan.eth0", "", nothing},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, MisusedFile, ::testing::ValuesIn(misuses), fake::RowName());

TEST_F(Apply, RefusesADocumentWithoutSettings)
{
    const auto ran = apply("{}");

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_THAT(ran.err, HasSubstr("nothing to change"));
}

TEST_F(Apply, StopsReadingAFileWithoutEnd)
{
    const auto ran = samples::run({"apply", "/dev/zero"});

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.err, "nwctl: FILE '/dev/zero': the file is longer than 1 MiB\n");
}

TEST_F(Apply, NamesADirectory)
{
    const auto ran = samples::run({"apply", "/tmp"});

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.err, "nwctl: FILE '/tmp': the file cannot be read or is empty\n");
}

TEST_F(Apply, NamesAFileThatCannotBeRead)
{
    const auto ran = samples::run({"apply", "/nowhere/settings.json"});

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.err,
              "nwctl: FILE '/nowhere/settings.json': the file cannot be read or is empty\n");
}

} // namespace
} // namespace nwctl
