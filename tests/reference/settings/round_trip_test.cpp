// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A configuration's document gives the configuration again, on the machine and on another one. */
#include <cstring>

#include <gtest/gtest.h>

#include "random_configuration.hpp"
#include "samples.hpp"
#include "settings/difference.hpp"
#include "settings/document.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

constexpr unsigned rounds = ROUNDS;

bool isSame(const Configuration &one, const Configuration &other)
{
    return std::memcmp(&one, &other, sizeof(one)) == 0;
}

/* What the configuration would be on the machine of another. */
Configuration on(const Configuration &machine, Configuration configuration)
{
    const bool isSwitched = isSwitchedOver(machine.state) != isSwitchedOver(configuration.state);
    NW_IFC_STATE_DB_INFO_S state = machine.state;
    state.ucIfcState = configuration.state.ucIfcState;
    state.ucIfcValue1 = configuration.state.ucIfcValue1;
    if (isSwitched) {
        std::swap(state.acIfcName[0], state.acIfcName[1]);
    }
    configuration.state = state;
    return configuration;
}

std::string told(const Configuration &from, const Configuration &to)
{
    std::string text;
    for (const Difference &each : differences(from, to)) {
        text += placeOf(*each.setting, each.port) + ": " + each.before.dump() + " " +
                each.after.dump() + "\n";
    }
    return text;
}

} // namespace

TEST(RoundTrip, AFirstConfigurationIsTheOneThatWasExported)
{
    std::mt19937 chance(1);
    for (unsigned round = 0; round < rounds; ++round) {
        const Configuration wanted = randomConfiguration(chance);
        const std::string document = documentOf(wanted).dump();
        const Configuration found = firstConfiguration(document, noWireless);
        ASSERT_TRUE(isSame(found, wanted)) << document << "\n" << told(wanted, found);
    }
}

TEST(RoundTrip, AnotherMachineComesToHaveTheSameSettings)
{
    std::mt19937 chance(2);
    for (unsigned round = 0; round < rounds; ++round) {
        const Configuration wanted = randomConfiguration(chance);
        const Configuration present = randomConfiguration(chance);
        const std::string document = documentOf(wanted).dump(2);
        const Reading reading = readDocument(document, present);
        const Configuration found = edited(present, reading.change, noWireless);
        ASSERT_TRUE(isSame(found, on(present, wanted))) << document << "\n" << told(wanted, found);
        ASSERT_TRUE(differences(wanted, found).empty());
    }
}

TEST(RoundTrip, WhatIsEqualHasNoDifferenceAndTheOtherWayRound)
{
    std::mt19937 chance(3);
    for (unsigned round = 0; round < rounds; ++round) {
        const Configuration one = randomConfiguration(chance);
        Configuration other = randomConfiguration(chance);
        std::memcpy(&other.state.aucChannel, &one.state.aucChannel, sizeof(one.state.aucChannel));
        if (round % 2 == 0) {
            other = one;
        }
        EXPECT_EQ(differences(one, other).empty(), isSame(one, other));
    }
}

/* Whatever a document has become, it is read or refused in words. */
TEST(RoundTrip, ADamagedDocumentIsRefusedInWords)
{
    std::mt19937 chance(4);
    const Configuration present = sampleConfiguration();
    unsigned refused = 0;
    for (unsigned round = 0; round < rounds; ++round) {
        std::string document = documentOf(randomConfiguration(chance)).dump();
        for (unsigned hit = chance() % 4 + 1; hit > 0; --hit) {
            document[chance() % document.size()] = "\"{}[],:0-x9ef\0 "[chance() % 15];
        }
        try {
            edited(present, readDocument(document, present).change, noWireless);
        } catch (const DocumentError &error) {
            refused += error.place().empty() ? 0U : 1U;
        } catch (const Refusal &refusal) {
            refused += refusal.code() == NW_OK ? 0U : 1U;
        }
    }
    EXPECT_GT(refused, rounds / 2);
}

} // namespace bmc::settings
