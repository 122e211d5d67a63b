// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/confirmation.hpp"

#include <array>
#include <csignal>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "common/descriptor.hpp"
#include "nwctl/manager_client.hpp"
#include "settings/codes.hpp"
#include "settings/difference.hpp"
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
        for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
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

/* Seconds left; nothing once it has ended, whoever ended it. While the manager cannot be asked the
 * time goes on. */
std::optional<unsigned> secondsLeft(unsigned lastKnown)
{
    try {
        return pendingSeconds();
    } catch (const Failure &) {
        return lastKnown == 0 ? std::nullopt : std::optional(lastKnown - 1);
    }
}

/* None when it was decided elsewhere, or by the time. */
Reply replyWithin(unsigned seconds, const Signals &signals, Session &session)
{
    std::string typed;
    for (std::optional<unsigned> left = seconds; left; left = secondsLeft(*left)) {
        session.prompt("\rKeep this change? " + std::to_string(*left) +
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
    return danger.empty() || arguments.has(noName) ? 0 : settings::usualSecondsToConfirm;
}

/* Of others' checkpoint; whoever cannot be asked has none to tell of. */
std::optional<unsigned> pendingQuietly()
{
    try {
        return pendingSeconds();
    } catch (const Failure &) {
        return std::nullopt;
    }
}

} // namespace

std::vector<Parameter> confirmationParameters()
{
    return {{Parameter::Kind::option, optionName,
             "take the change back after 10 to 3600 seconds unless it is confirmed", "SECONDS"},
            flag(noName, "let the change stay also when somebody may be cut off by it, who has "
                         "120 seconds to confirm it otherwise")};
}

unsigned checkpointSeconds(const std::string &name, const std::string &text)
{
    constexpr unsigned shortest = 10;
    constexpr unsigned longest = 3600;
    return numberIn(name, text, shortest, longest);
}

std::string confirmHint(unsigned seconds, const std::string &token)
{
    return "Goes back in " + std::to_string(seconds) +
           " s unless you confirm it, from any session: nwctl confirm " + token;
}

Confirmation::Confirmation(const Arguments &arguments, std::string danger)
    : danger_(std::move(danger))
{
    const unsigned seconds = secondsFor(arguments, danger_);
    if (seconds == 0) {
        return;
    }
    try {
        before_ = readConfiguration();
        token_ = setCheckpoint(seconds);
        seconds_ = seconds;
    } catch (const Failure &failure) {
        constexpr auto pending = static_cast<NW_RESULT>(settings::Result::checkpointPending);
        /* The change goes back with the one that is there. */
        if (arguments.has(optionName) || failure.result != pending) {
            throw;
        }
    }
}

void Confirmation::cancel(const Failure &failure) const
{
    if (seconds_ == 0 || failure.status == Exit::transport) {
        return;
    }
    try {
        endCheckpoint(CheckpointEnd::revert, token_);
    } catch (const Failure &) {
        return; /* it ends by itself, and there is something else to report */
    }
}

Rows Confirmation::rows() const
{
    if (seconds_ != 0) {
        return {hidden("confirm", Object{{hidden("seconds", seconds_), hidden("token", token_)}}),
                line(danger_), line(confirmHint(seconds_, token_))};
    }
    const std::optional<unsigned> left = pendingQuietly();
    if (!left) {
        return {};
    }
    return {hidden("pending", Object{{hidden("secondsLeft", *left)}}),
            line("Belongs to the checkpoint that is pending: goes back in " +
                 std::to_string(*left) + " s unless it is confirmed.")};
}

void Confirmation::ask(Session &session) const
{
    if (seconds_ == 0 || !session.isInteractive()) {
        return;
    }
    const Signals signals; /* until it has ended */
    const Reply reply = replyWithin(seconds_, signals, session);
    session.prompt("\n");
    if (reply == Reply::yes) {
        endCheckpoint(CheckpointEnd::confirm, token_);
        session.answer({line("Confirmed: the change stays.")});
    } else if (reply == Reply::no) {
        endCheckpoint(CheckpointEnd::revert, token_);
        session.status = Exit::manager;
        session.answer({line("Taken back: what held before holds again.")});
    } else if (settings::differences(*before_, readConfiguration()).empty()) {
        session.status = Exit::manager;
        session.answer({line("Nobody has confirmed it: the change is taken back.")});
    } else {
        session.answer({line("Confirmed elsewhere: the change stays.")});
    }
}

} // namespace nwctl
