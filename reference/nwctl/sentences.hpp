/* Operation-log sentences of a change. */
#pragma once

#include <string>
#include <vector>

#include "network_mng/operate_log.h"

namespace nwctl {

/* Sentences of a successful LAN change, each fact once: the slots of the static routes repeat
 * fields, so a slot whose every field stands in another one is left out. */
std::vector<std::string> lanSentences(const NW_OPER_LOG_S &log);

/* Sentence of a change that failed; may be empty. */
std::string failureSentence(const NW_OPER_LOG_S &log);

} // namespace nwctl
