// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Several records of the configuration database at once, for the system's own programs.
 *
 * The functions of C linkage are what a platform exports; the rest is how a program calls them. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

extern "C" {

#pragma GCC visibility push(default)

/* A record to be written: 1 to 1048576 bytes. */
struct BMC_RECORD_WRITE_S {
    std::uint32_t uiKey;
    std::uint32_t uiSize;
    const void *pData;
};

/* A commit has failed so that it may have been made or not. The process cannot use its database any
 * more, every later access answers this code too: it has to end, and to read anew what holds. */
enum { BMC_OUTCOME_UNKNOWN = -30795 };

/* There is no record under the key. */
enum { BMC_NO_RECORD = -30798 };

/* Writes all of the records durably, or none: 0 or the database's code. Of one key given twice the
 * later record holds. */
int BMC_PutRecords(const BMC_RECORD_WRITE_S *pstRecords, std::uint32_t uiCount);

/* From the beginning to the end the calling thread's DB_Get answers from a copy of all records that
 * was taken at the beginning, with the codes it always has; what is written meanwhile goes to the
 * database alone. A second beginning only counts. When no copy could be taken, the beginning
 * answers why and so does every DB_Get; the end is due all the same. */
int BMC_BeginSnapshot(void);
void BMC_EndSnapshot(void);

/* The platform keeps a copy of all records beside the database, written anew after each commit.
 * Hands each of its records to the function: 0, or a code when there is no whole copy. A snapshot
 * is taken from it, after a line in the log, when the database cannot be opened or read; DB_Open
 * then answers a handle as long as the snapshot lives. */
int BMC_ReadBackup(void (*pfRecord)(void *pContext, const BMC_RECORD_WRITE_S *pstRecord),
                   void *pContext);

enum { BMC_RECORDS_MENDED = -1 };

/* For the program that owns the configuration, before anybody reads and after any failure. Looks at
 * the whole database, in a process of its own; one that is damaged, empty or missing beside a
 * backup is made anew from the backup, and a damaged one kept as config-db.damaged, in the place of
 * an earlier one. The log tells. Answers BMC_RECORDS_MENDED when that was done, 0 when there was
 * nothing to be done or nothing to do it with, or why it failed. A damaged database that could not
 * be replaced is not touched any more by this process, which has the backup's snapshots. */
int BMC_MendRecords(void);

/* After a BMC_MendRecords that has left a damaged database in its place: that one is kept as
 * config-db.damaged, and there is none any more. 0, or why it failed. Only for whoever knows that
 * there is no whole backup either, and has something to write instead. */
int BMC_AbandonRecords(void);

#pragma GCC visibility pop
}

namespace bmc {

inline constexpr int outcomeUnknown = BMC_OUTCOME_UNKNOWN;
inline constexpr int noRecord = BMC_NO_RECORD;

/* Answers whether another database has taken the place of the one that was there. */
inline bool mendRecords()
{
    return BMC_MendRecords() == BMC_RECORDS_MENDED;
}

struct RecordWrite {
    std::uint32_t key;
    std::span<const std::byte> content;
};

/* By key. */
using Records = std::map<std::uint32_t, std::vector<std::byte>>;

/* All of them durably or none: 0, outcomeUnknown or the database's code. */
inline int putRecords(std::span<const RecordWrite> records)
{
    std::vector<BMC_RECORD_WRITE_S> writes;
    writes.reserve(records.size());
    for (const RecordWrite &record : records) {
        writes.push_back(
            {record.key, static_cast<std::uint32_t>(record.content.size()), record.content.data()});
    }
    return BMC_PutRecords(writes.data(), static_cast<std::uint32_t>(writes.size()));
}

/* While it lives, this thread reads the records as they were at its beginning. It holds no
 * transaction, so it may live long. */
class Snapshot {
public:
    Snapshot() : code_(BMC_BeginSnapshot()) {}

    Snapshot(const Snapshot &) = delete;
    Snapshot &operator=(const Snapshot &) = delete;

    ~Snapshot()
    {
        BMC_EndSnapshot();
    }

    /* 0, or why there is none. */
    int code() const
    {
        return code_;
    }

private:
    int code_;
};

/* All records after the last commit, also of a damaged database; nothing, after a line in the log,
 * when there is no whole copy of them. */
inline std::optional<Records> backupRecords()
{
    Records records;
    const auto keep = [](void *kept, const BMC_RECORD_WRITE_S *record) {
        const auto *content = static_cast<const std::byte *>(record->pData);
        (*static_cast<Records *>(kept))[record->uiKey].assign(content, content + record->uiSize);
    };
    return BMC_ReadBackup(keep, &records) == 0 ? std::optional(records) : std::nullopt;
}

} // namespace bmc
