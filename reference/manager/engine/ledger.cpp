// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/ledger.hpp"

#include <algorithm>
#include <cstring>
#include <optional>

#include "manager/refusal.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint32_t ledgerVersion = 1;

template <std::size_t size>
void store(char (&field)[size], const std::string &text)
{
    text.copy(field, size);
}

template <std::size_t size>
std::string textIn(const char (&field)[size])
{
    return {field, strnlen(field, size)};
}

bool fits(const Item &item)
{
    return item.subject.size() <= sizeof(LedgerEntry::subject) &&
           item.text.size() <= sizeof(LedgerEntry::text);
}

LedgerEntry entryOf(const Item &item, bool isFound)
{
    LedgerEntry entry{};
    entry.isFound = isFound;
    entry.kind = static_cast<std::uint8_t>(item.kind);
    entry.family = static_cast<std::uint8_t>(item.address.family);
    entry.prefix = static_cast<std::uint8_t>(item.address.prefix);
    std::ranges::copy(item.address.bytes, entry.address);
    entry.number = item.number;
    store(entry.subject, item.subject);
    store(entry.text, item.text);
    return entry;
}

Item itemOf(const LedgerEntry &entry)
{
    Item item{static_cast<Kind>(entry.kind), textIn(entry.subject), textIn(entry.text)};
    item.address.family = entry.family;
    item.address.prefix = entry.prefix;
    std::ranges::copy(entry.address, item.address.bytes.begin());
    item.number = entry.number;
    return item;
}

/* Routes carry the manager's mark in the kernel. */
bool isListed(const Item &item)
{
    return !rowOf(item.kind).isValue && item.kind != Kind::route && item.kind != Kind::subnet &&
           fits(item);
}

bool isWanted(const Items &wanted, const Item &value)
{
    return valueIn(wanted, value.kind, value.subject) != nullptr;
}

bool isToBeMade(const Item &item, const Actual &actual)
{
    return !item.subject.empty() && !actual.links.contains(item.subject);
}

/* The value that the item is going to replace; an interface that is not there yet comes with those
 * of a new one. */
std::optional<Item> replaced(const Item &item, const Actual &actual)
{
    const Item *value = valueIn(actual.items, item.kind, item.subject);
    if (value == nullptr && isToBeMade(item, actual)) {
        value = valueIn(actual.items, item.kind, newInterface);
    }
    if (value == nullptr) {
        return std::nullopt;
    }
    Item found = *value;
    found.subject = item.subject;
    return found;
}

} // namespace

Ledger::Ledger(const LedgerRecord &record)
{
    const std::size_t count = std::min<std::size_t>(record.count, record.entries.size());
    for (std::size_t index = 0; index < count; index++) {
        const LedgerEntry &entry = record.entries[index];
        if (isKind(entry.kind)) {
            (entry.isFound != 0 ? found_ : owned_).insert(itemOf(entry));
        }
    }
}

LedgerRecord Ledger::record() const
{
    LedgerRecord record{};
    record.version = ledgerVersion;
    for (const Items *items : {&owned_, &found_}) {
        for (const Item &item : *items) {
            if (record.count == record.entries.size()) {
                throw Refusal(Result::systemFailed, "too much that is the manager's own");
            }
            record.entries[record.count] = entryOf(item, items == &found_);
            record.count = record.count + 1;
        }
    }
    return record;
}

void Ledger::add(const Items &items)
{
    owned_.insert(items.begin(), items.end());
}

void Ledger::claim(const World &wanted, const Actual &actual)
{
    const auto canBeMade = [&](const Item &item) {
        return actual.links.contains(item.subject) ||
               std::ranges::any_of(wanted.items, [&](const Item &maker) {
                   return (maker.kind == Kind::bond || maker.kind == Kind::vlan) &&
                          maker.subject == item.subject;
               });
    };
    std::erase_if(found_, [&](const Item &value) { return isToBeMade(value, actual); });
    for (const Item &item : wanted.items) {
        if (isListed(item) && !actual.items.contains(item) && canBeMade(item)) {
            owned_.insert(item);
        }
        if (!rowOf(item.kind).comesBack || isWanted(found_, item)) {
            continue;
        }
        const std::optional<Item> found = replaced(item, actual);
        if (found && fits(*found)) {
            found_.insert(*found);
        }
    }
}

void Ledger::forgetGone(const World &wanted, const Actual &actual)
{
    const auto isAwaited = [&](const std::string &interface) {
        return !actual.links.contains(interface) &&
               std::ranges::find(wanted.items, interface, &Item::subject) != wanted.items.end();
    };
    std::erase_if(owned_, [&](const Item &item) {
        const bool isThere = item.kind == Kind::vlan ? actual.links.contains(item.subject)
                                                     : actual.items.contains(item);
        return !isThere && !wanted.items.contains(item) && !isAwaited(item.subject);
    });
}

void Ledger::forgetReturned(const World &wanted, const std::vector<Step> &left)
{
    std::erase_if(found_, [&](const Item &value) {
        return !isWanted(wanted.items, value) &&
               std::ranges::find(left, value, &Step::item) == left.end();
    });
}

World Ledger::withFound(World world) const
{
    for (const Item &value : found_) {
        if (!isWanted(world.items, value)) {
            world.items.insert(value);
            world.comingBack.insert(value);
        }
    }
    return world;
}

} // namespace bmc::manager
