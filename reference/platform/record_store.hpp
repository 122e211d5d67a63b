// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records in an LMDB environment. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <utility>

#include <lmdb.h>

#include "platform/records.hpp"

namespace bmc {

/* All records of a moment, and its own copies of them. */
class RecordCopies {
public:
    explicit RecordCopies(Records records) : records_(std::move(records)) {}

    /* As RecordStore::get. */
    void get(std::uint32_t key, std::span<std::byte> buffer) const;

private:
    Records records_;
};

/* One environment of one process; any number of threads may use it at once. A process that inherits
 * it through fork must neither use nor destroy it. Functions throw Failure with LMDB's code. */
class RecordStore {
public:
    /* Opens the environment; makes the directory when it is missing. One that may be read and not
     * written is opened for reading alone. After each commit the backup is written. */
    explicit RecordStore(const std::filesystem::path &directory, std::filesystem::path backup);
    RecordStore(const RecordStore &) = delete;
    RecordStore &operator=(const RecordStore &) = delete;
    ~RecordStore();

    /* Copies the record, which must have exactly the buffer's size. */
    void get(std::uint32_t key, std::span<std::byte> buffer) const;

    /* Stores all of the records or none, and returns once they are durable. Throws Failure with
     * outcomeUnknown when nobody can know which of both it is. */
    void put(std::span<const RecordWrite> records) const;

    /* Throws Failure when they are not what was written. */
    Records copy() const;

    /* Looks at the whole file and throws Failure when it is damaged, for as far as it gets: the
     * file's pages are read where they lie, and those of a damaged one may well end the process. */
    void prove() const;

    /* Another file has taken the place of the one that is open. */
    bool isReplaced() const;

private:
    void openForWriting(const std::filesystem::path &directory);
    void openEnvironment(const std::filesystem::path &directory, unsigned flags);
    void keepBackup() const noexcept;

    std::filesystem::path path_;
    std::filesystem::path backup_;
    bool isReadOnly_ = false;
    MDB_env *environment_ = nullptr;
    MDB_dbi database_ = 0;
};

} // namespace bmc
