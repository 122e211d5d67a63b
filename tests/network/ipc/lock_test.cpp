// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network lock: its conditions in their order and what each asks of the platform. */
#include <map>

#include "bmc_platform.h"
#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

/* The platform's own answer for a path, where it is neither 0 nor 1. */
std::map<std::string, int> pathAnswers;

} // namespace

/* The names are the linker's. */
extern "C" {
int __real_BMC_CheckDirVaildStatus(const char *pcPath);
int __wrap_BMC_CheckDirVaildStatus(const char *pcPath);

int __wrap_BMC_CheckDirVaildStatus(const char *pcPath)
{
    const int present = __real_BMC_CheckDirVaildStatus(pcPath);
    const auto found = pathAnswers.find(pcPath);
    return found == pathAnswers.end() ? present : found->second;
}
}

namespace {

using fake::Bytes;
using fake::LineMatcher;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::uint32_t statusKey = 0x10610006;
const std::string flagFile = "/tmp/network/NetworkRestartFlag";

const LineMatcher isLocked = fake::isDebugLine("Network is locked.");
const std::vector<std::string> reading{"DB_Open", "DB_GetCurrentDb", "DB_Get"};

std::vector<std::string> readingThen(const std::vector<std::string> &more)
{
    std::vector<std::string> calls = reading;
    calls.insert(calls.end(), more.begin(), more.end());
    return calls;
}

class Lock : public fake::FakePlatformTest {
protected:
    Lock()
    {
        setState(0, 0, 0);
        pathAnswers.clear();
    }
    ~Lock() override
    {
        setState(0, 0, 0);
    }

