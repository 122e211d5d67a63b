// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How a service is told to end. */
#pragma once

#include "common/descriptor.hpp"

namespace bmc::rpc {

/* Delivery of SIGTERM and SIGINT through a file descriptor from the making of the object on, so
 * that neither interrupts a handler. */
class StopSignals {
public:
    StopSignals();

    int descriptor() const
    {
        return descriptor_.get();
    }

private:
    Descriptor descriptor_;
};

} // namespace bmc::rpc
