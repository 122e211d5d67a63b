// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A damaged database is made anew from its backup, whatever the damage is; a whole one is left
 * alone. */
#include <csignal>
#include <fstream>
#include <random>
#include <thread>

#include <sys/mount.h>

#include "common/files.hpp"
#include "database_support.hpp"
#include "platform/records.hpp"

namespace {

namespace fs = std::filesystem;

using namespace bmc::test;

constexpr std::size_t pageSize = 4096;

class Mending : public DatabaseTest {
protected:
    fs::path data() const
    {
        return directory() / "data.mdb";
    }
    fs::path aside() const
    {
        return state() / "config-db.damaged";
    }

    /* Small records, some of several pages, and pages that have become free. */
    static void store()
    {
        inChild([] {
            for (std::uint8_t round = 0; round < 5; ++round) {
                for (std::uint32_t record = 0; record < 8; ++record) {
                    const std::size_t size = record < 5 ? 1 + 200 * record : 3000 * record;
                    ASSERT_EQ(0, put(key + record, Bytes(size, round)));
                }
            }
        });
    }

    static void expectRecords(std::uint8_t value)
    {
        for (std::uint32_t record = 0; record < 8; ++record) {
            const std::size_t size = record < 5 ? 1 + 200 * record : 3000 * record;
            expectRecord(key + record, Bytes(size, value));
        }
    }

    /* Mends, reads, writes and reads again, as a process that starts. */
    static void expectService()
    {
        inChild([] {
            stderrOf([] { bmc::mendRecords(); });
            expectRecords(4);
            ASSERT_EQ(0, put(key + 7, Bytes(30000, 9)));
            ASSERT_EQ(0, put(key + 7, Bytes(21000, 4)));
            expectRecords(4);
            EXPECT_EQ(0, bmc::Snapshot().code());
        });
    }

