// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The engine on a machine of values that fails where it is told to, and a real database. */
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>

#include <sys/resource.h>

#include "manager/engine/engine.hpp"
#include "manager/refusal.hpp"
#include "network_mng/operate_log.h"
#include "worlds.hpp"

namespace nwtest {

namespace {

using namespace bmc;
using namespace bmc::manager;

enum class Fault { none, before, after }; /* the effect of the step */

class FakeMachine : public Machine {
public:
    FakeMachine() : kernel(false) {}

    Actual read(const World &) override
    {
        if (failsReading && failsReading()) {
            throw MachineError("reading");
        }
        return kernel.actual;
    }

    void apply(const Step &step) override
    {
        const Fault fault = faultOf ? faultOf(step) : Fault::none;
        if (fault == Fault::before) {
            throw MachineError("told to");
        }
        kernel.apply(step);
        steps.push_back(textOf(step));
        if (fault == Fault::after) {
            throw MachineError("told to, though it was done");
        }
    }

    void forget() override {}

    bool isTaken(const std::string &, const Ipv4Bytes &address,
                 std::chrono::steady_clock::time_point) override
    {
        return address == taken;
    }

    void announce(const std::string &, const Ipv4Bytes &) override {}

    Conditions conditions() override
    {
        return {isWatchdogRunning};
    }

    void work()
    {
        faultOf = nullptr;
        failsReading = nullptr;
    }

    ModelKernel kernel;
    std::function<Fault(const Step &)> faultOf;
    std::function<bool()> failsReading;
    std::vector<std::string> steps;
    Ipv4Bytes taken{};
    bool isWatchdogRunning = false;
};

class EngineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        put(anyConfiguration(random_));
        engine_.emplace(machine_);
        engine_->start();
    }

    void put(const Configuration &configuration)
    {
        Store().commit(Batch().put(configuration), "test");
    }

    /* Nothing is left to do for the configuration. */
    bool isSo(const Configuration &configuration)
    {
        Items owned = machine_.kernel.actual.items;
        owned.erase(foreign_);
        return plan(wanted(configuration, {machine_.isWatchdogRunning}), machine_.kernel.actual,
                    owned)
            .empty();
    }

    static Scope everything()
    {
        Scope scope;
        for (const std::uint32_t module : {NW_LOG_LAN, NW_LOG_NET_MODE, NW_LOG_LAN_REVERSE,
                                           NW_LOG_DNS, NW_LOG_HOSTNAME, NW_LOG_LLDP}) {
            scope.select(module);
        }
        return scope;
    }

    /* Code of the refusal, 0 when it was made so. */
    std::uint32_t change(const Configuration &after)
    {
        try {
            engine_->change({after, everything()});
            return 0;
        } catch (const bmc::manager::Refusal &refusal) {
            return refusal.code();
        }
    }

    bool isOpen()
    {
        return engine_->store().read(journalHeadRecord).isOpen != 0;
    }

    std::uint8_t status()
    {
        return engine_->store().read(netStatusRecord).ucSetInProgress;
    }

    /* Separate ports whose addresses of both families are on. */
    Configuration servedPorts()
    {
        Configuration configuration = anyConfiguration(random_);
        configuration.state.ucIfcState = 0;
        for (const unsigned port : {0U, 1U}) {
            NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
            entry.ucLanEnable = entry.ucIpv4Enable = entry.ucIpv6Enable = 1;
        }
        return configuration;
    }

    /* As on a disk without room: pages cannot be written. */
    static void setRoom(bool hasRoom)
    {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{hasRoom ? RLIM_INFINITY : 1, RLIM_INFINITY};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }

    bool isDoneLater()
    {
        for (unsigned wait = 0; wait < 80 && status() != 0; wait++) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            engine_->work();
        }
        return status() == 0 && !isOpen();
    }

    const Item foreign_ = addressOn("eth0", "10.0.0.77", 24);
    std::mt19937 random_{5};
    FakeMachine machine_;
    std::optional<Engine> engine_;
};

constexpr auto notRestored = static_cast<std::uint32_t>(Result::notRestored);
constexpr auto kernelRefused = static_cast<std::uint32_t>(Result::kernelRefused);
constexpr auto addressTaken = static_cast<std::uint32_t>(Result::addressTaken);

bool isFacts(const Configuration &one, const Configuration &other)
{
    return wanted(one, {}) == wanted(other, {});
}

