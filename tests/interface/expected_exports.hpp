// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Everything that the library promises to export, by family. */
#ifndef EXPECTED_EXPORTS_HPP
#define EXPECTED_EXPORTS_HPP

#include <set>
#include <string>

namespace interface {

using Names = std::set<std::string>;

/* clang-format off */
inline const Names expectedFunctions{
    /* results and requests */
    "LIB_NW_ChangeInvErr2IpmiCC",
    "Network_RPC_Comm", "NetworkOa_RPC_Comm", "NW_SendIpmiRpc", "LIB_BLADE_RPC_WriteConfig",
    "LIB_NW_SetNetworkRestart",
    /* records of the database */
    "NW_LMDB_Get_NetStatus", "NW_LMDB_Put_NetStatus", "NW_LMDB_Get_DNS", "NW_LMDB_Get_LLDP",
    "NW_LMDB_GetLanCfgInfo", "NW_LMDB_Get_IfcState", "NW_LMDB_Put_IfcState",
    "NW_LMDB_GetAnCfgInfo", "NW_LMDB_Get_NCSI",
    "LIB_NW_GetHostName", "LIB_NW_GetNcsiConfig", "LIB_NW_GetNcsiChannelIdOffset",
    /* addresses and names */
    "NW_CheckIpIsEmpty", "LIB_NW_CheckIPIsZero", "LIB_NW_CheckIPIsFull",
    "LIB_CheckIsValidGlobalIPv6AddrFireWall", "LIB_NW_CheckV6IsValid", "LIB_NW_CheckV4IsValid",
    "CalNETPrefix", "LIB_NW_CkeckIsValidMac", "LIB_NW_CovMacStrToNet", "LIB_CheckIpv4v6AndDomain",
    "LIB_NW_CheckHostName", "LIB_NW_DomainValidityCheck", "LIB_DnsCheckReqIndexField",
    /* segments and routes */
    "LIB_NW_CheckIPv4v6SameSegment", "LIB_NW_CheckIPv4v6RouteSameSegment",
    "LIB_NW_CheckIpv6SingRoutewithIpSameSeg", "LIB_NW_CheckIpv6SingRoutewithRouteSameSeg",
    /* probe and resolution */
    "NW_IPV4AddressConflict", "LIB_NW_ConverHostnameToIP", "LIB_NW_ParseHostnameToIP",
    /* settings */
    "LIB_NW_SetHostName", "LIB_NW_SetAllDnsConf", "LIB_NW_GetAllDnsInfo", "LIB_NW_GetLLDP",
    "LIB_NW_SetLLDP", "LIB_NW_LLDPRxEnable", "LIB_NW_IPMI_LLDPEnable",
    "LIB_NW_GetInterfaceState", "NW_CheckChannel", "LIB_NW_SetNetMode", "NW_DisableVlan",
    "NW_DealVlan", "LIB_NW_SuspendBMCArp", "LIB_NW_UpdateArpStatus",
    "LIB_NW_ResumeSuspendBMCArps", "LIB_NW_SetAnPortConfig", "LIB_NW_GetAnConfig",
    "LIB_NW_EnableNcsi", "LIB_NW_NcsiIsInitComplete",
    "LIB_NW_SetLanConfig", "LIB_NW_SetNetWorkAll", "LIB_NW_SetLanReverse",
    "LIB_NW_ChangeShareLinkMode", "LIB_NW_GetShareLinkMode", "NW_DecomposeBitmap",
    /* LAN query */
    "LIB_NW_GetLanConfig", "LIB_NW_GetAllLanConfig",
    /* gateway and sockets */
    "NW_GetV4DefaultGwMacAddr", "LIB_NW_GetSocketName", "LIB_NW_Bind", "LIB_NW_Connect",
    "LIB_NW_Send", "LIB_NW_Recv", "LIB_NW_Sendto", "LIB_NW_RecvFrom",
    /* time servers and name file */
    "LIB_NW_ParseNTPInfo", "LIB_NW_ReadBmcNameFromFile", "NW_WriteBmcNameToFile",
    /* operation log */
    "NW_OperateLogParEnable", "NW_OperateLogParManualAuto", "NW_OperateLogParDnsMode",
    "NW_OperateLogParLanSrc", "NW_OperateLogParDuplex", "NW_OperateLogParNetMode",
    "NW_OperateLogLLDPMode", "NW_OperateLogParARPCtl", "NW_OperateLogParARPSuspend",
    "NW_OperateLogParStr", "NW_OperateLogParDNSDomain", "NW_OperateLogParUshort",
    "NW_OperateLogParInt", "NW_OperateLogParIpv4", "NW_OperateLogParIpv6",
    "NW_OperateLogParIpv4Header", "NW_OperateLogParChannel", "NW_OperateLogParNicPri",
    "NW_OperateLogParCardPri", "NW_OperateLogBuild", "NW_OperateLogBuildAll",
    /* messages */
    "NM_CreateMsg", "NW_SendMsg", "NW_ReceiveMsg", "NW_FillTlv",
    /* events and lock */
    "NW_AddNetworkEvent", "NW_FindNetworkEvent", "NW_AddNetworkEventByQ",
    "NW_FindNetworkEventByQ", "NW_BackUpNetworkEvent", "NW_NetworkSetLock",
    "NW_NetworkSetUnlock", "NW_NetworkIsLock",
    /* heartbeat */
    "BMC_GetHeartbeatTimeOut", "BMC_SetHeartbeatTimeOut", "BMC_GetHeartbeatMsgCnt",
    "BMC_SetHeartbeatMsgCnt", "NW_CheckKezCapability", "HeartbeatPostLogMsg",
    /* chassis */
    "NW_LMDB_Put_OaNetworkInfo", "NW_LMDB_Get_OaNetworkInfo", "NW_LMDB_Put_OATemperaInfo",
    "NW_LMDB_Get_OATemperaInfo", "NW_LMDB_Put_AllOcpTemp", "NW_LMDB_Get_AllOcpTemp",
    "NW_LMDB_Put_AllOMFanInfo", "NW_LMDB_Get_AllOMFanInfo",
    "LIB_OA_SendPowerOnNodeRequest", "LIB_OA_SendBiosPostState", "LIB_OA_SendOcpTemp",
    "LIB_OA_SendFanSpeedAndInletTemp", "LIB_OA_GetOATemperaInfo", "LIB_OA_GetAllOcpTemp",
};

/* Constant tables, then the state of the process. */
inline const Names expectedTables{
    "g_astFailureOperateLogDefault", "g_astSuccessOperateLogDescTbl",
    "g_astNwOperateLogSubModuleTbl",
};
inline const Names expectedState{
    "g_stNetworkEvent", "g_ucNetworkSetFlag", "g_ucNetworkDNSSetFlag", "g_uiRestartDelay",
};
/* clang-format on */

} // namespace interface

#endif
