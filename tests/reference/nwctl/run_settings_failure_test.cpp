// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every changing command when it is misused, refused by a check, refused by the network manager, or
 * does not reach it. */
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

struct Rejected {
    const char *name;
    const char *line;
    int status;
    const char *option;
    const char *value;
    const char *reason;
};

class RejectedSetting : public samples::ConfiguredTest,
                        public ::testing::WithParamInterface<Rejected> {};

TEST_P(RejectedSetting, NamesOptionValueAndReasonAndSendsNothing)
{
    const Rejected &row = GetParam();
    for (const char *flag : {" --json", " --json --dry-run"}) {
        const auto ran = samples::runLine(std::string(row.line) + flag);
        const auto error = ran.json()["error"];

        EXPECT_EQ(static_cast<int>(ran.status), row.status);
        EXPECT_EQ(error["status"], row.status);
        EXPECT_EQ(error["option"], row.option);
        EXPECT_EQ(error["value"], row.value);
        EXPECT_EQ(error["reason"], row.reason);
        EXPECT_EQ(error["code"].is_null(), row.status == 2);
    }
    EXPECT_THAT(sentRequests(), IsEmpty());
}

constexpr const char *label = "a host name is made of letters, digits and inner hyphens";
constexpr const char *domain =
    "a domain is made of two labels or more, with points between them: letters, digits and inner "
    "hyphens, 63 characters a label, 255 in all";
constexpr const char *port =
    "no such port, expected eth0, eth1, bond0, dedicated, shared, bond, 0, 1, 2 or channel:N";
constexpr const char *arpValue = "expected none, announcements, responses or both";
#define LONG_NAME "x123456789x123456789x123456789x123456789x123456789x123456789x123"

