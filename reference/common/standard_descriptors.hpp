// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Descriptors 0 to 2 when whoever started the process has closed them. */
#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace bmc {

/* Fills those that are closed, before a file of ours becomes one of them and receives a text that
 * was meant for a terminal. Opened for reading alone: writing to them fails, as to a closed one. */
inline void occupyStandardDescriptors()
{
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            (void)!open("/dev/null", O_RDONLY); /* takes the lowest that is free */
        }
    }
}

} // namespace bmc