    void expectServiceOf(const std::string &file) const
    {
        std::ofstream(data(), std::ios::binary) << file;
        ASSERT_NO_FATAL_FAILURE(expectService());
    }
};

void overwrite(std::string &file, std::size_t page, const std::function<int()> &byte)
{
    for (std::size_t at = 0; at < pageSize; ++at) {
        file[page * pageSize + at] = static_cast<char>(byte());
    }
}

TEST_F(Mending, LeavesAWholeDatabaseAlone)
{
    inChild([] { EXPECT_EQ(0, BMC_MendRecords()); });
    EXPECT_FALSE(fs::exists(directory()));
    std::mt19937 random(1);
    for (int round = 0; round < 60; ++round) {
        const auto record = static_cast<std::uint32_t>(key + random() % 20);
        const std::size_t size = random() % 3 == 0 ? 1 + random() % 40000 : 1 + random() % 300;
        inChild([&] {
            EXPECT_EQ(0, put(record, Bytes(size, 1)));
            const std::string lines = stderrOf([] { EXPECT_EQ(0, BMC_MendRecords()); });
            EXPECT_EQ("", lines);
            expectRecord(record, Bytes(size, 1));
        });
    }
    EXPECT_FALSE(fs::exists(aside()));
}

TEST_F(Mending, LeavesADatabaseAloneWhoseWriterWasKilled)
{
    for (int round = 0; round < 20; ++round) {
        {
            Child writer([] {
                for (std::uint32_t size = 1;; size += 700) {
                    EXPECT_EQ(0, put(key + size % 5, Bytes(size % 30000, 1)));
                }
            });
            std::this_thread::sleep_for(std::chrono::milliseconds(3 + round));
            kill(writer.pid(), SIGKILL);
            writer.wait();
        }
        inChild([] {
            EXPECT_EQ(0, BMC_MendRecords());
            EXPECT_EQ(0, put(key, {1}));
        });
    }
    EXPECT_FALSE(fs::exists(aside()));
}

TEST_F(Mending, OfAnyPage)
{
    store();
    const std::string whole = bmc::readFile(data(), 16U << 20);
    std::mt19937 random(1);
    for (std::size_t page = 0; page < whole.size() / pageSize; ++page) {
        SCOPED_TRACE("page " + std::to_string(page));
        std::string zeroed = whole;
        overwrite(zeroed, page, [] { return 0; });
        expectServiceOf(zeroed);
        std::string scrambled = whole;
        overwrite(scrambled, page, [&] { return static_cast<int>(random()); });
        expectServiceOf(scrambled);
    }
}

/* One byte at a time, more of them where pages begin; but for the number of the last transaction in
 * a meta page, which may lead to the whole database of the transaction before. */
TEST_F(Mending, OfAnyByte)
{
    store();
    const std::string whole = bmc::readFile(data(), 16U << 20);
    std::mt19937 random(1);
    for (int round = 0; round < 60; ++round) {
        std::string changed = whole;
        const std::size_t page = random() % (whole.size() / pageSize);
        const std::size_t at = page * pageSize + random() % (round % 2 == 0 ? 160 : pageSize);
        constexpr std::size_t numberBegins = 16 + 2 * 4 + 2 * 8 + 2 * 48 + 8;
        if (page < 2 && at % pageSize / 8 == numberBegins / 8) {
            continue;
        }
        changed[at] = static_cast<char>(random());
        SCOPED_TRACE("byte " + std::to_string(at));
        expectServiceOf(changed);
    }
}

/* Marks in a page's head that reading passes over and writing believes, which would end whoever
 * writes: a page that is changed already, and where its records end. */
TEST_F(Mending, OfWhatOnlyWritingMeets)
{
    constexpr std::size_t marks = 10;
    constexpr std::size_t recordsBegin = 14;
    store();
    const std::string whole = bmc::readFile(data(), 16U << 20);
    for (std::size_t page = 2; page < whole.size() / pageSize; ++page) {
        for (const std::size_t at : {page * pageSize + marks, page * pageSize + recordsBegin}) {
            SCOPED_TRACE("byte " + std::to_string(at));
            std::string changed = whole;
            changed[at] = static_cast<char>(changed[at] ^ 0x10);
            expectServiceOf(changed);
        }
    }
}

TEST_F(Mending, OfAFileThatWasCutShort)
{
    store();
    const std::string whole = bmc::readFile(data(), 16U << 20);
    for (std::size_t size = 0; size < whole.size(); size += 5000) {
        SCOPED_TRACE(size);
        expectServiceOf(whole.substr(0, size));
    }
}

TEST_F(Mending, OfADatabaseThatIsGone)
{
    store();
    fs::remove(data());
    expectService();
    fs::remove_all(directory());
    expectService();
    EXPECT_FALSE(fs::exists(aside()));
}

TEST_F(Mending, TellsAndKeepsTheLastDamagedOne)
{
    store();
    for (const char letter : {'x', 'y'}) {
        std::ofstream(data()) << std::string(2 * pageSize, letter);
        inChild([&] {
            const std::string lines = stderrOf([] { EXPECT_TRUE(bmc::mendRecords()); });
            EXPECT_NE(lines.npos, lines.find("made anew from")) << lines;
            EXPECT_NE(lines.npos, lines.find(aside().string())) << lines;
        });
        EXPECT_EQ(letter, std::ifstream(aside() / "data.mdb").get());
    }
}

TEST_F(Mending, IsSeenByThoseWhoHaveReadBefore)
{
    store();
    inChild([this] {
        expectRecords(4);
        fs::rename(data(), state() / "elsewhere");
        std::ofstream(data()) << std::string(2 * pageSize, 'x');
        inChild([] {
            stderrOf([] { EXPECT_TRUE(bmc::mendRecords()); });
            EXPECT_EQ(0, put(key, {8}));
        });
        expectRecord(key, {8});
        EXPECT_EQ(0, put(key, {4}));
        inChild([] { expectRecords(4); });
    });
}

TEST_F(Mending, WithoutABackupTouchesNothing)
{
    store();
    fs::remove(state() / "config-db.backup");
    std::ofstream(data()) << std::string(2 * pageSize, 'x');
    inChild([] {
        stderrOf([] {
            EXPECT_FALSE(bmc::mendRecords());
            EXPECT_EQ(nullptr, DB_Open());
            EXPECT_NE(0, bmc::Snapshot().code());
        });
    });
    EXPECT_EQ('x', std::ifstream(data()).get());
}

/* The damaged one stays in its place until the new one is whole. */
TEST_F(Mending, OnAFullDiskWaitsForRoom)
{
    ASSERT_EQ(0, mount("tmpfs", state().c_str(), "tmpfs", 0, "size=2m"));
    store();
    const std::string damaged(2 * pageSize, 'x');
    std::ofstream(data()) << damaged;
    std::ofstream filler(state() / "filler");
    while (filler << std::string(pageSize, 'f') << std::flush) {
    }
    inChild([&] {
        stderrOf([] {
            EXPECT_NE(0, BMC_MendRecords());
            EXPECT_EQ(nullptr, DB_Open());
            const bmc::Snapshot lastGood;
            expectRecords(4);
        });
        EXPECT_EQ(damaged, bmc::readFile(data(), 1U << 20));
        fs::remove(state() / "filler");
    });
    filler.close();
    expectService();
    EXPECT_EQ(damaged, bmc::readFile(aside() / "data.mdb", 1U << 20));
    umount(state().c_str());
}

TEST_F(Mending, OutlivesKills)
{
    store();
    const std::string whole = bmc::readFile(data(), 16U << 20);
    for (int round = 0; round < 30; ++round) {
        SCOPED_TRACE(round);
        std::ofstream(data(), std::ios::binary) << whole.substr(0, 3 * pageSize);
        {
            Child mender([] { stderrOf([] { bmc::mendRecords(); }); });
            std::this_thread::sleep_for(std::chrono::microseconds(300 * round));
            kill(mender.pid(), SIGKILL);
            mender.wait();
        }
        ASSERT_NO_FATAL_FAILURE(expectService());
    }
}

} // namespace
