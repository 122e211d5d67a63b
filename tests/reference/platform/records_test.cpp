// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Several records at once: transactions and snapshots. */
#include <atomic>
#include <csignal>
#include <thread>

#include <lmdb.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "database_support.hpp"
#include "platform/records.hpp"

namespace {

/* A meta page is written in less than a page, everything else in whole pages. */
std::atomic<bool> metaPagesFail;
constexpr std::size_t pageSize = 4096;

} // namespace

/* Stands before libc's function for everything in this process. */
extern "C" __attribute__((visibility("default"))) ssize_t pwrite(int fd, const void *bytes,
                                                                 size_t size, off_t offset)
{
    if (metaPagesFail && size < pageSize) {
        errno = EIO;
        return -1;
    }
    return syscall(SYS_pwrite64, fd, bytes, size, offset);
}

namespace {

using namespace bmc::test;

class Records : public DatabaseTest {};

struct Row {
    std::uint32_t key;
    Bytes bytes;
};

int putAll(const std::vector<Row> &rows)
{
    std::vector<bmc::RecordWrite> writes;
    for (const Row &row : rows) {
        writes.push_back({row.key, std::as_bytes(std::span(row.bytes))});
    }
    return bmc::putRecords(writes);
}

void expectMissing(std::uint32_t record)
{
    Bytes byte(1);
    EXPECT_EQ(MDB_NOTFOUND, get(record, byte));
}

TEST_F(Records, AllAreWritten)
{
    inChild([] {
        EXPECT_EQ(0, putAll({{key, Bytes(84, 1)}, {key + 1, Bytes(2377, 2)}, {key, {3}}}));
        EXPECT_EQ(0, putAll({}));
    });
    inChild([] {
        expectRecord(key, {3});
        expectRecord(key + 1, Bytes(2377, 2));
    });
}

TEST_F(Records, NoneIsWrittenWhenOneIsRefused)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        stderrOf([] {
            EXPECT_NE(0, putAll({{key, {2}}, {key + 1, {2}}, {key + 2, {}}}));
            EXPECT_NE(0, putAll({{key, {2}}, {key + 1, Bytes((1U << 20) + 1)}}));
            const BMC_RECORD_WRITE_S null{key, 4, nullptr};
            EXPECT_NE(0, BMC_PutRecords(&null, 1));
            EXPECT_NE(0, BMC_PutRecords(nullptr, 1));
        });
        expectRecord(key, {1});
        expectMissing(key + 1);
    });
}

TEST_F(Records, NoneIsWrittenWhenTheDatabaseIsFull)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        std::vector<Row> rows{{key, {2}}};
        for (std::uint32_t record = 1; record < 20; ++record) {
            rows.push_back({key + record, Bytes(1U << 20, 2)});
        }
        stderrOf([&] { EXPECT_EQ(MDB_MAP_FULL, putAll(rows)); });
        expectRecord(key, {1});
        expectMissing(key + 1);
        EXPECT_EQ(0, putAll({{key, {3}}, {key + 1, {3}}}));
    });
}

TEST_F(Records, ReadersAndKillsSeeAllOrNone)
{
    inChild([] { ASSERT_EQ(0, putAll({{key, {0}}, {key + 1, Bytes(2000, 0)}})); });
    for (int round = 0; round < 10; ++round) {
        Child writer([] {
            for (std::uint8_t value = 0;; ++value) {
                EXPECT_EQ(0, putAll({{key, {value}}, {key + 1, Bytes(2000, value)}}));
            }
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(10 + round));
        writer.signal(SIGKILL);
        writer.wait();
        inChild([] {
            const bmc::Snapshot snapshot;
            Bytes first(1);
            EXPECT_EQ(0, get(key, first));
            expectRecord(key + 1, Bytes(2000, first[0]));
        });
    }
}

TEST_F(Records, FailedMetaPageIsToldApart)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        metaPagesFail = true;
        const std::string line = stderrOf([] {
            EXPECT_EQ(bmc::outcomeUnknown, putAll({{key, {2}}}));
        });
        EXPECT_NE(line.npos, line.find("outcome is unknown")) << line;
        metaPagesFail = false;

        /* It stays so: the process has to end. */
        Bytes byte(1);
        stderrOf([&] {
            EXPECT_EQ(bmc::outcomeUnknown, putAll({{key, {2}}}));
            EXPECT_EQ(bmc::outcomeUnknown, put(key, {2}));
            EXPECT_EQ(bmc::outcomeUnknown, get(key, byte));
        });
    });
    inChild([] { EXPECT_EQ(0, putAll({{key, {3}}})); });
}

