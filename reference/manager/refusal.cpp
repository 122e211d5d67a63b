// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/refusal.hpp"

#include <algorithm>

namespace bmc::manager {

void blame(Refusal &refusal, std::uint32_t module, unsigned port)
{
    const auto sections = settings::sections();
    const auto info = std::ranges::find(sections, module, &settings::SectionInfo::module);
    if (info != sections.end()) {
        refusal.blame(info->section, info->portCount != 0 ? port : wholeMachine);
    }
}

} // namespace bmc::manager
