// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The system's text of an error number. */
#ifndef NW_ERROR_TEXT_H
#define NW_ERROR_TEXT_H

#include <stddef.h>

constexpr size_t NW_ERROR_TEXT_SIZE = 128;

/* Reads as strerror has it, from any thread at once. The text stands in the buffer or is constant.
 */
const char *NW_ErrorText(int iError, char (&szBuffer)[NW_ERROR_TEXT_SIZE]);

#endif
