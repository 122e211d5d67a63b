// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Table-driven tests of null checks: a row is one call with a null argument.
 *
 *     class RpcNull : public fake::NullArgument {};
 *     TEST_P(RpcNull, IsLoggedAndAnswered) { expectNullCheck(); }
 *     INSTANTIATE_TEST_SUITE_P(Rpc, RpcNull, testing::ValuesIn(rows), fake::RowName()); */
#ifndef NULL_CHECKS_HPP
#define NULL_CHECKS_HPP

#include <functional>
#include <string>

#include "fake_matchers.hpp"

namespace fake {

inline constexpr std::uint32_t nullPointerResult = 0x81000002U;

struct NullRow {
    std::string name;
    std::string function;  /* as the line names it */
    std::string parameter; /* as the line names it: the first null one */
    std::function<std::uint32_t()> call;
    std::uint32_t result = nullPointerResult;
    const char *unit = networkUnit;
};

class NullArgument : public FakePlatformRows<NullRow> {
protected:
    /* One line, the result, and nothing else asked of the platform. */
    void expectNullCheck() const
    {
        const NullRow &row = this->GetParam();

        EXPECT_EQ(row.call(), row.result);
        EXPECT_THAT(lines(),
                    ::testing::ElementsAre(isNullLine(row.parameter, row.function, row.unit)));
        EXPECT_EQ(platform.calls().size(), 1U);
    }
};

} // namespace fake

#endif
