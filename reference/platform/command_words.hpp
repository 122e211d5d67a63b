// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command lines as words. */
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bmc {

/* Splits a command line as a shell does, without any expansion: '...' and "..." group, a backslash
 * takes the next character as it is (within double quotes only before $ ` " and \). Throws Failure
 * for an unquoted character by which a shell would do more than run one program, and for a quote or
 * backslash without its end. */
std::vector<std::string> splitCommand(std::string_view command);

} // namespace bmc
