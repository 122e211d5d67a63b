// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The queue calls of the library end at a script that records them in order.
 *
 * Link with the target queue_calls, which wraps ftok and the msg* calls; a real queue stands in
 * real_queue.hpp. */
#ifndef QUEUE_CALLS_HPP
#define QUEUE_CALLS_HPP

#include <string>
#include <vector>

#include "fake_matchers.hpp"

namespace queue_calls {

inline constexpr int key = 0x12345678;
inline constexpr int queue = 31;

/* What the calls answer. */
struct Script {
    int key = queue_calls::key; /* ftok */
    int found = queue;          /* msgget that creates nothing */
    int created = queue;        /* msgget with IPC_CREAT */
    int controlled = 0;         /* msgctl */
    int sent = 0;               /* msgsnd */
    long received = 0;          /* msgrcv */
    int error = 0;              /* errno behind each of them */
};

/* Starts with no calls. */
void play(const Script &script);
/* "ftok(/path, 7)", "msgget(12345678, 2000)" (key and command in the base that they are written
 * in), "msgctl(31, 0)", "msgsnd(31, 8, 0)", "msgrcv(31, 255, 0, 0)". */
const std::vector<std::string> &calls();
/* The last message sent: type and text as they stand in memory. */
const fake::Bytes &message();

/* How a call reads in calls() when everything is as above. */
inline const std::string makesKey = "ftok(/some/file, 7)";
inline const std::string looksUp = "msgget(12345678, 2000)";
inline const std::string creates = "msgget(12345678, 1666)";
inline const std::string removes = "msgctl(31, 0)";

} // namespace queue_calls

#endif
