// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/confirmation.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <iterator>
#include <utility>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "common/descriptor.hpp"
#include "nwctl/manager_client.hpp"
#include "settings/codes.hpp"
#include "settings/ways_in.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;

constexpr const char *optionName = "--confirm-within";
constexpr const char *noName = "--no-confirm";

/* While it lives signals arrive through a descriptor alone. */
class Signals {
public:
    Signals()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
            sigaddset(&signals, signal);
        }
        sigprocmask(SIG_BLOCK, &signals, &before_);
        descriptor_ = bmc::Descriptor(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    }

    Signals(const Signals &) = delete;
    Signals &operator=(const Signals &) = delete;

    /* Those that have arrived have had their effect. */
    ~Signals()
    {
        signalfd_siginfo arrived;
        while (read(descriptor_.get(), &arrived, sizeof(arrived)) > 0) {
        }
        sigprocmask(SIG_SETMASK, &before_, nullptr);
    }

    int descriptor() const
    {
        return descriptor_.get();
    }

private:
    sigset_t before_{};
    bmc::Descriptor descriptor_;
};

enum class Reply { none, yes, no };

constexpr const char *pendingState = "pending";
constexpr const char *confirmedState = "confirmed";
constexpr const char *revertedState = "reverted";

/* How a checkpoint ends, and what is said of it. */
struct Ending {
    std::string_view state;
    Exit status;
    const char *sentence;
};
constexpr Ending endings[] = {
    {confirmedState, Exit::success, "Confirmed: the change stays."},
    {revertedState, Exit::manager, "Taken back: what held before holds again."}};

/* What was typed, once it is a whole line. A terminal that has gone says no. */
Reply readReply(std::string &typed)
{
    std::array<char, 64> part{};
    const ssize_t length = read(STDIN_FILENO, part.data(), part.size());
    if (length <= 0) {
        return Reply::no;
    }
    typed.append(part.data(), static_cast<std::size_t>(length));
    if (!typed.ends_with('\n')) {
        return Reply::none;
    }
    const std::string line = std::exchange(typed, "");
    const bool isYes = line == "yes\n" || line == "y\n";
    const bool isNo = line == "no\n" || line == "n\n";
    return isYes ? Reply::yes : isNo ? Reply::no : Reply::none;
}

using Clock = std::chrono::steady_clock;

/* While the manager cannot be asked the time goes on from the former state's moment. */
CheckpointState stateAfter(const CheckpointState &former, Clock::time_point moment,
                           const std::string &token)
{
    try {
        return checkpointState(token);
    } catch (const Failure &) {
        const auto passed = std::chrono::round<std::chrono::seconds>(Clock::now() - moment).count();
        const auto left = std::int64_t{former.secondsLeft} - std::max<std::int64_t>(passed, 1);
        return left < 0 ? CheckpointState{}
                        : CheckpointState{former.state, static_cast<unsigned>(left)};
    }
}

/* None once it has ended otherwise. */
Reply replyTo(CheckpointState &state, const std::string &token, const Signals &signals,
              Session &session)
{
    std::string typed;
    while (state.state == pendingState) {
        const Clock::time_point moment = Clock::now();
        session.prompt("\rKeep this change? " + std::to_string(state.secondsLeft) +
                       " s left to say yes or no: " + typed);
        std::array<pollfd, 2> sources{pollfd{STDIN_FILENO, POLLIN, 0},
                                      pollfd{signals.descriptor(), POLLIN, 0}};
        constexpr int interval = 1000;
        poll(sources.data(), sources.size(), interval);
        const Reply reply = sources[1].revents != 0   ? Reply::no
                            : sources[0].revents != 0 ? readReply(typed)
                                                      : Reply::none;
        if (reply != Reply::none) {
            return reply;
        }
        state = stateAfter(state, moment, token);
    }
    return Reply::none;
}

/* 0 for none. */
unsigned secondsFor(const Arguments &arguments, const std::string &danger)
{
    if (arguments.has(optionName)) {
        const std::string text = arguments.value(optionName);
        if (arguments.has(noName)) {
            throw Failure(Exit::usage, optionName, text, "contradicts --no-confirm");
        }
        return checkpointSeconds(optionName, text);
    }
    return danger.empty() || arguments.has(noName) ? 0 : settings::usualToConfirm;
}

