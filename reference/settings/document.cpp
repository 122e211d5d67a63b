// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/document.hpp"

#include <algorithm>
#include <utility>

#include "network_mng/settings.h"
#include "settings/detail/identity.hpp"
#include "settings/difference.hpp"
#include "settings/manager_bytes.hpp"
#include "settings/value.hpp"

namespace bmc::settings {

namespace {

const std::string portsKey = "ports";

/* The name that a host has of itself is no setting. */
bool isStored(const Configuration &configuration, const Setting &setting)
{
    const bool isHostName = setting.section == Section::hostName && setting.kind->isCounted;
    return !isHostName || configuration.hostName.ucHostNameMode == 0;
}

Json valuesOf(const Configuration &configuration, const SectionInfo &info, unsigned port)
{
    if (info.section == Section::an && !hasLinkMode(configuration.an.astPort[port])) {
        return {};
    }
    Json values = Json::object();
    for (const Setting &setting : settingsOf(info.section)) {
        if (isStored(configuration, setting)) {
            values[setting.key] = valueOf(configuration, setting, port);
        }
    }
    return values;
}

Json sectionOf(const Configuration &configuration, const SectionInfo &info)
{
    if (info.isScalar) {
        return valueOf(configuration, settingsOf(info.section).front(), 0);
    }
    if (info.portCount == 0) {
        return valuesOf(configuration, info, 0);
    }
    Json ports = Json::object();
    for (unsigned port = 0; port < info.portCount; ++port) {
        ports[std::string(roleOf(port))] = valuesOf(configuration, info, port);
    }
    return ports;
}

/* A document that is being read. */
class Reader {
public:
    explicit Reader(const NW_IFC_STATE_DB_INFO_S &state) : state_(state) {}

    void read(const Node &document)
    {
        expectObject(document);
        for (const auto &[key, value] : document.value.items()) {
            const Node node = memberOf(document, key);
            const SectionInfo *info = findSection(key);
            if (info != nullptr) {
                readSection(*info, node);
            } else if (key != portsKey) {
                refuse(node, "no such part, expected " + knownParts());
            }
        }
        for (Edit &edit : reading_.change) {
            edit.mayBeIdle = true;
        }
    }

    Reading take()
    {
        return std::move(reading_);
    }

private:
    static std::string knownParts()
    {
        std::string parts = portsKey;
        for (const SectionInfo &info : sections()) {
            parts += std::string(", ") + info.key;
        }
        return parts;
    }

    void readSection(const SectionInfo &info, const Node &node)
    {
        if (info.isScalar) {
            readSetting(settingsOf(info.section).front(), 0, node);
        } else if (info.portCount == 0) {
            readValues(info, 0, node);
        } else {
            readPorts(info, node);
        }
    }

    void readPorts(const SectionInfo &info, const Node &node)
    {
        forEachPort(node, state_, [&](const Node &entry, unsigned port) {
            if (port >= info.portCount) {
                refuse(entry, "the port has no such settings");
            }
            if (entry.value.is_null() && info.section == Section::an) {
                clear(info, port, entry);
            } else {
                readValues(info, port, entry);
            }
        });
    }

    /* The driver's own link mode. */
    void clear(const SectionInfo &info, unsigned port, const Node &node)
    {
        Edit &edit = editOf(reading_.change, info.section, port);
        for (const Setting &setting : settingsOf(info.section)) {
            edit.cleared[0] |= setting.parts[0].bit;
            reading_.given.push_back({&setting, port, node.place, shown(node.value)});
        }
    }

    void readValues(const SectionInfo &info, unsigned port, const Node &node)
    {
        expectObject(node);
        for (const auto &[key, value] : node.value.items()) {
            const Setting *setting = findSetting(info.section, key);
            if (setting == nullptr) {
                refuse(memberOf(node, key), "no such setting");
            }
            readSetting(*setting, port, memberOf(node, key));
        }
    }

    void readSetting(const Setting &setting, unsigned port, const Node &node)
    {
        for (const auto &text : textsOf(node)) {
            try {
                assignStored(reading_.change, setting, port, text);
            } catch (const BadValue &bad) {
                throw DocumentError(node.place, bad.text(), bad.what(),
                                    bad.isRefused() ? NW_ERR_OUT_OF_RANGE : NW_OK);
            }
            const Setting &meant = text ? meantBy(setting, *text) : setting;
            reading_.given.push_back({&meant, port, node.place, text.value_or("null")});
        }
    }

