// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/verdict.hpp"

#include <algorithm>
#include <set>

#include "manager/log.hpp"

namespace bmc::manager {

Refusal refusalFor(const Failure &failure, const Scope &scope)
{
    Refusal refusal(failure.code, failure.reason);
    if (failure.isMissingInterface) {
        blame(refusal, scope.moduleOf(*failure.step), failure.step->port);
    } else if (failure.step) {
        blame(refusal, scope.moduleOf(*failure.step), *failure.step);
    } else {
        blame(refusal, (scope.selected.empty() ? scope.along : scope.selected).begin()->first);
    }
    return refusal;
}

std::optional<Failure> reasonOf(const Made &made, const Scope &scope)
{
    if (!made.isRead) {
        return made.failures.back();
    }
    const auto isLeft = [&](const Failure &failure) {
        return failure.step && std::ranges::find(made.left, *failure.step) != made.left.end() &&
               (!failure.isMissingInterface || scope.needsInterfaceFor(*failure.step));
    };
    const auto failure = std::ranges::find_if(made.failures, isLeft);
    if (failure != made.failures.end()) {
        return *failure;
    }
    const auto step = std::ranges::find_if(made.left, [&](const Step &left) {
        return std::ranges::none_of(made.failures,
                                    [&](const Failure &other) { return other.step == left; });
    });
    if (step == made.left.end()) {
        return std::nullopt;
    }
    return Failure{static_cast<std::uint32_t>(Result::kernelRefused),
                   textOf(*step) + ": others undo it", *step};
}

void logFailures(const Made &made, const char *occasion)
{
    std::set<std::string> missing;
    for (const Failure &failure : made.failures) {
        /* One line for each interface is enough. */
        if (!failure.isMissingInterface || missing.insert(failure.step->item.subject).second) {
            log(Level::error, std::string(occasion) + ": " + failure.reason);
        }
    }
}

} // namespace bmc::manager
