// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/log.hpp"

#include "support.hpp"

namespace {

using bmc::Level;
using bmc::test::Environment;
using bmc::test::stderrOf;

TEST(Log, NamesProgramModuleAndTheCallersLine)
{
    constexpr bmc::Log log{52, "program"};
    const Environment level("BMC_LOG_LEVEL", "6");
    const std::string line = std::to_string(__LINE__ + 1);
    const std::string text = stderrOf([&] { log(Level::error, "100%s"); });
    EXPECT_EQ("<4>program:" + line + " [52/0] 100%s\n", text);
    EXPECT_EQ("<6>program:1 [52/0] text\n", stderrOf([&] { log(Level::information, "text", 1); }));
    EXPECT_EQ("", stderrOf([&] { log(Level::debug, "text"); }));
}

} // namespace
