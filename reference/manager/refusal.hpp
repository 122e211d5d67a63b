// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Refusals of engine and service: those of the settings, and what a step of a change is about. */
#pragma once

#include "manager/state/plan.hpp"
#include "settings/refusal.hpp"

namespace bmc::manager {

using settings::Refusal;
using settings::require;
using settings::Result;

/* The database cannot be opened or written. */
class DatabaseFailure : public Refusal {
public:
    explicit DatabaseFailure(const std::string &operation)
        : Refusal(Result::databaseFailed, operation)
    {
    }
};

/* Adds to the refusal the section of the module (NW_OPER_LOG_MODULE_E; 0: of none), and the port
 * where the section has ports. */
void blame(Refusal &refusal, std::uint32_t module, unsigned port = wholeMachine);
/* ... and of the step's port, and the setting that asks for it where the section has it. What waits
 * for a missing interface has none. */
void blame(Refusal &refusal, std::uint32_t module, const Step &step);

} // namespace bmc::manager
