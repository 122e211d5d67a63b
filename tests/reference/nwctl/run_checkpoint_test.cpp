// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Checkpoints: those of a single change and those over several commands. */
#include <filesystem>
#include <fstream>

#include "samples.hpp"
#include "settings/manager_bytes.hpp"

namespace nwctl {
namespace {

using samples::Asked;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr NW_RESULT pendingAlready = 0x1E00081C;
constexpr NW_RESULT noCheckpoint = 0x1E000A1C;

/* Ports that have a link and answer ARP requests. */
class Checkpoint : public samples::ConfiguredTest {
protected:
    Checkpoint()
    {
        NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
        for (NW_LAN_CFG_PORT_S &entry : record.astPort) {
            bmc::settings::ArpBytes arp{};
            arp.control = bmc::settings::arpAll;
            bmc::settings::putArp(entry, arp);
        }
        platform.setRecord(NW_KEY_LAN_CFG, record);
        plug({"eth0", "eth1", "bond0"});
    }
};

/* All that change something. */
const char *const changes[] = {
    "lan set eth1 --ipv4 192.168.20.9/24 --no-probe",
    "vlan set eth1 --vlan 30",
    "arp set eth1 --arp-interval 10",
    "hostname set --name bmc-2",
    "dns set eth1 --ipv4-server1 10.0.0.53",
    "lldp set --state off",
    "an set eth0 --auto on",
    "mode set separate",
    "switchover set on",
    "share-link set shared",
};

} // namespace

TEST_F(Checkpoint, IsSetBeforeAnyChange)
{
    std::vector<Asked> expected;
    for (const std::string change : changes) {
        const auto ran = samples::runLine(change + " --confirm-within 60");
        EXPECT_EQ(ran.status, Exit::success) << change << ran.err;
        EXPECT_THAT(ran.out, HasSubstr("Goes back in 58 s unless you confirm it, from any session: "
                                       "nwctl confirm t0ken\n"));
        expected.push_back({"Checkpoint", "60"});
    }
    EXPECT_EQ(asked(), expected);
}

TEST_F(Checkpoint, IsToldInJson)
{
    const auto ran = samples::runLine("--json hostname set --name bmc-2 --confirm-within 10");
    EXPECT_EQ(ran.json()["confirm"],
              nlohmann::json({{"seconds", 58}, {"token", "t0ken"}, {"because", nullptr}}));
}

/* The manager sets it along with the change. */
TEST_F(Checkpoint, OfADocument)
{
    const std::string file = ::testing::TempDir() + "checkpoint.json";
    std::ofstream(file) << R"({"lan": {"eth1": {"vlan": 31}}})";
    answerAsked(R"({"result": 0, "reason": "", "setting": null, "changes": [], "notes": [],
                    "confirm": {"seconds": 60, "token": "t0ken"}})");
    const auto ran = samples::run({"apply", file, "--confirm-within", "60"});
    EXPECT_EQ(ran.status, Exit::success) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Goes back in 58 s unless"));
    samples::run({"apply", file});
    samples::run({"apply", file, "--force"});
    comeInOver("eth1");
    samples::run({"apply", file});
    samples::run({"apply", file, "--no-confirm"});
    setPending(42);
    samples::run({"apply", file});
    using Options = samples::ApplyOptions;
    EXPECT_THAT(applyOptions(),
                ElementsAre(Options{false, 60}, Options{false, 0}, Options{true, 0},
                            Options{false, 120}, Options{false, 0}, Options{false, 0}));
    std::filesystem::remove(file);
}

