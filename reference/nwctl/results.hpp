// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Result codes in words. */
#pragma once

#include <string>
#include <string_view>

#include "network_mng/base.h"

namespace nwctl {

/* Family of addresses that a result is about. */
enum class Subject { none, ipv4, ipv6 };

struct ResultInfo {
    NW_RESULT code;
    Subject subject;
    std::string_view name;
    std::string meaning;
};

/* Row of the code; a code that differs from a row in the family's mark bits alone has that row's
 * words. A code without a row gets general words. */
ResultInfo describeResult(NW_RESULT code);

/* "0x1e000a27", and its IPMI completion code as "0xff". */
std::string codeText(NW_RESULT code);
std::string completionText(NW_RESULT code);

} // namespace nwctl
