// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/refusal.hpp"

#include <algorithm>
#include <string>

#include <sys/socket.h>

namespace bmc::manager {

namespace {

const settings::SectionInfo *sectionOf(std::uint32_t module)
{
    const auto sections = settings::sections();
    const auto info = std::ranges::find(sections, module, &settings::SectionInfo::module);
    return info != sections.end() ? &*info : nullptr;
}

/* Key of the setting that asks for the item, empty where none does by itself. */
std::string keyOf(const Item &item, unsigned port)
{
    std::string family = item.address.family == AF_INET6 ? "ipv6" : "ipv4";
    if (item.kind == Kind::address || item.kind == Kind::subnet) {
        return family;
    }
    if (item.kind != Kind::route) {
        return rowOf(item.kind).setting;
    }
    const bool isDefault = item.address.prefix == 0;
    return family + (isDefault ? "-gateway" : "-route" + std::to_string(routeNumberOf(item, port)));
}

} // namespace

void blame(Refusal &refusal, std::uint32_t module, unsigned port)
{
    if (const auto *info = sectionOf(module)) {
        refusal.blame(info->section, info->portCount != 0 ? port : wholeMachine);
    }
}

void blame(Refusal &refusal, std::uint32_t module, const Step &step)
{
    blame(refusal, module, step.port);
    const auto *info = sectionOf(module);
    if (info == nullptr) {
        return;
    }
    if (const auto *setting = settings::findSetting(info->section, keyOf(step.item, step.port))) {
        refusal.blame(info->section, refusal.port(), setting);
    }
}

} // namespace bmc::manager
