// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Why a change is not made: the code that is answered, a sentence for people, and what it is about.
 */
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

#include "settings/setting.hpp"

namespace bmc::settings {

class Refusal : public std::runtime_error {
public:
    Refusal(std::uint32_t code, const std::string &reason) : std::runtime_error(reason), code_(code)
    {
    }

    /* In the words of the list of codes. */
    explicit Refusal(Result result, const std::string &subject = "")
        : Refusal(static_cast<std::uint32_t>(result),
                  (subject.empty() ? "" : subject + ": ") + meaningOf(result))
    {
    }

    std::uint32_t code() const
    {
        return code_;
    }

    /* Nothing where the request as a whole is wrong. */
    std::optional<Section> section() const
    {
        return section_;
    }
    /* NW_OPER_LOG_MODULE_E of the section, 0 without one. */
    std::uint32_t module() const
    {
        return section_ ? infoOf(*section_).module : 0;
    }
    /* NW_PORT_COUNT where no port is to blame. */
    unsigned port() const
    {
        return port_;
    }
    /* Null where no single setting is to blame. */
    const Setting *setting() const
    {
        return setting_;
    }

    /* Who knows more about the cause than the one who threw adds it. */
    void blame(Section section, unsigned port = NW_PORT_COUNT, const Setting *setting = nullptr)
    {
        section_ = section_.value_or(section);
        port_ = port_ == NW_PORT_COUNT ? port : port_;
        setting_ = setting_ == nullptr ? setting : setting_;
    }

private:
    std::uint32_t code_;
    std::optional<Section> section_;
    unsigned port_ = NW_PORT_COUNT;
    const Setting *setting_ = nullptr;
};

inline void require(bool holds, Result refusal, const std::string &subject)
{
    if (!holds) {
        throw Refusal(refusal, subject);
    }
}

/* Runs a task and adds to its refusal what it is about. */
template <typename Task>
void blaming(Section section, unsigned port, const Task &task)
{
    try {
        task();
    } catch (Refusal &refusal) {
        refusal.blame(section, port);
        throw;
    }
}

} // namespace bmc::settings
