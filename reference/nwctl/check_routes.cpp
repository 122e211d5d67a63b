// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include "commands.hpp"
#include "option_arguments.hpp"
#include "results.hpp"
#include "segments.hpp"
#include "stored.hpp"
#include "text.hpp"
#include "wireless.hpp"

namespace nwctl {

namespace {

struct CheckResult {
    const char *check;
    NW_RESULT result;
};

/* Of the stored record: the port's addresses, then its static routes. */
std::vector<CheckResult> checkStored(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    const NW_LAN_CFG_DB_INFO_S record = readLanRecord();
    const NW_WIFI_ADDR_S wireless = bmc::manager::readWireless();
    const std::uint32_t ports = bmc::manager::portSetOf(port);
    return {
        {"addresses", LIB_NW_CheckIPv4v6SameSegment(
                          interfaces.ucIfcState, ports,
                          NW_SEGCHK_IPV4 | NW_SEGCHK_IPV6 | NW_SEGCHK_SLAAC, &wireless, &record)},
        {"routes", LIB_NW_CheckIPv4v6RouteSameSegment(
                       interfaces.ucIfcState, ports,
                       bmc::manager::ipv4Routes | bmc::manager::ipv6Routes, &wireless, &record)},
    };
}

Json resultJson(const CheckResult &row)
{
    const ResultInfo info = describeResult(row.result);
    const bool valid = row.result == NW_OK;
    return {{"check", row.check},
            {"valid", valid},
            {"code", valid ? Json() : Json(codeText(row.result))},
            {"name", valid ? Json() : Json(info.name)},
            {"meaning", valid ? Json() : Json(info.meaning)}};
}

std::string resultText(const CheckResult &row)
{
    if (row.result == NW_OK) {
        return "no conflict";
    }
    const ResultInfo info = describeResult(row.result);
    return codeText(row.result) + " (" + std::string(info.name) + "): " + info.meaning;
}

void checkRoutes(const std::string &text, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const unsigned port = findPort(interfaces, text);
    const std::string name = portName(interfaces, port);
    requireServed(interfaces, port);

    std::string lines;
    Json documents = Json::array();
    for (const CheckResult &row : checkStored(interfaces, port)) {
        lines += escaped(name) + ": " + row.check + ": " + resultText(row) + "\n";
        documents.push_back(resultJson(row));
        session.status = row.result == NW_OK ? session.status : Exit::refused;
    }
    session.answer(Json{{"port", name},
                        {"index", port},
                        {"valid", session.status == Exit::success},
                        {"checks", documents}},
                   lines);
}

} // namespace

void addRouteCheckCommand(std::vector<Command> &commands)
{
    const auto declare = [](CLI::App &app, Session &session) {
        const auto port = std::make_shared<std::string>();
        addPort(app, *port)->required();
        app.callback([port, &session] { checkRoutes(*port, session); });
    };
    commands.push_back({"check", "routes",
                        "Do the port's stored addresses and routes meet another's?",
                        "check routes eth1", declare});
}

} // namespace nwctl
