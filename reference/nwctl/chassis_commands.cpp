// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "common/chassis_records.hpp"
#include "nwctl/stored.hpp"

namespace nwctl {

namespace {

constexpr unsigned byteMax = 0xFF;
constexpr unsigned wordMax = 0xFFFF;
constexpr unsigned longMax = 0xFFFFFFFF;

/* A record that cannot be read counts as a link that is down, as it does in the library. */
bool isConnected()
{
    NW_OA_NETWORK_DB_INFO_S link{};
    return NW_LMDB_Get_OaNetworkInfo(&link) == NW_OK && link.ucConnected == 1;
}

void requireConnected()
{
    if (!isConnected()) {
        throw Failure(Exit::transport, "", "", "the chassis manager is not connected");
    }
}

void requireRecord(NW_RESULT result, const char *what)
{
    if (result != NW_OK) {
        requireConnected();
    }
    requireRead(result, what);
}

template <typename Record>
std::vector<unsigned> firstOf(const Record &record, unsigned count)
{
    std::vector<unsigned> values;
    for (unsigned at = 0; at < std::min(count, Record::capacity); ++at) {
        values.push_back(std::uint16_t{record.celsius[at]});
    }
    return values;
}

/* How many adapters there are isn't stored: zeros at the end are none. */
unsigned adaptersIn(const bmc::chassis::OcpTemperatures &record)
{
    unsigned count = record.capacity;
    while (count > 0 && record.celsius[count - 1] == 0) {
        --count;
    }
    return count;
}

/* A line for each value: "inlet" is number 0 of the sensors. */
Row valuesRow(const std::string &name, const std::string &key, const std::vector<unsigned> &values)
{
    List list;
    for (std::size_t at = 0; at < values.size(); ++at) {
        list.rows.push_back(
            {.value = values[at],
             .text = name + " " + std::to_string(at) + ": " + std::to_string(values[at])});
    }
    return {.key = key, .value = std::move(list), .text = values.empty() ? name + ": none" : ""};
}

void showTemperatures(const Arguments &, Session &session)
{
    NW_OA_TEMPERA_INFO_S stored{};
    NW_ALL_OCP_TEMP_S storedOcp{};
    requireRecord(LIB_OA_GetOATemperaInfo(&stored), "the chassis temperatures");
    requireRecord(LIB_OA_GetAllOcpTemp(&storedOcp), "the OCP temperatures");

    const auto record = bmc::chassis::recordAs<bmc::chassis::Temperatures>(stored);
    const auto ocp = bmc::chassis::recordAs<bmc::chassis::OcpTemperatures>(storedOcp);
    session.answer({valuesRow("sensor", "sensors", firstOf(record, record.count)),
                    valuesRow("OCP adapter", "ocp", firstOf(ocp, adaptersIn(ocp)))});
}

void showFans(const Arguments &, Session &session)
{
    NW_ALL_FAN_INFO_S stored{};
    requireConnected();
    requireRecord(NW_LMDB_Get_AllOMFanInfo(&stored), "the fan data");

    const auto record = bmc::chassis::recordAs<bmc::chassis::Fans>(stored);
    std::vector<unsigned> speeds;
    for (unsigned at = 0; at < std::min<unsigned>(record.count, record.capacity); ++at) {
        speeds.push_back(std::uint32_t{record.speed[at]});
    }
    session.answer({valuesRow("fan", "fans", speeds)});
}

/* Ends a command that sends: says what was sent, or throws Failure. */
void finishSending(NW_RESULT result, const char *what, Session &session)
{
    if (result == NW_ERR_RPC_TRANSPORT) {
        throw Failure(Exit::transport, "", "", "no answer from the chassis manager", result);
    }
    if (result != NW_OK) {
        throw Failure(Exit::manager, "", "", "the chassis manager refused the request", result);
    }
    session.answer({line(std::string(what) + " sent"), hidden("sent", what)});
}

void sendPowerOn(const Arguments &arguments, Session &session)
{
    std::vector<std::uint8_t> bytes;
    if (arguments.has("BYTES")) {
        bytes = bytesIn("BYTES", arguments.value("BYTES"), NW_OA_POWER_ON_REQ_SIZE);
    }
    finishSending(LIB_OA_SendPowerOnNodeRequest(bytes.empty() ? nullptr : bytes.data()),
                  "power-on request", session);
}

void sendPostState(const Arguments &arguments, Session &session)
{
    const auto byte =
        static_cast<std::uint8_t>(numberIn("STATE", arguments.value("STATE"), 0, byteMax));
    finishSending(LIB_OA_SendBiosPostState(&byte), "POST state", session);
}

void sendOcpTemperatures(const Arguments &arguments, Session &session)
{
    std::vector<std::uint16_t> celsius;
    for (const std::string &text : arguments.values("CELSIUS")) {
        celsius.push_back(static_cast<std::uint16_t>(numberIn("CELSIUS", text, 0, wordMax)));
    }
    const auto size = static_cast<std::uint32_t>(celsius.size() * sizeof(celsius[0]));
    finishSending(LIB_OA_SendOcpTemp(celsius.data(), size), "OCP temperatures", session);
}

void sendFan(const Arguments &arguments, Session &session)
{
    const unsigned speed = numberIn("SPEED", arguments.value("SPEED"), 0, longMax);
    const unsigned inlet = numberIn("INLET", arguments.value("INLET"), 0, byteMax);
    finishSending(LIB_OA_SendFanSpeedAndInletTemp(speed, inlet), "fan speed and inlet temperature",
                  session);
}

} // namespace

void addChassisCommands(std::vector<Command> &commands)
{
    using Kind = Parameter::Kind;
    constexpr int most = bmc::chassis::OcpTemperatures::capacity;
    const Parameter bytes{Kind::optional, "BYTES",
                          "6 bytes, two hexadecimal digits each; without it zeros"};
    const Parameter state{Kind::required, "STATE", "POST state, 0 to 255"};
    const Parameter celsius{
        Kind::several, "CELSIUS",
        "temperature of each adapter, 0 to 65535; at most " + std::to_string(most), "", most};
    const Parameter speed{Kind::required, "SPEED", "fan speed, revolutions per minute"};
    const Parameter inlet{Kind::required, "INLET", "inlet temperature, 0 to 255 degrees Celsius"};
    /* clang-format off */
    commands.insert(commands.end(), {
        {"chassis", "temps",           "Show the temperatures that the chassis manager publishes", "chassis temps",                      {},             inSnapshot(showTemperatures)},
        {"chassis", "fans",            "Show the fan speeds that the chassis manager publishes",   "chassis fans",                       {},             inSnapshot(showFans)},
        {"chassis", "send-power-on",   "Ask for a node to be powered on",                          "chassis send-power-on 010203040506", {bytes},        sendPowerOn},
        {"chassis", "send-post-state", "Report the BIOS POST state",                               "chassis send-post-state 3",          {state},        sendPostState},
        {"chassis", "send-ocp-temps",  "Report the temperatures of the OCP adapters",              "chassis send-ocp-temps 41 43",       {celsius},      sendOcpTemperatures},
        {"chassis", "send-fan",        "Report fan speed and inlet temperature",                   "chassis send-fan 5400 25",           {speed, inlet}, sendFan},
    });
    /* clang-format on */
}

} // namespace nwctl
