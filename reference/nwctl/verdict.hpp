// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the library's checks say of a text. */
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace nwctl {

struct Verdict {
    bool valid;
    std::string detail; /* what the text is, or why it is refused */
};

/* A kind of text that can be checked. */
struct CheckKind {
    const char *name;
    const char *description;
    const char *example; /* a text to show in the help */
    Verdict (*check)(const std::string &text);
};

std::span<const CheckKind> checkKinds();

/* Why the check of the kind, one of checkKinds(), refuses the text; nothing when it accepts it. */
std::optional<std::string> whyNotText(std::string_view kind, const std::string &text);

} // namespace nwctl
