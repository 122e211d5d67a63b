// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The real manager while its system calls fail, one after the other. */
#include <csignal>
#include <cstdlib>
#include <new>
#include <set>

#include <fcntl.h>
#include <lmdb.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "failing_calls.hpp"
#include "far_host.hpp"
#include "manager/engine/journal.hpp"
#include "requests.hpp"

namespace nwtest {

namespace {

constexpr std::uint32_t kernelRefused = 0x1E000002;
constexpr std::uint32_t databaseFailed = 0x1E000003;
constexpr std::uint32_t notRestored = 0x1E000024;

using Addresses = std::vector<std::string>;

/* Address, prefix and gateways of both families. */
LanRequest changeTo(unsigned host)
{
    const std::string text = std::to_string(host);
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV4_GATEWAY);
    put(request.port(1).aucIpv4Addr, "192.168.20." + text);
    put(request.port(1).aucIpv4Gateway, "192.168.20.1");
    put(request.port(1).aucIpv6Addr, "2001:db8:20::" + text);
    return request;
}

Addresses addressesFor(unsigned host)
{
    return {"192.168.20." + std::to_string(host) + "/24",
            "2001:db8:20::" + std::to_string(host) + "/64"};
}

unsigned storedHost()
{
    return storedLan().astPort[1].aucIpv4Addr[3];
}

class Fault : public ManagerTest {
protected:
    void SetUp() override
    {
        const int file = open(path, O_RDWR | O_CREAT, 0600);
        ASSERT_EQ(ftruncate(file, sizeof(FailingCalls)), 0);
        void *mapped =
            mmap(nullptr, sizeof(FailingCalls), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        close(file);
        ASSERT_NE(mapped, MAP_FAILED);
        calls_ = new (mapped) FailingCalls{};
        setenv("FAILING_CALLS", path, 1);
        ManagerTest::SetUp();
        startWithFaults();
        /* Nobody to ask for an address, which would take its time. */
        shell("ip link set peer1 down");
    }

    static std::vector<std::string> faulty()
    {
        return {"BMC_LOG_LEVEL=6", "BMC_LOG_TARGET=stderr", "LD_PRELOAD=" FAILING_CALLS_LIBRARY,
                "ASAN_OPTIONS=verify_asan_link_order=0"};
    }

    void startWithFaults()
    {
        manager_.emplace(std::vector<std::string>{NWMANAGERD}, faulty());
        ASSERT_TRUE(eventually([] { return call(LanRequest().bytes()).has_value(); }))
            << manager_->errorText();
    }

    /* A change while a call fails; kernel and records must be of the one configuration or of the
     * other, as was answered. Answers whether the call was there to fail. */
    bool survives(Countdown FailingCalls::*member, int position, unsigned host)
    {
        const unsigned former = storedHost();
        calls_->failed = 0;
        (calls_->*member).left = position;
        const auto response = call(changeTo(host).bytes());
        (calls_->*member).left = 0;
        EXPECT_TRUE(response && manager_->isRunning()) << manager_->errorText();
        if (!response || !manager_->isRunning()) {
            return false;
        }
        const std::uint32_t result = response->uiResult;
        EXPECT_TRUE(result == NW_OK || result == kernelRefused) << std::hex << result;
        const unsigned expected = result == NW_OK ? host : former;
        EXPECT_EQ(storedHost(), expected);
        EXPECT_EQ(kernelAddresses("eth1"), addressesFor(expected));
        EXPECT_EQ(storedStatus(), 0);
        return calls_->failed != 0 && !HasFailure();
    }

    void tryEveryPosition(Countdown FailingCalls::*member)
    {
        expectAnswer(changeTo(9), NW_OK, 1);
        int position = 1;
        while (survives(member, position, position % 2 == 0 ? 9 : 8)) {
            /* The next one goes well. */
            expectAnswer(changeTo(10), NW_OK, 1);
            position++;
        }
        EXPECT_GT(position, 10);
        EXPECT_EQ(kernelGateways("eth1"), Addresses{"192.168.20.1 101"});
        stopManager();
        startWithFaults();
        EXPECT_EQ(kernelAddresses("eth1"), addressesFor(storedHost()));
    }

    static constexpr const char *path = "/run/failing-calls";
    FailingCalls *calls_ = nullptr;
};

} // namespace

TEST_F(Fault, EachReceivedMessage)
{
    tryEveryPosition(&FailingCalls::received);
}

TEST_F(Fault, EachSentMessage)
{
    tryEveryPosition(&FailingCalls::sent);
}

/* From somewhere in the change on nothing works: the manager says that it could not take it back,
 * goes on trying, and takes new changes. */
TEST_F(Fault, NothingWorksAnyMore)
{
    expectAnswer(changeTo(9), NW_OK, 1);
    std::set<std::uint32_t> results;
    for (int position = 1; position < 200 && !HasFailure(); position += 7) {
        SCOPED_TRACE(position);
        calls_->received.isForGood = 1;
        calls_->received.left = position;
        const auto response = call(changeTo(8).bytes());
        ASSERT_TRUE(response.has_value()) << manager_->errorText();
        results.insert(response->uiResult);
        calls_->received.left = 0;
        if (response->uiResult == notRestored) {
            EXPECT_EQ(storedHost(), 9U);
            EXPECT_TRUE(eventually([] { return kernelAddresses("eth1") == addressesFor(9); }))
                << shell("ip address show dev eth1") << manager_->errorText();
        }
        expectAnswer(changeTo(7), NW_OK, 1);
        expectAnswer(changeTo(9), NW_OK, 1);
        EXPECT_EQ(kernelAddresses("eth1"), addressesFor(9));
    }
    EXPECT_TRUE(results.contains(notRestored));
    EXPECT_TRUE(results.contains(kernelRefused)); /* before anything was touched */
}

/* Neighbours that cannot be asked are no neighbours that are silent. */
TEST_F(Fault, NeighbourThatCannotBeAsked)
{
    const support::FarHost neighbour("peer1");
    neighbour.own("192.168.20.9/24");
    for (const auto member : {&FailingCalls::link, &FailingCalls::asked}) {
        (calls_->*member).left = 1;
        expectUntouched(changeTo(9), kernelRefused, 1);
        EXPECT_EQ((calls_->*member).left, 0);
        EXPECT_EQ(kernelAddresses("eth1"), addressesFor(2));
    }
}

/* Nobody can know whether the commit was made: the manager claims nothing and ends, and the next
 * one follows what it reads. */
TEST_F(Fault, MetaPageThatCannotBeWritten)
{
    for (const int commit : {1, 2}) {
        SCOPED_TRACE(commit);
        calls_->meta.left = commit;
        EXPECT_FALSE(call(changeTo(8).bytes()).has_value());
        EXPECT_EQ(manager_->wait(), 1);
        EXPECT_NE(manager_->errorText().find("nobody can know"), std::string::npos)
            << manager_->errorText();
        calls_->meta.left = 0;
        startWithFaults();
        EXPECT_EQ(kernelAddresses("eth1"), addressesFor(storedHost()));
        EXPECT_EQ(storedStatus(), 0);
        expectAnswer(changeTo(9), NW_OK, 1);
    }
}

/* From the start's first write on or a later one: the stored configuration holds. */
TEST_F(Fault, MetaPageThatCannotBeWrittenAtStart)
{
    for (const int write : {1, 2, 3}) {
        SCOPED_TRACE(write);
        manager_->signal(SIGKILL);
        manager_->wait();
        shell("ip address flush dev eth1");
        calls_->meta.isForGood = 1;
        calls_->meta.left = write;
        manager_.emplace(std::vector<std::string>{NWMANAGERD}, faulty());
        EXPECT_TRUE(eventually([] { return kernelAddresses("eth1") == addressesFor(2); }))
            << manager_->errorText();
        calls_->meta.left = 0;
    }
}

namespace {

/* What a manager of the first journal's time left behind. */
class FirstJournalTest : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        stopManager();
        configure(separatePorts);
        forgetJournal();
    }

