// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "sending.hpp"

#include "sentences.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

/* Results that the library answers for a refusal and for an unreachable manager alike. */
constexpr NW_RESULT vagueResults[] = {NW_ERR_GENERAL, NW_ERR_ARP_SUSPEND, NW_ERR_ARP_UPDATE,
                                      NW_ERR_ARP_RESUME};

struct Ending {
    Exit status;
    const char *reason;
};

Ending endingOf(NW_RESULT result)
{
    if (result == NW_ERR_RPC_TRANSPORT) {
        return {Exit::transport,
                "no answer from the network manager; the change may still take effect"};
    }
    if (std::ranges::count(vagueResults, result) != 0) {
        return {Exit::manager, "the network manager refused the change or cannot be reached"};
    }
    return {Exit::manager, "the network manager refused the change"};
}

const GivenOption *settingAbout(const Sending &sending, NW_RESULT result)
{
    if (sending.about) {
        return sending.about(result);
    }
    return sending.settings.size() == 1 ? &sending.settings.front() : nullptr;
}

Failure failureOf(const Sending &sending, NW_RESULT result, const NW_OPER_LOG_S &log)
{
    const auto [status, reason] = endingOf(result);
    const GivenOption *setting = settingAbout(sending, result);
    const GivenOption port{"PORT", sending.port ? sending.port->name : ""};
    const GivenOption nothing{};
    const GivenOption &blamed = setting != nullptr ? *setting : sending.port ? port : nothing;

    Failure failure(status, blamed.name, blamed.value, reason, result);
    failure.sentence = failureSentence(log);
    return failure;
}

/* Some setters answer the response's result word, which stays 0 when no response came; the
 * operation log alone knows that they failed. */
NW_RESULT resultOf(const Sending &sending, NW_RESULT result, const NW_OPER_LOG_S &log)
{
    return result == NW_OK && saysFailure(log, sending.module) ? NW_ERR_RPC_TRANSPORT : result;
}

std::string settingsText(const Sending &sending)
{
    std::string text;
    for (const GivenOption &setting : sending.settings) {
        text += (text.empty() ? ": " : ", ") + escaped(setting.name) + " '" +
                escaped(setting.value) + "'";
    }
    return text;
}

std::string commandsText(const Sending &sending)
{
    std::string text;
    for (const NW_COMMAND_E command : sending.commands) {
        text += (text.empty() ? " (command " : ", then ") + std::to_string(command);
    }
    return text.empty() ? "" : text + ")";
}

Json portJson(const Sending &sending)
{
    return {{"port", sending.port ? Json(sending.port->name) : Json()},
            {"index", sending.port ? Json(sending.port->index) : Json()}};
}

void tell(const Sending &sending, Session &session)
{
    Json settings = Json::array();
    for (const GivenOption &setting : sending.settings) {
        settings.push_back({{"option", setting.name}, {"value", setting.value}});
    }
    Json answer = portJson(sending);
    answer.update({{"dryRun", true},
                   {"what", sending.what},
                   {"commands", sending.commands},
                   {"settings", settings}});
    session.answer(answer, "Dry run, nothing was sent. Would change " + sending.what +
                               (sending.port ? " of " + escaped(sending.port->name) : "") +
                               commandsText(sending) + settingsText(sending) + ".\n");
}

} // namespace

void carryOut(const Sending &sending, bool dryRun, Session &session)
{
    if (dryRun) {
        tell(sending, session);
        return;
    }

    NW_OPER_LOG_S log{};
    const NW_RESULT result = resultOf(sending, sending.send(log), log);
    if (result != NW_OK) {
        throw failureOf(sending, result, log);
    }

    const auto sentences = sending.sentences ? sending.sentences(log) : mainSentence(log);
    Json answer = portJson(sending);
    answer["sentences"] = sentences;
    std::string text;
    for (const std::string &sentence : sentences) {
        text += escaped(sentence) + "\n";
    }
    if (sending.complete) {
        sending.complete(answer, text);
    }
    if (text.empty()) {
        text = "Done: " + sending.what + "; the operation log has no sentence.\n";
    }
    session.answer(answer, text);
}

} // namespace nwctl
