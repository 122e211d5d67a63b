// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the library sends is kept and published; what isn't understood is refused. */
#include "chassis_system.hpp"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "common/chassis_records.hpp"

namespace chassis_test {

using bmc::chassis::Fans;
using bmc::chassis::OcpTemperatures;
using bmc::chassis::recordAs;
using bmc::chassis::Temperatures;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Optional;

constexpr std::uint32_t badRequest = 0x1E000001;
constexpr std::uint32_t databaseFailed = 0x1E000003;
constexpr std::uint32_t notSupported = 0x1E00001C;

Temperatures publishedTemperatures()
{
    NW_OA_TEMPERA_INFO_S record{};
    EXPECT_EQ(LIB_OA_GetOATemperaInfo(&record), NW_OK);
    return recordAs<Temperatures>(record);
}

std::vector<unsigned> publishedOcp()
{
    NW_ALL_OCP_TEMP_S record{};
    EXPECT_EQ(LIB_OA_GetAllOcpTemp(&record), NW_OK);
    const auto ocp = recordAs<std::array<std::uint16_t, OcpTemperatures::capacity>>(record);
    return {ocp.begin(), ocp.end()};
}

Fans publishedFans()
{
    NW_ALL_FAN_INFO_S record{};
    EXPECT_EQ(NW_LMDB_Get_AllOMFanInfo(&record), NW_OK);
    return recordAs<Fans>(record);
}

class Service : public ChassisTest {
protected:
    void SetUp() override
    {
        ChassisTest::SetUp();
        start();
    }
};

TEST_F(Service, KeepsPowerOnRequests)
{
    const std::uint8_t bytes[NW_OA_POWER_ON_REQ_SIZE] = {1, 2, 3, 4, 5, 0xFE};
    EXPECT_EQ(LIB_OA_SendPowerOnNodeRequest(bytes), NW_OK);
    EXPECT_EQ(kept(), (json{{"powerOn", {{"count", 1}, {"request", "0102030405fe"}}}}));

    EXPECT_EQ(LIB_OA_SendPowerOnNodeRequest(nullptr), NW_OK);
    EXPECT_EQ(kept(), (json{{"powerOn", {{"count", 2}, {"request", "000000000000"}}}}));
}

TEST_F(Service, KeepsThePostState)
{
    const std::uint8_t state = 0xC3;
    EXPECT_EQ(LIB_OA_SendBiosPostState(&state), NW_OK);

    EXPECT_EQ(kept(), (json{{"postState", {{"count", 1}, {"state", 0xC3}}}}));
}

TEST_F(Service, KeepsAndPublishesOcpTemperatures)
{
    const std::uint16_t celsius[] = {41, 0, 0x1234};
    EXPECT_EQ(LIB_OA_SendOcpTemp(celsius, sizeof(celsius)), NW_OK);

    EXPECT_EQ(kept()["ocpTemperatures"]["celsius"], json({41, 0, 0x1234}));
    std::vector<unsigned> expected(OcpTemperatures::capacity);
    expected[0] = 41;
    expected[2] = 0x1234;
    EXPECT_EQ(publishedOcp(), expected);
}

TEST_F(Service, PublishesAsManyOcpTemperaturesAsTheRecordHolds)
{
    std::vector<std::uint16_t> celsius(NW_RPC_PAYLOAD_SIZE / sizeof(std::uint16_t), 0x0203);
    EXPECT_EQ(LIB_OA_SendOcpTemp(celsius.data(), NW_RPC_PAYLOAD_SIZE), NW_OK);

    EXPECT_EQ(kept()["ocpTemperatures"]["celsius"].size(), celsius.size());
    EXPECT_THAT(publishedOcp(), Each(0x0203U));
}

TEST_F(Service, KeepsAndPublishesFanSpeedAndInletTemperature)
{
    EXPECT_EQ(LIB_OA_SendFanSpeedAndInletTemp(0x01020304, 0x1FE), NW_OK);

    EXPECT_EQ(kept()["fan"], (json{{"count", 1}, {"speed", 0x01020304}, {"inlet", 0xFE}}));
    const Fans fans = publishedFans();
    EXPECT_EQ(fans.count, 1);
    EXPECT_EQ(std::uint32_t{fans.speed[0]}, 0x01020304U);
    EXPECT_EQ(std::uint32_t{fans.speed[1]}, 0U);
    const Temperatures temperatures = publishedTemperatures();
    EXPECT_EQ(temperatures.count, 1);
    EXPECT_EQ(std::uint16_t{temperatures.celsius[0]}, 0xFE);
    EXPECT_EQ(std::uint16_t{temperatures.celsius[1]}, 0);
}

TEST_F(Service, KeepsTheBladeConfigurationByte)
{
    std::uint8_t value = 0x5A;
    std::uint32_t response[sizeof(NW_RPC_RESPONSE_S) / sizeof(std::uint32_t)] = {0xEEEEEEEE};
    EXPECT_EQ(LIB_BLADE_RPC_WriteConfig(&value, NW_RPC_TIMEOUT_MS, response), NW_OK);

    EXPECT_THAT(response, Each(0U));
    EXPECT_EQ(kept(), (json{{"bladeConfig", {{"count", 1}, {"value", 0x5A}}}}));
}

TEST_F(Service, GoesOnWithWhatAnEarlierRunHasKept)
{
    const std::uint8_t state = 7;
    ASSERT_EQ(LIB_OA_SendBiosPostState(&state), NW_OK);
    ASSERT_EQ(LIB_OA_SendFanSpeedAndInletTemp(5400, 25), NW_OK);
    ASSERT_EQ(stop(), 0);
    start();

    EXPECT_EQ(publishedFans().count, 1);
    EXPECT_EQ(publishedTemperatures().count, 1);
    ASSERT_EQ(LIB_OA_SendBiosPostState(&state), NW_OK);
    EXPECT_EQ(kept()["postState"]["count"], 2);
    EXPECT_EQ(kept()["fan"]["speed"], 5400);
}

struct Rubbish {
    const char *name;
    std::uint32_t function;
    Bytes bytes;
    std::uint32_t result;
};

void PrintTo(const Rubbish &row, std::ostream *stream)
{
    *stream << row.name;
}

class RefusedRequest : public Service, public ::testing::WithParamInterface<Rubbish> {};

TEST_P(RefusedRequest, ChangesNothing)
{
    const std::uint8_t state = 7;
    ASSERT_EQ(LIB_OA_SendBiosPostState(&state), NW_OK);
    const json before = kept();

    EXPECT_THAT(call(NW_RPC_SERVICE_CHASSIS, GetParam().function, GetParam().bytes),
                Optional(GetParam().result));

    EXPECT_EQ(kept(), before);
    EXPECT_EQ(publishedFans().count, 0);
    EXPECT_THAT(publishedOcp(), Each(0U));
    EXPECT_EQ(LIB_OA_SendBiosPostState(&state), NW_OK) << "it serves on";
}

Bytes withHead(Bytes bytes, std::uint8_t head)
{
    bytes[0] = head;
    return bytes;
}

Bytes resized(Bytes bytes, std::size_t size)
{
    bytes.resize(size);
    return bytes;
}

/* clang-format off */
const Rubbish rubbish[] = {
    {"UnknownCommand",  NW_RPC_FUNCTION_CHASSIS,      request(4, {1, 2}),          notSupported},
    {"LastCommand",     NW_RPC_FUNCTION_CHASSIS,      request(255),                notSupported},
    {"HeadByte",        NW_RPC_FUNCTION_CHASSIS,      withHead(request(3, {9}), 1), badRequest},
    {"OneByteShort",    NW_RPC_FUNCTION_CHASSIS,      resized(request(3, {9}), 3073), badRequest},
    {"OneByteLong",     NW_RPC_FUNCTION_CHASSIS,      resized(request(3, {9}), 3075), badRequest},
    {"OneByte",         NW_RPC_FUNCTION_CHASSIS,      {3},                         badRequest},
    {"BladeTwoBytes",   NW_RPC_FUNCTION_BLADE_CONFIG, {1, 2},                      badRequest},
    {"BladeWholeFrame", NW_RPC_FUNCTION_BLADE_CONFIG, request(0),                  badRequest},
};
/* clang-format on */

INSTANTIATE_TEST_SUITE_P(Rows, RefusedRequest, ::testing::ValuesIn(rubbish),
                         [](const auto &test) { return test.param.name; });

TEST_F(Service, HasNoOtherFunction)
{
    EXPECT_EQ(call(NW_RPC_SERVICE_CHASSIS, NW_RPC_FUNCTION_IPMI, request(0)), std::nullopt);
}

TEST_F(Service, TellsThatItCannotKeep)
{
    /* A directory in the way. */
    const std::filesystem::path file =
        std::filesystem::path(std::getenv("BMC_STATE_DIR")) / "chassis.json";
    std::filesystem::create_directory(file);

    EXPECT_EQ(LIB_OA_SendFanSpeedAndInletTemp(5400, 25), databaseFailed);
    EXPECT_EQ(publishedFans().count, 0);

    std::filesystem::remove(file);
    EXPECT_EQ(LIB_OA_SendFanSpeedAndInletTemp(5400, 25), NW_OK);
    EXPECT_EQ(kept()["fan"]["count"], 1);
}

struct Damage {
    const char *name;
    const char *text;
};

class DamagedFile : public ChassisTest, public ::testing::WithParamInterface<Damage> {};

TEST_P(DamagedFile, IsBegunAnew)
{
    std::ofstream(std::string(std::getenv("BMC_STATE_DIR")) + "/chassis.json") << GetParam().text;
    start();

    const std::uint8_t state = 7;
    EXPECT_EQ(LIB_OA_SendBiosPostState(&state), NW_OK);
    EXPECT_EQ(kept()["postState"], (json{{"count", 1}, {"state", 7}}));
}

/* More than a reader that descends value by value can stand. */
const std::string nested =
    R"({"temperatures": )" + std::string(200000, '[') + std::string(200000, ']') + "}";

const Damage damages[] = {
    {"NestedTooDeeply", nested.c_str()},
    {"Empty", ""},
    {"NoJson", "{\"postState\": "},
    {"NoObject", "[1, 2]"},
    {"NoObjectWithin", R"({"postState": 3})"},
    {"NoCount", R"({"postState": {"count": "many"}})"},
    {"NegativeCount", R"({"postState": {"count": -1}})"},
};

INSTANTIATE_TEST_SUITE_P(Rows, DamagedFile, ::testing::ValuesIn(damages),
                         [](const auto &test) { return test.param.name; });

} // namespace chassis_test
