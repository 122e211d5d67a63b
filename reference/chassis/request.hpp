// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Requests and responses as the services here take and give them. */
#pragma once

#include <functional>
#include <stdexcept>

#include "network_mng/rpc.h"
#include "rpc/rpc_server.hpp"
#include "settings/codes.hpp"

namespace bmc::chassis {

using settings::Result;

/* Why a request isn't carried out. */
class Refused : public std::runtime_error {
public:
    Refused(Result result, const std::string &subject)
        : std::runtime_error(subject + ": " + settings::meaningOf(result)), result_(result)
    {
    }

    Result result() const
    {
        return result_;
    }

private:
    Result result_;
};

/* Throws Refused when the bytes are no request. */
NW_RPC_REQUEST_S parseRequest(rpc::Request bytes);

/* Carries a request out and answers the response: 0, the code of what was refused, or that of a
 * failed database for any other exception. name stands for the service in the log. */
rpc::Bytes respond(const char *name, const std::function<void()> &carryOut);

} // namespace bmc::chassis
