// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* One reader and one writer behind all accessors; what differs is a row of data. */
#ifndef NW_STORE_H
#define NW_STORE_H

#include "network_mng/store.h"
#include "nw_frame.h"

/* How an accessor comes by its database handle. */
enum class NW_DB_PATH_E {
    OPEN_THEN_CURRENT, /* DB_Open, then DB_GetCurrentDb of the environment */
    CURRENT_ONLY,      /* DB_GetCurrentDb of the accessor's own argument */
    OPEN_ONLY,         /* the environment itself stands for the database */
};

inline constexpr const char *NW_TEXT_NO_ENVIRONMENT = "Failed to open lmdb database.";
inline constexpr const char *NW_TEXT_NO_DATABASE = "Failed to create LMDB environment.";

/* What a failed call answers. */
enum class NW_DB_ANSWERS_E : uint8_t {
    CODE,           /* the row's code */
    DATABASES_CODE, /* the one that the database gave */
};

/* One way to fail: the line logged, which may print the database's code, and the result. */
struct NW_DB_FAILURE_S {
    NW_DIAG_SHAPE_E eShape;
    NW_DB_ANSWERS_E eAnswers;
    NW_RESULT uiCode;
    const char *pcText;
};

constexpr NW_DB_FAILURE_S NW_FailsWith(NW_RESULT uiCode, NW_DIAG_SHAPE_E eShape, const char *pcText)
{
    return {eShape, NW_DB_ANSWERS_E::CODE, uiCode, pcText};
}
constexpr NW_DB_FAILURE_S NW_FailsWithDatabasesCode(NW_DIAG_SHAPE_E eShape, const char *pcText)
{
    return {eShape, NW_DB_ANSWERS_E::DATABASES_CODE, NW_OK, pcText};
}

struct NW_ACCESSOR_S {
    uint32_t uiKey;
    uint32_t uiSize;
    NW_DB_PATH_E ePath;
    NW_DB_FAILURE_S stNoEnvironment;
    NW_DB_FAILURE_S stNoDatabase;
    NW_DB_FAILURE_S stNotDone; /* the read or write itself */
};

/* Line of a failed read of the LAN configuration; prints the database's code. */
inline constexpr const char *NW_TEXT_LAN_CFG_NOT_READ = "Get lancfg info failed, Ret:%d";

extern const NW_ACCESSOR_S g_stGetIfcState;

/* Handle of the accessor's database in *ppDb. pArgument: the caller's argument of the accessor. */
NW_RESULT NW_OpenStore(const NW_ACCESSOR_S &stAccessor, void *pArgument, void **ppDb);

/* Reads the record from an open database straight into pBuffer, which a failure may change. */
NW_RESULT NW_FetchRecord(const NW_ACCESSOR_S &stAccessor, void *pDb, void *pBuffer);

/* Both steps. */
NW_RESULT NW_ReadRecord(const NW_ACCESSOR_S &stAccessor, void *pArgument, void *pBuffer);
NW_RESULT NW_WriteRecord(const NW_ACCESSOR_S &stAccessor, const void *pData);

/* Reads into a zeroed local record and copies it to the caller on success only. */
template <typename RECORD>
NW_RESULT NW_ReadRecordCopied(const NW_ACCESSOR_S &stAccessor, RECORD *pstRecord)
{
    RECORD stLocal{};
    const NW_RESULT uiResult = NW_ReadRecord(stAccessor, pstRecord, &stLocal);
    if (uiResult != NW_OK) {
        return uiResult;
    }

    memcpy(pstRecord, &stLocal, sizeof(stLocal));
    return NW_OK;
}

#endif
