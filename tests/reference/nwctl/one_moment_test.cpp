// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What is shown beside a writer of several records: all of one change or nothing of it. */
#include <arpa/inet.h>
#include <nlohmann/json.hpp>
#include <set>

#include "platform/records.hpp"
#include "system.hpp"

namespace nwctl {
namespace {

using e2e::nwctl;
using nlohmann::json;

/* Both records say the same number: as the channel of each port, and as its address's last byte. */
void storeNumber(NW_IFC_STATE_DB_INFO_S state, NW_LAN_CFG_DB_INFO_S lan, std::uint8_t number)
{
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        state.aucChannel[port] = number;
        lan.astPort[port].aucIpv4Addr[NW_IPV4_SIZE - 1] = number;
    }
    const bmc::RecordWrite writes[] = {
        {NW_KEY_IFC_STATE, std::as_bytes(std::span(&state, 1))},
        {NW_KEY_LAN_CFG, std::as_bytes(std::span(&lan, 1))},
    };
    ASSERT_EQ(bmc::putRecords(writes), 0);
}

/* Until it is killed. */
void storeNumbers()
{
    constexpr std::uint8_t most = 250;
    NW_IFC_STATE_DB_INFO_S state{};
    NW_LAN_CFG_DB_INFO_S lan{};
    ASSERT_EQ(NW_LMDB_Get_IfcState(&state), NW_OK);
    ASSERT_EQ(LIB_NW_GetAllLanConfig(&lan), NW_OK);
    for (unsigned round = 0;; ++round) {
        storeNumber(state, lan, static_cast<std::uint8_t>(1 + round % most));
    }
}

unsigned lastByteOf(const std::string &address)
{
    return ntohl(inet_addr(address.c_str())) & 0xFF;
}

class OneMoment : public e2e::System, public ::testing::WithParamInterface<const char *> {};

TEST_P(OneMoment, IsShownBesideAWriter)
{
    stopManager();
    constexpr int rounds = 40;
    support::Child writer(storeNumbers);
    std::set<unsigned> seen;
    for (int round = 0; round < rounds; ++round) {
        const e2e::Outcome shown = nwctl(GetParam());
        ASSERT_EQ(shown.status, 0) << shown.errors;
        const json ports = json::parse(shown.output).at("ports");
        std::set<unsigned> numbers;
        for (const json &port : ports) {
            numbers.insert(port.at("channel").get<unsigned>());
            numbers.insert(lastByteOf(port.at("ipv4").at("address")));
        }
        EXPECT_EQ(numbers.size(), 1U) << "torn: " << json(numbers);
        seen.merge(numbers);
    }
    EXPECT_TRUE(writer.isRunning());
    EXPECT_GT(seen.size(), 5U) << "the writer stands still";
    writer.kill();
}

INSTANTIATE_TEST_SUITE_P(Commands, OneMoment, ::testing::Values("lan show --json", "status --json"),
                         [](const auto &row) { return row.index == 0 ? "LanShow" : "Status"; });

} // namespace
} // namespace nwctl
