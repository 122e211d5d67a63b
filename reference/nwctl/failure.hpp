// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How a run ends: its exit status and, unless it succeeded, why. */
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "network_mng/base.h"

namespace nwctl {

enum class Exit {
    success = 0,
    internal = 1,  /* the configuration database or the program itself failed */
    usage = 2,     /* the command line cannot be understood */
    refused = 3,   /* a check refused the value; nothing was sent */
    manager = 4,   /* the network manager, or the kernel itself, refused the change */
    transport = 5, /* the network manager could not be reached or did not answer properly */
    notFound = 6,  /* the network, the resolver or the lease does not know what was asked for */
    different = 7, /* kernel or system are not as it is stored */
};

/* Ends the run. option and value name what the user gave; both are empty when nothing that the user
 * gave is at fault. */
struct Failure : std::runtime_error {
    Failure(Exit exit, std::string option, std::string value, const std::string &reason,
            std::optional<NW_RESULT> code = std::nullopt)
        : std::runtime_error(reason), status(exit), optionName(std::move(option)),
          optionValue(std::move(value)), result(code)
    {
    }

    Exit status;
    std::string optionName;
    std::string optionValue;
    std::optional<NW_RESULT> result; /* code behind the failure, where there is one */
    std::string sentence;            /* operation log of a refused change */
};

} // namespace nwctl
