// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How a service's program begins and ends. */
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>

namespace bmc {

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

struct Option {
    const char *name;
    bool hasValue;
};

struct Program {
    const char *name;
    const char *version;
    const char *usage;               /* the text of --help, up to what is said of the environment */
    std::span<const Option> options; /* beside --help and --version */
};

/* The options given with their values, which are empty where an option has none. */
using Given = std::map<std::string, std::string>;

/* Options that don't go together; thrown by a task. */
class WrongUsage {};

/* What main returns: the task's end, or the answer to --help and --version. What the task throws
 * becomes a message on standard error. A reader of standard output or error that has gone is no
 * reason to end. */
int runProgram(const Program &program, int count, char **arguments,
               const std::function<void(const Given &)> &task);

} // namespace bmc
