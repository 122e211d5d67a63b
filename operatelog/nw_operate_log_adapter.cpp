// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Formatters that ask the capability store about the shared port's network adapters. */
#include "network_mng/store.h"
#include "nw_operate_log.h"

namespace {

constexpr const char *NW_SHARE_PORT_GROUP = "SharePort";
constexpr const char *NW_ADAPTER_CAPABILITY[] = {"NIC1Name", "NIC2Name", "NIC3Name"};
constexpr uint32_t NW_ADAPTER_NAME_SIZE = 20;

/* Private: entries NUL-padded to their stride. */
constexpr char NW_OPERLOG_ORDINALS[][16] = {"first", "second", "third", "fourth"};

/* Name of an adapter; empty for another index and for a name that cannot be read. */
struct NW_ADAPTER_NAME_S {
    char szName[NW_ADAPTER_NAME_SIZE + 1]; /* one more: the store does not terminate a cut name */
};

NW_ADAPTER_NAME_S NW_AdapterName(uint8_t ucIndex)
{
    NW_ADAPTER_NAME_S stName{};

    if (ucIndex < NW_CountOf(NW_ADAPTER_CAPABILITY)) {
        CAP_GetCommonCapabilityWithName(NW_SHARE_PORT_GROUP, NW_ADAPTER_CAPABILITY[ucIndex],
                                        NW_ADAPTER_NAME_SIZE, stName.szName);
    }
    return stName;
}

} // namespace

void NW_OperateLogParChannel(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)
{
    NW_CHECK_FORMATTER_ARGUMENTS();

    uint16_t usOffset = 0;
    LIB_NW_GetNcsiChannelIdOffset(&usOffset);
    BMC_Scnprintf(pcOperLogDesc, uiSize, "%u", uint32_t{*pucNwCfg} + usOffset);
}

void NW_OperateLogParNicPri(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)
{
    NW_CHECK_FORMATTER_ARGUMENTS();

    BMC_Scnprintf(pcOperLogDesc, uiSize, "%s", NW_AdapterName(*pucNwCfg).szName);
}

void NW_OperateLogParCardPri(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)
{
    NW_CHECK_FORMATTER_ARGUMENTS();

    uint16_t usCount = 0;
    const int iRet =
        CAP_GetShortCapabilityWithName(NW_SHARE_PORT_GROUP, "CardSupportNumber", &usCount);
    if (iRet != 0) {
        NW_DIAG(NW_DIAG_ERROR, "Get ncsi card support number from cap failed! iRet = %d.", iRet);
        return;
    }

    int32_t iLen = 0;
    for (uint32_t i = 0; i < usCount; ++i) {
        NW_OperateLogOutputCardPriPar(i, pucNwCfg, uiSize, &iLen, pcOperLogDesc);
    }
}

void NW_OperateLogOutputCardPriPar(uint32_t uiPosition, const uint8_t *pucCardAutoRules,
                                   uint32_t uiSize, int32_t *piLen, char *pcOperLogDesc)
{
    NW_CHECK_NULL(pucCardAutoRules);
    NW_CHECK_NULL(piLen);
    NW_CHECK_NULL(pcOperLogDesc);

    /* There are as many rules as ordinals; a position beyond has no place. */
    if (uiPosition >= NW_CountOf(NW_OPERLOG_ORDINALS) || static_cast<uint32_t>(*piLen) >= uiSize) {
        return;
    }

    *piLen += BMC_Scnprintf(pcOperLogDesc + *piLen, uiSize - static_cast<uint32_t>(*piLen),
                            ", %s priority network adapter: %s", NW_OPERLOG_ORDINALS[uiPosition],
                            NW_AdapterName(pucCardAutoRules[uiPosition]).szName);
}
