// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The engine on a machine of values that fails where it is told to, and a real database. */
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <thread>

#include <sys/resource.h>

#include "manager/engine/engine.hpp"
#include "manager/refusal.hpp"
#include "network_mng/operate_log.h"
#include "worlds.hpp"

namespace nwtest {

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

    Moment moment() override
    {
        return now;
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
    Moment now{"boot 1", std::chrono::hours(1)};
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
        Store().commit(Batch().put(configuration).put(checkpointRecord, {}), "test");
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

inline constexpr auto notRestored = static_cast<std::uint32_t>(Result::notRestored);
inline constexpr auto kernelRefused = static_cast<std::uint32_t>(Result::kernelRefused);
inline constexpr auto addressTaken = static_cast<std::uint32_t>(Result::addressTaken);

inline bool isFacts(const Configuration &one, const Configuration &other)
{
    return wanted(one, {}) == wanted(other, {});
}

/* A sub-interface that went and came back has another index. */
inline bool isAsFound(const Actual &now, const Actual &found)
{
    return now.items == found.items &&
           std::ranges::equal(now.links, found.links, [](const auto &one, const auto &other) {
               return one.first == other.first && one.second.type == other.second.type;
           });
}

} // namespace nwtest
