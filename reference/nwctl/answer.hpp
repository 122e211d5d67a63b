// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The answer of a command in the form that the user asked for. */
#pragma once

#include <string>

#include "session.hpp"

namespace nwctl {

inline void answer(Session &session, const Json &document, const std::string &text)
{
    if (session.json()) {
        session.print(document);
    } else {
        session.print(text);
    }
}

} // namespace nwctl
