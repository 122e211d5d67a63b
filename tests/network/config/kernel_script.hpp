// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Stands in for the kernel's side of the address dump: the test program is linked so that socket,
// send, recv and close arrive here.
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "bytes.hpp"

namespace kernel {

inline constexpr int descriptor = 7777; // never a real one

struct Script {
    int socketResult = descriptor;
    ssize_t sendResult = 24;
    support::Bytes datagram;
    std::optional<ssize_t> receiveResult; // none: the datagram's size

    std::vector<std::string> calls; // "send 7777 24 0": name and arguments but the buffer
    support::Bytes request;
    bool receivedIntoZeros = true;
};

Script &script();

} // namespace kernel
