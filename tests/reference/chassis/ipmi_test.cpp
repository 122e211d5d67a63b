// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The IPMI service's sink. */
#include "chassis_system.hpp"

#include <gmock/gmock.h>

namespace chassis_test {

using ::testing::Optional;

class IpmiSink : public ChassisTest {
protected:
    void SetUp() override
    {
        ChassisTest::SetUp();
        startSink();
    }

    void startSink()
    {
        sink.reset();
        sink = e2e::startDaemon("nwchassisd --ipmi", NW_RPC_SERVICE_IPMI);
    }

    static NW_RESULT send(std::uint8_t command, const Bytes &payload)
    {
        Bytes bytes = request(command, payload);
        return NW_SendIpmiRpc(bytes.data(), 5000);
    }

    std::unique_ptr<e2e::Process> sink;
};

TEST_F(IpmiSink, RecordsRequests)
{
    EXPECT_EQ(send(3, {1, 2, 0, 0xAB}), NW_OK);
    EXPECT_EQ(send(0, {}), NW_OK);

    EXPECT_EQ(kept("ipmi.json"), (json{{"count", 2},
                                       {"requests",
                                        {{{"number", 1}, {"command", 3}, {"payload", "010200ab"}},
                                         {{"number", 2}, {"command", 0}, {"payload", ""}}}}}));
}

TEST_F(IpmiSink, KeepsTheLatestOnes)
{
    for (unsigned number = 1; number <= 34; ++number) {
        ASSERT_EQ(send(static_cast<std::uint8_t>(number), {}), NW_OK);
    }

    const json recorded = kept("ipmi.json");
    EXPECT_EQ(recorded["count"], 34);
    ASSERT_EQ(recorded["requests"].size(), 32U);
    EXPECT_EQ(recorded["requests"].front()["number"], 3);
    EXPECT_EQ(recorded["requests"].back()["number"], 34);
    EXPECT_EQ(recorded["requests"].back()["command"], 34);
}

TEST_F(IpmiSink, CountsOnAfterARestart)
{
    ASSERT_EQ(send(1, {}), NW_OK);
    EXPECT_EQ(sink->stop(), 0);
    startSink();
    ASSERT_EQ(send(2, {}), NW_OK);

    EXPECT_EQ(kept("ipmi.json")["count"], 2);
    EXPECT_EQ(kept("ipmi.json")["requests"].size(), 2U);
}

TEST_F(IpmiSink, RefusesWhatIsNoRequest)
{
    EXPECT_THAT(call(NW_RPC_SERVICE_IPMI, NW_RPC_FUNCTION_IPMI, {1}), Optional(0x1E000001U));
    EXPECT_EQ(call(NW_RPC_SERVICE_IPMI, NW_RPC_FUNCTION_CHASSIS, request(0)), std::nullopt);

    EXPECT_TRUE(kept("ipmi.json").is_null());
    EXPECT_EQ(send(1, {}), NW_OK) << "it serves on";
}

TEST_F(IpmiSink, RunsBesideTheChassisManager)
{
    start();
    const std::uint8_t config = 9;
    EXPECT_THAT(call(NW_RPC_SERVICE_CHASSIS, NW_RPC_FUNCTION_BLADE_CONFIG, {config}), Optional(0U));
    EXPECT_EQ(send(1, {}), NW_OK);

    EXPECT_EQ(kept()["bladeConfig"]["value"], 9);
    EXPECT_EQ(kept("ipmi.json")["count"], 1);
}

TEST_F(IpmiSink, IsMissedWhenItHasStopped)
{
    EXPECT_EQ(sink->stop(), 0);

    EXPECT_NE(send(1, {}), NW_OK);
}

} // namespace chassis_test
