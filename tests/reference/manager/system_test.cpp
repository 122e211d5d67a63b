// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The files and names of the system, as they are read. */
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "manager/system/system.hpp"
#include "network_mng/discovery.h"
#include "requests.hpp"

namespace nwtest {

namespace {

using namespace bmc::manager;

class SystemTest : public ManagerTest {
protected:
    void SetUp() override
    {
        shell("rm -rf /conf/network && mkdir -p /conf/network");
    }

    static std::string bmcNameFile()
    {
        Items items;
        System().read(items);
        const Item *name = valueIn(items, Kind::bmcName, "");
        return name != nullptr ? name->text : "unknown";
    }
};

} // namespace

TEST_F(SystemTest, NameFile)
{
    EXPECT_EQ(bmcNameFile(), "");
    shell("echo rack7 >" NW_BMC_NAME_FILE);
    EXPECT_EQ(bmcNameFile(), "rack7\n");
    shell("rm " NW_BMC_NAME_FILE " && mkfifo " NW_BMC_NAME_FILE);
    EXPECT_EQ(bmcNameFile(), "");
}

/* What cannot be read now is not what is empty: it could come back so. */
TEST_F(SystemTest, NameFileThatCannotBeOpenedIsAnError)
{
    shell("echo rack7 >" NW_BMC_NAME_FILE);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_THROW(bmcNameFile(), MachineError);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(bmcNameFile(), "rack7\n");
}

} // namespace nwtest
