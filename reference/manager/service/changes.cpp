// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/changes.hpp"

#include "settings/wireless.hpp"

namespace bmc::manager {

namespace {

void select(Scope &scope, settings::Section section, unsigned port)
{
    const settings::SectionInfo &info = settings::infoOf(section);
    scope.select(info.module, info.portCount != 0 ? port : wholeMachine);
}

} // namespace

Configuration checked(const Configuration &present, const settings::Change &asked)
{
    return settings::edited(present, asked, settings::knownWireless());
}

Scope scopeOf(const settings::Change &asked)
{
    Scope scope;
    for (const settings::Edit &edit : asked) {
        if (!settings::isEmpty(edit)) {
            select(scope, edit.section, edit.port);
        }
    }
    return scope;
}

Scope scopeOf(const std::vector<settings::Difference> &differences, const settings::Change &asked)
{
    Scope scope;
    scope.along = scopeOf(asked).selected;
    for (const settings::Difference &difference : differences) {
        select(scope, difference.setting->section, difference.port);
    }
    return scope;
}

} // namespace bmc::manager
