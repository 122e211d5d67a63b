// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "export" and "apply": the whole configuration, or a part of it, as one document. */
#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>
#include <system_error>

#include <nlohmann/json.hpp>

#include "nwctl/danger.hpp"
#include "nwctl/manager_client.hpp"
#include "nwctl/sending.hpp"
#include "platform/records.hpp"
#include "rpc/manager1.hpp"
#include "settings/document.hpp"
#include "settings/foresight.hpp"
#include "settings/wireless.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
namespace manager1 = bmc::rpc::manager1;
using settings::Json;

constexpr const char *fileArgument = "FILE";

Failure misusedFile(const std::string &path, const std::string &reason)
{
    return {Exit::usage, fileArgument, path, reason};
}

Failure unreadableFile(const std::string &path, int error)
{
    return misusedFile(path, "cannot be read: " + std::generic_category().message(error));
}

/* A device may never end. */
std::string contentsOf(const std::string &path)
{
    std::ifstream file;
    std::istream &input = path == "-" ? std::cin : file;
    errno = 0;
    if (path != "-") {
        file.open(path);
    }
    if (!input) {
        throw unreadableFile(path, errno);
    }
    std::string text(settings::documentMax + 1, '\0');
    input.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(input.gcount()));
    if (input.bad()) {
        throw unreadableFile(path, errno);
    }
    if (text.empty()) {
        throw misusedFile(path, "the file is empty");
    }
    if (text.size() > settings::documentMax) {
        throw misusedFile(path, "the file is longer than 1 MiB");
    }
    return text;
}

settings::Reading readingOf(const std::string &text, const Configuration &present)
{
    try {
        settings::Reading reading = settings::readDocument(text, present);
        if (reading.given.empty() && reading.ignored.empty()) {
            throw Failure(Exit::usage, "", "", "nothing to change: give at least one setting");
        }
        return reading;
    } catch (const settings::DocumentError &error) {
        const bool isRefused = error.code() != NW_OK;
        throw Failure(isRefused ? Exit::refused : Exit::usage,
                      error.place() == "document" ? fileArgument : error.place(), error.value(),
                      error.reason(),
                      isRefused ? std::optional<NW_RESULT>(error.code()) : std::nullopt);
    }
}

/* The value at the place; empty for a place without a value of its own. */
std::string valueAt(const settings::Reading &reading, const std::string &place)
{
    const auto found = std::ranges::find(reading.given, place, &settings::GivenValue::place);
    return found == reading.given.end() ? "" : found->text;
}

/* The configuration that the document leads to. Where the kernel won't be asked by the change
 * itself, what it is certain to refuse is refused here. */
Configuration foreseen(const settings::Reading &reading, const Configuration &present,
                       bool isDryRun)
{
    try {
        const Configuration after =
            settings::edited(present, reading.change, settings::knownWireless());
        if (isDryRun) {
            settings::requireGateways(present, after, settings::knownOnLink());
        }
        return after;
    } catch (const settings::Refusal &refusal) {
        const std::string place = settings::placeOf(refusal, reading);
        throw Failure(Exit::refused, place, valueAt(reading, place), reasonOf(refusal),
                      refusal.code());
    }
}

/* Of an answer, the heading and what JSON has in its place. */
Rows headingOf(const Json &changes, bool isMended)
{
    if (!changes.empty()) {
        return {line("Changed:"), hidden("mended", isMended)};
    }
    return {line(isMended
                     ? "Nothing stored has changed, but kernel or system were not so and have been "
                       "made so again:"
                     : "Nothing has changed: the stored configuration is as the document says."),
            hidden("mended", isMended)};
}

Rows dryRunHeadingOf(const Json &changes)
{
    return {hidden("dryRun", true),
            line(std::string("Dry run, nothing was sent. Would change") +
                 (changes.empty() ? " nothing: the stored configuration is as the document says."
                                  : ":"))};
}

void print(Rows rows, const Json &changes, const std::vector<std::string> &notes, Session &session,
           Rows further = {})
{
    rows.push_back(changesRow(changes));
    rows.push_back(notesRow(notes));
    std::ranges::move(further, std::back_inserter(rows));
    session.answer(rows);
}

[[noreturn]] void failAnswer()
{
    throw Failure(Exit::transport, "", "", "the network manager did not answer properly",
                  NW_ERR_RPC_TRANSPORT);
}

void requireDone(const Json &answer)
{
    const NW_RESULT result = answer.at(manager1::resultKey);
    if (result == NW_OK) {
        return;
    }
    const Json &setting = answer.at(manager1::settingKey);
    throw Failure(Exit::manager, setting.is_string() ? setting.get<std::string>() : "", "",
                  "the network manager refused the change: " +
                      answer.at(manager1::reasonKey).get<std::string>(),
                  result);
}

void printAnswer(const Json &answer, const Rows &confirm, Session &session)
{
    const Json &changes = answer.at(manager1::changesKey);
    print(headingOf(changes, answer.value(manager1::mendedKey, false)), changes,
          answer.at(manager1::notesKey), session, confirm);
}

/* The manager sets the checkpoint along with the change, and tells of another's in its notes. */
void send(const std::string &document, bool isForced, Confirmation &confirmation, Session &session)
{
    try {
        const Json answer = Json::parse(applyByManager(document, isForced, confirmation.seconds()));
        requireDone(answer);
        const Json &confirm = answer.value(manager1::confirmKey, Json());
        if (confirm.is_object()) {
            confirmation.adopt(confirm.at(manager1::tokenKey));
        }
        printAnswer(answer, confirm.is_object() ? confirmation.rows() : Rows(), session);
    } catch (const Json::exception &) {
        failAnswer();
    }
    confirmation.ask(session);
}

void apply(const Arguments &arguments, Session &session)
{
    const std::string text = contentsOf(arguments.value(fileArgument));
    std::optional<Confirmation> confirmation;
    {
        const bmc::Snapshot snapshot;
        const Configuration present = readConfiguration();
        const settings::Reading reading = readingOf(text, present);
        const bool isDryRun = arguments.has("--dry-run");
        const Configuration after = foreseen(reading, present, isDryRun);
        confirmation.emplace(arguments, dangerOf(present, after, arguments));
        if (isDryRun) {
            const Json changes =
                settings::changesOf(settings::differences(present, after), present.state);
            std::vector<std::string> notes = settings::notesOf(reading, present, after);
            if (const std::string note = confirmation->note(); !note.empty()) {
                notes.push_back(note);
            }
            print(dryRunHeadingOf(changes), changes, notes, session);
            return;
        }
    }
    send(text, arguments.has(forceName), *confirmation, session);
}

/* A document in every form of answer. Stored bytes that are no text are shown as such, which no
 * name may have. */
void exportAll(const Arguments &, Session &session)
{
    constexpr int indentation = 2;
    const Json document = settings::documentOf(readConfiguration());
    session.print(document.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n");
}

} // namespace

void addApplyCommands(std::vector<Command> &commands)
{
    commands.push_back({"",
                        "export",
                        "Write the whole stored configuration as a JSON document",
                        "export",
                        {},
                        inSnapshot(exportAll)});
    commands.push_back({"",
                        "apply",
                        "Change all kinds of settings at once, all or nothing",
                        "apply network-settings.json",
                        {{Parameter::Kind::required, fileArgument,
                          "JSON document as of export, whole or in part; - for standard input"},
                         dryRunFlag()},
                        apply});
    std::ranges::copy(guardParameters(), std::back_inserter(commands.back().parameters));
}

} // namespace nwctl
