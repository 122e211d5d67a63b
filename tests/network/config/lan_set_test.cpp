// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The LAN set: the request that travels, and where its sentences go.
#include <functional>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "log_text.hpp"
#include "network_mng/lan.h"
#include "network_mng/rpc.h"

namespace {

using support::Bytes;
using support::Guarded;
using ::testing::ElementsAre;
using ::testing::Values;

constexpr std::size_t bitmapSize = 24;
constexpr std::size_t configSize = 478;
constexpr std::size_t contextSize = 3073;
constexpr std::size_t slotSize = 512;

// Slots of the context by their place.
enum Slot { mainSlot, otherSlot, ipv4RouteSlot, ipv6RouteSlot, dnsSlot, netModeSlot };

std::string slotText(const Bytes &context, Slot slot)
{
    const auto *text =
        reinterpret_cast<const char *>(context.data()) + slotSize * static_cast<std::size_t>(slot);
    return std::string(text, strnlen(text, slotSize));
}

// One set, its records ending at guard pages.
struct Set {
    Bytes bitmap = Bytes(bitmapSize);
    Bytes config = Bytes(configSize);
    Bytes context = Bytes(contextSize);

    void bits(std::size_t port, std::uint32_t word0, std::uint32_t word1)
    {
        support::putU32(bitmap, 8 * port, word0);
        support::putU32(bitmap, 8 * port + 4, word1);
    }
    std::span<std::uint8_t> port(std::size_t index)
    {
        return std::span(config).subspan(4 + 158 * index, 158);
    }
    std::uint32_t send()
    {
        const Guarded guardedBitmap(bitmap), guardedConfig(config), guardedContext(context);
        const std::uint32_t result = LIB_NW_SetLanConfig(guardedBitmap.as<NW_LAN_BITMAP_S>(),
                                                         guardedConfig.as<NW_LAN_SET_CFG_S>(),
                                                         guardedContext.as<NW_OPER_LOG_S>());
        EXPECT_TRUE(std::ranges::equal(guardedBitmap.bytes(), bitmap)) << "bitmap changed";
        EXPECT_TRUE(std::ranges::equal(guardedConfig.bytes(), config)) << "request changed";
        context.assign(guardedContext.bytes().begin(), guardedContext.bytes().end());
        return result;
    }
};

class LanSet : public fake::FakePlatformTest {};

fake::Call onlyRequest()
{
    const auto calls = fake::platform().callsTo("MRPC_Call");
    EXPECT_EQ(calls.size(), 1U);
    return calls.empty() ? fake::Call{} : calls.front();
}

TEST_F(LanSet, SendsHeadBitmapAndRequestInAZeroedBuffer)
{
    Set set;
    for (std::size_t i = 0; i < configSize; ++i) {
        set.config[i] = static_cast<std::uint8_t>(i * 29 + i / 251 + 1);
    }
    for (std::size_t i = 0; i < bitmapSize; ++i) {
        set.bitmap[i] = static_cast<std::uint8_t>(0xC0 + i);
    }
    EXPECT_EQ(set.send(), 0U);

    Bytes expected(3074);
    expected[1] = 3;
    support::put(expected, 2, std::span(set.config).first(4));
    support::put(expected, 6, set.bitmap);
    support::put(expected, 30, set.config);
    const fake::Call call = onlyRequest();
    EXPECT_EQ(call.data, expected);
    EXPECT_EQ(call.size, 3074U);
    EXPECT_EQ(call.service, 24U);
    EXPECT_EQ(call.function, 28U);
    EXPECT_EQ(call.timeout, 10000U);
    EXPECT_FALSE(call.messagePresent);
    EXPECT_EQ(platform.callsTo("MRPC_MsgFree").size(), 1U);
}

TEST_F(LanSet, WithAnAllZeroBitmapIsSentAndSaysNothing)
{
    Set set;
    set.config.assign(configSize, 0x5A);
    EXPECT_EQ(set.send(), 0U);
    EXPECT_EQ(onlyRequest().data[1], 3U);
    EXPECT_EQ(set.context, Bytes(contextSize));
}

/* ---- Sentences ---- */

const std::string done0 = "LAN settings configured successfully for dedicated port";
const std::string done1 = "LAN settings configured successfully for shared port";
const std::string done2 = "LAN settings configured successfully for active/standby port";
const std::string address = ", IPv4 address: 10.1.2.3";
const std::string vlan = ", VLAN ID: 4094";
const std::string route1 = ", IPv4 static route 1 address: 172.16.0.0";
const std::string gateway2 = ", IPv4 static route 2 gateway: 172.17.0.1";
const std::string sixRoute1 = ", IPv6 static route 1 address: fd00:1::";
const std::string sixPrefix2 = ", IPv6 static route 2 prefix: 56";

Set filledSet()
{
    Set set;
    for (std::size_t index = 0; index < 3; ++index) {
        const auto port = set.port(index);
        support::put(port, 5, support::ipv4("10.1.2.3"));
        support::put(port, 20, support::ipv4("172.16.0.0"));
        support::put(port, 40, support::ipv4("172.17.0.1"));
        support::put(port, 80, support::ipv6("fd00:1::"));
        port[129] = 56;
        port[154] = 0xFE;
        port[155] = 0x0F;
    }
    return set;
}

/* Whoever looks while a text is built: its own thread from the log, or another one. */
TEST_F(LanSet, SuccessNeverTouchesTheMainSlotAndTheLevel)
{
    Set set = filledSet();
    set.bits(1, 0x8, 0x1);
    Bytes context(contextSize, 0xA5);
    int seen = 0;
    platform.onLine([&] {
        ++seen;
        EXPECT_TRUE(std::all_of(context.begin(), context.begin() + slotSize,
                                [](auto byte) { return byte == 0xA5; }));
        EXPECT_EQ(context.back(), 0xA5);
    });

    EXPECT_EQ(LIB_NW_SetLanConfig(reinterpret_cast<NW_LAN_BITMAP_S *>(set.bitmap.data()),
                                  reinterpret_cast<NW_LAN_SET_CFG_S *>(set.config.data()),
                                  reinterpret_cast<NW_OPER_LOG_S *>(context.data())),
              0U);

    EXPECT_EQ(seen, 3);
    EXPECT_EQ(context.back(), 0xA5);
}

struct Sentences {
    std::string name;
    std::function<void(Set &)> script;
    std::string other, ipv4Route, ipv6Route;
};
using LanSetSentences = fake::FakePlatformRows<Sentences>;

// The slot of the IPv6 routes keeps word 1, that of the IPv4 routes keeps word 0: each also lists
// what belongs to another slot.
TEST_P(LanSetSentences, GoToTheirSlots)
{
    Set set = filledSet();
    GetParam().script(set);
    set.context.assign(contextSize, 0xA5);
    EXPECT_EQ(set.send(), 0U);

    Bytes expected(contextSize, 0xA5);
    const std::pair<Slot, std::string> slots[] = {{otherSlot, GetParam().other},
                                                  {ipv4RouteSlot, GetParam().ipv4Route},
                                                  {ipv6RouteSlot, GetParam().ipv6Route}};
    for (const auto &[slot, text] : slots) {
        std::memcpy(expected.data() + slotSize * static_cast<std::size_t>(slot), text.c_str(),
                    text.size() + 1);
        EXPECT_EQ(slotText(set.context, slot), text);
    }
    EXPECT_EQ(set.context, expected) << "the main slot, the level or what is behind a text changed";
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, LanSetSentences, Values(
    Sentences{"Address",        [](Set &set) { set.bits(1, 0x8, 0); },
              done1 + address + ".", done1 + address + ".", ""},
    Sentences{"Ipv4RouteAlone", [](Set &set) { set.bits(0, 0, 0x1); },
              "", done0 + route1 + ".", done0 + route1 + "."},
    Sentences{"Ipv6RouteAlone", [](Set &set) { set.bits(0, 0x40000, 0); },
              "", done0 + sixRoute1 + ".", done0 + sixRoute1 + "."},
    Sentences{"OfEachKind",     [](Set &set) { set.bits(2, 0x40008, 0x1); },
              done2 + address + ".", done2 + address + sixRoute1 + route1 + ".",
              done2 + sixRoute1 + route1 + "."},
    Sentences{"OfSeveralPorts", [](Set &set) { set.bits(0, 0x10000, 0); set.bits(1, 0, 0x20); set.bits(2, 0x400000, 0); },
              done0 + vlan + ".",
              done0 + vlan + "." + done1 + gateway2 + "." + done2 + sixPrefix2 + ".",
              done1 + gateway2 + "." + done2 + sixPrefix2 + "."},
    // Bits without a row still name their port.
    Sentences{"BitsWithoutAField", [](Set &set) { set.bits(1, 0x4000, 0x40); },
              done1 + ".", done1 + ".", done1 + "."}),
    fake::RowName{});
/* clang-format on */

TEST_F(LanSet, LeavesWhatItDoesNotWriteToAZeroedContext)
{
    Set set = filledSet();
    set.bits(0, 0x8, 0);
    EXPECT_EQ(set.send(), 0U);
    EXPECT_EQ(slotText(set.context, mainSlot), "");
    EXPECT_EQ(slotText(set.context, dnsSlot), "");
    EXPECT_EQ(slotText(set.context, netModeSlot), "");
    EXPECT_EQ(set.context[3072], 0U);
}

TEST_F(LanSet, LogsEachSentenceInTheOrderOfTheSlots)
{
    Set set = filledSet();
    set.bits(0, 0x8, 0x1);
    EXPECT_EQ(set.send(), 0U);
    const auto line = [](const std::string &text) {
        return fake::isLine(fake::operateLogUnit, fake::debug, "OperLog %s.", text.c_str());
    };
    EXPECT_THAT(lines(),
                ElementsAre(line(done0 + route1 + "."), line(done0 + address + route1 + "."),
                            line(done0 + address + ".")));
}

TEST_F(LanSet, CutsLongSentencesAtTheEndOfTheirSlots)
{
    Set set = filledSet();
    set.bits(0, 0xFFFFFFFF, 0xFFFFFFFF);
    set.bits(1, 0xFFFFFFFF, 0xFFFFFFFF);
    set.bits(2, 0xFFFFFFFF, 0xFFFFFFFF);
    EXPECT_EQ(set.send(), 0U);
    for (const Slot slot : {otherSlot, ipv4RouteSlot, ipv6RouteSlot}) {
        EXPECT_EQ(slotText(set.context, slot).size(), slotSize - 1) << slot;
    }
    EXPECT_EQ(slotText(set.context, dnsSlot), "");
}

/* ---- Failures ---- */

const char *const failedLine = "BMC_RPC_CallWithStruct Failed when setting lancfg!";

struct Refusal {
    std::string name;
    fake::RpcAnswer answer;
    std::uint32_t expected;
    std::string sentence;
};
using LanSetRefusal = fake::FakePlatformRows<Refusal>;

TEST_P(LanSetRefusal, PutsItsSentenceIntoTheMainSlotAlone)
{
    Set set = filledSet();
    set.bits(1, 0x8, 0x3F);
    set.context.assign(contextSize, 0xA5);
    platform.answerRpc(GetParam().answer);
    EXPECT_EQ(set.send(), GetParam().expected);

    Bytes expected(contextSize, 0xA5);
    std::memcpy(expected.data(), GetParam().sentence.c_str(), GetParam().sentence.size() + 1);
    expected[3072] = 6;
    EXPECT_EQ(slotText(set.context, mainSlot), GetParam().sentence);
    EXPECT_EQ(set.context, expected);
    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine(failedLine),
                                     fake::isLine(fake::operateLogUnit, fake::debug, "OperLog %s.",
                                                  GetParam().sentence.c_str())));
    onlyRequest();
}

