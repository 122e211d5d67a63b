// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The BMC name file at its real place, beneath a root directory of the test's own. Runs in the
// sandbox.
#include "fake_matchers.hpp"
#include "network_mng/discovery.h"
#include "system.hpp"

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