/* Of others' checkpoint; whoever cannot be asked has none to tell of. */
std::optional<unsigned> pendingQuietly()
{
    try {
        return pendingSeconds(Patience::inPassing);
    } catch (const Failure &) {
        return std::nullopt;
    }
}

} // namespace

std::vector<Parameter> confirmationParameters()
{
    return {
        {Parameter::Kind::option, optionName,
         "take the change back after " + settings::secondsToConfirm() + " unless it is confirmed",
         "SECONDS"},
        flag(noName, "set no checkpoint where somebody may be cut off; otherwise there are " +
                         std::to_string(settings::usualToConfirm) + " seconds to confirm")};
}

unsigned checkpointSeconds(const std::string &name, const std::string &text)
{
    return numberIn(name, text, settings::shortestToConfirm, settings::longestToConfirm);
}

std::string confirmHint(unsigned seconds, const std::string &token)
{
    return "Goes back in " + std::to_string(seconds) +
           " s unless you confirm it, from any session: nwctl confirm " + token;
}

Confirmation::Confirmation(const Arguments &arguments, std::string danger)
    : danger_(std::move(danger)), isWanted_(arguments.has(optionName)),
      seconds_(secondsFor(arguments, danger_))
{
}

void Confirmation::begin()
{
    if (seconds_ == 0) {
        isWithinAnother_ = pendingQuietly().has_value();
        return;
    }
    try {
        token_ = setCheckpoint(seconds_);
    } catch (const Failure &failure) {
        constexpr auto pending = static_cast<NW_RESULT>(settings::Result::checkpointPending);
        /* The change goes back with the one that is there. */
        if (isWanted_ || failure.result != pending) {
            throw;
        }
        isWithinAnother_ = true;
    }
}

unsigned Confirmation::seconds() const
{
    return !isWanted_ && seconds_ != 0 && pendingQuietly() ? 0 : seconds_;
}

void Confirmation::adopt(std::string token)
{
    token_ = std::move(token);
}

void Confirmation::cancel(const Failure &failure, bool isPartly) const
{
    if (token_.empty() || failure.status == Exit::transport) {
        return;
    }
    try {
        endCheckpoint(isPartly ? CheckpointEnd::revert : CheckpointEnd::confirm, token_);
    } catch (const Failure &) {
        return; /* it ends by itself, and there is something else to report */
    }
}

std::string Confirmation::note() const
{
    return seconds_ == 0 ? ""
                         : danger_ + (danger_.empty() ? "" : " ") + "It would go back after " +
                               std::to_string(seconds_) + " s unless it is confirmed.";
}

Rows Confirmation::rows() const
{
    if (!token_.empty()) {
        const unsigned left =
            stateAfter({pendingState, seconds_}, Clock::now(), token_).secondsLeft;
        return {hidden("confirm", Object{{hidden("seconds", left), hidden("token", token_),
                                          hidden("because", textOrNull(danger_))}}),
                line(danger_), line(confirmHint(left, token_))};
    }
    const std::optional<unsigned> left = pendingQuietly();
    if (!left && !isWithinAnother_) {
        return {};
    }
    return {hidden("pending", Object{{hidden("secondsLeft", left.value_or(0))}}),
            line(left ? "Belongs to the checkpoint that is pending: goes back in " +
                            std::to_string(*left) + " s unless it is confirmed."
                      : "Belonged to a checkpoint that has ended meanwhile; what is stored now "
                        "tells whether it stays.")};
}

void Confirmation::ask(Session &session) const
{
    if (token_.empty() || !isWanted_ || !session.isInteractive()) {
        return;
    }
    const Signals signals; /* until it has ended */
    CheckpointState state = stateAfter({pendingState, seconds_}, Clock::now(), token_);
    const Reply reply = replyTo(state, token_, signals, session);
    session.prompt("\n");
    if (reply != Reply::none) {
        endCheckpoint(reply == Reply::yes ? CheckpointEnd::confirm : CheckpointEnd::revert, token_);
        state.state = reply == Reply::yes ? confirmedState : revertedState;
    }
    const auto *ending = std::ranges::find(endings, state.state, &Ending::state);
    if (ending == std::end(endings)) {
        throw Failure(Exit::transport, "", "",
                      "it cannot be told whether the change stays; ask again: nwctl diff, pending",
                      NW_ERR_RPC_TRANSPORT);
    }
    session.status = ending->status;
    session.answer({line(ending->sentence)});
}

} // namespace nwctl
