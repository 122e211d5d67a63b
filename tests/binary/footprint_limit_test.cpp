// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A controller's flash is small: the library's size is limited where it is built for one. */
#include <gtest/gtest.h>

#include "footprint.hpp"

namespace binary {
namespace {

constexpr std::uint64_t codeAndConstantsLimit = 64 * 1024;

TEST(Footprint, IsLimited)
{
    const ElfFacts elf = readElf(NW_LIBRARY_FILE);

    EXPECT_GT(codeAndConstants(elf), 32U * 1024);
    EXPECT_LE(codeAndConstants(elf), codeAndConstantsLimit);
}

} // namespace
} // namespace binary
