// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Checkpoints: what comes back unless it is confirmed in time. */
#include "engine_fixture.hpp"

namespace nwtest {

namespace {

using std::chrono::seconds;

/* What ends the manager in the middle of its work. */
struct Killed {};

class Reverting : public EngineTest {
protected:
    std::uint32_t codeOf(const std::function<void()> &call)
    {
        try {
            call();
            return 0;
        } catch (const bmc::manager::Refusal &refusal) {
            return refusal.code();
        }
    }
    static std::uint32_t code(Result result)
    {
        return static_cast<std::uint32_t>(result);
    }

    void changeSeveral()
    {
        for (std::size_t number = random_() % 3 + 1; number != 0; number--) {
            ASSERT_EQ(change(anyConfiguration(random_)), 0U);
        }
    }

    void pass(seconds time)
    {
        machine_.now.uptime += time;
        engine_->work();
    }

    /* Looked at before the engine is asked for anything. */
    void expectBack(const Configuration &before)
    {
        EXPECT_TRUE(isFacts(engine_->store().readConfiguration(), before));
        EXPECT_TRUE(isSo(before));
        EXPECT_FALSE(engine_->pending().has_value());
        EXPECT_EQ(status(), 0);
        EXPECT_FALSE(isOpen());
    }

    void startAnew()
    {
        engine_.emplace(machine_);
        engine_->start();
    }
};

} // namespace

TEST_F(Reverting, GoesBackWhenItsTimeIsOver)
{
    for (unsigned round = 0; round < 40 && !HasFailure(); round++) {
        SCOPED_TRACE(round);
        const Configuration before = engine_->present();
        engine_->checkpoint(seconds(10));
        changeSeveral();
        const Configuration changed = engine_->present();
        pass(seconds(9));
        EXPECT_TRUE(isFacts(engine_->present(), changed));
        EXPECT_EQ(engine_->pending(), seconds(1));
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        machine_.now.uptime += seconds(1);
        startAnew();
        expectBack(before);
        ASSERT_EQ(change(anyConfiguration(random_)), 0U);
    }
}

/* Of itself, while nobody asks for anything. */
TEST_F(Reverting, GoesBackUnasked)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(10));
    changeSeveral();
    machine_.now.uptime += seconds(10);
    for (int time = 0; engine_->pending() && time >= 0; time = engine_->work()) {
        ASSERT_LE(time, 1000);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    expectBack(before);
}

/* Nothing comes in between that has not been confirmed and what comes after. */
TEST_F(Reverting, GoesBackBeforeTheNextChange)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(10));
    changeSeveral();
    machine_.now.uptime += seconds(10);
    EXPECT_EQ(codeOf([&] { engine_->confirm(); }), code(Result::noCheckpoint));
    expectBack(before);
}

/* Nor is what comes after made of what was not confirmed. */
TEST_F(Reverting, NextChangeBeginsWithWhatHeldBefore)
{
    for (unsigned round = 0; round < 10; round++) {
        const Configuration before = engine_->present();
        engine_->checkpoint(seconds(10));
        changeSeveral();
        machine_.now.uptime += seconds(10);
        Configuration after = engine_->present();
        after.lldp.ucLldpEnable ^= 1;
        Scope scope;
        scope.select(NW_LOG_LLDP);
        engine_->change({after, scope});
        Configuration expected = before;
        expected.lldp.ucLldpEnable ^= 1;
        expectBack(expected);
    }
}

/* Asked to go back in the moment in which it does so anyway. */
TEST_F(Reverting, AskedToWhenItsTimeIsOver)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(10));
    changeSeveral();
    machine_.now.uptime += seconds(10);
    engine_->revert();
    expectBack(before);
}

TEST_F(Reverting, WhatIsConfirmedStays)
{
    engine_->checkpoint(seconds(10));
    changeSeveral();
    const Configuration changed = engine_->present();
    engine_->confirm();
    pass(seconds(4000));
    startAnew();
    expectBack(changed);
}

TEST_F(Reverting, GoesBackWhenAskedTo)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(3600));
    changeSeveral();
    engine_->revert();
    expectBack(before);
    EXPECT_EQ(codeOf([&] { engine_->revert(); }), code(Result::noCheckpoint));
}

