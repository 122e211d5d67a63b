// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include "answer.hpp"
#include "chassis/chassis_records.hpp"
#include "commands.hpp"
#include "exchange_values.hpp"

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

void requireRead(NW_RESULT result, const char *what)
{
    if (result == NW_OK) {
        return;
    }
    if (!isConnected()) {
        throw Failure(Exit::transport, "", "", "the chassis manager is not connected");
    }
    throw Failure(Exit::internal, "", "", std::string("cannot read the ") + what, result);
}

template <typename Record>
Json firstOf(const Record &record, unsigned count)
{
    Json values = Json::array();
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

/* A row for each value: "inlet" is number 0 of the sensors. */
std::string rowsOf(const char *name, const Json &values)
{
    std::string rows;
    for (std::size_t at = 0; at < values.size(); ++at) {
        rows += std::string(name) + " " + std::to_string(at) + ": " + values[at].dump() + "\n";
    }
    return rows.empty() ? std::string(name) + ": none\n" : rows;
}

void showTemperatures(Session &session)
{
    NW_OA_TEMPERA_INFO_S stored{};
    NW_ALL_OCP_TEMP_S storedOcp{};
    requireRead(LIB_OA_GetOATemperaInfo(&stored), "chassis temperatures");
    requireRead(LIB_OA_GetAllOcpTemp(&storedOcp), "OCP temperatures");

    const auto record = bmc::chassis::recordAs<bmc::chassis::Temperatures>(stored);
    const auto ocp = bmc::chassis::recordAs<bmc::chassis::OcpTemperatures>(storedOcp);
    const Json sensors = firstOf(record, record.count);
    const Json adapters = firstOf(ocp, adaptersIn(ocp));
    answer(session, Json{{"sensors", sensors}, {"ocp", adapters}},
           rowsOf("sensor", sensors) + rowsOf("OCP adapter", adapters));
}

void showFans(Session &session)
{
    NW_ALL_FAN_INFO_S stored{};
    if (!isConnected()) {
        throw Failure(Exit::transport, "", "", "the chassis manager is not connected");
    }
    requireRead(NW_LMDB_Get_AllOMFanInfo(&stored), "fan data");

    const auto record = bmc::chassis::recordAs<bmc::chassis::Fans>(stored);
    Json speeds = Json::array();
    for (unsigned at = 0; at < std::min<unsigned>(record.count, record.capacity); ++at) {
        speeds.push_back(std::uint32_t{record.speed[at]});
    }
    answer(session, Json{{"fans", speeds}}, rowsOf("fan", speeds));
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
    answer(session, Json{{"sent", what}}, std::string(what) + " sent\n");
}

void declareTemperatures(CLI::App &app, Session &session)
{
    app.callback([&session] { showTemperatures(session); });
}

void declareFans(CLI::App &app, Session &session)
{
    app.callback([&session] { showFans(session); });
}

void declarePowerOn(CLI::App &app, Session &session)
{
    const auto request = std::make_shared<std::string>();
    const CLI::Option *given =
        app.add_option("BYTES", *request, "6 bytes, two hexadecimal digits each; without it zeros")
            ->type_name("");
    app.callback([request, given, &session] {
        std::vector<std::uint8_t> bytes;
        if (!given->empty()) {
            bytes = bytesIn("BYTES", *request, NW_OA_POWER_ON_REQ_SIZE);
        }
        finishSending(LIB_OA_SendPowerOnNodeRequest(bytes.empty() ? nullptr : bytes.data()),
                      "power-on request", session);
    });
}

void declarePostState(CLI::App &app, Session &session)
{
    const auto state = std::make_shared<std::string>();
    app.add_option("STATE", *state, "POST state, 0 to 255")->required()->type_name("");
    app.callback([state, &session] {
        const auto byte = static_cast<std::uint8_t>(numberIn("STATE", *state, 0, byteMax));
        finishSending(LIB_OA_SendBiosPostState(&byte), "POST state", session);
    });
}

void sendOcpTemperatures(const std::vector<std::string> &texts, Session &session)
{
    std::vector<std::uint16_t> celsius;
    for (const std::string &text : texts) {
        celsius.push_back(static_cast<std::uint16_t>(numberIn("CELSIUS", text, 0, wordMax)));
    }
    const auto size = static_cast<std::uint32_t>(celsius.size() * sizeof(celsius[0]));
    finishSending(LIB_OA_SendOcpTemp(celsius.data(), size), "OCP temperatures", session);
}

void declareOcpTemperatures(CLI::App &app, Session &session)
{
    constexpr int most = bmc::chassis::OcpTemperatures::capacity;
    const auto texts = std::make_shared<std::vector<std::string>>();
    app.add_option("CELSIUS", *texts,
                   "temperature of each adapter, 0 to 65535; at most " + std::to_string(most))
        ->required()
        ->expected(1, most)
        ->type_name("");
    app.callback([texts, &session] { sendOcpTemperatures(*texts, session); });
}

void declareFan(CLI::App &app, Session &session)
{
    const auto speed = std::make_shared<std::string>();
    const auto inlet = std::make_shared<std::string>();
    app.add_option("SPEED", *speed, "fan speed, revolutions per minute")->required()->type_name("");
    app.add_option("INLET", *inlet, "inlet temperature, 0 to 255 degrees Celsius")
        ->required()
        ->type_name("");
    app.callback([speed, inlet, &session] {
        const unsigned speedNumber = numberIn("SPEED", *speed, 0, longMax);
        const unsigned inletNumber = numberIn("INLET", *inlet, 0, byteMax);
        finishSending(LIB_OA_SendFanSpeedAndInletTemp(speedNumber, inletNumber),
                      "fan speed and inlet temperature", session);
    });
}

} // namespace

void addChassisCommands(std::vector<Command> &commands)
{
    /* clang-format off */
    commands.insert(commands.end(), {
        {"chassis", "temps",           "Show the temperatures that the chassis manager publishes", "chassis temps",                        declareTemperatures},
        {"chassis", "fans",            "Show the fan speeds that the chassis manager publishes",   "chassis fans",                         declareFans},
        {"chassis", "send-power-on",   "Ask for a node to be powered on",                          "chassis send-power-on 010203040506",   declarePowerOn},
        {"chassis", "send-post-state", "Report the BIOS POST state",                               "chassis send-post-state 3",            declarePostState},
        {"chassis", "send-ocp-temps",  "Report the temperatures of the OCP adapters",              "chassis send-ocp-temps 41 43",         declareOcpTemperatures},
        {"chassis", "send-fan",        "Report fan speed and inlet temperature",                   "chassis send-fan 5400 25",             declareFan},
    });
    /* clang-format on */
}

} // namespace nwctl
