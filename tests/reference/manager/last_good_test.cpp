// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A state directory that cannot be written or read: the machine stays reachable. */
#include <filesystem>
#include <fstream>

#include "manager_system.hpp"

namespace nwtest {

namespace {

/* A directory of state beside the test's own, which reads nothing of it. */
class LastGood : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        stopManager();
        directory_ = "/run/last-good-" + std::to_string(getpid());
        std::filesystem::remove_all(directory_);
        std::filesystem::create_directories(directory_);
        std::ofstream("/run/config.json") << separatePorts;
        ASSERT_EQ(runManager({"--init", "/run/config.json"}, {state()}).status, 0);
        shell("ip address flush dev eth0; ip address flush dev eth1");
    }

    void TearDown() override
    {
        manager_.reset();
        std::filesystem::remove_all(directory_);
    }

    std::string state() const
    {
        return "BMC_STATE_DIR=" + directory_;
    }

    void start()
    {
        manager_.emplace(
            std::vector<std::string>{NWMANAGERD},
            std::vector<std::string>{state(), "BMC_LOG_LEVEL=6", "BMC_LOG_TARGET=stderr"});
        const bool isReady = eventually(
            [this] { return !manager_->isRunning() || call(LanRequest().bytes()).has_value(); });
        ASSERT_TRUE(isReady && manager_->isRunning()) << manager_->errorText();
    }

    void expectLastGood()
    {
        EXPECT_EQ(kernelAddresses("eth0"), std::vector<std::string>{"192.168.10.2/24"});
        EXPECT_NE(manager_->errorText().find("the last good configuration holds"),
                  std::string::npos)
            << manager_->errorText();
    }

    void damage() const
    {
        std::ofstream(directory_ + "/config-db/data.mdb") << std::string(8192, 'x');
    }

    void expectLastGoodReadOnly()
    {
        shell("mount --bind " + directory_ + " " + directory_ + " && mount -o remount,bind,ro " +
              directory_);
        start();
        expectLastGood();
        expectAnswer(hostRequest(), 0x1E000003, 0);
        EXPECT_EQ(kernelAddresses("eth0"), std::vector<std::string>{"192.168.10.2/24"});
        stopManager();
        shell("umount " + directory_);
    }

    static LanRequest hostRequest()
    {
        LanRequest request;
        request.select(0, NW_LAN_BIT_IPV4_ADDR);
        put(request.port(0).aucIpv4Addr, "192.168.10.9");
        return request;
    }

    std::string directory_;
};

} // namespace

TEST_F(LastGood, HoldsInAReadOnlyDirectory)
{
    expectLastGoodReadOnly();
}

TEST_F(LastGood, HoldsWithADamagedDatabaseThatCannotBeMended)
{
    damage();
    expectLastGoodReadOnly();
}

TEST_F(LastGood, WithoutABackupThereIsNothingToApply)
{
    damage();
    std::filesystem::remove(directory_ + "/config-db.backup");
    EXPECT_EQ(runManager({}, {state()}).status, 1);
}

} // namespace nwtest
