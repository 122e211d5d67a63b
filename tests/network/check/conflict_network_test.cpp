// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The duplicate-address probe with the system's arping on a real link. Runs in the sandbox; each
// probe that nobody answers takes the tool about a second.
#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "log_text.hpp"
#include "network_mng/check.h"
#include "peer_host.hpp"

namespace {

class ConflictOnTheWire : public fake::FakePlatformTest {
protected:
    static std::uint32_t probe(const char *interface, const std::string &address)
    {
        return NW_IPV4AddressConflict(interface, support::ipv4(address).data());
    }

    const support::PeerHost peer;
};

TEST_F(ConflictOnTheWire, TakenAddressIsAConflict)
{
    peer.own("10.50.0.7/24");
    EXPECT_EQ(probe("near0", "10.50.0.7"), 1U);
    EXPECT_EQ(support::loggedLines(), support::Lines{});
}

TEST_F(ConflictOnTheWire, FreeAddressIsNone)
{
    peer.own("10.50.0.7/24");
    EXPECT_EQ(probe("near0", "10.50.0.8"), 0U);
    EXPECT_EQ(support::loggedLines(), support::Lines{});
}

TEST_F(ConflictOnTheWire, AddressGivenUpIsFreeAgain)
{
    peer.own("10.50.0.7/24");
    peer.disown();
    EXPECT_EQ(probe("near0", "10.50.0.7"), 0U);
}

TEST_F(ConflictOnTheWire, OwnAddressIsNoConflict)
{
    support::shell("ip address add 10.50.0.9/24 dev near0");
    EXPECT_EQ(probe("near0", "10.50.0.9"), 0U);
}

// The tool's complaint goes to standard error and leaves nothing to read.
TEST_F(ConflictOnTheWire, UnknownInterfaceIsLogged)
{
    EXPECT_EQ(probe("nosuch0", "10.50.0.7"), 0U);
    EXPECT_EQ(support::loggedLines(),
              support::Lines{support::criticalLine(
                  "Error in fread : arping -c 1 -D -f -I nosuch0 10.50.0.7  | tail  -1 | awk "
                  "'{print $2 }'.")});
}

} // namespace
