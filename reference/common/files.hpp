// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Small files, read and replaced as a whole. Failures are std::system_error with errno as the code
 * and the path in the text. */
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace bmc {

/* errno, or the error given, as the failure of a file. */
[[noreturn]] void failFile(const std::filesystem::path &path, int error);

/* The first bytes of a regular file, at most limit. Anything else in its place, a pipe above all,
 * is refused and never waited for. */
std::string readStart(const std::filesystem::path &path, std::size_t limit);

/* The whole of a regular file; one of more than limit bytes fails with EFBIG. */
std::string readFile(const std::filesystem::path &path, std::size_t limit);

/* As readFile; nothing when there is no such file. */
std::optional<std::string> findFile(const std::filesystem::path &path, std::size_t limit);

/* Replaces whatever has the path's name at once and durably: a reader, and the next start after a
 * power failure, find the old bytes or the new ones. Makes missing directories. Any number of
 * threads and processes may replace one file; what a killed one left behind goes with the next
 * replacement. */
void replaceFile(const std::filesystem::path &path, std::string_view bytes, mode_t mode);

/* Removes the file durably; one that is missing is no failure. */
void removeFile(const std::filesystem::path &path);

/* Writes the names in a directory to the disk. */
void syncDirectory(const std::filesystem::path &directory);

} // namespace bmc
