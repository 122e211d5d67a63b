// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>

#include "network_mng/chassis.h"
#include "nwctl/failure.hpp"
#include "nwctl/manager_client.hpp"

namespace samples {

namespace {

ConfiguredTest *running = nullptr;

/* A first run leaves objects that live until the process ends, the option parser's and the table's.
 * They are nothing that a test leaves behind. */
class FirstRun : public ::testing::Environment {
    void SetUp() override
    {
        run({"--version"});
    }
};

[[maybe_unused]] const auto *const firstRun =
    ::testing::AddGlobalTestEnvironment(new FirstRun); /* owned by the framework */

constexpr std::uint32_t noInterface = 0x7FFFFFF0;

} // namespace

void storeIpv4(std::uint8_t (&field)[NW_IPV4_SIZE], const char *text)
{
    ASSERT_EQ(inet_pton(AF_INET, text, field), 1) << text;
}

void storeIpv6(std::uint8_t (&field)[NW_IPV6_SIZE], const char *text)
{
    ASSERT_EQ(inet_pton(AF_INET6, text, field), 1) << text;
}

NW_IFC_STATE_DB_INFO_S interfaces()
{
    NW_IFC_STATE_DB_INFO_S record{};
    const char *names[] = {"eth0", "eth1", "bond0"};
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        record.aucPortPresent[port] = 1;
        record.auiIfIndex[port] = noInterface + port;
        record.aucChannel[port] = static_cast<std::uint8_t>(port + 1);
        std::strcpy(record.acIfcName[port], names[port]);
    }
    return record;
}

NW_LAN_CFG_DB_INFO_S lanRecord()
{
    NW_LAN_CFG_DB_INFO_S record{};
    const NW_IFC_STATE_DB_INFO_S ports = interfaces();
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        NW_LAN_CFG_PORT_S &entry = record.astPort[port];
        std::strcpy(entry.szIfcName, ports.acIfcName[port]);
        std::memcpy(entry.aucMacAddr, "\x52\x54\x00\x12\x34\x56", NW_MAC_SIZE);
        entry.aucMacAddr[5] = static_cast<std::uint8_t>(0x56 + port);
        storeIpv4(entry.aucIpv4Mask, "255.255.255.0");
    }
    for (NW_LAN_CFG_PORT_S *entry : {&record.astPort[0], &record.astPort[1]}) {
        entry->ucLanEnable = 1;
        entry->ucIpv4Enable = 1;
        entry->ucIpv4Type = 1;
    }
    storeIpv4(record.astPort[0].aucIpv4Addr, "192.168.10.2");
    storeIpv4(record.astPort[1].aucIpv4Addr, "192.168.20.2");
    storeIpv4(record.astPort[1].aucIpv4Gateway, "192.168.20.1");
    record.astPort[1].ucIpv6Enable = 1;
    record.astPort[1].ucIpv6Type = 1;
    record.astPort[1].ucIpv6Prefix = 64;
    storeIpv6(record.astPort[1].aucIpv6Addr, "2001:db8:20::2");
    return record;
}

NW_HOSTNAME_DB_INFO_S hostNameRecord()
{
    NW_HOSTNAME_DB_INFO_S record{};
    std::strcpy(record.szBmcHostName, "bmc-1");
    std::strcpy(record.szBmcName, "rack-7");
    return record;
}

NW_DNS_DB_INFO_S dnsRecord()
{
    NW_DNS_DB_INFO_S record{};
    record.astPort[0].ucIpv4DnsMode = 2;
    record.astPort[0].ucIpv6DnsMode = 2;
    record.astPort[1].ucIpv4DnsMode = 1;
    storeIpv4(record.astPort[1].aucIpv4DnsServer[0], "192.168.20.53");
    storeIpv4(record.astPort[1].aucIpv4DnsServer[2], "192.168.20.54");
    std::strcpy(record.astPort[1].szIpv4DnsDomain, "rack1.example.net");
    return record;
}

