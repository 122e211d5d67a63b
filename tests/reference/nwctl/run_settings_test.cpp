// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every changing command: what it sends, and what it prints. */
#include "samples.hpp"

namespace nwctl {
namespace {

using samples::Patch;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

struct Row {
    const char *name;
    const char *line;
    std::vector<samples::Request> requests;
    const char *out;
    nlohmann::json port; /* of the JSON answer */
};

class SentSettings : public samples::ConfiguredTest, public ::testing::WithParamInterface<Row> {};

TEST_P(SentSettings, GoOutWholeAndAreToldInASentence)
{
    const auto ran = samples::runLine(GetParam().line);

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, GetParam().out);
    EXPECT_THAT(ran.err, IsEmpty());
    EXPECT_THAT(sentRequests(), ElementsAreArray(GetParam().requests));
}

TEST_P(SentSettings, AnswerADocumentWithTheSameSentences)
{
    const auto document = samples::runLine(std::string(GetParam().line) + " --json").json();
    std::string sentences;
    for (const auto &sentence : document["sentences"]) {
        sentences += sentence.get<std::string>() + "\n";
    }

    EXPECT_EQ(document["port"], GetParam().port);
    EXPECT_TRUE(std::string(GetParam().out).starts_with(sentences));
    EXPECT_THAT(sentRequests(), ElementsAreArray(GetParam().requests));
}

TEST_P(SentSettings, AreOnlyToldByADryRun)
{
    const auto ran = samples::runLine(std::string(GetParam().line) + " --dry-run");

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_THAT(ran.out, ::testing::StartsWith("Dry run, nothing was sent. Would "));
    EXPECT_THAT(ran.out,
                ::testing::HasSubstr("command " + std::to_string(GetParam().requests[0].command)));
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* Offsets of a port's entry in the LAN request and in the DNS request. */
constexpr std::size_t lanEntry(unsigned port, std::size_t offset)
{
    return 32 + 158 * port + offset;
}
constexpr std::size_t dnsEntry(unsigned port, std::size_t offset)
{
    return 12 + 592 * port + offset;
}

using samples::requestOf;
using samples::textBytes;
/* clang-format off */
const Row rows[] = {
    {"HostName", "hostname set --mode manual --name bmc-2 --bmc-name rack-8",
     {requestOf(0, {{4, {7}}, {6, {5}}, {7, textBytes("bmc-2")}, {71, textBytes("rack-8")}})},
     "Host name set successfully, host name mode: Manual, host name BMC: bmc-1, BMC name: rack-7.\n", nullptr},
    {"HostNameMode", "hostname set --mode auto", {requestOf(0, {{4, {1, 1}}})},
     "Host name set successfully, host name mode: Manual, host name BMC: bmc-1.\n", nullptr},
    {"DnsIpv4", "dns set eth1 --ipv4-mode manual --ipv4-server1 10.0.0.53 --ipv4-server3 off --ipv4-domain a.example",
     {requestOf(1, {{6, {0x17, 0}}, {dnsEntry(1, 4), {1, 10, 0, 0, 53}}, {dnsEntry(1, 20), textBytes("a.example")}})},
     "DNS settings configured successfully for shared port, IPv4 DNS mode: Manual, IPv4 DNS domain suffix: "
     "rack1.example.net, IPv4 DNS server 1: 192.168.20.53, IPv4 DNS server 3: 192.168.20.54.\n", "eth1"},
    {"DnsIpv6", "dns set 0 --ipv6-mode auto --ipv6-server2 2001:db8::53 --ipv6-domain off",
     {requestOf(1, {{4, {0, 0x0B}}, {dnsEntry(0, 280), {2}},
                    {dnsEntry(0, 297), {0x20, 1, 0xD, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x53}}})},
     "DNS settings configured successfully for dedicated port, IPv6 DNS mode: Auto, IPv6 DNS domain suffix: , "
     "IPv6 DNS server 2: .\n"
     "Note: ipv6-mode of eth0, dedicated port is stored, but brings no servers\n", "eth0"},
    {"Lldp", "lldp set --state on --work-mode rx", {requestOf(2, {{4, {3, 1, 2}}})},
     "Configured LLDP settings successfully, LLDP state: Enabled, LLDP work mode: RX.\n", nullptr},
    {"LldpState", "lldp set --state off", {requestOf(2, {{4, {1}}})},
     "Configured LLDP settings successfully, LLDP state: Disabled.\n", nullptr},
    {"LldpReceive", "lldp set --receive off", {requestOf(2, {{4, {3, 1, 1}}})},
     "Configured LLDP settings successfully, LLDP state: Enabled, LLDP work mode: TX.\n", nullptr},
    {"Mode", "mode set active-standby", {requestOf(4, {{4, {1, 1}}})},
     "Configured network port mode successfully, network port mode: Active/standby.\n", nullptr},
    {"Separate", "mode set separate", {requestOf(4, {{4, {1}}})},
     "Configured network port mode successfully, network port mode: Normal.\n", nullptr},
    {"Vlan", "vlan set eth1 --vlan 300 --vlan-priority 5",
     {requestOf(3, {{12, {0, 0x80, 3}}, {lanEntry(1, 151), {1, 0, 0, 0x2C, 1, 0, 5}}})},
     "LAN settings configured successfully for shared port, VLAN: Enabled, VLAN ID: 300, VLAN priority: 5.\n", "eth1"},
    {"VlanOff", "vlan set eth0 --vlan off", {requestOf(3, {{4, {0, 0x80}}})},
     "LAN settings configured successfully for dedicated port, VLAN: Disabled.\n", "eth0"},
    {"Arp", "arp set eth0 --arp-control both --arp-interval 200 --arp-suspend none",
     {requestOf(3, {{4, {0, 0x38}}, {lanEntry(0, 148), {3, 200}}})},
     "LAN settings configured successfully for dedicated port, ARP control: enable BMC-generated Gratuitous ARPs, "
     "enable BMC-generated ARP responses, ARP interval: 200, ARP suspend: do not suspend BMC-generated Gratuitous "
     "ARPs while the Watchdog Timer is running, do not suspend BMC-generated ARP responses while the Watchdog Timer "
     "is running.\n", "eth0"},
    {"ArpSuspend", "arp suspend eth0 --arp-suspend responses", {requestOf(5, {{0, {0, 2}}})},
     "LAN settings configured successfully for dedicated port, ARP suspend: do not suspend BMC-generated Gratuitous "
     "ARPs while the Watchdog Timer is running, suspend BMC-generated ARP responses while Watchdog Timer is "
     "running.\nARP suspended while the watchdog timer runs: none\n", "eth0"},
    {"ArpStatus", "arp status eth1", {requestOf(6, {{0, {1}}})}, "ARP suspended while the watchdog timer runs: none\n", "eth1"},
    {"ArpResume", "arp resume", {requestOf(7, {})},
     "Done: ARP suspensions of all ports; the operation log has no sentence.\n", nullptr},
    {"ArpSuspendAgain", "arp resume suspend", {requestOf(7, {{0, {1}}})},
     "Done: ARP suspensions of all ports; the operation log has no sentence.\n", nullptr},
    {"An", "an set eth0 --auto off --duplex full --speed 1000",
     {requestOf(9, {{4, {7}}, {16, {0, 1, 2}}})},
     "Configured auto-negotiation for the dedicated network port successfully, auto-negotiation: Disabled, "
     "duplex: full, speed: 2.\n", "eth0"},
    {"AnAuto", "an set eth1 --auto on", {requestOf(9, {{8, {1}}, {22, {1}}})},
     "Configured auto-negotiation for the shared network port successfully, auto-negotiation: Enabled.\n", "eth1"},
    {"Switchover", "switchover set on", {requestOf(11, {{4, {1, 1}}})},
     "Configured port number switchover successfully, port number switchover: Enabled.\n", nullptr},
    {"ShareLinkDedicated", "share-link set dedicated",
     {requestOf(4, {{4, {1}}}), requestOf(3, {{12, {1}}})},
     "Done: shared-link mode; the operation log has no sentence.\n", nullptr},
    {"ShareLinkShared", "share-link set shared",
     {requestOf(4, {{4, {1}}}), requestOf(3, {{12, {1}}, {lanEntry(1, 1), {1}}})},
     "Done: shared-link mode; the operation log has no sentence.\n", nullptr},
    {"ShareLinkBond", "share-link set active-standby",
     {requestOf(3, {{12, {1}}, {lanEntry(1, 1), {1}}}), requestOf(4, {{4, {1, 1}}})},
     "Done: shared-link mode; the operation log has no sentence.\n", nullptr},
    {"Restart", "restart 300", {requestOf(8, {{0, {0x2C, 1}}})},
     "Done: network restart; the operation log has no sentence.\n", nullptr},
    {"LanFurther", "lan set eth1 --hop-limit 64 --traffic-class 8 --ipv4-header 64,2,16",
     {requestOf(3, {{12, {0, 0, 0, 7}}, {lanEntry(1, 17), {64, 2, 16}}, {lanEntry(1, 146), {64, 8}}})},
     "LAN settings configured successfully for shared port, TTL: 0x40, Header Flags: 0x02, Precedence: 0x00, Type Of "
     "Service: 0x10, Static Hop Limit: 64, Traffic Class: 8.\n"
     "Note: ipv4-header of eth1, shared port is stored without effect\n"
     "Note: traffic-class of eth1, shared port is stored without effect\n", "eth1"},
};
/* clang-format on */
INSTANTIATE_TEST_SUITE_P(Rows, SentSettings, ::testing::ValuesIn(rows), fake::RowName());

class Answered : public samples::ConfiguredTest {};

TEST_F(Answered, ArpStatusIsReadFromTheResponse)
{
    platform.answerRpc(fake::RpcAnswer::response(0, 1, {0, 0, 0, 0, 1, 2}));

    EXPECT_EQ(samples::runLine("arp status eth1").out,
              "ARP suspended while the watchdog timer runs: announcements\n");
    EXPECT_EQ(samples::runLine("arp suspend eth1 --arp-suspend both --json").json()["suspended"],
              "responses");
}

TEST_F(Answered, NoSentenceWhenTheSettingCannotBeReadBack)
{
    platform.failGet(NW_KEY_HOSTNAME, -5);

    const auto ran = samples::runLine("hostname set --name bmc-2");

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, "Done: host name settings; the operation log has no sentence.\n");
}

TEST_F(Answered, NcsiIsTurnedOnInTheKernel)
{
    const auto ran = samples::runLine("ncsi set on");

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(platform.proc("/proc/sys/tollmere/ncsi/Enable"), fake::Bytes{'1'});
    EXPECT_THAT(sentRequests(), IsEmpty());
}

/* What counts is what the kernel shows, not how it answered the write. */
TEST_F(Answered, NcsiThatIsOnStaysOn)
{
    platform.setProc("/proc/sys/tollmere/ncsi/Enable", {'1', '\n'});
    platform.failProcWrite("/proc/sys/tollmere/ncsi/Enable", -13);

    EXPECT_EQ(samples::runLine("ncsi set on").out,
              "Done: NC-SI in the kernel; the operation log has no sentence.\n");
}

TEST_F(Answered, NcsiStaysOffInADryRun)
{
    const auto ran = samples::runLine("ncsi set on --dry-run");

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(platform.proc("/proc/sys/tollmere/ncsi/Enable"), std::nullopt);
}

TEST_F(Answered, WhatIsStoredAloneIsTold)
{
    const nlohmann::json notes{"ipv6-origin of eth1, shared port is stored without effect"};
    const std::string line = "lan set eth1 --ipv4-origin static --ipv6-origin dhcp --no-check";

    EXPECT_EQ(samples::runLine(line + " --json").json()["notes"], notes);
    EXPECT_EQ(samples::runLine(line + " --dry-run --json").json()["notes"], notes);
    EXPECT_FALSE(samples::runLine("vlan set eth1 --vlan off --json").json().contains("notes"));
    EXPECT_THAT(samples::runLine("dns set eth1 --ipv4-mode auto").out,
                ::testing::HasSubstr(
                    "Note: ipv4-mode of eth1, shared port is stored, but brings no servers\n"));
}

TEST_F(Answered, PortOfAChannelIsTakenFromTheMode)
{
    NW_IFC_STATE_DB_INFO_S interfaces = samples::interfaces();
    interfaces.aucChannel[1] = 8;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    EXPECT_EQ(samples::runLine("vlan set channel:8 --vlan off --json").json()["port"], "eth1");
    EXPECT_EQ(samples::runLine("vlan set channel:1 --vlan off --json").json()["port"], "eth0");
}

} // namespace
} // namespace nwctl
