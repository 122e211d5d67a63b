// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The active probe for the gateway's address on a scripted socket: frames, waits, answers,
// failures.
#include "gateway_fixture.hpp"

namespace {

using gateway::Attempt;
using gateway::Lines;
using gateway::script;
using gateway::untouched;
using support::Bytes;
using support::debugLine;
using support::errorLine;
using support::operator+;

const Lines opening = {errorLine("fopen failed for /proc/net/arp\n"),
                       debugLine("Dropping To original socket method")};
const Lines answered = {gateway::infoLine("RecvPack success.")};
const std::string notReceived = errorLine("Recv message failed.");
const Lines foreign = {errorLine("RecvPack no dstmac."), notReceived};
const Lines silent = {errorLine("Get gateway mac by arp select other failed"), notReceived};

const std::vector<std::string> prepared = {"fopen /proc/net/arp", "socket 17 2 0", "bind 777 20",
                                           "getsockname 777 20"};
const std::vector<std::string> exchange = {"sendto 777 28 0 20", "select 778 2 0 1 1 1",
                                           "recvfrom 777 4096 0 20"};
const std::vector<std::string> unheard = {"sendto 777 28 0 20", "select 778 2 0 1 1 1"};
const std::vector<std::string> closed = {"close 777"};

// An ARP packet as it comes from the wire.
Bytes packet(const std::string &sender, std::uint8_t lastByteOfMac, std::uint8_t operation = 2)
{
    Bytes bytes = {0, 1, 8, 0, 6, 4, 0, operation, 0x02, 0, 0, 0, 0, lastByteOfMac};
    const support::Ipv4 address = support::ipv4(sender);
    bytes.insert(bytes.end(), address.begin(), address.end());
    bytes.resize(28, 0x5A);
    return bytes;
}
Attempt answer(const Bytes &bytes)
{
    return {.packet = bytes};
}
const std::string own = "10.0.1.254";

class GatewayProbe : public gateway::GatewayTest {
protected:
    GatewayProbe()
    {
        script().cacheOpens = false;
    }
    void expectCalls(const std::vector<std::string> &behindTheOpening)
    {
        EXPECT_EQ(script().calls, prepared + behindTheOpening);
    }
};

TEST_F(GatewayProbe, SendsTwoRequestsToTheLink)
{
    script().attempts = {answer(packet(own, 1)), answer(packet(own, 2))};
    EXPECT_EQ(ask(1), "02:00:00:00:00:02");
    EXPECT_EQ(support::loggedLines(), opening + answered + answered);
    expectCalls(exchange + exchange + closed);

    const Bytes request = {0,    1,    8,    0,    6,    4,    0, 1, // Ethernet, IPv4, request
                           0x02, 0x11, 0x22, 0x33, 0x44, 0x55,       // own address
                           10,   0,    1,    2,                      //
                           0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,       // asked for
                           10,   0,    1,    254};
    EXPECT_EQ(script().requests, (std::vector<Bytes>{request, request}));

    const Bytes bound = {17, 0, 8, 6, 12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(support::toBytes(script().bound.value()), bound);

    const Bytes broadcast = {17, 0, 8, 6, 12, 0, 0, 0, 1, 0, 4, 6};
    for (const sockaddr_ll &destination : script().destinations) {
        const Bytes bytes = support::toBytes(destination);
        EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 12), broadcast);
        EXPECT_EQ(Bytes(bytes.begin() + 12, bytes.begin() + 18), Bytes(6, 0xFF));
    }
}

TEST_F(GatewayProbe, EveryPortHasItsOwnInterfaceAndAddresses)
{
    for (std::uint8_t port = 0; port < 3; ++port) {
        script() = gateway::Script{};
        script().cacheOpens = false;
        script().attempts = {{.ready = 0}, {.ready = 0}};
        ask(port);
        EXPECT_EQ(script().bound.value().sll_ifindex, 11 + port);
        const Bytes &request = script().requests.at(0);
        EXPECT_EQ(Bytes(request.begin() + 14, request.begin() + 18), (Bytes{10, 0, port, 2}));
        EXPECT_EQ(Bytes(request.begin() + 24, request.end()), (Bytes{10, 0, port, 254}));
    }
}

