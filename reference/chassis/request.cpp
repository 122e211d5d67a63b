// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "chassis/request.hpp"

#include <cstring>

#include "chassis/chassis_log.hpp"

namespace bmc::chassis {

NW_RPC_REQUEST_S parseRequest(rpc::Request bytes)
{
    NW_RPC_REQUEST_S request;
    if (bytes.size() != sizeof(request)) {
        throw Refused(Result::badRequest, std::to_string(bytes.size()) + " bytes");
    }
    std::memcpy(&request, bytes.data(), sizeof(request));
    if (request.ucReqHead != 0) {
        throw Refused(Result::badRequest, "head byte " + std::to_string(request.ucReqHead));
    }
    return request;
}

rpc::Bytes respond(const char *name, const std::function<void()> &carryOut)
{
    const auto failed = [name](Result result, const std::exception &error) {
        log(Level::error, std::string(name) + ": refused: " + error.what());
        return static_cast<std::uint32_t>(result);
    };

    NW_RPC_RESPONSE_S response{};
    try {
        carryOut();
    } catch (const Refused &refused) {
        response.uiResult = failed(refused.result(), refused);
    } catch (const std::exception &error) {
        response.uiResult = failed(Result::databaseFailed, error);
    }
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&response);
    return {bytes, bytes + sizeof(response)};
}

} // namespace bmc::chassis
