// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The library's variables are the process state that its headers name, and nothing else. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "elf_facts.hpp"
#include "network_mng.h"

namespace binary {
namespace {

using Sizes = std::map<std::string, std::uint64_t>;

/* The event table, the lock's flags, and what the heartbeat's four functions set and get. */
const Sizes processState{
    {"g_stNetworkEvent", sizeof(g_stNetworkEvent)},
    {"g_ucNetworkSetFlag", sizeof(g_ucNetworkSetFlag)},
    {"g_ucNetworkDNSSetFlag", sizeof(g_ucNetworkDNSSetFlag)},
    {"g_uiRestartDelay", sizeof(g_uiRestartDelay)},
    {"(anonymous namespace)::s_uiTimeOut", sizeof(uint32_t)},
    {"(anonymous namespace)::s_uiMsgCnt", sizeof(uint32_t)},
};

/* What alignment may add in front of one variable. */
constexpr std::uint64_t maxPadding = 31;

struct WritableData : testing::Test {
    const ElfFacts elf = readElf(NW_LIBRARY_FILE);
};

TEST_F(WritableData, IsTheProcessState)
{
    std::set<std::string> writable;
    for (const Section &section : writableSections(elf)) {
        writable.insert(section.name);
    }

    Sizes found;
    for (const Symbol &symbol : elf.symbols) {
        if (symbol.size > 0 && writable.contains(symbol.section)) {
            EXPECT_TRUE(found.emplace(symbol.name, symbol.size).second) << "twice " << symbol.name;
        }
    }
    EXPECT_EQ(found, processState);
}

/* Nothing without a name lies between the variables. */
TEST_F(WritableData, HasNoMoreThanPaddingBesides)
{
    std::uint64_t named = 0;
    for (const auto &[name, size] : processState) {
        named += size;
    }
    std::uint64_t total = 0;
    for (const Section &section : writableSections(elf)) {
        total += section.size;
    }

    EXPECT_EQ(named, 1544U);
    EXPECT_THAT(total, testing::AllOf(testing::Ge(named), testing::Le(named + maxPadding)));
}

} // namespace
} // namespace binary
