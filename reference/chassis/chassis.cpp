// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "chassis/chassis.hpp"

#include <algorithm>
#include <stdexcept>

#include "chassis/chassis_log.hpp"
#include "chassis/request.hpp"
#include "common/chassis_records.hpp"
#include "common/hex.hpp"
#include "common/state_directory.hpp"

namespace bmc::chassis {

namespace {

using Payload = std::span<const std::uint8_t, NW_RPC_PAYLOAD_SIZE>;

std::filesystem::path receivedFile()
{
    return stateDirectory() / "chassis.json";
}

/* Writes a record in the library's form. */
template <typename Record, typename Content>
void publish(NW_RESULT (*put)(const Record *), const Content &content, const char *name)
{
    const auto record = recordAs<Record>(content);
    if (put(&record) != NW_OK) {
        throw std::runtime_error(std::string("cannot publish the ") + name);
    }
}

/* Publishes zeros where there is no record yet. */
template <typename Record>
void publishIfMissing(NW_RESULT (*get)(Record *), NW_RESULT (*put)(const Record *),
                      const char *name)
{
    if (Record record{}; get(&record) != NW_OK) {
        publish(put, Record{}, name);
    }
}

void publishLink(bool isConnected)
{
    NW_OA_NETWORK_DB_INFO_S link{};
    link.ucConnected = isConnected;
    publish(NW_LMDB_Put_OaNetworkInfo, link, "link state");
}

template <typename Content>
Content contentOf(Payload payload)
{
    Content content;
    std::copy_n(payload.data(), sizeof(content), reinterpret_cast<std::uint8_t *>(&content));
    return content;
}

Json keptPowerOn(Payload payload)
{
    return {{"request", hexText(payload.first(NW_OA_POWER_ON_REQ_SIZE))}};
}

Json keptPostState(Payload payload)
{
    return {{"state", payload[0]}};
}

/* The request doesn't say how many there are: zeros at its end are left out. */
Json keptOcpTemperatures(Payload payload)
{
    const std::size_t size = withoutZeroTail(payload).size();
    Json celsius = Json::array();
    for (std::size_t at = 0; at < size; at += 2) {
        celsius.push_back(payload[at] | payload[at + 1] << 8);
    }
    return {{"celsius", celsius}};
}

void publishOcpTemperatures(Payload payload)
{
    publish(NW_LMDB_Put_AllOcpTemp, contentOf<OcpTemperatures>(payload), "OCP temperatures");
}

Json keptFan(Payload payload)
{
    const auto request = contentOf<NW_OA_FAN_REQ_S>(payload);
    return {{"speed", std::uint32_t{request.uiFanSpeed}}, {"inlet", request.ucInletTemp}};
}

void publishFan(Payload payload)
{
    const auto request = contentOf<NW_OA_FAN_REQ_S>(payload);
    Fans fans{};
    fans.count = 1;
    fans.speed[0] = request.uiFanSpeed;
    publish(NW_LMDB_Put_AllOMFanInfo, fans, "fan data");

    Temperatures temperatures{};
    temperatures.count = 1;
    temperatures.celsius[0] = request.ucInletTemp;
    publish(NW_LMDB_Put_OATemperaInfo, temperatures, "temperatures");
}

void publishNothing(Payload) {}

struct Command {
    std::uint8_t code;
    const char *name; /* under which it is kept */
    Json (*kept)(Payload payload);
    void (*publish)(Payload payload);
};

/* clang-format off */
constexpr Command commands[] = {
    {NW_OA_CMD_POWER_ON_NODE,   "powerOn",         keptPowerOn,         publishNothing},
    {NW_OA_CMD_BIOS_POST_STATE, "postState",       keptPostState,       publishNothing},
    {NW_OA_CMD_OCP_TEMPERATURE, "ocpTemperatures", keptOcpTemperatures, publishOcpTemperatures},
    {NW_OA_CMD_FAN_AND_INLET,   "fan",             keptFan,             publishFan},
};
/* clang-format on */

const Command &commandOf(std::uint8_t code)
{
    const auto *row = std::ranges::find(commands, code, &Command::code);
    if (row == std::end(commands)) {
        throw Refused(Result::notSupported, "command " + std::to_string(code));
    }
    return *row;
}

/* How often something was received; 0 when the file has been tampered with. */
std::uint64_t countOf(const Json &received, const char *name)
{
    const Json count =
        received.value(Json::json_pointer("/" + std::string(name) + "/count"), Json());
    return count.is_number_unsigned() ? count.get<std::uint64_t>() : 0;
}

} // namespace

Chassis::Chassis() : received_(loadObject(receivedFile()))
{
    publishIfMissing(NW_LMDB_Get_OATemperaInfo, NW_LMDB_Put_OATemperaInfo, "temperatures");
    publishIfMissing(NW_LMDB_Get_AllOcpTemp, NW_LMDB_Put_AllOcpTemp, "OCP temperatures");
    publishIfMissing(NW_LMDB_Get_AllOMFanInfo, NW_LMDB_Put_AllOMFanInfo, "fan data");
    publishLink(true);
}

Chassis::~Chassis()
{
    try {
        publishLink(false);
    } catch (const std::exception &error) {
        log(Level::error, error.what());
    }
}

void Chassis::keep(const char *name, const Json &content)
{
    Json changed = received_;
    changed[name] = {{"count", countOf(received_, name) + 1}};
    changed[name].update(content);
    storeObject(receivedFile(), changed);
    received_ = std::move(changed);
    log(Level::information, std::string(name) + ": " + content.dump());
}

rpc::Bytes Chassis::answerStatus(rpc::Request bytes)
{
    return respond("status", [this, bytes] {
        const NW_RPC_REQUEST_S request = parseRequest(bytes);
        const Command &command = commandOf(request.ucCmd);
        keep(command.name, command.kept(Payload(request.aucPayload)));
        command.publish(Payload(request.aucPayload));
    });
}

rpc::Bytes Chassis::answerBladeConfig(rpc::Request bytes)
{
    return respond("blade configuration", [this, bytes] {
        if (bytes.size() != 1) {
            throw Refused(Result::badRequest, std::to_string(bytes.size()) + " bytes, not 1");
        }
        keep("bladeConfig", {{"value", bytes[0]}});
    });
}

} // namespace bmc::chassis
