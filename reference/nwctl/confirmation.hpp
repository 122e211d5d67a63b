// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change that goes back unless whoever made it can still say that it shall stay. */
#pragma once

#include <optional>
#include <string>

#include "nwctl/command.hpp"
#include "nwctl/failure.hpp"

namespace nwctl {

/* The options --confirm-within and --no-confirm of commands that may cut somebody off. */
std::vector<Parameter> confirmationParameters();
/* Seconds for a checkpoint, of an option's or argument's text. Throws Failure (usage). */
unsigned checkpointSeconds(const std::string &name, const std::string &text);

class Confirmation {
public:
    /* danger: why somebody may be cut off by the change, empty where nothing speaks for it. Throws
     * Failure for options that contradict each other. */
    Confirmation(const Arguments &arguments, std::string danger);

    /* Sets a checkpoint where the options ask for one, or there is a danger and they don't forbid
     * it. Throws Failure; nothing has changed then. */
    void begin();
    /* Seconds that the change's own checkpoint shall have, 0 for none; for whoever sets it along
     * with the change, and its token then. */
    unsigned seconds() const;
    void adopt(std::string token);

    /* The change was not made. A part of it that was goes back; where all of it may still be made,
     * the checkpoint stays. */
    void cancel(const Failure &failure, bool isPartly) const;

    /* What a dry run tells. */
    std::string note() const;

    /* What there is to know in the answer of the change, which has been made: how to confirm it, or
     * that it belongs to another's checkpoint. */
    Rows rows() const;

    /* The change was made: on a terminal asks whoever wanted a checkpoint whether it shall stay,
     * until that is decided. */
    void ask(Session &session) const;

private:
    std::string danger_;
    bool isWanted_ = false; /* by an option */
    bool isWithinAnother_ = false;
    unsigned seconds_ = 0;
    std::string token_; /* once there is one */
};

/* The line that says how to confirm. */
std::string confirmHint(unsigned seconds, const std::string &token);

} // namespace nwctl
