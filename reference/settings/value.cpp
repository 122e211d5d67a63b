// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/value.hpp"

#include <algorithm>
#include <cstring>

#include "common/address.hpp"
#include "settings/detail/checks.hpp"
#include "settings/manager_bytes.hpp"

namespace bmc::settings {

namespace {

/* An entry of a record and a setting that has its parts in there. */
struct Stored {
    const std::uint8_t *entry;
    const Setting &setting;

    const Part &part(std::size_t index) const
    {
        return setting.parts[index];
    }
    const std::uint8_t *at(std::size_t index) const
    {
        return entry + part(index).record;
    }
    /* Little-endian. */
    unsigned number(std::size_t index) const
    {
        unsigned value = 0;
        std::memcpy(&value, at(index), part(index).size);
        return value;
    }
    bool isUnset(std::size_t index) const
    {
        return settings::isUnset(at(index), part(index).size);
    }
};

Json wordValue(const Stored &stored)
{
    const Kind &kind = *stored.setting.kind;
    const unsigned value = stored.number(0);
    const std::string_view word = wordOf(kind.words, value);
    if (!word.empty()) {
        return kind.shape == Shape::flag ? Json(value == 1) : Json(word);
    }
    return value == 0 ? Json() : Json("unknown (" + std::to_string(value) + ")");
}

/* What is held of nothing has no effect either way. */
Json heldWordValue(const Stored &stored)
{
    const Json word = wordValue(stored);
    const bool isHeld = stored.number(0) != 0 && stored.number(1) != 0;
    return isHeld ? Json(std::string(heldPrefix) + word.get<std::string>()) : word;
}

/* An ID that is kept while it is switched off is told, too: a file shall bring it back. */
Json switchedNumberValue(const Stored &stored)
{
    const unsigned number = stored.number(1);
    if (stored.number(0) != 0) {
        return number;
    }
    return number == 0 ? Json() : Json("off," + std::to_string(number));
}

std::string addressAt(const Stored &stored, std::size_t index)
{
    return bmc::textOf(addressOf(stored.setting.kind->family, stored.at(index)));
}

std::string prefixedText(const Stored &stored)
{
    const unsigned prefix =
        stored.setting.kind->family == AF_INET ? prefixOf(stored.at(1)) : stored.number(1);
    return addressAt(stored, 0) + "/" + std::to_string(prefix);
}

Json subnetValue(const Stored &stored)
{
    return stored.isUnset(0) && stored.isUnset(1) ? Json() : Json(prefixedText(stored));
}

Json routeValue(const Stored &stored)
{
    if (stored.isUnset(2)) {
        return subnetValue(stored);
    }
    return prefixedText(stored) + "," + addressAt(stored, 2);
}

Json textValue(const Stored &stored)
{
    const char *text = reinterpret_cast<const char *>(stored.at(0));
    const std::string bounded(text, strnlen(text, stored.part(0).size));
    return bounded.empty() ? Json() : Json(bounded);
}

Json headerValue(const Stored &stored)
{
    std::string text;
    for (std::size_t index = 0; index < stored.part(0).size; ++index) {
        text += (index == 0 ? "" : ",") + std::to_string(stored.at(0)[index]);
    }
    return text;
}

} // namespace

Json valueAt(const std::uint8_t *entry, const Setting &setting)
{
    const Stored stored{entry, setting};
    switch (setting.kind->shape) {
    case Shape::flag:
    case Shape::words:
        return wordValue(stored);
    case Shape::heldWords:
        return heldWordValue(stored);
    case Shape::number:
        return stored.number(0);
    case Shape::switchedNumber:
        return switchedNumberValue(stored);
    case Shape::address:
        return stored.isUnset(0) ? Json() : Json(addressAt(stored, 0));
    case Shape::subnet:
        return subnetValue(stored);
    case Shape::route:
        return routeValue(stored);
    case Shape::name:
    case Shape::domain:
        return textValue(stored);
    case Shape::header:
        return headerValue(stored);
    }
    return {};
}

Json partValueAt(const std::uint8_t *entry, const Setting &setting, std::size_t part)
{
    const Stored stored{entry, setting};
    const bool isAddress = stored.part(part).size >= NW_IPV4_SIZE;
    return isAddress ? Json(addressAt(stored, part)) : Json(stored.number(part));
}

Json valueOf(const Configuration &configuration, const Setting &setting, unsigned port)
{
    if (setting.section == Section::an && !hasLinkMode(configuration.an.astPort[port])) {
        return {};
    }
    return valueAt(entryOf(configuration, setting.section, port), setting);
}

std::string textOf(const Setting &setting, const Json &value)
{
    if (value.is_null()) {
        return setting.kind->unset == nullptr ? "none" : setting.kind->unset;
    }
    if (value.is_boolean()) {
        return value.get<bool>() ? "on" : "off";
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

} // namespace bmc::settings
