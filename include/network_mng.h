// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* libnetwork_mng: read and change the network configuration of a baseboard management controller.
 *
 * Plain functions on packed records. Every function works on the caller's thread, keeps no state
 * but what event.h and message.h name,
 * allocates nothing and frees nothing of the caller's. A null pointer is logged with the
 * parameter's name and answered with NW_ERR_NULL_POINTER unless the function says otherwise; it is
 * found before anything else is done. */
#ifndef NETWORK_MNG_H
#define NETWORK_MNG_H

#include "network_mng/base.h"
#include "network_mng/chassis.h"
#include "network_mng/check.h"
#include "network_mng/discovery.h"
#include "network_mng/event.h"
#include "network_mng/lan.h"
#include "network_mng/message.h"
#include "network_mng/operate_log.h"
#include "network_mng/rpc.h"
#include "network_mng/settings.h"
#include "network_mng/socket.h"
#include "network_mng/store.h"

#endif
