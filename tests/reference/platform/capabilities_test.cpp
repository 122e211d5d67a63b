// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Capabilities. */
#include <array>
#include <cstdint>

#include "bmc_platform.h"
#include "support.hpp"

namespace {

using bmc::test::Environment;
using bmc::test::StateTest;
using bmc::test::stderrOf;

constexpr const char *sample = R"({
    "SharePort": {"CardSupportNumber": 2, "NIC1Name": "Mezz card", "ChannelIdOffset": 513},
    "NIC": {"KezOemSupport": 0, "Max": 255, "Above": 256, "ShortMax": 65535, "ShortAbove": 65536,
            "Negative": -1, "Fraction": 1.5, "Text": "1", "Truth": true, "Empty": "", "Null": null},
    "Flat": 3})";

class Capabilities : public StateTest {};

TEST_F(Capabilities, AreReadFromTheStateDirectory)
{
    write("capabilities.json", sample);
    std::uint8_t byte = 0xAA;
    std::uint16_t word = 0xAAAA;

    EXPECT_EQ(0, CAP_GetCharCapabilityWithName("SharePort", "CardSupportNumber", &byte));
    EXPECT_EQ(2, byte);
    EXPECT_EQ(0, CAP_GetCharCapabilityWithName("NIC", "KezOemSupport", &byte));
    EXPECT_EQ(0, byte);
    EXPECT_EQ(0, CAP_GetCharCapabilityWithName("NIC", "Max", &byte));
    EXPECT_EQ(255, byte);
    EXPECT_EQ(0, CAP_GetShortCapabilityWithName("SharePort", "ChannelIdOffset", &word));
    EXPECT_EQ(513, word);
    EXPECT_EQ(0, CAP_GetShortCapabilityWithName("NIC", "ShortMax", &word));
    EXPECT_EQ(65535, word);
}

TEST_F(Capabilities, MayStandInAnotherFile)
{
    write("other.json", sample);
    const Environment file("BMC_CAPABILITY_FILE", (state() / "other.json").string());
    std::uint8_t byte = 0;
    EXPECT_EQ(0, CAP_GetCharCapabilityWithName("SharePort", "CardSupportNumber", &byte));
    EXPECT_EQ(2, byte);
}

struct Length {
    const char *name;
    const char *capability;
    std::uint32_t room;
    const char *expected; /* the bytes before the poison */
    std::size_t size;
};

class CommonCapability : public Capabilities, public ::testing::WithParamInterface<Length> {};

