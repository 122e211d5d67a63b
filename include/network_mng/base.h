// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Result codes, port indices and the layout macros that every topic header builds on. */
#ifndef NETWORK_MNG_BASE_H
#define NETWORK_MNG_BASE_H

#include <stddef.h>
#include <stdint.h>

#if !defined(__BYTE_ORDER__) || (__BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__)
#error                                                                                             \
    "libnetwork_mng: stored and wire records are little-endian; a big-endian host is not supported"
#endif

#ifdef __cplusplus
#define NW_STATIC_ASSERT(condition, message) static_assert(condition, message)
#define NW_EXTERN_C_BEGIN extern "C" {
#define NW_EXTERN_C_END }
#else
#define NW_STATIC_ASSERT(condition, message) _Static_assert(condition, message)
#define NW_EXTERN_C_BEGIN
#define NW_EXTERN_C_END
#endif

/* Every record is stored and sent byte for byte: no padding, any alignment. */
#define NW_PACKED __attribute__((packed))
#define NW_EXPORT __attribute__((visibility("default")))

/* A layout is proven where it is declared; a failure names the record and the field. */
#define NW_ASSERT_SIZE(record, size)                                                               \
    NW_STATIC_ASSERT(sizeof(record) == (size), #record " must be " #size " bytes")
#define NW_ASSERT_AT(record, field, offset)                                                        \
    NW_STATIC_ASSERT(offsetof(record, field) == (offset), #record "." #field " must be "           \
                                                                  "at " #offset)

/* Result of every function that reports one: 0 for success, otherwise one of the codes below, a
 * code of the 0x1E000xxx family as the network manager answered it, or the database's own code. */
typedef uint32_t NW_RESULT;

#define NW_OK 0U

/* NW_LMDB_Put_NetStatus, without a database or after a failed write, and LIB_NW_GetLLDP, for a null
 * argument, alone answer this. */
#define NW_ERR_FAILED 0x00000001U
/* Codes of the library. */
#define NW_ERR_GENERAL 0x81000001U
#define NW_ERR_NULL_POINTER 0x81000002U
#define NW_ERR_OUT_OF_RANGE 0x81000003U
#define NW_ERR_DB_ENVIRONMENT 0x81000005U
#define NW_ERR_DB_READ 0x81000006U
#define NW_ERR_DB_WRITE 0x81000007U
#define NW_ERR_RPC_TRANSPORT 0x81000013U

/* LIB_NW_CovMacStrToNet alone answers this for a null argument. */
#define NW_ERR_MAC_NULL_POINTER 0x31000001U
/* NW_CheckChannel: the port that the channel selects is not on this board. */
#define NW_ERR_PORT_NOT_SUPPORTED 0x01000002U
/* Passed to the operation log, never returned: the library refused the request itself. */
#define NW_OPERLOG_LOCAL_FAIL 0x9E0000FFU

/* Network-configuration codes that the library itself produces. */
#define NW_ERR_ARP_SUSPEND 0x1E000005U
#define NW_ERR_ARP_UPDATE 0x1E000006U
#define NW_ERR_ARP_RESUME 0x1E000007U
#define NW_ERR_IPV4_SAME_SEGMENT 0x1E000A27U
#define NW_ERR_IPV6_SAME_SEGMENT 0x1E000A28U
#define NW_ERR_IFC_NO_DB 0x1E000A33U
#define NW_ERR_IFC_WRITE 0x1E000A34U
#define NW_ERR_IPV4_ROUTE1 0x1E000A49U
#define NW_ERR_IPV4_ROUTE2 0x1E000A4AU
#define NW_ERR_IPV6_ROUTE1 0x1E000A4DU
#define NW_ERR_IPV6_ROUTE2 0x1E000A4EU
#define NW_ERR_IPV4_IN_ROUTE1 0x1E000A51U
#define NW_ERR_IPV4_IN_ROUTE2 0x1E000A52U
#define NW_ERR_IPV6_IN_ROUTE1 0x1E000A53U
#define NW_ERR_IPV6_IN_ROUTE2 0x1E000A54U
#define NW_ERR_IPV4_ROUTE1_GATEWAY 0x1E000A55U
#define NW_ERR_IPV4_ROUTE2_GATEWAY 0x1E000A56U
#define NW_ERR_IPV6_ROUTE1_GATEWAY 0x1E000A57U
#define NW_ERR_IPV6_ROUTE2_GATEWAY 0x1E000A58U
#define NW_ERR_IPV4_HOLDS_GATEWAY1 0x1E000A59U
#define NW_ERR_IPV4_HOLDS_GATEWAY2 0x1E000A5AU
#define NW_ERR_IPV6_HOLDS_GATEWAY1 0x1E000A5BU
#define NW_ERR_IPV6_HOLDS_GATEWAY2 0x1E000A5CU

/* IPMI completion codes that results are turned into. */
#define NW_IPMI_CC_INVALID_COMMAND 0xC1U
#define NW_IPMI_CC_OUT_OF_RANGE 0xC9U
#define NW_IPMI_CC_INVALID_DATA 0xCCU
#define NW_IPMI_CC_NOT_IN_STATE 0xD5U
#define NW_IPMI_CC_UNSPECIFIED 0xFFU

/* Port index: order of every per-port array. */
#define NW_PORT_ETH0 0U
#define NW_PORT_ETH1 1U
#define NW_PORT_BOND0 2U
#define NW_PORT_COUNT 3U

/* Widths shared by the records, in bytes. */
#define NW_IPV4_SIZE 4U
#define NW_IPV6_SIZE 16U
#define NW_MAC_SIZE 6U
#define NW_IFC_NAME_SIZE 16U
#define NW_ADDR_TEXT_SIZE 64U
#define NW_IPV6_FURTHER_COUNT 16U
#define NW_ROUTE_COUNT 2U

NW_EXTERN_C_BEGIN

/* IPMI completion code for a non-zero result: bits 9 to 11 of the code are ignored; a code that has
 * no row (0 included) gives 0xFF. Never fails. */
NW_EXPORT uint32_t LIB_NW_ChangeInvErr2IpmiCC(uint32_t uiCode);

NW_EXTERN_C_END

#endif
