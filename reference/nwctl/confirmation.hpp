// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change that goes back unless whoever made it can still say that it shall stay. */
#pragma once

#include <optional>
#include <string>

#include "nwctl/command.hpp"
#include "nwctl/failure.hpp"
#include "nwctl/stored.hpp"

namespace nwctl {

/* The options --confirm-within and --no-confirm of commands that may cut somebody off. */
std::vector<Parameter> confirmationParameters();
/* Seconds for a checkpoint, of an option's or argument's text. Throws Failure (usage). */
unsigned checkpointSeconds(const std::string &name, const std::string &text);

class Confirmation {
public:
    /* Sets a checkpoint where the arguments ask for one, or there is a danger and they don't forbid
     * it. Throws Failure; nothing has changed then. */
    Confirmation(const Arguments &arguments, std::string danger);

    /* The change was not made: a part that was goes back. Where all of it may still be made, the
     * checkpoint stays. */
    void cancel(const Failure &failure) const;

    /* What there is to know in the answer of the change, which has been made: how to confirm it, or
     * that it belongs to another's checkpoint. */
    Rows rows() const;

    /* The change was made: on a terminal asks whether it shall stay, until that is decided. */
    void ask(Session &session) const;

private:
    unsigned seconds_ = 0; /* 0: there is none */
    std::string token_;
    std::string danger_;
    std::optional<Configuration> before_; /* with a checkpoint */
};

/* The line that says how to confirm. */
std::string confirmHint(unsigned seconds, const std::string &token);

} // namespace nwctl
