// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The process's configuration database. */
#include <cstdio>
#include <mutex>
#include <optional>
#include <vector>

#include <pthread.h>

#include "bmc_platform.h"
#include "common/state_directory.hpp"
#include "platform/backup.hpp"
#include "platform/failure.hpp"
#include "platform/mending.hpp"
#include "platform/record_store.hpp"
#include "platform/records.hpp"

namespace {

using bmc::Failure;
using bmc::RecordCopies;
using bmc::RecordStore;
using bmc::RecordWrite;

constexpr std::uint32_t sizeLimit = 1U << 20;

/* What callers hold: addresses that stay the same for the life of the process and its children.
 * Which environment they stand for is looked up with each use. */
char environmentHandle;
char databaseHandle;

std::mutex mutex;
RecordStore *current;

/* The database is damaged and there is nothing in its place: it is not touched. */
bool isDistrusted;

/* Stores that are kept and never touched. A child's copy of its parent's: closing it would withdraw
 * the child's own locks, which belong to the same file. One whose file was replaced: other threads
 * may be using it. */
std::vector<RecordStore *> &retired()
{
    static auto &stores = *new std::vector<RecordStore *>;
    return stores;
}

void retire()
{
    if (current != nullptr) {
        retired().push_back(current);
        current = nullptr;
    }
}

void lockForFork()
{
    mutex.lock();
}

void unlockInParent()
{
    mutex.unlock();
}

void startAfreshInChild()
{
    retire();
    mutex.unlock();
}

const int forkHandlers = pthread_atfork(lockForFork, unlockInParent, startAfreshInChild);

bmc::DatabasePaths paths()
{
    return {bmc::stateDirectory() / "config-db", bmc::stateDirectory() / "config-db.backup"};
}

std::filesystem::path backupFile()
{
    return paths().backup;
}

/* The store of this process, opened by the first call, and anew when another database has taken its
 * place. Never closed, so it may be used without the mutex. */
const RecordStore &store()
{
    const std::lock_guard lock(mutex);
    if (forkHandlers != 0) {
        throw Failure(forkHandlers, "database: cannot watch for fork");
    }
    if (isDistrusted) {
        throw Failure(EBADMSG, "database: damaged");
    }
    if (current != nullptr && current->isReplaced()) {
        retire();
    }
    if (current == nullptr) {
        current = new RecordStore(paths().directory, paths().backup);
    }
    return *current;
}

/* What a thread reads instead of the database while it has a snapshot. */
struct ThreadSnapshot {
    unsigned depth = 0;
    int code = 0; /* not 0: why there are no copies */
    std::optional<RecordCopies> copies;
};

thread_local ThreadSnapshot snapshot;

void requireRecord(std::uint32_t size, const void *record)
{
    bmc::require(record != nullptr, "null record");
    bmc::require(size != 0 && size <= sizeLimit, "absurd record size");
}

void requireHandle(const void *database)
{
    bmc::require(database == &databaseHandle || database == &environmentHandle,
                 "not a database handle");
}

void readRecord(std::uint32_t key, std::span<std::byte> buffer)
{
    if (snapshot.depth == 0) {
        store().get(key, buffer);
        return;
    }
    if (!snapshot.copies) {
        throw Failure(snapshot.code, "read: no snapshot could be taken", bmc::Level::information);
    }
    snapshot.copies->get(key, buffer);
}

/* Of the database, or of its backup when there is no other way. */
bmc::Records allRecords()
{
    try {
        return store().copy();
    } catch (const Failure &failure) {
        if (failure.code() == bmc::outcomeUnknown || !std::filesystem::exists(backupFile())) {
            throw;
        }
        const Failure told(failure, std::string(failure.what()) + "; " + backupFile().string() +
                                        " is read instead");
        told.report();
        return bmc::readBackup(backupFile());
    }
}

void distrust(bool isSo)
{
    const std::lock_guard lock(mutex);
    isDistrusted = isSo;
    if (isSo) {
        retire();
    }
}

/* Answers whether another database has taken the place of the one that was there. */
bool mend()
{
    const bmc::DatabasePaths place = paths();
    const bmc::Condition condition = bmc::examine(place);
    const bool isDamaged = condition == bmc::Condition::damaged;
    if (condition != bmc::Condition::unknown) {
        distrust(isDamaged);
    }
    if ((!isDamaged && condition != bmc::Condition::empty) ||
        !std::filesystem::exists(place.backup)) {
        return false;
    }
    const bmc::Records records = bmc::readBackup(place.backup);
    if (records.empty()) {
        return false;
    }
    bmc::rebuild(place, records, isDamaged);
    distrust(false);
    const Failure told(EBADMSG, place.directory.string() +
                                    (isDamaged ? ": was damaged" : ": was missing") +
                                    ", made anew from " + place.backup.string() +
                                    (isDamaged ? "; it is kept as " + place.aside().string() : ""));
    told.report();
    return true;
}

void abandon()
{
    const bmc::DatabasePaths place = paths();
    {
        const std::lock_guard lock(mutex);
        bmc::require(isDistrusted, "the database is not known to be damaged");
    }
    bmc::setAside(place);
    distrust(false);
    const Failure told(EBADMSG, place.directory.string() + ": was damaged; it is kept as " +
                                    place.aside().string());
    told.report();
}

RecordWrite checkedWrite(const BMC_RECORD_WRITE_S &record)
{
    requireRecord(record.uiSize, record.pData);
    return {record.uiKey, {static_cast<const std::byte *>(record.pData), record.uiSize}};
}

std::string recordName(std::uint32_t key, const char *file, std::uint32_t line)
{
    char name[sizeof("0x12345678")];
    std::snprintf(name, sizeof(name), "0x%08X", key);
    return file == nullptr ? std::string(name)
                           : std::string(name) + " of " + file + ":" + std::to_string(line);
}

/* Runs an access and names the record, and the caller when it is known, in whatever it throws. */
template <typename Access>
int access(std::uint32_t key, const char *file, std::uint32_t line, Access &&body)
{
    return bmc::guarded([&] {
        try {
            body();
        } catch (const Failure &failure) {
            throw Failure(failure, "record " + recordName(key, file, line) + ": " + failure.what());
        }
    });
}

} // namespace

