#include "commands.hpp"

#include <algorithm>
#include <cstring>

#include "lan_set.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

struct Command {
    std::uint8_t code;
    const char *name;
    void (*carryOut)(Manager &manager, const NW_RPC_REQUEST_S &request,
                     NW_RPC_RESPONSE_S &response);
};

constexpr Command commands[] = {
    {NW_CMD_SET_LAN, "set LAN", setLan},
};

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

void carryOut(Manager &manager, rpc::Request bytes, NW_RPC_RESPONSE_S &response)
{
    const NW_RPC_REQUEST_S request = parse(bytes);
    const Command &command = commandOf(request.ucCmd);
    try {
        command.carryOut(manager, request, response);
    } catch (const Refusal &refusal) {
        throw Refusal(refusal.code(), std::string(command.name) + ": " + refusal.what());
    }
    log(Level::information, std::string(command.name) + ": done");
}

} // namespace

rpc::Bytes answer(Manager &manager, rpc::Request request)
{
    NW_RPC_RESPONSE_S response{};
    try {
        carryOut(manager, request, response);
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("refused: ") + refusal.what());
        response.uiResult = refusal.code();
    }

    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&response);
    return {bytes, bytes + sizeof(response)};
}

} // namespace bmc::manager
