/* Options of "lan set" as rows: what each is called and what it changes. */
#pragma once

#include <span>
#include <string>

#include "lan_change.hpp"
#include "results.hpp"

namespace nwctl {

/* An option as the user gave it. */
struct GivenOption {
    std::string name;
    std::string value;
};

struct LanOption {
    const char *name;
    const char *valueName;
    const char *description;
    Subject subject;
    /* Adds the option to the change. Throws Failure: usage when the value cannot be understood or
     * contradicts an earlier one, refused when a check of the library refuses it. */
    void (*apply)(const GivenOption &given, LanChange &change);
};

std::span<const LanOption> lanOptions();

/* The change that the options make. Throws Failure as above, usage when there is none. */
LanChange buildLanChange(unsigned port, std::span<const GivenOption> given);

/* The option that a result about the subject is most likely due to; null when none was given. */
const GivenOption *optionAbout(Subject subject, std::span<const GivenOption> given);

} // namespace nwctl
