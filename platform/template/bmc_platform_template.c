// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A platform to begin with: the text functions are complete, everything else answers that it is not
 * available, as its contract in bmc_platform.h has it. The library links and runs with this;
 * replace one function after the other in the order of docs/porting.md. */
#include "bmc_platform.h"

#include <errno.h>
#include <stdarg.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

/* The platform's own code for what it does not have; any value but 0 serves. */
#define NOT_AVAILABLE ENOSYS

/* ---- Diagnostics and bounded text ---- */

enum { LOG_LINE_SIZE = 512, HIGHEST_LEVEL = 4 };

int BMC_DiagLogOut(uint32_t uiModule, uint32_t uiCategory, uint32_t uiLevel, uint32_t uiLine,
                   const char *pcFile, const char *pcFormat, ...)
{
    char szText[LOG_LINE_SIZE];
    va_list stArguments;
    (void)uiModule;
    (void)uiCategory;
    if (uiLevel > HIGHEST_LEVEL) {
        return 0;
    }

    va_start(stArguments, pcFormat);
    (void)vsnprintf(szText, sizeof(szText), pcFormat, stArguments);
    va_end(stArguments);
    szText[strcspn(szText, "\n")] = '\0';
    return fprintf(stderr, "<%u>%s:%u %s\n", uiLevel, pcFile, uiLine, szText) < 0 ? -1 : 0;
}

size_t BMC_Strlcpy(char *pcDst, const char *pcSrc, size_t ulSize)
{
    const size_t ulLength = strlen(pcSrc);

    if (ulSize != 0) {
        const size_t ulCopied = ulLength < ulSize ? ulLength : ulSize - 1;
        memcpy(pcDst, pcSrc, ulCopied);
        pcDst[ulCopied] = '\0';
    }
    return ulLength;
}

size_t BMC_Strlcat(char *pcDst, const char *pcSrc, size_t ulSize)
{
    const char *pcEnd = memchr(pcDst, '\0', ulSize);
    const size_t ulUsed = pcEnd != NULL ? (size_t)(pcEnd - pcDst) : ulSize;

    return ulUsed + BMC_Strlcpy(pcDst + ulUsed, pcSrc, ulSize - ulUsed);
}

int BMC_Scnprintf(char *pcBuf, size_t ulSize, const char *pcFormat, ...)
{
    va_list stArguments;
    int iWanted;
    if (ulSize == 0) {
        return 0;
    }

    pcBuf[0] = '\0';
    va_start(stArguments, pcFormat);
    iWanted = vsnprintf(pcBuf, ulSize, pcFormat, stArguments);
    va_end(stArguments);
    if (iWanted < 0) {
        return 0;
    }
    return (size_t)iWanted < ulSize ? iWanted : (int)(ulSize - 1);
}

int BMC_SafeSystem(const char *pcCommand)
{
    (void)pcCommand;
    return -1;
}

int BMC_CheckDirVaildStatus(const char *pcPath)
{
    return access(pcPath, F_OK) == 0;
}

/* ---- Configuration database ---- */

void *DB_Open(void)
{
    return NULL;
}

void *DB_GetCurrentDb(void *pEnv)
{
    (void)pEnv;
    return NULL;
}

int DB_Get(void *pDb, uint32_t uiKey, uint32_t uiSize, void *pBuffer)
{
    (void)pDb;
    (void)uiKey;
    (void)uiSize;
    (void)pBuffer;
    return NOT_AVAILABLE;
}

int DB_PutInternal(const char *pcFile, uint32_t uiLine, void *pDb, uint32_t uiKey, uint32_t uiSize,
                   const void *pData)
{
    (void)pcFile;
    (void)uiLine;
    (void)pDb;
    (void)uiKey;
    (void)uiSize;
    (void)pData;
    return NOT_AVAILABLE;
}

/* ---- RPC service ---- */

int MRPC_Call(uint32_t uiService, uint32_t uiFunction, uint32_t uiLength, const void *pRequest,
              uint32_t uiTimeoutMs, MRPC_MSG **ppstMessage)
{
    (void)uiService;
    (void)uiFunction;
    (void)uiLength;
    (void)pRequest;
    (void)uiTimeoutMs;
    *ppstMessage = NULL;
    return NOT_AVAILABLE;
}

/* Frees what MRPC_Call allocated, once it does. */
void MRPC_MsgFree(MRPC_MSG **ppstMessage)
{
    *ppstMessage = NULL;
}

/* ---- Capability store ---- */

int CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName, uint8_t *pucValue)
{
    (void)pcGroup;
    (void)pcName;
    (void)pucValue;
    return NOT_AVAILABLE;
}

int CAP_GetShortCapabilityWithName(const char *pcGroup, const char *pcName, uint16_t *pusValue)
{
    (void)pcGroup;
    (void)pcName;
    (void)pusValue;
    return NOT_AVAILABLE;
}

int CAP_GetCommonCapabilityWithName(const char *pcGroup, const char *pcName, uint32_t uiMaxLength,
                                    void *pValue)
{
    (void)pcGroup;
    (void)pcName;
    (void)uiMaxLength;
    (void)pValue;
    return NOT_AVAILABLE;
}

/* ---- Network helpers ---- */

int NW_ReadProc(const char *pcPath, uint32_t uiLength, void *pData)
{
    (void)pcPath;
    (void)uiLength;
    (void)pData;
    return NOT_AVAILABLE;
}

int NW_WriteProc(const char *pcPath, uint32_t uiLength, const void *pData)
{
    (void)pcPath;
    (void)uiLength;
    (void)pData;
    return NOT_AVAILABLE;
}

int NW_GetAnStatus(uint32_t uiPort, uint8_t *pucAutoNeg, uint8_t *pucDuplex, uint8_t *pucSpeed)
{
    (void)uiPort;
    (void)pucAutoNeg;
    (void)pucDuplex;
    (void)pucSpeed;
    return NOT_AVAILABLE;
}

int USBMANAGE_GetWirelessServiceInfo(void *pBuffer)
{
    (void)pBuffer;
    return NOT_AVAILABLE;
}
