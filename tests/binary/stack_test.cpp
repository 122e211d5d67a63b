// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Callers run the library on small stacks: how deep each function gets is limited. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "elf_facts.hpp"
#include "stack_use.hpp"

namespace binary {
namespace {

constexpr const char *lanQuery = "LIB_NW_GetLanConfig";
constexpr const char *gatewayDiscovery = "NW_GetV4DefaultGwMacAddr";

constexpr std::uint64_t lanQueryLimit = 12 * 1024;
constexpr std::uint64_t gatewayDiscoveryLimit = 8 * 1024;
constexpr std::uint64_t otherLimit = 9 * 1024;

/* A frame of this size holds an array, which the compiler has to guard. */
constexpr std::uint64_t guardedFrame = 256;

std::set<std::string> exportedFunctions()
{
    return readElf(NW_LIBRARY_FILE).exported;
}

TEST(Stack, OfTheLanQueryIsLimited)
{
    EXPECT_LE(StackUse(NW_OBJECT_LIST).below(lanQuery).bytes, lanQueryLimit);
}

TEST(Stack, OfTheGatewayDiscoveryIsLimited)
{
    EXPECT_LE(StackUse(NW_OBJECT_LIST).below(gatewayDiscovery).bytes, gatewayDiscoveryLimit);
}

/* Where a function calls one of the two, that call has its own limit. */
TEST(Stack, OfEveryOtherFunctionIsLimited)
{
    StackUse stack(NW_OBJECT_LIST, {lanQuery, gatewayDiscovery});
    const std::set<std::string> exported = exportedFunctions();

    ASSERT_GT(exported.size(), 100U);
    for (const std::string &name : exported) {
        if (name == lanQuery || name == gatewayDiscovery) {
            continue;
        }
        const Depth &depth = stack.below(name);
        EXPECT_LE(depth.bytes, otherLimit) << testing::PrintToString(depth.path);
    }
}

/* Every function of the library takes part, also what no exported function calls. */
TEST(Stack, IsKnownForEveryFunction)
{
    StackUse stack(NW_OBJECT_LIST);
    for (const auto &[title, function] : stack.functions()) {
        EXPECT_FALSE(function.signature.empty()) << title;
        EXPECT_NO_THROW(stack.below(title)) << title;
    }
}

TEST(Stack, IsGuardedWhereAFrameHoldsAnArray)
{
    const StackUse stack(NW_OBJECT_LIST);
    std::size_t guarded = 0;
    for (const auto &[title, function] : stack.functions()) {
        if (function.frame >= guardedFrame) {
            EXPECT_TRUE(function.calls.contains("__stack_chk_fail")) << title;
            ++guarded;
        }
    }
    EXPECT_GT(guarded, 20U);
}

} // namespace
} // namespace binary
