// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The whole program but its process: command line in, texts and exit status out. */
#pragma once

#include <ostream>
#include <span>
#include <string>

#include "nwctl/failure.hpp"

namespace nwctl {

/* arguments: the command line without the program's name. */
Exit run(std::span<const std::string> arguments, std::ostream &out, std::ostream &err);

} // namespace nwctl
