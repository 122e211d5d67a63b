// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/sending.hpp"

#include <algorithm>
#include <cstring>

#include <nlohmann/json.hpp>

#include "common/text.hpp"
#include "nwctl/danger.hpp"
#include "nwctl/manager_client.hpp"
#include "platform/records.hpp"
#include "settings/foresight.hpp"
#include "settings/wireless.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Json;

/* Results that the library answers for a refusal and for an unreachable manager alike. */
constexpr NW_RESULT vagueResults[] = {NW_ERR_GENERAL, NW_ERR_ARP_SUSPEND, NW_ERR_ARP_UPDATE,
                                      NW_ERR_ARP_RESUME};

struct Ending {
    Exit status;
    const char *reason;
};

Ending endingOf(NW_RESULT result)
{
    const bool isVague = std::ranges::count(vagueResults, result) != 0;
    if ((isVague || result == NW_ERR_RPC_TRANSPORT) && isDeniedByBus()) {
        return {Exit::transport, deniedReason};
    }
    if (result == NW_ERR_RPC_TRANSPORT) {
        return {Exit::transport,
                "no answer from the network manager; the change may still take effect"};
    }
    if (isVague) {
        return {Exit::manager, "the network manager refused the change or cannot be reached"};
    }
    return {Exit::manager, "the network manager refused the change"};
}

bool isGivenFor(const GivenOption &given, const settings::Setting &setting)
{
    constexpr std::string_view prefix = "--";
    const std::string_view key = std::string_view(given.name).substr(prefix.size());
    const settings::Setting *named = settings::findSetting(setting.section, key);
    return named != nullptr && &settings::meantBy(*named, given.value) == &setting;
}

