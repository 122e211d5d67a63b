// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The file that holds the BMC's name. */
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include "network_mng/discovery.h"
#include "nw_descriptor.h"
#include "nw_error_text.h"
#include "nw_frame.h"

/* Logs a close that failed, in the name of the function that closed. */
#define NW_LOG_CLOSE(result)                                                                       \
    do {                                                                                           \
        if ((result) != 0) {                                                                       \
            char szReason[NW_ERROR_TEXT_SIZE];                                                     \
            NW_DIAG(NW_DIAG_DEBUG, "[%s-%dL] Close file failed, %s.", __func__, __LINE__,          \
                    NW_ErrorText(errno, szReason));                                                \
        }                                                                                          \
    } while (false)

NW_RESULT LIB_NW_ReadBmcNameFromFile(char *pcHostName)
{
    NW_CHECK_NULL(pcHostName, NW_ERR_NULL_POINTER);

    FILE *pstFile = fopen(NW_BMC_NAME_FILE, "r");
    if (pstFile == nullptr) {
        NW_DIAG(NW_DIAG_ERROR, "Reading hostname failed when open hostnamefile");
        return NW_ERR_GENERAL;
    }

    NW_CloseOnExec(fileno(pstFile));
    NW_RESULT uiResult = NW_OK;
    if (fgets(pcHostName, NW_BMC_NAME_SIZE, pstFile) == nullptr) {
        NW_DIAG(NW_DIAG_ERROR, "Reading hostname failed when get hostname");
        uiResult = NW_ERR_GENERAL;
    }
    NW_LOG_CLOSE(fclose(pstFile));
    return uiResult;
}

/* Writes over the start of the open file; answers what went wrong, null if nothing did. */
static const char *NW_Overwrite(int iFile, const char *pcWriteBuf, uint32_t ulLen)
{
    struct stat stStat;
    if (fstat(iFile, &stStat) != 0) {
        return "file stat get fail.";
    }
    if ((stStat.st_mode & S_IROTH) == 0) {
        (void)fchmod(iFile, stStat.st_mode | S_IROTH);
    }
    const ssize_t lWritten = write(iFile, pcWriteBuf, ulLen);
    return lWritten >= 0 && static_cast<size_t>(lWritten) == ulLen ? nullptr : "file write fail";
}

NW_RESULT NW_WriteBmcNameToFile(const char *pcWriteBuf, uint32_t ulLen, const char *pcFileName)
{
    NW_CHECK_NULL(pcWriteBuf, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pcFileName, NW_ERR_NULL_POINTER);

    const int iFile = open(pcFileName, O_RDWR);
    if (iFile < 0) {
        NW_DIAG(NW_DIAG_ERROR, "file make error.");
        return NW_ERR_GENERAL;
    }

    NW_CloseOnExec(iFile);
    const char *pcFault = NW_Overwrite(iFile, pcWriteBuf, ulLen);
    if (pcFault != nullptr) {
        NW_DIAG(NW_DIAG_ERROR, pcFault);
    }
    NW_LOG_CLOSE(close(iFile));
    return pcFault == nullptr ? NW_OK : NW_ERR_GENERAL;
}