TEST_F(Reverting, OneAtATime)
{
    for (const int time : {0, 9, 3601}) {
        EXPECT_EQ(codeOf([&] { engine_->checkpoint(seconds(time)); }), code(Result::badDeadline));
    }
    EXPECT_EQ(codeOf([&] { engine_->confirm(); }), code(Result::noCheckpoint));
    const std::string token = engine_->checkpoint(seconds(10));
    EXPECT_EQ(codeOf([&] { engine_->checkpoint(seconds(10)); }), code(Result::checkpointPending));
    EXPECT_EQ(token.size(), 32U);
    EXPECT_EQ(engine_->checkpointState(token), CheckpointState::pending);
    EXPECT_EQ(engine_->checkpointState("x"), CheckpointState::none);
    engine_->confirm();
    EXPECT_EQ(engine_->checkpointState(token), CheckpointState::confirmed);
    EXPECT_NE(engine_->checkpoint(seconds(3600)), token);
}

/* A manager that is started in time keeps it, with its time. */
TEST_F(Reverting, OutlivesTheManager)
{
    const Configuration before = engine_->present();
    const std::string token = engine_->checkpoint(seconds(60));
    changeSeveral();
    const Configuration changed = engine_->present();
    machine_.now.uptime += seconds(50);
    startAnew();
    EXPECT_TRUE(isFacts(engine_->present(), changed));
    EXPECT_EQ(engine_->pending(), seconds(10));
    EXPECT_EQ(engine_->checkpointState(token), CheckpointState::pending);
    machine_.now.uptime += seconds(10);
    startAnew();
    expectBack(before);
    EXPECT_EQ(engine_->checkpointState(token), CheckpointState::reverted);
}

TEST_F(Reverting, GoesBackAfterAReboot)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(3600));
    changeSeveral();
    machine_.now = {"boot 2", seconds(20)};
    machine_.kernel = ModelKernel(false);
    startAnew();
    expectBack(before);
}

/* Wherever the manager is killed on the way back, the next one goes on from there. */
TEST_F(Reverting, KilledOnTheWay)
{
    unsigned kills = 0;
    for (unsigned round = 0; round < 60 && !HasFailure(); round++) {
        SCOPED_TRACE(round);
        const Configuration before = engine_->present();
        engine_->checkpoint(seconds(10));
        changeSeveral();
        machine_.now.uptime += seconds(10);
        unsigned left = round % 20;
        machine_.faultOf = [&](const Step &) {
            if (left-- == 0) {
                kills++;
                throw Killed();
            }
            return Fault::none;
        };
        try {
            startAnew();
        } catch (const Killed &) {
            machine_.work();
            startAnew();
        }
        machine_.work();
        expectBack(before);
        ASSERT_EQ(change(anyConfiguration(random_)), 0U);
    }
    EXPECT_GT(kills, 20U);
}

/* Kernel and system go back even where the records cannot be written, and these as soon as they
 * can. */
TEST_F(Reverting, DiskThatIsFull)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(10));
    changeSeveral();
    machine_.now.uptime += seconds(10);
    setRoom(false);
    EXPECT_EQ(codeOf([&] { engine_->present(); }), notRestored);
    EXPECT_TRUE(isSo(before));
    EXPECT_NE(codeOf([&] { engine_->restart(); }), 0U);
    EXPECT_TRUE(isSo(before));
    setRoom(true);
    EXPECT_EQ(codeOf([&] { engine_->confirm(); }), code(Result::noCheckpoint));
    expectBack(before);
}

/* Nor is it said of kernel and system that they have, where nobody has seen it. */
TEST_F(Reverting, NothingCanBeWrittenNorMade)
{
    const auto reason = [&] {
        try {
            engine_->revert();
            return std::string("success");
        } catch (const bmc::manager::Refusal &refusal) {
            return std::string(refusal.what());
        }
    };
    constexpr const char *claim = "kernel and system have gone back";
    ASSERT_EQ(change(servedPorts()), 0U);
    engine_->checkpoint(seconds(3600));
    ASSERT_EQ(change(servedPorts()), 0U);
    setRoom(false);
    machine_.failsReading = [] { return true; };
    EXPECT_EQ(reason().find(claim), std::string::npos);
    machine_.work();
    machine_.faultOf = [](const Step &) { return Fault::before; };
    EXPECT_EQ(reason().find(claim), std::string::npos);
    machine_.work();
    EXPECT_NE(reason().find(claim), std::string::npos);
    setRoom(true);
}

