// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwctl lock status under each condition that locks, on the fake platform. */
#include "network_mng/event.h"
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::IsEmpty;

class LockStatus : public fake::FakePlatformTest {
protected:
    LockStatus()
    {
        setStatus(0);
    }

    ~LockStatus() override
    {
        g_ucNetworkSetFlag = 0;
        g_uiRestartDelay = 0;
    }

    void setStatus(std::uint8_t inProgress)
    {
        platform.setRecord(NW_KEY_NET_STATUS, NW_NET_STATUS_S{inProgress});
    }

    static void expectLocked(const nlohmann::json &reasons, const std::string &text)
    {
        const auto ran = samples::run({"lock", "status"});
        EXPECT_EQ(ran.status, Exit::refused);
        EXPECT_EQ(ran.out, "locked: " + text + "\n");
        EXPECT_THAT(ran.err, IsEmpty());

        const auto document = samples::run({"lock", "status", "--json"});
        EXPECT_EQ(document.status, Exit::refused);
        EXPECT_EQ(document.json(), (nlohmann::json{{"locked", true}, {"reasons", reasons}}));
    }

    static void expectNotLocked()
    {
        const auto ran = samples::run({"lock", "status"});
        EXPECT_EQ(ran.status, Exit::success);
        EXPECT_EQ(ran.out, "not locked\n");
        EXPECT_EQ(samples::run({"lock", "status", "--json"}).json(),
                  (nlohmann::json{{"locked", false}, {"reasons", nlohmann::json::array()}}));
    }
};

TEST_F(LockStatus, IsFreeWithoutAReason)
{
    expectNotLocked();
}

TEST_F(LockStatus, TellsOfAStatusThatCannotBeRead)
{
    platform.failGet(NW_KEY_NET_STATUS, -5);

    expectLocked({"status-unreadable"}, "the status record cannot be read");
}

TEST_F(LockStatus, TellsOfAChangeOfThisProcess)
{
    g_ucNetworkSetFlag = 1;

    expectLocked({"set-flag"}, "this process changes the network");
}

TEST_F(LockStatus, TellsOfADelayedRestart)
{
    g_uiRestartDelay = 1;

    expectLocked({"restart-delay"}, "a delayed restart is pending");
}

TEST_F(LockStatus, TellsOfAChangeInProgress)
{
    setStatus(1);

    expectLocked({"set-in-progress"}, "a network change is in progress");
}

TEST_F(LockStatus, TellsOfTheRestartFlagFile)
{
    platform.setPathExists(NW_RESTART_FLAG_FILE);

    expectLocked({"restart-flag-file"}, "/tmp/network/NetworkRestartFlag is there");
}

TEST_F(LockStatus, TellsEveryReason)
{
    g_uiRestartDelay = 1;
    setStatus(1);
    platform.setPathExists(NW_RESTART_FLAG_FILE);

    expectLocked({"restart-delay", "set-in-progress", "restart-flag-file"},
                 "a delayed restart is pending, a network change is in progress, "
                 "/tmp/network/NetworkRestartFlag is there");
}

TEST_F(LockStatus, IsFreeForValuesOtherThanOne)
{
    g_ucNetworkSetFlag = 2;
    g_uiRestartDelay = 2;
    setStatus(2);

    expectNotLocked();
}

} // namespace
} // namespace nwctl
