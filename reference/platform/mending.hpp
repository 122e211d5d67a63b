// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Whether a database can be trusted, and another one in its place. */
#pragma once

#include <filesystem>

#include "platform/records.hpp"

namespace bmc {

/* Where the records are. */
struct DatabasePaths {
    std::filesystem::path directory;
    std::filesystem::path backup;

    /* A damaged database, the last one that there was. */
    std::filesystem::path aside() const
    {
        return directory.string() + ".damaged";
    }
};

enum class Condition {
    whole,
    empty, /* or missing */
    damaged,
    unknown, /* it cannot be opened, for reasons of its surroundings */
};

/* Looks at the whole database in a process of its own, since looking at damage may end it. Why it
 * is damaged is told in the log. */
Condition examine(const DatabasePaths &paths);

/* Moves the database aside, in the place of an earlier one. Throws std::system_error. */
void setAside(const DatabasePaths &paths);

/* Puts a database with the records in the place of the one that is there, which is kept aside where
 * keepsOld says so. When it is killed in between there is none, beside its backup. Throws Failure
 * or std::system_error. */
void rebuild(const DatabasePaths &paths, const Records &records, bool keepsOld);

} // namespace bmc
