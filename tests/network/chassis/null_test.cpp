// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Null checks of the chassis exchange: before the database is opened or anything is sent. */
#include "network_mng.h"
#include "null_checks.hpp"

namespace {

using fake::NullRow;

/* clang-format off */
const NullRow rows[] = {
    {"PutNetwork", "NW_LMDB_Put_OaNetworkInfo", "pstOaNetworkDbInfo",
     [] { return NW_LMDB_Put_OaNetworkInfo(nullptr); }},
    {"GetNetwork", "NW_LMDB_Get_OaNetworkInfo", "pstOaNetworkDbInfo",
     [] { return NW_LMDB_Get_OaNetworkInfo(nullptr); }},
    {"PutTemperature", "NW_LMDB_Put_OATemperaInfo", "pstOATemperaInfo",
     [] { return NW_LMDB_Put_OATemperaInfo(nullptr); }},
    {"GetTemperature", "NW_LMDB_Get_OATemperaInfo", "pstOATemperaInfo",
     [] { return NW_LMDB_Get_OATemperaInfo(nullptr); }},
    {"PutOcp", "NW_LMDB_Put_AllOcpTemp", "pstAllOcpTemp",
     [] { return NW_LMDB_Put_AllOcpTemp(nullptr); }},
    {"GetOcp", "NW_LMDB_Get_AllOcpTemp", "pstAllOcpTemp",
     [] { return NW_LMDB_Get_AllOcpTemp(nullptr); }},
    {"PutFan", "NW_LMDB_Put_AllOMFanInfo", "pstAllFanInfo",
     [] { return NW_LMDB_Put_AllOMFanInfo(nullptr); }},
    {"GetFan", "NW_LMDB_Get_AllOMFanInfo", "pstAllFanInfo",
     [] { return NW_LMDB_Get_AllOMFanInfo(nullptr); }},
    {"ReadTemperature", "LIB_OA_GetOATemperaInfo", "pstOATempInfo",
     [] { return LIB_OA_GetOATemperaInfo(nullptr); }},
    {"ReadOcp", "LIB_OA_GetAllOcpTemp", "pstAllOcpTemp",
     [] { return LIB_OA_GetAllOcpTemp(nullptr); }},
    {"SendPostState", "LIB_OA_SendBiosPostState", "pucPostState",
     [] { return LIB_OA_SendBiosPostState(nullptr); }},
    {"SendOcp", "LIB_OA_SendOcpTemp", "pusOcpTemp",
     [] { return LIB_OA_SendOcpTemp(nullptr, 4); }},
    {"SendOcpNoLength", "LIB_OA_SendOcpTemp", "pusOcpTemp",
     [] { return LIB_OA_SendOcpTemp(nullptr, 0); }},
};
/* clang-format on */

class ChassisNull : public fake::NullArgument {};

TEST_P(ChassisNull, IsLoggedAndAnsweredBeforeAnythingElse)
{
    expectNullCheck();
}

INSTANTIATE_TEST_SUITE_P(Chassis, ChassisNull, testing::ValuesIn(rows), fake::RowName());

} // namespace
