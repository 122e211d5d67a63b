// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "setter_fixture.hpp"

#include <algorithm>

namespace setters {

namespace {

Bytes firstRecord(const std::vector<Bytes> &records)
{
    return records.front();
}

// The first argument is the change mask; here one that changes nothing.
constexpr std::uint8_t hostNameMask = 0;

Bytes hostNamePayload(const std::vector<Bytes> &records)
{
    const Bytes &conf = records.front();
    Bytes payload(136);
    support::put(payload, 0, std::span(conf).first(4));
    payload[4] = hostNameMask;
    payload[5] = conf[4];
    payload[6] = conf[5];
    support::put(payload, 7, std::span(conf).subspan(6, std::min<std::size_t>(conf[5], 64)));
    support::put(payload, 71, std::span(conf).subspan(70, 64));
    return payload;
}

Bytes autoNegotiationPayload(const std::vector<Bytes> &records)
{
    Bytes payload(28);
    support::put(payload, 4, records[1]);
    support::put(payload, 12, records[0]);
    return payload;
}

template <typename Record>
const Record *as(const std::uint8_t *bytes)
{
    return static_cast<const Record *>(static_cast<const void *>(bytes));
}

const char *const stateLine =
    "BMC_RPC_CallWithStruct Failed when setting interface state, iRet:%d.";

/* clang-format off */
std::vector<Setter> table()
{
    return {
    {"HostName", "LIB_NW_SetHostName", {"pstHostNameConf"}, {134},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetHostName(hostNameMask, records[0], context);
     },
     0, hostNamePayload,
     fake::error, "BMC_RPC_CallWithStruct Failed when setting hostname!", true,
     "Failed to configure host name settings."},
    {"Dns", "LIB_NW_SetAllDnsConf", {"pstDnsConf"}, {1788},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetAllDnsConf(records[0], context);
     },
     1, firstRecord,
     fake::error, "BMC_RPC_CallWithStruct Failed when setting dnscfg!", false,
     "Failed to configure DNS settings for %s."},
    {"Lldp", "LIB_NW_SetLLDP", {"pstSetLLDP"}, {8},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetLLDP(as<NW_LLDP_SET_S>(records[0]), context);
     },
     2, firstRecord,
     fake::error, "BMC_RPC_CallWithStruct Failed when setting lldpcfg!", false,
     "Failed to configure LLDP settings."},
    {"NetMode", "LIB_NW_SetNetMode", {"pstSetNetMode"}, {8},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetNetMode(records[0], context);
     },
     4, firstRecord, fake::ifcFail, stateLine, false,
     "Failed to configure the network port mode."},
    {"AutoNegotiation", "LIB_NW_SetAnPortConfig", {"pstAnConfig", "pstAnBitmap"}, {16, 8},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetAnPortConfig(records[1], records[0], context);
     },
     9, autoNegotiationPayload,
     fake::error, "Network_RPC_Comm Failed when setting net port's AN and Speed!", true,
     "Failed to configure PHY negotiation."},
    {"Switchover", "LIB_NW_SetLanReverse", {"pstSetLanReverse"}, {8},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetLanReverse(as<NW_LAN_REVERSE_SET_S>(records[0]), context);
     },
     11, firstRecord, fake::ifcFail, stateLine, false,
     "Failed to configure port number switchover."},
    // A failure that names no part leaves no sentence.
    {"Combined", "LIB_NW_SetNetWorkAll", {"pstSetNetworkAll"}, {2482},
     [](const Setter::Records &records, NW_OPER_LOG_S *context) {
         return LIB_NW_SetNetWorkAll(as<NW_SET_NETWORK_ALL_S>(records[0]), context);
     },
     12, firstRecord, fake::ifcFail, stateLine, false, nullptr},
    };
}
/* clang-format on */

} // namespace

const std::vector<Setter> &all()
{
    static const std::vector<Setter> setters = table();
    return setters;
}

