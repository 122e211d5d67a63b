// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/configuration.hpp"

#include <gtest/gtest.h>

#include "samples.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

struct Named {
    std::string_view text;
    unsigned port;
};

constexpr Named named[] = {
    {"dedicated", 0},
    {"eth0", 0},
    {"0", 0},
    {"shared", 1},
    {"eth1", 1},
    {"1", 1},
    {"bond", 2},
    {"2", 2},
    {"bond0", 2},
    {"", NW_PORT_COUNT},
    {"3", NW_PORT_COUNT},
    {"eth", NW_PORT_COUNT},
    {"00", NW_PORT_COUNT},
    {"channel:1", 0},
    {"channel:8", 1},
    {"channel:0", NW_PORT_COUNT},
    {"channel:", NW_PORT_COUNT},
    {"channel:264", NW_PORT_COUNT},
    {"channel:8x", NW_PORT_COUNT},
};

TEST(Configuration, FindsAPortByRoleNameAndIndex)
{
    const Configuration sample = sampleConfiguration();
    for (const Named &row : named) {
        EXPECT_EQ(findPort(sample.state, row.text), row.port) << row.text;
    }
}

TEST(Configuration, AChannelIsThatOfAPortServed)
{
    Configuration sample = sampleConfiguration();
    sample.state.ucIfcState = NW_IFC_STATE_ADAPTIVE;
    EXPECT_EQ(findPort(sample.state, "channel:1"), 2U);
    EXPECT_EQ(findPort(sample.state, "channel:8"), NW_PORT_COUNT);
    EXPECT_EQ(findPort({}, "channel:0"), NW_PORT_COUNT);
}

TEST(Configuration, ARoleCountsBeforeAnInterfaceOfThatName)
{
    Configuration sample = sampleConfiguration();
    std::string_view("shared\0", 7).copy(sample.state.acIfcName[2], NW_IFC_NAME_SIZE);
    EXPECT_EQ(findPort(sample.state, "shared"), 1U);
}

TEST(Configuration, NamesAPortWithItsRole)
{
    const Configuration sample = sampleConfiguration();
    EXPECT_EQ(titleOf(sample.state, 0), "eth0, dedicated port");
    EXPECT_EQ(titleOf(sample.state, 1), "eth1, shared port");
    EXPECT_EQ(titleOf(sample.state, 2), "bond0, bond");
}

TEST(Configuration, ServesThePortsOfItsModeThatAreOnTheBoard)
{
    Configuration sample = sampleConfiguration();
    sample.state.aucPortPresent[1] = 0;
    EXPECT_TRUE(isServed(sample.state, 0));
    EXPECT_FALSE(isServed(sample.state, 1));
    EXPECT_FALSE(isServed(sample.state, 2));
    sample.state.ucIfcState = NW_IFC_STATE_ADAPTIVE;
    EXPECT_FALSE(isServed(sample.state, 0));
    EXPECT_TRUE(isServed(sample.state, 2));
}

TEST(Configuration, VisitsEachRecordOnce)
{
    std::size_t bytes = 0;
    forEachRecord([&](const RecordName &, auto member) {
        bytes += sizeof(std::declval<Configuration>().*member);
    });
    EXPECT_EQ(bytes, sizeof(Configuration));
}

TEST(ManagerBytes, AreAtTheirDocumentedOffsets)
{
    NW_LAN_CFG_PORT_S port{};
    auto *bytes = reinterpret_cast<std::uint8_t *>(&port);
    for (unsigned offset = 0; offset < sizeof(port); ++offset) {
        bytes[offset] = static_cast<std::uint8_t>(offset);
    }
    const auto low = [](unsigned offset) { return static_cast<std::uint8_t>(offset); };
    EXPECT_EQ(arpOf(port).control, low(787));
    EXPECT_EQ(arpOf(port).interval, low(788));
    EXPECT_EQ(arpOf(port).suspend, low(789));
    EXPECT_EQ(arpOf(port).isResumed, low(790));
    EXPECT_EQ(vlanOf(port).isEnabled, low(780));
    EXPECT_EQ(vlanOf(port).priority, low(785));
    EXPECT_EQ(headerBytesAt + offsetof(HeaderBytes, trafficClass), 779U);
}

TEST(ManagerBytes, ASuspensionHasNoEffectWhileItIsResumed)
{
    NW_LAN_CFG_PORT_S port{};
    putArp(port, {.control = arpAll, .interval = 0, .suspend = arpResponses, .isResumed = 0});
    EXPECT_EQ(suspendedArp(port), arpResponses);
    putArp(port, {.control = arpAll, .interval = 0, .suspend = arpResponses, .isResumed = 1});
    EXPECT_EQ(suspendedArp(port), 0);
}

} // namespace bmc::settings
