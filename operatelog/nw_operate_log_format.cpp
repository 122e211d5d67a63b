// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Formatters: a value in, its words out. */
#include <arpa/inet.h>

#include "network_mng/check.h"
#include "nw_operate_log.h"

namespace {

struct NW_WORD_S {
    uint8_t ucValue;
    const char *pcText;
};

/* Writes the word of the value, else pcOtherwise; nothing when that is null. */
template <size_t COUNT>
void NW_PutWord(const NW_WORD_S (&astWord)[COUNT], const char *pcOtherwise, uint8_t ucValue,
                uint32_t uiSize, char *pcOperLogDesc)
{
    const char *pcText = pcOtherwise;

    for (const NW_WORD_S &stWord : astWord) {
        if (stWord.ucValue == ucValue) {
            pcText = stWord.pcText;
        }
    }
    if (pcText != nullptr) {
        BMC_Strlcpy(pcOperLogDesc, pcText, uiSize);
    }
}

/* What one bit says, set and clear. */
struct NW_FLAG_S {
    uint8_t ucBit;
    const char *pcSet;
    const char *pcClear;
};

/* Writes the text of the first flag and appends those of the others. */
template <size_t COUNT>
void NW_PutFlags(const NW_FLAG_S (&astFlag)[COUNT], uint8_t ucValue, uint32_t uiSize,
                 char *pcOperLogDesc)
{
    BMC_Strlcpy(pcOperLogDesc, "", uiSize);
    for (const NW_FLAG_S &stFlag : astFlag) {
        BMC_Strlcat(pcOperLogDesc, (ucValue & stFlag.ucBit) != 0 ? stFlag.pcSet : stFlag.pcClear,
                    uiSize);
    }
}

/* Writes the address's text, empty for an address of zeros. */
void NW_PutAddress(int iFamily, const uint8_t *pucAddr, int32_t iLength, uint32_t uiSize,
                   char *pcOperLogDesc)
{
    char szText[INET6_ADDRSTRLEN]{};

    if (LIB_NW_CheckIPIsZero(pucAddr, iLength) == 0) {
        inet_ntop(iFamily, pucAddr, szText, sizeof(szText));
    }
    BMC_Strlcpy(pcOperLogDesc, szText, uiSize);
}

/* clang-format off */
constexpr NW_WORD_S s_astEnable[]     = {{0, "Disabled"}};
constexpr NW_WORD_S s_astManualAuto[] = {{0, "Manual"}};
constexpr NW_WORD_S s_astDnsMode[]    = {{0, "Disabled"}, {1, "Manual"}, {2, "Auto"}};
constexpr NW_WORD_S s_astLanSrc[]     = {{2, "DHCP"}};
constexpr NW_WORD_S s_astDuplex[]     = {{0, "half"}};
constexpr NW_WORD_S s_astNetMode[]    = {{0, "Normal"}};
constexpr NW_WORD_S s_astLldpMode[]   = {{1, "TX"}, {2, "RX"}, {3, "TXRX"}};

constexpr NW_FLAG_S s_astArpControl[] = {
    {0x01, "enable BMC-generated Gratuitous ARPs",
           "disable BMC-generated Gratuitous ARPs"},
    {0x02, ", enable BMC-generated ARP responses",
           ", disable BMC-generated ARP responses"},
};

/* One of the four lacks its "the". */
constexpr NW_FLAG_S s_astArpSuspend[] = {
    {0x01, "suspend BMC-generated Gratuitous ARPs while the Watchdog Timer is running",
           "do not suspend BMC-generated Gratuitous ARPs while the Watchdog Timer is running"},
    {0x02, ", suspend BMC-generated ARP responses while Watchdog Timer is running",
           ", do not suspend BMC-generated ARP responses while the Watchdog Timer is running"},
};
/* clang-format on */

constexpr size_t NW_DOMAIN_PRINTED = 32;

} // namespace

bool NW_CanFormat(const uint8_t *pucNwCfg, const char *pcOperLogDesc, NW_PLACE uiPlace,
                  const char *pcFunction)
{
    if (pucNwCfg == nullptr) {
        NW_LogNullPointer(uiPlace, "pucNwCfg", pcFunction);
    } else if (pcOperLogDesc == nullptr) {
        NW_LogNullPointer(uiPlace, "pcOperLogDesc", pcFunction);
    }
    return pucNwCfg != nullptr && pcOperLogDesc != nullptr;
}

