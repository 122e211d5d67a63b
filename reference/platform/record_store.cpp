// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/record_store.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "common/descriptor.hpp"
#include "common/files.hpp"
#include "common/standard_descriptors.hpp"
#include "platform/backup.hpp"
#include "platform/failure.hpp"

namespace bmc {

namespace {

/* Two orders of magnitude above what all records take, small beside a 32-bit address space. */
constexpr std::size_t mapSize = 16U << 20;

/* Room for about a thousand readers at once. */
constexpr off_t lockFileSize = 64 << 10;

constexpr mode_t privateDirectory = 0700;
constexpr mode_t privateFile = 0600;

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

void check(int code, const std::string &what, unsigned line = __builtin_LINE())
{
    if (code != 0) {
        throw Failure(code, what + ": " + mdb_strerror(code),
                      code == MDB_NOTFOUND ? Level::information : Level::error, line);
    }
}

/* A transaction; undone unless it is committed. */
class Transaction {
public:
    Transaction(MDB_env *environment, unsigned flags)
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

    void commit()
    {
        check(mdb_txn_commit(std::exchange(transaction_, nullptr)), "database commit");
    }

private:
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

std::span<const std::byte> bytesOf(const MDB_val &value)
{
    return {static_cast<const std::byte *>(value.mv_data), value.mv_size};
}

void copyWhole(std::span<const std::byte> record, std::span<std::byte> buffer)
{
    if (record.size() != buffer.size()) {
        throw Failure(MDB_BAD_VALSIZE, "read: the record has " + std::to_string(record.size()) +
                                           " bytes, not " + std::to_string(buffer.size()));
    }
    std::copy(record.begin(), record.end(), buffer.begin());
}

Records recordsOf(const Transaction &transaction, MDB_dbi database)
{
    Cursor cursor(transaction, database);
    Records records;
    MDB_val name{};
    MDB_val record{};
    while (cursor.next(name, record)) {
        if (const auto key = Key::read(name)) {
            const auto bytes = bytesOf(record);
            records.emplace(*key, std::vector<std::byte>(bytes.begin(), bytes.end()));
        }
    }
    return records;
}

/* When the write of a meta page has failed, it may be on the disk or not, and the environment
 * refuses everything from then on. */
bool isBroken(MDB_env *environment)
{
    MDB_txn *transaction = nullptr;
    const int code = mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction);
    if (code == 0) {
        mdb_txn_abort(transaction);
    }
    return code == MDB_PANIC;
}
static_assert(outcomeUnknown == MDB_PANIC);

/* The transaction's failure stands when it is sure that nothing was written. */
void commitDurably(Transaction &transaction, MDB_env *environment)
{
    try {
        transaction.commit();
    } catch (const Failure &failure) {
        if (isBroken(environment)) {
            throw Failure(outcomeUnknown, std::string(failure.what()) + ", its outcome is unknown");
        }
        throw;
    }
}

void makeDirectory(const std::filesystem::path &directory)
{
    std::error_code error;
    std::filesystem::create_directories(directory.parent_path(), error);
    if (!error && mkdir(directory.c_str(), privateDirectory) != 0 && errno != EEXIST) {
        error.assign(errno, std::system_category());
    }
    if (error) {
        throw Failure(error.value(), directory.string() + ": " + error.message());
    }
}

/* The lock table is written through a mapping, where a full disk would kill the process: its blocks
 * are taken beforehand. A table that is in use already keeps its size. */
void reserveLockFile(const std::filesystem::path &path)
{
    const Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, privateFile));
    struct stat status {};
    const bool failed = !file || fstat(file.get(), &status) != 0 ||
                        (status.st_size == 0 && fallocate(file.get(), 0, 0, lockFileSize) != 0 &&
                         errno != EOPNOTSUPP);
    if (failed) {
        throw Failure(errno, path.string() + ": " + errnoText(errno));
    }
}

/* A file that was cut short is read through a mapping, where what is missing would kill the
 * process. */