    /* In a process of its own, which may open the database beside this one. */
    static void forgetJournal()
    {
        support::inChild([] {
            const std::string path = std::string(std::getenv("BMC_STATE_DIR")) + "/config-db";
            MDB_env *environment = nullptr;
            MDB_txn *transaction = nullptr;
            MDB_dbi database = 0;
            mdb_env_create(&environment);
            mdb_env_open(environment, path.c_str(), 0, 0600);
            mdb_txn_begin(environment, nullptr, 0, &transaction);
            mdb_dbi_open(transaction, nullptr, 0, &database);
            for (unsigned char last = 0; last < 3; last++) {
                unsigned char bytes[] = {0x18, 0, 0, last};
                MDB_val key{sizeof(bytes), bytes};
                mdb_del(transaction, database, &key, nullptr);
            }
            EXPECT_EQ(mdb_txn_commit(transaction), 0);
        });
    }

    static bmc::settings::Configuration withHost(std::uint8_t host)
    {
        auto configuration = stored();
        configuration.lan.astPort[1].aucIpv4Addr[3] = host;
        return configuration;
    }

    void putJournal(std::uint8_t isUnderWay)
    {
        bmc::manager::Store().put(bmc::manager::firstJournalRecord,
                                  {isUnderWay, stored(), withHost(9)});
    }
};

} // namespace

