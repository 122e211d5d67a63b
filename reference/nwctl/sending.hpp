// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change on its way to the network manager: sent, or only foreseen. */
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "network_mng/operate_log.h"
#include "network_mng/rpc.h"
#include "nwctl/confirmation.hpp"
#include "nwctl/stored.hpp"
#include "settings/change.hpp"
#include "settings/difference.hpp"

namespace nwctl {

/* A change that is ready to be sent. */
struct Sending {
    std::string what{};                   /* "LAN settings" */
    std::string deed{};                   /* what is done, where no setting changes */
    std::vector<NW_COMMAND_E> commands{}; /* in the order sent; none: not the network manager's */
    std::uint32_t module = 0;             /* NW_OPER_LOG_MODULE_E of its log, 0 without one */
    std::optional<NamedPort> port{};      /* none: not the settings of one port */
    Given given{};                        /* what changes, in the user's words */
    std::vector<std::string> notes{};     /* what is to be known of it */
    bool isGuarded = false;               /* it may cut off those who come in over the ports */
    /* What becomes of the stored settings, one behind the other; none where nothing is stored. */
    std::vector<bmc::settings::Change> changes{};
    /* The same for what is no setting, as settings::changesOf tells it. */
    std::function<bmc::settings::Json()> foreseen{};
    std::string comparedWith = "what is stored"; /* by a dry run */
    /* The library's result; throws Failure where that doesn't tell. */
    std::function<NW_RESULT(NW_OPER_LOG_S &log)> send{};
    /* Sentences of a success; by default the main slot's. */
    std::vector<std::string> (*sentences)(const NW_OPER_LOG_S &log) = nullptr;
    /* What the answer brought beside sentences, if anything. */
    std::function<Rows()> complete{};
};

/* The configuration that the changes lead to, by the manager's own checks. Throws Failure
 * (refused). */
Configuration foresee(const Configuration &present, const Sending &sending);

/* Throws Failure (refused) when the changes make two networks overlap or a route meet another
 * port; everything else is left to the manager. */
void requireNoOverlap(const Configuration &present, const Sending &sending);

/* Why the change would be refused, for people. */
const char *reasonOf(const bmc::settings::Refusal &refusal);

/* Sends the change and prints its sentences. Throws Failure: manager or transport, with the
 * sentence of the failed change. */
void send(const Sending &sending, const Confirmation &confirmation, Session &session);

/* Tells what would be sent, and what it would change. Throws Failure (refused). */
void tell(const Sending &sending, Session &session);

/* Prepares a change on one copy of all records; then sends it, or tells it in a dry run. */
void carryOut(const std::function<Sending()> &prepare, const Arguments &arguments,
              Session &session);

/* The flag --dry-run. */
Parameter dryRunFlag();
/* What those may be told that may cut somebody off. */
std::vector<Parameter> guardParameters();

/* Settings that have changed or would, as settings::changesOf tells them: old and new, a line each;
 * the key "changes". */
Row changesRow(const bmc::settings::Json &changes);

/* What is to be known beside what has changed; the key "notes". */
Row notesRow(const std::vector<std::string> &notes);

/* Sentences of a successful LAN change, each fact once: the slots of the static routes repeat
 * fields, so a slot whose every field stands in another one is left out. */
std::vector<std::string> lanSentences(const NW_OPER_LOG_S &log);

/* Does the log say that a change of the module failed? module: one NW_OPER_LOG_MODULE_E bit, or 0,
 * which has no log. */
bool saysFailure(const NW_OPER_LOG_S &log, std::uint32_t module);

} // namespace nwctl
