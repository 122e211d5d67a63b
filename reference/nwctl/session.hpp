// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* One run of the program: where it writes and in which form. */
#pragma once

#include <ostream>
#include <string>

#include "nwctl/failure.hpp"
#include "nwctl/output.hpp"

namespace nwctl {

class Session {
public:
    Session(std::ostream &out, std::ostream &err, bool wantsJson)
        : out_(out), err_(err), wantsJson_(wantsJson)
    {
    }

    /* The answer, in the form that is wanted. */
    void answer(const Rows &rows);
    /* The answer as it is, whatever is wanted. */
    void print(const std::string &text);
    /* A remark beside the answer. */
    void remark(const std::string &text);
    /* A question to whoever sits at the terminal. */
    void prompt(const std::string &text);
    /* Somebody may be asked: input and messages are a terminal's, and no document is wanted. */
    bool isInteractive() const;
    /* Reports the failure, in JSON as the answer itself. */
    void report(const Failure &failure);

    Exit status = Exit::success;

private:
    std::ostream &out_;
    std::ostream &err_;
    bool wantsJson_;
};

/* "0x1e000a27", and its IPMI completion code as "0xff". */
std::string codeText(NW_RESULT code);
std::string completionText(NW_RESULT code);
/* Name and meaning of the code in a sentence, and for programs: the keys code, name, meaning. */
std::string explained(NW_RESULT code);
Rows codeRows(std::optional<NW_RESULT> code);

} // namespace nwctl
