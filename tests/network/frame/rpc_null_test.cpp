// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Null checks of the RPC channels: request before response, before anything is sent. */
#include "network_mng.h"
#include "null_checks.hpp"

namespace {

using fake::NullRow;

std::uint8_t request[3074];
std::uint32_t response[66];

/* clang-format off */
const NullRow rows[] = {
    {"NetworkRequest", "Network_RPC_Comm", "pstReqData",
     [] { return Network_RPC_Comm(nullptr, response, 1); }},
    {"NetworkResponse", "Network_RPC_Comm", "pstResData",
     [] { return Network_RPC_Comm(request, nullptr, 1); }},
    {"NetworkBoth", "Network_RPC_Comm", "pstReqData",
     [] { return Network_RPC_Comm(nullptr, nullptr, 1); }},
    {"ChassisRequest", "NetworkOa_RPC_Comm", "pstReqData",
     [] { return NetworkOa_RPC_Comm(nullptr, response, 1); }},
    {"ChassisResponse", "NetworkOa_RPC_Comm", "pstResData",
     [] { return NetworkOa_RPC_Comm(request, nullptr, 1); }},
    {"ChassisBoth", "NetworkOa_RPC_Comm", "pstReqData",
     [] { return NetworkOa_RPC_Comm(nullptr, nullptr, 1); }},
    {"BladeRequest", "LIB_BLADE_RPC_WriteConfig", "pstReqData",
     [] { return LIB_BLADE_RPC_WriteConfig(nullptr, 1, response); }},
    {"BladeResponse", "LIB_BLADE_RPC_WriteConfig", "pstResData",
     [] { return LIB_BLADE_RPC_WriteConfig(request, 1, nullptr); }},
    {"BladeBoth", "LIB_BLADE_RPC_WriteConfig", "pstReqData",
     [] { return LIB_BLADE_RPC_WriteConfig(nullptr, 1, nullptr); }},
    {"IpmiRequest", "NW_SendIpmiRpc", "pstReqData",
     [] { return NW_SendIpmiRpc(nullptr, 1); }},
};
/* clang-format on */

class RpcNull : public fake::NullArgument {};

TEST_P(RpcNull, IsLoggedAndAnsweredBeforeSending)
{
    expectNullCheck();
}

INSTANTIATE_TEST_SUITE_P(Rpc, RpcNull, testing::ValuesIn(rows), fake::RowName());

} // namespace
