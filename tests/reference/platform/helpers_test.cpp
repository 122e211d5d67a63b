// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* PHY state, wireless service, existence of paths. */
#include <array>
#include <cstdint>
#include <cstring>

#include <unistd.h>

#include "bmc_platform.h"
#include "platform/wireless.hpp"
#include "support.hpp"

namespace {

using bmc::test::StateTest;
using bmc::test::stderrOf;

using Ports = std::array<std::uint8_t, 3>;

class AnStatus : public StateTest {};

int readPort(std::uint32_t port, Ports &values)
{
    return NW_GetAnStatus(port, &values[0], &values[1], &values[2]);
}

TEST_F(AnStatus, IsReadByPort)
{
    write("an-status.json", R"([{"autoNeg": 1, "duplex": 2, "speed": 3},
                                {"speed": 255, "duplex": 0, "autoNeg": 0, "more": "ignored"}])");
    Ports values{9, 9, 9};
    EXPECT_EQ(0, readPort(0, values));
    EXPECT_EQ((Ports{1, 2, 3}), values);
    EXPECT_EQ(0, readPort(1, values));
    EXPECT_EQ((Ports{0, 0, 255}), values);
}

struct File {
    const char *name;
    const char *text; /* null: there is no file */
    bool isReported;  /* a line at the default level */
};

std::string nameOf(const ::testing::TestParamInfo<File> &row)
{
    return row.param.name;
}

void expectReport(const File &row, const std::string &line)
{
    EXPECT_EQ(row.isReported, line.starts_with("<4>libbmc_platform:")) << line;
}

class AnStatusFile : public AnStatus, public ::testing::WithParamInterface<File> {};

TEST_P(AnStatusFile, ThatGivesNoStateLeavesTheOutputsUntouched)
{
    if (GetParam().text != nullptr) {
        write("an-status.json", GetParam().text);
    }
    Ports values{9, 9, 9};
    expectReport(GetParam(), stderrOf([&] { EXPECT_NE(0, readPort(0, values)); }));
    EXPECT_EQ((Ports{9, 9, 9}), values);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, AnStatusFile, ::testing::Values(
    File{"Missing",      nullptr, false},
    File{"NoPorts",      "[]", false},
    File{"NotJson",      "auto", true},
    File{"NotAnArray",   R"({"autoNeg": 1, "duplex": 2, "speed": 3})", true},
    File{"NotAnObject",  "[1]", true},
    File{"NoSpeed",      R"([{"autoNeg": 1, "duplex": 2}])", true},
    File{"SpeedTooLarge",R"([{"autoNeg": 1, "duplex": 2, "speed": 256}])", true},
    File{"SpeedNegative",R"([{"autoNeg": 1, "duplex": 2, "speed": -1}])", true},
    File{"SpeedIsText",  R"([{"autoNeg": 1, "duplex": 2, "speed": "3"}])", true}), nameOf);
/* clang-format on */

TEST_F(AnStatus, AbsentPortOrNullOutputIsRefused)
{
    write("an-status.json", R"([{"autoNeg": 1, "duplex": 2, "speed": 3}])");
    Ports values{9, 9, 9};
    stderrOf([&] {
        EXPECT_NE(0, readPort(1, values));
        EXPECT_NE(0, readPort(UINT32_MAX, values));
        EXPECT_NE(0, NW_GetAnStatus(0, nullptr, &values[1], &values[2]));
        EXPECT_NE(0, NW_GetAnStatus(0, &values[0], nullptr, &values[2]));
        EXPECT_NE(0, NW_GetAnStatus(0, &values[0], &values[1], nullptr));
    });
    EXPECT_EQ((Ports{9, 9, 9}), values);
}

/* The record and a few bytes behind it. */
using Record = std::array<std::uint8_t, BMC_WIRELESS_INFO_SIZE + 8>;

Record poisonedRecord()
{
    Record record;
    record.fill(0xAA);
    return record;
}

