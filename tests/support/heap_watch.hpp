// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fails every test in which the library takes memory from the heap, or in which libc takes memory
 * for itself (a stream, a resolver's answer) and does not give it back by the test's end.
 *
 * The program's malloc and its kin count by their caller: the code that called them last. Memory
 * that the test itself takes, or libstdc++ for it, does not count. */
#ifndef HEAP_WATCH_HPP
#define HEAP_WATCH_HPP

#include <cstddef>

/* Puts a function where the linker script puts the library's code. */
#define LIBRARY_CODE [[gnu::section("nw_library_code"), gnu::noinline]]

namespace heap_watch {

struct Counts {
    std::size_t takenByLibrary; /* since the test began */
    std::size_t keptByLibc;     /* blocks taken since the test began and not given back */
};

Counts counts();

/* Both become 0. */
void forget();

} // namespace heap_watch

#endif
