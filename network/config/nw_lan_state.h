// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Live duplicate-address-detection states of a port's IPv6 addresses. */
#ifndef NW_LAN_STATE_H
#define NW_LAN_STATE_H

#include "network_mng/lan.h"
#include "nw_frame.h"

/* Further addresses of a view that have a place, whatever its count says. */
inline uint32_t NW_FurtherCount(const NW_ETHER_INS_INFO_S &stView)
{
    return stView.ucIpv6AddrCount < NW_IPV6_FURTHER_COUNT ? stView.ucIpv6AddrCount
                                                          : NW_IPV6_FURTHER_COUNT;
}

/* Stores the state in one slot of astIpv6AddrState. */
void NW_SetAddrState(NW_ETHER_INS_INFO_S *pstView, uint32_t uiSlot, NW_IPV6_ADDR_STATE_E eState);

/* Asks the kernel for all IPv6 addresses and refines the states of those that the view holds as
 * text and that stand on the interface. What goes wrong is logged and leaves the states as they
 * are. */
void NW_QueryAddrStates(uint32_t uiIfIndex, NW_ETHER_INS_INFO_S *pstView);

/* The same from one datagram of an address dump, ulLength bytes at any alignment:
 *
 *   message   := nlmsghdr ifaddrmsg attribute*, padded to 4 bytes; type 2 (error) and 3 (done) end
 *                the walk, as does a length below 16 or above what remains
 *   attribute := u16 length, u16 type, value, padded to 4 bytes; of type IFA_ADDRESS the address,
 *                of type IFA_FLAGS a u32
 *
 * Values that reach beyond their message are not read. */
void NW_WalkAddrDump(const uint8_t *pucDatagram, size_t ulLength, uint32_t uiIfIndex,
                     NW_ETHER_INS_INFO_S *pstView);

#endif
