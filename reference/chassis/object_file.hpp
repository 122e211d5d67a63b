// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A JSON object that is kept in a file. */
#pragma once

#include <filesystem>

#include <nlohmann/json.hpp>

namespace bmc::chassis {

using Json = nlohmann::ordered_json;

/* The file's object; an empty one, after a log line, when the file holds something else. A file
 * that is missing is no matter for the log. */
Json loadObject(const std::filesystem::path &path);

/* Replaces the file at once: a reader finds the old object or the new one. Throws
 * std::system_error. */
void storeObject(const std::filesystem::path &path, const Json &object);

} // namespace bmc::chassis
