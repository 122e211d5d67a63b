// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The exported symbols, the version script and the public header say the same. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "expected_exports.hpp"
#include "files.hpp"
#include "process.hpp"
#include "tool_output.hpp"

namespace interface {
namespace {

using support::allMatches;
using support::readFile;
using support::shell;

/* Of these kinds: T function, R and D constant or initialised data, B zeroed data. */
Names exported(const std::string &kinds = "TRDB")
{
    return allMatches(shell(NW_NM " -D --defined-only " NW_LIBRARY_FILE),
                      "[0-9a-f]+ [" + kinds + "] (\\w+)@@NETWORK_MNG_1\n");
}

Names listed()
{
    const std::string script = readFile(NW_VERSION_SCRIPT);
    const std::size_t global = script.find("global:");
    const std::size_t local = script.find("local:");
    return allMatches(script.substr(global, local - global), "(\\w+);");
}

/* The name in front of the parameters, the array's bounds or the end of each visible declaration.
 */
Names declared()
{
    return allMatches(shell(NW_PREPROCESS_HEADER " " NW_HEADER_FILE),
                      "visibility\\(\"default\"\\)\\)\\)[^;(\\[]*?(\\w+)\\s*[(\\[;]");
}

TEST(Interface, IsExactlyTheVersionScript)
{
    EXPECT_EQ(exported(), listed());
}

TEST(Interface, IsExactlyWhatTheHeaderDeclares)
{
    EXPECT_EQ(exported(), declared());
}

TEST(Interface, HasNoSymbolOfAnotherVersionOrKind)
{
    const std::string symbols = shell(NW_NM " -D --defined-only " NW_LIBRARY_FILE);
    const auto lines = allMatches(symbols, "([^\n]+)\n");

    EXPECT_EQ(lines.size(), exported().size() + 1);
    EXPECT_THAT(symbols, testing::HasSubstr(" A NETWORK_MNG_1\n"));
}

Names operator+(Names names, const Names &more)
{
    names.insert(more.begin(), more.end());
    return names;
}

TEST(Interface, IsWhatIsPromised)
{
    EXPECT_EQ(listed(), expectedFunctions + expectedTables + expectedState);
    EXPECT_EQ(exported("T"), expectedFunctions);
    EXPECT_EQ(exported("RD"), expectedTables);
    EXPECT_EQ(exported("B"), expectedState);
}

TEST(Interface, HidesWhatIsPrivate)
{
    for (const char *name :
         {"NW_ParseSucessConfigParam", "NW_OperateLogOutputCardPriPar", "NW_SendRequest",
          "NW_SuccessHostNameOperateLogBuild", "NW_SuccessLANOperateLogBuild"}) {
        EXPECT_FALSE(exported().contains(name)) << name;
    }
}

TEST(Interface, HasItsSoname)
{
    EXPECT_THAT(shell(NW_READELF " -d " NW_LIBRARY_FILE),
                testing::HasSubstr("Library soname: [libnetwork_mng.so.1]"));
}

} // namespace
} // namespace interface
