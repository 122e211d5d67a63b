// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The success builders: one sentence for each changed module, for LAN and DNS for each port. */
#include "network_mng/check.h"
#include "network_mng/settings.h"
#include "network_mng/store.h"
#include "nw_operate_log.h"

namespace {

constexpr char NW_OPERLOG_PORT_NAMES[][40] = {"dedicated port", "shared port",
                                              "active/standby port"};
constexpr char NW_OPERLOG_AN_PORT_NAMES[][40] = {"dedicated network port", "shared network port"};
static_assert(NW_CountOf(NW_OPERLOG_PORT_NAMES) == NW_PORT_COUNT);

/* Where every request but the per-port ones keeps its change bitmap. */
constexpr size_t NW_BITMAP_OFFSET = 4;

template <typename WORD>
uint32_t NW_BitmapOf(const void *pNetConfig, size_t ulIndex = 0)
{
    return NW_Load<WORD>(static_cast<const uint8_t *>(pNetConfig) + NW_BITMAP_OFFSET +
                         ulIndex * sizeof(WORD));
}

/* The host name request's bit for the second of the two names. */
constexpr uint32_t NW_BIT_BMC_NAME = 0x4;

/* What a sentence says: a heading, which may name a port, and the changed fields of a record. */
struct NW_SENTENCE_S {
    uint32_t uiModule;
    const char *pcHead;
    const char *pcPort;
    const void *pRecord;
    uint32_t auiWord[NW_LAN_WORD_COUNT];
};

void NW_AppendSentence(const NW_SENTENCE_S &stSentence, NW_OPER_LOG_S *pstOperLog)
{
    NW_AppendOperLog(pstOperLog, stSentence.pcHead, stSentence.pcPort);
    for (uint32_t i = 0; i < NW_LAN_WORD_COUNT; ++i) {
        NW_ParseSucessConfigParam(static_cast<const uint8_t *>(stSentence.pRecord),
                                  stSentence.uiModule, i, stSentence.auiWord[i], pstOperLog);
    }
    NW_AppendOperLog(pstOperLog, "%s", ".");
}

/* A module whose request is itself the record and holds one byte of change bits. */
void NW_AppendRequest(uint32_t uiModule, const char *pcHead, const void *pNetConfig,
                      NW_OPER_LOG_S *pstOperLog)
{
    const uint32_t uiBitmap = NW_BitmapOf<uint8_t>(pNetConfig);

    if (uiBitmap != 0) {
        NW_AppendSentence({uiModule, pcHead, nullptr, pNetConfig, {uiBitmap}}, pstOperLog);
    }
}

} // namespace

#define NW_BUILDER(name)                                                                           \
    void name(uint32_t, uint32_t, const void *pNetConfig, NW_OPER_LOG_S *pstOperLog)

bool NW_CanBuild(const void *pNetConfig, const NW_OPER_LOG_S *pstOperLog, NW_PLACE uiPlace,
                 const char *pcFunction)
{
    if (pNetConfig == nullptr) {
        NW_LogNullPointer(uiPlace, "pNetConfig", pcFunction);
    } else if (pstOperLog == nullptr) {
        NW_LogNullPointer(uiPlace, "pstOperLog", pcFunction);
    }
    return pNetConfig != nullptr && pstOperLog != nullptr;
}

const char *NW_PortName(uint32_t uiPort)
{
    return uiPort < NW_PORT_COUNT ? NW_OPERLOG_PORT_NAMES[uiPort] : "";
}

NW_BUILDER(NW_SuccessHostNameOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    const uint32_t uiBitmap = NW_BitmapOf<uint8_t>(pNetConfig);
    if (uiBitmap == 0) {
        return;
    }

    /* A name may fill its field; the formatter stops at the byte behind it. */
    struct {
        NW_HOSTNAME_DB_INFO_S stRecord;
        char cEnd;
    } stHostName{};
    const NW_RESULT uiResult = LIB_NW_GetHostName(&stHostName.stRecord);
    if (uiResult != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "[%d]Get BMCHostName Info from DB Failed.", uiResult);
        return;
    }

    const auto *pucRecord = reinterpret_cast<const uint8_t *>(&stHostName);
    char &cBehindHostName = stHostName.stRecord.szBmcName[0];
    const char cKept = cBehindHostName;
    cBehindHostName = '\0';
    NW_AppendOperLog(pstOperLog, "%s", "Host name set successfully");
    NW_ParseSucessConfigParam(pucRecord, NW_LOG_HOSTNAME, 0, uiBitmap & ~NW_BIT_BMC_NAME,
                              pstOperLog);
    cBehindHostName = cKept;
    NW_ParseSucessConfigParam(pucRecord, NW_LOG_HOSTNAME, 0, uiBitmap & NW_BIT_BMC_NAME,
                              pstOperLog);
    NW_AppendOperLog(pstOperLog, "%s", ".");
}

