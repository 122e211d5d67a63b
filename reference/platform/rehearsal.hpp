// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Whether a database can be written as well as read. */
#pragma once

#include <filesystem>

namespace bmc {

/* Writes all records of the file anew, in a copy that lies in memory: a writer believes marks of a
 * page that a reader passes over. Throws Failure when the file is damaged, or std::system_error;
 * damage may well end the process instead. Nobody may write the file meanwhile. */
void rehearse(const std::filesystem::path &file);

} // namespace bmc
