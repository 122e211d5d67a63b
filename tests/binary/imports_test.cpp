// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the library asks of libc: checked calls where there are checked twins, and no memory. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "elf_facts.hpp"

namespace binary {
namespace {

using testing::Contains;

struct Imports : testing::Test {
    const std::set<std::string> names = readElf(NW_LIBRARY_FILE).imports;

    void expectNone(const std::set<std::string> &unwanted) const
    {
        ASSERT_THAT(names, Contains("memcpy"));
        for (const std::string &name : unwanted) {
            EXPECT_FALSE(names.contains(name)) << name;
        }
    }
};

TEST_F(Imports, HaveTheStackGuard)
{
    EXPECT_THAT(names, Contains("__stack_chk_fail"));
}

/* Each of these the library calls in a way that is checked whatever its arguments. */
TEST_F(Imports, AreCheckedTwins)
{
    EXPECT_THAT(names, Contains("__printf_chk"));
    EXPECT_THAT(names, Contains("__fprintf_chk"));
    EXPECT_THAT(names, Contains("__fdelt_chk"));
}

/* The fortified headers leave no call of these, whatever its arguments; others, such as memcpy,
 * stay plain where the compiler knows that they fit or knows no size. */
TEST_F(Imports, HaveNoUncheckedTwin)
{
    expectNone({"printf", "fprintf", "vprintf", "vfprintf", "dprintf", "vdprintf", "asprintf",
                "vasprintf", "syslog", "vsyslog", "longjmp", "siglongjmp", "gets"});
}

/* The caller's threads share no text and no state of libc's. */
TEST_F(Imports, AreForAnyThread)
{
    expectNone({"strerror", "strtok", "inet_ntoa", "gethostbyname", "getservbyname", "localtime",
                "gmtime", "ctime", "asctime", "rand", "random", "setlocale", "readdir", "ttyname"});
}

/* The RPC reply comes from the platform and goes back by MRPC_MsgFree. */
TEST_F(Imports, TakeNoMemory)
{
    EXPECT_THAT(names, Contains("MRPC_MsgFree"));
    expectNone({"malloc",        "calloc",         "realloc",  "reallocarray", "free",
                "aligned_alloc", "posix_memalign", "memalign", "valloc",       "pvalloc",
                "_Znwm",         "_Znam",          "_Znwj",    "_Znaj",        "_ZdlPv",
                "_ZdaPv",        "_ZdlPvm",        "_ZdlPvj",  "_ZdaPvm",      "_ZdaPvj",
                "mmap",          "mmap64",         "brk",      "sbrk",         "munmap"});
}

/* libc functions that leave memory to their caller. */
TEST_F(Imports, TakeNoMemoryByWayOfLibc)
{
    expectNone({"strdup",
                "strndup",
                "__strdup",
                "__strndup",
                "wcsdup",
                "asprintf",
                "vasprintf",
                "__asprintf_chk",
                "__vasprintf_chk",
                "getline",
                "getdelim",
                "__getdelim",
                "open_memstream",
                "open_wmemstream",
                "fmemopen",
                "newlocale",
                "wordexp",
                "realpath",
                "canonicalize_file_name",
                "get_current_dir_name",
                "scandir",
                "glob",
                "tempnam",
                "if_nameindex",
                "getifaddrs",
                "opendir",
                "fdopendir",
                "regcomp",
                "setenv",
                "putenv",
                "tsearch",
                "hcreate",
                "argz_create"});
}

} // namespace
} // namespace binary
