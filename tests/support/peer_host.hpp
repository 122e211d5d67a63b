// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// A second host: near0 here, its far end wire0 there. For programs that run in the sandbox.
#pragma once

#include "far_host.hpp"
#include "process.hpp"

namespace support {

struct Wire {
    static constexpr const char *farMac = "02:00:00:00:00:99";

    Wire()
    {
        shell("ip link add near0 type veth peer name wire0 address " + std::string(farMac));
        shell("ip link set near0 up");
    }
    Wire(const Wire &) = delete;
    Wire &operator=(const Wire &) = delete;
    ~Wire()
    {
        run("ip link del near0");
    }
};

class PeerHost : Wire, public FarHost {
public:
    static constexpr const char *mac = farMac;

    PeerHost() : FarHost("wire0") {}
};

} // namespace support
