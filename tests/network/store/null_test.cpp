// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Null checks of the accessors: before the database is opened. */
#include "network_mng.h"
#include "null_checks.hpp"

namespace {

using fake::NullRow;

/* clang-format off */
const NullRow rows[] = {
    {"NetStatus", "NW_LMDB_Get_NetStatus", "pstSetInProgress",
     [] { return NW_LMDB_Get_NetStatus(nullptr); }},
    {"Dns", "NW_LMDB_Get_DNS", "pstDnsDbInfo",
     [] { return NW_LMDB_Get_DNS(nullptr); }},
    {"Lldp", "NW_LMDB_Get_LLDP", "pstLldpDbInfo",
     [] { return NW_LMDB_Get_LLDP(nullptr); }},
    {"LanCfg", "NW_LMDB_GetLanCfgInfo", "pstLanCfgDbInfo",
     [] { return NW_LMDB_GetLanCfgInfo(nullptr); }},
    {"IfcState", "NW_LMDB_Get_IfcState", "pstIfcStateDbInfo",
     [] { return NW_LMDB_Get_IfcState(nullptr); }},
    {"PutIfcState", "NW_LMDB_Put_IfcState", "pstIfcStateDbInfo",
     [] { return NW_LMDB_Put_IfcState(nullptr); }},
    {"AnCfg", "NW_LMDB_GetAnCfgInfo", "pstAnCfgDbInfo",
     [] { return NW_LMDB_GetAnCfgInfo(nullptr); }},
    {"Ncsi", "NW_LMDB_Get_NCSI", "pstNcsiDbInfo",
     [] { return NW_LMDB_Get_NCSI(nullptr); }},
    {"NcsiConfig", "LIB_NW_GetNcsiConfig", "pstNcsiCfgDbInfo",
     [] { return LIB_NW_GetNcsiConfig(nullptr); }},
    {"HostName", "LIB_NW_GetHostName", "pstHostNameInfo",
     [] { return LIB_NW_GetHostName(nullptr); }},
    /* No result of its own: the log's answer, 0 on the fake. */
    {"NcsiChannelIdOffset", "LIB_NW_GetNcsiChannelIdOffset", "pusChannelIdOffset",
     [] { return LIB_NW_GetNcsiChannelIdOffset(nullptr); }, 0},
};
/* clang-format on */

class AccessorNull : public fake::NullArgument {};

TEST_P(AccessorNull, IsLoggedAndAnsweredBeforeTheDatabaseIsOpened)
{
    expectNullCheck();
}

INSTANTIATE_TEST_SUITE_P(Store, AccessorNull, testing::ValuesIn(rows), fake::RowName());

} // namespace
