// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Changes, and what the engine does of itself. */
#include <filesystem>

#include "engine_fixture.hpp"

namespace nwtest {

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
