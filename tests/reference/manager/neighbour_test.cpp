// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* An IPv4 address that a neighbour has is not taken, whichever way it comes in. */
#include <thread>

#include "far_host.hpp"
#include "requests.hpp"

namespace nwtest {

namespace {

constexpr std::uint32_t addressTaken = 0x1E000022;

/* A system of its own at the far end of a port's wire. */
struct Neighbour : support::FarHost {
    Neighbour(const std::string &interface, const std::string &address) : FarHost(interface)
    {
        own(address + "/24");
    }
};

LanRequest addressSet(const std::string &address)
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(1).aucIpv4Addr, address);
    return request;
}

LanRequest enable(bool isEnabled)
{
    LanRequest request;
    request.select(1, NW_LAN_BIT_LAN_ENABLE);
    request.port(1).ucLanEnable = isEnabled;
    return request;
}

class NeighbourTest : public ManagerTest {};

} // namespace

TEST_F(NeighbourTest, AddressIsNotTaken)
{
    const Neighbour neighbour("peer1", "192.168.20.9");
    expectUntouched(addressSet("192.168.20.9"), addressTaken, 1);
    EXPECT_NE(manager_->errorText().find("192.168.20.9/24 on eth1"), std::string::npos);
    expectAnswer(addressSet("192.168.20.8"), NW_OK, 1);
}

/* Set while the port is down it is asked for when the port goes up. */
TEST_F(NeighbourTest, NorWhenThePortComesUp)
{
    const Neighbour neighbour("peer1", "192.168.20.9");
    expectAnswer(enable(false), NW_OK, 1);
    expectAnswer(addressSet("192.168.20.9"), NW_OK, 1);
    expectUntouched(enable(true), addressTaken, 1);
    EXPECT_FALSE(isUp("eth1"));
}

/* As with real ports, whose carrier comes some time after the link goes up. */
TEST_F(NeighbourTest, NorWhenTheCarrierComesLater)
{
    const Neighbour neighbour("peer1", "192.168.20.9");
    expectAnswer(enable(false), NW_OK, 1);
    expectAnswer(addressSet("192.168.20.9"), NW_OK, 1);
    neighbour.plug(false);
    std::thread plugged([&] {
        EXPECT_TRUE(eventually([] { return isUp("eth1"); }));
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        neighbour.plug(true);
    });
    const auto response = call(enable(true).bytes());
    plugged.join();
    ASSERT_TRUE(response.has_value());
    EXPECT_EQ(response->uiResult, addressTaken);
    EXPECT_FALSE(isUp("eth1"));
}

/* Nor in the other network port mode. */
TEST_F(NeighbourTest, NorByTheBond)
{
    const Neighbour neighbour("peer2", "192.168.30.2");
    stopManager();
    std::string json = separatePorts;
    const std::string bond = R"({"lan": false})";
    json.replace(json.find(bond), bond.size(),
                 R"({"lan": true, "ipv4-enabled": true, "ipv4": "192.168.30.2/24"})");
    configure(json);
    startManager();
    NW_NET_MODE_SET_S set{};
    set.ucSetMask = 1;
    set.ucNetMode = 1;
    /* A link that was up once looks different ever after. */
    shell("ip link set bond0 up && ip link set bond0 down");
    expectRefused(requestOf(NW_CMD_SET_NET_MODE, set), addressTaken);
}

/* What the configuration had already is not asked for again. */
TEST_F(NeighbourTest, OwnAddressStays)
{
    const Neighbour neighbour("peer1", "192.168.20.2");
    shell("ip address flush dev eth1");
    expectAnswer(requestOf(NW_CMD_RESTART, std::uint32_t{0}), NW_OK);
    EXPECT_EQ(kernelAddresses("eth1").size(), 2U);
}

/* Without a link partner there is nobody to ask. */
TEST_F(NeighbourTest, WithoutCarrier)
{
    shell("ip link set peer1 down");
    expectAnswer(addressSet("192.168.20.9"), NW_OK, 1);
}

} // namespace nwtest
