// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Asking the network for a gateway's MAC address. */
#ifndef NW_ARP_PROBE_H
#define NW_ARP_PROBE_H

#include "network_mng/store.h"
#include "nw_frame.h"

/* Sends two ARP requests for the port's configured IPv4 gateway on the interface and stores the
 * sender address of the last packet that the gateway answers with. Blocks for up to 4 seconds. */
void NW_ProbeGateway(uint32_t uiIfIndex, const NW_LAN_CFG_PORT_S &stPort, uint8_t *pucMacAddr);

#endif
