// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The guards behind the channel: a channel that reports success beside a response that does not.
#include "network_mng.h"
#include "setter_fixture.hpp"

namespace {

using testing::ElementsAre;

constexpr std::uint32_t contradiction = 0x1E000031U;

std::vector<std::uint8_t> commandsSent;

using ArpGuard = fake::FakePlatformTest;

TEST_F(ArpGuard, TestsTheWordOfAnUpdateAgain)
{
    commandsSent.clear();
    std::uint8_t status = 0x77;

    EXPECT_EQ(LIB_NW_UpdateArpStatus(1, 2, 3, &status), 0x1E000006U);

    EXPECT_EQ(status, 0x77);
    EXPECT_THAT(commandsSent, ElementsAre(6));
    EXPECT_THAT(lines(), ElementsAre(setters::codeLine("LIB_NW_UpdateArpStatus is Failed, iRet:%d.",
                                                       contradiction)));
}

TEST_F(ArpGuard, TestsTheWordOfAResumeAgain)
{
    commandsSent.clear();

    EXPECT_EQ(LIB_NW_ResumeSuspendBMCArps(1), 0x1E000007U);

    EXPECT_THAT(commandsSent, ElementsAre(7));
    EXPECT_THAT(lines(), ElementsAre(setters::codeLine(
                             "LIB_NW_ResumeSuspendBMCArps is Failed, iRet:%d.", contradiction)));
}

} // namespace

extern "C" {

NW_RESULT __wrap_Network_RPC_Comm(void *pstReqData, std::uint32_t *pstResData,
                                  std::uint32_t uiTimeout)
{
    EXPECT_EQ(uiTimeout, 10000U);
    commandsSent.push_back(static_cast<const std::uint8_t *>(pstReqData)[1]);
    *pstResData = contradiction;
    return 0;
}
}
