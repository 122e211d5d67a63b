// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/documents.hpp"

#include <algorithm>

#include "manager/log.hpp"
#include "manager/refusal.hpp"
#include "manager/service/changes.hpp"
#include "rpc/manager1.hpp"
#include "settings/document.hpp"
#include "settings/foresight.hpp"
#include "settings/ways_in.hpp"

namespace bmc::manager {

namespace {

namespace keys = rpc::manager1;
using settings::Json;

/* A document on its way. */
struct Attempt {
    settings::Reading reading{};
    std::vector<settings::Difference> differences{};
    Json changes = Json::array();
    bool isMended = false; /* what was stored was not so in kernel or system */
    std::vector<std::string> notes;
    Json confirm = nullptr; /* how to confirm, where that is due */
};

void describe(Attempt &attempt, const Configuration &present, const Configuration &after)
{
    attempt.differences = settings::differences(present, after);
    attempt.changes = settings::changesOf(attempt.differences, present.state);
    attempt.notes = settings::notesOf(attempt.reading, present, after);
}

/* Bytes of a record that are no text must not break the answer. */
std::string textOf(const Json &answer)
{
    return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string refused(const char *method, std::uint32_t code, const std::string &place,
                    const std::string &reason, const Attempt &attempt)
{
    log(Level::error, std::string("refused: ") + method + ": " + place + ": " + reason);
    return textOf({{keys::resultKey, code},
                   {keys::reasonKey, reason},
                   {keys::settingKey, place},
                   {keys::changesKey, Json::array()},
                   {keys::mendedKey, attempt.isMended},
                   {keys::notesKey, attempt.notes},
                   {keys::confirmKey, nullptr}});
}

/* Make is called with what is stored and the change, once that has passed the checks. */
template <typename Make>
std::string carryOut(Engine &engine, const char *method, const std::string &document,
                     const Make &make)
{
    Attempt attempt;
    try {
        const Configuration present = engine.present();
        attempt.reading = settings::readDocument(document, present);
        const Configuration after = checked(present, attempt.reading.change);
        describe(attempt, present, after);
        make(present, Change{after, scopeOf(attempt.differences, attempt.reading.change)}, attempt);
    } catch (const settings::DocumentError &error) {
        const auto bad = static_cast<std::uint32_t>(Result::badDocument);
        return refused(method, error.code() != NW_OK ? error.code() : bad, error.place(),
                       error.reason(), attempt);
    } catch (const Refusal &refusal) {
        return refused(method, refusal.code(), settings::placeOf(refusal, attempt.reading),
                       refusal.what(), attempt);
    }
    log(Level::information, std::string(method) + ": done");
    return textOf({{keys::resultKey, NW_OK},
                   {keys::reasonKey, nullptr},
                   {keys::settingKey, nullptr},
                   {keys::changesKey, attempt.changes},
                   {keys::mendedKey, attempt.isMended},
                   {keys::notesKey, attempt.notes},
                   {keys::confirmKey, attempt.confirm}});
}

void requireWayIn(const ApplyOptions &options, const Configuration &present,
                  const Configuration &after)
{
    if (!options.isForced) {
        settings::requireWayIn(present, after, settings::knownLink);
    }
}

/* Seconds that the change needs a checkpoint for, 0 for none. */
std::uint32_t secondsToConfirm(const ApplyOptions &options, const Configuration &present,
                               const Configuration &after, const Engine &engine)
{
    if (options.secondsToConfirm) {
        return *options.secondsToConfirm;
    }
    const bool isCut = !settings::cutOff(present, after, settings::knownConnected()).empty();
    return isCut && !engine.pending() ? settings::usualToConfirm : 0;
}

std::string belongingNote(std::chrono::milliseconds left)
{
    return "belongs to the checkpoint that is pending: goes back in " +
           std::to_string(std::chrono::ceil<std::chrono::seconds>(left).count()) +
           " s unless it is confirmed";
}

/* One that nothing was changed in; there is something else to answer. */
void endQuietly(Engine &engine)
{
    try {
        engine.confirm();
    } catch (const Refusal &refusal) {
        log(Level::error, std::string("checkpoint: ") + refusal.what());
    }
}

/* The change, in a checkpoint of its own where it needs one; a change that is refused leaves
 * none. */
std::vector<Step> changeWithin(Engine &engine, const ApplyOptions &options, const Change &change,
                               const Configuration &present, Attempt &attempt)
{
    const std::uint32_t seconds = secondsToConfirm(options, present, change.after, engine);
    if (seconds == 0) {
        if (const auto left = engine.pending(); left) {
            attempt.notes.push_back(belongingNote(*left));
        }
        return engine.change(change);
    }
    const std::string token = engine.checkpoint(std::chrono::seconds(seconds));
    try {
        auto mended = engine.change(change);
        attempt.confirm = {{keys::secondsKey, seconds}, {keys::tokenKey, token}};
        return mended;
    } catch (const Refusal &) {
        endQuietly(engine);
        throw;
    }
}

} // namespace

std::string checkDocument(Engine &engine, const std::string &document, const ApplyOptions &options)
{
    const auto foresee = [&](const Configuration &present, const Change &change, Attempt &) {
        requireWayIn(options, present, change.after);
        settings::requireGateways(present, change.after, settings::knownOnLink());
    };
    return carryOut(engine, "check", document, foresee);
}

std::string applyDocument(Engine &engine, const std::string &document, const ApplyOptions &options)
{
    const auto make = [&](const Configuration &present, const Change &change, Attempt &attempt) {
        requireWayIn(options, present, change.after);
        for (const Step &step : changeWithin(engine, options, change, present, attempt)) {
            attempt.isMended = true;
            attempt.notes.push_back("was not as stored, made so again: " +
                                    bmc::manager::textOf(step));
        }
    };
    return carryOut(engine, "apply", document, make);
}

std::string tellDifferences(Engine &engine)
{
    const auto textOrNull = [](const std::string &text) {
        return text.empty() ? Json() : Json(text);
    };
    Json answer = Json::array();
    for (const Discrepancy &found : engine.differences()) {
        answer.push_back({{keys::interfaceKey, textOrNull(found.interface)},
                          {keys::storedKey, textOrNull(found.stored)},
                          {keys::liveKey, textOrNull(found.live)},
                          {keys::foreignKey, found.isForeign}});
    }
    return textOf(answer);
}

bool isInLine(Engine &engine)
{
    return std::ranges::all_of(engine.differences(), &Discrepancy::isForeign);
}

std::string tellPending(Engine &engine)
{
    const auto change = engine.pendingChange();
    return textOf(change ? settings::changesOf(settings::differences(change->first, change->second),
                                               change->first.state)
                         : Json::array());
}

} // namespace bmc::manager
