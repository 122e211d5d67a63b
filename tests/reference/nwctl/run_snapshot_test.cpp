// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a command reads of several records was true at one moment. */
#include <filesystem>
#include <fstream>
#include <set>

#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using namespace nlohmann::literals;

/* How the records were read, out of the platform's calls. */
struct Reading {
    std::set<std::uint32_t> keys;
    std::set<unsigned> snapshots; /* by number, those in which something was read */
    unsigned torn = 0;            /* reads in no snapshot, but for those after a request */
    unsigned depthAtRequests = 0; /* of the snapshots open while the manager works */
    unsigned depth = 0;           /* at the end */
};

Reading readingOf(const std::vector<fake::Call> &calls)
{
    Reading reading;
    unsigned number = 0;
    bool isSent = false;
    for (const fake::Call &call : calls) {
        if (call.name == "BMC_BeginSnapshot") {
            number += reading.depth++ == 0 ? 1U : 0U;
        } else if (call.name == "BMC_EndSnapshot") {
            --reading.depth;
        } else if (call.name == "MRPC_Call") {
            isSent = true;
            reading.depthAtRequests += reading.depth;
        } else if (call.name == "DB_Get" && reading.depth != 0) {
            reading.keys.insert(call.key);
            reading.snapshots.insert(number);
        } else if (call.name == "DB_Get" && !isSent) {
            reading.keys.insert(call.key);
            ++reading.torn;
        }
    }
    return reading;
}

/* A board with a chassis manager besides. */
class SnapshotTest : public samples::ConfiguredTest {
protected:
    SnapshotTest()
    {
        connectChassis();
    }

    void expectOneMoment(const std::string &line)
    {
        SCOPED_TRACE(line);
        platform.clearCalls();
        const auto ran = samples::runLine(line);
        const Reading reading = readingOf(platform.calls());

        EXPECT_THAT(ran.err, Not(HasSubstr("cannot read")));
        EXPECT_GT(reading.keys.size(), 1U) << "there is nothing that could be torn";
        EXPECT_EQ(reading.torn, 0U);
        EXPECT_EQ(reading.snapshots.size(), 1U);
        EXPECT_EQ(reading.depth, 0U);
        EXPECT_EQ(reading.depthAtRequests, 0U);
    }
};

struct Row {
    const char *name;
    const char *line;
};

class OneMoment : public SnapshotTest, public ::testing::WithParamInterface<Row> {};

TEST_P(OneMoment, HoldsAllThatIsRead)
{
    expectOneMoment(GetParam().line);
}

/* clang-format off */
const Row rows[] = {
    {"Status",        "status"},
    {"Export",        "export"},
    {"LanShow",       "lan show"},
    {"LanShowPort",   "lan show eth1"},
    {"DnsShow",       "dns show"},
    {"VlanShow",      "vlan show"},
    {"ArpShow",       "arp show"},
    {"AnShow",        "an show"},
    {"ShareLinkShow", "share-link show"},
    {"NcsiShow",      "ncsi show"},
    {"CheckRoutes",   "check routes eth1"},
    {"GatewayMac",    "gateway-mac eth1"},
    {"Ntp",           "ntp eth1"},
    {"Temperatures",  "chassis temps"},
    {"Fans",          "chassis fans"},
    {"LanDry",        "lan set eth1 --ipv4 192.168.20.7/24 --dry-run"},
    {"VlanDry",       "vlan set eth1 --vlan 30 --dry-run"},
    {"HostNameDry",   "hostname set --bmc-name x --dry-run"},
    {"DnsDry",        "dns set eth1 --ipv4-mode auto --dry-run"},
    {"LldpDry",       "lldp set --state off --dry-run"},
    {"ReceiveDry",    "lldp set --receive off --dry-run"},
    {"ModeDry",       "mode set active-standby --dry-run"},
    {"SwitchoverDry", "switchover set on --dry-run"},
    {"ArpDry",        "arp set eth1 --arp-control both --dry-run"},
    {"AnDry",         "an set eth1 --auto off --dry-run"},
    {"ShareLinkDry",  "share-link set dedicated --dry-run"},
    {"SuspendDry",    "arp suspend eth1 --arp-suspend both --dry-run"},
    {"ResumeDry",     "arp resume --dry-run"},
    {"NcsiDry",       "ncsi set on --dry-run"},
    /* What is checked before it is sent; the library then reads for itself what has become of it. */
    {"Lan",           "lan set eth1 --ipv4 192.168.20.7/24 --no-probe"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, OneMoment, ::testing::ValuesIn(rows), fake::RowName());

class OneMomentOfADocument : public SnapshotTest {
protected:
    OneMomentOfADocument()
    {
        std::ofstream(file) << R"({"lan": {"eth1": {"vlan": 30}}})";
    }
    ~OneMomentOfADocument() override
    {
        std::filesystem::remove(file);
    }

    const std::filesystem::path file =
        std::filesystem::path(::testing::TempDir()) / "nwctl-one-moment.json";
};

TEST_F(OneMomentOfADocument, HoldsAllThatItIsComparedWith)
{
    expectOneMoment("apply " + file.string() + " --dry-run");
    answerAsked(R"({"result": 0, "reason": "", "setting": null, "changes": [], "notes": []})");
    expectOneMoment("apply " + file.string());
}

struct FailedRow {
    const char *name;
    const char *line;
    const char *reason;
};

class NoMoment : public SnapshotTest, public ::testing::WithParamInterface<FailedRow> {};

/* The database's code is told as if the first record had failed, and nothing is read beside it. */
TEST_P(NoMoment, ReadsNothing)
{
    constexpr int code = -30798;
    platform.failSnapshot(code);

    const auto ran = samples::runLine(std::string(GetParam().line) + " --json");
    const Reading reading = readingOf(platform.calls());
    const auto document = ran.json();

    EXPECT_EQ(ran.status, Exit::internal);
    EXPECT_EQ(document.value("/error/reason"_json_pointer, ""), GetParam().reason) << ran.out;
    EXPECT_FALSE(document.contains("ports"));
    EXPECT_EQ(reading.torn, 0U);
    EXPECT_EQ(reading.depth, 0U);
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* clang-format off */
const FailedRow failedRows[] = {
    {"Status",       "status",                                     "cannot read the interface state"},
    {"Export",       "export",                                     "cannot read the interface state"},
    {"Lan",          "lan show",                                   "cannot read the interface state"},
    {"Ncsi",         "ncsi show",                                  "cannot read the interface state"},
    {"CheckRoutes",  "check routes eth1",                          "cannot read the interface state"},
    {"ShareLink",    "share-link show",                            "cannot read the shared-link mode"},
    {"HostName",     "hostname show",                              "cannot read the host name"},
    {"LanDry",       "lan set eth1 --vlan 30 --dry-run",           "cannot read the interface state"},
    {"HostNameDry",  "hostname set --bmc-name x --dry-run",        "cannot read the interface state"},
    {"LanSet",       "lan set eth1 --vlan 30",                     "cannot read the interface state"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, NoMoment, ::testing::ValuesIn(failedRows), fake::RowName());

} // namespace
} // namespace nwctl
