// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Files that the manager keeps for other programs. */
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "transaction.hpp"

namespace bmc::manager {

/* Nothing when there is no such file. */
std::optional<std::string> contentOf(const std::filesystem::path &path);

/* Replaces the file at once, or removes it, so that nobody sees half of it; makes missing
 * directories. Throws Refusal. */
void replaceFile(const std::filesystem::path &path, const std::optional<std::string> &content);

/* Lets the transaction put the file back as it is now. */
void restoreLater(const std::filesystem::path &path, Transaction &transaction);

} // namespace bmc::manager