/* clang-format off */
const std::string failed0 = "Failed to configure LAN settings for dedicated port.";
const std::string failed1 = "Failed to configure LAN settings for shared port.";
const std::string failed2 = "Failed to configure LAN settings for active/standby port.";
INSTANTIATE_TEST_SUITE_P(Rows, LanSetRefusal, Values(
    Refusal{"Refused",        fake::RpcAnswer::response(0x1E000A27, 1), 0x1E000A27, failed1},
    Refusal{"RefusedPort0",   fake::RpcAnswer::response(0x1E000004, 0), 0x1E000004, failed0},
    Refusal{"RefusedPort2",   fake::RpcAnswer::response(1, 2),          1,          failed2},
    Refusal{"LocalCode",      fake::RpcAnswer::response(0x9E0000FF, 1), 0x9E0000FF,
            "Failed to configure LAN settings."},
    Refusal{"NoSuchPort",     fake::RpcAnswer::response(5, 3),          5, "Failed to configure LAN settings for ."},
    Refusal{"Transport",      fake::RpcAnswer::failure(-7),             0x81000013, failed0},
    Refusal{"TransportLeavesTheResponse", fake::RpcAnswer::failureWithMessage(9), 0x81000013, failed0}),
    fake::RowName{});

struct Nulls {
    std::string name;
    bool bitmap, config, context; // present
    const char *parameter;
};
using LanSetNulls = fake::FakePlatformRows<Nulls>;