void *DB_Open(void)
{
    return snapshot.copies || bmc::guarded([] { store(); }) == 0 ? &environmentHandle : nullptr;
}

void *DB_GetCurrentDb(void *pEnv)
{
    static_cast<void>(pEnv);
    const std::lock_guard lock(mutex);
    return current != nullptr || snapshot.copies ? &databaseHandle : nullptr;
}

int DB_Get(void *pDb, uint32_t uiKey, uint32_t uiSize, void *pBuffer)
{
    return access(uiKey, nullptr, 0, [&] {
        requireHandle(pDb);
        requireRecord(uiSize, pBuffer);
        readRecord(uiKey, {static_cast<std::byte *>(pBuffer), uiSize});
    });
}

int DB_PutInternal(const char *pcFile, uint32_t uiLine, void *pDb, uint32_t uiKey, uint32_t uiSize,
                   const void *pData)
{
    return access(uiKey, pcFile != nullptr ? pcFile : "?", uiLine, [&] {
        requireHandle(pDb);
        const RecordWrite record = checkedWrite({uiKey, uiSize, pData});
        store().put({&record, 1});
    });
}

int BMC_PutRecords(const BMC_RECORD_WRITE_S *pstRecords, uint32_t uiCount)
{
    return bmc::guarded([&] {
        bmc::require(pstRecords != nullptr || uiCount == 0, "records: null argument");
        std::vector<RecordWrite> records;
        for (const BMC_RECORD_WRITE_S &record : std::span(pstRecords, uiCount)) {
            records.push_back(checkedWrite(record));
        }
        store().put(records);
    });
}

int BMC_MendRecords(void)
{
    bool isMended = false;
    const int code = bmc::guarded([&] { isMended = mend(); });
    return isMended ? BMC_RECORDS_MENDED : code;
}

int BMC_AbandonRecords(void)
{
    return bmc::guarded(abandon);
}

int BMC_BeginSnapshot(void)
{
    if (snapshot.depth++ == 0) {
        snapshot.code = bmc::guarded([] { snapshot.copies.emplace(allRecords()); });
    }
    return snapshot.code;
}

void BMC_EndSnapshot(void)
{
    if (snapshot.depth != 0 && --snapshot.depth == 0) {
        snapshot.copies.reset();
        snapshot.code = 0;
    }
}

int BMC_ReadBackup(void (*pfRecord)(void *pContext, const BMC_RECORD_WRITE_S *pstRecord),
                   void *pContext)
{
    return bmc::guarded([&] {
        bmc::require(pfRecord != nullptr, "backup: null function");
        for (const auto &[key, content] : bmc::readBackup(backupFile())) {
            const BMC_RECORD_WRITE_S record{key, static_cast<std::uint32_t>(content.size()),
                                            content.data()};
            pfRecord(pContext, &record);
        }
    });
}
