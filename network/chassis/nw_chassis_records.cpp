// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Accessors of what the chassis manager reports. */
#include "network_mng/chassis.h"
#include "nw_store.h"

namespace {

/* The two ways to the database: the first two records ask for the current one, the others take the
 * environment's handle. Their texts and codes differ. */
constexpr NW_ACCESSOR_S Current(uint32_t uiKey, uint32_t uiSize, NW_DIAG_SHAPE_E eOpenShape,
                                const char *pcNoDatabase, const char *pcNotDone, NW_RESULT uiCode)
{
    return {uiKey,
            uiSize,
            NW_DB_PATH_E::OPEN_THEN_CURRENT,
            NW_FailsWith(NW_ERR_GENERAL, eOpenShape, NW_TEXT_NO_ENVIRONMENT),
            NW_FailsWith(NW_ERR_DB_ENVIRONMENT, NW_DIAG_ERROR, pcNoDatabase),
            NW_FailsWith(uiCode, NW_DIAG_ERROR, pcNotDone)};
}

constexpr NW_ACCESSOR_S Direct(uint32_t uiKey, uint32_t uiSize, NW_DIAG_SHAPE_E eShape,
                               const char *pcNotDone, NW_RESULT uiCode)
{
    return {uiKey,
            uiSize,
            NW_DB_PATH_E::OPEN_ONLY,
            NW_FailsWith(NW_ERR_DB_ENVIRONMENT, NW_DIAG_ERROR, NW_TEXT_NO_ENVIRONMENT),
            {},
            NW_FailsWith(uiCode, eShape, pcNotDone)};
}

constexpr const char *NW_TEXT_NO_DATABASE_TO_READ = "Failed to create LMDB environment!\n";

/* clang-format off */
/* The network record's reader words its failure as a put. */
constexpr NW_ACCESSOR_S s_stGetNetwork = Current(NW_KEY_OA_NETWORK, sizeof(NW_OA_NETWORK_DB_INFO_S),
    NW_DIAG_IFC_FAIL, NW_TEXT_NO_DATABASE_TO_READ,
    "Failed to put OANetwork data to DB! iRet = %d.\n",        NW_ERR_DB_READ);
constexpr NW_ACCESSOR_S s_stPutNetwork = Current(NW_KEY_OA_NETWORK, sizeof(NW_OA_NETWORK_DB_INFO_S),
    NW_DIAG_IFC_FAIL, NW_TEXT_NO_DATABASE,
    "Failed to put OANetwork data to DB.",                     NW_ERR_DB_WRITE);
constexpr NW_ACCESSOR_S s_stGetTemperature = Current(NW_KEY_OA_TEMPERATURE, sizeof(NW_OA_TEMPERA_INFO_S),
    NW_DIAG_ERROR, NW_TEXT_NO_DATABASE_TO_READ,
    "Failed to get OA Tempera Info data to DB! iRet = %d.\n",  NW_ERR_DB_READ);
constexpr NW_ACCESSOR_S s_stPutTemperature = Current(NW_KEY_OA_TEMPERATURE, sizeof(NW_OA_TEMPERA_INFO_S),
    NW_DIAG_ERROR, NW_TEXT_NO_DATABASE,
    "Failed to put OA Tempera Info data to DB.",               NW_ERR_DB_WRITE);
constexpr NW_ACCESSOR_S s_stGetOcp = Direct(NW_KEY_OCP_TEMPERATURE, sizeof(NW_ALL_OCP_TEMP_S),
    NW_DIAG_DEBUG, "Failed to get all ocp temp data from DB! iRet = %d.", NW_ERR_DB_READ);
constexpr NW_ACCESSOR_S s_stPutOcp = Direct(NW_KEY_OCP_TEMPERATURE, sizeof(NW_ALL_OCP_TEMP_S),
    NW_DIAG_ERROR, "Failed to put all ocp tempera data to DB.",           NW_ERR_DB_WRITE);
constexpr NW_ACCESSOR_S s_stGetFan = Direct(NW_KEY_FAN, sizeof(NW_ALL_FAN_INFO_S),
    NW_DIAG_DEBUG, "Failed to get all fan data from DB! iRet = %d.",      NW_ERR_DB_READ);
constexpr NW_ACCESSOR_S s_stPutFan = Direct(NW_KEY_FAN, sizeof(NW_ALL_FAN_INFO_S),
    NW_DIAG_ERROR, "Failed to put all fan data to DB.",                   NW_ERR_DB_WRITE);
/* clang-format on */

} // namespace

NW_RESULT NW_LMDB_Get_OaNetworkInfo(NW_OA_NETWORK_DB_INFO_S *pstOaNetworkDbInfo)
{
    NW_CHECK_NULL(pstOaNetworkDbInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetNetwork, pstOaNetworkDbInfo);
}

NW_RESULT NW_LMDB_Put_OaNetworkInfo(const NW_OA_NETWORK_DB_INFO_S *pstOaNetworkDbInfo)
{
    NW_CHECK_NULL(pstOaNetworkDbInfo, NW_ERR_NULL_POINTER);

    return NW_WriteRecord(s_stPutNetwork, pstOaNetworkDbInfo);
}

NW_RESULT NW_LMDB_Get_OATemperaInfo(NW_OA_TEMPERA_INFO_S *pstOATemperaInfo)
{
    NW_CHECK_NULL(pstOATemperaInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetTemperature, pstOATemperaInfo);
}

NW_RESULT NW_LMDB_Put_OATemperaInfo(const NW_OA_TEMPERA_INFO_S *pstOATemperaInfo)
{
    NW_CHECK_NULL(pstOATemperaInfo, NW_ERR_NULL_POINTER);

    return NW_WriteRecord(s_stPutTemperature, pstOATemperaInfo);
}

NW_RESULT NW_LMDB_Get_AllOcpTemp(NW_ALL_OCP_TEMP_S *pstAllOcpTemp)
{
    NW_CHECK_NULL(pstAllOcpTemp, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetOcp, pstAllOcpTemp);
}

NW_RESULT NW_LMDB_Put_AllOcpTemp(const NW_ALL_OCP_TEMP_S *pstAllOcpTemp)
{
    NW_CHECK_NULL(pstAllOcpTemp, NW_ERR_NULL_POINTER);

    return NW_WriteRecord(s_stPutOcp, pstAllOcpTemp);
}

NW_RESULT NW_LMDB_Get_AllOMFanInfo(NW_ALL_FAN_INFO_S *pstAllFanInfo)
{
    NW_CHECK_NULL(pstAllFanInfo, NW_ERR_NULL_POINTER);

    return NW_ReadRecordCopied(s_stGetFan, pstAllFanInfo);
}

NW_RESULT NW_LMDB_Put_AllOMFanInfo(const NW_ALL_FAN_INFO_S *pstAllFanInfo)
{
    NW_CHECK_NULL(pstAllFanInfo, NW_ERR_NULL_POINTER);

    return NW_WriteRecord(s_stPutFan, pstAllFanInfo);
}
