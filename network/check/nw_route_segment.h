// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A port's static routes against another port and the wireless network. Each helper answers 0 or
 * the code of the first conflict; uiRouteSet: NW_ROUTESET_*. */
#ifndef NW_ROUTE_SEGMENT_H
#define NW_ROUTE_SEGMENT_H

#include "nw_segment.h"

/* 1 when the destination and mask meet the other port's IPv4 address, or one of its IPv4 routes. */
uint32_t NW_CheckIpv4RouteWithPortIp(const uint8_t *pucRouteAddr, const uint8_t *pucMask,
                                     const NW_LAN_CFG_PORT_S &stOther);
uint32_t NW_CheckIpv4RouteWithPortRoute(const uint8_t *pucRouteAddr, const uint8_t *pucMask,
                                        const NW_LAN_CFG_PORT_S &stOther);

NW_RESULT NW_CheckIpv4RouteWithPort(uint32_t uiRouteSet, const NW_LAN_CFG_PORT_S &stOther,
                                    const NW_LAN_CFG_PORT_S &stPort);
NW_RESULT NW_CheckIpv4RouteWithWifi(uint32_t uiRouteSet, const uint8_t *pucWifiAddr,
                                    const uint8_t *pucWifiMask, const NW_LAN_CFG_PORT_S &stPort);
NW_RESULT NW_CheckIpv6RouteWithPort(uint32_t uiRouteSet, const NW_LAN_CFG_PORT_S &stOther,
                                    const NW_LAN_CFG_PORT_S &stPort);

#endif
