// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The interface as a C11 program sees it. */
#ifndef C_CALLER_H
#define C_CALLER_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct {
    const char *name;
    size_t size;
} C_RECORD_SIZE;

/* Every record of the interface; *count receives how many. */
const C_RECORD_SIZE *cRecordSizes(size_t *count);

/* Calls into the library from C. */
unsigned cCompletionCode(unsigned code);
void cBuildLldpText(char *text, size_t size);

#ifdef __cplusplus
}
#endif

#endif
