// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The BMC name file at its real place, beneath a root directory of the test's own. Runs in the
// sandbox.
#include <fcntl.h>
#include <sys/stat.h>

#include "fake_matchers.hpp"
#include "files.hpp"
#include "network_mng/discovery.h"

namespace {

class NameFileInPlace : public fake::FakePlatformTest {
protected:
    // A root that holds the processes' files and the configuration directory alone.
    static void SetUpTestSuite()
    {
        support::separateMounts();
        support::mountMemory("/run");
        std::filesystem::create_directories("/run/proc");
        std::filesystem::create_directories("/run/conf/network");
        support::bindOver("/proc", "/run/proc");
        ASSERT_EQ(chroot("/run"), 0);
        ASSERT_EQ(chdir("/"), 0);
    }
    static std::string read()
    {
        char text[64] = "";
        EXPECT_EQ(LIB_NW_ReadBmcNameFromFile(text), 0U);
        return text;
    }
};

const char *const file = "/conf/network/hostname";

TEST_F(NameFileInPlace, MissingFileIsNotMade)
{
    char text[64] = "before";
    std::filesystem::remove(file);
    EXPECT_EQ(LIB_NW_ReadBmcNameFromFile(text), 0x81000001U);
    EXPECT_EQ(NW_WriteBmcNameToFile("bmc", 3, file), 0x81000001U);
    EXPECT_STREQ(text, "before");
    EXPECT_FALSE(std::filesystem::exists(file));
}

// Dates that 32 bits of seconds cannot tell, with and without a sign, and a length likewise.
TEST_F(NameFileInPlace, MayHaveAnyDateAndLength)
{
    struct Extreme {
        std::int64_t seconds;
        std::uint64_t length;
    };
    constexpr std::int64_t in2040 = 2208988800;
    constexpr std::int64_t in2106 = 4304793600;
    constexpr std::uint64_t threeGiB = 3221225472;

    for (const auto &[seconds, length] : {Extreme{in2040, 6}, {in2106, 6}, {0, threeGiB}}) {
        SCOPED_TRACE(testing::Message() << seconds << " " << length);
        support::writeFile(file, "bmc-1\n");
        ASSERT_EQ(truncate(file, static_cast<off_t>(length)), 0);
        const timespec date{static_cast<time_t>(seconds), 0};
        const timespec both[] = {date, date};
        ASSERT_EQ(utimensat(AT_FDCWD, file, both, 0), 0);
        struct statx status {};
        ASSERT_EQ(statx(AT_FDCWD, file, 0, STATX_BASIC_STATS, &status), 0);
        ASSERT_EQ(status.stx_mtime.tv_sec, seconds);
        ASSERT_EQ(status.stx_size, length);

        EXPECT_EQ(read(), "bmc-1\n");
        EXPECT_EQ(NW_WriteBmcNameToFile("rack", 4, file), 0U);
    }
    EXPECT_TRUE(lines().empty());
    std::filesystem::remove(file);
}

TEST_F(NameFileInPlace, WrittenNameIsReadBack)
{
    support::writeFile(file, "");
    EXPECT_EQ(NW_WriteBmcNameToFile("bmc-front\n", 10, file), 0U);
    EXPECT_EQ(read(), "bmc-front\n");
    EXPECT_EQ(NW_WriteBmcNameToFile("rack7", 5, file), 0U);
    EXPECT_EQ(read(), "rack7ront\n");
    EXPECT_TRUE(lines().empty());
}

} // namespace
