// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/making.hpp"

#include <algorithm>

#include "settings/codes.hpp"

namespace bmc::manager {

namespace {

constexpr unsigned mostReadings = 3;
/* Each of them follows from what the one before has changed; more than a few are a contest with
 * somebody else. */
constexpr unsigned mostRounds = 12;
constexpr unsigned mostAttempts = 2;
constexpr unsigned mostRepetitions = 3;

class Maker {
public:
    Maker(Machine &machine, const Task &task) : machine_(machine), task_(task) {}

    Made run()
    {
        for (unsigned round = 0; look() && round < mostRounds; round++) {
            if (!takeSteps()) {
                break;
            }
        }
        return std::move(made_);
    }

private:
    /* Reads what there is and what is left to do; answers whether something can be done. */
    bool look()
    {
        made_.isRead = false;
        try {
            made_.actual = readPatiently(machine_, task_.wanted);
            made_.isRead = true;
        } catch (const MachineError &error) {
            made_.failures.push_back({code(settings::Result::kernelRefused), error.what()});
            return false;
        }
        made_.left = within(task_.scope, plan(task_.wanted, made_.actual, task_.owned));
        return std::ranges::any_of(made_.left, [this](const Step &step) { return mayTake(step); });
    }

    bool mayTake(const Step &step) const
    {
        const auto attempts = attempts_.find(step);
        return attempts == attempts_.end() || attempts->second < mostAttempts;
    }

    /* Answers whether to go on. */
    bool takeSteps()
    {
        for (const Step &step : made_.left) {
            if (mayTake(step) && !take(step) && task_.isStrict) {
                return mayTake(step);
            }
        }
        return true;
    }

    bool take(const Step &step)
    {
        const settings::Result refused = rowOf(step.item.kind).refused;
        if (task_.before) {
            task_.before(step);
        }
        try {
            machine_.apply(step);
            noteDone(step, code(refused));
            return true;
        } catch (const MissingInterface &error) {
            giveUp(step);
            fail(step, code(refused), error, true);
            return !task_.scope.needsInterfaceFor(step);
        } catch (const Unsupported &) {
            const settings::Result unsupported = rowOf(step.item.kind).unsupported;
            giveUp(step);
            fail(step, code(unsupported), MachineError(settings::meaningOf(unsupported)));
        } catch (const MachineError &error) {
            attempts_[step]++;
            fail(step, code(refused), error);
        }
        return false;
    }

    void noteDone(const Step &step, std::uint32_t code)
    {
        if (++done_[step] == mostRepetitions) {
            giveUp(step);
            fail(step, code, MachineError("it was done and is not to be seen"));
        }
    }

    void giveUp(const Step &step)
    {
        attempts_[step] = mostAttempts;
    }

    /* The last reason of a step is the one that counts. */
    void fail(const Step &step, std::uint32_t code, const MachineError &error,
              bool isMissing = false)
    {
        std::erase_if(made_.failures, [&](const Failure &failure) { return failure.step == step; });
        const std::string what = isMissing ? "" : textOf(step) + ": ";
        made_.failures.push_back({code, what + error.what(), step, isMissing});
    }

    static std::uint32_t code(settings::Result result)
    {
        return static_cast<std::uint32_t>(result);
    }

    Machine &machine_;
    const Task &task_;
    std::map<Step, unsigned> attempts_; /* that failed */
    std::map<Step, unsigned> done_;
    Made made_;
};

} // namespace

Actual readPatiently(Machine &machine, const World &world)
{
    for (unsigned reading = 1;; reading++) {
        try {
            return machine.read(world);
        } catch (const MachineError &) {
            if (reading == mostReadings) {
                throw;
            }
        }
    }
}

Made make(Machine &machine, const Task &task)
{
    return Maker(machine, task).run();
}

} // namespace bmc::manager
