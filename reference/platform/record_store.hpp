// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records in an LMDB environment. */
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include <lmdb.h>

namespace bmc {

/* One environment of one process; any number of threads may use it at once. A process that inherits
 * it through fork must neither use nor destroy it. Functions throw Failure with LMDB's code. */
class RecordStore {
public:
    /* Opens the environment; makes the directory when it is missing. */
    explicit RecordStore(const std::filesystem::path &directory);
    RecordStore(const RecordStore &) = delete;
    RecordStore &operator=(const RecordStore &) = delete;
    ~RecordStore();

    /* Copies the record, which must have exactly the buffer's size. */
    void get(std::uint32_t key, std::span<std::byte> buffer) const;

    /* Stores the record and returns once it is durable. */
    void put(std::uint32_t key, std::span<const std::byte> record) const;

private:
    void open(const std::filesystem::path &directory);

    MDB_env *m_environment = nullptr;
    MDB_dbi m_database = 0;
};

} // namespace bmc
