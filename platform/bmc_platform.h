// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Interfaces that the library imports from the BMC platform: declarations only.
 *
 * Every function may be called from any thread at once. Texts are NUL-terminated. Unless a contract
 * says otherwise, buffers belong to the caller and are not kept after the call. */
#ifndef BMC_PLATFORM_H
#define BMC_PLATFORM_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The library calls these from outside of the program, also of one that hides its own names. */
#pragma GCC visibility push(default)

/* ---- Diagnostics and bounded text ---- */

/* Writes one diagnostic line. uiLevel: 2 critical, 4 error, 6 information, 7 debug. pcFile is the
 * source unit's name, uiLine the line of the call. The answer is the platform's own. */
int BMC_DiagLogOut(uint32_t uiModule, uint32_t uiCategory, uint32_t uiLevel, uint32_t uiLine,
                   const char *pcFile, const char *pcFormat, ...)
    __attribute__((format(printf, 6, 7)));

/* Copies or appends as much of pcSrc as fits into the ulSize bytes of pcDst, always terminated when
 * ulSize is not 0. Answers the length that was tried: below ulSize when nothing was cut. */
size_t BMC_Strlcpy(char *pcDst, const char *pcSrc, size_t ulSize);
size_t BMC_Strlcat(char *pcDst, const char *pcSrc, size_t ulSize);

/* Prints into the ulSize bytes of pcBuf, cut and terminated. Answers the count of characters really
 * written, without the terminator; 0 for a size of 0. */
int BMC_Scnprintf(char *pcBuf, size_t ulSize, const char *pcFormat, ...)
    __attribute__((format(printf, 3, 4)));

/* Runs a command line and answers its exit status, -1 when it could not be run. */
int BMC_SafeSystem(const char *pcCommand);

/* 1 when the path exists, else 0. */
int BMC_CheckDirVaildStatus(const char *pcPath);

/* ---- Configuration database ---- */

/* Handle of the process's database environment, opened by the first call; null when it cannot be
 * opened. Never closed by the library. */
void *DB_Open(void);

/* Handle of the current database of the environment, null when none is open. pEnv may be any
 * pointer: the process has one environment. */
void *DB_GetCurrentDb(void *pEnv);

/* Copies the record uiKey, exactly uiSize bytes, into pBuffer. pDb is a database, or an environment
 * and then stands for its current database; likewise in DB_PutInternal. 0, or the database's own
 * non-zero code (a missing record and a record of another size included); on failure pBuffer may
 * have changed. */
int DB_Get(void *pDb, uint32_t uiKey, uint32_t uiSize, void *pBuffer);

/* Stores uiSize bytes under uiKey and answers 0 once they are durable, otherwise a non-zero code of
 * its own. pcFile and uiLine name the caller in the database's diagnostics. */
int DB_PutInternal(const char *pcFile, uint32_t uiLine, void *pDb, uint32_t uiKey, uint32_t uiSize,
                   const void *pData);

/* ---- RPC service ---- */

/* Answer to a call. pData is null for an empty answer, otherwise it refers to at least 264 readable
 * bytes, whatever the service: the response record of the library's requests. */
typedef struct MRPC_MSG {
    void *pData;
} MRPC_MSG;

/* Calls a function of a service and waits up to uiTimeoutMs milliseconds. 0 when the call was
 * answered: *ppstMessage is then null or an answer that the caller releases. Non-zero when it could
 * not be delivered or was not answered properly; *ppstMessage is then null or releasable too. The
 * caller sets *ppstMessage to null first. */
int MRPC_Call(uint32_t uiService, uint32_t uiFunction, uint32_t uiLength, const void *pRequest,
              uint32_t uiTimeoutMs, MRPC_MSG **ppstMessage);

/* Releases the answer and sets *ppstMessage to null; accepts a null answer. */
void MRPC_MsgFree(MRPC_MSG **ppstMessage);

/* ---- Capability store ---- */

/* Read one capability of a group. 0, or the store's own non-zero code with the output untouched. */
int CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName, uint8_t *pucValue);
int CAP_GetShortCapabilityWithName(const char *pcGroup, const char *pcName, uint16_t *pusValue);
/* Copies at most uiMaxLength bytes; a text that is cut has no terminator. */
int CAP_GetCommonCapabilityWithName(const char *pcGroup, const char *pcName, uint32_t uiMaxLength,
                                    void *pValue);

/* ---- Network helpers ---- */

/* Read or write uiLength bytes of a kernel interface file. 0 on success. */
int NW_ReadProc(const char *pcPath, uint32_t uiLength, void *pData);
int NW_WriteProc(const char *pcPath, uint32_t uiLength, const void *pData);

/* Live auto-negotiation state of a port's PHY. 0 on success. */
int NW_GetAnStatus(uint32_t uiPort, uint8_t *pucAutoNeg, uint8_t *pucDuplex, uint8_t *pucSpeed);

/* Fills the wireless service record below. 0 on success. */
#define BMC_WIRELESS_INFO_SIZE 1627U
#define BMC_WIRELESS_ENABLE_OFFSET 4U     /* u8, 1: enabled */
#define BMC_WIRELESS_IPV4_TEXT_OFFSET 51U /* dotted quad, NUL-terminated */
int USBMANAGE_GetWirelessServiceInfo(void *pBuffer);

#pragma GCC visibility pop

#ifdef __cplusplus
}
#endif

#endif
