// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Removal of the ports' VLAN sub-interfaces. */
#include "network_mng/settings.h"
#include "nw_store.h"

namespace {

/* Read from a database that is open already. */
constexpr NW_ACCESSOR_S s_stGetVlan{
    NW_KEY_LAN_CFG,
    sizeof(NW_LAN_CFG_DB_INFO_S),
    NW_DB_PATH_E::CURRENT_ONLY,
    {},
    {},
    NW_FailsWithDatabasesCode(NW_DIAG_IFC_FAIL, NW_TEXT_LAN_CFG_NOT_READ)};

constexpr size_t NW_COMMAND_SIZE = 64;

const char *NW_BaseName(uint8_t ucIfcState, uint32_t uiPort)
{
    if (ucIfcState != NW_IFC_STATE_SEPARATE) {
        return "bond0";
    }
    return uiPort == NW_PORT_ETH0 ? "eth0" : "eth1";
}

void NW_RemoveVlan(const char *pcBaseName, uint16_t usVlanid)
{
    char szName[NW_IFC_NAME_SIZE]{};
    char szCommand[NW_COMMAND_SIZE]{};

    BMC_Scnprintf(szName, sizeof(szName), "%s.%d", pcBaseName, usVlanid);
    BMC_Scnprintf(szCommand, sizeof(szCommand), "vconfig rem %s", szName);
    (void)BMC_SafeSystem(szCommand);
}

} // namespace

void NW_DisableVlan(uint32_t uiPort)
{
    if (uiPort >= NW_PORT_COUNT) {
        return;
    }

    void *pDb = nullptr;
    NW_IFC_STATE_DB_INFO_S stIfcState{};
    if (NW_OpenStore(g_stGetIfcState, nullptr, &pDb) != NW_OK ||
        NW_FetchRecord(g_stGetIfcState, pDb, &stIfcState) != NW_OK) {
        return;
    }
    NW_DIAG(NW_DIAG_IFC_TRACE, "ucIfcState:%d.", stIfcState.ucIfcState);

    NW_LAN_CFG_DB_INFO_S stLan{};
    if (NW_FetchRecord(s_stGetVlan, pDb, &stLan) != NW_OK) {
        return;
    }
    const uint16_t usVlanid = stLan.astPort[uiPort].stVlan.usVlanid;
    NW_DIAG(NW_DIAG_IFC_TRACE, "usVlanid:%d.", usVlanid);
    if (usVlanid != 0) {
        NW_RemoveVlan(NW_BaseName(stIfcState.ucIfcState, uiPort), usVlanid);
    }
}

void NW_DealVlan(void)
{
    NW_DisableVlan(NW_PORT_ETH0);
    NW_DisableVlan(NW_PORT_ETH1);
}