const Setter &named(const std::string &name)
{
    return *std::ranges::find(all(), name, &Setter::name);
}

Context::Context(std::uint8_t mainFill) : buffer_(contextSize, poison)
{
    std::ranges::fill(buffer_.bytes().first(slotSize), mainFill);
    before_.assign(buffer_.bytes().begin(), buffer_.bytes().end());
}

std::string Context::text(Slot slot) const
{
    const auto *text =
        reinterpret_cast<const char *>(buffer_.data()) + slotSize * static_cast<std::size_t>(slot);
    return std::string(text, strnlen(text, slotSize));
}

void Context::expectUntouchedBut(const std::vector<Slot> &slots) const
{
    for (int slot = mainSlot; slot < slotCount; ++slot) {
        const std::size_t offset = slotSize * static_cast<std::size_t>(slot);
        if (std::ranges::find(slots, slot) == slots.end()) {
            EXPECT_TRUE(std::ranges::equal(buffer_.bytes().subspan(offset, slotSize),
                                           std::span(before_).subspan(offset, slotSize)))
                << "slot " << slot << " changed";
        }
    }
}

void Context::expectUntouched() const
{
    EXPECT_TRUE(std::ranges::equal(buffer_.bytes(), before_)) << "the context changed";
}

void expectSentence(const Context &context, const std::string &sentence)
{
    EXPECT_EQ(context.text(mainSlot), sentence);
    EXPECT_EQ(context.level(), 6U);
    context.expectUntouchedBut({mainSlot});
}

std::uint32_t send(const Setter &setter, const std::vector<Bytes> &records, Context &context)
{
    std::vector<std::unique_ptr<support::Guarded>> guarded;
    Setter::Records pointers;
    for (const Bytes &record : records) {
        guarded.push_back(std::make_unique<support::Guarded>(record));
        pointers.push_back(guarded.back()->data());
    }
    const std::uint32_t result = setter.call(pointers, context.get());
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_TRUE(std::ranges::equal(guarded[i]->bytes(), records[i])) << "record changed";
    }
    return result;
}

Bytes pattern(std::size_t size, std::size_t seed)
{
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(1 + (i * 29 + i / 251 + seed * 7) % 255);
    }
    return bytes;
}

Bytes requestOf(std::uint8_t command, const Bytes &payload)
{
    Bytes request(requestSize);
    request[1] = command;
    support::put(request, 2, payload);
    return request;
}

std::vector<Bytes> sentRequests()
{
    std::vector<Bytes> requests;
    for (const fake::Call &call : fake::platform().callsTo("MRPC_Call")) {
        EXPECT_EQ(call.service, 24U);
        EXPECT_EQ(call.function, 28U);
        EXPECT_EQ(call.size, requestSize);
        EXPECT_EQ(call.timeout, 10000U);
        EXPECT_FALSE(call.messagePresent);
        requests.push_back(call.data);
    }
    EXPECT_EQ(fake::platform().callsTo("MRPC_MsgFree").size(), requests.size());
    return requests;
}

std::vector<fake::Call> databaseReads()
{
    return fake::platform().callsTo("DB_Get");
}

fake::LineMatcher operLogLine(const std::string &text)
{
    return fake::isLine(fake::operateLogUnit, fake::debug, "OperLog %s.", text.c_str());
}

fake::LineMatcher operLogErrorLine(const char *format)
{
    return fake::isLine(fake::operateLogUnit, fake::error, format);
}

fake::LineMatcher operLogErrorLine(const char *format, std::uint32_t value)
{
    return fake::isLine(fake::operateLogUnit, fake::error, format, static_cast<int>(value));
}

fake::LineMatcher failureLine(const Setter &setter, std::uint32_t result)
{
    return fake::isLine(fake::networkUnit, setter.shape, setter.line, static_cast<int>(result));
}

fake::LineMatcher codeLine(const char *format, std::uint32_t code)
{
    return fake::isErrorLine(format, static_cast<int>(code));
}

} // namespace setters
