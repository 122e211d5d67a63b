// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Change of the host name. */
#include "network_mng/settings.h"
#include "nw_setter.h"

static constexpr NW_LOGGED_SETTER_S s_stSetHostName{
    {Network_RPC_Comm, NW_CMD_SET_HOSTNAME, NW_DIAG_ERROR,
     "BMC_RPC_CallWithStruct Failed when setting hostname!"},
    NW_LOG_HOSTNAME,
    NW_ANSWERS_E::RESPONSE_WORD};

NW_RESULT LIB_NW_SetHostName(uint8_t ucHostNameArg, const void *pstHostNameConf,
                             NW_OPER_LOG_S *pstOperLog)
{
    NW_CHECK_NULL(pstHostNameConf, NW_ERR_NULL_POINTER);
    NW_CHECK_NULL(pstOperLog, NW_ERR_NULL_POINTER);

    const auto *pstConf = static_cast<const NW_HOSTNAME_CONF_S *>(pstHostNameConf);
    NW_HOSTNAME_SET_REQ_S stRequest{};
    stRequest.uiHead = pstConf->uiHead;
    stRequest.ucSetMask = ucHostNameArg;
    stRequest.ucByte4 = pstConf->ucByte4;
    stRequest.ucLength = pstConf->ucLength;
    memcpy(stRequest.acHostName, pstConf->acHostName,
           pstConf->ucLength < sizeof(stRequest.acHostName) ? pstConf->ucLength
                                                            : sizeof(stRequest.acHostName));
    memcpy(stRequest.acTail, pstConf->acTail, sizeof(stRequest.acTail));

    return NW_Set(s_stSetHostName, &stRequest, sizeof(stRequest), pstOperLog);
}
