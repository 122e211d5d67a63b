// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/commands.hpp"

#include <algorithm>
#include <cstring>

#include "manager/log.hpp"
#include "manager/service/edits.hpp"
#include "network_mng/settings.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* Longest delay of a restart. */
constexpr std::uint32_t longestDelay = 3600;

/* Response offset of the ARP status, and the port that the request names. */
struct Status {
    std::size_t at = 0; /* 0: none is answered */
    std::uint32_t (*portOf)(Payload payload) = nullptr;
};

std::uint32_t suspendedPort(Payload payload)
{
    return contentOf<NW_ARP_SUSPEND_REQ_S>(payload).ucPort;
}

std::uint32_t updatedPort(Payload payload)
{
    return contentOf<NW_ARP_UPDATE_REQ_S>(payload).uiArpArg0;
}

struct Command {
    std::uint8_t code;
    const char *name;
    void (*edit)(Change &change, Payload payload); /* null: a restart */
    Status status{};
};

/* clang-format off */
constexpr Command commands[] = {
    {NW_CMD_SET_HOSTNAME,    "set host name",         editHostName},
    {NW_CMD_SET_DNS,         "set DNS",               editDns},
    {NW_CMD_SET_LLDP,        "set LLDP",              editLldp},
    {NW_CMD_SET_LAN,         "set LAN",               editLan},
    {NW_CMD_SET_NET_MODE,    "set network port mode", editNetMode},
    {NW_CMD_SUSPEND_ARP,     "suspend ARP",           editArpSuspend, {13, suspendedPort}},
    {NW_CMD_UPDATE_ARP,      "update ARP status",     editArpStatus,  {12, updatedPort}},
    {NW_CMD_RESUME_ARP,      "resume ARP",            editArpResume},
    {NW_CMD_RESTART,         "restart network",       nullptr},
    {NW_CMD_SET_AN,          "set auto-negotiation",  editLinkModes},
    {NW_CMD_SET_LAN_REVERSE, "switch ports over",     editLanReverse},
    {NW_CMD_SET_ALL,         "set network",           editAll},
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
    NW_RPC_REQUEST_S request;
    if (bytes.size() != sizeof(request)) {
        throw Refusal(Result::badRequest, std::to_string(bytes.size()) + " bytes");
    }
    std::memcpy(&request, bytes.data(), sizeof(request));
    if (request.ucReqHead != 0) {
        throw Refusal(Result::badRequest, "head byte");
    }
    return request;
}

/* Operation-log word of the module that failed, at the beginning of the response's data. */
void nameModule(NW_RPC_RESPONSE_S &response, std::uint32_t module)
{
    std::memcpy(response.aucResData, &module, sizeof(module));
}

/* First port that the request selects for the module, or for any; 0 without ports. */
std::uint32_t detailOf(const Command &command, const Scope &scope, Payload payload,
                       std::uint32_t module)
{
    const auto first = [&scope](auto isAsked) {
        const auto found = std::ranges::find_if(scope.selected, [&](const auto &entry) {
            return entry.second != wholeMachine && isAsked(entry.first);
        });
        return found != scope.selected.end() ? found->second : wholeMachine;
    };
    const unsigned named = first([module](std::uint32_t each) { return each == module; });
    const unsigned any = first([](std::uint32_t) { return true; });
    const std::uint32_t port = command.status.at != 0  ? command.status.portOf(payload)
                               : named != wholeMachine ? named
                                                       : any;
    return port < NW_PORT_COUNT ? port : 0;
}

void restart(Engine &engine, Payload payload)
{
    const auto seconds = contentOf<std::uint32_t>(payload);
    require(seconds <= longestDelay, Result::badDelay, "restart");
    if (seconds == 0) {
        engine.restart();
    } else {
        engine.restartIn(std::chrono::seconds(seconds));
    }
}

void addStatus(NW_RPC_RESPONSE_S &response, const Command &command, const Change &change,
               Payload payload)
{
    if (command.status.at != 0) {
        const NW_LAN_CFG_PORT_S &port = change.after.lan.astPort[command.status.portOf(payload)];
        response.aucResData[command.status.at - offsetof(NW_RPC_RESPONSE_S, aucResData)] =
            settings::suspendedArp(port);
    }
}

NW_RPC_RESPONSE_S carryOut(Engine &engine, const Command &command, Payload payload)
{
    NW_RPC_RESPONSE_S response{};
    Change change;
    try {
        change.after = engine.present();
        if (command.edit == nullptr) {
            restart(engine, payload);
        } else {
            command.edit(change, payload);
            engine.change(change);
            addStatus(response, command, change, payload);
        }
        log(Level::information, std::string(command.name) + ": done");
        response.uiDetail = detailOf(command, change.scope, payload, 0);
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("refused: ") + command.name + ": " + refusal.what());
        response.uiResult = refusal.code();
        response.uiDetail = detailOf(command, change.scope, payload, refusal.module());
        nameModule(response, refusal.module());
    }
    return response;
}

NW_RPC_RESPONSE_S respond(Engine &engine, rpc::Request bytes)
{
    try {
        const NW_RPC_REQUEST_S request = parse(bytes);
        return carryOut(engine, commandOf(request.ucCmd), request.aucPayload);
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("refused: ") + refusal.what());
        NW_RPC_RESPONSE_S response{};
        response.uiResult = refusal.code();
        return response;
    }
}

} // namespace

rpc::Bytes answer(Engine &engine, rpc::Request request)
{
    const NW_RPC_RESPONSE_S response = respond(engine, request);
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&response);
    return {bytes, bytes + sizeof(response)};
}

} // namespace bmc::manager
