// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Whether two addresses share an IP segment, and whether an address meets a port's static routes.
 */
#ifndef NW_SEGMENT_H
#define NW_SEGMENT_H

#include "network_mng/check.h"
#include "nw_frame.h"

inline constexpr uint8_t NW_HOST_MASK[NW_IPV4_SIZE] = {255, 255, 255, 255};
inline constexpr uint8_t NW_WIFI_MASK[NW_IPV4_SIZE] = {255, 255, 255, 0};

constexpr bool NW_IsOn(uint8_t ucFlag)
{
    return ucFlag == 1;
}

/* 1 when the network parts under the AND of both masks are equal and not zero; null pointer: 0. */
uint32_t NW_CheckDoubleIPv4SameSegment(const uint8_t *pucAddr1, const uint8_t *pucMask1,
                                       const uint8_t *pucAddr2, const uint8_t *pucMask2);

/* 1 when the first min(uiPrefix1, uiPrefix2) bits are equal. A minimum of 0 or above 128 never
 * conflicts; no more than 16 bytes are read. Null pointer: 0. */
uint32_t NW_CheckDoubleIPv6SameSegment(const uint8_t *pucAddr1, uint32_t uiPrefix1,
                                       const uint8_t *pucAddr2, uint32_t uiPrefix2);

/* 0, or the code of the valid route of the port that the address meets. Null pointer: 0. */
NW_RESULT NW_CheckIpv4SameSegIpwithRoute(const uint8_t *pucAddr, const uint8_t *pucMask,
                                         const NW_LAN_CFG_PORT_S *pstLanEthDB);

/* The same for IPv6. Null pointer: NW_ERR_NULL_POINTER. */
NW_RESULT NW_CheckIpv6SameSegIpwithRoute(const uint8_t *pucAddr, uint32_t uiPrefix,
                                         const NW_LAN_CFG_PORT_S *pstLanEthDB);

#endif
