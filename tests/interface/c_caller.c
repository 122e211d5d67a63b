// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "c_caller.h"

#include <string.h>

#include "network_mng.h"

#define RECORD(record)                                                                             \
    {                                                                                              \
#record, sizeof(record)                                                                    \
    }

static const C_RECORD_SIZE s_records[] = {
    RECORD(NW_NET_STATUS_S),         RECORD(NW_IFC_STATE_DB_INFO_S),
    RECORD(NW_LAN_CFG_IPV4_ROUTE_S), RECORD(NW_LAN_CFG_IPV6_ROUTE_S),
    RECORD(NW_LAN_CFG_LINK_LOCAL_S), RECORD(NW_LAN_CFG_VLAN_S),
    RECORD(NW_LAN_CFG_PORT_S),       RECORD(NW_LAN_CFG_DB_INFO_S),
    RECORD(NW_HOSTNAME_DB_INFO_S),   RECORD(NW_DNS_PORT_S),
    RECORD(NW_DNS_DB_INFO_S),        RECORD(NW_LLDP_PORT_S),
    RECORD(NW_LLDP_DB_INFO_S),       RECORD(NW_NCSI_DB_INFO_S),
    RECORD(NW_AN_CFG_PORT_S),        RECORD(NW_AN_CFG_DB_INFO_S),
    RECORD(NW_WIFI_ADDR_S),          RECORD(NW_IPV6_ADDR_STATE_S),
    RECORD(NW_ETHER_INS_INFO_S),     RECORD(NW_LAN_BITMAP_S),
    RECORD(NW_LAN_IPV4_HEADER_S),    RECORD(NW_LAN_SET_IPV4_ROUTE_S),
    RECORD(NW_LAN_SET_IPV6_ROUTE_S), RECORD(NW_LAN_SET_PORT_S),
    RECORD(NW_LAN_SET_CFG_S),        RECORD(NW_LAN_SET_REQ_S),
    RECORD(NW_SET_NETWORK_ALL_S),    RECORD(NW_OPER_LOG_S),
    RECORD(NW_OPERATE_LOG_DESC_S),   RECORD(NW_OPERATE_LOG_SUB_MODULE_S),
    RECORD(NW_RPC_REQUEST_S),        RECORD(NW_RPC_RESPONSE_S),
    RECORD(NW_LLDP_SET_S),           RECORD(NW_NET_MODE_SET_S),
    RECORD(NW_LAN_REVERSE_SET_S),    RECORD(NW_AN_SET_PORT_S),
    RECORD(NW_AN_SET_REQ_S),         RECORD(NW_HOSTNAME_CONF_S),
    RECORD(NW_HOSTNAME_SET_REQ_S),   RECORD(NW_DNS_INFO_PORT_S),
    RECORD(NW_DNS_INFO_S),           RECORD(NW_IFC_STATE_INFO_S),
    RECORD(NW_ARP_SUSPEND_REQ_S),    RECORD(NW_ARP_UPDATE_REQ_S),
    RECORD(NW_MSG_PACKAGE_S),        RECORD(HEARTBEAT_MSG_S),
    RECORD(NW_NETWORK_EVENT_S),      RECORD(NW_OA_NETWORK_DB_INFO_S),
    RECORD(NW_OA_TEMPERA_INFO_S),    RECORD(NW_ALL_OCP_TEMP_S),
    RECORD(NW_ALL_FAN_INFO_S),       RECORD(NW_OA_FAN_REQ_S),
};

const C_RECORD_SIZE *cRecordSizes(size_t *count)
{
    *count = sizeof(s_records) / sizeof(s_records[0]);
    return s_records;
}

unsigned cCompletionCode(unsigned code)
{
    return LIB_NW_ChangeInvErr2IpmiCC(code);
}

void cBuildLldpText(char *text, size_t size)
{
    NW_LLDP_SET_S stRequest = {0, 1, 1, 0, 0};
    NW_OPER_LOG_S stLog;
    memset(&stLog, 0, sizeof(stLog));

    NW_OperateLogBuild(NW_LOG_LLDP, NW_OK, 0, &stRequest, &stLog);

    strncpy(text, stLog.szOperLog, size - 1);
    text[size - 1] = '\0';
}