/* What was to go back cannot be confirmed any more. */
TEST_F(Reverting, ConfirmedAfterARevertThatCouldNotBeWritten)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(3600));
    changeSeveral();
    setRoom(false);
    EXPECT_EQ(codeOf([&] { engine_->revert(); }), notRestored);
    EXPECT_TRUE(isSo(before));
    setRoom(true);
    EXPECT_EQ(codeOf([&] { engine_->confirm(); }), code(Result::noCheckpoint));
    expectBack(before);
}

/* A manager that is started before that can be written goes on with the change, and nothing of what
 * held before stays beside it. */
TEST_F(Reverting, StartedAnewBeforeARevertCouldBeWritten)
{
    for (unsigned round = 0; round < 10; round++) {
        ASSERT_EQ(change(servedPorts()), 0U);
        engine_->checkpoint(seconds(3600));
        ASSERT_EQ(change(servedPorts()), 0U);
        const Configuration changed = engine_->present();
        setRoom(false);
        EXPECT_EQ(codeOf([&] { engine_->revert(); }), notRestored);
        setRoom(true);
        startAnew();
        EXPECT_TRUE(isSo(changed));
        engine_->confirm();
        EXPECT_TRUE(isSo(changed));
    }
}

/* What of it cannot go back is said, and tried again. */
TEST_F(Reverting, StepThatFails)
{
    ASSERT_EQ(change(servedPorts()), 0U);
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(10));
    ASSERT_EQ(change(servedPorts()), 0U);
    machine_.faultOf = [](const Step &step) {
        return step.item.kind == Kind::address && !step.isRemoval ? Fault::before : Fault::none;
    };
    EXPECT_EQ(codeOf([&] { engine_->revert(); }), notRestored);
    EXPECT_TRUE(isFacts(engine_->present(), before));
    EXPECT_FALSE(engine_->pending().has_value());
    machine_.work();
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    engine_->work();
    expectBack(before);
}

/* A later manager's is not missed, and not written over. */
TEST_F(Reverting, FormatThatIsNotKnown)
{
    CheckpointRecord later{};
    later.version = 2;
    later.state = CheckpointState::pending;
    Store().put(checkpointRecord, later);
    startAnew();
    EXPECT_EQ(change(anyConfiguration(random_)), code(Result::databaseFailed));
    EXPECT_EQ(Store().read(checkpointRecord).version, 2U);
}

/* The time to wait is told also where nothing can be done, and it is not none. */
TEST_F(Reverting, WaitsWhereItCannotBeWritten)
{
    engine_->checkpoint(seconds(10));
    changeSeveral();
    machine_.now.uptime += seconds(10);
    setRoom(false);
    for (const bool isStart : {false, true}) {
        SCOPED_TRACE(isStart);
        if (isStart) {
            startAnew();
        }
        unsigned turns = 0;
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
        while (std::chrono::steady_clock::now() < end) {
            const int time = engine_->work();
            turns++;
            std::this_thread::sleep_for(std::chrono::milliseconds(std::clamp(time, 0, 50)));
        }
        EXPECT_LT(turns, 12U);
    }
    setRoom(true);
}

/* A port whose interface is missing keeps nothing back, and is no failure. */
TEST_F(Reverting, MissingInterface)
{
    const Configuration before = servedPorts();
    ASSERT_EQ(change(before), 0U);
    engine_->checkpoint(seconds(10));
    ASSERT_EQ(change(servedPorts()), 0U);
    machine_.faultOf = [](const Step &step) {
        if (step.item.subject == "eth1") {
            throw MissingInterface("eth1");
        }
        return Fault::none;
    };
    EXPECT_EQ(codeOf([&] { engine_->revert(); }), 0U);
    EXPECT_TRUE(isFacts(engine_->store().readConfiguration(), before));
}

/* Whatever a record says, it ends. */
TEST_F(Reverting, OddRecords)
{
    const Configuration before = engine_->present();
    engine_->checkpoint(seconds(10));
    auto record = Store().read(checkpointRecord);
    record.deadline = ~0ULL;
    Store().put(checkpointRecord, record);
    startAnew();
    EXPECT_EQ(engine_->pending(), seconds(3600));
    machine_.now.uptime += seconds(3600);
    engine_->present();
    expectBack(before);
    record.state = static_cast<CheckpointState>(7);
    Store().put(checkpointRecord, record);
    startAnew();
    EXPECT_FALSE(engine_->pending().has_value());
    EXPECT_EQ(change(anyConfiguration(random_)), 0U);
}

} // namespace nwtest
