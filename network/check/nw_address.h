// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Predicates on raw addresses in network order; each answers 1 or 0, for a null pointer 0. */
#ifndef NW_ADDRESS_H
#define NW_ADDRESS_H

#include "network_mng/check.h"
#include "nw_frame.h"

using NW_IP_PREDICATE_FN = uint32_t (*)(const uint8_t *pucAddr);

uint32_t NW_CheckIPv4IsAllZero(const uint8_t *pucAddr);
uint32_t NW_CheckIPv4IsLoopback(const uint8_t *pucAddr);
/* Multicast and reserved: 224.0.0.0 and above. */
uint32_t NW_CheckIPv4IsDorE(const uint8_t *pucAddr);
/* 0.x.y.z other than 0.0.0.0. */
uint32_t NW_CheckIPv4IsFirIsZero(const uint8_t *pucAddr);
/* 255.x.y.z or 0.0.0.0. */
uint32_t NW_CheckIPv4IsFirIsFF(const uint8_t *pucAddr);
/* Contiguous ones in bytes 1 to 3; byte 0 is NW_CheckIPv4IsFirIsFF's business. */
uint32_t NW_CheckIPv4IsMask(const uint8_t *pucAddr);

uint32_t NW_CheckIPv6IsAllZero(const uint8_t *pucAddr);
uint32_t NW_CheckIPv6IsLoopback(const uint8_t *pucAddr);
uint32_t NW_CheckIPv6IsMulticast(const uint8_t *pucAddr);
uint32_t NW_CheckIPv6IsLinklocal(const uint8_t *pucAddr);
uint32_t NW_CheckIPv6IsSitelocal(const uint8_t *pucAddr);
uint32_t NW_CheckIPv6IsV4Mapped(const uint8_t *pucAddr);
/* The last four bytes are weighed least significant first: ::1 counts, 12..15 = 1, 0, 0, 0 does
 * not. */
uint32_t NW_CheckIPv6IsV4Compat(const uint8_t *pucAddr);

/* Entry of a check: the predicate must give ucExpected for the address to pass. */
struct NW_IP_CHECK_ITEM_S {
    uint32_t uiFlag;
    uint8_t ucExpected;
    NW_IP_PREDICATE_FN pfnPredicate; /* null: the entry is skipped */
};

/* Walks the entries that uiFlags selects, in table order, up to the first that fails. */
uint32_t NW_PassesChecks(const NW_IP_CHECK_ITEM_S *pstTable, size_t ulCount, uint32_t uiFlags,
                         const uint8_t *pucAddr);

#endif
