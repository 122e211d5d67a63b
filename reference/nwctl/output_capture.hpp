// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Catches what library code prints to the process's standard output. */
#pragma once

#include <string>

namespace nwctl {

class OutputCapture {
public:
    /* Throws std::system_error. */
    OutputCapture();
    /* Gives standard output back. */
    ~OutputCapture();
    OutputCapture(const OutputCapture &) = delete;
    OutputCapture &operator=(const OutputCapture &) = delete;

    /* What was printed since the capture began. */
    std::string text() const;

private:
    int file_;
    int output_;
};

} // namespace nwctl
