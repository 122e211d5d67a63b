// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What libc calls the functions that know times and lengths of 64 bits. Where words have 32 bits
// these are others than the source's names, and the linker's --wrap goes by them; nw_wrap_libc in
// tests/CMakeLists.txt has the same list.
//
//     FILE *__wrap_fopen(const char *path, const char *mode) NW_WRAP_SYMBOL(fopen);
//     FILE *__real_fopen(const char *path, const char *mode) NW_REAL_SYMBOL(fopen);
#pragma once

#if __SIZEOF_POINTER__ == 4
#define NW_LIBC_fopen "fopen64"
#define NW_LIBC_fstat "__fstat64_time64"
#define NW_LIBC_select "__select64"
#define NW_LIBC_msgctl "__msgctl64"
#else
#define NW_LIBC_fopen "fopen"
#define NW_LIBC_fstat "fstat"
#define NW_LIBC_select "select"
#define NW_LIBC_msgctl "msgctl"
#endif

#define NW_WRAP_SYMBOL(call) __asm__("__wrap_" NW_LIBC_##call)
#define NW_REAL_SYMBOL(call) __asm__("__real_" NW_LIBC_##call)
