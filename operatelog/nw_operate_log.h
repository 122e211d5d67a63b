// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Inside the operation log: the table walk, the success builders and the LAN slots. */
#ifndef NW_OPERATE_LOG_H
#define NW_OPERATE_LOG_H

#include "network_mng/lan.h"
#include "network_mng/operate_log.h"
#include "nw_frame.h"

/* Opens a success builder, or a formatter, with the checks that all of its kind share. */
#define NW_CHECK_BUILDER_ARGUMENTS()                                                               \
    do {                                                                                           \
        if (!NW_CanBuild(pNetConfig, pstOperLog, NW_Place(NW_DIAG_NULL, NW_UNIT, __LINE__),        \
                         __func__)) {                                                              \
            return;                                                                                \
        }                                                                                          \
    } while (false)
#define NW_CHECK_FORMATTER_ARGUMENTS()                                                             \
    do {                                                                                           \
        if (!NW_CanFormat(pucNwCfg, pcOperLogDesc, NW_Place(NW_DIAG_NULL, NW_UNIT, __LINE__),      \
                          __func__)) {                                                             \
            return;                                                                                \
        }                                                                                          \
    } while (false)

/* Whether both pointers are given; the first that is null is logged in the function's name. */
bool NW_CanBuild(const void *pNetConfig, const NW_OPER_LOG_S *pstOperLog, NW_PLACE uiPlace,
                 const char *pcFunction);
bool NW_CanFormat(const uint8_t *pucNwCfg, const char *pcOperLogDesc, NW_PLACE uiPlace,
                  const char *pcFunction);

/* "dedicated port", "shared port", "active/standby port"; empty for an index above 2. */
const char *NW_PortName(uint32_t uiPort);

/* Appends to szOperLog what fits behind the text that is there. */
template <typename... ARGS>
void NW_AppendOperLog(NW_OPER_LOG_S *pstOperLog, const char *pcFormat, ARGS... args)
{
    const size_t ulUsed = strnlen(pstOperLog->szOperLog, sizeof(pstOperLog->szOperLog));

    BMC_Scnprintf(pstOperLog->szOperLog + ulUsed, sizeof(pstOperLog->szOperLog) - ulUsed, pcFormat,
                  args...);
}

/* The table walk: appends every success row of the module that tests word uiWordIdx and shares a
 * bit with uiWord; values are read from the record at pucNetConfig. */
void NW_ParseSucessConfigParam(const uint8_t *pucNetConfig, uint32_t uiModule, uint32_t uiWordIdx,
                               uint32_t uiWord, NW_OPER_LOG_S *pstOperLog);

#define NW_DECLARE_BUILDER(name)                                                                   \
    void name(uint32_t uiReserved, uint32_t uiPort, const void *pNetConfig,                        \
              NW_OPER_LOG_S *pstOperLog)

NW_DECLARE_BUILDER(NW_SuccessHostNameOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessLANOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessDNSOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessLLDPOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessNCSIOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessNetModeOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessANOperateLogBuild);
NW_DECLARE_BUILDER(NW_SuccessLanReverseOperateLogBuild);

#undef NW_DECLARE_BUILDER

/* Appends the adapter of one priority position behind the *piLen characters already at
 * pcOperLogDesc, whose size is uiSize, and advances *piLen. */
void NW_OperateLogOutputCardPriPar(uint32_t uiPosition, const uint8_t *pucCardAutoRules,
                                   uint32_t uiSize, int32_t *piLen, char *pcOperLogDesc);

/* One slot's share of a LAN change: which bits of the two words it keeps. */
struct NW_LAN_SLOT_S {
    uint32_t aulMask[NW_LAN_WORD_COUNT];
    char (NW_OPER_LOG_S::*pszSlot)[NW_OPER_LOG_SLOT_SIZE];
};

constexpr size_t NW_LAN_SLOT_COUNT = 3;

/* Builds the success text of each share in a private, zeroed context, then copies it into the slot
 * and the context's level to *pucLevel. Of pstOperLog nothing but the three slots is touched, and
 * its level only where pucLevel points to it. The request is a copy that the caller made for this:
 * its bitmap is left with the last share. */
void NW_BuildLanSlots(const NW_LAN_SLOT_S (&astSlot)[NW_LAN_SLOT_COUNT], uint32_t uiPort,
                      NW_LAN_SET_REQ_S *pstRequest, NW_OPER_LOG_S *pstOperLog, uint8_t *pucLevel);

#endif
