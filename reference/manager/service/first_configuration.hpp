// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwmanagerd --init: the first records of a configuration database. */
#pragma once

#include <string_view>

namespace bmc::manager {

/* Writes the configuration of a document (settings/document.hpp), all of it or nothing. Host name,
 * DNS, LLDP and link modes that the document doesn't give stay as they are stored, or have their
 * first values; LAN settings have their first values. Throws DocumentError, and Refusal when the
 * database holds a configuration already and isForced isn't set, or fails. */
void writeFirstConfiguration(std::string_view document, bool isForced);

} // namespace bmc::manager
