// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A message bus that takes connections and says nothing, as one that is stopped or overrun. */
#include <csignal>
#include <fstream>

#include <gmock/gmock.h>

#include "system.hpp"

namespace nwctl {
namespace {

using e2e::nwctlLine;
using e2e::Outcome;
using ::testing::HasSubstr;

class SilentBus : public e2e::System {
protected:
    void SetUp() override
    {
        System::SetUp();
        bus_ = std::stoi(e2e::shell("cat /run/dbus/pid"));
        kill(bus_, SIGSTOP);
    }

    void TearDown() override
    {
        kill(bus_, SIGCONT);
    }

private:
    pid_t bus_ = -1;
};

/* Outcomes are waited for with the test's patience, which is much shorter than that of a program
 * that lets itself be connected without asking first whether anybody is there. */
TEST_F(SilentBus, IsGivenUpByEveryRequest)
{
    std::ofstream("/run/change.json") << R"({"lan": {"eth1": {"vlan": 30}}})";
    e2e::Process set(support::inShell("exec " + nwctlLine("lan set eth1 --vlan 30")));
    e2e::Process apply(support::inShell("exec " + nwctlLine("apply /run/change.json")));

    const Outcome ofSet = set.outcome();
    const Outcome ofApply = apply.outcome();

    EXPECT_EQ(ofSet.status, 5);
    EXPECT_THAT(ofSet.errors, HasSubstr("no answer from the network manager"));
    EXPECT_EQ(ofApply.status, 5);
    EXPECT_THAT(ofApply.errors, HasSubstr("the message bus cannot be reached (Connection timed "
                                          "out); nothing has changed"));
    EXPECT_EQ(ofApply.output, "");
}

} // namespace
} // namespace nwctl