NW_BUILDER(NW_SuccessLANOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    const auto *pstRequest = static_cast<const NW_LAN_SET_REQ_S *>(pNetConfig);
    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        const uint32_t uiWord0 = pstRequest->stBitmap.aauiWord[i][0];
        const uint32_t uiWord1 = pstRequest->stBitmap.aauiWord[i][1];
        if (uiWord0 != 0 || uiWord1 != 0) {
            NW_AppendSentence({NW_LOG_LAN,
                               "LAN settings configured successfully for %s",
                               NW_PortName(i),
                               &pstRequest->stConfig.astPort[i],
                               {uiWord0, uiWord1}},
                              pstOperLog);
        }
    }
}

NW_BUILDER(NW_SuccessDNSOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    uint32_t auiBitmap[NW_PORT_COUNT];
    uint32_t uiChanged = 0;
    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        auiBitmap[i] = NW_BitmapOf<uint16_t>(pNetConfig, i);
        uiChanged |= auiBitmap[i];
    }
    if (uiChanged == 0) {
        return;
    }

    NW_DNS_DB_INFO_S stDns{};
    if (NW_LMDB_Get_DNS(&stDns) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get dns info from lmdb failed.");
        return;
    }
    for (uint32_t i = 0; i < NW_PORT_COUNT; ++i) {
        if (auiBitmap[i] != 0) {
            NW_AppendSentence({NW_LOG_DNS,
                               "DNS settings configured successfully for %s",
                               NW_PortName(i),
                               &stDns.astPort[i],
                               {auiBitmap[i]}},
                              pstOperLog);
        }
    }
}

NW_BUILDER(NW_SuccessLLDPOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    NW_AppendRequest(NW_LOG_LLDP, "Configured LLDP settings successfully", pNetConfig, pstOperLog);
}

NW_BUILDER(NW_SuccessNCSIOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    const uint32_t uiBitmap = NW_BitmapOf<uint32_t>(pNetConfig);
    if (uiBitmap == 0) {
        return;
    }

    NW_NCSI_DB_INFO_S stNcsi{};
    if (LIB_NW_GetNcsiConfig(&stNcsi) != NW_OK) {
        NW_DIAG(NW_DIAG_ERROR, "Get dns info from lmdb failed.");
        return;
    }
    NW_AppendSentence(
        {NW_LOG_NCSI, "Configured NCSI settings successfully", nullptr, &stNcsi, {uiBitmap}},
        pstOperLog);
}

NW_BUILDER(NW_SuccessNetModeOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    NW_AppendRequest(NW_LOG_NET_MODE, "Configured network port mode successfully", pNetConfig,
                     pstOperLog);
}

NW_BUILDER(NW_SuccessANOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    const auto *pstRequest = static_cast<const NW_AN_SET_REQ_S *>(pNetConfig);
    for (uint32_t i = 0; i < NW_CountOf(NW_OPERLOG_AN_PORT_NAMES); ++i) {
        const uint32_t uiBitmap = pstRequest->auiBitmap[i];
        if (uiBitmap != 0) {
            NW_AppendSentence({NW_LOG_AN,
                               "Configured auto-negotiation for the %s successfully",
                               NW_OPERLOG_AN_PORT_NAMES[i],
                               &pstRequest->astPort[i],
                               {uiBitmap}},
                              pstOperLog);
        }
    }
}

NW_BUILDER(NW_SuccessLanReverseOperateLogBuild)
{
    NW_CHECK_BUILDER_ARGUMENTS();

    NW_AppendRequest(NW_LOG_LAN_REVERSE, "Configured port number switchover successfully",
                     pNetConfig, pstOperLog);
}