nlohmann::json Ran::json() const
{
    const auto document = nlohmann::json::parse(out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << out;
    return document;
}

Ran run(const std::vector<std::string> &arguments)
{
    std::ostringstream out;
    std::ostringstream err;
    const auto status = nwctl::run(arguments, out, err);
    return {status, out.str(), err.str()};
}

Ran runLine(const std::string &line)
{
    std::istringstream words(line);
    return run({std::istream_iterator<std::string>(words), {}});
}

Request requestOf(unsigned command, const std::vector<Patch> &patches)
{
    Request request{command, fake::Bytes(NW_RPC_PAYLOAD_SIZE)};
    for (const Patch &patch : patches) {
        std::ranges::copy(patch.bytes,
                          request.payload.begin() + static_cast<std::ptrdiff_t>(patch.offset));
    }
    return request;
}

fake::Bytes textBytes(const std::string &text)
{
    return {text.begin(), text.end()};
}

ConfiguredTest::ConfiguredTest()
{
    running = this;
    platform.setRecord(NW_KEY_IFC_STATE, interfaces());
    platform.setRecord(NW_KEY_LAN_CFG, lanRecord());
    platform.setRecord(NW_KEY_HOSTNAME, hostNameRecord());
    platform.setRecord(NW_KEY_DNS, dnsRecord());
    platform.setRecord(NW_KEY_NET_STATUS, NW_NET_STATUS_S{});

    NW_LLDP_DB_INFO_S lldp{};
    lldp.ucLldpEnable = 1;
    lldp.ucLldpWorkMode = 3;
    platform.setRecord(NW_KEY_LLDP, lldp);

    platform.setRecord(NW_KEY_AN_CFG, NW_AN_CFG_DB_INFO_S{{{0, 0, 1, {}}, {}, {}}});
    platform.setAnStatus(NW_PORT_ETH1, {1, 1, 2});

    NW_NCSI_DB_INFO_S ncsi{};
    ncsi.ucAutoPort = 1;
    ncsi.ucNicIndex = 1;
    ncsi.ucChannel = 2;
    platform.setRecord(NW_KEY_NCSI, ncsi);
    platform.setCapability("SharePort", "ChannelIdOffset", std::uint16_t{1});
    platform.setProc("/proc/sys/tollmere/ncsi/InitComplete", {'1'});
}

ConfiguredTest::~ConfiguredTest()
{
    running = nullptr;
}

void ConfiguredTest::connectChassis()
{
    NW_OA_NETWORK_DB_INFO_S link{};
    link.ucConnected = 1;
    platform.setRecord(NW_KEY_OA_NETWORK, link);
    platform.setRecord(NW_KEY_OA_TEMPERATURE, NW_OA_TEMPERA_INFO_S{});
    platform.setRecord(NW_KEY_OCP_TEMPERATURE, NW_ALL_OCP_TEMP_S{});
    platform.setRecord(NW_KEY_FAN, NW_ALL_FAN_INFO_S{});
}

std::string ConfiguredTest::applyByManager(const std::string &document, bool isForced,
                                           unsigned seconds)
{
    asked_.push_back({"Apply", document});
    options_.push_back({isForced, seconds});
    if (answer_.empty()) {
        throw nwctl::Failure(nwctl::Exit::transport, "", "", "no answer", NW_ERR_RPC_TRANSPORT);
    }
    return answer_;
}

nwctl::CheckpointState ConfiguredTest::checkpointState(const std::string &token) const
{
    EXPECT_EQ(token, "t0ken");
    return {"pending", 58};
}

std::string ConfiguredTest::setCheckpoint(unsigned seconds)
{
    asked_.push_back({"Checkpoint", std::to_string(seconds)});
    if (refusal_ != NW_OK) {
        throw nwctl::Failure(nwctl::Exit::manager, "", "", "refused", refusal_);
    }
    return "t0ken";
}

void ConfiguredTest::endCheckpoint(nwctl::CheckpointEnd end, const std::string &token)
{
    asked_.push_back({end == nwctl::CheckpointEnd::confirm ? "Confirm" : "Revert", token});
    if (refusal_ != NW_OK) {
        throw nwctl::Failure(nwctl::Exit::manager, "", "", "refused", refusal_);
    }
}

std::vector<Request> ConfiguredTest::sentRequests() const
{
    std::vector<Request> requests;
    for (const fake::Call &call : platform.callsTo("MRPC_Call")) {
        EXPECT_EQ(call.service, NW_RPC_SERVICE_NETWORK);
        EXPECT_EQ(call.function, NW_RPC_FUNCTION_NETWORK);
        EXPECT_EQ(call.timeout, NW_RPC_TIMEOUT_MS);
        EXPECT_EQ(call.data.size(), sizeof(NW_RPC_REQUEST_S));
        EXPECT_EQ(call.data.at(0), 0);
        requests.push_back({call.data.at(1), {call.data.begin() + 2, call.data.end()}});
    }
    return requests;
}

} // namespace samples

/* In the place of those that ask over the bus. */
bool nwctl::isDeniedByBus()
{
    return samples::running->isDenied();
}

std::optional<nwctl::RemoteSession> nwctl::remoteSession()
{
    return samples::running->session();
}

std::vector<bmc::Address> nwctl::connectedAddresses()
{
    return samples::running->connected();
}

std::optional<bool> nwctl::linkOf(const std::string &interface)
{
    return samples::running->isPlugged(interface);
}

nwctl::CheckpointState nwctl::checkpointState(const std::string &token)
{
    return samples::running->checkpointState(token);
}

std::string nwctl::pendingChanges()
{
    return R"([{"setting": "hostname.name", "port": null, "before": "a", "after": "b"}])";
}

std::string nwctl::differencesByManager()
{
    return samples::running->differencesByManager();
}

std::string nwctl::setCheckpoint(unsigned seconds)
{
    return samples::running->setCheckpoint(seconds);
}

void nwctl::endCheckpoint(CheckpointEnd end, const std::string &token)
{
    samples::running->endCheckpoint(end, token);
}

std::optional<unsigned> nwctl::pendingSeconds(Patience)
{
    return samples::running->pendingSeconds();
}

std::string nwctl::applyByManager(const std::string &document, bool isForced, unsigned seconds)
{
    return samples::running->applyByManager(document, isForced, seconds);
}