class Snapshots : public DatabaseTest {
protected:
    /* By another process, as the records' readers and writers are. */
    static void writeElsewhere(std::uint32_t record, const Bytes &bytes)
    {
        inChild([&] { EXPECT_EQ(0, put(record, bytes)); });
    }
};

TEST_F(Snapshots, ShowTheRecordsOfTheirBeginning)
{
    writeElsewhere(key, {1});
    inChild([] {
        {
            const bmc::Snapshot snapshot;
            EXPECT_EQ(0, snapshot.code());
            writeElsewhere(key, {2});
            writeElsewhere(key + 1, {2});
            expectRecord(key, {1});
            expectMissing(key + 1);
        }
        expectRecord(key, {2});
        expectRecord(key + 1, {2});
    });
}

TEST_F(Snapshots, HaveTheCodesOfTheDatabase)
{
    writeElsewhere(key, Bytes(84, 1));
    inChild([] {
        const bmc::Snapshot snapshot;
        Bytes longer(85, 0xAA);
        stderrOf([&] {
            EXPECT_EQ(MDB_BAD_VALSIZE, get(key, longer));
            EXPECT_EQ(EINVAL, DB_Get(open(), key, 0, longer.data()));
            EXPECT_EQ(EINVAL, DB_Get(&longer, key, 1, longer.data()));
            EXPECT_EQ(EINVAL, DB_Get(open(), key, 84, nullptr));
        });
        EXPECT_EQ(Bytes(85, 0xAA), longer);
        expectMissing(key + 1);
    });
}

TEST_F(Snapshots, CountWhenTheyNest)
{
    writeElsewhere(key, {1});
    inChild([] {
        {
            const bmc::Snapshot outer;
            writeElsewhere(key, {2});
            {
                const bmc::Snapshot inner;
                EXPECT_EQ(0, inner.code());
                expectRecord(key, {1});
            }
            expectRecord(key, {1});
        }
        expectRecord(key, {2});
        BMC_EndSnapshot(); /* one too many does nothing */
        writeElsewhere(key, {3});
        const bmc::Snapshot later;
        expectRecord(key, {3});
    });
}

TEST_F(Snapshots, LeaveWritesToTheDatabase)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        {
            const bmc::Snapshot snapshot;
            EXPECT_EQ(0, put(key, {2}));
            EXPECT_EQ(0, putAll({{key + 1, {2}}}));
            expectRecord(key, {1});
            expectMissing(key + 1);
            inChild([] { expectRecord(key, {1}); }); /* a child of fork has its parent's */
        }
        expectRecord(key, {2});
        expectRecord(key + 1, {2});
    });
}

TEST_F(Snapshots, AreTheThreadsOwn)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        const bmc::Snapshot snapshot;
        ASSERT_EQ(0, put(key, {2}));
        std::jthread([] { expectRecord(key, {2}); }).join();
        expectRecord(key, {1});
    });
}

TEST_F(Snapshots, HoldNoTransaction)
{
    inChild([this] {
        ASSERT_EQ(0, put(key, Bytes(4000, 1)));
        const bmc::Snapshot snapshot;
        const auto file = directory() / "data.mdb";
        for (int round = 0; round < 5; ++round) {
            ASSERT_EQ(0, put(key, Bytes(4000, 2)));
        }
        const auto size = std::filesystem::file_size(file);
        for (int round = 0; round < 50; ++round) {
            ASSERT_EQ(0, put(key, Bytes(4000, 3)));
        }
        EXPECT_EQ(size, std::filesystem::file_size(file));
        expectRecord(key, Bytes(4000, 1));
    });
}

TEST_F(Snapshots, ThatCannotBeTakenReadNothing)
{
    write("config-db", "in the way");
    inChild([this] {
        stderrOf([this] {
            const bmc::Snapshot snapshot;
            EXPECT_NE(0, snapshot.code());
            std::filesystem::remove(directory());
            Bytes byte(1);
            EXPECT_EQ(snapshot.code(), get(key, byte));
        });
        EXPECT_EQ(0, put(key, {1}));
        expectRecord(key, {1});
    });
}

} // namespace
