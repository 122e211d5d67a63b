// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "combined.hpp"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

#include "failure.hpp"
#include "json_document.hpp"
#include "lan_options.hpp"

namespace nwctl {

namespace {

constexpr std::string_view optionPrefix = "--";

std::string keyOf(const std::string &path, const std::string &option)
{
    return path + "." + option.substr(optionPrefix.size());
}

template <typename Change>
std::vector<GivenOption> givenIn(const std::string &path, const Json &settings,
                                 std::span<const Option<Change>> rows)
{
    requireObject(path, settings);
    std::vector<GivenOption> given;
    for (const auto &[key, value] : settings.items()) {
        const std::string name = std::string(optionPrefix) + key;
        if (std::ranges::count(rows, name, &Option<Change>::name) == 0) {
            misusedKey(keyOf(path, name), value, "no such setting");
        }
        for (const std::string &text : optionTexts(keyOf(path, name), value)) {
            given.push_back({name, text});
        }
    }
    return given;
}

/* The change that the settings make; a failure names the key in place of the option. */
template <typename Change>
Change changeIn(const std::string &path, const Json &settings, std::span<const Option<Change>> rows,
                std::vector<GivenOption> &all)
{
    const std::vector<GivenOption> given = givenIn(path, settings, rows);
    for (const GivenOption &option : given) {
        all.push_back({keyOf(path, option.name), option.value});
    }
    try {
        return buildChange<Change>(rows, given);
    } catch (Failure &failure) {
        failure.optionName = failure.optionName.empty() ? path : keyOf(path, failure.optionName);
        throw;
    }
}

using AddPort = std::function<void(unsigned port, const std::string &path, const Json &settings)>;

/* The port that a key of the part names. */
unsigned portIn(const std::string &part, const std::string &key,
                const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    try {
        return findPort(interfaces, key);
    } catch (Failure &failure) {
        failure.optionName = part;
        throw;
    }
}

/* Each port of a part, once. */
void forEachPort(const std::string &part, const Json &value,
                 const NW_IFC_STATE_DB_INFO_S &interfaces, const AddPort &add)
{
    bool seen[NW_PORT_COUNT]{};
    requireObject(part, value);
    for (const auto &[key, settings] : value.items()) {
        const unsigned port = portIn(part, key, interfaces);
        if (std::exchange(seen[port], true)) {
            throw Failure(Exit::usage, part, key, "the port is given twice");
        }
        add(port, part + "." + key, settings);
    }
}

void addLan(const Json &value, const NW_IFC_STATE_DB_INFO_S &interfaces, CombinedChange &change)
{
    forEachPort("lan", value, interfaces,
                [&](unsigned port, const std::string &path, const Json &settings) {
                    change.lan.push_back(
                        changeIn<LanChange>(path, settings, lanOptions(), change.settings));
                    change.lan.back().port = port;
                });
}

void addDns(const Json &value, const NW_IFC_STATE_DB_INFO_S &interfaces, CombinedChange &change)
{
    DnsRequest request{};
    forEachPort("dns", value, interfaces,
                [&](unsigned port, const std::string &path, const Json &settings) {
                    addToRequest(port,
                                 changeIn<DnsChange>(path, settings, dnsOptions(), change.settings),
                                 request);
                });
    change.dns = request;
}

void addMode(const Json &value, const NW_IFC_STATE_DB_INFO_S &, CombinedChange &change)
{
    if (!value.is_string()) {
        misusedKey("mode", value, "expected a text");
    }
    const GivenOption given{"mode", value};
    change.mode = wordValue(given, modeWords());
    change.settings.push_back(given);
}

struct Part {
    const char *key;
    void (*add)(const Json &value, const NW_IFC_STATE_DB_INFO_S &interfaces,
                CombinedChange &change);
};
constexpr Part parts[] = {{"lan", addLan}, {"dns", addDns}, {"mode", addMode}};

} // namespace

CombinedChange parseCombined(const std::string &text, const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    const Json document = parseDocument(text);
    requireObject("FILE", document);

    CombinedChange change;
    for (const auto &[key, value] : document.items()) {
        const auto part = std::ranges::find(parts, std::string_view(key), &Part::key);
        if (part == std::end(parts)) {
            misusedKey(key, value, "no such part, expected lan, dns or mode");
        }
        part->add(value, interfaces, change);
    }
    requireSomething(change.settings);
    return change;
}

NW_SET_NETWORK_ALL_S requestOf(const CombinedChange &change)
{
    NW_SET_NETWORK_ALL_S request{};
    if (!change.lan.empty()) {
        request.ulModuleMask |= NW_LOG_LAN;
        request.stLan.stBitmap = bitmapOf(change.lan);
        request.stLan.stConfig = configOf(change.lan);
    }
    if (change.dns) {
        request.ulModuleMask |= NW_LOG_DNS;
        std::memcpy(request.aucDns, &*change.dns, sizeof(*change.dns));
    }
    if (change.mode) {
        request.ulModuleMask |= NW_LOG_NET_MODE;
        const NW_NET_MODE_SET_S mode{0, 1, *change.mode, {}};
        std::memcpy(request.aucNetMode, &mode, sizeof(mode));
    }
    return request;
}

} // namespace nwctl
