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

Json changesOf(const std::vector<Difference> &differences, const NW_IFC_STATE_DB_INFO_S &before)
{
    Json changes = Json::array();
    for (const Difference &found : differences) {
        const bool isPorts = infoOf(found.setting->section).portCount != 0;
        changes.push_back(changeOf(placeOf(*found.setting, found.port),
                                   isPorts ? Json(nameOf(before, found.port)) : Json(),
                                   found.before, found.after));
    }
    return changes;
}

Json changeOf(const std::string &place, const Json &port, const Json &before, const Json &after)
{
    return {{changePlaceKey, place},
            {changePortKey, port},
            {changeBeforeKey, before},
            {changeAfterKey, after}};
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

const Setting *settingAt(std::string_view place)
{
    const auto point = place.rfind('.');
    const SectionInfo *info = findSection(place.substr(0, place.find('.')));
    if (info == nullptr || info->isScalar != (point == place.npos)) {
        return nullptr;
    }
    return findSetting(info->section, info->isScalar ? place : place.substr(point + 1));
}

} // namespace bmc::settings
