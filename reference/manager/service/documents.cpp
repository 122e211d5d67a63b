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
                   {keys::notesKey, attempt.notes}});
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
                   {keys::notesKey, attempt.notes}});
}

} // namespace

std::string checkDocument(Engine &engine, const std::string &document)
{
    return carryOut(engine, "check", document,
                    [](const Configuration &present, const Change &change, Attempt &) {
                        settings::requireGateways(present, change.after, settings::knownOnLink());
                    });
}

std::string applyDocument(Engine &engine, const std::string &document)
{
    return carryOut(engine, "apply", document,
                    [&](const Configuration &, const Change &change, Attempt &attempt) {
                        for (const Step &step : engine.change(change)) {
                            attempt.isMended = true;
                            attempt.notes.push_back("was not as stored, made so again: " +
                                                    bmc::manager::textOf(step));
                        }
                    });
}

} // namespace bmc::manager
