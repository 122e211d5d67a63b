// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The setters that carry records to the network manager and leave a sentence, as rows of one table,
// and what every test of a setter needs: requests, contexts and the lines of the operation log.
#pragma once

#include <functional>
#include <memory>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "network_mng.h"

namespace setters {

using support::Bytes;

inline constexpr std::size_t requestSize = 3074;
inline constexpr std::size_t contextSize = 3073;
inline constexpr std::size_t slotSize = 512;
inline constexpr std::uint8_t poison = 0xA5;
inline constexpr std::uint32_t transportFailed = 0x81000013U;

/* Slots of the context by their place. */
enum Slot { mainSlot, otherSlot, ipv4RouteSlot, ipv6RouteSlot, dnsSlot, netModeSlot, slotCount };

/* A setter. Records stand in the order in which they are checked. */
struct Setter {
    using Records = std::vector<const std::uint8_t *>;

    std::string name;
    std::string function;
    std::vector<std::string> parameters; /* names of the records */
    std::vector<std::size_t> sizes;      /* of the records */
    std::uint32_t (*call)(const Records &records, NW_OPER_LOG_S *context);
    std::uint8_t command;
    Bytes (*payload)(const std::vector<Bytes> &records);
    fake::Shape shape; /* of the failure's line */
    const char *line;  /* takes the result where it has a conversion */
    bool answersWord;  /* the response's word instead of the call's result */
    const char *failure;
};

const std::vector<Setter> &all();
const Setter &named(const std::string &name);

/* The context that a caller hands over: everything but the main slot poisoned. */
class Context {
public:
    explicit Context(std::uint8_t mainFill = 0);

    NW_OPER_LOG_S *get()
    {
        return buffer_.as<NW_OPER_LOG_S>();
    }
    std::string text(Slot slot) const;
    std::uint8_t level() const
    {
        return buffer_.bytes().back();
    }
    /* Nothing but the slots named, and the level byte, differs from what was handed over. */
    void expectUntouchedBut(const std::vector<Slot> &slots) const;
    /* Nothing at all was written. */
    void expectUntouched() const;

private:
    support::Guarded buffer_;
    Bytes before_;
};

/* Calls the setter with records that end at guard pages and must come back unchanged. */
std::uint32_t send(const Setter &setter, const std::vector<Bytes> &records, Context &context);

/* What a success or failure leaves: the sentence in the main slot, the level, nothing else. */
void expectSentence(const Context &context, const std::string &sentence);

/* A getter's answer; its record ends at a guard page and was poisoned before. */
struct Answer {
    std::uint32_t result;
    Bytes record;
};
template <typename Record>
Answer get(NW_RESULT (*getter)(Record *))
{
    const support::Guarded record(sizeof(Record), poison);
    const std::uint32_t result = getter(record.as<Record>());
    return {result, Bytes(record.bytes().begin(), record.bytes().end())};
}

/* Every byte tells where it stands; none is zero. */
Bytes pattern(std::size_t size, std::size_t seed = 0);

/* 3074 bytes: a zero, the command, the payload, zeros. */
Bytes requestOf(std::uint8_t command, const Bytes &payload);
/* The requests sent, each checked to have gone to the network manager with the usual time-out. */
std::vector<Bytes> sentRequests();
std::vector<fake::Call> databaseReads();

fake::LineMatcher operLogLine(const std::string &text);
fake::LineMatcher operLogErrorLine(const char *format);
fake::LineMatcher operLogErrorLine(const char *format, std::uint32_t value);
fake::LineMatcher failureLine(const Setter &setter, std::uint32_t result);
/* An ordinary failure's line that prints a result. */
fake::LineMatcher codeLine(const char *format, std::uint32_t code);

} // namespace setters
