// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "chassis/ipmi_sink.hpp"

#include "chassis/chassis_log.hpp"
#include "chassis/request.hpp"
#include "common/hex.hpp"
#include "common/state_directory.hpp"

namespace bmc::chassis {

namespace {

std::filesystem::path recordFile()
{
    return stateDirectory() / "ipmi.json";
}

bool isWellFormed(const Json &recorded)
{
    return recorded.contains("count") && recorded["count"].is_number_unsigned() &&
           recorded.contains("requests") && recorded["requests"].is_array();
}

} // namespace

IpmiSink::IpmiSink() : recorded_(loadObject(recordFile()))
{
    if (!isWellFormed(recorded_)) {
        recorded_ = {{"count", 0U}, {"requests", Json::array()}};
    }
}

void IpmiSink::record(rpc::Request bytes)
{
    const NW_RPC_REQUEST_S request = parseRequest(bytes);
    Json changed = recorded_;
    Json &requests = changed["requests"];

    changed["count"] = changed["count"].get<std::uint64_t>() + 1;
    while (requests.size() >= capacity) {
        requests.erase(requests.begin());
    }
    requests.push_back({{"number", changed["count"]},
                        {"command", request.ucCmd},
                        {"payload", hexText(withoutZeroTail(request.aucPayload))}});
    storeObject(recordFile(), changed);
    recorded_ = std::move(changed);
}

rpc::Bytes IpmiSink::answer(rpc::Request bytes)
{
    return respond("IPMI", [this, bytes] { record(bytes); });
}

} // namespace bmc::chassis
