// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Ownership of LMDB's objects, its codes as exceptions, and the names of records. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <lmdb.h>

#include "platform/failure.hpp"

namespace bmc {

/* Stored most significant byte first: the database's order is the numbers' order, and a file means
 * the same on every machine. */
class Key {
public:
    explicit Key(std::uint32_t key)
        : bytes_{static_cast<std::uint8_t>(key >> 24), static_cast<std::uint8_t>(key >> 16),
                 static_cast<std::uint8_t>(key >> 8), static_cast<std::uint8_t>(key)}
    {
    }

    /* Of a record; nothing for one of somebody else's. */
    static std::optional<std::uint32_t> read(const MDB_val &name)
    {
        if (name.mv_size != sizeof(std::uint32_t)) {
            return std::nullopt;
        }
        const auto *bytes = static_cast<const std::uint8_t *>(name.mv_data);
        return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
               std::uint32_t{bytes[2]} << 8 | bytes[3];
    }

    MDB_val value()
    {
        return {bytes_.size(), bytes_.data()};
    }

private:
    std::array<std::uint8_t, 4> bytes_;
};

inline void check(int code, const std::string &what, unsigned line = __builtin_LINE())
{
    if (code != 0) {
        throw Failure(code, what + ": " + mdb_strerror(code),
                      code == MDB_NOTFOUND ? Level::information : Level::error, line);
    }
}

/* A transaction; undone unless it is committed. */
class Transaction {
public:
    Transaction(MDB_env *environment, unsigned flags) : isReadOnly_((flags & MDB_RDONLY) != 0)
    {
        int code = mdb_txn_begin(environment, nullptr, flags, &transaction_);
        if (code == MDB_READERS_FULL) {
            /* Processes that died in a read still hold their places. */
            int cleared = 0;
            mdb_reader_check(environment, &cleared);
            code = mdb_txn_begin(environment, nullptr, flags, &transaction_);
        }
        check(code, "database transaction");
    }

    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    ~Transaction()
    {
        if (transaction_ != nullptr) {
            mdb_txn_abort(transaction_);
        }
    }

    MDB_txn *get() const
    {
        return transaction_;
    }

    /* Number of this transaction; that of one that reads is the last writer's. */
    std::uint64_t id() const
    {
        return mdb_txn_id(transaction_);
    }

    /* Number of the last transaction that was written. */
    std::uint64_t last() const
    {
        return id() - (isReadOnly_ ? 0 : 1);
    }

    void commit()
    {
        check(mdb_txn_commit(std::exchange(transaction_, nullptr)), "database commit");
    }

private:
    bool isReadOnly_;
    MDB_txn *transaction_ = nullptr;
};

class Cursor {
public:
    Cursor(const Transaction &transaction, MDB_dbi database)
    {
        check(mdb_cursor_open(transaction.get(), database, &cursor_), "database cursor");
    }

    Cursor(const Cursor &) = delete;
    Cursor &operator=(const Cursor &) = delete;

    ~Cursor()
    {
        mdb_cursor_close(cursor_);
    }

    /* False behind the last record. */
    bool next(MDB_val &name, MDB_val &record)
    {
        const int code = mdb_cursor_get(cursor_, &name, &record, MDB_NEXT);
        if (code != MDB_NOTFOUND) {
            check(code, "read");
        }
        return code == 0;
    }

private:
    MDB_cursor *cursor_ = nullptr;
};

} // namespace bmc
