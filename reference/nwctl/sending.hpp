// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change on its way to the network manager: sent, or only told. */
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "network_mng/operate_log.h"
#include "network_mng/rpc.h"
#include "option.hpp"
#include "session.hpp"
#include "stored.hpp"

namespace nwctl {

/* A change that every check has passed. */
struct Sending {
    std::string what;                   /* "LAN settings" */
    std::vector<NW_COMMAND_E> commands; /* in the order sent; none: not the network manager's */
    std::uint32_t module = 0;           /* NW_OPER_LOG_MODULE_E of its log, 0 without one */
    std::optional<NamedPort> port;      /* none: not the settings of one port */
    std::vector<GivenOption> settings;  /* what changes, in the user's words */
    std::function<NW_RESULT(NW_OPER_LOG_S &log)> send;
    /* Sentences of a success; by default the main slot's. */
    std::function<std::vector<std::string>(const NW_OPER_LOG_S &log)> sentences;
    /* The setting that a failure is about, null for none; by default the only one given. */
    std::function<const GivenOption *(NW_RESULT result)> about;
    /* Adds what the answer brought beside sentences, if anything. */
    std::function<void(Json &answer, std::string &text)> complete;
};

/* Sends the change and prints its sentences, or tells what would be sent. Throws Failure: manager
 * or transport, with the sentence of the failed change. */
void carryOut(const Sending &sending, bool dryRun, Session &session);

} // namespace nwctl