/* A sub-interface that went and came back has another index. */
bool isAsFound(const Actual &now, const Actual &found)
{
    return now.items == found.items &&
           std::ranges::equal(now.links, found.links, [](const auto &one, const auto &other) {
               return one.first == other.first && one.second.type == other.second.type;
           });
}

} // namespace

TEST_F(EngineTest, ChangesAreMadeSo)
{
    for (unsigned round = 0; round < 40; round++) {
        const Configuration after = anyConfiguration(random_);
        ASSERT_EQ(change(after), 0U);
        EXPECT_TRUE(isSo(after));
        EXPECT_TRUE(isFacts(engine_->present(), after));
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(status(), 0);
    }
}

/* A step that fails for good, wherever it stands, before it took effect or after: what was answered
 * is what there is. */
TEST_F(EngineTest, EachStepMayFail)
{
    unsigned refused = 0;
    unsigned stuck = 0;
    for (unsigned round = 0; round < 150; round++) {
        SCOPED_TRACE(round);
        const Configuration before = engine_->present();
        const Configuration after = anyConfiguration(random_);
        const Actual found = machine_.kernel.actual;
        unsigned countdown = static_cast<unsigned>(random_() % 25);
        const Fault fault = random_() % 2 == 0 ? Fault::before : Fault::after;
        std::optional<Step> broken;
        machine_.faultOf = [&](const Step &step) {
            if (!broken && countdown-- == 0) {
                broken = step;
            }
            return broken == step ? fault : Fault::none;
        };
        const std::uint32_t code = change(after);
        machine_.work();

        EXPECT_EQ(status(), 0);
        EXPECT_EQ(isOpen(), code == notRestored);
        if (code == 0) {
            EXPECT_TRUE(isSo(after));
            EXPECT_TRUE(isFacts(engine_->present(), after));
        } else {
            EXPECT_TRUE(isFacts(engine_->present(), before));
            refused++;
            stuck += code == notRestored;
        }
        if (code == kernelRefused) {
            EXPECT_TRUE(isAsFound(machine_.kernel.actual, found));
        }
    }
    EXPECT_GT(refused, stuck);
}

TEST_F(EngineTest, WhatIsNotRestoredIsTriedAgain)
{
    Configuration before = anyConfiguration(random_);
    before.state.ucIfcState = 0;
    before.lan.astPort[0].ucLanEnable = before.lan.astPort[0].ucIpv4Enable = 1;
    ASSERT_EQ(change(before), 0U);
    Configuration after = before;
    after.lan.astPort[0].ucLanEnable = 0;
    machine_.faultOf = [](const Step &step) {
        const bool isBack = !step.isRemoval && step.item.kind == Kind::address;
        const bool isLast = step.item.kind == Kind::link && step.item.number == 0;
        return isBack || isLast ? Fault::before : Fault::none;
    };
    EXPECT_EQ(change(after), notRestored);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(isSo(before));
    EXPECT_GT(engine_->work(), 0);

    machine_.work();
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    engine_->work();
    EXPECT_TRUE(isSo(before));
    EXPECT_FALSE(isOpen());
}

TEST_F(EngineTest, NothingIsTouchedWhereItCannotBeRead)
{
    const Configuration before = engine_->present();
    const Actual found = machine_.kernel.actual;
    machine_.failsReading = [] { return true; };
    EXPECT_EQ(change(anyConfiguration(random_)), kernelRefused);
    EXPECT_EQ(machine_.kernel.actual, found);
    EXPECT_TRUE(isFacts(engine_->present(), before));
    EXPECT_FALSE(isOpen());
}

TEST_F(EngineTest, TakenAddressIsRefusedUntouched)
{
    Configuration before = anyConfiguration(random_);
    before.state.ucIfcState = 0;
    before.lan.astPort[0].ucLanEnable = before.lan.astPort[0].ucIpv4Enable = 1;
    ASSERT_EQ(change(before), 0U);
    const Actual found = machine_.kernel.actual;
    machine_.steps.clear();
    Configuration after = before;
    machine_.taken = {10, 0, 0, 99};
    std::ranges::copy(machine_.taken, after.lan.astPort[0].aucIpv4Addr);
    EXPECT_EQ(change(after), addressTaken);
    EXPECT_EQ(machine_.kernel.actual, found);
}

