// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The LLDP agent of the system, through its command line client. */
#pragma once

#include <string>

namespace bmc::manager {

/* Tells it "INTERFACE,INTERFACE STATUS". The record is what counts: an agent that is missing, or
 * doesn't listen within two seconds, is worth a line in the log. */
void tellLldpAgent(const std::string &settings);

} // namespace bmc::manager
