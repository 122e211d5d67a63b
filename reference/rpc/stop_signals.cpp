// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rpc/stop_signals.hpp"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <sys/signalfd.h>

namespace bmc::rpc {

StopSignals::StopSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    descriptor_ = Descriptor(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!descriptor_) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

} // namespace bmc::rpc
