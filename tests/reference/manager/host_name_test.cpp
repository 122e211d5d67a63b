// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 0: host name and BMC name. */
#include <filesystem>

#include "network_mng/discovery.h"
#include "requests.hpp"

namespace nwtest {

namespace {

constexpr std::uint8_t command = NW_CMD_SET_HOSTNAME;

struct Row {
    const char *name;
    std::uint8_t bits;
    std::uint8_t mode;
    std::string hostName;
    std::string bmcName;
    std::uint32_t result;
};

const Row rows[] = {
    {"UnknownBit", 8, 0, "bmc1", "", 0x1E000021},
    {"Mode2", 1, 2, "", "", 0x1E000019},
    {"NameInAutomaticMode", 3, 1, "bmc1", "", 0x1E000019},
    {"Empty", 2, 0, "", "", 0x1E000018},
    {"Hyphen", 2, 0, "-bmc", "", 0x1E000018},
    {"Dot", 2, 0, "bmc.example", "", 0x1E000018},
    {"SixtyFour", 2, 0, std::string(64, 'a'), "", 0x1E000018},
    {"InnerZero", 2, 0, std::string("a\0b", 3), "", 0x1E000018},
    {"BmcNameEmpty", 4, 0, "", "", 0x1E000018},
    {"BmcNameBlank", 4, 0, "", "a b", 0x1E000018},
    {"BmcNameUnterminated", 4, 0, "", std::string(64, 'b'), 0x1E000018},
    {"GoodHostBadBmcName", 6, 0, "good", "bad name", 0x1E000018},
};

class HostName : public ManagerTest {
protected:
    void SetUp() override
    {
        shell("hostname bmc; rm -rf /conf/network");
        bmc::manager::Store().put(bmc::manager::hostNameRecord, {});
        ManagerTest::SetUp();
    }
};

} // namespace

TEST_F(HostName, NamesReachKernelFileAndRecord)
{
    expectAnswer(requestOf(command, hostNameSet(7, 0, "bmc-one", "rack7-a-long-name")), NW_OK);
    EXPECT_EQ(shell("hostname"), "bmc-one\n");
    EXPECT_EQ(fileText(NW_BMC_NAME_FILE), "rack7-a-long-name\n");
    EXPECT_STREQ(stored().hostName.szBmcHostName, "bmc-one");
    EXPECT_STREQ(stored().hostName.szBmcName, "rack7-a-long-name");

    /* A shorter name leaves nothing of the longer one, and one name leaves the other. */
    expectAnswer(requestOf(command, hostNameSet(4, 0, "", "r8")), NW_OK);
    EXPECT_EQ(fileText(NW_BMC_NAME_FILE), "r8\n");
    EXPECT_EQ(shell("hostname"), "bmc-one\n");
    EXPECT_STREQ(stored().hostName.szBmcHostName, "bmc-one");

    expectAnswer(requestOf(command, hostNameSet(2, 1, std::string(63, 'x'))), NW_OK);
    EXPECT_EQ(shell("hostname"), std::string(63, 'x') + "\n");
    EXPECT_EQ(stored().hostName.ucHostNameMode, 0);
}

TEST_F(HostName, AutomaticNameComesFromTheMacAddress)
{
    expectAnswer(requestOf(command, hostNameSet(1, 1, "")), NW_OK);
    const std::string wanted = "bmc-" + shell("tr -d ':\n' </sys/class/net/eth0/address");
    EXPECT_EQ(shell("hostname"), wanted + "\n");
    EXPECT_STREQ(stored().hostName.szBmcHostName, wanted.c_str());
    EXPECT_EQ(stored().hostName.ucHostNameMode, 1);

    expectRefused(requestOf(command, hostNameSet(2, 0, "bmc2")), 0x1E000019);
    expectAnswer(requestOf(command, hostNameSet(3, 0, "bmc2")), NW_OK);
    EXPECT_EQ(shell("hostname"), "bmc2\n");
}

TEST_F(HostName, EachRefusalHasItsCode)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        expectRefused(
            requestOf(command, hostNameSet(row.bits, row.mode, row.hostName, row.bmcName)),
            row.result);
    }
    auto longer = hostNameSet(2, 0, "abc");
    longer.ucLength = 255;
    expectRefused(requestOf(command, longer), 0x1E000018);
}

TEST_F(HostName, NothingSelectedChangesNothing)
{
    const std::string before = everything();
    expectAnswer(requestOf(command, hostNameSet(0, 9, "-", " ")), NW_OK);
    EXPECT_EQ(before, everything());
}

/* The kernel's name is set before the file is found to be out of reach. */
TEST_F(HostName, FileThatCannotBeMadeUndoesTheName)
{
    std::filesystem::remove_all("/conf/network");
    shell("touch /conf/network");
    expectRefused(requestOf(command, hostNameSet(6, 0, "bmc-two", "rack8")), 0x1E000016);
    EXPECT_EQ(shell("hostname"), "bmc\n");
    EXPECT_NE(manager_->errorText().find("refused: set host name"), std::string::npos);
    shell("rm /conf/network");

    std::filesystem::create_directories("/conf/network/hostname");
    expectRefused(requestOf(command, hostNameSet(6, 0, "bmc-two", "rack8")), 0x1E000016);
}

TEST_F(HostName, StartSetsTheNameAgain)
{
    expectAnswer(requestOf(command, hostNameSet(6, 0, "bmc-three", "rack9")), NW_OK);
    stopManager();
    shell("hostname other; rm -r /conf/network");
    startManager();
    EXPECT_EQ(shell("hostname"), "bmc-three\n");
    EXPECT_EQ(fileText(NW_BMC_NAME_FILE), "rack9\n");
}

} // namespace nwtest
