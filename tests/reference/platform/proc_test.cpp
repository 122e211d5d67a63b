// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Kernel interface files. */
#include <array>
#include <fstream>
#include <sstream>

#include "bmc_platform.h"
#include "support.hpp"

namespace {

using bmc::test::StateTest;
using bmc::test::stderrOf;

constexpr const char *path = "/proc/sys/net/value";

class ProcFile : public StateTest {
protected:
    std::string contents() const
    {
        std::ostringstream text;
        text << std::ifstream(state() / "proc/proc/sys/net/value").rdbuf();
        return text.str();
    }
};

TEST_F(ProcFile, ReadCopiesNoMoreThanAsked)
{
    write("proc/proc/sys/net/value", "1234\n");
    std::array<char, 4> buffer{'#', '#', '#', '#'};
    EXPECT_EQ(0, NW_ReadProc(path, 1, buffer.data()));
    EXPECT_EQ((std::array{'1', '#', '#', '#'}), buffer);
}

TEST_F(ProcFile, ReadOfAShortFileZeroesTheRest)
{
    write("proc/proc/sys/net/value", "1\n");
    std::array<char, 6> buffer;
    buffer.fill('#');
    EXPECT_EQ(0, NW_ReadProc(path, 5, buffer.data()));
    EXPECT_EQ((std::array{'1', '\n', '\0', '\0', '\0', '#'}), buffer);
}

TEST_F(ProcFile, EmptyOrMissingFileIsAFailureWithTheBufferUntouched)
{
    char byte = '#';
    stderrOf([&] { EXPECT_NE(0, NW_ReadProc(path, 1, &byte)); });
    write("proc/proc/sys/net/value", "");
    stderrOf([&] { EXPECT_NE(0, NW_ReadProc(path, 1, &byte)); });
    stderrOf([&] { EXPECT_NE(0, NW_ReadProc("/proc/sys/net", 1, &byte)); });
    EXPECT_EQ('#', byte);
}

TEST_F(ProcFile, WriteMakesDirectoriesAndReplacesTheContents)
{
    EXPECT_EQ(0, NW_WriteProc(path, 4, "12\n#"));
    EXPECT_EQ("12\n#", contents());
    EXPECT_EQ(0, NW_WriteProc(path, 1, "0123"));
    EXPECT_EQ("0", contents());

    char byte = '#';
    EXPECT_EQ(0, NW_ReadProc(path, 1, &byte));
    EXPECT_EQ('0', byte);
}

TEST_F(ProcFile, WriteLeavesNothingButTheFile)
{
    EXPECT_EQ(0, NW_WriteProc(path, 1, "1"));
    std::size_t count = 0;
    for ([[maybe_unused]] const auto &entry :
         std::filesystem::directory_iterator(state() / "proc/proc/sys/net")) {
        ++count;
    }
    EXPECT_EQ(1U, count);
}

TEST_F(ProcFile, FailedWriteIsReportedAndLeavesTheOldBytes)
{
    write("proc/proc/sys/net/value/below", "old");
    const std::string line =
        stderrOf([] { EXPECT_NE(0, NW_WriteProc("/proc/sys/net/value", 1, "1")); });
    EXPECT_TRUE(line.starts_with("<4>libbmc_platform:")) << line;
    stderrOf([] { EXPECT_NE(0, NW_WriteProc("/proc/sys/net/value/below/it", 1, "1")); });

    char byte = '#';
    EXPECT_EQ(0, NW_ReadProc("/proc/sys/net/value/below", 1, &byte));
    EXPECT_EQ('o', byte);
}

class OutsideProc : public ProcFile, public ::testing::WithParamInterface<const char *> {};

TEST_P(OutsideProc, IsNeitherReadNorWritten)
{
    write("secret", "old");
    char byte = '#';
    stderrOf([&] {
        EXPECT_NE(0, NW_ReadProc(GetParam(), 1, &byte));
        EXPECT_NE(0, NW_WriteProc(GetParam(), 1, "n"));
    });
    EXPECT_EQ('#', byte);
    std::ifstream file(state() / "secret");
    EXPECT_EQ('o', file.get());
}

INSTANTIATE_TEST_SUITE_P(Paths, OutsideProc,
                         ::testing::Values("../secret", "/../secret", "/proc/../../secret", "/..",
                                           "/proc/sys/", "/", ""));

TEST_F(ProcFile, AbsurdArgumentsAreRefused)
{
    write("proc/proc/sys/net/value", "old");
    char byte = '#';
    stderrOf([&] {
        EXPECT_NE(0, NW_ReadProc(nullptr, 1, &byte));
        EXPECT_NE(0, NW_ReadProc(path, 0, &byte));
        EXPECT_NE(0, NW_ReadProc(path, 1, nullptr));
        EXPECT_NE(0, NW_ReadProc(path, UINT32_MAX, &byte));
        EXPECT_NE(0, NW_WriteProc(nullptr, 1, "1"));
        EXPECT_NE(0, NW_WriteProc(path, 0, "1"));
        EXPECT_NE(0, NW_WriteProc(path, 1, nullptr));
        EXPECT_NE(0, NW_WriteProc(path, UINT32_MAX, "1"));
    });
    EXPECT_EQ('#', byte);
    EXPECT_EQ("old", contents());
}

} // namespace