// The lengths of the hardware addresses follow the interface.
TEST_F(GatewayProbe, RequestFollowsTheAddressLength)
{
    for (const std::uint8_t length : Bytes{1, 8}) {
        script() = gateway::Script{};
        script().cacheOpens = false;
        script().addressLength = length;
        script().attempts = {{.ready = 0}, {.ready = 0}};
        EXPECT_EQ(ask(1), untouched);

        Bytes request = {0, 1, 8, 0, length, 4, 0, 1};
        request.insert(request.end(), gateway::ownMac, gateway::ownMac + length);
        request.insert(request.end(), {10, 0, 1, 2});
        request.insert(request.end(), length, 0xFF);
        request.insert(request.end(), {10, 0, 1, 254});
        EXPECT_EQ(script().requests.at(0), request);
        const Bytes destination = support::toBytes(script().destinations.at(0));
        EXPECT_EQ(Bytes(destination.begin() + 12, destination.begin() + 12 + length),
                  Bytes(length, 0xFF));
    }
}

// An address length that no link address holds overruns nothing.
TEST_F(GatewayProbe, OverlongAddressLengthDoesNoHarm)
{
    for (const std::uint8_t length : Bytes{9, 20, 32, 255}) {
        script() = gateway::Script{};
        script().cacheOpens = false;
        script().addressLength = length;
        script().attempts = {{.ready = 0}, {.ready = 0}};
        EXPECT_EQ(ask(1), untouched);
        EXPECT_EQ(script().calls.back(), "close 777");
    }
}

struct Exchange {
    std::string name;
    Attempt first;
    Attempt second;
    std::string expected;
    Lines lines;
    std::vector<std::string> calls;
};
class GatewayExchange : public GatewayProbe, public ::testing::WithParamInterface<Exchange> {};

TEST_P(GatewayExchange, IsReported)
{
    script().attempts = {GetParam().first, GetParam().second};
    EXPECT_EQ(ask(1), GetParam().expected);
    EXPECT_EQ(support::loggedLines(), opening + GetParam().lines);
    expectCalls(GetParam().calls + closed);
    EXPECT_TRUE(script().attempts.empty());
}

/* clang-format off */
const Attempt good = answer(packet(own, 1));
const Attempt other = answer(packet("10.0.1.25", 9));
const Attempt nothing = {.ready = 0, .isSet = false};
const Attempt notSent = {.sent = -1};
const Attempt broken = {.ready = -1};
const Attempt notSet = {.isSet = false};
const Attempt notRead = {.fails = true, .packet = packet(own, 7)};
const std::vector<std::string> sendOnly = {"sendto 777 28 0 20"};

