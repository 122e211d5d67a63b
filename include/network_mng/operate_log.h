// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Operation log: the sentence that tells an operator what a set changed, or that it failed. */
#ifndef NETWORK_MNG_OPERATE_LOG_H
#define NETWORK_MNG_OPERATE_LOG_H

#include "base.h"

/* One bit for each module a set can change. */
typedef enum {
    NW_LOG_HOSTNAME = 0x01,
    NW_LOG_LAN = 0x02,
    NW_LOG_DNS = 0x04,
    NW_LOG_LLDP = 0x08,
    NW_LOG_NCSI = 0x10,
    NW_LOG_NET_MODE = 0x20,
    NW_LOG_AN = 0x40,
    NW_LOG_LAN_REVERSE = 0x80
} NW_OPER_LOG_MODULE_E;

#define NW_OPER_LOG_SLOT_SIZE 512U
#define NW_OPER_LOG_LEVEL 6U

/* Owned and zeroed by the caller. Every slot holds a NUL-terminated text, cut at the slot's end. */
typedef struct NW_PACKED {
    char
        szOperLog[NW_OPER_LOG_SLOT_SIZE]; /* every single-module set; failure of the combined set */
    char szLanOtherLog[NW_OPER_LOG_SLOT_SIZE];     /* LAN changes other than static routes */
    char szLanIpv4RouteLog[NW_OPER_LOG_SLOT_SIZE]; /* LAN, IPv4 static routes */
    char szLanIpv6RouteLog[NW_OPER_LOG_SLOT_SIZE]; /* LAN, IPv6 static routes */
    char szDnsLog[NW_OPER_LOG_SLOT_SIZE];          /* DNS of the combined set */
    char szNetModeLog[NW_OPER_LOG_SLOT_SIZE];      /* network port mode of the combined set */
    uint8_t ucLogLevel; /* NW_OPER_LOG_LEVEL once szOperLog or a combined set was built */
} NW_OPER_LOG_S;
NW_ASSERT_AT(NW_OPER_LOG_S, szOperLog, 0);
NW_ASSERT_AT(NW_OPER_LOG_S, szLanOtherLog, 512);
NW_ASSERT_AT(NW_OPER_LOG_S, szLanIpv4RouteLog, 1024);
NW_ASSERT_AT(NW_OPER_LOG_S, szLanIpv6RouteLog, 1536);
NW_ASSERT_AT(NW_OPER_LOG_S, szDnsLog, 2048);
NW_ASSERT_AT(NW_OPER_LOG_S, szNetModeLog, 2560);
NW_ASSERT_AT(NW_OPER_LOG_S, ucLogLevel, 3072);
NW_ASSERT_SIZE(NW_OPER_LOG_S, 3073);

/* Turns the value at pucNwCfg into words: a NUL-terminated text of at most uiSize - 1 characters at
 * pcOperLogDesc, which replaces what is there. Nothing is written for a null pointer. */
typedef void (*NW_OPERATE_LOG_FORMAT_FN)(const uint8_t *pucNwCfg, uint32_t uiSize,
                                         char *pcOperLogDesc);
/* Appends the success sentences of one module. uiReserved is always 0. */
typedef void (*NW_OPERATE_LOG_BUILD_FN)(uint32_t uiReserved, uint32_t uiPort,
                                        const void *pNetConfig, NW_OPER_LOG_S *pstOperLog);

#define NW_OPERATE_LOG_FAILURE_COUNT 10U
#define NW_OPERATE_LOG_SUCCESS_COUNT 59U
#define NW_OPERATE_LOG_SUB_MODULE_COUNT 8U

/* Row of the success and the failure table: 156 bytes where a pointer has 4. The row keeps a word's
 * alignment so that the loader can relocate its pointer. */
typedef struct __attribute__((packed, aligned(4))) {
    uint32_t uiModuleBit;
    uint32_t uiBitmapIdx;   /* success: word of the change bitmap */
    uint32_t uiBitMask;     /* success: bits that print the row; failure: result code, 0 any */
    uint32_t uiPerPort;     /* failure: the text names the port */
    uint32_t uiExcludeMask; /* success: bits that suppress the row */
    NW_OPERATE_LOG_FORMAT_FN pfnParamFormat; /* null: the byte at uiParamOffset, as "%d" */
    uint32_t uiParamOffset;                  /* of the value in the record walked */
    char acDesc[128];
} NW_OPERATE_LOG_DESC_S;
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, uiModuleBit, 0);
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, uiBitmapIdx, 4);
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, uiBitMask, 8);
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, uiPerPort, 12);
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, uiExcludeMask, 16);
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, pfnParamFormat, 20);
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, uiParamOffset, 20 + sizeof(void *));
NW_ASSERT_AT(NW_OPERATE_LOG_DESC_S, acDesc, 24 + sizeof(void *));
NW_ASSERT_SIZE(NW_OPERATE_LOG_DESC_S, 152 + sizeof(void *));

