// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/record_store.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>

#include "common/descriptor.hpp"
#include "common/files.hpp"
#include "common/standard_descriptors.hpp"
#include "platform/backup.hpp"
#include "platform/failure.hpp"
#include "platform/lmdb_objects.hpp"
#include "platform/rehearsal.hpp"

namespace bmc {

namespace {

/* Room for about a thousand readers at once. */
constexpr off_t lockFileSize = 64 << 10;

constexpr mode_t privateDirectory = 0700;
constexpr mode_t privateFile = 0600;

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

/* Beside the records, behind all of them: what proves that they read as they were written. Somebody
 * else's transaction makes it say nothing. */
struct Proof {
    std::uint64_t transaction;
    std::uint32_t checksum; /* of all records */
    std::uint32_t reserved;
};

constexpr std::array<std::uint8_t, 8> proofName{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

MDB_val valueOfProofName()
{
    return {proofName.size(), const_cast<std::uint8_t *>(proofName.data())};
}

bool isProof(const MDB_val &name, const MDB_val &record)
{
    return name.mv_size == proofName.size() && record.mv_size == sizeof(Proof) &&
           std::memcmp(name.mv_data, proofName.data(), proofName.size()) == 0;
}

Records recordsOf(const Transaction &transaction, MDB_dbi database)
{
    Cursor cursor(transaction, database);
    Records records;
    std::optional<Proof> proof;
    MDB_val name{};
    MDB_val record{};
    while (cursor.next(name, record)) {
        const auto bytes = bytesOf(record);
        if (const auto key = Key::read(name)) {
            records.emplace(*key, std::vector<std::byte>(bytes.begin(), bytes.end()));
        } else if (isProof(name, record)) {
            std::memcpy(&proof.emplace(), record.mv_data, sizeof(*proof));
        }
    }
    if (proof && proof->transaction == transaction.last() &&
        proof->checksum != checksumOf(records)) {
        throw Failure(MDB_CORRUPTED, "database: the records are not what was written");
    }
    return records;
}

void write(const Transaction &transaction, MDB_dbi database, MDB_val name, MDB_val content)
{
    check(mdb_put(transaction.get(), database, &name, &content, 0), "write");
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
static_assert(outcomeUnknown == MDB_PANIC && noRecord == MDB_NOTFOUND);

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

/* Every page of the file is a meta page, in use, or in the list of free pages, which LMDB keeps as
 * its database 0: a number of the transaction, and numbers of pages behind their count. */
void requireAllPages(MDB_env *environment, MDB_dbi database)
{
    constexpr MDB_dbi freePages = 0;
    const Transaction transaction(environment, MDB_RDONLY);
    MDB_envinfo info{};
    check(mdb_env_info(environment, &info), "database file");
    std::size_t pages = 2;
    for (const MDB_dbi each : {freePages, database}) {
        MDB_stat tree{};
        check(mdb_stat(transaction.get(), each, &tree), "database file");
        pages += tree.ms_branch_pages + tree.ms_leaf_pages + tree.ms_overflow_pages;
    }
    Cursor cursor(transaction, freePages);
    MDB_val name{};
    MDB_val list{};
    while (cursor.next(name, list)) {
        std::size_t count = 0;
        std::memcpy(&count, list.mv_data, std::min(list.mv_size, sizeof(count)));
        if (count >= list.mv_size / sizeof(count)) {
            throw Failure(MDB_CORRUPTED, "database file: its list of free pages is damaged");
        }
        pages += count;
    }
    if (pages != info.me_last_pgno + 1) {
        throw Failure(MDB_CORRUPTED, "database file: pages are missing");
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
    : path_(directory / "data.mdb"), backup_(std::move(backup))
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
        check(mdb_env_set_mapsize(environment_, databaseSize), "database size");
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
    Records all = recordsOf(transaction, database_);
    for (const RecordWrite &record : records) {
        Key name(record.key);
        write(transaction, database_, name.value(),
              {record.content.size(), const_cast<std::byte *>(record.content.data())});
        all[record.key].assign(record.content.begin(), record.content.end());
    }
    Proof proof{transaction.id(), checksumOf(all), 0};
    write(transaction, database_, valueOfProofName(), {sizeof(proof), &proof});
    commitDurably(transaction, environment_);
    keepBackup();
}

Records RecordStore::copy() const
{
    return recordsOf(Transaction(environment_, MDB_RDONLY), database_);
}

void RecordStore::prove() const
{
    /* Nobody writes meanwhile. */
    const Transaction quiet(environment_, isReadOnly_ ? MDB_RDONLY : 0);
    for (const auto &[key, content] : copy()) {
        std::vector<std::byte> found(content.size());
        get(key, found);
    }
    requireAllPages(environment_, database_);
    rehearse(path_);
}

bool RecordStore::isReplaced() const
{
    mdb_filehandle_t file{};
    struct stat opened {};
    struct stat named {};
    const bool isThere = mdb_env_get_fd(environment_, &file) == 0 && fstat(file, &opened) == 0 &&
                         stat(path_.c_str(), &named) == 0;
    return isThere && (opened.st_dev != named.st_dev || opened.st_ino != named.st_ino);
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