/* Nothing is sent when there is no checkpoint. */
TEST_F(Checkpoint, ThatIsRefusedKeepsTheChangeBack)
{
    refuseCheckpoints(pendingAlready);
    const auto ran = samples::runLine("hostname set --name bmc-2 --confirm-within 60");
    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_THAT(ran.err, HasSubstr("NW_MANAGER_CHECKPOINT_PENDING"));
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* A change that is refused leaves no checkpoint. */
TEST_F(Checkpoint, EndsWithAChangeThatIsRefused)
{
    platform.answerRpc(fake::RpcAnswer::response(0x1E000018, 0));
    const auto ran = samples::runLine("hostname set --name bmc-2 --confirm-within 60");
    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_THAT(asked(), ElementsAre(Asked{"Checkpoint", "60"}, Asked{"Confirm", "t0ken"}));
}

/* Of several requests some may have been carried out. */
TEST_F(Checkpoint, GoesBackWithAPartOfAChange)
{
    platform.answerRpc(fake::RpcAnswer::response(NW_OK, 0));
    platform.answerRpc(fake::RpcAnswer::response(0x1E000002, 0));
    const auto ran = samples::runLine("share-link set shared --confirm-within 60");
    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_THAT(asked(), ElementsAre(Asked{"Checkpoint", "60"}, Asked{"Revert", "t0ken"}));
}

/* One without an answer may still take effect. */
TEST_F(Checkpoint, StaysWithoutAnAnswer)
{
    platform.answerRpc(fake::RpcAnswer::failure(-110));
    const auto ran = samples::runLine("hostname set --name bmc-2 --confirm-within 60");
    EXPECT_EQ(ran.status, Exit::transport);
    EXPECT_THAT(asked(), ElementsAre(Asked{"Checkpoint", "60"}));
}

TEST_F(Checkpoint, NoneForADryRunWhichTellsOfIt)
{
    auto ran = samples::runLine("hostname set --name bmc-2 --confirm-within 60 --dry-run");
    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_THAT(ran.out, HasSubstr("It would go back after 60 s unless it is confirmed.\n"));
    comeInOver("eth1");
    ran = samples::runLine("vlan set eth1 --vlan 30 --dry-run");
    EXPECT_THAT(ran.out, HasSubstr("You come in over eth1, to 192.168.20.2. It would go back after "
                                   "120 s unless it is confirmed.\n"));
    ran = samples::runLine("vlan set eth1 --vlan 30 --dry-run --no-confirm");
    EXPECT_THAT(ran.out, Not(HasSubstr("go back")));
    EXPECT_EQ(samples::runLine("vlan set eth1 --vlan 30 --dry-run --confirm-within 5").status,
              Exit::usage);
    EXPECT_THAT(asked(), IsEmpty());
}

TEST_F(Checkpoint, TimesOutOfBounds)
{
    for (const std::string time : {"0", "9", "3601", "-1", "ten", "1e2", "99999999999999999999"}) {
        EXPECT_EQ(samples::runLine("hostname set --name bmc-2 --confirm-within " + time).status,
                  Exit::usage);
        EXPECT_EQ(samples::run({"checkpoint", time}).status, Exit::usage);
    }
    EXPECT_THAT(asked(), IsEmpty());
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* Another's: who changes something is told what becomes of it. */
TEST_F(Checkpoint, OfAnother)
{
    EXPECT_THAT(samples::runLine("hostname set --name bmc-2").out, Not(HasSubstr("checkpoint")));
    setPending(42);
    EXPECT_THAT(samples::runLine("hostname set --name bmc-2").out,
                HasSubstr("Belongs to the checkpoint that is pending: goes back in 42 s unless it "
                          "is confirmed.\n"));
    EXPECT_THAT(samples::runLine("arp resume").out, HasSubstr("goes back in 42 s"));
    EXPECT_THAT(samples::runLine("restart").out, Not(HasSubstr("goes back")));
    EXPECT_EQ(samples::runLine("--json hostname set --name bmc-2").json()["pending"],
              nlohmann::json({{"secondsLeft", 42}}));
}

TEST_F(Checkpoint, Commands)
{
    EXPECT_THAT(samples::runLine("checkpoint 120").out, HasSubstr("nwctl confirm t0ken\n"));
    EXPECT_EQ(samples::runLine("--json checkpoint 120").json(),
              nlohmann::json({{"seconds", 120}, {"token", "t0ken"}}));
    EXPECT_EQ(samples::runLine("confirm").out,
              "Confirmed: what has changed since the checkpoint stays.\n");
    EXPECT_EQ(samples::runLine("--json confirm x").json(), nlohmann::json({{"confirmed", true}}));
    EXPECT_EQ(samples::runLine("revert").out,
              "Taken back: what held before the checkpoint holds again.\n");
    EXPECT_EQ(samples::runLine("--json revert x").json(), nlohmann::json({{"reverted", true}}));
    EXPECT_THAT(asked(), ElementsAre(Asked{"Checkpoint", "120"}, Asked{"Checkpoint", "120"},
                                     Asked{"Confirm", ""}, Asked{"Confirm", "x"},
                                     Asked{"Revert", ""}, Asked{"Revert", "x"}));
}

TEST_F(Checkpoint, CommandsThatAreRefused)
{
    refuseCheckpoints(noCheckpoint);
    for (const std::string command : {"checkpoint 60", "confirm", "revert x"}) {
        const auto ran = samples::runLine(command);
        EXPECT_EQ(ran.status, Exit::manager);
        EXPECT_EQ(ran.out, "");
        EXPECT_THAT(ran.err, HasSubstr("NW_MANAGER_NO_CHECKPOINT"));
    }
}

/* It is none of what was meant by a variable that is not set. */
TEST_F(Checkpoint, EmptyToken)
{
    for (const char *command : {"confirm", "revert"}) {
        EXPECT_EQ(samples::run({command, ""}).status, Exit::usage);
    }
    EXPECT_THAT(asked(), IsEmpty());
}

/* Its time may end in the middle of a change. */
TEST_F(Checkpoint, OfAnotherThatEndsMeanwhile)
{
    setPending(1);
    platform.answerRpc([this](const fake::Call &) {
        endPending();
        return fake::RpcAnswer::response(NW_OK, 0);
    });
    EXPECT_THAT(samples::runLine("hostname set --name bmc-2").out,
                HasSubstr("Belonged to a checkpoint that has ended meanwhile; what is stored now "
                          "tells whether it stays.\n"));
}

TEST_F(Checkpoint, Pending)
{
    EXPECT_EQ(samples::runLine("pending").out, "Nothing waits to be confirmed.\n");
    EXPECT_EQ(
        samples::runLine("--json pending").json(),
        nlohmann::json(
            {{"pending", false}, {"secondsLeft", nullptr}, {"changes", nlohmann::json::array()}}));
    setPending(87);
    EXPECT_EQ(samples::runLine("pending").out,
              "What has changed since the checkpoint goes back in 87 s unless it is confirmed:\n"
              "  hostname.name: a -> b\n");
    const auto json = samples::runLine("--json pending").json();
    EXPECT_EQ(json["pending"], true);
    EXPECT_EQ(json["secondsLeft"], 87);
    EXPECT_EQ(json["changes"][0]["setting"], "hostname.name");
}

namespace {

/* The port that the session comes in over, and changes that touch it or don't. */
struct DangerRow {
    const char *name;
    const char *change;
    bool isDangerous;
};

const DangerRow dangers[] = {
    {"Address", "lan set eth1 --ipv4 192.168.20.9/24 --no-probe", true},
    {"Vlan", "vlan set eth1 --vlan 30", true},
    {"Arp", "arp set eth1 --arp-control announcements", true},
    {"OtherPort", "lan set eth0 --ipv4 192.168.10.9/24 --no-probe", false},
    {"NothingNew", "lan set eth1 --ipv4 192.168.20.2/24 --no-probe", false},
    {"HostName", "hostname set --name bmc-2", false},
    {"LinkMode", "an set eth1 --auto off --speed 100 --duplex full", true},
    {"Switchover", "switchover set on", true},
    {"ShareLink", "share-link set dedicated", true},
};

class Danger : public Checkpoint, public ::testing::WithParamInterface<DangerRow> {};

} // namespace

TEST_P(Danger, HasTimeToConfirm)
{
    const DangerRow &row = GetParam();
    comeInOver("eth1");
    const auto ran = samples::runLine(row.change);
    EXPECT_EQ(ran.status, Exit::success) << ran.err;
    if (row.isDangerous) {
        EXPECT_THAT(ran.out,
                    HasSubstr("You come in over eth1, to 192.168.20.2.\nGoes back in 58 s unless "
                              "you confirm it, from any session: nwctl confirm t0ken\n"));
        EXPECT_THAT(asked(), ElementsAre(Asked{"Checkpoint", "120"}));
    } else {
        EXPECT_THAT(asked(), IsEmpty());
    }
}

TEST_P(Danger, IsAcceptedByWhoeverSaysSo)
{
    comeInOver("eth1");
    const auto ran = samples::runLine(std::string(GetParam().change) + " --no-confirm");
    EXPECT_EQ(ran.status, Exit::success) << ran.err;
    EXPECT_THAT(asked(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, Danger, ::testing::ValuesIn(dangers),
                         [](const auto &test) { return test.param.name; });

TEST_F(Checkpoint, SessionOverAVlan)
{
    comeInOver("eth1.30");
    EXPECT_THAT(samples::runLine("vlan set eth1 --vlan 31").out, HasSubstr("over eth1.30"));
}

/* Others may be connected, too. */
TEST_F(Checkpoint, ConnectionsThatWouldBreak)
{
    connectTo(bmc::ipv4(samples::lanRecord().astPort[1].aucIpv4Addr));
    EXPECT_THAT(samples::runLine("vlan set eth1 --vlan 31").out, Not(HasSubstr("confirm")));
    EXPECT_THAT(samples::runLine("lan set eth1 --ipv4 192.168.20.9/24 --no-probe").out,
                HasSubstr("Somebody is connected to 192.168.20.2, which the change takes away.\n"
                          "Goes back in 58 s"));
}

/* The change goes back with the checkpoint that is there, unless one of its own was asked for. */
TEST_F(Checkpoint, DangerWithinAnother)
{
    comeInOver("eth1");
    setPending(42);
    refuseCheckpoints(pendingAlready);
    const auto ran = samples::runLine("vlan set eth1 --vlan 31");
    EXPECT_EQ(ran.status, Exit::success) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("goes back in 42 s"));
    EXPECT_EQ(samples::runLine("vlan set eth1 --vlan 31 --confirm-within 60").status,
              Exit::manager);
}

TEST_F(Checkpoint, BothWays)
{
    const auto ran = samples::runLine("vlan set eth1 --vlan 31 --confirm-within 60 --no-confirm");
    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* Nobody could come in any more. */
TEST_F(Checkpoint, LastWayIn)
{
    for (const std::string change : {"mode set active-standby", "share-link set active-standby"}) {
        const auto ran = samples::runLine(change);
        EXPECT_EQ(ran.status, Exit::refused) << change;
        EXPECT_THAT(ran.err, HasSubstr("NW_MANAGER_LOCKS_OUT"));
        EXPECT_EQ(samples::runLine(change + " --dry-run").status, Exit::refused);
    }
    for (const std::string change :
         {"lan set eth0 --lan off", "lan set eth0 --ipv4-enabled off",
          "arp set eth0 --arp-control none", "lan set eth0 --ipv4 off"}) {
        EXPECT_EQ(samples::runLine(change + " --dry-run").status, Exit::success) << change;
        plug({"eth0"});
        EXPECT_EQ(samples::runLine(change).status, Exit::refused) << change;
        EXPECT_EQ(samples::runLine(change + " --force --dry-run").status, Exit::success);
        plug({"eth0", "eth1"});
    }
    EXPECT_THAT(sentRequests(), IsEmpty());
    EXPECT_EQ(samples::runLine("mode set active-standby --force").status, Exit::success);
    EXPECT_THAT(sentRequests(), ::testing::SizeIs(1));
}

} // namespace nwctl
