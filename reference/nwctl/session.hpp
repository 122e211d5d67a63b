// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* One run of the program: where it writes and in which form. */
#pragma once

#include <ostream>
#include <string>

#include "failure.hpp"
#include "lan_render.hpp"

namespace nwctl {

class Session {
public:
    Session(std::ostream &out, std::ostream &err, bool json)
        : output(out), errors(err), jsonWanted(json)
    {
    }

    bool json() const
    {
        return jsonWanted;
    }
    /* The answer: a text as it is, or one JSON document. */
    void print(const std::string &text);
    void print(const Json &document);
    /* The answer in the form that is wanted. */
    void answer(const Json &document, const std::string &text);
    /* A remark beside the answer. */
    void remark(const std::string &text);
    /* Reports the failure, in JSON as the answer itself. */
    void report(const Failure &failure);

    Exit status = Exit::success;

private:
    std::ostream &output;
    std::ostream &errors;
    bool jsonWanted;
};

} // namespace nwctl
