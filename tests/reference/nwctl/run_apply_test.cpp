// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "apply": a document as the manager gets it, what it answers, and what a dry run foresees. */
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

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
    "mode": "separate", "switchover": false,
    "hostname": {"name": "bmc-2"}, "lldp": {"work-mode": "rx"},
    "lan": {"eth0": {"ipv4": ["on", "192.168.30.7/24"], "vlan": 300},
            "shared": {"lan": true, "arp-interval": 7}},
    "dns": {"eth1": {"ipv4-mode": "manual", "ipv4-server1": "10.0.0.53", "ipv6-domain": "off"}},
    "an": {"0": {"auto": false}}})";

constexpr const char *twoChanges = R"({"result": 0, "reason": "", "setting": null, "changes": [
    {"setting": "lan.shared.vlan", "port": "eth1", "before": null, "after": 30},
    {"setting": "hostname.name", "port": null, "before": "bmc-1", "after": "bmc-2"},
    {"setting": "lan.shared.lan", "port": "eth1", "before": true, "after": false},
    {"setting": "lan.shared.colour", "port": "eth1", "before": 1, "after": "red"}],
    "notes": ["eth0 has another name"]})";
constexpr const char *noChange =
    R"({"result": 0, "reason": "", "setting": null, "changes": [], "notes": []})";

TEST_F(Apply, HandsTheDocumentToTheManagerAsItIs)
{
    answerAsked(noChange);

    EXPECT_EQ(apply(everything).status, Exit::success);
    EXPECT_THAT(asked(), ElementsAre(samples::Asked{"Apply", everything}));
    EXPECT_THAT(sentRequests(), IsEmpty());
}

TEST_F(Apply, TakesADocumentFromStandardInput)
{
    answerAsked(noChange);
    std::istringstream input(R"({"mode": "separate"})");
    std::streambuf *before = std::cin.rdbuf(input.rdbuf());

    const auto ran = samples::run({"apply", "-"});
    std::cin.rdbuf(before);

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_THAT(asked(), ElementsAre(samples::Asked{"Apply", R"({"mode": "separate"})"}));
}

TEST_F(Apply, PrintsWhatHasChanged)
{
    answerAsked(twoChanges);

    EXPECT_EQ(apply(everything).out, "Changed:\n"
                                     "  lan.shared.vlan: off -> 30\n"
                                     "  hostname.name: bmc-1 -> bmc-2\n"
                                     "  lan.shared.lan: on -> off\n"
                                     "  lan.shared.colour: 1 -> red\n"
                                     "Note: eth0 has another name\n");
}

TEST_F(Apply, AnswersWithTheSameChangesInJson)
{
    answerAsked(twoChanges);

    const auto answer = apply(everything, {"--json"}).json();

    EXPECT_EQ(answer["changes"], nlohmann::json::parse(twoChanges)["changes"]);
    EXPECT_EQ(answer["notes"], nlohmann::json::array({"eth0 has another name"}));
}

TEST_F(Apply, SaysThatNothingHasChanged)
{
    answerAsked(noChange);

    EXPECT_EQ(apply(everything).out,
              "Nothing has changed: the stored configuration is as the document says.\n");
}

TEST_F(Apply, SaysThatWhatIsStoredWasMadeSoAgain)
{
    answerAsked(R"({"result": 0, "reason": null, "setting": null, "changes": [], "mended": true,
        "notes": ["was not as stored, made so again: eth1: add address 192.168.20.2/24"]})");

    EXPECT_EQ(apply(everything).out,
              "Nothing stored has changed, but kernel or system were not so and have been made so "
              "again:\n"
              "Note: was not as stored, made so again: eth1: add address 192.168.20.2/24\n");
    EXPECT_EQ(apply(everything, {"--json"}).json()["mended"], true);
    answerAsked(noChange);
    EXPECT_EQ(apply(everything, {"--json"}).json()["mended"], false);
}

TEST_F(Apply, ShowsTheManagersRefusal)
{
    answerAsked(R"({"result": 503316481, "reason": "eth1: the cable is red",
        "setting": "lan.eth1.vlan", "changes": [], "notes": []})");

    const auto failure = error(everything);

    EXPECT_EQ(failure["status"], 4);
    EXPECT_EQ(failure["code"], "0x1e000001");
    EXPECT_EQ(failure["option"], "lan.eth1.vlan");
    EXPECT_EQ(failure["reason"], "the network manager refused the change: eth1: the cable is red");
}

TEST_F(Apply, TellsWhenTheManagerCannotBeReached)
{
    EXPECT_EQ(error(everything)["status"], 5);
}