/* What somebody else makes so afterwards is his, whatever else waits to be done. */
TEST_F(EngineTest, WhatWasRefusedIsNotItsOwn)
{
    const Configuration before = servedPorts();
    ASSERT_EQ(change(before), 0U);
    const auto isIpv6 = [](const Item &item) {
        return item.kind == Kind::address && item.address.family == AF_INET6;
    };
    std::erase_if(machine_.kernel.actual.items, isIpv6);
    machine_.faultOf = [&](const Step &step) {
        return isIpv6(step.item) ? Fault::before : Fault::none;
    };
    Configuration after = before;
    std::ranges::copy(Ipv4Bytes{10, 0, 0, 99}, after.lan.astPort[0].aucIpv4Addr);
    ASSERT_NE(change(after), 0U);

    const Items asked = wanted(after, {}).items;
    const auto refused = std::ranges::find_if(asked, [&](const Item &item) {
        return item.kind == Kind::address && !wanted(before, {}).items.contains(item);
    });
    ASSERT_NE(refused, asked.end());
    machine_.kernel.add(*refused);
    machine_.work();
    engine_->restart();
    EXPECT_TRUE(machine_.kernel.actual.items.contains(*refused)) << textOf(*refused);
}

TEST_F(EngineTest, OutcomeThatCannotBeWrittenIsTriedAgain)
{
    ASSERT_EQ(change(servedPorts()), 0U);
    machine_.faultOf = [](const Step &) {
        setRoom(false);
        return Fault::none;
    };
    EXPECT_NE(change(servedPorts()), 0U);
    EXPECT_EQ(status(), 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    engine_->work();
    EXPECT_EQ(status(), 1);
    setRoom(true);
    machine_.work();
    EXPECT_TRUE(isDoneLater());

    std::erase_if(machine_.kernel.actual.items,
                  [](const Item &item) { return item.kind == Kind::address; });
    machine_.faultOf = [](const Step &) {
        setRoom(false);
        return Fault::none;
    };
    EXPECT_THROW(engine_->restart(), bmc::manager::Refusal);
    EXPECT_EQ(status(), 1);
    setRoom(true);
    machine_.work();
    EXPECT_TRUE(isDoneLater());
}

/* What cannot be made so keeps nobody from writing what is. */
TEST_F(EngineTest, StatusIsWrittenThoughSomethingIsLeft)
{
    ASSERT_EQ(change(servedPorts()), 0U);
    std::erase_if(machine_.kernel.actual.items,
                  [](const Item &item) { return item.kind == Kind::address; });
    machine_.faultOf = [](const Step &step) {
        setRoom(false);
        return step.item.address.family == AF_INET6 ? Fault::before : Fault::none;
    };
    EXPECT_THROW(engine_->restart(), bmc::manager::Refusal);
    EXPECT_EQ(status(), 1);
    machine_.faultOf = [](const Step &step) {
        return step.item.address.family == AF_INET6 ? Fault::before : Fault::none;
    };
    setRoom(true);
    EXPECT_TRUE(isDoneLater());
}

/* The successor of one that was killed at any step makes the former configuration so. */
TEST_F(EngineTest, SuccessorEndsWhatIsHalfDone)
{
    struct Killed {};
    for (unsigned round = 0; round < 60; round++) {
        SCOPED_TRACE(round);
        const Configuration before = engine_->present();
        machine_.kernel.add(foreign_);
        unsigned countdown = static_cast<unsigned>(random_() % 20);
        machine_.faultOf = [&](const Step &) {
            return countdown-- == 0 ? throw Killed{} : Fault::none;
        };
        bool isKilled = false;
        try {
            change(anyConfiguration(random_));
        } catch (const Killed &) {
            isKilled = true;
        }
        machine_.work();
        engine_.emplace(machine_);
        engine_->start();
        const Configuration holds = engine_->present();
        EXPECT_TRUE(isSo(holds));
        EXPECT_TRUE(!isKilled || isFacts(holds, before));
        EXPECT_TRUE(machine_.kernel.actual.items.contains(foreign_));
        EXPECT_FALSE(isOpen());
        for (const Item &item : machine_.kernel.actual.items) {
            EXPECT_TRUE(item.kind != Kind::address || item == foreign_ ||
                        wanted(holds, {}).items.contains(item))
                << textOf(item);
        }
    }
}

} // namespace nwtest

int main(int count, char **arguments)
{
    ::testing::InitGoogleTest(&count, arguments);
    std::string directory = (std::filesystem::temp_directory_path() / "engine-XXXXXX").string();
    if (mkdtemp(directory.data()) == nullptr) {
        return 1;
    }
    setenv("BMC_STATE_DIR", directory.c_str(), 1);
    setenv("BMC_LOG_LEVEL", "0", 1);
    const int status = RUN_ALL_TESTS();
    std::filesystem::remove_all(directory);
    return status;
}
