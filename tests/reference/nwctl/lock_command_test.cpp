// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* nwctl lock status on the platform's own database and files. */
#include "local_system.hpp"

#include <filesystem>
#include <fstream>

#include "network_mng/event.h"
#include "network_mng/store.h"

namespace local_test {

class Lock : public LocalTest {
protected:
    static void setStatus(std::uint8_t inProgress)
    {
        ASSERT_EQ(NW_LMDB_Put_NetStatus(inProgress), NW_OK);
    }

    static void expectStatus(int status, const json &reasons)
    {
        const auto result = nwctl("lock status --json");
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(json::parse(result.output),
                  (json{{"locked", status != 0}, {"reasons", reasons}}));
        EXPECT_EQ(nwctl("lock status").status, status);
    }
};

TEST_F(Lock, IsFreeWithoutAReason)
{
    setStatus(0);

    expectStatus(0, json::array());
}

TEST_F(Lock, IsHeldWhileAChangeIsInProgress)
{
    setStatus(1);

    expectStatus(3, {"set-in-progress"});
}

TEST_F(Lock, IsHeldWhileTheRestartFlagFileIsThere)
{
    setStatus(0);
    std::filesystem::create_directory("/tmp/network");
    expectStatus(0, json::array());
    std::ofstream(NW_RESTART_FLAG_FILE);

    expectStatus(3, {"restart-flag-file"});
}

TEST_F(Lock, IsHeldWhileTheStatusCannotBeRead)
{
    const auto result = e2e::run("mkdir -p /run/empty && BMC_STATE_DIR=/run/empty " NW_BINARY_DIR
                                 "/nwctl --json lock status");

    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(json::parse(result.output),
              (json{{"locked", true}, {"reasons", {"status-unreadable"}}}));
}

} // namespace local_test
