// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Host names, domain names and the indexes of a DNS request. */
#include "network_mng/check.h"
#include "nw_frame.h"

namespace {

constexpr size_t NW_DOMAIN_SIZE = 256; /* with its terminator */
constexpr size_t NW_LABEL_MAX = 63;

bool NW_IsLetterOrDigit(char cText)
{
    const auto ucText = static_cast<uint8_t>(cText);
    const auto ucUpper = static_cast<uint8_t>(ucText & ~0x20U);

    return (ucUpper >= 'A' && ucUpper <= 'Z') || (ucText >= '0' && ucText <= '9');
}

bool NW_LabelsAreValid(char *pcDomain)
{
    char *pcNext = nullptr;

    for (char *pcLabel = strtok_r(pcDomain, ".", &pcNext); pcLabel != nullptr;
         pcLabel = strtok_r(nullptr, ".", &pcNext)) {
        if (strlen(pcLabel) > NW_LABEL_MAX || LIB_NW_CheckHostName(pcLabel) == 0) {
            return false;
        }
    }
    return true;
}

/* Why the domain, which is not empty, is refused before its labels are looked at; null if it is
 * not. */
const char *NW_DomainFault(const char *pcDomain)
{
    if (!NW_IsLetterOrDigit(pcDomain[0])) {
        return "Domain head must be letter";
    }
    if (!NW_IsLetterOrDigit(pcDomain[strlen(pcDomain) - 1])) {
        return "Domain fail must is letter or number";
    }
    if (strstr(pcDomain, "..") != nullptr) {
        return "Domain has double point";
    }
    if (strchr(pcDomain, '.') == nullptr) {
        return "Domain has no point";
    }
    return nullptr;
}

} // namespace

uint32_t LIB_NW_CheckHostName(const char *pcHostName)
{
    NW_CHECK_NULL(pcHostName, 0);

    const size_t ulLength = strlen(pcHostName);
    if (ulLength == 0 || !NW_IsLetterOrDigit(pcHostName[0]) ||
        !NW_IsLetterOrDigit(pcHostName[ulLength - 1])) {
        return 0;
    }

    for (size_t i = 0; i < ulLength; ++i) {
        if (!NW_IsLetterOrDigit(pcHostName[i]) && pcHostName[i] != '-') {
            return 0;
        }
    }
    return 1;
}

uint32_t LIB_NW_DomainValidityCheck(const char *pcDomain)
{
    NW_CHECK_NULL(pcDomain, 0);

    const size_t ulLength = strlen(pcDomain);
    if (ulLength >= NW_DOMAIN_SIZE) {
        NW_DIAG(NW_DIAG_ERROR, "Domain length is out of range!");
        return 0;
    }
    if (ulLength == 0) {
        NW_DIAG(NW_DIAG_ERROR, "Domain length is zero.");
        return 1;
    }

    char szDomain[NW_DOMAIN_SIZE]{};
    BMC_Strlcpy(szDomain, pcDomain, sizeof(szDomain));
    const char *pcFault = NW_DomainFault(szDomain);
    if (pcFault != nullptr) {
        NW_DIAG(NW_DIAG_ERROR, pcFault);
        return 0;
    }
    return NW_LabelsAreValid(szDomain);
}

uint32_t LIB_DnsCheckReqIndexField(uint32_t ucEthIndex, uint32_t ucIpFamily)
{
    const bool bIndexValid = ucEthIndex < NW_PORT_COUNT;

    if (!bIndexValid) {
        NW_DIAG(NW_DIAG_ERROR, "invalid req EthIndex!, ucEthIndex = %d", ucEthIndex);
    }
    if (ucIpFamily > 1) {
        NW_DIAG(NW_DIAG_ERROR, "invalid req IpFamily!, ucIpFamily = %d", ucIpFamily);
        return 0;
    }
    return bIndexValid;
}
