// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "commands.hpp"

#include <algorithm>
#include <cstring>

#include "arp.hpp"
#include "auto_negotiation.hpp"
#include "combined.hpp"
#include "dns.hpp"
#include "host_name.hpp"
#include "lan_set.hpp"
#include "lldp.hpp"
#include "net_mode.hpp"
#include "refusal.hpp"
#include "restart.hpp"

namespace bmc::manager {

namespace {

struct Command {
    std::uint8_t code;
    const char *name;
    /* Checks the request and notes in the draft what it asks for; throws Refusal. */
    void (*edit)(Draft &draft, Payload payload);
};

/* clang-format off */
constexpr Command commands[] = {
    {NW_CMD_SET_HOSTNAME,    "set host name",         editHostName},
    {NW_CMD_SET_DNS,         "set DNS",               editDns},
    {NW_CMD_SET_LLDP,        "set LLDP",              editLldp},
    {NW_CMD_SET_LAN,         "set LAN",               editLan},
    {NW_CMD_SET_NET_MODE,    "set network port mode", editNetMode},
    {NW_CMD_SUSPEND_ARP,     "suspend ARP",           editArpSuspend},
    {NW_CMD_UPDATE_ARP,      "update ARP status",     editArpStatus},
    {NW_CMD_RESUME_ARP,      "resume ARP",            editArpResume},
    {NW_CMD_RESTART,         "restart network",       editRestart},
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

std::uint32_t detailOf(const Draft &draft, std::uint32_t module)
{
    const auto named = draft.details.find(module);
    const auto detail = named != draft.details.end() ? named : draft.details.begin();
    return detail != draft.details.end() ? detail->second : 0;
}

void carryOut(Manager &manager, const Command &command, Draft &draft, Payload payload)
{
    try {
        command.edit(draft, payload);
        manager.change(draft);
        log(Level::information, std::string(command.name) + ": done");
        draft.response.uiDetail = detailOf(draft, 0);
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("refused: ") + command.name + ": " + refusal.what());
        draft.response = {};
        draft.response.uiResult = refusal.code();
        draft.response.uiDetail = detailOf(draft, refusal.module());
        nameModule(draft.response, refusal.module());
    }
}

NW_RPC_RESPONSE_S respond(Manager &manager, rpc::Request bytes)
{
    try {
        const NW_RPC_REQUEST_S request = parse(bytes);
        const Command &command = commandOf(request.ucCmd);
        Draft draft = manager.draft();
        carryOut(manager, command, draft, request.aucPayload);
        return draft.response;
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("refused: ") + refusal.what());
        NW_RPC_RESPONSE_S response{};
        response.uiResult = refusal.code();
        return response;
    }
}

} // namespace

rpc::Bytes answer(Manager &manager, rpc::Request request)
{
    const NW_RPC_RESPONSE_S response = respond(manager, request);
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&response);
    return {bytes, bytes + sizeof(response)};
}

} // namespace bmc::manager
