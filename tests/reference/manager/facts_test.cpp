// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>

#include "manager/engine/facts.hpp"
#include "worlds.hpp"

namespace nwtest {

namespace {

using bmc::manager::noteInterfaces;

const Item linkLocal = addressOn("eth1", "fe80::7", 64);

/* Port 1 on an interface whose MAC address ends so. */
Actual portWith(std::uint8_t last)
{
    Actual actual;
    actual.links["eth1"] = {.index = 4, .mac = {2, 0, 0, 0, 0, last}};
    return actual;
}

Configuration noted(const Actual &actual, Configuration configuration)
{
    std::ranges::copy("eth1", configuration.state.acIfcName[1]);
    noteInterfaces(configuration, actual);
    return configuration;
}

bool hasLinkLocal(const Configuration &configuration)
{
    return std::ranges::equal(configuration.lan.astPort[1].stLinkLocal.aucAddr,
                              linkLocal.address.bytes);
}

} // namespace

TEST(Facts, LinkLocalAddressStaysWhileTheLinkIsDown)
{
    Actual up = portWith(1);
    up.items.insert(linkLocal);
    const Configuration served = noted(up, {});
    EXPECT_TRUE(hasLinkLocal(served));
    EXPECT_TRUE(hasLinkLocal(noted(portWith(1), served)));
}

TEST(Facts, LinkLocalAddressOfAnotherInterfaceGoes)
{
    Actual up = portWith(1);
    up.items.insert(linkLocal);
    EXPECT_FALSE(hasLinkLocal(noted(portWith(2), noted(up, {}))));
}

} // namespace nwtest
