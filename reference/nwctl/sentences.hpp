// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Operation-log sentences of a change. */
#pragma once

#include <string>
#include <vector>

#include "network_mng/operate_log.h"

namespace nwctl {

/* Sentences of a successful LAN change, each fact once: the slots of the static routes repeat
 * fields, so a slot whose every field stands in another one is left out. */
std::vector<std::string> lanSentences(const NW_OPER_LOG_S &log);

/* Sentences of a successful combined change: of its LAN, DNS and network mode parts. */
std::vector<std::string> combinedSentences(const NW_OPER_LOG_S &log);

/* Sentence of any other successful change; none when a setting could not be read back. */
std::vector<std::string> mainSentence(const NW_OPER_LOG_S &log);

/* Sentence of a change that failed; may be empty. */
std::string failureSentence(const NW_OPER_LOG_S &log);

/* Does the log say that a change of the module failed? module: one NW_OPER_LOG_MODULE_E bit, or 0,
 * which has no log. */
bool saysFailure(const NW_OPER_LOG_S &log, std::uint32_t module);

} // namespace nwctl
