// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <cstring>

#include "network_mng/rpc.h"
#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Set : public samples::ConfiguredTest {
protected:
    /* The one request that was sent. */
    NW_LAN_SET_REQ_S sent() const
    {
        NW_LAN_SET_REQ_S request{};
        const auto calls = platform.callsTo("MRPC_Call");
        EXPECT_THAT(calls, SizeIs(1));
        if (calls.size() == 1) {
            EXPECT_EQ(calls[0].data.size(), sizeof(NW_RPC_REQUEST_S));
            EXPECT_EQ(calls[0].data[1], NW_CMD_SET_LAN);
            std::memcpy(&request, &calls[0].data[2], sizeof(request));
        }
        return request;
    }

    void expectNothingSent() const
    {
        EXPECT_THAT(platform.callsTo("MRPC_Call"), IsEmpty());
    }
};

TEST_F(Set, SendsTheChangeAndPrintsItsSentenceOnce)
{
    platform.answerRpc(fake::RpcAnswer::response(0, 1));

    const auto ran = samples::run({"lan", "set", "eth1", "--ipv4", "10.30.0.7/16"});

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, "LAN settings configured successfully for shared port, "
                       "IPv4 address: 10.30.0.7, IPv4 mask: 255.255.0.0.\n");
    EXPECT_THAT(ran.err, IsEmpty());

    NW_LAN_SET_REQ_S expected{};
    expected.stBitmap.aauiWord[1][0] = NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK;
    samples::storeIpv4(expected.stConfig.astPort[1].aucIpv4Addr, "10.30.0.7");
    samples::storeIpv4(expected.stConfig.astPort[1].aucIpv4Mask, "255.255.0.0");
    EXPECT_EQ(fake::bytesOf(sent()), fake::bytesOf(expected));
}

TEST_F(Set, AnswersInJson)
{
    const auto ran = samples::run({"lan", "set", "1", "--lan", "on", "--vlan", "30", "--json"});
    const auto document = ran.json();

    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(document["port"], "eth1");
    EXPECT_EQ(document["index"], 1);
    EXPECT_EQ(document["sentences"],
              nlohmann::json::array({"LAN settings configured successfully for shared port, "
                                     "LAN: Enabled, VLAN: Enabled, VLAN ID: 30."}));
}

TEST_F(Set, TakesAnOptionAgainForAnotherSetting)
{
    samples::run({"lan", "set", "eth1", "--ipv6", "on", "--ipv6", "2001:db8:9::1/64"});

    EXPECT_EQ(sent().stBitmap.aauiWord[1][0],
              NW_LAN_BIT_IPV6_ENABLE | NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX);
}

TEST_F(Set, RefusesTheSegmentOfAnotherPortBeforeSending)
{
    const auto ran = samples::run(
        {"lan", "set", "eth1", "--ipv4-gateway", "192.168.10.1", "--ipv4", "192.168.10.7/24"});

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_EQ(ran.err,
              "nwctl: --ipv4 '192.168.10.7/24': the change would make two networks overlap\n"
              "nwctl: result 0x1e000a27 (NW_ERR_IPV4_SAME_SEGMENT): the IPv4 address lies in the "
              "segment of another port or of the wireless interface; IPMI completion code 0xff\n");
    expectNothingSent();
}

TEST_F(Set, ReportsARefusalInJson)
{
    const auto ran = samples::run({"lan", "set", "eth1", "--ipv4", "192.168.10.7/24", "--json"});

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.err, IsEmpty());
    EXPECT_EQ(ran.json(), nlohmann::json::parse(R"({"error": {
        "status": 3,
        "option": "--ipv4",
        "value": "192.168.10.7/24",
        "reason": "the change would make two networks overlap",
        "code": "0x1e000a27",
        "name": "NW_ERR_IPV4_SAME_SEGMENT",
        "meaning": "the IPv4 address lies in the segment of another port or of the wireless interface",
        "completion": "0xff",
        "sentence": null}})"));
}

