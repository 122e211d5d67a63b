// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Options of "lan set" as rows: what each is called and what it changes. */
#pragma once

#include <span>

#include "lan_change.hpp"
#include "option.hpp"

namespace nwctl {

using LanOption = Option<LanChange>;

std::span<const LanOption> lanOptions();
/* Those among them that change the VLAN, ARP, and the headers of what the port sends. */
std::span<const LanOption> vlanOptions();
std::span<const LanOption> arpOptions();
std::span<const LanOption> headerOptions();

/* Values of the ARP settings: which of the port's announcements and responses. */
std::span<const Word> arpWords();

/* The change that the options make. Throws Failure as above, usage when there is none. */
LanChange buildLanChange(unsigned port, std::span<const GivenOption> given);

/* The option that the result is most likely due to; null when none of those given is. */
const GivenOption *optionAbout(NW_RESULT result, std::span<const GivenOption> given);

} // namespace nwctl
