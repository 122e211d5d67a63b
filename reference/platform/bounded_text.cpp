// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Bounded text. */
#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "bmc_platform.h"

size_t BMC_Strlcpy(char *pcDst, const char *pcSrc, size_t ulSize)
{
    const size_t length = pcSrc != nullptr ? std::strlen(pcSrc) : 0;
    if (pcDst == nullptr || ulSize == 0) {
        return length;
    }

    const size_t copied = std::min(length, ulSize - 1);
    if (copied != 0) {
        std::memcpy(pcDst, pcSrc, copied);
    }
    pcDst[copied] = '\0';
    return length;
}

size_t BMC_Strlcat(char *pcDst, const char *pcSrc, size_t ulSize)
{
    /* A destination without a terminator is full: nothing is appended, nothing terminated. */
    const size_t used = pcDst != nullptr ? strnlen(pcDst, ulSize) : 0;
    return used + BMC_Strlcpy(pcDst == nullptr ? nullptr : pcDst + used, pcSrc, ulSize - used);
}

int BMC_Scnprintf(char *pcBuf, size_t ulSize, const char *pcFormat, ...)
{
    if (pcBuf == nullptr || ulSize == 0) {
        return 0;
    }
    pcBuf[0] = '\0';
    if (pcFormat == nullptr) {
        return 0;
    }

    va_list arguments;
    va_start(arguments, pcFormat);
    const int length = std::vsnprintf(pcBuf, ulSize, pcFormat, arguments);
    va_end(arguments);

    if (length < 0) {
        pcBuf[0] = '\0';
        return 0;
    }
    return static_cast<int>(std::min(static_cast<size_t>(length), ulSize - 1));
}
