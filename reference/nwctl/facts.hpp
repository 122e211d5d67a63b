// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a command shows: facts with a label for people and a key for programs. */
#pragma once

#include <string>
#include <vector>

#include "session.hpp"

namespace nwctl {

/* The value is shown as it is; true and false are shown as enabled and disabled, null as "-" and a
 * list with commas. */
struct Fact {
    std::string label;
    std::string key;
    Json value;
};
using Facts = std::vector<Fact>;

std::string factsText(const Facts &facts);
Json factsJson(const Facts &facts);

void printFacts(Session &session, const Facts &facts);
/* One block for each port; in JSON the array "ports". */
void printPorts(Session &session, const std::vector<Facts> &ports);

/* The text, null for an empty one. */
Json textOrNull(const std::string &text);

} // namespace nwctl