TEST_F(FirstJournalTest, InterruptedChangeGoesBack)
{
    putJournal(1);
    putLan(withHost(9).lan);
    shell("ip address flush dev eth1; ip address add 192.168.20.9/24 dev eth1; "
          "ip address add 192.168.20.50/24 dev eth1");
    startManager();
    EXPECT_EQ(storedHost(), 2U);
    EXPECT_EQ(kernelAddresses("eth1"),
              (Addresses{"192.168.20.2/24", "192.168.20.50/24", "2001:db8:20::2/64"}));
    EXPECT_NE(manager_->errorText().find("from format 1 to 2"), std::string::npos);
}

TEST_F(FirstJournalTest, FinishedChangeStays)
{
    putJournal(0);
    startManager();
    EXPECT_EQ(storedHost(), 2U);
    EXPECT_EQ(kernelAddresses("eth1"), addressesFor(2));
}

TEST_F(FirstJournalTest, LaterFormatIsNotMissed)
{
    startManager();
    stopManager();
    const bmc::manager::Store store;
    store.put(bmc::manager::journalHeadRecord, {3, 1});
    shell("ip address flush dev eth1");
    startManager();
    EXPECT_NE(manager_->errorText().find("the journal has the format 3"), std::string::npos)
        << manager_->errorText();
    EXPECT_EQ(kernelAddresses("eth1"), addressesFor(2));
    expectUntouched(changeTo(9), databaseFailed, 1);
    stopManager();
    EXPECT_EQ(store.read(bmc::manager::journalHeadRecord).version, 3);

    /* Nor one whose head is longer. */
    using Longer = std::array<std::uint8_t, 64>;
    store.put(bmc::manager::Record<Longer>{bmc::manager::journalHeadRecord.key, "head"}, {4});
    shell("ip address flush dev eth1");
    startManager();
    EXPECT_EQ(kernelAddresses("eth1"), addressesFor(2));
    expectUntouched(changeTo(9), databaseFailed, 1);
    stopManager();

    const Outcome outcome = runManager({"--init", EXAMPLE_FILE, "--force"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    startManager();
    expectAnswer(changeTo(9), NW_OK, 1);
}

/* A port that has another name now keeps nothing from the rest. */
TEST_F(FirstJournalTest, RenamedPortBlocksNothing)
{
    startManager();
    shell("ip link set eth0 down && ip link set eth0 name gone0");
    expectAnswer(changeTo(9), NW_OK, 1);
    NW_LAN_REVERSE_SET_S set{};
    set.ucSetMask = 1;
    set.ucEnable = 1;
    expectAnswer(requestOf(NW_CMD_SET_LAN_REVERSE, set), NW_OK);
    EXPECT_EQ(kernelAddresses("eth1"), Addresses{"192.168.10.2/24"});
    shell("ip link set gone0 name eth0");
    EXPECT_TRUE(eventually([] { return kernelAddresses("eth0") == addressesFor(9); }));
}

} // namespace nwtest
