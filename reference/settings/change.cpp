// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/change.hpp"

#include <algorithm>

#include "settings/detail/parsing.hpp"

namespace bmc::settings {

namespace {

constexpr ChangeBits bitsOf(const Part &part)
{
    return part.word == 0 ? ChangeBits{part.bit, 0} : ChangeBits{0, part.bit};
}

void add(ChangeBits &bits, const ChangeBits &more)
{
    bits[0] |= more[0];
    bits[1] |= more[1];
}

/* A setting has one new value at most. */
void requireFree(const Edit &edit, const Text &text, const Part &part)
{
    if (isSelected(edit, part)) {
        throw BadValue(*text.given, text.text, "contradicts another value for the same setting");
    }
}

void put(Edit &edit, const Field &field)
{
    const Part &part = *field.part;
    std::copy_n(field.bytes.begin(), part.requestSize,
                edit.request.begin() + static_cast<std::ptrdiff_t>(part.request));
    add(edit.bits, bitsOf(part));
    if (field.isHeld) {
        add(edit.held, bitsOf(part));
    }
}

void assignText(Change &change, const Text &text, unsigned port)
{
    const std::vector<Field> fields = parseValue(text);
    Edit &edit = editOf(change, text.setting->section, port);
    for (const Field &field : fields) {
        requireFree(edit, text, *field.part);
    }
    for (const Field &field : fields) {
        put(edit, field);
    }
}

bool hasEffect(Section section, unsigned port, const NW_IFC_STATE_DB_INFO_S &state)
{
    return section == Section::an ? state.aucPortPresent[port] != 0 : isServed(state, port);
}

/* Can the setting be without a value? Where none of its words stands for 0, that was never set. */
bool isNullable(const Kind &kind)
{
    return kind.shape == Shape::name ||
           (kind.shape == Shape::words && wordOf(kind.words, 0).empty());
}

} // namespace

bool isSelected(const Edit &edit, const Part &part)
{
    return ((edit.bits.at(part.word) | edit.cleared.at(part.word)) & part.bit) != 0;
}

bool isSelected(const Edit &edit, const Setting &setting)
{
    return edit.section == setting.section &&
           std::ranges::any_of(setting.parts,
                               [&](const Part &part) { return isSelected(edit, part); });
}

std::optional<std::uint8_t> byteGiven(const Edit &edit, const char *key)
{
    const Part &part = findSetting(edit.section, key)->parts[0];
    const bool isGiven = (edit.bits.at(part.word) & part.bit) != 0;
    return isGiven ? std::optional(edit.request.at(part.request)) : std::nullopt;
}

bool isEmpty(const Edit &edit)
{
    return (edit.bits[0] | edit.bits[1] | edit.cleared[0] | edit.cleared[1]) == 0;
}

Edit &editOf(Change &change, Section section, unsigned port)
{
    const auto found = std::ranges::find_if(
        change, [&](const Edit &edit) { return edit.section == section && edit.port == port; });
    if (found != change.end()) {
        return *found;
    }
    change.push_back({.section = section, .port = port});
    change.back().request.resize(infoOf(section).requestSize);
    return change.back();
}

const Setting &meantBy(const Setting &setting, std::string_view text)
{
    const bool isSwitch = setting.switchKey != nullptr && (text == "on" || text == "off");
    return isSwitch ? *findSetting(setting.section, setting.switchKey) : setting;
}

void assign(Change &change, const Setting &setting, unsigned port, std::string_view text)
{
    assignText(change, {&meantBy(setting, text), &setting, text, Source::commandLine}, port);
}

void assignStored(Change &change, const Setting &setting, unsigned port,
                  const std::optional<std::string> &text)
{
    const Kind &kind = *setting.kind;
    if (text || kind.unset != nullptr) {
        const std::string given = text.value_or(kind.unset == nullptr ? "" : kind.unset);
        const Setting &meant = text ? meantBy(setting, given) : setting;
        assignText(change, {&meant, &setting, given, Source::file}, port);
        return;
    }
    if (!isNullable(kind)) {
        throw BadValue(setting, "null", "has to have a value");
    }
    Edit &edit = editOf(change, setting.section, port);
    for (const Part &part : setting.parts) {
        requireFree(edit, {&setting, &setting, "null", Source::file}, part);
        add(edit.cleared, bitsOf(part));
    }
}

void assignNumber(Change &change, const Setting &setting, unsigned port, std::uint32_t number)
{
    const Part &part = setting.parts[0];
    const Field field = numberField(part, number);
    if (numberIn(field.bytes) != number) {
        Refusal refusal(part.refusal, part.name);
        refusal.blame(setting.section, port, &setting);
        throw refusal;
    }
    put(editOf(change, setting.section, port), field);
}

void requireEffect(Section section, unsigned port, const NW_IFC_STATE_DB_INFO_S &state)
{
    require(port < infoOf(section).portCount && hasEffect(section, port, state),
            Result::portNotServed, "port " + std::to_string(port));
}

std::vector<unsigned> idlePorts(const Change &change, const Configuration &configuration)
{
    std::vector<unsigned> ports;
    for (const Edit &edit : change) {
        const bool hasPort = infoOf(edit.section).portCount != 0 && !isEmpty(edit);
        const bool isKnown = std::ranges::find(ports, edit.port) != ports.end();
        if (hasPort && !isKnown && !hasEffect(edit.section, edit.port, configuration.state)) {
            ports.push_back(edit.port);
        }
    }
    return ports;
}

std::vector<Given> givenIn(const Change &change)
{
    std::vector<Given> given;
    for (const Edit &edit : change) {
        for (const Setting &setting : settingsOf(edit.section)) {
            if (isSelected(edit, setting)) {
                given.push_back({&setting, edit.port});
            }
        }
    }
    return given;
}

} // namespace bmc::settings
