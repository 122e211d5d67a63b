// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the watch over the heap sees. */
#include "heap_watch.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using heap_watch::counts;

using Allocate = void *(*)(std::size_t);

/* Stands for a function of the library; volatile keeps the call. */
LIBRARY_CODE void *takeMemory(std::size_t size)
{
    void *volatile block = std::malloc(size);
    return block;
}

LIBRARY_CODE void *takeZeroedMemory(std::size_t size)
{
    void *volatile block = std::calloc(1, size);
    return block;
}

LIBRARY_CODE void *takeMoreMemory(std::size_t size)
{
    void *volatile block = std::realloc(nullptr, size);
    return block;
}

LIBRARY_CODE void *takeAlignedMemory(std::size_t size)
{
    void *volatile block = std::aligned_alloc(16, size);
    return block;
}

LIBRARY_CODE std::FILE *openStream()
{
    std::FILE *volatile stream = std::fopen("/dev/null", "re");
    return stream;
}

TEST(HeapWatch, SeesWhatTheLibraryTakes)
{
    std::size_t taken = 0;
    for (const Allocate allocate :
         {takeMemory, takeZeroedMemory, takeMoreMemory, takeAlignedMemory}) {
        const std::unique_ptr<void, decltype(&std::free)> block(allocate(16), &std::free);
        EXPECT_EQ(counts().takenByLibrary, ++taken);
    }
    heap_watch::forget();
}

TEST(HeapWatch, LeavesOutWhatTheTestTakes)
{
    const std::unique_ptr<void, decltype(&std::free)> block(std::malloc(16), &std::free);
    std::vector<int> numbers(100);
    numbers.resize(1000);

    EXPECT_EQ(counts().takenByLibrary, 0U);
    EXPECT_EQ(counts().keptByLibc, 0U);
}

TEST(HeapWatch, SeesWhatLibcKeeps)
{
    std::FILE *stream = openStream();

    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(counts().takenByLibrary, 0U);
    EXPECT_EQ(counts().keptByLibc, 1U);
    std::fclose(stream);
    EXPECT_EQ(counts().keptByLibc, 0U);
}

TEST(HeapWatch, SeesWhatLibcTakesForItsCaller)
{
    char *line = nullptr;
    std::size_t size = 0;
    std::FILE *stream = openStream();

    EXPECT_EQ(getline(&line, &size, stream), -1);
    std::fclose(stream);
    EXPECT_EQ(counts().keptByLibc, 1U);
    std::free(line);
    EXPECT_EQ(counts().keptByLibc, 0U);
}

} // namespace