TEST_P(LanSetNulls, AreNamedConfigurationFirstAndNothingIsSent)
{
    NW_LAN_BITMAP_S bitmap{};
    NW_LAN_SET_CFG_S config{};
    NW_OPER_LOG_S context{};
    EXPECT_EQ(LIB_NW_SetLanConfig(GetParam().bitmap ? &bitmap : nullptr,
                                  GetParam().config ? &config : nullptr,
                                  GetParam().context ? &context : nullptr), 0x81000002U);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine(GetParam().parameter, "LIB_NW_SetLanConfig")));
    EXPECT_TRUE(platform.callsTo("MRPC_Call").empty());
    EXPECT_EQ(support::toBytes(context), Bytes(contextSize));
}

INSTANTIATE_TEST_SUITE_P(Rows, LanSetNulls, Values(
    Nulls{"Bitmap",           false, true,  true,  "pstLanBitmap"},
    Nulls{"Configuration",    true,  false, true,  "pstLanConfig"},
    Nulls{"Context",          true,  true,  false, "pstOperLog"},
    Nulls{"BitmapAndContext", false, true,  false, "pstLanBitmap"},
    Nulls{"All",              false, false, false, "pstLanConfig"}),
    fake::RowName{});
/* clang-format on */

TEST_F(LanSet, AnsweredWithoutDataSucceeds)
{
    for (const auto &answer : {fake::RpcAnswer::noMessage(), fake::RpcAnswer::noData()}) {
        platform.reset();
        platform.answerRpc(answer);
        Set set = filledSet();
        set.bits(0, 0x8, 0);
        EXPECT_EQ(set.send(), 0U);
        EXPECT_EQ(slotText(set.context, otherSlot), done0 + address + ".");
    }
}

