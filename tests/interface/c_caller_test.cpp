// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The public header in C: every record has the size that it must have, and calls arrive. */
#include <map>
#include <string>

#include "c_caller.h"
#include "fake_matchers.hpp"
#include "process.hpp"
#include "tool_output.hpp"

namespace {

/* Records with a pointer or a long, on each processor that is served. */
#if defined(__x86_64__)
constexpr std::size_t descRow = 160, subModuleRow = 528, message = 263, heartbeat = 16;
#elif defined(__arm__)
constexpr std::size_t descRow = 156, subModuleRow = 524, message = 259, heartbeat = 12;
#endif

const std::map<std::string, std::size_t> sizes{
    {"NW_NET_STATUS_S", 1},
    {"NW_IFC_STATE_DB_INFO_S", 84},
    {"NW_LAN_CFG_IPV4_ROUTE_S", 25},
    {"NW_LAN_CFG_IPV6_ROUTE_S", 67},
    {"NW_LAN_CFG_LINK_LOCAL_S", 256},
    {"NW_LAN_CFG_VLAN_S", 7},
    {"NW_LAN_CFG_PORT_S", 791},
    {"NW_LAN_CFG_DB_INFO_S", 2377},
    {"NW_HOSTNAME_DB_INFO_S", 260},
    {"NW_DNS_PORT_S", 592},
    {"NW_DNS_DB_INFO_S", 1776},
    {"NW_LLDP_PORT_S", 300},
    {"NW_LLDP_DB_INFO_S", 604},
    {"NW_NCSI_DB_INFO_S", 192},
    {"NW_AN_CFG_PORT_S", 7},
    {"NW_AN_CFG_DB_INFO_S", 21},
    {"NW_WIFI_ADDR_S", 5},
    {"NW_IPV6_ADDR_STATE_S", 4},
    {"NW_ETHER_INS_INFO_S", 2799},
    {"NW_LAN_BITMAP_S", 24},
    {"NW_LAN_IPV4_HEADER_S", 3},
    {"NW_LAN_SET_IPV4_ROUTE_S", 12},
    {"NW_LAN_SET_IPV6_ROUTE_S", 33},
    {"NW_LAN_SET_PORT_S", 158},
    {"NW_LAN_SET_CFG_S", 478},
    {"NW_LAN_SET_REQ_S", 506},
    {"NW_SET_NETWORK_ALL_S", 2482},
    {"NW_OPER_LOG_S", 3073},
    {"NW_OPERATE_LOG_DESC_S", descRow},
    {"NW_OPERATE_LOG_SUB_MODULE_S", subModuleRow},
    {"NW_RPC_REQUEST_S", 3074},
    {"NW_RPC_RESPONSE_S", 264},
    {"NW_LLDP_SET_S", 8},
    {"NW_NET_MODE_SET_S", 8},
    {"NW_LAN_REVERSE_SET_S", 8},
    {"NW_AN_SET_PORT_S", 6},
    {"NW_AN_SET_REQ_S", 28},
    {"NW_HOSTNAME_CONF_S", 134},
    {"NW_HOSTNAME_SET_REQ_S", 136},
    {"NW_DNS_INFO_PORT_S", 968},
    {"NW_DNS_INFO_S", 2904},
    {"NW_IFC_STATE_INFO_S", 57},
    {"NW_ARP_SUSPEND_REQ_S", 2},
    {"NW_ARP_UPDATE_REQ_S", 9},
    {"NW_MSG_PACKAGE_S", message},
    {"HEARTBEAT_MSG_S", heartbeat},
    {"NW_NETWORK_EVENT_S", 1530},
    {"NW_OA_NETWORK_DB_INFO_S", 12},
    {"NW_OA_TEMPERA_INFO_S", 64},
    {"NW_ALL_OCP_TEMP_S", 32},
    {"NW_ALL_FAN_INFO_S", 220},
    {"NW_OA_FAN_REQ_S", 5},
};

class CCaller : public fake::FakePlatformTest {};

TEST_F(CCaller, SeesEveryRecordAtItsSize)
{
    std::size_t count = 0;
    const C_RECORD_SIZE *records = cRecordSizes(&count);

    std::map<std::string, std::size_t> seen;
    for (std::size_t index = 0; index < count; ++index) {
        seen[records[index].name] = records[index].size;
    }
    EXPECT_EQ(seen, sizes);
}

TEST_F(CCaller, KnowsEveryRecordOfTheHeader)
{
    const std::string header = support::shell(NW_PREPROCESS_HEADER " " NW_HEADER_FILE);

    std::set<std::string> known;
    for (const auto &[name, size] : sizes) {
        known.insert(name);
    }
    EXPECT_EQ(support::allMatches(header, "\\}\\s*(\\w+_S);"), known);
}

TEST_F(CCaller, ReachesTheLibrary)
{
    EXPECT_EQ(cCompletionCode(0x1E000E23), 0xC9U);

    char text[128];
    cBuildLldpText(text, sizeof(text));
    EXPECT_STREQ(text, "Configured LLDP settings successfully, LLDP state: Enabled.");
}

} // namespace
