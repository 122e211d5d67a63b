// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/commands.hpp"

#include <algorithm>
#include <string>

#include "manager/log.hpp"
#include "manager/refusal.hpp"
#include "manager/service/arp.hpp"
#include "manager/service/changes.hpp"
#include "settings/requests.hpp"

namespace bmc::manager {

namespace {

struct Command {
    std::uint8_t code;
    const char *name;
    /* Fills the response's detail and data; throws Refusal. Null: what the settings know. */
    void (*carryOut)(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &response) = nullptr;
};

void restart(Engine &engine, Payload payload, NW_RPC_RESPONSE_S &)
{
    const auto seconds = contentOf<std::uint32_t>(payload);
    require(seconds <= settings::longestRestartDelay, Result::badDelay, "restart");
    if (seconds == 0) {
        engine.restart();
    } else {
        engine.restartIn(std::chrono::seconds(seconds));
    }
}

/* clang-format off */
constexpr Command commands[] = {
    {NW_CMD_SET_HOSTNAME,    "set host name"},
    {NW_CMD_SET_DNS,         "set DNS"},
    {NW_CMD_SET_LLDP,        "set LLDP"},
    {NW_CMD_SET_LAN,         "set LAN"},
    {NW_CMD_SET_NET_MODE,    "set network port mode"},
    {NW_CMD_SUSPEND_ARP,     "suspend ARP",         suspendArp},
    {NW_CMD_UPDATE_ARP,      "update ARP status",   updateArp},
    {NW_CMD_RESUME_ARP,      "resume ARP",          resumeArp},
    {NW_CMD_RESTART,         "restart network",     restart},
    {NW_CMD_SET_AN,          "set auto-negotiation"},
    {NW_CMD_SET_LAN_REVERSE, "switch ports over"},
    {NW_CMD_SET_ALL,         "set network"},
};
/* clang-format on */

const Command &commandOf(std::uint8_t code)
{
    const auto *row = std::ranges::find(commands, code, &Command::code);
    if (row == std::end(commands)) {
        throw Refusal(Result::notSupported, "command " + std::to_string(code));
    }
    return *row;
}

NW_RPC_REQUEST_S parse(rpc::Request bytes)
{
    if (bytes.size() != sizeof(NW_RPC_REQUEST_S)) {
        throw Refusal(Result::badRequest, std::to_string(bytes.size()) + " bytes");
    }
    const auto request = contentOf<NW_RPC_REQUEST_S>(bytes);
    require(request.ucReqHead == 0, Result::badRequest, "head byte");
    return request;
}

void changeSettings(Engine &engine, std::uint8_t code, Payload payload, NW_RPC_RESPONSE_S &response)
{
    const settings::Change asked = settings::changeIn(code, payload);
    response.uiDetail = settings::firstPort(asked);
    try {
        engine.change({checked(engine.present(), asked), scopeOf(asked)});
    } catch (const Refusal &refusal) {
        response.uiDetail = settings::firstPort(asked, refusal.section());
        throw;
    }
}

/* Operation-log word of the part that failed, at the beginning of the response's data. */
void nameModule(NW_RPC_RESPONSE_S &response, std::uint32_t module)
{
    std::memcpy(response.aucResData, &module, sizeof(module));
}

NW_RPC_RESPONSE_S respond(Engine &engine, rpc::Request bytes)
{
    NW_RPC_RESPONSE_S response{};
    std::string name;
    try {
        const NW_RPC_REQUEST_S request = parse(bytes);
        const Command &command = commandOf(request.ucCmd);
        const Payload payload(request.aucPayload);
        name = std::string(command.name) + ": ";
        if (command.carryOut != nullptr) {
            command.carryOut(engine, payload, response);
        } else {
            changeSettings(engine, request.ucCmd, payload, response);
        }
        log(Level::information, name + "done");
    } catch (const Refusal &refusal) {
        log(Level::error, "refused: " + name + refusal.what());
        response.uiResult = refusal.code();
        nameModule(response, refusal.module());
    }
    return response;
}

} // namespace

rpc::Bytes answer(Engine &engine, rpc::Request request)
{
    const NW_RPC_RESPONSE_S response = respond(engine, request);
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&response);
    return {bytes, bytes + sizeof(response)};
}

} // namespace bmc::manager