INSTANTIATE_TEST_SUITE_P(Rows, GatewayExchange, ::testing::Values(
    Exchange{"Silent",         nothing, nothing, untouched, silent + silent, unheard + unheard},
    Exchange{"FirstAnswers",   good, nothing, "02:00:00:00:00:01", answered + silent, exchange + unheard},
    Exchange{"SecondAnswers",  nothing, good, "02:00:00:00:00:01", silent + answered, unheard + exchange},
    Exchange{"SecondOverwrites", good, answer(packet(own, 3)), "02:00:00:00:00:03", answered + answered, exchange + exchange},
    Exchange{"Foreign",        other, other, untouched, foreign + foreign, exchange + exchange},
    Exchange{"ForeignKeepsTheFirst", good, other, "02:00:00:00:00:01", answered + foreign, exchange + exchange},
    Exchange{"ForeignThenAnswer", other, good, "02:00:00:00:00:01", foreign + answered, exchange + exchange},
    Exchange{"UnsolicitedRequest", answer(packet(own, 5, 1)), nothing, "02:00:00:00:00:05", answered + silent, exchange + unheard},
    Exchange{"AnyOperation",   answer(packet(own, 6, 99)), nothing, "02:00:00:00:00:06", answered + silent, exchange + unheard},
    Exchange{"ShortestUsefulPacket", answer([] { Bytes bytes = packet(own, 4); bytes.resize(18); return bytes; }()), nothing,
             "02:00:00:00:00:04", answered + silent, exchange + unheard},
    Exchange{"LargestPacket",  answer([] { Bytes bytes = packet(own, 4); bytes.resize(4096, 0x77); return bytes; }()), nothing,
             "02:00:00:00:00:04", answered + silent, exchange + unheard},
    Exchange{"EmptyPacket",    answer({}), nothing, untouched, foreign + silent, exchange + unheard},
    Exchange{"CutPacketBehindGoodOne", good, answer(Bytes(17, 0)), "02:00:00:00:00:01", answered + foreign, exchange + exchange},
    Exchange{"EmptyPacketBehindGoodOne", good, answer({}), "02:00:00:00:00:01", answered + foreign, exchange + exchange},
    Exchange{"NotSent",        notSent, notSent, untouched, {errorLine("Send message failed."), errorLine("Send message failed.")}, sendOnly + sendOnly},
    Exchange{"NotSentOnce",    notSent, good, "02:00:00:00:00:01", Lines{errorLine("Send message failed.")} + answered, sendOnly + exchange},
    Exchange{"SelectFails",    broken, good, "02:00:00:00:00:01",
             Lines{errorLine("Get gateway mac by arp select failed."), notReceived} + answered, unheard + exchange},
    Exchange{"BitNotSet",      notSet, notSet, untouched, {}, unheard + unheard},
    Exchange{"NotReceived",    notRead, nothing, untouched, Lines{errorLine("Failed in Recvfrom"), notReceived} + silent, exchange + unheard}),
    fake::RowName{});
/* clang-format on */

// The reply is that of the configured gateway alone, and only at its fixed place.
TEST_F(GatewayProbe, SenderAddressIsAtItsPlace)
{
    Bytes shifted = packet("10.0.1.25", 9);
    support::put(shifted, 24, support::ipv4(own));
    script().attempts = {answer(shifted), answer(packet("10.0.1.255", 9))};
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), opening + foreign + foreign);
}

// A match on a last line without a newline: the address stands, and the probe runs all the same.
TEST_F(GatewayProbe, FollowsAMatchAtTheEndOfTheCache)
{
    script().cacheOpens = true;
    script().cache = {{"heading\n"}, {own + " 0x1 0x2 02:aa:bb:cc:dd:0e * eth1"}};
    script().attempts = {nothing, nothing};
    EXPECT_EQ(ask(1), "02:aa:bb:cc:dd:0e");
    EXPECT_EQ(script().requests.size(), 2U);

    script().attempts = {nothing, good};
    EXPECT_EQ(ask(1), "02:00:00:00:00:01");
}

TEST_F(GatewayProbe, NoSocketEndsIt)
{
    script().socketOpens = false;
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), opening + Lines{errorLine("Open socket faild.")});
    EXPECT_EQ(script().calls, (std::vector<std::string>{"fopen /proc/net/arp", "socket 17 2 0"}));
}

TEST_F(GatewayProbe, NoBindingEndsIt)
{
    script().binds = false;
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), opening + Lines{errorLine("Failure in Binding")});
    EXPECT_EQ(script().calls, (std::vector<std::string>{"fopen /proc/net/arp", "socket 17 2 0",
                                                        "bind 777 20", "close 777"}));
}

// The wrapper says so, and then the probe.
TEST_F(GatewayProbe, NoNameEndsIt)
{
    const Lines noName = {"10/0/4 libsocket_util: Failure in getsockname",
                          errorLine("Failure in getsockname")};
    script().named = false;
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(), opening + noName);
    expectCalls(closed);
}

TEST_F(GatewayProbe, NoHardwareAddressEndsIt)
{
    script().addressLength = 0;
    EXPECT_EQ(ask(1), untouched);
    EXPECT_EQ(support::loggedLines(),
              opening + Lines{errorLine("Interface is not able to communicate")});
    expectCalls(closed);
}

} // namespace
