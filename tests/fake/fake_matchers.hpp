// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Fixture and matchers for tests on the fake platform.
 *
 *     EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Get dns info failed, Ret:%d", -5)));
 *     EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pstDnsDbInfo", "NW_LMDB_Get_DNS")));
 *
 * A line matcher compares module, category, level, the source unit's name, the format as it was
 * passed and the text that it gave. */
#ifndef FAKE_MATCHERS_HPP
#define FAKE_MATCHERS_HPP

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_platform.hpp"

namespace fake {

inline constexpr const char *networkUnit = "libnetwork_mng";
inline constexpr const char *operateLogUnit = "libnetwork_operatelog";

struct Shape {
    std::uint32_t module;
    std::uint32_t category;
    std::uint32_t level;
};

inline constexpr Shape critical{10, 0, 2};
inline constexpr Shape error{10, 0, 4};
inline constexpr Shape info{10, 0, 6};
inline constexpr Shape debug{10, 0, 7};
inline constexpr Shape ifcFail{10, 4, 2};
inline constexpr Shape ifcTrace{10, 4, 6};
inline constexpr Shape nullPointer{0, 0, 7};

/* Prints a line in a failed expectation. */
void PrintTo(const LogLine &line, std::ostream *out);

using LineMatcher = ::testing::Matcher<const LogLine &>;

LineMatcher isLineOf(const char *file, Shape shape, const std::string &format,
                     const std::string &text);

/* "Pointer NAME is Null, ..." with the file, function and the very line that was passed. */
LineMatcher isNullLine(const std::string &parameter, const std::string &function,
                       const char *file = networkUnit);

template <typename... Arguments>
LineMatcher isLine(const char *file, Shape shape, const char *format, Arguments... arguments)
{
    return isLineOf(file, shape, format, formatted(format, arguments...));
}

template <typename... Arguments>
LineMatcher isErrorLine(const char *format, Arguments... arguments)
{
    return isLine(networkUnit, error, format, arguments...);
}

template <typename... Arguments>
LineMatcher isDebugLine(const char *format, Arguments... arguments)
{
    return isLine(networkUnit, debug, format, arguments...);
}

/* A reset platform for each test; what was handed out must have been released. */
class FakePlatformTest : public ::testing::Test {
protected:
    FakePlatformTest()
    {
        platform.reset();
    }
    ~FakePlatformTest() override
    {
        EXPECT_EQ(platform.liveMessages(), 0U) << "an RPC message was not released";
    }

    const std::vector<LogLine> &lines() const
    {
        return platform.lines();
    }

    Platform &platform = fake::platform();
};

/* The same for table-driven tests. */
template <typename Row>
class FakePlatformRows : public FakePlatformTest, public ::testing::WithParamInterface<Row> {
};

/* Test name of a row that has a member "name". */
struct RowName {
    template <typename Row>
    std::string operator()(const ::testing::TestParamInfo<Row> &row) const
    {
        return row.param.name;
    }
};

} // namespace fake

#endif
