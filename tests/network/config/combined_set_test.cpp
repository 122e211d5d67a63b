// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The combined set: which of its parts leave a sentence, and where.
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using setters::Context;
using setters::Slot;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr std::uint32_t lanBit = 0x02;
constexpr std::uint32_t dnsBit = 0x04;
constexpr std::uint32_t modeBit = 0x20;

/* Port 1's LAN with an address and a route of each family, port 2's DNS mode, the network mode;
 * bytes that no sentence needs are poisoned. */
Bytes combinedRequest(std::uint32_t mask)
{
    Bytes request(2482, setters::poison);
    support::putU32(request, 0, mask);
    const auto lan = std::span(request).subspan(16, 506);
    std::ranges::fill(lan.subspan(4, 24), std::uint8_t{0});
    support::putU32(lan, 4 + 8, 0x00040008);
    support::putU32(lan, 8 + 8, 0x00000001);
    const auto port = lan.subspan(32 + 158, 158);
    support::put(port, 5, support::ipv4("10.1.2.3"));
    support::put(port, 20, support::ipv4("172.16.0.0"));
    support::put(port, 80, support::ipv6("fd00:1::"));
    const auto dns = std::span(request).subspan(522, 1924);
    std::ranges::fill(dns.subspan(4, 6), std::uint8_t{0});
    dns[4 + 2 * 2] = 1;
    request[2446 + 4] = 1;
    request[2446 + 5] = 1;
    return request;
}

struct Text {
    Slot slot;
    std::uint32_t module;
    std::string text;
};

/* clang-format off */
const std::string lanDone = "LAN settings configured successfully for shared port";
const Text texts[] = {
    {setters::ipv6RouteSlot, lanBit,  lanDone + ", IPv6 static route 1 address: fd00:1::."},
    {setters::ipv4RouteSlot, lanBit,  lanDone + ", IPv4 static route 1 address: 172.16.0.0."},
    {setters::otherSlot,     lanBit,  lanDone + ", IPv4 address: 10.1.2.3."},
    {setters::dnsSlot,       dnsBit,  "DNS settings configured successfully for active/standby port, IPv4 DNS mode: Manual."},
    {setters::netModeSlot,   modeBit, "Configured network port mode successfully, network port mode: Active/standby."},
};
/* clang-format on */

class CombinedSet : public fake::FakePlatformTest {
protected:
    CombinedSet()
    {
        Bytes dns(1776, setters::poison);
        dns[2 * 592 + 4] = 1;
        platform.setRecord(NW_KEY_DNS, dns);
    }

    std::uint32_t set(const Bytes &request, Context &context)
    {
        return setters::send(setters::named("Combined"), {request}, context);
    }
};

/* ---- Success ---- */

class CombinedSetMask : public CombinedSet, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(CombinedSetMask, DecidesWhichSlotsAreWritten)
{
    const std::uint32_t mask = GetParam();
    const Bytes request = combinedRequest(mask);
    Context context(setters::poison);

    EXPECT_EQ(set(request, context), 0U);

    EXPECT_THAT(setters::sentRequests(), ElementsAre(setters::requestOf(12, request)));
    std::vector<Slot> written;
    std::vector<fake::LineMatcher> expectedLines;
    for (const auto &[slot, module, text] : texts) {
        if ((mask & module) != 0) {
            EXPECT_EQ(context.text(slot), text);
            written.push_back(slot);
            expectedLines.push_back(setters::operLogLine(text));
        }
    }
    context.expectUntouchedBut(written);
    EXPECT_EQ(context.level(), written.empty() ? setters::poison : 6U);
    EXPECT_THAT(lines(), ElementsAreArray(expectedLines));
}

INSTANTIATE_TEST_SUITE_P(Masks, CombinedSetMask,
                         testing::Values(0U, lanBit, dnsBit, modeBit, lanBit | dnsBit,
                                         lanBit | modeBit, dnsBit | modeBit,
                                         lanBit | dnsBit | modeBit, 0xFFFFFFFFU, 0xFFFFFFD9U));

TEST_F(CombinedSet, ThatChangesARouteAloneFillsItsSlotAlone)
{
    Bytes request = combinedRequest(lanBit);
    support::putU32(request, 16 + 4 + 8, 0);
    Context context;

    EXPECT_EQ(set(request, context), 0U);

    EXPECT_EQ(context.text(setters::ipv4RouteSlot), texts[1].text);
    EXPECT_EQ(context.text(setters::ipv6RouteSlot), "");
    EXPECT_EQ(context.text(setters::otherSlot), "");
}

/* ---- Failure ---- */

struct Row {
    std::string name;
    std::uint32_t failedModule;
    std::uint32_t port;
    std::uint32_t result;
    const char *sentence; /* null: nothing is written */
};

class CombinedSetFailure : public CombinedSet, public testing::WithParamInterface<Row> {};

// The part that failed decides, not the parts that were sent.
TEST_P(CombinedSetFailure, IsToldForThePartThatFailed)
{
    const Row &row = GetParam();
    platform.answerRpc(
        fake::RpcAnswer::response(row.result, row.port, fake::bytesOf(row.failedModule)));
    Context context(setters::poison);

    EXPECT_EQ(set(combinedRequest(lanBit), context), row.result);

    const auto failure = setters::failureLine(setters::named("Combined"), row.result);
    if (row.sentence == nullptr) {
        EXPECT_THAT(lines(), ElementsAre(failure));
        context.expectUntouched();
        return;
    }
    setters::expectSentence(context, row.sentence);
    EXPECT_THAT(lines(), ElementsAre(failure, setters::operLogLine(row.sentence)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Modules, CombinedSetFailure, testing::Values(
    Row{"Lan",       lanBit,  1, 0x1E000A27, "Failed to configure LAN settings for shared port."},
    Row{"LanLocal",  lanBit,  1, 0x9E0000FF, "Failed to configure LAN settings."},
    Row{"Dns",       dnsBit,  2, 0x1E000031, "Failed to configure DNS settings for active/standby port."},
    Row{"NetMode",   modeBit, 1, 0x1E000031, "Failed to configure the network port mode."},
    Row{"None",      0,       1, 0x1E000031, nullptr},
    Row{"HostName",  0x01,    1, 0x1E000031, nullptr},
    Row{"Lldp",      0x08,    1, 0x1E000031, nullptr},
    Row{"Several",   lanBit | dnsBit, 1, 0x1E000031, nullptr},
    Row{"HighBit",   0x80000002, 1, 0x1E000031, nullptr}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

} // namespace