class Wireless : public StateTest {
protected:
    void expectRecord(const char *json, std::uint8_t enabled, const char *address) const
    {
        write("wireless.json", json);
        Record expected = poisonedRecord();
        std::memset(expected.data(), 0, BMC_WIRELESS_INFO_SIZE);
        expected[BMC_WIRELESS_ENABLE_OFFSET] = enabled;
        std::memcpy(&expected[BMC_WIRELESS_IPV4_TEXT_OFFSET], address, std::strlen(address));

        Record record = poisonedRecord();
        EXPECT_EQ(0, USBMANAGE_GetWirelessServiceInfo(record.data()));
        EXPECT_EQ(expected, record);
    }
};

TEST_F(Wireless, FillsTheRecordAndNothingBehindIt)
{
    expectRecord(R"({"enabled": true, "ipv4": "10.1.2.3"})", 1, "10.1.2.3");
    expectRecord(R"({"enabled": false, "ipv4": "255.255.255.255"})", 0, "255.255.255.255");
}

TEST_F(Wireless, ServiceWithoutAnAddressHasAnEmptyText)
{
    expectRecord(R"({"enabled": true})", 1, "");
    EXPECT_EQ(bmc::WirelessState::read, bmc::wirelessState());
}

class WirelessFile : public Wireless, public ::testing::WithParamInterface<File> {};

TEST_P(WirelessFile, ThatGivesNoRecordLeavesTheBufferUntouched)
{
    if (GetParam().text != nullptr) {
        write("wireless.json", GetParam().text);
    }
    stderrOf([] {
        EXPECT_EQ(GetParam().text == nullptr ? bmc::WirelessState::absent
                                             : bmc::WirelessState::malformed,
                  bmc::wirelessState());
    });
    Record record = poisonedRecord();
    expectReport(GetParam(),
                 stderrOf([&] { EXPECT_NE(0, USBMANAGE_GetWirelessServiceInfo(record.data())); }));
    EXPECT_EQ(poisonedRecord(), record);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, WirelessFile, ::testing::Values(
    File{"Missing",      nullptr, false},
    File{"NotJson",      "enabled", true},
    File{"NotAnObject",  "[true]", true},
    File{"NoEnable",     R"({"ipv4": "10.1.2.3"})", true},
    File{"EnableIsText", R"({"enabled": "yes"})", true},
    File{"AddressIsNumber", R"({"enabled": true, "ipv4": 10})", true},
    File{"AddressIsIpv6",R"({"enabled": true, "ipv4": "2001:db8::1"})", true},
    File{"AddressIsLong",R"({"enabled": true, "ipv4": "10.1.2.3.4.5.6.7.8.9.10.11"})", true},
    File{"AddressEmpty", R"({"enabled": true, "ipv4": ""})", true}), nameOf);
/* clang-format on */

TEST_F(Wireless, NullBufferIsRefused)
{
    write("wireless.json", R"({"enabled": true})");
    stderrOf([] { EXPECT_NE(0, USBMANAGE_GetWirelessServiceInfo(nullptr)); });
}

class Existence : public StateTest {};

TEST_F(Existence, OfAPath)
{
    write("file", "");
    ASSERT_EQ(0, symlink((state() / "gone").c_str(), (state() / "dangling").c_str()));

    EXPECT_EQ(1, BMC_CheckDirVaildStatus(state().c_str()));
    EXPECT_EQ(1, BMC_CheckDirVaildStatus((state() / "file").c_str()));
    EXPECT_EQ(0, BMC_CheckDirVaildStatus((state() / "other").c_str()));
    EXPECT_EQ(0, BMC_CheckDirVaildStatus((state() / "dangling").c_str()));
    EXPECT_EQ(0, BMC_CheckDirVaildStatus((state() / "file/below").c_str()));
    EXPECT_EQ(0, BMC_CheckDirVaildStatus(""));
    EXPECT_EQ(0, BMC_CheckDirVaildStatus(nullptr));
}

} // namespace
