// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Why a request is not carried out: the code that is answered and a sentence for the log. */
#pragma once

#include <stdexcept>
#include <string>

#include "manager_results.hpp"

namespace bmc::manager {

class Refusal : public std::runtime_error {
public:
    Refusal(std::uint32_t code, const std::string &reason) : std::runtime_error(reason), code_(code)
    {
    }

    explicit Refusal(Result result, const std::string &subject = "")
        : Refusal(static_cast<std::uint32_t>(result),
                  (subject.empty() ? "" : subject + ": ") + meaningOf(result))
    {
    }

    std::uint32_t code() const
    {
        return code_;
    }

    /* Operation-log module of the part that is refused; 0 while nobody has named it. */
    std::uint32_t module() const
    {
        return module_;
    }

    void blame(std::uint32_t module)
    {
        module_ = module_ == 0 ? module : module_;
    }

private:
    std::uint32_t code_;
    std::uint32_t module_ = 0;
};

/* Runs a task; a refusal that it throws names the module. */
template <typename Task>
void blaming(std::uint32_t module, const Task &task)
{
    try {
        task();
    } catch (Refusal &refusal) {
        refusal.blame(module);
        throw;
    }
}

inline void require(bool holds, Result refusal, const std::string &subject)
{
    if (!holds) {
        throw Refusal(refusal, subject);
    }
}

} // namespace bmc::manager