TEST_F(Set, RefusesTheSegmentOfTheWirelessInterface)
{
    platform.setWireless(true, "10.1.2.3");

    const auto ran = samples::run({"lan", "set", "0", "--ipv4", "10.1.2.200/25"});

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_THAT(ran.err, HasSubstr("0x1e000a27"));
    expectNothingSent();
}

TEST_F(Set, IgnoresAWirelessRecordThatCannotBeRead)
{
    platform.failWireless(-1, 0x01);

    EXPECT_EQ(samples::run({"lan", "set", "0", "--ipv4", "1.1.1.9/24"}).status, Exit::success);
}

TEST_F(Set, NamesTheOptionOfAnIpv6Conflict)
{
    NW_LAN_CFG_DB_INFO_S record = samples::lanRecord();
    record.astPort[0].ucIpv6Prefix = 64;
    platform.setRecord(NW_KEY_LAN_CFG, record);

    const auto error = samples::run({"lan", "set", "eth0", "--ipv6", "2001:db8:20::9/64", "--ipv6",
                                     "on", "--json"})
                           .json()["error"];

    EXPECT_EQ(error["option"], "--ipv6");
    EXPECT_EQ(error["code"], "0x1e000a28");
}

TEST_F(Set, WithoutTheCheckShowsTheManagersRefusal)
{
    platform.answerRpc(fake::RpcAnswer::response(NW_ERR_IPV4_SAME_SEGMENT, 1));

    const auto ran =
        samples::run({"lan", "set", "eth1", "--ipv4", "192.168.10.7/24", "--no-check"});

    EXPECT_EQ(ran.status, Exit::manager);
    EXPECT_EQ(ran.out, "Failed to configure LAN settings for shared port.\n");
    EXPECT_THAT(ran.err, HasSubstr("nwctl: --ipv4 '192.168.10.7/24': the network manager refused "
                                   "the change\nnwctl: result 0x1e000a27 "));
}

TEST_F(Set, PutsAnyOtherRefusalDownToThePort)
{
    platform.answerRpc(fake::RpcAnswer::response(0x1E000A23, 0));

    const auto error =
        samples::run({"lan", "set", "eth0", "--lan", "off", "--json"}).json()["error"];

    EXPECT_EQ(error["status"], 4);
    EXPECT_EQ(error["option"], "PORT");
    EXPECT_EQ(error["value"], "eth0");
    EXPECT_EQ(error["code"], "0x1e000a23");
    EXPECT_EQ(error["completion"], "0xc9");
    EXPECT_EQ(error["sentence"], "Failed to configure LAN settings for dedicated port.");
}

TEST_F(Set, TellsWhenTheManagerCannotBeReached)
{
    platform.answerRpc(fake::RpcAnswer::failure(-110));

    const auto ran = samples::run({"lan", "set", "eth1", "--lan", "off"});

    EXPECT_EQ(ran.status, Exit::transport);
    EXPECT_THAT(
        ran.err,
        HasSubstr(
            "PORT 'eth1': no answer from the network manager; "
            "the change may still take effect\nnwctl: result 0x81000013 (NW_ERR_RPC_TRANSPORT)"));
}

TEST_F(Set, ChecksValuesBeforeItReadsOrSends)
{
    const auto ran = samples::run({"lan", "set", "eth1", "--ipv4", "127.0.0.1/8"});

    EXPECT_EQ(ran.status, Exit::refused);
    EXPECT_EQ(ran.err,
              "nwctl: --ipv4 '127.0.0.1/8': a loopback address\n"
              "nwctl: result 0x81000003 (NW_ERR_OUT_OF_RANGE): parameter out of range; IPMI "
              "completion code 0xcc\n");
    EXPECT_THAT(platform.callsTo("DB_Get"), IsEmpty());
    expectNothingSent();
}

TEST_F(Set, NeedsTheStoredRecordForTheCheckAlone)
{
    platform.failGet(NW_KEY_LAN_CFG, -5);

    EXPECT_EQ(samples::run({"lan", "set", "eth1", "--lan", "on", "--no-check"}).status,
              Exit::success);
    EXPECT_EQ(samples::run({"lan", "set", "eth1", "--ipv4", "10.9.9.9/24"}).status, Exit::internal);
}

} // namespace
} // namespace nwctl
