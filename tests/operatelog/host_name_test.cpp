// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Host name sentences: rows that share a bit, and names without a terminator. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr const char *heading = "Host name set successfully";

class HostName : public OperateLogTest {
protected:
    /* A stored record with a mode and two names, which need not be terminated. */
    static void store(std::uint8_t mode, const std::string &hostNameText, const std::string &name)
    {
        Bytes record(260);
        record[0] = mode;
        std::copy(hostNameText.begin(), hostNameText.end(), record.begin() + 68);
        std::copy(name.begin(), name.end(), record.begin() + 132);
        fake::platform().setRecord(0x10610000, record);
    }

    std::string sentence(std::uint8_t bitmap)
    {
        Bytes request(136, poison);
        request[4] = bitmap;
        return build(hostName, request);
    }
};

TEST_F(HostName, ModeAloneAlsoPrintsTheBmcHostName)
{
    store(0, "bmc-7", "rack4");
    const std::string mode = ", host name mode: Manual";
    const std::string bmc = ", host name BMC: bmc-7";
    const std::string name = ", BMC name: rack4";
    const std::pair<std::uint8_t, std::string> cases[] = {
        {0x01, mode + bmc},        {0x02, bmc},        {0x03, mode + bmc},        {0x04, name},
        {0x05, mode + bmc + name}, {0x06, bmc + name}, {0x07, mode + bmc + name}, {0xF8, ""},
        {0xFF, mode + bmc + name}};

    for (const auto &[bitmap, fields] : cases) {
        EXPECT_EQ(sentence(bitmap), heading + fields + ".") << int{bitmap};
    }
}

TEST_F(HostName, ModeHasTwoWords)
{
    for (const int mode : {1, 2, 255}) {
        store(static_cast<std::uint8_t>(mode), "b", "");
        EXPECT_EQ(sentence(0x1), "Host name set successfully, host name mode: Auto"
                                 ", host name BMC: b.");
    }
}

TEST_F(HostName, ValuesAreThoseReadBackNotThoseRequested)
{
    store(1, "stored", "");
    Bytes request(136, 'r');
    request[4] = 0x2;
    EXPECT_EQ(build(hostName, request), "Host name set successfully, host name BMC: stored.");
}

TEST_F(HostName, LogsTheTextThatItBuilt)
{
    store(0, "bmc-7", "");
    const std::string text = sentence(0x2);
    EXPECT_THAT(lines(), ElementsAre(operLogLine(text)));
}

/* The record ends with the BMC name. */
TEST_F(HostName, BmcNameMayFillItsFieldToTheLastByte)
{
    for (const std::size_t length : {127U, 128U}) {
        store(0, "bmc", std::string(length, 'n'));
        EXPECT_EQ(sentence(0x4),
                  std::string(heading) + ", BMC name: " + std::string(length, 'n') + ".");
    }
}

TEST_F(HostName, BmcHostNameMayFillItsFieldToTheLastByte)
{
    store(0, std::string(64, 'h'), "name");
    EXPECT_THAT(sentence(0x2),
                StartsWith(std::string(heading) + ", host name BMC: " + std::string(64, 'h')));
}

TEST_F(HostName, BmcHostNameEndsWithItsField)
{
    const std::string full(64, 'h');
    store(1, full, "name");
    const std::string bmc = ", host name BMC: " + full;
    EXPECT_EQ(sentence(0x2), heading + bmc + ".");
    EXPECT_EQ(sentence(0x7),
              std::string(heading) + ", host name mode: Auto" + bmc + ", BMC name: name.");

    store(1, full, std::string(128, 'n'));
    EXPECT_EQ(sentence(0x1), std::string(heading) + ", host name mode: Auto" + bmc + ".");
    EXPECT_EQ(sentence(0x6), heading + bmc + ", BMC name: " + std::string(128, 'n') + ".");
}

TEST_F(HostName, BothNamesMayLackATerminator)
{
    store(0, std::string(64, 'h'), std::string(128, 'n'));
    const std::string text = sentence(0x6);
    EXPECT_THAT(text,
                StartsWith(std::string(heading) + ", host name BMC: " + std::string(64, 'h')));
    EXPECT_THAT(text, testing::EndsWith(", BMC name: " + std::string(128, 'n') + "."));
}

TEST_F(HostName, WithoutAnEnvironmentIsLoggedWithItsOwnResult)
{
    platform.failOpen();

    EXPECT_EQ(sentence(0x1), "");

    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Failed to open lmdb database."),
                                     fake::isErrorLine("Failed to get hostname info!"),
                                     errorLine("[%d]Get BMCHostName Info from DB Failed.",
                                               static_cast<int>(0x81000001)),
                                     operLogLine("")));
}

} // namespace
} // namespace operatelog
