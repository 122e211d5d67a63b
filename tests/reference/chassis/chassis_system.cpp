// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "chassis_system.hpp"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "bmc_platform.h"
#include "network_mng/chassis.h"

namespace chassis_test {

namespace {

std::filesystem::path stateDirectory()
{
    return std::getenv("BMC_STATE_DIR");
}

/* As if no chassis manager had ever run; records cannot be removed. */
void forgetRecords()
{
    const NW_OA_NETWORK_DB_INFO_S network{};
    const NW_OA_TEMPERA_INFO_S temperatures{};
    const NW_ALL_OCP_TEMP_S ocp{};
    const NW_ALL_FAN_INFO_S fans{};
    ASSERT_EQ(NW_LMDB_Put_OaNetworkInfo(&network), NW_OK);
    ASSERT_EQ(NW_LMDB_Put_OATemperaInfo(&temperatures), NW_OK);
    ASSERT_EQ(NW_LMDB_Put_AllOcpTemp(&ocp), NW_OK);
    ASSERT_EQ(NW_LMDB_Put_AllOMFanInfo(&fans), NW_OK);
}

} // namespace

json kept(const std::string &file)
{
    std::ifstream stream(stateDirectory() / file);
    return stream ? json::parse(stream) : json();
}

Bytes request(std::uint8_t command, const Bytes &payload)
{
    Bytes bytes(sizeof(NW_RPC_REQUEST_S));
    bytes[1] = command;
    std::copy(payload.begin(), payload.end(), bytes.begin() + 2);
    return bytes;
}

std::optional<std::uint32_t> call(std::uint32_t service, std::uint32_t function, const Bytes &bytes)
{
    MRPC_MSG *message = nullptr;
    std::optional<std::uint32_t> result;
    if (MRPC_Call(service, function, static_cast<std::uint32_t>(bytes.size()), bytes.data(), 10000,
                  &message) == 0 &&
        message != nullptr && message->pData != nullptr) {
        std::memcpy(&result.emplace(), message->pData, sizeof(*result));
    }
    MRPC_MsgFree(&message);
    return result;
}

void ChassisTest::SetUp()
{
    for (const char *file : {"chassis.json", "ipmi.json"}) {
        std::filesystem::remove(stateDirectory() / file);
    }
    forgetRecords();
}

void ChassisTest::start()
{
    daemon.reset();
    daemon = e2e::startDaemon("nwchassisd", NW_RPC_SERVICE_CHASSIS);
}

int ChassisTest::stop()
{
    return daemon->stop();
}

} // namespace chassis_test
