// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The record reader and writer. */
#include "nw_store.h"

static NW_RESULT NW_FailDb(const NW_DB_FAILURE_S &stFailure, int iRet)
{
    NW_DIAG(stFailure.eShape, stFailure.pcText, iRet);
    return stFailure.eAnswers == NW_DB_ANSWERS_E::CODE ? stFailure.uiCode
                                                       : static_cast<NW_RESULT>(iRet);
}

NW_RESULT NW_OpenStore(const NW_ACCESSOR_S &stAccessor, void *pArgument, void **ppDb)
{
    void *pEnvironment = pArgument;

    if (stAccessor.ePath != NW_DB_PATH_E::CURRENT_ONLY) {
        pEnvironment = DB_Open();
        if (pEnvironment == nullptr) {
            return NW_FailDb(stAccessor.stNoEnvironment, 0);
        }
    }

    *ppDb =
        stAccessor.ePath == NW_DB_PATH_E::OPEN_ONLY ? pEnvironment : DB_GetCurrentDb(pEnvironment);
    if (*ppDb == nullptr) {
        return NW_FailDb(stAccessor.stNoDatabase, 0);
    }
    return NW_OK;
}

NW_RESULT NW_FetchRecord(const NW_ACCESSOR_S &stAccessor, void *pDb, void *pBuffer)
{
    const int iRet = DB_Get(pDb, stAccessor.uiKey, stAccessor.uiSize, pBuffer);

    return iRet == 0 ? NW_OK : NW_FailDb(stAccessor.stNotDone, iRet);
}

NW_RESULT NW_ReadRecord(const NW_ACCESSOR_S &stAccessor, void *pArgument, void *pBuffer)
{
    void *pDb = nullptr;
    const NW_RESULT uiResult = NW_OpenStore(stAccessor, pArgument, &pDb);

    return uiResult == NW_OK ? NW_FetchRecord(stAccessor, pDb, pBuffer) : uiResult;
}

NW_RESULT NW_WriteRecord(const NW_ACCESSOR_S &stAccessor, const void *pData)
{
    void *pDb = nullptr;
    const NW_RESULT uiResult = NW_OpenStore(stAccessor, nullptr, &pDb);
    if (uiResult != NW_OK) {
        return uiResult;
    }

    const int iRet =
        DB_PutInternal(NW_UNIT_NAME, __LINE__, pDb, stAccessor.uiKey, stAccessor.uiSize, pData);
    return iRet == 0 ? NW_OK : NW_FailDb(stAccessor.stNotDone, iRet);
}
