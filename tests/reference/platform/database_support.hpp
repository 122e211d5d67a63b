// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Access to the configuration database. Each process opens it once, so each test works in a child.
 */
#pragma once

#include <cstdint>
#include <vector>

#include "bmc_platform.h"
#include "support.hpp"

namespace bmc::test {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t key = 0x10610003;

inline void *open()
{
    return DB_GetCurrentDb(DB_Open());
}

inline int put(std::uint32_t record, const Bytes &bytes)
{
    return DB_PutInternal("unit", 1, open(), record, static_cast<std::uint32_t>(bytes.size()),
                          bytes.data());
}

inline int get(std::uint32_t record, Bytes &bytes)
{
    return DB_Get(open(), record, static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

inline void expectRecord(std::uint32_t record, const Bytes &expected)
{
    Bytes bytes(expected.size(), 0xAA);
    EXPECT_EQ(0, get(record, bytes));
    EXPECT_EQ(expected, bytes);
}

class DatabaseTest : public StateTest {
protected:
    std::filesystem::path directory() const
    {
        return state() / "config-db";
    }
};

} // namespace bmc::test
