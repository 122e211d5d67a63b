// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 2: LLDP, with a stand-in for the agent's command line client. */
#include <filesystem>
#include <fstream>

#include "requests.hpp"

namespace nwtest {

namespace {

constexpr std::uint8_t command = NW_CMD_SET_LLDP;
constexpr const char *callsFile = "/run/lldpcli.calls";

NW_LLDP_SET_S lldpSet(std::uint8_t bits, std::uint8_t enable, std::uint8_t mode)
{
    return {0, bits, enable, mode, 0};
}

class Lldp : public ManagerTest {
protected:
    void SetUp() override
    {
        former_ = std::getenv("PATH");
        setenv("PATH", ("/run/bin:" + former_).c_str(), 1);
        install("echo \"$@\" >>" + std::string(callsFile));
        bmc::manager::Store().put(bmc::manager::lldpRecord, {});
        ManagerTest::SetUp();
        std::filesystem::remove(callsFile);
    }

    void TearDown() override
    {
        setenv("PATH", former_.c_str(), 1);
    }

    static void install(const std::string &script)
    {
        std::filesystem::create_directories("/run/bin");
        std::ofstream("/run/bin/lldpcli") << "#!/bin/sh\n" << script << '\n';
        shell("chmod +x /run/bin/lldpcli");
    }

    static std::string status(const std::string &word)
    {
        return "configure ports eth0,eth1 lldp status " + word + "\n";
    }

    std::string former_;
};

} // namespace

TEST_F(Lldp, SettingsReachAgentAndRecord)
{
    const std::pair<std::uint8_t, const char *> modes[] = {
        {1, "tx-only"}, {2, "rx-only"}, {3, "rx-and-tx"}};
    for (const auto &[mode, word] : modes) {
        std::filesystem::remove(callsFile);
        expectAnswer(requestOf(command, lldpSet(3, 1, mode)), NW_OK);
        EXPECT_EQ(fileText(callsFile), status(word));
        EXPECT_EQ(stored().lldp.ucLldpEnable, 1);
        EXPECT_EQ(stored().lldp.ucLldpWorkMode, mode);
    }

    std::filesystem::remove(callsFile);
    expectAnswer(requestOf(command, lldpSet(1, 0, 77)), NW_OK);
    EXPECT_EQ(fileText(callsFile), status("disabled"));
    EXPECT_EQ(stored().lldp.ucLldpWorkMode, 3);
}

TEST_F(Lldp, EachRefusalHasItsCode)
{
    expectRefused(requestOf(command, lldpSet(4, 0, 0)), 0x1E000021);
    expectRefused(requestOf(command, lldpSet(1, 2, 0)), 0x1E00002C);
    expectRefused(requestOf(command, lldpSet(2, 0, 0)), 0x1E00002C);
    expectRefused(requestOf(command, lldpSet(3, 1, 4)), 0x1E00002C);
    EXPECT_FALSE(std::filesystem::exists(callsFile));
}

/* The record is kept, with a line, whatever becomes of the agent. */
TEST_F(Lldp, AgentThatFailsOrHangs)
{
    install("exit 3");
    expectAnswer(requestOf(command, lldpSet(3, 1, 1)), NW_OK);
    EXPECT_EQ(stored().lldp.ucLldpWorkMode, 1);
    EXPECT_NE(manager_->errorText().find("lldpcli ends with status 3"), std::string::npos);

    install("exec sleep 60");
    expectAnswer(requestOf(command, lldpSet(3, 1, 2)), NW_OK);
    EXPECT_EQ(stored().lldp.ucLldpWorkMode, 2);
    EXPECT_NE(manager_->errorText().find("lldpcli ends with status 137"), std::string::npos);
}

TEST_F(Lldp, NoAgent)
{
    stopManager();
    std::filesystem::remove("/run/bin/lldpcli");
    setenv("PATH", "/run/bin", 1);
    startManager();
    setenv("PATH", former_.c_str(), 1);

    expectAnswer(requestOf(command, lldpSet(3, 1, 1)), NW_OK);
    EXPECT_EQ(stored().lldp.ucLldpEnable, 1);
    EXPECT_NE(manager_->errorText().find("there is no lldpcli"), std::string::npos);
}

TEST_F(Lldp, StartTellsTheAgent)
{
    expectAnswer(requestOf(command, lldpSet(3, 1, 2)), NW_OK);
    stopManager();
    std::filesystem::remove(callsFile);
    startManager();
    EXPECT_EQ(fileText(callsFile), status("rx-only"));
}

} // namespace nwtest
