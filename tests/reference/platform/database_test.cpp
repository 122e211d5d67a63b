/* Configuration database. Each process opens it once, so each test works in a child. */
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <map>
#include <thread>
#include <vector>

#include <lmdb.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bmc_platform.h"
#include "support.hpp"

static std::atomic<int> syncCount;

/* Stands before libc's function for everything in this process. */
extern "C" __attribute__((visibility("default"))) int fdatasync(int fd)
{
    ++syncCount;
    return static_cast<int>(syscall(SYS_fdatasync, fd));
}

namespace {

using bmc::test::Child;
using bmc::test::Environment;
using bmc::test::eventually;
using bmc::test::inChild;
using bmc::test::StateTest;
using bmc::test::stderrOf;

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t key = 0x10610003;

void *open()
{
    return DB_GetCurrentDb(DB_Open());
}

int put(std::uint32_t record, const Bytes &bytes)
{
    return DB_PutInternal("unit", 1, open(), record, static_cast<std::uint32_t>(bytes.size()),
                          bytes.data());
}

int get(std::uint32_t record, Bytes &bytes)
{
    return DB_Get(open(), record, static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void expectRecord(std::uint32_t record, const Bytes &expected)
{
    Bytes bytes(expected.size(), 0xAA);
    EXPECT_EQ(0, get(record, bytes));
    EXPECT_EQ(expected, bytes);
}

class Database : public StateTest {
protected:
    std::filesystem::path directory() const
    {
        return state() / "config-db";
    }
};

TEST_F(Database, HasNoCurrentDatabaseBeforeItIsOpened)
{
    inChild([] {
        int garbage = 0;
        EXPECT_EQ(nullptr, DB_GetCurrentDb(nullptr));
        EXPECT_EQ(nullptr, DB_GetCurrentDb(&garbage));
    });
}

TEST_F(Database, GivesTheCurrentDatabaseForAnyHandle)
{
    inChild([] {
        void *environment = DB_Open();
        ASSERT_NE(nullptr, environment);
        void *database = DB_GetCurrentDb(environment);
        ASSERT_NE(nullptr, database);

        int garbage = 0;
        EXPECT_EQ(database, DB_GetCurrentDb(nullptr));
        EXPECT_EQ(database, DB_GetCurrentDb(&garbage));
        EXPECT_EQ(database, DB_GetCurrentDb(reinterpret_cast<void *>(1)));
        EXPECT_EQ(environment, DB_Open());
    });
}

TEST_F(Database, MakesAPrivateDirectory)
{
    const Environment deeper("BMC_STATE_DIR", (state() / "a/b").string());
    inChild([] { EXPECT_NE(nullptr, DB_Open()); });

    struct stat status {};
    ASSERT_EQ(0, stat((state() / "a/b/config-db").c_str(), &status));
    EXPECT_EQ(0700U, status.st_mode & 07777U);
    ASSERT_EQ(0, stat((state() / "a/b/config-db/data.mdb").c_str(), &status));
    EXPECT_EQ(0600U, status.st_mode & 07777U);
}

TEST_F(Database, OpensOnceForAllThreads)
{
    inChild([] {
        const auto descriptors = [] {
            return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
        };
        EXPECT_NE(nullptr, DB_Open());
        const auto before = descriptors();
        {
            std::vector<std::jthread> threads;
            for (int thread = 0; thread < 8; ++thread) {
                threads.emplace_back([] {
                    for (int call = 0; call < 100; ++call) {
                        EXPECT_NE(nullptr, open());
                    }
                });
            }
        }
        EXPECT_EQ(before, descriptors());
    });
}

class RecordSize : public Database, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(RecordSize, ComesBackByteForByteAndOnlyWhole)
{
    inChild([] {
        const std::size_t size = GetParam();
        Bytes record(size);
        for (std::size_t byte = 0; byte < size; ++byte) {
            record[byte] = static_cast<std::uint8_t>(byte * 7);
        }
        ASSERT_EQ(0, put(key, record));
        expectRecord(key, record);

        for (const std::size_t other : {size - 1, size + 1, 2 * size}) {
            Bytes buffer(other, 0xAA);
            stderrOf([&] { EXPECT_NE(0, get(key, buffer)); });
            EXPECT_EQ(Bytes(other, 0xAA), buffer) << other;
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Sizes, RecordSize, ::testing::Values(1, 21, 84, 260, 604, 2377, 100000));

TEST_F(Database, MissingRecordIsAnErrorTheLogShowsFromLevel6)
{
    inChild([] {
        Bytes buffer(4, 0xAA);
        EXPECT_EQ("", stderrOf([&] { EXPECT_EQ(MDB_NOTFOUND, get(key, buffer)); }));
        EXPECT_EQ(Bytes(4, 0xAA), buffer);

        const Environment level("BMC_LOG_LEVEL", "6");
        const std::string line = stderrOf([&] { EXPECT_NE(0, get(key, buffer)); });
        EXPECT_NE(line.npos, line.find("0x10610003")) << line;
    });
}

TEST_F(Database, PutReplacesTheRecordWhateverItsSize)
{
    inChild([] {
        ASSERT_EQ(0, put(key, Bytes(100, 1)));
        ASSERT_EQ(0, put(key, Bytes(7, 2)));
        expectRecord(key, Bytes(7, 2));
        ASSERT_EQ(0, put(key, Bytes(5000, 3)));
        expectRecord(key, Bytes(5000, 3));
    });
}

TEST_F(Database, KeysAreStoredInTheirOrder)
{
    const std::vector<std::uint32_t> keys{0, 1, 0x100, 0x10610003, 0x10610004, 0xFFFFFFFF};
    inChild([&] {
        for (auto record = keys.rbegin(); record != keys.rend(); ++record) {
            ASSERT_EQ(0, put(*record, Bytes(1, static_cast<std::uint8_t>(*record))));
        }
    });

    MDB_env *environment = nullptr;
    MDB_txn *transaction = nullptr;
    MDB_cursor *cursor = nullptr;
    MDB_dbi database = 0;
    ASSERT_EQ(0, mdb_env_create(&environment));
    ASSERT_EQ(0, mdb_env_open(environment, directory().c_str(), MDB_RDONLY, 0));
    ASSERT_EQ(0, mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction));
    ASSERT_EQ(0, mdb_dbi_open(transaction, nullptr, 0, &database));
    ASSERT_EQ(0, mdb_cursor_open(transaction, database, &cursor));
    MDB_val name{};
    MDB_val value{};
    for (const std::uint32_t record : keys) {
        const Bytes expected{
            static_cast<std::uint8_t>(record >> 24), static_cast<std::uint8_t>(record >> 16),
            static_cast<std::uint8_t>(record >> 8), static_cast<std::uint8_t>(record)};
        ASSERT_EQ(0, mdb_cursor_get(cursor, &name, &value, MDB_NEXT));
        const auto *bytes = static_cast<const std::uint8_t *>(name.mv_data);
        EXPECT_EQ(expected, Bytes(bytes, bytes + name.mv_size));
    }
    mdb_cursor_close(cursor);
    mdb_txn_abort(transaction);
    mdb_env_close(environment);
}

TEST_F(Database, AbsurdArgumentsAreRefused)
{
    inChild([] {
        std::array<std::uint8_t, 4> record{1, 2, 3, 4};
        void *database = open();
        ASSERT_NE(nullptr, database);
        ASSERT_EQ(0, DB_PutInternal(nullptr, 1, database, key, 4, record.data()));
        stderrOf([&] {
            for (void *bad : {static_cast<void *>(nullptr), DB_Open(), static_cast<void *>(&record),
                              reinterpret_cast<void *>(1)}) {
                EXPECT_NE(0, DB_Get(bad, key, 4, record.data()));
                EXPECT_NE(0, DB_PutInternal("unit", 1, bad, key, 4, record.data()));
            }
            EXPECT_NE(0, DB_Get(database, key, 0, record.data()));
            EXPECT_NE(0, DB_Get(database, key, 4, nullptr));
            EXPECT_NE(0, DB_PutInternal("unit", 1, database, key, 0, record.data()));
            EXPECT_NE(0, DB_PutInternal("unit", 1, database, key, UINT32_MAX, record.data()));
            EXPECT_NE(0, DB_PutInternal("unit", 1, database, key, 4, nullptr));
        });
        expectRecord(key, {1, 2, 3, 4});
    });
}

TEST_F(Database, FailedPutNamesItsCaller)
{
    inChild([] {
        const std::string line =
            stderrOf([] { EXPECT_NE(0, DB_PutInternal("unit", 77, open(), key, 4, nullptr)); });
        EXPECT_TRUE(line.starts_with("<4>libbmc_platform:")) << line;
        EXPECT_NE(line.npos, line.find("0x10610003 of unit:77")) << line;
    });
}

TEST_F(Database, PutIsOnTheDiskWhenItAnswers)
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

TEST_F(Database, PutOutlivesAKilledProcess)
{
    Child writer([] {
        EXPECT_EQ(0, put(key, Bytes(2377, 9)));
        raise(SIGKILL);
    });
    EXPECT_EQ(SIGKILL, WTERMSIG(writer.wait()));
    inChild([] { expectRecord(key, Bytes(2377, 9)); });
}

TEST_F(Database, OtherProcessesSeeAPutAtOnce)
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

TEST_F(Database, TwoProcessesOpenedAtOnceShareRecords)
{
    Child one([] { shareRecord(1); });
    Child two([] { shareRecord(2); });
    EXPECT_EQ(0, one.wait());
    EXPECT_EQ(0, two.wait());
}

TEST_F(Database, ManyThreadsShareRecords)
{
    inChild([] {
        std::vector<std::jthread> threads;
        for (std::uint8_t thread = 0; thread < 8; ++thread) {
            threads.emplace_back(shareRecord, thread);
        }
    });
}

TEST_F(Database, ChildOfForkHasAnEnvironmentOfItsOwn)
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

TEST_F(Database, HandleOfTheParentServesTheChild)
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

/* Both processes hold the database's locks: neither a child's end nor its opening may drop those of
 * its parent. A third process that found none would start the lock table anew. */
TEST_F(Database, ForkAmidAccessesDisturbsNobody)
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

TEST_F(Database, PlacesOfReadersThatDiedAreCleared)
{
    /* Somebody must hold the database all the while: the last one's end clears the table anyway. */
    Child holder([this] {
        EXPECT_NE(nullptr, open());
        write("ready", "");
        pause();
    });
    eventually([&] { return std::filesystem::exists(state() / "ready"); });
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

void expectNoDatabase()
{
    inChild([] {
        void *environment = &environment;
        const std::string line = stderrOf([&] { environment = DB_Open(); });
        EXPECT_EQ(nullptr, environment);
        EXPECT_EQ(nullptr, DB_GetCurrentDb(nullptr));
        EXPECT_TRUE(line.starts_with("<4>libbmc_platform:")) << line;
    });
}

TEST_F(Database, DirectoryThatCannotBeMadeGivesNone)
{
    write("file", "");
    const Environment below("BMC_STATE_DIR", (state() / "file/below").string());
    expectNoDatabase();
}

TEST_F(Database, DirectoryThatCannotBeWrittenGivesNone)
{
    std::filesystem::create_directory(directory());
    ASSERT_EQ(0, mount("tmpfs", directory().c_str(), "tmpfs", MS_RDONLY, nullptr));
    expectNoDatabase();
    umount(directory().c_str());
}

TEST_F(Database, FileThatIsNoDatabaseGivesNone)
{
    write("config-db/data.mdb", std::string(8192, 'x'));
    expectNoDatabase();
}

TEST_F(Database, OpensOnceTheCauseIsGone)
{
    write("config-db", "in the way");
    inChild([this] {
        stderrOf([] { EXPECT_EQ(nullptr, DB_Open()); });
        std::filesystem::remove(directory());
        EXPECT_NE(nullptr, DB_Open());
    });
}

class FullDisk : public Database {
protected:
    void mountDisk(const char *size) const
    {
        std::filesystem::create_directory(directory());
        ASSERT_EQ(0, mount("tmpfs", directory().c_str(), "tmpfs", 0, size));
    }

    ~FullDisk() override
    {
        umount(directory().c_str());
    }
};

TEST_F(FullDisk, GivesNoDatabase)
{
    for (const char *size : {"size=4k", "size=32k", "size=64k"}) {
        mountDisk(size);
        expectNoDatabase();
        umount(directory().c_str());
    }
}

TEST_F(FullDisk, RefusesAPutAndKeepsWhatThereIs)
{
    mountDisk("size=256k");
    inChild([] {
        ASSERT_EQ(0, put(key, Bytes(84, 1)));
        stderrOf([] { EXPECT_NE(0, put(key + 1, Bytes(400000, 2))); });
        stderrOf([] { EXPECT_NE(0, put(key, Bytes(400000, 2))); });
        expectRecord(key, Bytes(84, 1));
        EXPECT_EQ(0, put(key, Bytes(84, 3)));
    });
    inChild([] { expectRecord(key, Bytes(84, 3)); });
}

} // namespace
