// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/deadline.hpp"

#include <thread>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

TEST(Deadline, LeavesLessAndLess)
{
    const bmc::Deadline deadline(10min);
    const auto first = deadline.remaining();
    std::this_thread::sleep_for(2ms);
    EXPECT_LE(first, 10min);
    EXPECT_LT(deadline.remaining(), first);
}

TEST(Deadline, ThatHasPassedIsAFailure)
{
    const bmc::Deadline deadline(0ms);
    try {
        deadline.remaining();
        ADD_FAILURE() << "there is time left";
    } catch (const std::system_error &error) {
        EXPECT_EQ(ETIMEDOUT, error.code().value());
        EXPECT_STREQ("Connection timed out", error.what());
    }
}

TEST(Timespec, HasSecondsAndNanoseconds)
{
    const timespec time = bmc::timespecOf(2500ms);
    EXPECT_EQ(2, time.tv_sec);
    EXPECT_EQ(500'000'000, time.tv_nsec);
}

} // namespace
