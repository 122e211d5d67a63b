// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/requests.hpp"

#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include "network_mng/lan.h"
#include "network_mng/operate_log.h"
#include "network_mng/rpc.h"
#include "network_mng/settings.h"
#include "samples.hpp"
#include "settings/dns_request.hpp"

namespace bmc::settings {

namespace {

template <typename Record>
std::vector<std::uint8_t> payloadWith(const Record &record, std::size_t at = 0)
{
    std::vector<std::uint8_t> payload(NW_RPC_PAYLOAD_SIZE);
    std::memcpy(payload.data() + at, &record, sizeof(record));
    return payload;
}

struct Row {
    std::uint32_t command;
    Section section;
    unsigned port;
    const char *key;
    const char *text;
};

constexpr Row rows[] = {
    {NW_CMD_SET_HOSTNAME, Section::hostName, 0, "name", "bmc-1"},
    {NW_CMD_SET_DNS, Section::dns, 2, "ipv6-domain", "example.net"},
    {NW_CMD_SET_LLDP, Section::lldp, 0, "work-mode", "rx"},
    {NW_CMD_SET_LAN, Section::lan, 1, "ipv4-route2", "11.0.0.0/8,10.0.0.1"},
    {NW_CMD_SET_NET_MODE, Section::mode, 0, "mode", "active-standby"},
    {NW_CMD_SET_AN, Section::an, 1, "speed", "100"},
    {NW_CMD_SET_LAN_REVERSE, Section::switchover, 0, "switchover", "on"},
};

} // namespace

TEST(Requests, APayloadIsTheChangeThatItWasMadeOf)
{
    for (const Row &row : rows) {
        const Change change = changeOf(row.section, row.key, row.port, row.text);
        std::vector<std::uint8_t> payload = payloadOf(row.section, change);
        payload.resize(NW_RPC_PAYLOAD_SIZE);
        const Change found = changeIn(row.command, payload);
        ASSERT_EQ(found.size(), 1U) << row.key;
        EXPECT_EQ(found[0].section, row.section);
        EXPECT_EQ(found[0].port, row.port);
        EXPECT_EQ(found[0].bits, change[0].bits);
        EXPECT_FALSE(found[0].mayBeIdle);
        EXPECT_EQ(found[0].request.size(), change[0].request.size());
        const Part &part = settingAt(row.section, row.key).parts[0];
        EXPECT_EQ(std::memcmp(&found[0].request[part.request], &change[0].request[part.request],
                              part.requestSize),
                  0)
            << row.key;
    }
}

TEST(Requests, FieldsAreWhereTheRecordsHaveThem)
{
    NW_LAN_SET_REQ_S lan{};
    lan.stBitmap.aauiWord[2][1] = NW_LAN_BIT_IPV4_ROUTE1_MASK;
    lan.stConfig.astPort[2].ucVlanPriority = 5;
    const Change fromLan = changeIn(NW_CMD_SET_LAN, payloadWith(lan));
    ASSERT_EQ(fromLan.size(), 1U);
    EXPECT_EQ(fromLan[0].port, 2U);
    EXPECT_EQ(fromLan[0].bits, (ChangeBits{0, NW_LAN_BIT_IPV4_ROUTE1_MASK}));
    EXPECT_EQ(fromLan[0].request.back(), 5);

    DnsRequest dns{};
    dns.bits[1] = 0x1002;
    dns.ports[1].szIpv6DnsDomain[259] = 'z';
    const Change fromDns = changeIn(NW_CMD_SET_DNS, payloadWith(dns));
    ASSERT_EQ(fromDns.size(), 1U);
    EXPECT_EQ(fromDns[0].bits, (ChangeBits{0x1002, 0}));
    EXPECT_EQ(fromDns[0].request.back(), 'z');

    NW_AN_SET_REQ_S an{};
    an.auiBitmap[1] = 0x80000001;
    an.astPort[1].uiSpeed = 0x12345678;
    const Change fromAn = changeIn(NW_CMD_SET_AN, payloadWith(an));
    ASSERT_EQ(fromAn.size(), 1U);
    EXPECT_EQ(fromAn[0].bits, (ChangeBits{0x80000001, 0}));
    EXPECT_EQ(fromAn[0].request.back(), 0x12);
}

TEST(Requests, ACombinedSetHasThePartsOfItsMask)
{
    NW_SET_NETWORK_ALL_S all{};
    all.stLan.stBitmap.aauiWord[1][0] = NW_LAN_BIT_LAN_ENABLE;
    all.aucDns[offsetof(DnsRequest, bits)] = 1;
    all.aucNetMode[offsetof(NW_NET_MODE_SET_S, ucSetMask)] = 1;
    const auto sectionsOf = [&](std::uint32_t mask) {
        all.ulModuleMask = mask;
        std::vector<Section> found;
        for (const Edit &edit : changeIn(NW_CMD_SET_ALL, payloadWith(all))) {
            found.push_back(edit.section);
        }
        return found;
    };
    using enum Section;
    EXPECT_EQ(sectionsOf(0), std::vector<Section>{});
    EXPECT_EQ(sectionsOf(NW_LOG_LAN), std::vector{lan});
    EXPECT_EQ(sectionsOf(NW_LOG_LAN | NW_LOG_DNS | NW_LOG_NET_MODE), (std::vector{mode, lan, dns}));
    EXPECT_THROW(sectionsOf(NW_LOG_HOSTNAME), Refusal);
}

TEST(Requests, TheFirstPortOfASectionIsItsDetail)
{
    Change change = changeOf(Section::mode, "mode", 0, "separate");
    EXPECT_EQ(firstPort(change), 0U);
    assign(change, settingAt(Section::lan, "lan"), 1, "on");
    assign(change, settingAt(Section::dns, "ipv4-mode"), 2, "auto");
    EXPECT_EQ(firstPort(change), 1U);
    EXPECT_EQ(firstPort(change, Section::dns), 2U);
    EXPECT_EQ(firstPort(change, Section::mode), 0U);
}

} // namespace bmc::settings
