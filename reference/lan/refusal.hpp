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

private:
    std::uint32_t code_;
};

} // namespace bmc::manager
