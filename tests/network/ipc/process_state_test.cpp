// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The state that a process has with the shared library: what it starts with, and that process and
 * library see the same copy. Each test is a process of its own. */
#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;

class ProcessState : public fake::FakePlatformTest {};

TEST_F(ProcessState, StartsWithoutEventsAndUnlocked)
{
    EXPECT_EQ(fake::bytesOf(g_stNetworkEvent), Bytes(1530));
    EXPECT_EQ(g_ucNetworkSetFlag, 0);
    EXPECT_EQ(g_ucNetworkDNSSetFlag, 0);
    EXPECT_EQ(g_uiRestartDelay, 0U);
}

TEST_F(ProcessState, RestoreBeforeAnyBackUpClearsTheWorkingBank)
{
    NW_AddNetworkEvent(1, 77, &g_stNetworkEvent);
    EXPECT_EQ(NW_FindNetworkEvent(1, 77, &g_stNetworkEvent), 1U);

    NW_BackUpNetworkEvent(0, &g_stNetworkEvent);

    EXPECT_EQ(fake::bytesOf(g_stNetworkEvent), Bytes(1530));
}

TEST_F(ProcessState, LockIsSeenByTheProcess)
{
    NW_NetworkSetLock();
    EXPECT_EQ(g_ucNetworkSetFlag, 1);
    EXPECT_EQ(g_ucNetworkDNSSetFlag, 1);

    NW_NetworkSetUnlock();
    EXPECT_EQ(g_ucNetworkSetFlag, 0);
    EXPECT_EQ(g_ucNetworkDNSSetFlag, 1);
}

TEST_F(ProcessState, FlagsOfTheProcessAreSeenByTheLibrary)
{
    platform.setRecord(0x10610006, Bytes{0});
    EXPECT_EQ(NW_NetworkIsLock(), 0U);

    g_uiRestartDelay = 1;
    EXPECT_EQ(NW_NetworkIsLock(), 1U);

    g_uiRestartDelay = 0;
    g_ucNetworkSetFlag = 1;
    EXPECT_EQ(NW_NetworkIsLock(), 1U);

    g_ucNetworkSetFlag = 0;
    EXPECT_EQ(NW_NetworkIsLock(), 0U);
}

TEST_F(ProcessState, HeartbeatIsNotSet)
{
    EXPECT_EQ(BMC_GetHeartbeatTimeOut(), 0xFFFFFFFFU);
    EXPECT_EQ(BMC_GetHeartbeatMsgCnt(), 0U);
}

TEST_F(ProcessState, HeartbeatSettingsAreKeptAsTheyAre)
{
    for (const std::uint32_t value : {1U, 0U, 0x80000000U, 0xFFFFFFFFU, 30U}) {
        BMC_SetHeartbeatTimeOut(value);
        BMC_SetHeartbeatMsgCnt(~value);

        EXPECT_EQ(BMC_GetHeartbeatTimeOut(), value);
        EXPECT_EQ(BMC_GetHeartbeatMsgCnt(), ~value);
    }
    EXPECT_TRUE(platform.calls().empty());
}

} // namespace