    const NW_IFC_STATE_DB_INFO_S &state_;
    Reading reading_;
};

/* Names of interfaces are given as they hold with the switchover that is given beside them. */
std::optional<bool> givenSwitchover(const Change &change)
{
    for (const Edit &edit : change) {
        if (edit.section == Section::switchover && !isEmpty(edit)) {
            return byteGiven(edit, "switchover") == 1;
        }
    }
    return std::nullopt;
}

bool isGiven(const Change &change, Section section)
{
    return std::ranges::any_of(
        change, [section](const Edit &edit) { return edit.section == section && !isEmpty(edit); });
}

} // namespace

Json documentOf(const Configuration &configuration)
{
    Json document = Json::object();
    for (const SectionInfo &info : sections()) {
        if (!info.isScalar && !document.contains(portsKey)) {
            document[portsKey] = identitiesOf(configuration.state);
        }
        document[info.key] = sectionOf(configuration, info);
    }
    return document;
}

Reading readDocument(std::string_view text, const Configuration &present)
{
    const Json json = parseJson(text);
    const Node document{"", json};
    Reader reader(present.state);
    reader.read(document);

    Reading reading = reader.take();
    if (json.contains(portsKey)) {
        NW_IFC_STATE_DB_INFO_S after = present.state;
        const bool isOn = isSwitchedOver(after);
        if (givenSwitchover(reading.change).value_or(isOn) != isOn) {
            exchangeInterfaces(after);
        }
        reading.ignored = compareIdentities(memberOf(document, portsKey), present.state, after);
    }
    return reading;
}

std::vector<std::string> notesOf(const Reading &reading, const Configuration &before,
                                 const Configuration &after)
{
    const auto differing = differences(before, after);
    const auto isChanged = [&](unsigned port) {
        return std::ranges::any_of(differing, [port](const Difference &difference) {
            return infoOf(difference.setting->section).portCount != 0 && difference.port == port;
        });
    };
    const Setting &mode = settingsOf(Section::mode).front();

    std::vector<std::string> notes = reading.ignored;
    for (const unsigned port : idlePorts(reading.change, after)) {
        if (isChanged(port)) {
            notes.push_back("settings of " + titleOf(after.state, port) +
                            " have no effect in network mode " +
                            textOf(mode, valueOf(after, mode, 0)));
        }
    }
    for (const auto &[setting, port, value, changed] : differing) {
        auto note = effectNote(*setting, textOf(*setting, changed), titleOf(after.state, port));
        if (!note.empty()) {
            notes.push_back(std::move(note));
        }
    }
    return notes;
}

std::string placeOf(const Refusal &refusal, const Reading &reading)
{
    if (!refusal.section()) {
        return "document";
    }
    const auto found = std::ranges::find_if(reading.given, [&](const GivenValue &value) {
        return value.setting == refusal.setting() &&
               (refusal.port() == NW_PORT_COUNT || refusal.port() == value.port);
    });
    if (found != reading.given.end()) {
        return found->place;
    }
    const SectionInfo &info = infoOf(*refusal.section());
    const bool hasPort = info.portCount != 0 && refusal.port() != NW_PORT_COUNT;
    return info.key + (hasPort ? "." + std::string(roleOf(refusal.port())) : "");
}

Configuration firstConfiguration(std::string_view text,
                                 const std::optional<NW_WIFI_ADDR_S> &wireless,
                                 const Configuration &base)
{
    const Json json = parseJson(text);
    const Node document{"", json};
    expectObject(document);
    Configuration first = base;
    readIdentities(memberOf(document, portsKey), first);

    Reader reader(first.state);
    reader.read(document);
    Reading reading = reader.take();
    switchoverIn(first.state) =
        givenSwitchover(reading.change).value_or(isSwitchedOver(first.state)) ? 1 : 0;
    if (!isGiven(reading.change, Section::mode)) {
        const Setting &mode = settingsOf(Section::mode).front();
        assign(reading.change, mode, 0, textOf(mode, valueOf(first, mode, 0)));
    }
    try {
        return edited(first, reading.change, wireless);
    } catch (const Refusal &refusal) {
        throw DocumentError(placeOf(refusal, reading), "", refusal.what(), refusal.code());
    }
}

} // namespace bmc::settings