TEST_P(CommonCapability, CopiesNoMoreThanThereIsRoom)
{
    write("capabilities.json", sample);
    std::array<char, 16> buffer;
    buffer.fill('#');
    const char *group = std::string_view(GetParam().capability) == "Empty" ? "NIC" : "SharePort";

    EXPECT_EQ(0, CAP_GetCommonCapabilityWithName(group, GetParam().capability, GetParam().room,
                                                 buffer.data()));
    const std::string expected(GetParam().expected, GetParam().size);
    EXPECT_EQ(expected + std::string(buffer.size() - expected.size(), '#'),
              std::string(buffer.begin(), buffer.end()));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, CommonCapability, ::testing::Values(
    Length{"Room",        "NIC1Name", 16, "Mezz card", 10},
    Length{"ExactRoom",   "NIC1Name", 10, "Mezz card", 10},
    Length{"NoTerminator","NIC1Name", 9,  "Mezz card", 9},
    Length{"Cut",         "NIC1Name", 4,  "Mezz", 4},
    Length{"Empty",       "Empty",    16, "", 1}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

enum class Type { character, word, text };

struct Refusal {
    const char *name;
    Type type;
    const char *group;
    const char *capability;
    bool isReported; /* a line at the default level */
};

int readAs(Type type, const char *group, const char *name, void *output)
{
    switch (type) {
    case Type::character:
        return CAP_GetCharCapabilityWithName(group, name, static_cast<std::uint8_t *>(output));
    case Type::word:
        return CAP_GetShortCapabilityWithName(group, name, static_cast<std::uint16_t *>(output));
    case Type::text:
        return CAP_GetCommonCapabilityWithName(group, name, 8, output);
    }
    return 0;
}

class RefusedCapability : public Capabilities, public ::testing::WithParamInterface<Refusal> {};

TEST_P(RefusedCapability, LeavesTheOutputUntouched)
{
    write("capabilities.json", sample);
    const Refusal &row = GetParam();
    alignas(std::uint16_t) std::array<std::uint8_t, 8> output{1, 2, 3, 4, 5, 6, 7, 8};
    const auto before = output;

    const std::string line =
        stderrOf([&] { EXPECT_NE(0, readAs(row.type, row.group, row.capability, output.data())); });
    EXPECT_EQ(before, output);
    EXPECT_EQ(row.isReported, !line.empty()) << line;
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, RefusedCapability, ::testing::Values(
    Refusal{"NoGroup",       Type::character, "Other", "Max", false},
    Refusal{"NoName",        Type::character, "NIC", "Other", false},
    Refusal{"GroupIsNumber", Type::character, "Flat", "Max", true},
    Refusal{"CharTooLarge",  Type::character, "NIC", "Above", true},
    Refusal{"CharNegative",  Type::character, "NIC", "Negative", true},
    Refusal{"CharFraction",  Type::character, "NIC", "Fraction", true},
    Refusal{"CharText",      Type::character, "NIC", "Text", true},
    Refusal{"CharTruth",     Type::character, "NIC", "Truth", true},
    Refusal{"CharNull",      Type::character, "NIC", "Null", true},
    Refusal{"ShortTooLarge", Type::word, "NIC", "ShortAbove", true},
    Refusal{"ShortNegative", Type::word, "NIC", "Negative", true},
    Refusal{"ShortText",     Type::word, "NIC", "Text", true},
    Refusal{"TextNumber",    Type::text, "NIC", "Max", true},
    Refusal{"TextMissing",   Type::text, "NIC", "Other", false},
    Refusal{"NullGroup",     Type::character, nullptr, "Max", true},
    Refusal{"NullName",      Type::word, "NIC", nullptr, true}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(Capabilities, NullOutputOrNoRoomIsRefused)
{
    write("capabilities.json", sample);
    stderrOf([] {
        char byte = '#';
        EXPECT_NE(0, CAP_GetCharCapabilityWithName("NIC", "Max", nullptr));
        EXPECT_NE(0, CAP_GetShortCapabilityWithName("NIC", "Max", nullptr));
        EXPECT_NE(0, CAP_GetCommonCapabilityWithName("SharePort", "NIC1Name", 8, nullptr));
        EXPECT_NE(0, CAP_GetCommonCapabilityWithName("SharePort", "NIC1Name", 0, &byte));
        EXPECT_EQ('#', byte);
    });
}

struct BadFile {
    const char *name;
    const char *text; /* null: there is no file */
};

class CapabilityFile : public Capabilities, public ::testing::WithParamInterface<BadFile> {};

TEST_P(CapabilityFile, ThatCannotBeReadIsAFailure)
{
    if (GetParam().text != nullptr) {
        write("capabilities.json", GetParam().text);
    }
    std::uint8_t byte = 0xAA;
    const std::string line =
        stderrOf([&] { EXPECT_NE(0, CAP_GetCharCapabilityWithName("NIC", "Max", &byte)); });
    EXPECT_EQ(0xAA, byte);
    EXPECT_EQ(GetParam().text != nullptr, line.find("<4>libbmc_platform:") == 0) << line;
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, CapabilityFile, ::testing::Values(
    BadFile{"Missing",    nullptr},
    BadFile{"Empty",      ""},
    BadFile{"CutOff",     "{\"NIC\": {\"Max\": 2"},
    BadFile{"NotJson",    "NIC.Max=2"},
    BadFile{"NoUtf8",     "{\"NIC\": {\"Max\": \"\xFF\"}}"},
    BadFile{"Array",      "[1, 2]"}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

} // namespace
