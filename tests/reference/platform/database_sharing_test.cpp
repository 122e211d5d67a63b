// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The configuration database among processes and threads. */
#include <atomic>
#include <csignal>
#include <thread>

#include <lmdb.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "database_support.hpp"

static std::atomic<int> syncCount;

/* Stands before libc's function for everything in this process. */
extern "C" __attribute__((visibility("default"))) int fdatasync(int fd)
{
    ++syncCount;
    return static_cast<int>(syscall(SYS_fdatasync, fd));
}

namespace {

using namespace bmc::test;

class SharedDatabase : public DatabaseTest {};

TEST_F(SharedDatabase, PutIsOnTheDiskWhenItAnswers)
{
    inChild([] {
        ASSERT_NE(nullptr, open());
        for (int round = 0; round < 3; ++round) {
            const int before = syncCount;
            ASSERT_EQ(0, put(key, Bytes(84, static_cast<std::uint8_t>(round))));
            EXPECT_GT(syncCount, before);
        }
    });
}

TEST_F(SharedDatabase, PutOutlivesAKilledProcess)
{
    Child writer([] {
        EXPECT_EQ(0, put(key, Bytes(2377, 9)));
        raise(SIGKILL);
    });
    EXPECT_EQ(128 + SIGKILL, writer.wait());
    inChild([] { expectRecord(key, Bytes(2377, 9)); });
}

TEST_F(SharedDatabase, OtherProcessesSeeAPutAtOnce)
{
    inChild([] {
        for (std::uint8_t round = 0; round < 5; ++round) {
            inChild([round] { EXPECT_EQ(0, put(key, Bytes(10, round))); });
            expectRecord(key, Bytes(10, round));
        }
    });
}

/* Writes and reads one record whose bytes are always equal to each other. */
void shareRecord(std::uint8_t self)
{
    for (int round = 0; round < 60; ++round) {
        EXPECT_EQ(0, put(key, Bytes(2377, self)));
        Bytes record(2377);
        EXPECT_EQ(0, get(key, record));
        EXPECT_EQ(Bytes(2377, record[0]), record);
    }
}

TEST_F(SharedDatabase, TwoProcessesOpenedAtOnceShareRecords)
{
    Child one([] { shareRecord(1); });
    Child two([] { shareRecord(2); });
    EXPECT_EQ(0, one.wait());
    EXPECT_EQ(0, two.wait());
}

TEST_F(SharedDatabase, ManyThreadsShareRecords)
{
    inChild([] {
        std::vector<std::jthread> threads;
        for (std::uint8_t thread = 0; thread < 8; ++thread) {
            threads.emplace_back(shareRecord, thread);
        }
    });
}

TEST_F(SharedDatabase, ChildOfForkHasAnEnvironmentOfItsOwn)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        inChild([] {
            EXPECT_EQ(nullptr, DB_GetCurrentDb(nullptr));
            EXPECT_EQ(0, put(key + 1, {2}));
            expectRecord(key, {1});
            EXPECT_NE(nullptr, DB_GetCurrentDb(nullptr));
            inChild([] { expectRecord(key + 1, {2}); });
        });
        expectRecord(key + 1, {2});
        EXPECT_EQ(0, put(key, {3}));
        expectRecord(key, {3});
    });
}

TEST_F(SharedDatabase, HandleOfTheParentServesTheChild)
{
    inChild([] {
        ASSERT_EQ(0, put(key, {1}));
        void *database = open();
        inChild([database] {
            std::uint8_t byte = 0;
            EXPECT_EQ(0, DB_Get(database, key, 1, &byte));
            EXPECT_EQ(1, byte);
            byte = 2;
            EXPECT_EQ(0, DB_PutInternal("unit", 1, database, key, 1, &byte));
        });
        expectRecord(key, {2});
    });
}

TEST_F(SharedDatabase, ForkAmidAccessesDisturbsNobody)
{
    inChild([] {
        ASSERT_EQ(0, put(key, Bytes(2377, 1)));
        std::atomic<bool> stop = false;
        std::vector<std::jthread> threads;
        for (std::uint8_t thread = 0; thread < 3; ++thread) {
            threads.emplace_back([&stop, thread] {
                while (!stop) {
                    EXPECT_EQ(0, put(key + 1 + thread, Bytes(500, thread)));
                    expectRecord(key, Bytes(2377, 1));
                }
            });
        }
        for (int round = 0; round < 20; ++round) {
            inChild([] {
                expectRecord(key, Bytes(2377, 1));
                EXPECT_EQ(0, put(key + 9, Bytes(84, 5)));
            });
        }
        stop = true;
        threads.clear();
        expectRecord(key + 9, Bytes(84, 5));
    });
}

TEST_F(SharedDatabase, PlacesOfReadersThatDiedAreCleared)
{
    /* Somebody must hold the database all the while: the last one's end clears the table anyway. */
    Child holder([this] {
        EXPECT_NE(nullptr, open());
        write("ready", "");
        pause();
    });
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(state() / "ready"); }));
    const auto deadReaders = [this] {
        int dead = -1;
        MDB_env *environment = nullptr;
        EXPECT_EQ(0, mdb_env_create(&environment));
        EXPECT_EQ(0, mdb_env_open(environment, directory().c_str(), MDB_NOTLS, 0));
        EXPECT_EQ(0, mdb_reader_check(environment, &dead));
        mdb_env_close(environment);
        return dead;
    };
    const auto leaveReader = [this] {
        MDB_env *environment = nullptr;
        MDB_txn *transaction = nullptr;
        EXPECT_EQ(0, mdb_env_create(&environment));
        EXPECT_EQ(0, mdb_env_open(environment, directory().c_str(), MDB_NOTLS, 0));
        EXPECT_EQ(0, mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction));
    };

    inChild(leaveReader);
    inChild([&] { EXPECT_EQ(1, deadReaders()); });
    inChild(leaveReader);
    inChild([] { EXPECT_NE(nullptr, open()); });
    inChild([&] { EXPECT_EQ(0, deadReaders()); });
}

} // namespace
