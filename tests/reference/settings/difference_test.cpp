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

TEST(Differences, AreToldToProgramsByPlaceAndInterface)
{
    const Configuration from = sampleConfiguration();
    Configuration to = from;
    to.lan.astPort[1].ucLanEnable = 1;
    to.state.ucIfcState = 1;

    EXPECT_EQ(changesOf(differences(from, to), from.state), Json::parse(R"([
        {"setting": "mode", "port": null, "before": "separate", "after": "active-standby"},
        {"setting": "lan.shared.lan", "port": "eth1", "before": false, "after": true}])"));
    EXPECT_EQ(changesOf({}, from.state), Json::array());
}

TEST(Places, AreFoundAgain)
{
    for (const Setting &setting : allSettings()) {
        EXPECT_EQ(settingAt(placeOf(setting, 1)), &setting) << placeOf(setting, 1);
    }
    for (const char *unknown : {"", "lan", "lan.", "colour", "lan.shared.colour", "colour.mode"}) {
        EXPECT_EQ(settingAt(unknown), nullptr) << unknown;
    }
}

} // namespace bmc::settings