    void setState(std::uint8_t setFlag, std::uint32_t restartDelay, std::uint8_t status)
    {
        g_ucNetworkSetFlag = setFlag;
        g_ucNetworkDNSSetFlag = 0;
        g_uiRestartDelay = restartDelay;
        platform.setRecord(statusKey, Bytes{status});
    }
};

struct State {
    std::string name;
    std::uint8_t setFlag;
    std::uint32_t restartDelay;
    std::uint8_t status;
    int path; /* the platform's answer for the flag file */
    bool locked;
    bool pathAsked;
};

/* clang-format off */
const State states[] = {
    /*                  set    delay       status path locked asked */
    {"Free",              0,          0,    0,     0,  false, true},
    {"Set",               1,          0,    0,     0,  true,  false},
    {"Set2",              2,          0,    0,     0,  false, true},
    {"Set255",          255,          0,    0,     0,  false, true},
    {"Delay",             0,          1,    0,     0,  true,  false},
    {"Delay2",            0,          2,    0,     0,  false, true},
    {"Delay0x101",        0,      0x101,    0,     0,  false, true},
    {"Delay0x10001",      0,    0x10001,    0,     0,  false, true},
    {"DelayAll",          0, 0xFFFFFFFF,    0,     0,  false, true},
    {"Status",            0,          0,    1,     0,  true,  false},
    {"Status2",           0,          0,    2,     0,  false, true},
    {"Status255",         0,          0,  255,     0,  false, true},
    {"Path",              0,          0,    0,     1,  true,  true},
    {"Path2",             0,          0,    0,     2,  false, true},
    {"PathNegative",      0,          0,    0,    -1,  false, true},
    {"PathBehindOthers",  2,          3,    4,     1,  true,  true},
    {"NoneIsOne",       255,          2,    3,    -1,  false, true},
    {"SetFirst",          1,          1,    1,     1,  true,  false},
    {"DelayBeforeRest",   2,          1,    1,     1,  true,  false},
    {"StatusBeforePath",  2,          2,    1,     1,  true,  false},
};
/* clang-format on */

class LockState : public Lock, public testing::WithParamInterface<State> {
protected:
    std::vector<std::string> expectedCalls() const
    {
        std::vector<std::string> more;
        if (GetParam().pathAsked) {
            more.push_back("BMC_CheckDirVaildStatus");
        }
        if (GetParam().locked) {
            more.push_back("BMC_DiagLogOut");
        }
        return readingThen(more);
    }
};

TEST_P(LockState, DecidesInOrder)
{
    const State &state = GetParam();
    setState(state.setFlag, state.restartDelay, state.status);
    pathAnswers[flagFile] = state.path;

    EXPECT_EQ(NW_NetworkIsLock(), state.locked ? 1U : 0U);

    EXPECT_EQ(platform.callNames(), expectedCalls());
    EXPECT_THAT(lines(), ElementsAreArray(state.locked ? std::vector{isLocked}
                                                       : std::vector<LineMatcher>{}));
    for (const fake::Call &call : platform.callsTo("BMC_CheckDirVaildStatus")) {
        EXPECT_EQ(call.text, flagFile);
    }
}

TEST_P(LockState, IsOnlyLookedAt)
{
    const State &state = GetParam();
    setState(state.setFlag, state.restartDelay, state.status);
    g_ucNetworkDNSSetFlag = 9;

    NW_NetworkIsLock();

    EXPECT_EQ(g_ucNetworkSetFlag, state.setFlag);
    EXPECT_EQ(g_ucNetworkDNSSetFlag, 9);
    EXPECT_EQ(g_uiRestartDelay, state.restartDelay);
    EXPECT_EQ(platform.record(statusKey), Bytes{state.status});
}

INSTANTIATE_TEST_SUITE_P(States, LockState, testing::ValuesIn(states), fake::RowName());

TEST_F(Lock, AsksForTheFlagFileByItsPath)
{
    platform.setPathExists(flagFile);

    EXPECT_EQ(NW_NetworkIsLock(), 1U);

    EXPECT_THAT(lines(), ElementsAre(isLocked));
    EXPECT_EQ(platform.calls()[3].text, flagFile);
}

TEST_F(Lock, ReadsTheStatusRecordIntoAZeroedOne)
{
    NW_NetworkIsLock();

    const fake::Call &get = platform.calls()[2];
    EXPECT_EQ(get.key, statusKey);
    EXPECT_EQ(get.size, 1U);
    EXPECT_EQ(get.data, Bytes{0});
}

struct ReadFailure {
    std::string name;
    void (*script)(fake::Platform &);
    LineMatcher line;
    std::vector<std::string> calls; /* before the two lines */
};

/* clang-format off */
const ReadFailure readFailures[] = {
    {"NoEnvironment", [](fake::Platform &p) { p.failOpen(); },
     fake::isErrorLine("Failed to open lmdb database."), {"DB_Open"}},
    {"NoDatabase", [](fake::Platform &p) { p.failCurrentDb(); },
     fake::isErrorLine("Failed to create LMDB environment."), {"DB_Open", "DB_GetCurrentDb"}},
    {"ReadFails", [](fake::Platform &p) { p.failGet(statusKey, -5); },
     fake::isErrorLine("Get net status  info failed, Ret:%d", -5), reading},
    {"ReadFailsWithAnIdleRecord", [](fake::Platform &p) { p.failGet(statusKey, 30, {0}); },
     fake::isErrorLine("Get net status  info failed, Ret:%d", 30), reading},
};
/* clang-format on */

class UnreadableStatus : public Lock, public testing::WithParamInterface<ReadFailure> {};

TEST_P(UnreadableStatus, CountsAsLockedWhateverTheFlags)
{
    std::vector<std::string> calls = GetParam().calls;
    calls.insert(calls.end(), 2, "BMC_DiagLogOut");

    for (const int flag : {0, 1}) {
        setState(static_cast<std::uint8_t>(flag), 0, 0);
        GetParam().script(platform);
        platform.clearCalls();

        EXPECT_EQ(NW_NetworkIsLock(), 1U);

        EXPECT_EQ(platform.callNames(), calls);
        EXPECT_THAT(lines(), ElementsAre(GetParam().line,
                                         fake::isErrorLine("Get netstatus from lmdb failed.")));
    }
}

INSTANTIATE_TEST_SUITE_P(Failures, UnreadableStatus, testing::ValuesIn(readFailures),
                         fake::RowName());

TEST_F(Lock, IsSetByTheProcessAndReleased)
{
    EXPECT_EQ(NW_NetworkSetLock(), 1U);
    EXPECT_EQ(g_ucNetworkSetFlag, 1);
    EXPECT_EQ(g_ucNetworkDNSSetFlag, 1);
    EXPECT_THAT(platform.calls(), IsEmpty());
    EXPECT_EQ(NW_NetworkIsLock(), 1U);

    platform.clearCalls();
    NW_NetworkSetUnlock();
    EXPECT_EQ(g_ucNetworkSetFlag, 0);
    EXPECT_EQ(g_ucNetworkDNSSetFlag, 1);
    EXPECT_THAT(platform.calls(), IsEmpty());
    EXPECT_EQ(NW_NetworkIsLock(), 0U);
}

TEST_F(Lock, LeavesTheRestartDelayAlone)
{
    g_uiRestartDelay = 7;

    NW_NetworkSetLock();
    NW_NetworkSetLock();
    NW_NetworkSetUnlock();

    EXPECT_EQ(g_uiRestartDelay, 7U);
    EXPECT_EQ(g_ucNetworkSetFlag, 0);
}

} // namespace
