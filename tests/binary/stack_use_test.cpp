// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the sum of the frames sees, and what it refuses, in small reports as the compiler writes
 * them. */
#include "stack_use.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace binary {
namespace {

struct SmallReport : testing::Test {
    const std::filesystem::path directory =
        std::filesystem::path(testing::TempDir()) /
        testing::UnitTest::GetInstance()->current_test_info()->name();

    SmallReport()
    {
        std::filesystem::create_directories(directory);
    }
    ~SmallReport() override
    {
        std::filesystem::remove_all(directory);
    }

    std::string path(const std::string &name) const
    {
        return (directory / name).string();
    }

    static std::string node(const std::string &title, const std::string &signature,
                            const std::string &frame)
    {
        return "node: { title: \"" + title + "\" label: \"" + signature + "\\nplace\\n" + frame +
               "\\n0 dynamic objects\" }\n";
    }
    static std::string edge(const std::string &caller, const std::string &callee,
                            const std::string &label = "place")
    {
        return "edge: { sourcename: \"" + caller + "\" targetname: \"" + callee + "\" label: \"" +
               label + "\" }\n";
    }
    /* A call at the end of this line of a source. */
    std::string indirect(const std::string &caller, const std::string &line) const
    {
        std::ofstream(path("source.cpp")) << line << "(1);\n";
        return edge(caller, "__indirect_call",
                    path("source.cpp") + ":1:" + std::to_string(line.size() + 1));
    }

    std::uint64_t below(const std::string &title, const std::vector<std::string> &reports) const
    {
        std::ofstream list(path("list"));
        for (std::size_t i = 0; i < reports.size(); ++i) {
            const std::string unit = path("unit" + std::to_string(i));
            std::ofstream(unit + ".ci") << reports[i];
            list << unit << ".o\n";
        }
        list.close();
        return StackUse(path("list")).below(title).bytes;
    }
};

TEST_F(SmallReport, SumsTheDeepestPath)
{
    EXPECT_EQ(below("a", {node("a", "void a()", "100 bytes (static)") + edge("a", "b") +
                              edge("a", "c") + node("b", "void b()", "20 bytes (static)"),
                          node("c", "void c()", "30 bytes (static)") + edge("c", "puts")}),
              130U);
}

/* The linker keeps one of them. */
TEST_F(SmallReport, TakesTheLargestFrameOfAFunctionInSeveralUnits)
{
    EXPECT_EQ(below("a", {node("a", "void a()", "100 bytes (static)"),
                          node("a", "void a()", "20 bytes (static)")}),
              100U);
}

TEST_F(SmallReport, RefusesRecursionAndFramesOfAnySize)
{
    const std::string frame = "8 bytes (static)";
    EXPECT_THROW(below("a", {node("a", "void a()", frame) + edge("a", "b") +
                             node("b", "void b()", frame) + edge("b", "a")}),
                 std::runtime_error);
    EXPECT_THROW(below("a", {node("a", "void a()", "8 bytes (dynamic)")}), std::runtime_error);
}

TEST_F(SmallReport, FollowsAPointerToEveryFunctionThatFits)
{
    const std::string small = "void NW_Small(const uint8_t*, uint32_t, char*)";
    const std::string large = "void {anonymous}::NW_Large(const uint8_t*, uint32_t, char*)";
    const std::string caller = node("a", "void a()", "8 bytes (static)");
    const std::string call = indirect("a", "    stRow.pfnParamFormat");

    EXPECT_EQ(below("a", {caller + call + node("s", small, "16 bytes (static)") +
                          node("l", large, "400 bytes (static)")}),
              408U);
    EXPECT_EQ(below("a", {caller + call + node("s", small, "16 bytes (static)") +
                          node("l", large + " [with int N = 4]", "400 bytes (static)")}),
              408U);
    EXPECT_THROW(below("a", {caller + call}), std::runtime_error);
}

TEST_F(SmallReport, RefusesAPointerThatItDoesNotKnow)
{
    const std::string caller =
        node("a", "void a()", "8 bytes (static)") +
        node("s", "void s(const uint8_t*, uint32_t, char*)", "1 bytes (static)");

    EXPECT_THROW(below("a", {caller + indirect("a", "    pfnOther")}), std::runtime_error);
    EXPECT_THROW(below("a", {caller + indirect("a", "    callback")}), std::runtime_error);
    EXPECT_THROW(below("a", {caller + indirect("a", "    NW_Set(pfnParamFormat), callback")}),
                 std::runtime_error);
}

} // namespace
} // namespace binary
