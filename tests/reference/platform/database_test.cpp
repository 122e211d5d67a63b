// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records of the configuration database, and why there may be none. */
#include <array>
#include <thread>

#include <lmdb.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include "database_support.hpp"

namespace {

using namespace bmc::test;

class Database : public DatabaseTest {};

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

TEST_F(Database, EnvironmentStandsForItsDatabase)
{
    inChild([] {
        const Bytes bytes{1, 2, 3, 4};
        EXPECT_EQ(0, DB_PutInternal("unit", 1, DB_Open(), 0x1061000C, 4, bytes.data()));
        expectRecord(0x1061000C, bytes);

        Bytes read(4);
        EXPECT_EQ(0, DB_Get(DB_Open(), 0x1061000C, 4, read.data()));
        EXPECT_EQ(bytes, read);
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
            for (void *bad : {static_cast<void *>(nullptr), static_cast<void *>(&record),
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

TEST_F(Database, FileThatWasCutShortGivesNone)
{
    inChild([] {
        for (std::uint32_t record = 0; record < 20; ++record) {
            ASSERT_EQ(0, put(key + record, Bytes(2000, 1)));
        }
    });
    std::filesystem::resize_file(directory() / "data.mdb", 8192);
    expectNoDatabase();
}

TEST_F(Database, PutIntoARemovedFileIsRefused)
{
    inChild([this] {
        ASSERT_EQ(0, put(key, Bytes(84, 1)));
        std::filesystem::remove_all(directory());
        stderrOf([] { EXPECT_NE(0, put(key, Bytes(84, 2))); });
    });
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