const GivenOption *givenFor(const Sending &sending, const settings::Setting *setting)
{
    if (setting == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(
        sending.given, [&](const GivenOption &given) { return isGivenFor(given, *setting); });
    return found == sending.given.end() ? nullptr : &*found;
}

/* What was given that the result is about, or else the port, or else the only thing given. */
GivenOption blamedFor(const Sending &sending, NW_RESULT result)
{
    for (const settings::Change &change : sending.changes) {
        const auto cause = settings::blamed(result, change);
        const GivenOption *given = givenFor(sending, cause ? cause->setting : nullptr);
        if (given != nullptr) {
            return *given;
        }
    }
    if (sending.port) {
        return {"PORT", sending.port->name};
    }
    return sending.given.size() == 1 ? sending.given.front() : GivenOption{};
}

Failure failureOf(const Sending &sending, NW_RESULT result, const NW_OPER_LOG_S &log)
{
    const auto [status, reason] = endingOf(result);
    const bool isDenied = reason == std::string_view(deniedReason);
    const GivenOption blamed = isDenied ? GivenOption{} : blamedFor(sending, result);
    Failure failure(status, blamed.name, blamed.value, reason, result);
    failure.sentence = bmc::boundedText(log.szOperLog);
    return failure;
}

/* Some setters answer the response's result word, which stays 0 when no response came; the
 * operation log alone knows that they failed. */
NW_RESULT resultOf(const Sending &sending, NW_RESULT result, const NW_OPER_LOG_S &log)
{
    return result == NW_OK && saysFailure(log, sending.module) ? NW_ERR_RPC_TRANSPORT : result;
}

std::vector<std::string> mainSentence(const NW_OPER_LOG_S &log)
{
    const std::string sentence = bmc::boundedText(log.szOperLog);
    return sentence.empty() ? std::vector<std::string>{} : std::vector{sentence};
}

Row linesRow(const std::string &key, const std::vector<std::string> &lines)
{
    List list;
    for (const std::string &line : lines) {
        list.rows.push_back({.value = line, .text = line});
    }
    return {.key = key, .value = std::move(list)};
}

void addNotes(const Sending &sending, Rows &rows)
{
    if (!sending.notes.empty()) {
        rows.push_back(notesRow(sending.notes));
    }
}

Rows portRows(const Sending &sending)
{
    return {hidden("port", sending.port ? Value(sending.port->name) : Value()),
            hidden("index", sending.port ? Value(sending.port->index) : Value())};
}

std::string commandsText(const Sending &sending)
{
    std::string text;
    for (const NW_COMMAND_E command : sending.commands) {
        text += (text.empty() ? " (command " : ", then ") + std::to_string(command);
    }
    return text.empty() ? "" : text + ")";
}

std::string givenText(const Sending &sending)
{
    std::string text;
    for (const GivenOption &given : sending.given) {
        text += (text.empty() ? ": " : ", ") + given.name + " '" + given.value + "'";
    }
    return text;
}

List givenList(const Sending &sending)
{
    List list;
    for (const GivenOption &given : sending.given) {
        list.rows.push_back(
            {.value = Object{{hidden("option", given.name), hidden("value", given.value)}},
             .isFolded = true});
    }
    return list;
}

std::string dryRunText(const Sending &sending, const Json &changes)
{
    const std::string begin = "Dry run, nothing was sent. Would ";
    if (!sending.deed.empty()) {
        return begin + sending.deed + commandsText(sending) + ".";
    }
    std::string text = begin + "change " + sending.what +
                       (sending.port ? " of " + sending.port->name : "") + commandsText(sending) +
                       givenText(sending);
    if (sending.changes.empty() && !sending.foreseen) {
        return text + ".";
    }
    return text +
           (changes.empty() ? "; nothing is different from " + sending.comparedWith + "." : ":");
}

/* A place that this program does not know may come from a manager that does. */
std::string textAt(const std::string &place, const Json &value)
{
    if (const settings::Setting *setting = settings::settingAt(place)) {
        return settings::textOf(*setting, value);
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

Json changesOf(const Sending &sending)
{
    if (sending.foreseen) {
        return sending.foreseen();
    }
    if (sending.changes.empty()) {
        return Json::array();
    }
    const Configuration present = readConfiguration();
    const Configuration after = foresee(present, sending);
    return settings::changesOf(settings::differences(present, after), present.state);
}

/* By the network manager. */
bool isRecorded(const Sending &sending)
{
    return !sending.commands.empty() && (!sending.changes.empty() || sending.foreseen);
}

bool isOverlap(const settings::Refusal &refusal)
{
    return settings::describe(refusal.code()).name.starts_with("NW_ERR_IPV");
}

Failure refusalOf(const Sending &sending, const settings::Refusal &refusal)
{
    const GivenOption *given = givenFor(sending, refusal.setting());
    const GivenOption blamed = given != nullptr ? *given : blamedFor(sending, refusal.code());
    return {Exit::refused, blamed.name, blamed.value, reasonOf(refusal), refusal.code()};
}

/* Gateways are left out: one that the manager refuses would hide an overlap. */
Configuration withoutGateways(Configuration configuration)
{
    for (NW_LAN_CFG_PORT_S &port : configuration.lan.astPort) {
        std::memset(port.aucIpv4Gateway, 0, sizeof(port.aucIpv4Gateway));
    }
    return configuration;
}

settings::Change withoutGateways(settings::Change change)
{
    for (settings::Edit &edit : change) {
        if (edit.section == settings::Section::lan) {
            edit.bits[0] &= ~std::uint32_t{NW_LAN_BIT_IPV4_GATEWAY};
        }
    }
    return change;
}

} // namespace

const char *reasonOf(const settings::Refusal &refusal)
{
    return isOverlap(refusal) ? "the change would make two networks overlap"
                              : "the network manager would refuse the change";
}

Row notesRow(const std::vector<std::string> &notes)
{
    List lines;
    for (const std::string &note : notes) {
        lines.rows.push_back({.value = note, .text = "Note: " + note});
    }
    return {.key = "notes", .value = std::move(lines)};
}

Configuration foresee(const Configuration &present, const Sending &sending)
{
    Configuration after = present;
    try {
        for (const settings::Change &change : sending.changes) {
            after = settings::edited(after, change, settings::knownWireless());
        }
        settings::requireGateways(present, after, settings::knownOnLink());
    } catch (const settings::Refusal &refusal) {
        throw refusalOf(sending, refusal);
    }
    return after;
}

void requireNoOverlap(const Configuration &present, const Sending &sending)
{
    try {
        for (const settings::Change &change : sending.changes) {
            settings::edited(withoutGateways(present), withoutGateways(change),
                             settings::knownWireless());
        }
    } catch (const settings::Refusal &refusal) {
        if (isOverlap(refusal)) {
            throw refusalOf(sending, refusal);
        }
    }
}

void send(const Sending &sending, const Confirmation &confirmation, Session &session)
{
    NW_OPER_LOG_S log{};
    const NW_RESULT result = resultOf(sending, sending.send(log), log);
    if (result != NW_OK) {
        throw failureOf(sending, result, log);
    }

    const auto sentences = (sending.sentences != nullptr ? sending.sentences : mainSentence)(log);
    Rows rows = portRows(sending);
    rows.push_back(linesRow("sentences", sentences));
    for (Row &row : sending.complete ? sending.complete() : Rows()) {
        rows.push_back(std::move(row));
    }
    if (sentences.empty() && !sending.complete) {
        rows.push_back(line("Done: " + sending.what + "; the operation log has no sentence."));
    }
    addNotes(sending, rows);
    if (isRecorded(sending)) {
        std::ranges::move(confirmation.rows(), std::back_inserter(rows));
    }
    session.answer(rows);
}

void tell(const Sending &sending, Session &session)
{
    const Json changes = changesOf(sending);
    Rows rows = portRows(sending);
    rows.push_back(line(dryRunText(sending, changes)));
    rows.push_back(hidden("dryRun", true));
    rows.push_back(hidden("what", sending.what));
    rows.push_back(hidden("commands", sending.commands));
    rows.push_back(hidden("settings", givenList(sending)));
    rows.push_back(changesRow(changes));
    addNotes(sending, rows);
    session.answer(rows);
}

namespace {

/* What the manager is going to refuse cuts nobody off; of what cannot be read nothing is known. */
std::string foreseenDanger(const Sending &sending, const Arguments &arguments)
{
    if (!sending.isGuarded || sending.changes.empty()) {
        return "";
    }
    std::optional<Configuration> present;
    std::optional<Configuration> after;
    try {
        present = readConfiguration();
        after = foresee(*present, sending);
    } catch (const Failure &) {
        return "";
    }
    return dangerOf(*present, *after, arguments);
}

} // namespace

void carryOut(const std::function<Sending()> &prepare, const Arguments &arguments, Session &session)
{
    Sending sending;
    std::optional<Confirmation> confirmation;
    {
        const bmc::Snapshot snapshot; /* ends before the library reads back what was changed */
        sending = prepare();
        confirmation.emplace(arguments, foreseenDanger(sending, arguments));
        if (arguments.has("--dry-run")) {
            if (const std::string note = confirmation->note(); !note.empty()) {
                sending.notes.push_back(note);
            }
            tell(sending, session);
            return;
        }
    }
    if (isRecorded(sending)) {
        confirmation->begin();
    }
    try {
        send(sending, *confirmation, session);
    } catch (const Failure &failure) {
        confirmation->cancel(failure, sending.commands.size() > 1);
        throw;
    }
    confirmation->ask(session);
}

Parameter dryRunFlag()
{
    return flag("--dry-run", "make every check, send nothing, tell what would be");
}

std::vector<Parameter> guardParameters()
{
    std::vector<Parameter> parameters = confirmationParameters();
    parameters.push_back(forceFlag());
    return parameters;
}

Row changesRow(const Json &changes)
{
    List list;
    for (const Json &change : changes) {
        const std::string place = change.at(settings::changePlaceKey);
        list.rows.push_back({.value = Value(change),
                             .text = "  " + place + ": " +
                                     textAt(place, change.at(settings::changeBeforeKey)) + " -> " +
                                     textAt(place, change.at(settings::changeAfterKey)),
                             .isFolded = true});
    }
    return {.key = "changes", .value = std::move(list)};
}

} // namespace nwctl
