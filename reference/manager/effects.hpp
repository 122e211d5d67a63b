// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a configuration does to the kernel and the system. */
#pragma once

#include "draft.hpp"
#include "kernel.hpp"
#include "transaction.hpp"

namespace bmc::manager {

/* What an effect works on. */
struct Context {
    const Kernel &kernel;
    const Draft &draft;
    Transaction &transaction;
};

/* Throw Refusal or KernelError; what took effect until then is in the transaction. */
struct Effect {
    const char *name;
    std::uint32_t modules; /* that ask for it, NW_OPER_LOG_MODULE_E */
    void (*apply)(const Context &context);
};

std::span<const Effect> effects();

/* Module that answers for a failure of the effect. */
std::uint32_t moduleOf(const Effect &effect, const Draft &draft);

} // namespace bmc::manager
