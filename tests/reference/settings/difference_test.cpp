// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/difference.hpp"

#include <gtest/gtest.h>

#include "samples.hpp"

namespace bmc::settings {

TEST(Differences, ThereAreNoneBetweenEqualConfigurations)
{
    EXPECT_TRUE(differences(sampleConfiguration(), sampleConfiguration()).empty());
}

TEST(Differences, TellEachSettingAndPortBeforeAndAfter)
{
    const Configuration from = sampleConfiguration();
    Configuration to = from;
    to.lan.astPort[1].ucLanEnable = 1;
    to.an.astPort[0].aucAnReserved[0] = 1; /* what the driver had is set from now on */
    to.state.ucIfcState = 1;

    std::vector<std::string> told;
    for (const Difference &each : differences(from, to)) {
        told.push_back(placeOf(*each.setting, each.port) + ": " +
                       textOf(*each.setting, each.before) + " " +
                       textOf(*each.setting, each.after));
    }
    EXPECT_EQ(told, (std::vector<std::string>{
                        "mode: separate active-standby", "lan.shared.lan: off on",
                        "an.dedicated.auto: none on", "an.dedicated.duplex: none full",
                        "an.dedicated.speed: none 1000"}));
}

} // namespace bmc::settings
