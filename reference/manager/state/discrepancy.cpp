// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/state/discrepancy.hpp"

#include <algorithm>

#include <linux/ethtool.h>

namespace bmc::manager {

namespace {

std::string linkModeText(std::uint64_t number)
{
    constexpr std::uint64_t autoNegotiation = linkModeNumber(true, 0, 0);
    if ((number & autoNegotiation) != 0) {
        return "automatic";
    }
    const bool isFull = static_cast<std::uint8_t>(number >> 32) == DUPLEX_FULL;
    return std::to_string(static_cast<std::uint32_t>(number)) + (isFull ? " full" : " half");
}

/* A file's content in one line. */
std::string lineOf(std::string text)
{
    while (text.ends_with('\n')) {
        text.pop_back();
    }
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
        text.replace(end, 1, "; ");
    }
    return text.empty() ? "none" : text;
}

/* The thing with its value, where it has one. */
std::string stateText(const Item &item)
{
    switch (item.kind) {
    case Kind::link:
        return textOf(item) + (item.number == 1 ? " up" : " down");
    case Kind::linkMode:
        return textOf(item) + " " + linkModeText(item.number);
    case Kind::bmcName:
    case Kind::resolver:
    case Kind::lldp:
        return textOf(item) + " " + lineOf(item.text);
    default:
        return textOf(item);
    }
}

Discrepancy discrepancyOf(const Step &step, const Actual &actual)
{
    const Item &item = step.item;
    if (step.isRemoval) {
        return {item.subject, "", stateText(item)};
    }
    const Item *value =
        rowOf(item.kind).isValue ? valueIn(actual.items, item.kind, item.subject) : nullptr;
    return {item.subject, stateText(item), value != nullptr ? stateText(*value) : ""};
}

bool isForeign(const Item &item, const World &wanted, const Items &owned)
{
    return item.kind == Kind::address && wanted.ports.contains(item.subject) &&
           !isLinkLocal(item.address) && !wanted.items.contains(item) && !owned.contains(item);
}

} // namespace

std::vector<Discrepancy> discrepancies(const World &wanted, const Actual &actual,
                                       const Items &owned)
{
    std::vector<Discrepancy> found;
    for (const Step &step : plan(wanted, actual, owned)) {
        found.push_back(discrepancyOf(step, actual));
    }
    for (const Item &item : actual.items) {
        if (isForeign(item, wanted, owned)) {
            found.push_back({item.subject, "", stateText(item), true});
        }
    }
    return found;
}

} // namespace bmc::manager
