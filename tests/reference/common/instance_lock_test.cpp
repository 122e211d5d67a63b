// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/instance_lock.hpp"

#include <chrono>
#include <csignal>
#include <thread>

#include <sys/mount.h>
#include <unistd.h>

#include "support.hpp"

namespace {

using namespace bmc::test;
using bmc::InstanceLock;
using namespace std::chrono_literals;

class Lock : public StateTest {};

TEST_F(Lock, KeepsASecondProcessOut)
{
    const InstanceLock lock("program");
    inChild([] {
        EXPECT_THROW(const InstanceLock second("program"), std::runtime_error);
        const InstanceLock other("other");
    });
    EXPECT_THROW(const InstanceLock second("program"), std::runtime_error);
}

TEST_F(Lock, EndsWithItsOwner)
{
    {
        const InstanceLock lock("program");
    }
    Child killed([] {
        const InstanceLock lock("program");
        raise(SIGKILL);
    });
    killed.wait();
    EXPECT_NO_THROW(const InstanceLock lock("program"));
}

/* What a process forks shares its lock. */
TEST_F(Lock, OutlastsTheLastMomentsOfAKilledOwnersChild)
{
    Child killed([] {
        const InstanceLock lock("program");
        if (fork() == 0) {
            std::this_thread::sleep_for(200ms);
            _exit(0);
        }
        raise(SIGKILL);
    });
    killed.wait();
    EXPECT_NO_THROW(const InstanceLock lock("program"));
}

TEST_F(Lock, MakesTheStateDirectory)
{
    const Environment deeper("BMC_STATE_DIR", (state() / "a/b").string());
    const InstanceLock lock("program");
    EXPECT_TRUE(std::filesystem::exists(state() / "a/b/program.lock"));
}

TEST_F(Lock, StandsInAReadOnlyDirectoryThatHasItsFile)
{
    {
        const InstanceLock lock("program");
    }
    ASSERT_EQ(0, mount(state().c_str(), state().c_str(), nullptr, MS_BIND, nullptr));
    ASSERT_EQ(0,
              mount(nullptr, state().c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
    {
        const InstanceLock lock("program");
        EXPECT_THROW(const InstanceLock second("program"), std::runtime_error);
        EXPECT_NO_THROW(const InstanceLock none("other"));
    }
    umount(state().c_str());
}

} // namespace