TEST_F(Apply, TellsWhenTheAnswerIsNone)
{
    for (const char *answer : {"", "{", "[]", "{}", R"({"result": "0"})",
                               R"({"result": 0, "changes": [{}], "notes": []})"}) {
        answerAsked(answer);
        EXPECT_EQ(error(everything)["status"], 5) << answer;
    }
}

TEST_F(Apply, DryRunTellsOldAndNew)
{
    const auto ran = apply(everything, {"--dry-run"});

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, "Dry run, nothing was sent. Would change:\n"
                       "  hostname.name: bmc-1 -> bmc-2\n"
                       "  lldp.work-mode: txrx -> rx\n"
                       "  lan.dedicated.ipv4: 192.168.10.2/24 -> 192.168.30.7/24\n"
                       "  lan.dedicated.vlan: off -> 300\n"
                       "  lan.shared.arp-interval: 0 -> 7\n"
                       "  dns.shared.ipv4-server1: 192.168.20.53 -> 10.0.0.53\n"
                       "  an.dedicated.auto: none -> off\n"
                       "  an.dedicated.duplex: none -> half\n"
                       "  an.dedicated.speed: none -> 100\n");
    EXPECT_THAT(asked(), IsEmpty());
}

TEST_F(Apply, DryRunAnswersInJson)
{
    const auto answer = apply(R"({"lan": {"eth1": {"vlan": 30}}})", {"--dry-run", "--json"}).json();

    EXPECT_EQ(answer, nlohmann::json::parse(R"({"dryRun": true, "notes": [], "changes": [
        {"setting": "lan.shared.vlan", "port": "eth1", "before": null, "after": 30}]})"));
}

TEST_F(Apply, DryRunSaysThatNothingWouldChange)
{
    EXPECT_EQ(apply(R"({"mode": "separate", "lan": {"eth1": {"lan": true}}})", {"--dry-run"}).out,
              "Dry run, nothing was sent. Would change nothing: the stored configuration is as the "
              "document says.\n");
}

TEST_F(Apply, DryRunNotesWhatHasNoEffect)
{
    EXPECT_THAT(apply(R"({"lan": {"bond": {"vlan": 30}}})", {"--dry-run"}).out,
                HasSubstr("Note: settings of bond0, bond have no effect in network mode "
                          "separate\n"));
}

TEST_F(Apply, DryRunForeseesWhatTheKernelRefuses)
{
    const char *document = R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:20::2"}}})";

    const auto failure = apply(document, {"--dry-run", "--json"}).json()["error"];

    EXPECT_EQ(failure["status"], 3);
    EXPECT_EQ(failure["option"], "lan.eth1.ipv6-gateway");
    EXPECT_EQ(failure["name"], "NW_MANAGER_KERNEL_REFUSED");
    answerAsked(noChange);
    EXPECT_EQ(apply(document).status, Exit::success);
}

TEST_F(Apply, ChecksAllPortsTogetherBeforeItAsks)
{
    answerAsked(noChange);

    EXPECT_EQ(apply(R"({"lan": {"eth0": {"ipv4": "192.168.20.9/24"}}})").status, Exit::refused);
    EXPECT_THAT(asked(), IsEmpty());
    EXPECT_EQ(apply(R"({"lan": {"eth0": {"ipv4": "192.168.20.9/24"},
                                "eth1": {"ipv4": "192.168.10.9/24", "ipv4-gateway": "off"}}})")
                  .status,
              Exit::success);
    const auto failure = error(R"({"lan": {"eth0": {"ipv4": "10.7.0.9/24"},
                                           "eth1": {"ipv4": "10.7.0.8/24",
                                                    "ipv4-gateway": "off"}}})");
    EXPECT_EQ(failure["status"], 3);
    EXPECT_EQ(failure["option"], "lan.eth0.ipv4");
    EXPECT_EQ(failure["value"], "10.7.0.9/24");
    EXPECT_EQ(failure["reason"], "the change would make two networks overlap");
    EXPECT_EQ(failure["code"], "0x1e000a27");
}

TEST_F(Apply, ChecksWhatTheManagerChecks)
{
    for (const std::vector<std::string> &flags :
         {std::vector<std::string>{"--json"}, std::vector<std::string>{"--json", "--dry-run"}}) {
        const auto failure =
            apply(R"({"lan": {"eth1": {"ipv4-gateway": "10.9.9.9"}}})", flags).json()["error"];

        EXPECT_EQ(failure["status"], 3);
        EXPECT_EQ(failure["option"], "lan.eth1.ipv4-gateway");
        EXPECT_EQ(failure["reason"], "the network manager would refuse the change");
        EXPECT_EQ(failure["code"], "0x1e00000e");
    }
}

TEST_F(Apply, ChecksAsTheNewModeWillHaveIt)
{
    answerAsked(noChange);

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
              "expected ADDR/LEN, on, off or none");
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

