// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A second process that does one thing and reports it as text. */
#ifndef CHILD_HPP
#define CHILD_HPP

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "fake_platform.hpp"
#include "process.hpp"

namespace ipc {

/* "81000001: (10, 0, 4) Msgrcv failed, iRet:-1\n": a result and the lines behind it. */
std::string outcome(std::uint32_t result, const std::vector<fake::LogLine> &lines);

class Child : public support::Child {
public:
    explicit Child(const std::function<std::string()> &run);

    /* Whether it ends within this time. */
    bool endsWithin(std::chrono::milliseconds time);
    /* What its function answered, once it has ended; "ended by signal 9" when it did not answer. */
    std::string report();
};

} // namespace ipc

#endif