void requireWholeFile(MDB_env *environment)
{
    MDB_envinfo info{};
    MDB_stat pages{};
    mdb_filehandle_t file{};
    struct stat status {};
    check(mdb_env_info(environment, &info), "database file");
    check(mdb_env_stat(environment, &pages), "database file");
    check(mdb_env_get_fd(environment, &file), "database file");

    const auto needed = static_cast<off_t>((info.me_last_pgno + 1) * pages.ms_psize);
    if (fstat(file, &status) != 0 || status.st_size < needed) {
        throw Failure(MDB_CORRUPTED, "database file: cut short");
    }
}

/* A record would be lost in a file that has no name any more. */
void requireNamedFile(MDB_env *environment)
{
    mdb_filehandle_t file{};
    struct stat status {};
    check(mdb_env_get_fd(environment, &file), "database file");
    if (fstat(file, &status) != 0 || status.st_nlink == 0) {
        throw Failure(ESTALE, "database file: removed");
    }
}

} // namespace

RecordStore::RecordStore(const std::filesystem::path &directory, std::filesystem::path backup)
    : backup_(std::move(backup))
{
    occupyStandardDescriptors();
    try {
        openForWriting(directory);
    } catch (const Failure &failure) {
        if (failure.code() != EROFS) {
            throw;
        }
        openEnvironment(directory, MDB_RDONLY);
        isReadOnly_ = true;
    }
}

RecordStore::~RecordStore()
{
    mdb_env_close(environment_);
}

void RecordStore::openForWriting(const std::filesystem::path &directory)
{
    makeDirectory(directory);
    reserveLockFile(directory / "lock.mdb");
    openEnvironment(directory, 0);
    try {
        syncDirectory(directory);
        syncDirectory(directory / "..");
    } catch (...) {
        mdb_env_close(environment_);
        throw;
    }
}

void RecordStore::openEnvironment(const std::filesystem::path &directory, unsigned flags)
{
    check(mdb_env_create(&environment_), "database environment");
    try {
        check(mdb_env_set_mapsize(environment_, mapSize), "database size");
        /* Readers belong to transactions, not to threads. */
        check(mdb_env_open(environment_, directory.c_str(), MDB_NOTLS | flags, privateFile),
              directory.string());
        requireWholeFile(environment_);

        int cleared = 0;
        check(mdb_reader_check(environment_, &cleared), "database readers");

        Transaction transaction(environment_, MDB_RDONLY);
        check(mdb_dbi_open(transaction.get(), nullptr, 0, &database_), "database");
        transaction.commit();
    } catch (...) {
        mdb_env_close(environment_);
        throw;
    }
}

void RecordStore::get(std::uint32_t key, std::span<std::byte> buffer) const
{
    const Transaction transaction(environment_, MDB_RDONLY);
    Key bytes(key);
    MDB_val name = bytes.value();
    MDB_val record{};
    check(mdb_get(transaction.get(), database_, &name, &record), "read");
    copyWhole(bytesOf(record), buffer);
}

void RecordStore::put(std::span<const RecordWrite> records) const
{
    if (isReadOnly_) {
        throw Failure(EROFS, "the database is read-only");
    }
    requireNamedFile(environment_);
    Transaction transaction(environment_, 0);
    for (const RecordWrite &record : records) {
        Key bytes(record.key);
        MDB_val name = bytes.value();
        MDB_val value{record.content.size(), const_cast<std::byte *>(record.content.data())};
        check(mdb_put(transaction.get(), database_, &name, &value, 0), "write");
    }
    commitDurably(transaction, environment_);
    keepBackup();
}

Records RecordStore::copy() const
{
    return recordsOf(Transaction(environment_, MDB_RDONLY), database_);
}

/* What was written is written, whatever becomes of its copy. */
void RecordStore::keepBackup() const noexcept
{
    guarded([this] {
        /* Its lock keeps the copies in the order of the commits, whoever makes them. */
        const Transaction transaction(environment_, 0);
        writeBackup(backup_, recordsOf(transaction, database_));
    });
}

void RecordCopies::get(std::uint32_t key, std::span<std::byte> buffer) const
{
    const auto record = records_.find(key);
    check(record != records_.end() ? 0 : MDB_NOTFOUND, "read");
    copyWhole(record->second, buffer);
}

} // namespace bmc
