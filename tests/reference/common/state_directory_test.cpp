// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/state_directory.hpp"

#include "support.hpp"

namespace {

using bmc::test::Environment;

TEST(StateDirectory, IsWhatTheEnvironmentSays)
{
    for (const char *unset : {static_cast<const char *>(nullptr), ""}) {
        const Environment variable("BMC_STATE_DIR", unset);
        EXPECT_EQ("/var/lib/bmc", bmc::stateDirectory());
        EXPECT_EQ(nullptr, bmc::environmentOr("BMC_STATE_DIR", nullptr));
    }
    const Environment variable("BMC_STATE_DIR", "/somewhere/else");
    EXPECT_EQ("/somewhere/else", bmc::stateDirectory());
}

} // namespace
