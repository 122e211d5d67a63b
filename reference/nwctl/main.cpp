// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>
#include <iostream>
#include <vector>

#include "common/standard_descriptors.hpp"
#include "nwctl/run.hpp"

int main(int argc, char **argv)
{
    bmc::occupyStandardDescriptors();
    /* The program itself says why something failed; the library's diagnostics on the same stream
     * are for those who ask for them. */
    constexpr int keepUsersChoice = 0;
    setenv("BMC_LOG_LEVEL", "2", keepUsersChoice);

    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto status = nwctl::run(arguments, std::cout, std::cerr);
    return static_cast<int>(status);
}
