// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager_system.hpp"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>

#include <arpa/inet.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include "bmc_platform.h"
#include "manager/engine/store.hpp"

namespace nwtest {

namespace {

using nlohmann::json;

/* Members of the tool's answer about one interface. */
json ipJson(const std::string &arguments)
{
    const std::string text = shell("ip -j " + arguments);
    return text.empty() ? json::array() : json::parse(text);
}

} // namespace

Outcome runManager(const std::vector<std::string> &arguments,
                   const std::vector<std::string> &environment)
{
    std::vector<std::string> command{NWMANAGERD};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return support::runProgram(command, environment);
}

LanRequest &LanRequest::select(unsigned port, std::uint32_t word0, std::uint32_t word1)
{
    payload_.stBitmap.aauiWord[port][0] |= word0;
    payload_.stBitmap.aauiWord[port][1] |= word1;
    return *this;
}

NW_LAN_SET_PORT_S &LanRequest::port(unsigned port)
{
    return payload_.stConfig.astPort[port];
}

std::vector<std::uint8_t> LanRequest::bytes() const
{
    std::vector<std::uint8_t> request(sizeof(NW_RPC_REQUEST_S));
    request[1] = NW_CMD_SET_LAN;
    std::memcpy(request.data() + 2, &payload_, sizeof(payload_));
    return request;
}

std::vector<std::uint8_t> raw(const std::string &text)
{
    const bool isV6 = text.find(':') != std::string::npos;
    std::vector<std::uint8_t> bytes(isV6 ? NW_IPV6_SIZE : NW_IPV4_SIZE);
    EXPECT_EQ(inet_pton(isV6 ? AF_INET6 : AF_INET, text.c_str(), bytes.data()), 1) << text;
    return bytes;
}

void put(std::uint8_t *field, const std::string &address)
{
    std::ranges::copy(raw(address), field);
}

std::optional<NW_RPC_RESPONSE_S> call(std::span<const std::uint8_t> request, std::uint32_t function)
{
    MRPC_MSG *message = nullptr;
    std::optional<NW_RPC_RESPONSE_S> response;
    if (MRPC_Call(NW_RPC_SERVICE_NETWORK, function, static_cast<std::uint32_t>(request.size()),
                  request.data(), NW_RPC_TIMEOUT_MS, &message) == 0 &&
        message != nullptr && message->pData != nullptr) {
        response.emplace();
        std::memcpy(&*response, message->pData, sizeof(*response));
    }
    MRPC_MsgFree(&message);
    return response;
}

void expectAnswer(const LanRequest &request, std::uint32_t result, std::uint32_t detail)
{
    const auto response = call(request.bytes());
    ASSERT_TRUE(response.has_value());
    const std::uint32_t gotResult = response->uiResult;
    const std::uint32_t gotDetail = response->uiDetail;
    EXPECT_EQ(gotResult, result) << std::hex << gotResult;
    EXPECT_EQ(gotDetail, detail);
}

NW_LAN_CFG_DB_INFO_S storedLan()
{
    return bmc::manager::Store().read(bmc::manager::lanRecord);
}

NW_IFC_STATE_DB_INFO_S storedState()
{
    return bmc::manager::Store().read(bmc::manager::ifcStateRecord);
}

std::uint8_t storedStatus()
{
    return bmc::manager::Store().read(bmc::manager::netStatusRecord).ucSetInProgress;
}

void putLan(const NW_LAN_CFG_DB_INFO_S &lan)
{
    bmc::manager::Store().put(bmc::manager::lanRecord, lan);
}

std::vector<std::string> kernelAddresses(const std::string &interface)
{
    std::vector<std::string> addresses;
    for (const json &link : ipJson("address show dev " + interface)) {
        for (const json &address : link["addr_info"]) {
            if (address["scope"] == "global") {
                addresses.push_back(address["local"].get<std::string>() + "/" +
                                    std::to_string(address["prefixlen"].get<int>()));
            }
        }
    }
    std::ranges::sort(addresses);
    return addresses;
}

std::vector<std::string> kernelGateways(const std::string &interface)
{
    std::vector<std::string> gateways;
    for (const char *family : {"-4", "-6"}) {
        for (const json &route :
             ipJson(std::string(family) + " route show default dev " + interface)) {
            gateways.push_back(route["gateway"].get<std::string>() + " " +
                               std::to_string(route["metric"].get<int>()));
        }
    }
    std::ranges::sort(gateways);
    return gateways;
}

std::vector<std::string> kernelRoutes(const std::string &interface)
{
    std::vector<std::string> routes;
    for (const char *family : {"-4", "-6"}) {
        for (const json &route :
             ipJson(std::string(family) + " route show proto 124 dev " + interface)) {
            const std::string gateway = route.value("gateway", "");
            routes.push_back(route["dst"].get<std::string>() +
                             (gateway.empty() ? "" : " via " + gateway) + " " +
                             std::to_string(route["metric"].get<int>()));
        }
    }
    std::ranges::sort(routes);
    return routes;
}

bool isUp(const std::string &interface)
{
    const json links = ipJson("link show dev " + interface);
    return std::ranges::any_of(links.at(0)["flags"], [](const json &flag) { return flag == "UP"; });
}

std::string kernelSnapshot()
{
    return shell("ip -o link | sed 's/ state [A-Z]*//; s/,LOWER_UP//; s/NO-CARRIER,//' &&"
                 "ip -o address | sed 's/ tentative//; s/ dadfailed//' | grep -v 'inet6 fe80' &&"
                 "ip -4 route show table all | sed 's/ linkdown//' | sort &&"
                 "ip -6 route show table main | sed 's/ linkdown//' | grep -v fe80::/64 | sort");
}

void expectUntouched(const LanRequest &request, std::uint32_t result, std::uint32_t detail)
{
    const auto lan = storedLan();
    const auto state = storedState();
    const std::string kernel = kernelSnapshot();

    expectAnswer(request, result, detail);

    const auto lanAfter = storedLan();
    const auto stateAfter = storedState();
    EXPECT_EQ(std::memcmp(&lan, &lanAfter, sizeof(lan)), 0);
    EXPECT_EQ(std::memcmp(&state, &stateAfter, sizeof(state)), 0);
    EXPECT_EQ(storedStatus(), 0);
    EXPECT_EQ(kernel, kernelSnapshot());
}

void ManagerTest::SetUp()
{
    for (const char *name : {"eth0 peer0", "eth1 peer1", "bond0 peer2"}) {
        std::string near;
        std::string far;
        std::istringstream(name) >> near >> far;
        shell("ip link del " + near + " 2>/dev/null; ip link add " + near +
              " type veth peer name " + far + " && ip link set " + far + " up");
    }
    unlink((std::string(std::getenv("BMC_STATE_DIR")) + "/wireless.json").c_str());
    configure(separatePorts);
    startManager();
}

void ManagerTest::configure(const std::string &json)
{
    const std::string path = "/run/config.json";
    std::ofstream(path) << json;
    const Outcome outcome = runManager({"--init", path, "--force"});
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
}

void ManagerTest::startManager()
{
    manager_.emplace(std::vector<std::string>{NWMANAGERD},
                     std::vector<std::string>{"BMC_LOG_LEVEL=6", "BMC_LOG_TARGET=stderr"});
    /* A request that selects nothing changes nothing. */
    const bool isReady = eventually(
        [this] { return !manager_->isRunning() || call(LanRequest().bytes()).has_value(); });
    ASSERT_TRUE(isReady && manager_->isRunning()) << manager_->errorText();
}

void ManagerTest::stopManager()
{
    EXPECT_EQ(manager_->stop(), 0) << manager_->errorText();
}

} // namespace nwtest
