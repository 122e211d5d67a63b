// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the loader makes writable, executable and read-only. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "elf_facts.hpp"

namespace binary {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::Not;

constexpr std::uint64_t pageSize = 4096;

struct Segments : testing::Test {
    const ElfFacts elf = readElf(NW_LIBRARY_FILE);
};

TEST_F(Segments, AreNeverWritableAndExecutable)
{
    ASSERT_FALSE(elf.segments.empty());
    EXPECT_THAT(elf.segments, Each(Field(&Segment::flags, AnyOf("R", "RW", "RE"))));
}

TEST_F(Segments, AskForNoExecutableStack)
{
    EXPECT_EQ(segmentOf(elf, "GNU_STACK").flags, "RW");
}

TEST_F(Segments, NeedNoTextRelocations)
{
    EXPECT_THAT(elf.dynamic, Not(HasSubstr("TEXTREL")));
}

/* The loader protects whole pages: a last page that is not full would stay writable. */
TEST_F(Segments, AreReadOnlyAfterRelocation)
{
    const Segment &relro = segmentOf(elf, "GNU_RELRO");

    EXPECT_THAT(elf.dynamic, HasSubstr("BIND_NOW"));
    EXPECT_EQ((relro.address + relro.memorySize) % pageSize, 0U);
}

TEST_F(Segments, LeaveNothingWritableButVariables)
{
    EXPECT_THAT(writableSections(elf), Each(Field(&Section::name, AnyOf(".data", ".bss"))));
}

/* The exported tables are constants, even to a caller that casts the const away. */
TEST_F(Segments, HoldTheTablesInReadOnlyOnes)
{
    std::size_t found = 0;
    for (const Symbol &symbol : elf.symbols) {
        if (symbol.name == "g_astSuccessOperateLogDescTbl" ||
            symbol.name == "g_astFailureOperateLogDefault" ||
            symbol.name == "g_astNwOperateLogSubModuleTbl") {
            ++found;
            EXPECT_THAT(symbol.section, AnyOf(".rodata", ".data.rel.ro")) << symbol.name;
        }
    }
    EXPECT_EQ(found, 3U);
}

} // namespace
} // namespace binary
