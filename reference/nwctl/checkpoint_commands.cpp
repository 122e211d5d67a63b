// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Checkpoints over several commands, and how they end. */
#include "nwctl/confirmation.hpp"
#include "nwctl/manager_client.hpp"
#include "nwctl/sending.hpp"
#include "settings/ways_in.hpp"

namespace nwctl {

namespace {

using bmc::settings::Json;

constexpr const char *secondsArgument = "SECONDS";
constexpr const char *tokenArgument = "TOKEN";

void set(const Arguments &arguments, Session &session)
{
    const unsigned seconds = checkpointSeconds(secondsArgument, arguments.value(secondsArgument));
    const std::string token = setCheckpoint(seconds);
    session.answer({line("What is changed from now on:"), line(confirmHint(seconds, token)),
                    hidden("seconds", seconds), hidden("token", token)});
}

void end(CheckpointEnd end, const char *sentence, const char *key, const Arguments &arguments,
         Session &session)
{
    const std::string token = arguments.value(tokenArgument);
    if (arguments.has(tokenArgument) && token.empty()) {
        throw Failure(Exit::usage, tokenArgument, token, "the token is empty");
    }
    endCheckpoint(end, token);
    session.answer({line(sentence), hidden(key, true)});
}

void showPending(const Arguments &, Session &session)
{
    const std::optional<unsigned> left = pendingSeconds();
    const auto changes = Json::parse(left ? pendingChanges() : "[]", nullptr, false);
    session.answer({line(left ? "What has changed since the checkpoint goes back in " +
                                    std::to_string(*left) + " s unless it is confirmed" +
                                    (changes.empty() ? "; nothing has yet." : ":")
                              : "Nothing waits to be confirmed."),
                    hidden("pending", left.has_value()), hidden("secondsLeft", left),
                    changesRow(changes)});
}

Parameter tokenParameter()
{
    return {Parameter::Kind::optional, tokenArgument,
            "the checkpoint's token, for whoever may not change the network otherwise"};
}

} // namespace

void addCheckpointCommands(std::vector<Command> &commands)
{
    commands.push_back(
        {"",
         "checkpoint",
         "Take back what is changed of the stored settings unless it is confirmed in time",
         "checkpoint 120",
         {{Parameter::Kind::required, secondsArgument, bmc::settings::secondsToConfirm()}},
         set});
    commands.push_back({"",
                        "confirm",
                        "Let stay what has changed since the checkpoint",
                        "confirm",
                        {tokenParameter()},
                        [](const Arguments &arguments, Session &session) {
                            end(CheckpointEnd::confirm,
                                "Confirmed: what has changed since the checkpoint stays.",
                                "confirmed", arguments, session);
                        }});
    commands.push_back({"",
                        "revert",
                        "Take back at once what has changed since the checkpoint",
                        "revert",
                        {tokenParameter()},
                        [](const Arguments &arguments, Session &session) {
                            end(CheckpointEnd::revert,
                                "Taken back: what held before the checkpoint holds again.",
                                "reverted", arguments, session);
                        }});
    commands.push_back({"",
                        "pending",
                        "Show whether changes wait to be confirmed, and the time left",
                        "pending",
                        {},
                        showPending});
}

} // namespace nwctl
