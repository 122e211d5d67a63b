// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A database that is damaged, cut short or gone, beside its backup: the manager starts as if
 * nothing had happened, says so, and serves changes. */
#include <filesystem>
#include <fstream>
#include <random>

#include "manager_system.hpp"

namespace nwtest {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t pageSize = 4096;

class Damage : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        expectAnswer(hostRequest(3), 0, 1);
        stopManager();
        fs::remove_all(kept());
        fs::copy(state() / "config-db", kept());
    }

    void TearDown() override
    {
        manager_.reset();
        fs::remove_all(kept());
        fs::remove_all(aside());
    }

    static fs::path state()
    {
        return std::getenv("BMC_STATE_DIR");
    }
    static fs::path kept()
    {
        return state() / "kept-db";
    }
    static fs::path aside()
    {
        return state() / "config-db.damaged";
    }
    static fs::path data()
    {
        return state() / "config-db/data.mdb";
    }

    /* No neighbour is asked for such an address, which would take its time. */
    static std::string address(unsigned host)
    {
        return "2001:db8:20::" + std::to_string(host);
    }

    static LanRequest hostRequest(unsigned host)
    {
        LanRequest request;
        request.select(1, NW_LAN_BIT_IPV6_ADDR);
        put(request.port(1).aucIpv6Addr, address(host));
        return request;
    }

    /* The database as it was before the damage; the backup is written with each commit. */
    static void restoreDatabase()
    {
        fs::remove_all(state() / "config-db");
        fs::copy(kept(), state() / "config-db");
    }

    static void overwritePage(std::size_t page, const std::string &bytes)
    {
        std::fstream file(data(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(page * pageSize));
        file << bytes;
    }

    /* The configuration of before holds, and a change of it can be made and taken back. */
    void expectService()
    {
        shell("ip address flush dev eth0; ip address flush dev eth1");
        startManager();
        EXPECT_EQ(kernelAddresses("eth0"), std::vector<std::string>{"192.168.10.2/24"});
        expectHost(3);
        for (const unsigned host : {4U, 3U}) {
            expectAnswer(hostRequest(host), 0, 1);
            expectHost(host);
        }
        stopManager();
    }

    static void expectHost(unsigned host)
    {
        EXPECT_EQ(kernelAddresses("eth1"),
                  (std::vector<std::string>{"192.168.20.2/24", address(host) + "/64"}));
    }

    void expectMended(bool isKept)
    {
        expectService();
        EXPECT_NE(manager_->errorText().find("config-db.backup"), std::string::npos)
            << manager_->errorText();
        EXPECT_EQ(fs::exists(aside()), isKept);
    }
};

std::string randomPage(std::mt19937 &random)
{
    std::string bytes(pageSize, '\0');
    for (char &byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

} // namespace

TEST_F(Damage, OfAnyPageIsMended)
{
    std::mt19937 random(1);
    const std::size_t pages = fs::file_size(data()) / pageSize;
    for (std::size_t page = 0; page < pages; page++) {
        const bool isZeroed = page % 2 == 0;
        SCOPED_TRACE("page " + std::to_string(page) + (isZeroed ? " zeroed" : " random"));
        restoreDatabase();
        overwritePage(page, isZeroed ? std::string(pageSize, '\0') : randomPage(random));
        ASSERT_NO_FATAL_FAILURE(expectService());
    }
}

/* Damage may end the manager, as it may anybody who reads where it lies; its successor serves. */
TEST_F(Damage, WhileItRunsIsMendedThenOrByTheSuccessor)
{
    unsigned mended = 0;
    const std::size_t pages = fs::file_size(data()) / pageSize;
    for (std::size_t page = 0; page < pages; page++) {
        SCOPED_TRACE("page " + std::to_string(page));
        restoreDatabase();
        shell("ip address flush dev eth1");
        startManager();
        overwritePage(page, std::string(pageSize, '\0'));
        const auto answer = call(hostRequest(4).bytes());
        const bool isMade = answer && answer->uiResult == NW_OK;
        mended += manager_->errorText().find("made anew") != std::string::npos ? 1U : 0U;
        manager_->stop(); // as well as it can
        startManager();
        expectHost(isMade ? 4 : 3);
        stopManager();
    }
    EXPECT_GT(mended, 0U);
}

TEST_F(Damage, OfTheWholeFileIsMendedAndKeptAside)
{
    overwritePage(0, std::string(2 * pageSize, 'x'));
    expectMended(true);
}

TEST_F(Damage, OfAShorterFileIsMended)
{
    fs::resize_file(data(), 5 * pageSize);
    expectMended(true);
}

TEST_F(Damage, TwiceKeepsOneAside)
{
    for (const char letter : {'x', 'y'}) {
        restoreDatabase();
        overwritePage(0, std::string(2 * pageSize, letter));
        expectMended(true);
        EXPECT_EQ(std::ifstream(aside() / "data.mdb").get(), letter);
    }
}

TEST_F(Damage, OfAMissingFileIsMended)
{
    fs::remove(data());
    expectMended(false);
}

TEST_F(Damage, OfAMissingDatabaseIsMended)
{
    fs::remove_all(state() / "config-db");
    expectMended(false);
}

TEST_F(Damage, OfTheBackupIsNoneOfTheDatabase)
{
    std::ofstream(state() / "config-db.backup") << "nonsense";
    expectService();
    EXPECT_FALSE(fs::exists(aside()));
}

TEST_F(Damage, OfBothIsReplacedWhenForced)
{
    const std::string second = "/run/second.json";
    std::ofstream(second) << "{}";
    for (const char *backup : {"nonsense", ""}) {
        SCOPED_TRACE(backup);
        restoreDatabase();
        overwritePage(0, std::string(2 * pageSize, 'x'));
        fs::remove(state() / "config-db.backup");
        if (*backup != '\0') {
            std::ofstream(state() / "config-db.backup") << backup;
        }
        EXPECT_EQ(runManager({"--init", EXAMPLE_FILE}).status, 1);
        EXPECT_EQ(runManager({"--init", second, "--force"}).status, 1);
        EXPECT_FALSE(fs::exists(aside()));

        const Outcome outcome = runManager({"--init", EXAMPLE_FILE, "--force"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_NE(outcome.errors.find(aside().string()), std::string::npos) << outcome.errors;
        EXPECT_EQ(std::ifstream(aside() / "data.mdb").get(), 'x');
        shell("ip address flush dev eth0; ip address flush dev eth1");
        startManager();
        expectHost(2);
        expectAnswer(hostRequest(4), 0, 1);
        expectHost(4);
        stopManager();
        fs::remove_all(aside());
    }
}

/* It may have room, or leave to write, another time. */
TEST_F(Damage, BesideABackupIsKeptAlsoWhenForced)
{
    overwritePage(0, std::string(2 * pageSize, 'x'));
    fs::create_directories(state() / "config-db.new");
    shell("mount -t tmpfs none " + (state() / "config-db.new").string());
    EXPECT_EQ(runManager({"--init", EXAMPLE_FILE, "--force"}).status, 1);
    shell("umount " + (state() / "config-db.new").string());
    EXPECT_FALSE(fs::exists(aside()));
    EXPECT_EQ(std::ifstream(data()).get(), 'x');
    expectMended(true);
}

TEST_F(Damage, OfBothIsAsIfThereHadBeenNoConfiguration)
{
    fs::remove_all(state() / "config-db");
    fs::remove(state() / "config-db.backup");
    const Outcome outcome = runManager({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("there is no configuration"), std::string::npos)
        << outcome.errors;
}

} // namespace nwtest
