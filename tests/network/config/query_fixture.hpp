// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Calls the LAN query on a scripted board and kernel, the output ending at a guard page.
#pragma once

#include "datagram.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "kernel_script.hpp"
#include "network_mng/lan.h"
#include "query_model.hpp"

namespace query {

struct Answer {
    std::uint32_t result;
    Bytes view;
};

inline const char *const portNames[] = {"eth0", "eth1", "bond0"};

inline Answer getLanConfig(const std::string &name, const Bytes &before)
{
    const support::Guarded view(before);
    const std::uint32_t result = LIB_NW_GetLanConfig(name.c_str(), view.as<NW_ETHER_INS_INFO_S>());
    return {result, Bytes(view.bytes().begin(), view.bytes().end())};
}

// A fresh platform and a kernel that has nothing to tell but the end of its dump.
inline void prepare(const Board &board)
{
    fake::platform().reset();
    board.install();
    kernel::script() = kernel::Script{};
    kernel::script().datagram =
        datagram::build({datagram::Message{.type = datagram::done, .length = 20}});
}

// Lines of the kernel's part for the scripted numbers of bytes sent and received.
inline Lines exchangeLines(const Lines &walk)
{
    const kernel::Script &script = kernel::script();
    return support::debugLines(support::operator+
                               ({fake::formatted(" network send get addr return is %d,need .",
                                                 static_cast<int>(script.sendResult)),
                                 fake::formatted(" network received addr return is %d,need .",
                                                 static_cast<int>(script.datagram.size()))},
                                walk));
}

inline const std::vector<std::string> oneExchange = {"socket 16 2 0", "send 7777 24 0",
                                                     "recv 7777 8192 0", "close 7777"};

} // namespace query
