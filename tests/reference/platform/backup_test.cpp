// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records of a database that is damaged or read-only. */
#include <fstream>

#include <sys/mount.h>

#include "common/files.hpp"
#include "database_support.hpp"
#include "platform/records.hpp"

namespace {

using namespace bmc::test;

class DamagedDatabase : public DatabaseTest {
protected:
    std::filesystem::path backup() const
    {
        return state() / "config-db.backup";
    }

    /* Two records, then a change of one of them. */
    static void store()
    {
        inChild([] {
            ASSERT_EQ(0, put(key, {1}));
            ASSERT_EQ(0, put(key + 1, Bytes(2377, 2)));
            ASSERT_EQ(0, put(key, {3}));
        });
    }

    static void expectRecords()
    {
        expectRecord(key, {3});
        expectRecord(key + 1, Bytes(2377, 2));
    }

    void damage() const
    {
        write("config-db/data.mdb", std::string(8192, 'x'));
    }
};

bmc::Records records(std::initializer_list<std::pair<std::uint32_t, Bytes>> rows)
{
    bmc::Records records;
    for (const auto &[record, bytes] : rows) {
        const auto content = std::as_bytes(std::span(bytes));
        records[record] = {content.begin(), content.end()};
    }
    return records;
}

TEST_F(DamagedDatabase, HasABackupOfTheLastCommit)
{
    EXPECT_EQ(std::nullopt, bmc::backupRecords());
    store();
    EXPECT_EQ(records({{key, {3}}, {key + 1, Bytes(2377, 2)}}), bmc::backupRecords());

    inChild([] {
        const Bytes four{4};
        const bmc::RecordWrite writes[]{{key, std::as_bytes(std::span(four))},
                                        {key + 2, std::as_bytes(std::span(four))}};
        EXPECT_EQ(0, bmc::putRecords(writes));
    });
    EXPECT_EQ(records({{key, {4}}, {key + 1, Bytes(2377, 2)}, {key + 2, {4}}}),
              bmc::backupRecords());
}

TEST_F(DamagedDatabase, GivesSnapshotsTheBackupAndSaysSo)
{
    store();
    damage();
    inChild([] {
        EXPECT_EQ(nullptr, DB_GetCurrentDb(nullptr));
        stderrOf([] { EXPECT_EQ(nullptr, DB_Open()); });
        {
            const std::string line = stderrOf([] {
                const bmc::Snapshot snapshot;
                EXPECT_EQ(0, snapshot.code());
                expectRecords();
            });
            EXPECT_NE(line.npos, line.find("backup")) << line;
        }
        stderrOf([] { EXPECT_EQ(nullptr, DB_Open()); });
    });
}

TEST_F(DamagedDatabase, ThatWasCutShortHasItsBackup)
{
    inChild([] {
        for (std::uint32_t record = 0; record < 20; ++record) {
            ASSERT_EQ(0, put(key + record, Bytes(2000, 1)));
        }
    });
    std::filesystem::resize_file(directory() / "data.mdb", 8192);
    inChild([] {
        stderrOf([] {
            const bmc::Snapshot snapshot;
            expectRecord(key + 19, Bytes(2000, 1));
        });
    });
}

TEST_F(DamagedDatabase, WithoutABackupReadsNothing)
{
    store();
    damage();
    std::filesystem::remove(backup());
    inChild([] {
        stderrOf([] {
            EXPECT_NE(0, bmc::Snapshot().code());
            EXPECT_EQ(std::nullopt, bmc::backupRecords());
        });
    });
}

TEST_F(DamagedDatabase, BackupThatIsNotWholeIsNone)
{
    store();
    const std::string whole = bmc::readFile(backup(), 1U << 20);
    const auto refuse = [&](const std::string &bytes) {
        std::ofstream(backup(), std::ios::binary) << bytes;
        const std::string line = stderrOf([] { EXPECT_EQ(std::nullopt, bmc::backupRecords()); });
        EXPECT_NE(line.npos, line.find("config-db.backup")) << line;
    };
    for (std::size_t size = 0; size < whole.size(); size += size < 40 ? 1 : 97) {
        refuse(whole.substr(0, size));
    }
    for (std::size_t at = 0; at < whole.size(); at += at < 40 ? 1 : 97) {
        std::string changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 0x10);
        refuse(changed);
    }
    refuse(whole + '\0');
    std::ofstream(backup(), std::ios::binary) << whole;
    EXPECT_NE(std::nullopt, bmc::backupRecords());
}

TEST_F(DamagedDatabase, BackupIsTheOwnersAlone)
{
    store();
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(backup()).permissions());
}

TEST_F(DamagedDatabase, BackupThatCannotBeWrittenFailsNoPut)
{
    std::filesystem::create_directories(backup() / "below");
    inChild([] {
        const std::string line = stderrOf([] { EXPECT_EQ(0, put(key, {1})); });
        EXPECT_NE(line.npos, line.find("config-db.backup")) << line;
        expectRecord(key, {1});
    });
}

TEST_F(DamagedDatabase, BackupOfManyWritersIsTheLast)
{
    {
        std::vector<std::unique_ptr<Child>> writers;
        for (std::uint8_t writer = 0; writer < 4; ++writer) {
            writers.push_back(std::make_unique<Child>([writer] {
                for (std::uint8_t round = 0; round < 25; ++round) {
                    EXPECT_EQ(0, put(key + writer, {round}));
                }
            }));
        }
        for (const auto &writer : writers) {
            EXPECT_EQ(0, writer->wait());
        }
    }
    EXPECT_EQ(records({{key, {24}}, {key + 1, {24}}, {key + 2, {24}}, {key + 3, {24}}}),
              bmc::backupRecords());
}

class ReadOnlyDatabase : public DamagedDatabase {
protected:
    void SetUp() override
    {
        store();
        ASSERT_EQ(0, mount(state().c_str(), state().c_str(), nullptr, MS_BIND, nullptr));
        ASSERT_EQ(
            0, mount(nullptr, state().c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
    }

    void TearDown() override
    {
        umount(state().c_str());
    }
};

TEST_F(ReadOnlyDatabase, IsReadAndNotWritten)
{
    inChild([] {
        expectRecords();
        const std::string line = stderrOf([] { EXPECT_EQ(EROFS, put(key, {4})); });
        EXPECT_NE(line.npos, line.find("read-only")) << line;
        expectRecords();
        const bmc::Snapshot snapshot;
        EXPECT_EQ(0, snapshot.code());
        expectRecords();
    });
}

} // namespace
