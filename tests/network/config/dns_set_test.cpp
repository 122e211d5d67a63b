// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The sentences of a DNS change: which ports the request names, what the database holds.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::mainSlot;
using testing::ElementsAre;

constexpr std::size_t entrySize = 592;

Bytes changeOf(const std::array<std::uint16_t, 3> &bits)
{
    Bytes request(1788, setters::poison);
    for (std::size_t port = 0; port < bits.size(); ++port) {
        request[4 + 2 * port] = static_cast<std::uint8_t>(bits[port]);
        request[5 + 2 * port] = static_cast<std::uint8_t>(bits[port] >> 8);
    }
    return request;
}

Bytes storedSettings()
{
    Bytes record(1776, setters::poison);
    for (std::size_t port = 0; port < 3; ++port) {
        const auto entry = std::span(record).subspan(entrySize * port, entrySize);
        entry[4] = static_cast<std::uint8_t>(port);
        support::put(entry, 5, support::ipv4("10.0.0." + std::to_string(port + 1)));
        support::putText(entry, 20, "four" + std::to_string(port) + ".example" + '\0');
        entry[280] = 2;
        support::put(entry, 313, support::ipv6("fd00::" + std::to_string(port + 1)));
    }
    return record;
}

struct Row {
    std::string name;
    std::array<std::uint16_t, 3> bits;
    std::string sentences;
};

class DnsSentences : public fake::FakePlatformRows<Row> {};

TEST_P(DnsSentences, TellEveryPortThatTheRequestNames)
{
    platform.setRecord(NW_KEY_DNS, storedSettings());
    Context context;

    EXPECT_EQ(setters::send(setters::named("Dns"), {changeOf(GetParam().bits)}, context), 0U);

    setters::expectSentence(context, GetParam().sentences);
    EXPECT_THAT(lines(), ElementsAre(setters::operLogLine(GetParam().sentences)));
}

const std::string done = "DNS settings configured successfully for ";
/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Changes, DnsSentences, testing::Values(
    Row{"Mode",    {0x1, 0, 0}, done + "dedicated port, IPv4 DNS mode: Disabled."},
    Row{"Server",  {0, 0x4, 0}, done + "shared port, IPv4 DNS server 1: 10.0.0.2."},
    Row{"HighByte", {0, 0x1000, 0}, done + "shared port, IPv6 DNS server 3: fd00::2."},
    Row{"TwoPorts", {0x2, 0, 0x101},
        done + "dedicated port, IPv4 DNS domain suffix: four0.example." +
        done + "active/standby port, IPv4 DNS mode: Auto, IPv6 DNS mode: Auto."},
    Row{"AllPorts", {0x1, 0x1, 0x1},
        done + "dedicated port, IPv4 DNS mode: Disabled." + done + "shared port, IPv4 DNS mode: Manual." +
        done + "active/standby port, IPv4 DNS mode: Auto."}),
    fake::RowName());
/* clang-format on */

using DnsSet = fake::FakePlatformTest;

TEST_F(DnsSet, SucceedsWithoutASentenceWhenItCannotBeReadBack)
{
    platform.failGet(NW_KEY_DNS, 17);
    Context context;

    EXPECT_EQ(setters::send(setters::named("Dns"), {changeOf({1, 1, 1})}, context), 0U);

    EXPECT_EQ(context.text(mainSlot), "");
    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Get dns info failed, Ret:%d", 17),
                                     setters::operLogErrorLine("Get dns info from lmdb failed."),
                                     setters::operLogLine("")));
}

// The code that the library keeps for its own refusals names no port, whoever answers it.
TEST_F(DnsSet, NamesNoPortForTheLocalCode)
{
    platform.answerRpc(fake::RpcAnswer::response(0x9E0000FF, 1));
    Context context;

    EXPECT_EQ(setters::send(setters::named("Dns"), {Bytes(1788)}, context), 0x9E0000FFU);

    EXPECT_EQ(context.text(mainSlot), "Failed to configure DNS settings.");
}

} // namespace