/* ---- Narrowing a bitmap ---- */

struct Narrowing {
    std::string name;
    std::uint32_t mask;
    std::uint32_t word;
    std::uint32_t expected[2];
};
using BitmapNarrowing = fake::FakePlatformRows<Narrowing>;

TEST_P(BitmapNarrowing, ChangesOneWordOfEveryPortAtAnyAlignment)
{
    for (std::size_t shift = 0; shift < 4; ++shift) {
        Bytes bytes(shift + bitmapSize + 4, 0xA5);
        Bytes expected = bytes;
        for (std::size_t port = 0; port < 3; ++port) {
            support::putU32(bytes, shift + 8 * port, 0x11F2F3F4U);
            support::putU32(bytes, shift + 8 * port + 4, 0x22E2E3E4U);
            support::putU32(expected, shift + 8 * port, GetParam().expected[0]);
            support::putU32(expected, shift + 8 * port + 4, GetParam().expected[1]);
        }
        void *bitmap = bytes.data() + shift;
        NW_DecomposeBitmap(static_cast<NW_LAN_BITMAP_S *>(bitmap), GetParam().mask,
                           GetParam().word);
        EXPECT_EQ(bytes, expected) << shift;
    }
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, BitmapNarrowing, Values(
    Narrowing{"Word0",       0x00FC0000, 0, {0x00F00000, 0x22E2E3E4}},
    Narrowing{"Word1",       0x0000003F, 1, {0x11F2F3F4, 0x00000024}},
    Narrowing{"Word0Rest",   0xFF03FFFF, 0, {0x1102F3F4, 0x22E2E3E4}},
    Narrowing{"Nothing",     0,          1, {0x11F2F3F4, 0}},
    Narrowing{"Everything",  0xFFFFFFFF, 0, {0x11F2F3F4, 0x22E2E3E4}}),
    fake::RowName{});
/* clang-format on */

TEST_F(LanSet, NoBitmapToNarrowIsLogged)
{
    NW_DecomposeBitmap(nullptr, 0, 0);
    EXPECT_THAT(lines(), ElementsAre(fake::isNullLine("pstBitmap", "NW_DecomposeBitmap")));
}

} // namespace