/* Defines a formatter: the checks that all share, then the statement given. */
#define NW_FORMATTER(name, ...)                                                                    \
    void name(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)                       \
    {                                                                                              \
        NW_CHECK_FORMATTER_ARGUMENTS();                                                            \
        __VA_ARGS__;                                                                               \
    }
#define NW_WORD_FORMATTER(name, words, otherwise)                                                  \
    NW_FORMATTER(name, NW_PutWord(words, otherwise, *pucNwCfg, uiSize, pcOperLogDesc))
#define NW_FLAG_FORMATTER(name, flags)                                                             \
    NW_FORMATTER(name, NW_PutFlags(flags, *pucNwCfg, uiSize, pcOperLogDesc))

NW_WORD_FORMATTER(NW_OperateLogParEnable, s_astEnable, "Enabled")
NW_WORD_FORMATTER(NW_OperateLogParManualAuto, s_astManualAuto, "Auto")
NW_WORD_FORMATTER(NW_OperateLogParDnsMode, s_astDnsMode, nullptr)
NW_WORD_FORMATTER(NW_OperateLogParLanSrc, s_astLanSrc, "Static")
NW_WORD_FORMATTER(NW_OperateLogParDuplex, s_astDuplex, "full")
NW_WORD_FORMATTER(NW_OperateLogParNetMode, s_astNetMode, "Active/standby")
NW_WORD_FORMATTER(NW_OperateLogLLDPMode, s_astLldpMode, "Unknown")
NW_FLAG_FORMATTER(NW_OperateLogParARPCtl, s_astArpControl)
NW_FLAG_FORMATTER(NW_OperateLogParARPSuspend, s_astArpSuspend)

NW_FORMATTER(NW_OperateLogParIpv4,
             NW_PutAddress(AF_INET, pucNwCfg, NW_IPV4_SIZE, uiSize, pcOperLogDesc))
NW_FORMATTER(NW_OperateLogParIpv6,
             NW_PutAddress(AF_INET6, pucNwCfg, NW_IPV6_SIZE, uiSize, pcOperLogDesc))
NW_FORMATTER(NW_OperateLogParUshort,
             BMC_Scnprintf(pcOperLogDesc, uiSize, "%d", NW_Load<uint16_t>(pucNwCfg)))
NW_FORMATTER(NW_OperateLogParInt,
             BMC_Scnprintf(pcOperLogDesc, uiSize, "%d", NW_Load<int32_t>(pucNwCfg)))
NW_FORMATTER(NW_OperateLogParStr,
             BMC_Strlcpy(pcOperLogDesc, reinterpret_cast<const char *>(pucNwCfg), uiSize))

void NW_OperateLogParIpv4Header(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)
{
    NW_CHECK_FORMATTER_ARGUMENTS();

    const auto stHeader = NW_Load<NW_LAN_IPV4_HEADER_S>(pucNwCfg);
    BMC_Scnprintf(pcOperLogDesc, uiSize,
                  "TTL: 0x%02x, Header Flags: 0x%02x, Precedence: 0x%02x, Type Of Service: 0x%02x",
                  stHeader.ucTtl, stHeader.ucFlags, stHeader.ucTos & 0xE0U, stHeader.ucTos & 0x1EU);
}

void NW_OperateLogParDNSDomain(const uint8_t *pucNwCfg, uint32_t uiSize, char *pcOperLogDesc)
{
    NW_CHECK_FORMATTER_ARGUMENTS();

    /* The domain is read no further than needed: it may fill its field without a terminator. */
    const char *pcDomain = reinterpret_cast<const char *>(pucNwCfg);
    const size_t ulLength = strnlen(pcDomain, NW_DOMAIN_PRINTED + 1);
    char szPrinted[NW_DOMAIN_PRINTED + 1]{};
    memcpy(szPrinted, pcDomain, ulLength < NW_DOMAIN_PRINTED ? ulLength : NW_DOMAIN_PRINTED);

    BMC_Strlcpy(pcOperLogDesc, szPrinted, uiSize);
    if (ulLength > NW_DOMAIN_PRINTED) {
        BMC_Strlcat(pcOperLogDesc, "...", uiSize);
        NW_DIAG(NW_DIAG_INFO, "DNS domain exceeds 32 characters.");
    }
}
