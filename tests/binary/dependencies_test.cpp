// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The library needs libc and a platform, and does nothing when it is loaded. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "process.hpp"
#include "tool_output.hpp"

namespace binary {
namespace {

using support::allMatches;
using support::shell;

TEST(Dependencies, AreLibcAndItsLoaderAlone)
{
    const auto needed =
        allMatches(shell(NW_READELF " -d " NW_LIBRARY_FILE), "\\(NEEDED\\)[^\\[]*\\[([^\\]]+)\\]");
    const std::set<std::string> allowed{"libc.so.6", "ld-linux-x86-64.so.2", "ld-linux-armhf.so.3"};

    EXPECT_TRUE(needed.contains("libc.so.6"));
    EXPECT_TRUE(std::includes(allowed.begin(), allowed.end(), needed.begin(), needed.end()))
        << testing::PrintToString(needed);
}

TEST(Dependencies, HaveNoSearchPath)
{
    EXPECT_THAT(shell(NW_READELF " -d " NW_LIBRARY_FILE),
                testing::Not(testing::ContainsRegex("RPATH|RUNPATH")));
}

/* What glibc does not give is asked of the platform, by names that it declares. */
TEST(Dependencies, AreOtherwisePlatformFunctions)
{
    const auto asked =
        allMatches(shell(NW_NM " -D --undefined-only " NW_LIBRARY_FILE), " U (\\w+)\n");
    const auto offered = allMatches(shell(NW_PREPROCESS_PLATFORM), "(\\w+)\\(");

    EXPECT_FALSE(asked.empty());
    EXPECT_TRUE(std::includes(offered.begin(), offered.end(), asked.begin(), asked.end()))
        << testing::PrintToString(asked);
}

TEST(Loading, RunsNothing)
{
    EXPECT_THAT(shell(NW_READELF " -d -SW " NW_LIBRARY_FILE),
                testing::Not(testing::ContainsRegex("INIT|FINI|init_array|fini_array|[.]ctors")));
}

} // namespace
} // namespace binary
