// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "heap_watch.hpp"

#include <gtest/gtest.h>
#include <link.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <string_view>

/* Bounds of the library's code, from the linker script. */
extern "C" const char nw_library_code_start[];
extern "C" const char nw_library_code_end[];

/* What glibc's own malloc and its kin are called besides. */
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *__libc_calloc(std::size_t count, std::size_t size);
extern "C" void *__libc_realloc(void *block, std::size_t size);
extern "C" void *__libc_memalign(std::size_t alignment, std::size_t size);
extern "C" void __libc_free(void *block);

namespace {

std::uintptr_t addressOf(const void *pointer)
{
    return reinterpret_cast<std::uintptr_t>(pointer);
}

struct Range {
    std::uintptr_t start;
    std::uintptr_t end;

    bool holds(const void *code) const
    {
        return addressOf(code) >= start && addressOf(code) < end;
    }
};

/* Taken inside malloc, so it may need none. */
class SpinLock {
public:
    void lock()
    {
        while (flag_.test_and_set(std::memory_order_acquire)) {
        }
    }
    void unlock()
    {
        flag_.clear(std::memory_order_release);
    }

private:
    std::atomic_flag flag_;
};

constexpr std::size_t maxKept = 1024;

SpinLock s_lock;
Range s_libc;
std::atomic<bool> s_watching;
std::size_t s_takenByLibrary;
std::atomic<std::size_t> s_keptCount;
std::array<const void *, maxKept> s_kept;

void *noteTaken(void *block, const void *caller)
{
    if (!s_watching || block == nullptr) {
        return block;
    }
    const Range library{addressOf(nw_library_code_start), addressOf(nw_library_code_end)};
    const bool byLibrary = library.holds(caller);
    if (!byLibrary && !s_libc.holds(caller)) {
        return block;
    }

    const std::scoped_lock locked(s_lock);
    if (byLibrary) {
        ++s_takenByLibrary;
        return block;
    }
    if (s_keptCount == maxKept) {
        std::abort();
    }
    s_kept[s_keptCount++] = block;
    return block;
}

void noteGiven(const void *block)
{
    if (s_keptCount == 0 || block == nullptr) {
        return;
    }
    const std::scoped_lock locked(s_lock);
    const auto end = s_kept.begin() + static_cast<std::ptrdiff_t>(s_keptCount);
    const auto at = std::find(s_kept.begin(), end, block);
    if (at != end) {
        *at = s_kept[--s_keptCount];
    }
}

/* Takes libc's code from the list of loaded objects. */
int findLibc(dl_phdr_info *object, std::size_t, void *found)
{
    if (!std::string_view(object->dlpi_name).ends_with("/libc.so.6")) {
        return 0;
    }
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const ElfW(Phdr) &segment = object->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0) {
            const std::uintptr_t start = object->dlpi_addr + segment.p_vaddr;
            *static_cast<Range *>(found) = {start, start + segment.p_memsz};
        }
    }
    return 1;
}

/* libc keeps its list of exit handlers in blocks. A test's own static objects may come to the end
 * of one, which is nothing of the library's: a fresh block is begun before the first test. */
void beginListOfExitHandlers()
{
    constexpr int handlersInBlock = 32;
    heap_watch::forget();
    s_watching = true;
    for (int i = 0; i < handlersInBlock && heap_watch::counts().keptByLibc == 0; ++i) {
        std::atexit([] {});
    }
    s_watching = false;
}

class HeapWatch : public testing::EmptyTestEventListener {
    void OnTestProgramStart(const testing::UnitTest &) override
    {
        beginListOfExitHandlers();
    }

    void OnTestStart(const testing::TestInfo &) override
    {
        heap_watch::forget();
        s_watching = true;
    }

    void OnTestEnd(const testing::TestInfo &) override
    {
        s_watching = false;
        const heap_watch::Counts counts = heap_watch::counts();
        EXPECT_EQ(counts.takenByLibrary, 0U) << "blocks taken by the library itself";
        EXPECT_EQ(counts.keptByLibc, 0U) << "blocks that libc took and kept";
        heap_watch::forget();
    }
};

[[maybe_unused]] const bool s_installed = [] {
    if (dl_iterate_phdr(findLibc, &s_libc) == 0 || s_libc.start == 0) {
        std::abort();
    }
    testing::UnitTest::GetInstance()->listeners().Append(new HeapWatch);
    return true;
}();

} // namespace

namespace heap_watch {

Counts counts()
{
    const std::scoped_lock locked(s_lock);
    return {s_takenByLibrary, s_keptCount};
}

void forget()
{
    const std::scoped_lock locked(s_lock);
    s_takenByLibrary = 0;
    s_keptCount = 0;
}

} // namespace heap_watch

/* These take the place of libc's, for libc as well. */
extern "C" {

void *malloc(std::size_t size) noexcept
{
    return noteTaken(__libc_malloc(size), __builtin_return_address(0));
}

void *calloc(std::size_t count, std::size_t size) noexcept
{
    return noteTaken(__libc_calloc(count, size), __builtin_return_address(0));
}

void *realloc(void *block, std::size_t size) noexcept
{
    noteGiven(block);
    return noteTaken(__libc_realloc(block, size), __builtin_return_address(0));
}

void *memalign(std::size_t alignment, std::size_t size) noexcept
{
    return noteTaken(__libc_memalign(alignment, size), __builtin_return_address(0));
}

void *aligned_alloc(std::size_t alignment, std::size_t size) noexcept
{
    return noteTaken(__libc_memalign(alignment, size), __builtin_return_address(0));
}

int posix_memalign(void **block, std::size_t alignment, std::size_t size) noexcept
{
    *block = noteTaken(__libc_memalign(alignment, size), __builtin_return_address(0));
    return *block == nullptr ? ENOMEM : 0;
}

void free(void *block) noexcept
{
    noteGiven(block);
    __libc_free(block);
}

} // extern "C"
