// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/setting_rows.hpp"

#include <algorithm>

#include <nlohmann/json.hpp>
#include <sys/socket.h>

#include "settings/value.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Json;
using settings::Setting;
using settings::Shape;
using Settings = std::vector<const Setting *>;

/* An entry and what of it is told. */
struct Shown {
    const std::uint8_t *entry;
    const Settings &settings;
    Beside beside;
};

std::string labelOf(const Setting &setting)
{
    return setting.show.label == nullptr ? "" : setting.show.label;
}

Value valueAt(const Shown &shown, const Setting &setting)
{
    return Value(settings::valueAt(shown.entry, setting));
}

Value partAt(const Shown &shown, const Setting &setting, std::size_t part)
{
    return Value(settings::partValueAt(shown.entry, setting, part));
}

/* What the mask or the prefix length of an address is called. */
const char *lengthKey(const Setting &setting)
{
    return setting.kind->family == AF_INET ? "mask" : "prefix";
}

bool isTold(const Shown &shown, const Setting &setting)
{
    return !settings::valueAt(shown.entry, setting).is_null();
}

void addSubnet(const Shown &shown, const Setting &setting, Rows &rows)
{
    const bool isSet = isTold(shown, setting);
    const char *length = lengthKey(setting);
    rows.push_back(
        {labelOf(setting), setting.show.key, isSet ? partAt(shown, setting, 0) : Value()});
    rows.push_back({length, length, isSet ? partAt(shown, setting, 1) : Value()});
}

/* A number is kept while it is switched off, too. */
void addSwitchedNumber(const Shown &shown, const Setting &setting, Rows &rows)
{
    const Value number = partAt(shown, setting, 1);
    const bool isSet = std::get<long long>(number.content()) != 0;
    const bool isOn = settings::partValueAt(shown.entry, setting, 0) == 1;
    rows.push_back({labelOf(setting), "enabled", isOn});
    rows.push_back({labelOf(setting) + " ID", setting.show.key, isSet ? number : Value()});
}

/* An IPv6 address of zeros is none, an IPv4 address is told as it is. */
Value routeAddress(const Shown &shown, const Setting &setting, std::size_t part)
{
    const Json address = settings::partValueAt(shown.entry, setting, part);
    return address == "::" ? Value() : Value(address);
}

std::string textOf(const Value &value)
{
    const auto *text = std::get_if<std::string>(&value.content());
    return text == nullptr ? "-" : *text;
}

Row routeRow(const Shown &shown, const Setting &setting, std::size_t number)
{
    const bool isV4 = setting.kind->family == AF_INET;
    const Json length = settings::partValueAt(shown.entry, setting, 1);
    const Value destination = routeAddress(shown, setting, 0);
    const Value gateway = routeAddress(shown, setting, 2);
    return {.label = labelOf(setting) + " " + std::to_string(number),
            .value =
                Object{{hidden("number", static_cast<unsigned>(number)),
                        hidden("destination", destination),
                        hidden(lengthKey(setting), Value(length)), hidden("gateway", gateway)}},
            .text = textOf(destination) +
                    (isV4 ? " mask " + length.get<std::string>() : "/" + length.dump()) + " via " +
                    textOf(gateway)};
}

/* Routes that are there, each on a line of its own; of other settings all, on one line. */
void addList(const Shown &shown, const Settings &listed, Rows &rows)
{
    const Setting &first = *listed.front();
    const bool isRoutes = first.kind->shape == Shape::route;
    List list;
    for (std::size_t at = 0; at < listed.size(); ++at) {
        if (!isRoutes) {
            list.rows.push_back({.value = valueAt(shown, *listed[at])});
        } else if (isTold(shown, *listed[at])) {
            list.rows.push_back(routeRow(shown, *listed[at], at + 1));
        }
    }
    rows.push_back({isRoutes ? "" : labelOf(first), first.show.key, std::move(list)});
}

bool isSamePlace(const Setting &one, const Setting &other)
{
    return one.show.group == other.show.group && one.show.key != nullptr &&
           other.show.key != nullptr && std::string_view(one.show.key) == other.show.key;
}

void addSetting(const Shown &shown, const Setting &setting, Rows &rows)
{
    Settings listed;
    std::ranges::copy_if(shown.settings, std::back_inserter(listed),
                         [&](const Setting *each) { return isSamePlace(*each, setting); });
    if (listed.size() > 1) {
        if (listed.front() == &setting) {
            addList(shown, listed, rows);
        }
    } else if (setting.kind->shape == Shape::subnet) {
        addSubnet(shown, setting, rows);
    } else if (setting.kind->shape == Shape::switchedNumber) {
        addSwitchedNumber(shown, setting, rows);
    } else {
        rows.push_back({labelOf(setting), setting.show.key, valueAt(shown, setting)});
    }
}

/* Told to programs alone, and of a list that it is empty. */
Row untold(const Row &row)
{
    const bool isList = std::holds_alternative<List>(row.value.content());
    return hidden(row.key, isList ? Value(List{}) : Value());
}

/* "dhcp"; a record that was never set up has the first of the words. */
Json headingValue(const Shown &shown, const Setting &setting)
{
    Json value = settings::valueAt(shown.entry, setting);
    return value.is_null() ? Json(setting.kind->words.front().text) : value;
}

/* A group on its way. */
struct ShownGroup {
    bool isOn = true;
    std::string heading;
    Rows rows;
};

void addSwitch(const Shown &shown, const Setting &setting, ShownGroup &group)
{
    group.isOn = settings::valueAt(shown.entry, setting) == true;
    group.heading = onOff(group.isOn);
    group.rows.push_back(hidden(setting.show.key, group.isOn));
}

void addToGroup(const Shown &shown, const Setting &setting, ShownGroup &group)
{
    Rows told;
    if (setting.show.label == nullptr) {
        const Json value = headingValue(shown, setting);
        group.heading += group.isOn ? ", " + settings::textOf(setting, value) : "";
        told.push_back(hidden(setting.show.key, Value(value)));
    } else {
        addSetting(shown, setting, told);
    }
    for (const Row &row : told) {
        group.rows.push_back(group.isOn ? row : untold(row));
    }
}

Row groupRow(const Shown &shown, const settings::ShowGroup &description)
{
    ShownGroup group;
    for (const Setting *setting : shown.settings) {
        if (setting->show.group != &description) {
            continue;
        }
        if (setting->kind->shape == Shape::flag) {
            addSwitch(shown, *setting, group);
        } else if (setting->show.key != nullptr) {
            addToGroup(shown, *setting, group);
        }
        shown.beside(*setting, group.isOn, group.rows);
    }
    return {description.label, description.key, Object{std::move(group.rows)}, group.heading};
}

void ignoreBeside(const Setting &, bool, Rows &) {}

} // namespace

Rows settingRows(const std::uint8_t *entry, std::string_view command, const Beside &beside)
{
    Settings own = settings::settingsOf(command);
    std::erase_if(own, [&](const Setting *each) { return settings::commandOf(*each) != command; });

    const Shown shown{entry, own, beside ? beside : ignoreBeside};
    std::vector<const settings::ShowGroup *> groups;
    Rows rows;
    for (const Setting *setting : own) {
        const settings::ShowGroup *group = setting->show.group;
        if (group == nullptr) {
            addSetting(shown, *setting, rows);
            shown.beside(*setting, true, rows);
        } else if (std::ranges::count(groups, group) == 0) {
            rows.push_back(groupRow(shown, *group));
            groups.push_back(group);
        }
    }
    return rows;
}

} // namespace nwctl
