// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* System calls of another process that fail where a test wants it. The process is started with
 * LD_PRELOAD of failing_calls.cpp's library and FAILING_CALLS naming a file of this layout. */
#pragma once

#include <atomic>

namespace nwtest {

/* Counts down with each call; the one that finds 1 fails. 0: none. */
struct Countdown {
    std::atomic<int> left;
    std::atomic<int> isForGood; /* all those that follow fail, too */
};

struct FailingCalls {
    Countdown received; /* recvmsg on netlink sockets: ENOBUFS, the message stays in the queue */
    Countdown sent;     /* sendmsg on netlink sockets: ENOBUFS */
    Countdown link;     /* ioctl on packet sockets about an interface's link: ENOMEM */
    Countdown asked;    /* sendto on packet sockets: ENOBUFS */
    Countdown meta;     /* writes of a meta page of the database: EIO */
    std::atomic<int> failed;
};

} // namespace nwtest
