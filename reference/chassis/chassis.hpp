// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The chassis manager: keeps what the blade sends and publishes what the blade reads. */
#pragma once

#include "chassis/object_file.hpp"
#include "rpc/rpc_server.hpp"

namespace bmc::chassis {

class Chassis {
public:
    /* Takes up what an earlier run has kept, publishes empty records where there are none, and then
     * the link as connected. Throws std::runtime_error when the database fails. */
    Chassis();
    /* Publishes the link as down. */
    ~Chassis();
    Chassis(const Chassis &) = delete;
    Chassis &operator=(const Chassis &) = delete;

    /* Answers the response to a status request (function 30) and to the blade configuration byte
     * (function 51). */
    rpc::Bytes answerStatus(rpc::Request request);
    rpc::Bytes answerBladeConfig(rpc::Request request);

private:
    void keep(const char *name, const Json &content);

    Json received_;
};

} // namespace bmc::chassis