/* Row of the sub-module table: 524 bytes where a pointer has 4. */
typedef struct __attribute__((packed, aligned(4))) {
    uint32_t uiModuleBit;
    uint8_t ucSkipHead; /* 1: the builder writes its own headings */
    uint8_t aucZero5[3];
    NW_OPERATE_LOG_BUILD_FN pfnBuild;
    char acHeadDesc[512];
} NW_OPERATE_LOG_SUB_MODULE_S;
NW_ASSERT_AT(NW_OPERATE_LOG_SUB_MODULE_S, uiModuleBit, 0);
NW_ASSERT_AT(NW_OPERATE_LOG_SUB_MODULE_S, ucSkipHead, 4);
NW_ASSERT_AT(NW_OPERATE_LOG_SUB_MODULE_S, aucZero5, 5);
NW_ASSERT_AT(NW_OPERATE_LOG_SUB_MODULE_S, pfnBuild, 8);
NW_ASSERT_AT(NW_OPERATE_LOG_SUB_MODULE_S, acHeadDesc, 8 + sizeof(void *));
NW_ASSERT_SIZE(NW_OPERATE_LOG_SUB_MODULE_S, 520 + sizeof(void *));

NW_EXTERN_C_BEGIN

/* Settings that the sentences name, in their order. */
NW_EXPORT extern const NW_OPERATE_LOG_DESC_S
    g_astSuccessOperateLogDescTbl[NW_OPERATE_LOG_SUCCESS_COUNT];
/* The first row whose module equals the module and whose code is 0 or equals the result wins. */
NW_EXPORT extern const NW_OPERATE_LOG_DESC_S
    g_astFailureOperateLogDefault[NW_OPERATE_LOG_FAILURE_COUNT];
/* Modules with the heading of their success sentences. */
NW_EXPORT extern const NW_OPERATE_LOG_SUB_MODULE_S
    g_astNwOperateLogSubModuleTbl[NW_OPERATE_LOG_SUB_MODULE_COUNT];

/* Records the outcome of a set in pstOperLog->szOperLog. uiModule: NW_OPER_LOG_MODULE_E bits (one
 * for a failure); uiResult: 0 or the failing code; uiPort: port index that a failure names;
 * pNetConfig: the module's request. A success is appended, a failure replaces the text. */
NW_EXPORT void NW_OperateLogBuild(uint32_t uiModule, uint32_t uiResult, uint32_t uiPort,
                                  const void *pNetConfig, NW_OPER_LOG_S *pstOperLog);

/* Records the outcome of the combined set (NW_SET_NETWORK_ALL_S) in the slots of its parts.
 * uiSetMask: modules changed; uiFailModule: on failure, the module that failed. */
NW_EXPORT void NW_OperateLogBuildAll(uint32_t uiSetMask, uint32_t uiFailModule, uint32_t uiResult,
                                     uint32_t uiPort, const void *pstSetNetworkAll,
                                     NW_OPER_LOG_S *pstOperLog);

/* Formatters; the comment names the value read. */
#define NW_DECLARE_FORMATTER(name)                                                                 \
    NW_EXPORT void name(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)

NW_DECLARE_FORMATTER(NW_OperateLogParEnable);     /* u8: 0 "Disabled" */
NW_DECLARE_FORMATTER(NW_OperateLogParManualAuto); /* u8: 0 "Manual" */
NW_DECLARE_FORMATTER(NW_OperateLogParDnsMode);    /* u8: 0 to 2, else nothing */
NW_DECLARE_FORMATTER(NW_OperateLogParLanSrc);     /* u8: 2 "DHCP" */
NW_DECLARE_FORMATTER(NW_OperateLogParDuplex);     /* u8: 0 "half" */
NW_DECLARE_FORMATTER(NW_OperateLogParNetMode);    /* u8: 0 "Normal" */
NW_DECLARE_FORMATTER(NW_OperateLogLLDPMode);      /* u8: 1 to 3, else "Unknown" */
NW_DECLARE_FORMATTER(NW_OperateLogParARPCtl);     /* u8: two flags */
NW_DECLARE_FORMATTER(NW_OperateLogParARPSuspend); /* u8: two flags */
NW_DECLARE_FORMATTER(NW_OperateLogParStr);        /* NUL-terminated text */
NW_DECLARE_FORMATTER(NW_OperateLogParDNSDomain);  /* NUL-terminated text, 32 characters printed */
NW_DECLARE_FORMATTER(NW_OperateLogParUshort);     /* u16, little-endian, any alignment */
NW_DECLARE_FORMATTER(NW_OperateLogParInt);        /* u32, likewise; printed signed */
NW_DECLARE_FORMATTER(NW_OperateLogParIpv4);       /* 4 address bytes; all zero: empty text */
NW_DECLARE_FORMATTER(NW_OperateLogParIpv6);       /* 16 address bytes; all zero: empty text */
NW_DECLARE_FORMATTER(NW_OperateLogParIpv4Header); /* NW_LAN_IPV4_HEADER_S */
NW_DECLARE_FORMATTER(NW_OperateLogParChannel);    /* u8: channel before the offset is added */
NW_DECLARE_FORMATTER(NW_OperateLogParNicPri);     /* u8: adapter index */
NW_DECLARE_FORMATTER(NW_OperateLogParCardPri);    /* u8[4]: adapter index by priority position */

#undef NW_DECLARE_FORMATTER

NW_EXTERN_C_END

#endif
