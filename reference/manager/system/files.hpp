// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Files that the manager keeps for other programs. */
#pragma once

#include <filesystem>
#include <string>

namespace bmc::manager {

/* Empty when there is no such file, or it is none to be read. */
std::string contentOf(const std::filesystem::path &path);

/* Replaces the file at once, durably, so that nobody sees half of it, or removes it when there is
 * to be no content; makes missing directories. Throws MachineError. */
void replaceFile(const std::filesystem::path &path, const std::string &content);

} // namespace bmc::manager
