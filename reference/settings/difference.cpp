// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/difference.hpp"

#include <algorithm>

namespace bmc::settings {

std::vector<Difference> differences(const Configuration &from, const Configuration &to)
{
    std::vector<Difference> found;
    for (const SectionInfo &info : sections()) {
        for (unsigned port = 0; port < std::max(info.portCount, 1U); ++port) {
            for (const Setting &setting : settingsOf(info.section)) {
                Json before = valueOf(from, setting, port);
                Json after = valueOf(to, setting, port);
                if (before != after) {
                    found.push_back({&setting, port, std::move(before), std::move(after)});
                }
            }
        }
    }
    return found;
}

std::string placeOf(const Setting &setting, unsigned port)
{
    const SectionInfo &info = infoOf(setting.section);
    if (info.isScalar) {
        return info.key;
    }
    const std::string place = info.portCount == 0
                                  ? std::string(info.key)
                                  : std::string(info.key) + "." + std::string(roleOf(port));
    return place + "." + setting.key;
}

} // namespace bmc::settings