/* clang-format off */
const Rejected rejectedRows[] = {
    {"HostNameMode",   "hostname set --mode dhcp",                2, "--mode", "dhcp", "expected manual or auto"},
    {"HostName",       "hostname set --name a.b",                 3, "--name", "a.b", label},
    {"HostNameLong",   "hostname set --name " LONG_NAME "4",      3, "--name", LONG_NAME "4", "longer than 63 characters"},
    {"BmcNameHyphen",  "hostname set --bmc-name x-",              3, "--bmc-name", "x-", label},
    {"HostNameTwice",  "hostname set --name a --name b",          2, "--name", "b", "contradicts another value for the same setting"},
    {"DnsPort",        "dns set eth9 --ipv4-mode auto",           2, "PORT", "eth9", port},
    {"DnsMode",        "dns set eth0 --ipv4-mode dhcp",           2, "--ipv4-mode", "dhcp", "expected disabled, manual or auto"},
    {"DnsDomain",      "dns set eth0 --ipv6-domain host",         3, "--ipv6-domain", "host", domain},
    {"DnsServer",      "dns set eth0 --ipv4-server2 ::1",         2, "--ipv4-server2", "::1", "expected an address of the family or off"},
    {"DnsLoopback",    "dns set eth0 --ipv4-server1 127.0.0.53",  3, "--ipv4-server1", "127.0.0.53", "a loopback address"},
    {"DnsLinkLocal",   "dns set eth0 --ipv6-server3 fe80::1",     3, "--ipv6-server3", "fe80::1", "a link-local address"},
    {"LldpState",      "lldp set --state yes",                    2, "--state", "yes", "expected off or on"},
    {"LldpWorkMode",   "lldp set --work-mode both",               2, "--work-mode", "both", "expected tx, rx or txrx"},
    {"LldpReceive",    "lldp set --receive on --state on",        2, "--receive", "on", "contradicts another value for the same setting"},
    {"Mode",           "mode set bond",                           2, "MODE", "bond", "expected separate or active-standby"},
    {"Switchover",     "switchover set 2",                        2, "STATE", "2", "expected off or on"},
    {"ShareLink",      "share-link set 3",                        2, "MODE", "3", "expected dedicated, shared or active-standby"},
    {"Restart",        "restart 3601",                            2, "SECONDS", "3601", "expected a number from 0 to 3600"},
    {"Vlan",           "vlan set eth0 --vlan 0",                  2, "--vlan", "0", "expected off or a number from 1 to 4094"},
    {"VlanPriority",   "vlan set eth0 --vlan-priority 8",         2, "--vlan-priority", "8", "expected a number from 0 to 7"},
    {"Channel",        "vlan set channel:2 --vlan 3",             3, "PORT", "channel:2", "the channel selects no port"},
    {"ChannelText",    "vlan set channel:x --vlan 3",             2, "PORT", "channel:x", "expected channel:N with a channel number"},
    {"ArpControl",     "arp set eth0 --arp-control 3",            2, "--arp-control", "3", arpValue},
    {"ArpInterval",    "arp set eth0 --arp-interval 256",         2, "--arp-interval", "256", "expected a number from 0 to 255"},
    {"ArpSuspend",     "arp suspend eth0 --arp-suspend on",       2, "--arp-suspend", "on", arpValue},
    {"ArpStatus",      "arp status eth5",                         2, "PORT", "eth5", port},
    {"ArpResume",      "arp resume off",                          2, "WHAT", "off", "expected resume or suspend"},
    {"AnPort",         "an set bond0 --auto on",                  3, "PORT", "bond0", "the port has no PHY of its own"},
    {"AnAuto",         "an set eth0 --auto 1",                    2, "--auto", "1", "expected off or on"},
    {"AnDuplex",       "an set eth0 --duplex both",               2, "--duplex", "both", "expected half or full"},
    {"AnSpeed",        "an set eth0 --speed 2500",                2, "--speed", "2500", "expected 10, 100 or 1000"},
    {"Ncsi",           "ncsi set off",                            2, "STATE", "off", "expected on"},
    {"Header",         "lan set eth0 --ipv4-header 64,0",         2, "--ipv4-header", "64,0", "expected TTL,FLAGS,TOS with a number from 0 to 255 each"},
    {"HeaderLong",     "lan set eth0 --ipv4-header 64,0,0,0",     2, "--ipv4-header", "64,0,0,0", "expected TTL,FLAGS,TOS with a number from 0 to 255 each"},
    {"HeaderNumber",   "lan set eth0 --ipv4-header 64,0,256",     2, "--ipv4-header", "64,0,256", "expected TTL,FLAGS,TOS with a number from 0 to 255 each"},
    {"HopLimit",       "lan set eth0 --hop-limit x",              2, "--hop-limit", "x", "expected a number from 0 to 255"},
    {"TrafficClass",   "lan set eth0 --traffic-class -1",         2, "--traffic-class", "-1", "expected a number from 0 to 255"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, RejectedSetting, ::testing::ValuesIn(rejectedRows), fake::RowName());

class NothingGiven : public samples::ConfiguredTest,
                     public ::testing::WithParamInterface<const char *> {};

TEST_P(NothingGiven, IsAUsageError)
{
    const auto ran = samples::runLine(GetParam());

    EXPECT_EQ(ran.status, Exit::usage);
    EXPECT_EQ(ran.err, "nwctl: nothing to change: give at least one setting\n");
    EXPECT_THAT(sentRequests(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, NothingGiven,
                         ::testing::Values("hostname set", "dns set eth0", "lldp set",
                                           "vlan set eth0", "arp set eth0", "arp suspend eth0",
                                           "an set eth0", "lan set eth0"));

struct Failed {
    const char *name;
    const char *line;
    const char *sentence; /* empty: none */
    const char *refusedCode;
    const char *unreachedCode;
    int unreachedStatus;
};

class FailedSetting : public samples::ConfiguredTest, public ::testing::WithParamInterface<Failed> {
protected:
    nlohmann::json sentence() const
    {
        const std::string text = GetParam().sentence;
        return text.empty() ? nlohmann::json() : nlohmann::json(text);
    }
};

TEST_P(FailedSetting, RefusedByTheManager)
{
    platform.answerRpc(fake::RpcAnswer::response(0x1E000004, 0));

    const auto ran = samples::runLine(std::string(GetParam().line) + " --json");
    const auto error = ran.json()["error"];

    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_EQ(error["status"], 4);
    EXPECT_EQ(error["code"], GetParam().refusedCode);
    EXPECT_EQ(error["sentence"], sentence());
}

TEST_P(FailedSetting, NotReachingTheManagerIsNoSuccess)
{
    platform.answerRpc(fake::RpcAnswer::failure(-110));

    const auto ran = samples::runLine(std::string(GetParam().line) + " --json");
    const auto error = ran.json()["error"];

    EXPECT_EQ(static_cast<int>(ran.status), GetParam().unreachedStatus);
    EXPECT_EQ(error["code"], GetParam().unreachedCode);
    EXPECT_EQ(error["sentence"], sentence());
}

TEST_P(FailedSetting, PrintsItsSentenceAloneOnStandardOutput)
{
    platform.answerRpc(fake::RpcAnswer::failure(-110));

    const auto ran = samples::runLine(GetParam().line);

    const std::string text = GetParam().sentence;
    EXPECT_EQ(ran.out, text.empty() ? "" : text + "\n");
    EXPECT_THAT(ran.err, HasSubstr(std::string("result ") + GetParam().unreachedCode));
}

constexpr const char *refused = "0x1e000004";
constexpr const char *unreached = "0x81000013";
constexpr const char *general = "0x81000001";
/* clang-format off */
const Failed failedRows[] = {
    {"HostName",    "hostname set --name bmc-2",            "Failed to configure host name settings.", refused, unreached, 5},
    {"Dns",         "dns set eth0 --ipv4-mode auto",        "Failed to configure DNS settings for dedicated port.", refused, unreached, 5},
    {"Lldp",        "lldp set --state on",                  "Failed to configure LLDP settings.", refused, unreached, 5},
    {"LldpReceive", "lldp set --receive on",                "Failed to configure LLDP settings.", general, general, 4},
    {"Mode",        "mode set separate",                    "Failed to configure the network port mode.", refused, unreached, 5},
    {"Switchover",  "switchover set off",                   "Failed to configure port number switchover.", refused, unreached, 5},
    {"ShareLink",   "share-link set shared",                "", general, general, 4},
    {"Restart",     "restart",                              "", refused, unreached, 5},
    {"Vlan",        "vlan set eth0 --vlan 3",               "Failed to configure LAN settings for dedicated port.", refused, unreached, 5},
    {"Arp",         "arp set eth0 --arp-interval 3",        "Failed to configure LAN settings for dedicated port.", refused, unreached, 5},
    {"ArpSuspend",  "arp suspend eth0 --arp-suspend none",  "Failed to configure LAN settings for dedicated port.", "0x1e000005", "0x1e000005", 4},
    {"ArpStatus",   "arp status eth0",                      "", "0x1e000006", "0x1e000006", 4},
    {"ArpResume",   "arp resume",                           "", "0x1e000007", "0x1e000007", 4},
    {"An",          "an set eth0 --auto on",                "Failed to configure PHY negotiation.", refused, unreached, 5},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, FailedSetting, ::testing::ValuesIn(failedRows), fake::RowName());

TEST_P(FailedSetting, DeniedByTheBusHasNoEffect)
{
    platform.answerRpc(fake::RpcAnswer::failure(-13));
    denyOnBus();

    const auto error = samples::runLine(std::string(GetParam().line) + " --json").json()["error"];

    EXPECT_EQ(error["status"], 5);
    EXPECT_EQ(error["code"], GetParam().unreachedCode);
    EXPECT_EQ(error["reason"], "the bus does not let you ask the network manager; nothing has "
                               "changed");
    EXPECT_EQ(error["option"], nullptr);
}

TEST(EmptyName, IsAUsageError)
{
    for (const char *option : {"--name", "--bmc-name"}) {
        const auto ran = samples::run({"hostname", "set", option, ""});

        EXPECT_EQ(ran.status, Exit::usage);
        EXPECT_EQ(ran.err, std::string("nwctl: ") + option + " '': expected a name\n");
    }
}

class RefusedHere : public samples::ConfiguredTest {};

TEST_F(RefusedHere, LldpReceptionWithoutTheStoredSettings)
{
    platform.failGet(NW_KEY_LLDP, -5);

    const auto ran = samples::runLine("lldp set --receive on --dry-run");

    EXPECT_EQ(ran.status, Exit::internal);
    EXPECT_THAT(ran.err, HasSubstr("cannot read the LLDP settings"));
    EXPECT_THAT(sentRequests(), IsEmpty());
}

TEST_F(RefusedHere, ChannelOfAPortThatIsMissing)
{
    NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
    interfaces.aucPortPresent[0] = 0;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    const auto error = samples::runLine("vlan set channel:1 --vlan off --json").json()["error"];

    EXPECT_EQ(error["status"], 3);
    EXPECT_EQ(error["code"], "0x01000002");
    EXPECT_EQ(error["name"], "NW_ERR_PORT_NOT_SUPPORTED");
}

TEST_F(RefusedHere, NcsiDuringAChange)
{
    platform.setRecord(NW_KEY_NET_STATUS, NW_NET_STATUS_S{1});

    const auto ran = samples::runLine("ncsi set on");

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.err, HasSubstr("a change of the network is in progress"));
    EXPECT_EQ(platform.proc("/proc/sys/tollmere/ncsi/Enable"), std::nullopt);
}

TEST_F(RefusedHere, NcsiBeforeItHasFinishedInitialising)
{
    platform.setProc("/proc/sys/tollmere/ncsi/InitComplete", {'0'});

    const auto ran = samples::runLine("ncsi set on --dry-run");

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.err, HasSubstr("NC-SI has not finished initialising"));
}

struct NcsiRow {
    const char *name;
    const char *kernel; /* null: it shows nothing */
    int write;          /* what it answers a write, which leaves it as it was */
    const char *reason;
    const char *code; /* null: none */
};

class NcsiWithoutEffect : public samples::ConfiguredTest,
                          public ::testing::WithParamInterface<NcsiRow> {
protected:
    void SetUp() override
    {
        if (GetParam().kernel != nullptr) {
            const std::string content = GetParam().kernel;
            platform.setProc(enableFile, {content.begin(), content.end()});
        }
        platform.failProcWrite(enableFile, GetParam().write);
    }

    const std::string enableFile = "/proc/sys/tollmere/ncsi/Enable";
};

TEST_P(NcsiWithoutEffect, IsNoSuccess)
{
    const auto before = platform.proc(enableFile);
    const auto ran = samples::runLine("ncsi set on --json");
    const auto error = ran.json()["error"];

    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_EQ(error["status"], 4);
    EXPECT_EQ(error["option"], "STATE");
    EXPECT_EQ(error["value"], "on");
    EXPECT_EQ(error["reason"], GetParam().reason);
    EXPECT_EQ(error.value("code", nlohmann::json()),
              GetParam().code != nullptr ? nlohmann::json(GetParam().code) : nlohmann::json());
    EXPECT_EQ(platform.proc(enableFile), before);
    EXPECT_THAT(platform.callsTo("NW_WriteProc"), ::testing::SizeIs(1));
}

TEST_P(NcsiWithoutEffect, IsSaidToPeople)
{
    const auto ran = samples::runLine("ncsi set on");

    EXPECT_EQ(ran.out, "");
    EXPECT_THAT(ran.err, ::testing::StartsWith(std::string("nwctl: STATE 'on': ") +
                                               GetParam().reason + "\n"));
}

constexpr const char *stillOff = "the kernel still has NC-SI off";
constexpr const char *notShown = "the kernel does not show whether NC-SI is on";
/* clang-format off */
const NcsiRow ncsiRows[] = {
    {"FailedWrite",        "0",     -13, stillOff, "0x1e000002"},
    {"WriteWithoutEffect", "0",     0,   stillOff, "0x1e000002"},
    {"OtherCharacter",     "2",     0,   stillOff, "0x1e000002"},
    {"EmptyFile",          "",      0,   stillOff, "0x1e000002"},
    {"NoFile",             nullptr, -2,  notShown, nullptr},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, NcsiWithoutEffect, ::testing::ValuesIn(ncsiRows), fake::RowName());

TEST_F(RefusedHere, AnOverlapFromAnArpChangeIsNotLookedFor)
{
    NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
    samples::storeIpv4(record.astPort[1].aucIpv4Addr, "192.168.10.9");
    platform.setRecord(NW_KEY_LAN_CFG, record);

    EXPECT_EQ(samples::runLine("arp set eth1 --arp-interval 3").status, Exit::success);
    EXPECT_EQ(samples::runLine("lan set eth1 --ipv4 on --dry-run").status, Exit::refused);
}

} // namespace
} // namespace nwctl
