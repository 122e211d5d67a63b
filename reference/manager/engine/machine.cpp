// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/machine.hpp"

#include <cerrno>
#include <new>
#include <system_error>

#include "manager/kernel/kernel.hpp"
#include "manager/kernel/link_mode.hpp"
#include "manager/log.hpp"
#include "manager/system/system.hpp"

namespace bmc::manager {

namespace {

/* Memory that is wanting is one more reason to fail. */
template <typename Call>
auto withMemory(const Call &call)
{
    try {
        return call();
    } catch (const std::bad_alloc &) {
        throw MachineError(std::generic_category().message(ENOMEM));
    }
}

class ThisMachine : public Machine {
public:
    Actual read(const World &world) override
    {
        return withMemory([&] { return readAll(world); });
    }

    void apply(const Step &step) override
    {
        withMemory([&] { take(step); });
    }

    void forget() override
    {
        system_.forget();
    }

    bool isTaken(const std::string &interface, const Ipv4Bytes &address,
                 std::chrono::steady_clock::time_point partnerBy) override
    {
        return isTakenByNeighbour(interface, address, partnerBy);
    }

    void announce(const std::string &interface, const Ipv4Bytes &address) override
    {
        manager::announce(interface, address);
    }

    Conditions conditions() override
    {
        try {
            conditions_ = {isWatchdogRunning()};
        } catch (const MachineError &error) {
            log(Level::error, std::string("as it was: ") + error.what());
        }
        return conditions_;
    }

    Moment moment() override
    {
        return {boot_, uptime()};
    }

private:
    Actual readAll(const World &world)
    {
        Actual actual = kernel_.read();
        for (const auto &[interface, port] : world.ports) {
            const auto mode = linkModeOf(interface);
            if (mode && port != NW_PORT_BOND0) {
                actual.items.insert({Kind::linkMode, interface, {}, {}, {}, *mode});
            }
        }
        system_.read(actual.items);
        return actual;
    }

    void take(const Step &step)
    {
        switch (step.item.kind) {
        case Kind::linkMode:
            return setLinkMode(step.item.subject, step.item.number);
        case Kind::hostName:
        case Kind::bmcName:
        case Kind::resolver:
        case Kind::lldp:
            return system_.apply(step.item);
        default:
            return kernel_.apply(step);
        }
    }

    Kernel kernel_;
    System system_;
    Conditions conditions_;
    const std::string boot_ = bootName();
};

} // namespace

std::unique_ptr<Machine> thisMachine()
{
    return std::make_unique<ThisMachine>();
}

} // namespace bmc::manager
