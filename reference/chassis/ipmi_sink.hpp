// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Stands for the IPMI service: records the requests that arrive. */
#pragma once

#include "chassis/object_file.hpp"
#include "rpc/rpc_server.hpp"

namespace bmc::chassis {

class IpmiSink {
public:
    /* Requests that the file keeps, the latest ones. */
    static constexpr std::size_t capacity = 32;

    IpmiSink();

    /* Answers the response to one request of function 31. */
    rpc::Bytes answer(rpc::Request request);

private:
    void record(rpc::Request bytes);

    Json recorded_;
};

} // namespace bmc::chassis
