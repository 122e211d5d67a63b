// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nw_error_text.h"

#include <string.h>

/* There are two kinds of strerror_r: one answers the text, which may stand elsewhere, the other
 * writes it and answers a number. */
[[maybe_unused]] static const char *NW_WrittenText(const char *pcAnswer, const char *)
{
    return pcAnswer;
}
[[maybe_unused]] static const char *NW_WrittenText(int, const char *pcBuffer)
{
    return pcBuffer;
}

const char *NW_ErrorText(int iError, char (&szBuffer)[NW_ERROR_TEXT_SIZE])
{
    szBuffer[0] = '\0';
    return NW_WrittenText(strerror_r(iError, szBuffer, sizeof(szBuffer)), szBuffer);
}
