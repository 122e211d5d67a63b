// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A copy of all records in one file, for the day when the database is damaged.
 *
 *   "bmcrecs\n"  u32 version  u32 records  { u32 key  u32 size  bytes }...  u32 checksum
 *
 * Numbers have the most significant byte first; the checksum is the CRC-32 of all bytes before. */
#pragma once

#include <filesystem>

#include "platform/records.hpp"

namespace bmc {

/* The database's, and so at most a backup's: two orders of magnitude above what all records take,
 * small beside a 32-bit address space. */
inline constexpr std::size_t databaseSize = 16U << 20;

/* With which a copy of the records ends. */
std::uint32_t checksumOf(const Records &records);

/* Replaces the file durably. Throws std::system_error. */
void writeBackup(const std::filesystem::path &file, const Records &records);

/* Throws Failure when the file is not whole, std::system_error when it cannot be read. */
Records readBackup(const std::filesystem::path &file);

} // namespace bmc
