// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Descriptors that the library opens itself. */
#ifndef NW_DESCRIPTOR_H
#define NW_DESCRIPTOR_H

#include <fcntl.h>

/* Keeps the descriptor from programs that are started from now on. For those that are opened in a
 * way that callers know, without a flag for it; one that is started in between still inherits. */
inline void NW_CloseOnExec(int iDescriptor)
{
    (void)fcntl(iDescriptor, F_SETFD, FD_CLOEXEC);
}

#endif
