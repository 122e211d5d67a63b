// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Null arguments of the getters and of the setters that carry no record of the caller's.
#include "network_mng.h"
#include "null_checks.hpp"

namespace {

NW_OPER_LOG_S context;
std::uint8_t byte;
const std::uint8_t suspendRequest[2] = {0, 1};

/* clang-format off */
const fake::NullRow rows[] = {
    {"DnsInfo", "LIB_NW_GetAllDnsInfo", "pstDnsInfo", [] { return LIB_NW_GetAllDnsInfo(nullptr); }},
    // The only function that answers 1.
    {"Lldp", "LIB_NW_GetLLDP", "pstLLDPInfo", [] { return LIB_NW_GetLLDP(nullptr); }, 1},
    {"LldpReception", "LIB_NW_LLDPRxEnable", "pstOperLog", [] { return LIB_NW_LLDPRxEnable(1, nullptr); }},
    {"LldpReceptionInvalid", "LIB_NW_LLDPRxEnable", "pstOperLog", [] { return LIB_NW_LLDPRxEnable(2, nullptr); }},
    {"LldpIpmi", "LIB_NW_IPMI_LLDPEnable", "pstOperLog", [] { return LIB_NW_IPMI_LLDPEnable(1, nullptr); }},
    {"LldpIpmiInvalid", "LIB_NW_IPMI_LLDPEnable", "pstOperLog", [] { return LIB_NW_IPMI_LLDPEnable(8, nullptr); }},
    {"InterfaceState", "LIB_NW_GetInterfaceState", "pstIfcStateInfo", [] { return LIB_NW_GetInterfaceState(nullptr); }},
    {"Channel", "NW_CheckChannel", "puiIndex", [] { return NW_CheckChannel(1, nullptr); }},
    {"ChannelInvalid", "NW_CheckChannel", "puiIndex", [] { return NW_CheckChannel(2, nullptr); }},
    {"SuspendRequest", "LIB_NW_SuspendBMCArp", "pstSuspendBMCArpReq", [] { return LIB_NW_SuspendBMCArp(nullptr, &byte, &context); }},
    {"SuspendStatus", "LIB_NW_SuspendBMCArp", "pucArpSuspendStatus", [] { return LIB_NW_SuspendBMCArp(suspendRequest, nullptr, &context); }},
    {"SuspendContext", "LIB_NW_SuspendBMCArp", "pstOperLog", [] { return LIB_NW_SuspendBMCArp(suspendRequest, &byte, nullptr); }},
    {"SuspendRequestFirst", "LIB_NW_SuspendBMCArp", "pstSuspendBMCArpReq", [] { return LIB_NW_SuspendBMCArp(nullptr, nullptr, nullptr); }},
    {"SuspendRequestBeforeContext", "LIB_NW_SuspendBMCArp", "pstSuspendBMCArpReq", [] { return LIB_NW_SuspendBMCArp(nullptr, &byte, nullptr); }},
    {"SuspendStatusBeforeContext", "LIB_NW_SuspendBMCArp", "pucArpSuspendStatus", [] { return LIB_NW_SuspendBMCArp(suspendRequest, nullptr, nullptr); }},
    {"ArpStatus", "LIB_NW_UpdateArpStatus", "pucArpSuspendStatus", [] { return LIB_NW_UpdateArpStatus(1, 2, 3, nullptr); }},
    {"AutoNegotiation", "LIB_NW_GetAnConfig", "pstAnCfgDbInfo", [] { return LIB_NW_GetAnConfig(nullptr); }},
    {"ShareLinkMode", "LIB_NW_GetShareLinkMode", "pucNcsiEnable", [] { return LIB_NW_GetShareLinkMode(nullptr); }},
};
/* clang-format on */

class SettingNull : public fake::NullArgument {};

TEST_P(SettingNull, IsLoggedAndNothingElseHappens)
{
    expectNullCheck();
}

INSTANTIATE_TEST_SUITE_P(Settings, SettingNull, testing::ValuesIn(rows), fake::RowName());

} // namespace
