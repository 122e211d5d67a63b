// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a program prints because it was asked to. */
#pragma once

#include <cerrno>
#include <iostream>
#include <string_view>
#include <system_error>

namespace bmc {

/* Exit status: 0, or 1 after a message when the text did not arrive. */
inline int print(std::string_view program, std::string_view text)
{
    errno = 0;
    if (std::cout << text << std::flush) {
        return 0;
    }
    std::cerr << program << ": cannot write the output: " << std::generic_category().message(errno)
              << '\n';
    return 1;
}

} // namespace bmc
