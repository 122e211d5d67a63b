// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/parsing.hpp"

#include <algorithm>
#include <functional>

#include "common/address.hpp"
#include "common/text.hpp"
#include "settings/change.hpp"
#include "settings/detail/checks.hpp"
#include "settings/objections.hpp"

namespace bmc::settings {

namespace {

using Fields = std::vector<Field>;

[[noreturn]] void misused(const Text &text, const std::string &reason)
{
    throw BadValue(*text.given, text.text, reason);
}

void refuseFor(const Text &text, const std::optional<std::string> &reason)
{
    if (reason) {
        throw BadValue(*text.given, text.text, *reason, true);
    }
}

/* "on, off or none", out of alternatives with bars between them. */
std::string listed(std::string_view alternatives)
{
    std::string list;
    for (auto bar = alternatives.find('|'); bar != alternatives.npos;
         bar = alternatives.find('|')) {
        list += (list.empty() ? "" : ", ") + std::string(alternatives.substr(0, bar));
        alternatives.remove_prefix(bar + 1);
    }
    return list + (list.empty() ? "" : " or ") + std::string(alternatives);
}

std::string rangeOf(const Kind &kind)
{
    return "a number from " + std::to_string(kind.least) + " to " + std::to_string(kind.most);
}

const Part &partOf(const Text &text, std::size_t index)
{
    return text.setting->parts[index];
}

Fields zeros(const Text &text)
{
    Fields fields;
    for (const Part &part : text.setting->parts) {
        fields.push_back({&part, Bytes(part.requestSize)});
    }
    return fields;
}

/* An address of the setting's family; nothing for any other text. */
std::optional<Bytes> addressIn(const Text &text, std::string_view address)
{
    const int family = text.setting->kind->family;
    const auto parsed = parseAddress(family, address);
    if (!parsed) {
        return std::nullopt;
    }
    return Bytes(parsed->bytes.begin(), parsed->bytes.begin() + sizeOf(family));
}

/* Refuses an address that the part cannot hold; a file may bring one back that is not set. */
void vetAddress(const Text &text, const Part &part, const Bytes &address)
{
    const bool isNone = isUnset(address.data(), address.size());
    if (text.source == Source::file && isNone) {
        return;
    }
    if (isNone || !isValid(*text.setting, part, address.data())) {
        refuseFor(text, whyNotHost(text.setting->kind->family, address.data()));
    }
}

Fields parseWord(const Text &text)
{
    const Kind &kind = *text.setting->kind;
    const Word *word = findWord(kind.words, text.text);
    if (word == nullptr) {
        misused(text, "expected " + listed(kind.words));
    }
    return {numberField(partOf(text, 0), word->value)};
}

/* Of a file also resumed,WORD. */
Fields parseHeldWord(const Text &text)
{
    Text word = text;
    const bool isHeld = text.source == Source::file && text.text.starts_with(heldPrefix);
    word.text.remove_prefix(isHeld ? heldPrefix.size() : 0);
    Fields fields = parseWord(word);
    fields.front().isHeld = isHeld;
    return fields;
}

Fields parseNumber(const Text &text)
{
    const Kind &kind = *text.setting->kind;
    const auto number = bmc::parseNumber(text.text, kind.most);
    if (!number || *number < kind.least) {
        misused(text, "expected " + rangeOf(kind));
    }
    return {numberField(partOf(text, 0), *number)};
}

/* off, a number, and of a file also 0 and off,NUMBER: switched on without one, off with one. */
Fields parseSwitchedNumber(const Text &text)
{
    constexpr std::string_view kept = "off,";
    const Kind &kind = *text.setting->kind;
    const bool isFile = text.source == Source::file;
    if (text.text == "off") {
        Fields fields{numberField(partOf(text, 0), 0)};
        if (isFile) {
            fields.push_back(numberField(partOf(text, 1), 0));
        }
        return fields;
    }

    const bool isOff = isFile && text.text.starts_with(kept);
    const auto number = bmc::parseNumber(text.text.substr(isOff ? kept.size() : 0), kind.most);
    if (!number || (*number < kind.least && !isFile)) {
        misused(text, "expected off or " + rangeOf(kind));
    }
    return {numberField(partOf(text, 0), isOff ? 0 : 1), numberField(partOf(text, 1), *number)};
}

Fields parseSingleAddress(const Text &text)
{
    const auto address = addressIn(text, text.text);
    if (!address) {
        misused(text, "expected an address of the family or off");
    }
    vetAddress(text, partOf(text, 0), *address);
    return {{&partOf(text, 0), *address}};
}

/* An address and the mask or prefix length behind its slash. */
Fields parsePrefixed(const Text &text, std::string_view prefixed, const std::string &expected)
{
    const int family = text.setting->kind->family;
    const unsigned most = longestPrefix(family);
    const auto slash = prefixed.find('/');
    const auto address = addressIn(text, prefixed.substr(0, slash));
    if (!address) {
        misused(text, "expected " + expected);
    }
    if (slash == prefixed.npos) {
        misused(text, "the prefix length is missing, expected ADDR/LEN");
    }

    const unsigned least = text.source == Source::file ? 0 : 1;
    const auto prefix = bmc::parseNumber(prefixed.substr(slash + 1), most);
    if (!prefix || *prefix < least) {
        misused(text, "the prefix length is not a number from " + std::to_string(least) + " to " +
                          std::to_string(most));
    }
    vetAddress(text, partOf(text, 0), *address);
    if (family == AF_INET6) {
        return {{&partOf(text, 0), *address}, numberField(partOf(text, 1), *prefix)};
    }
    const auto mask = maskOf(*prefix);
    refuseFor(text, whyNotMask(mask.data()));
    return {{&partOf(text, 0), *address}, {&partOf(text, 1), {mask.begin(), mask.end()}}};
}

Fields parseSubnet(const Text &text)
{
    return parsePrefixed(text, text.text, listed(text.setting->kind->valueName));
}

/* DEST/LEN,GATEWAY; of a file also without the gateway. */
Fields parseRoute(const Text &text)
{
    const std::string expected = "DEST/LEN,GATEWAY of the family or off";
    const int family = text.setting->kind->family;
    const auto comma = text.text.find(',');
    const bool isOnLink = comma == text.text.npos && text.source == Source::file;
    const auto gateway =
        isOnLink ? Bytes(sizeOf(family))
                 : addressIn(text, comma == text.text.npos ? std::string_view()
                                                           : text.text.substr(comma + 1));
    if (!gateway) {
        misused(text, "expected " + expected);
    }
    Fields fields = parsePrefixed(text, text.text.substr(0, comma), expected);
    vetAddress(text, partOf(text, 2), *gateway);
    fields.push_back({&partOf(text, 2), *gateway});
    return fields;
}

Fields parseName(const Text &text)
{
    if (text.text.empty()) {
        misused(text, "expected a name");
    }
    if (text.text.size() > longestName) {
        refuseFor(text, "longer than " + std::to_string(longestName) + " characters");
    }

    const bool isCounted = text.setting->kind->isCounted;
    Bytes bytes(partOf(text, 0).requestSize);
    bytes[0] = static_cast<std::uint8_t>(text.text.size());
    std::ranges::copy(text.text, bytes.begin() + (isCounted ? 1 : 0));
    const bool isWhole = text.text.find('\0') == std::string_view::npos;
    if (!isWhole || !isValid(*text.setting, partOf(text, 0), bytes.data())) {
        refuseFor(text, nameRule);
    }
    return {{&partOf(text, 0), bytes}};
}

Fields parseDomain(const Text &text)
{
    const Part &part = partOf(text, 0);
    Bytes bytes(std::max(part.requestSize, text.text.size()));
    std::ranges::copy(text.text, bytes.begin());
    const bool isWhole =
        text.text.size() < part.requestSize && text.text.find('\0') == std::string_view::npos;
    if (!isWhole || !isValid(*text.setting, part, bytes.data())) {
        refuseFor(text, domainRule);
    }
    return {{&part, bytes}};
}

Fields parseHeader(const Text &text)
{
    const Part &part = partOf(text, 0);
    const Kind &kind = *text.setting->kind;
    Bytes bytes;
    std::string_view rest = text.text;
    while (bytes.size() < part.requestSize) {
        const bool isLast = bytes.size() + 1 == part.requestSize;
        const auto end = isLast ? rest.size() : rest.find(',');
        const auto number = bmc::parseNumber(rest.substr(0, end), kind.most);
        if (!number || end == rest.npos) {
            misused(text,
                    "expected " + std::string(kind.valueName) + " with " + rangeOf(kind) + " each");
        }
        bytes.push_back(static_cast<std::uint8_t>(*number));
        rest.remove_prefix(isLast ? end : end + 1);
    }
    return {{&part, bytes}};
}

Fields parseByShape(const Text &text)
{
    switch (text.setting->kind->shape) {
    case Shape::flag:
    case Shape::words:
        return parseWord(text);
    case Shape::heldWords:
        return parseHeldWord(text);
    case Shape::number:
        return parseNumber(text);
    case Shape::switchedNumber:
        return parseSwitchedNumber(text);
    case Shape::address:
        return parseSingleAddress(text);
    case Shape::subnet:
        return parseSubnet(text);
    case Shape::route:
        return parseRoute(text);
    case Shape::name:
        return parseName(text);
    case Shape::domain:
        return parseDomain(text);
    case Shape::header:
        return parseHeader(text);
    }
    return {};
}

} // namespace

Field numberField(const Part &part, std::uint32_t number)
{
    Bytes bytes(part.requestSize);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes[index] = static_cast<std::uint8_t>(number >> (8 * index));
    }
    return {&part, bytes};
}

std::uint32_t numberIn(const Bytes &bytes)
{
    std::uint32_t number = 0;
    for (std::size_t index = bytes.size(); index > 0; --index) {
        number = number << 8 | bytes[index - 1];
    }
    return number;
}

std::vector<Field> parseValue(const Text &text)
{
    const Kind &kind = *text.setting->kind;
    const bool isNone = kind.unset != nullptr && text.text == kind.unset;
    return isNone && kind.shape != Shape::switchedNumber ? zeros(text) : parseByShape(text);
}

} // namespace bmc::settings
