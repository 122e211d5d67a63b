// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/print.hpp"

#include <fcntl.h>
#include <unistd.h>

#include "common/standard_descriptors.hpp"
#include "support.hpp"

namespace {

using namespace bmc::test;

/* Status of printing to standard output, and what it says. */
void expectPrinted(const char *target, int status, const std::string &message)
{
    inChild([&] {
        dup2(open(target, O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        const std::string said =
            stderrOf([&] { EXPECT_EQ(status, bmc::print("program", "text\n")); });
        EXPECT_EQ(message, said);
    });
}

TEST(Print, AnswersWhetherTheTextArrived)
{
    expectPrinted("/dev/null", 0, "");
    expectPrinted("/dev/full", 1, "program: cannot write the output: No space left on device\n");
}

TEST(StandardDescriptors, AreFilledWhenTheyAreClosed)
{
    inChild([] {
        close(STDIN_FILENO);
        close(STDERR_FILENO);
        bmc::occupyStandardDescriptors();
        const int file = open("/dev/null", O_RDONLY | O_CLOEXEC);
        const bool isBehind = file > STDERR_FILENO;
        const bool refuses = write(STDERR_FILENO, "x", 1) < 0;
        EXPECT_TRUE(isBehind);
        EXPECT_TRUE(refuses);
    });
}

} // namespace