constexpr const char *noPort =
    "no such port, expected eth0, eth1, bond0, dedicated, shared, bond, 0, 1, 2 or channel:N";
constexpr const char *noText =
    "expected a text, a whole number, true, false, null or a list of these";
/* clang-format off */
const Misuse misuses[] = {
    {"NoJson",      R"({"mode": )",                             2, "FILE", "byte 10", "not JSON"},
    {"BigNumber",   R"({"mode": 1e999})",                       2, "FILE", "", "holds a number that is out of range"},
    {"NoObject",    R"(["mode"])",                              2, "FILE", R"(["mode"])", "expected an object"},
    {"TwiceAKey",   R"({"mode": "separate", "mode": "x"})",     2, "FILE", "mode", "the key is given twice"},
    {"UnknownPart", R"({"vlan": 3})",                           2, "vlan", "3", "no such part, expected ports, mode, switchover, hostname, lldp, lan, dns, an"},
    {"ModeValue",   R"({"mode": "bond"})",                      2, "mode", "bond", "expected separate or active-standby"},
    {"ModeNumber",  R"({"mode": 1})",                           2, "mode", "1", "expected separate or active-standby"},
    {"LanText",     R"({"lan": "eth0"})",                       2, "lan", "eth0", "expected an object"},
    {"Port",        R"({"lan": {"eth7": {"lan": true}}})",      2, "lan.eth7", R"({"lan":true})", noPort},
    {"PortTwice",   R"({"lan": {"eth1": {"lan": true}, "1": {"lan": true}}})", 2, "lan.1", R"({"lan":true})", "the port is given twice"},
    {"PortText",    R"({"dns": {"eth0": "manual"}})",           2, "dns.eth0", "manual", "expected an object"},
    {"Setting",     R"({"lan": {"eth0": {"ipv5": "x"}}})",      2, "lan.eth0.ipv5", "x", "no such setting"},
    {"SettingNull", R"({"lan": {"eth0": {"lan": null}}})",      2, "lan.eth0.lan", "null", "has to have a value"},
    {"SettingReal", R"({"lan": {"eth0": {"vlan": 3.5}}})",      2, "lan.eth0.vlan", "3.5", noText},
    {"SettingList", R"({"lan": {"eth0": {"ipv4": ["on", []]}}})", 2, "lan.eth0.ipv4", "[]", noText},
    {"Value",       R"({"lan": {"eth0": {"vlan": 4095}}})",     2, "lan.eth0.vlan", "4095", "expected off or a number from 1 to 4094"},
    {"Refused",     R"({"lan": {"eth0": {"ipv4": "127.0.0.1/8"}}})", 3, "lan.eth0.ipv4", "127.0.0.1/8", "a loopback address"},
    {"DnsRefused",  R"({"dns": {"eth0": {"ipv4-server1": "0.1.2.3"}}})", 3, "dns.eth0.ipv4-server1", "0.1.2.3", "an address of network 0"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, MisusedFile, ::testing::ValuesIn(misuses), fake::RowName());

TEST_F(Apply, RefusesADocumentWithoutSettings)
{
    for (const char *document : {"{}", R"({"lan": {}})", R"({"lan": {"eth0": {}}})"}) {
        const auto ran = apply(document);

        EXPECT_EQ(ran.status, Exit::usage);
        EXPECT_EQ(ran.err, "nwctl: nothing to change: give at least one setting\n");
    }
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
    EXPECT_EQ(ran.err, "nwctl: FILE '/tmp': cannot be read: Is a directory\n");
}

TEST_F(Apply, NamesAFileThatCannotBeRead)
{
    const auto ran = samples::run({"apply", "/nowhere/settings.json"});

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.err,
              "nwctl: FILE '/nowhere/settings.json': cannot be read: No such file or directory\n");
}

TEST_F(Apply, NamesAnEmptyFile)
{
    EXPECT_EQ(apply("").err, "nwctl: FILE '" + file.string() + "': the file is empty\n");
    EXPECT_EQ(samples::run({"apply", "/dev/null"}).err,
              "nwctl: FILE '/dev/null': the file is empty\n");
}

TEST_F(Apply, CutsALongKeyShort)
{
    const std::string key(500000, 'k');

    const auto failure = error(R"({"lan": {"eth1": {")" + key + R"(": 1}}})");
    EXPECT_EQ(failure["option"], "lan.eth1." + std::string(1015, 'k') + "...");
    EXPECT_EQ(failure["reason"], "no such setting");

    const auto ran = apply(R"({"lan": {"eth1": {"vlan": ")" + key + R"("}}})");
    EXPECT_EQ(ran.err, "nwctl: lan.eth1.vlan '" + std::string(1024, 'k') +
                           "...': expected off or a number from 1 to 4094\n");
}

} // namespace
} // namespace nwctl
