// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What holds for a section beyond its single values. */
#pragma once

#include "settings/change.hpp"
#include "settings/segments.hpp"

namespace bmc::settings {

/* A change on its way. */
struct Attempt {
    const Configuration &before;
    Configuration after;
    const std::optional<NW_WIFI_ADDR_S> &wireless;
    SegmentChecks segments{}; /* that the LAN settings made so far call for */
    bool hasNewMode = false;  /* the ports that become served have yet to be checked */
};

/* Each throws Refusal. */
struct SectionRules {
    Section section;
    void (*before)(const Edit &edit, Attempt &attempt); /* the values are looked at */
    void (*after)(const Edit &edit, Attempt &attempt);  /* they have been copied */
    void (*atEnd)(Attempt &attempt);                    /* of all the section's edits */
};

const SectionRules &rulesOf(Section section);

/* The port has such settings, and they have an effect or need none. */
void checkPort(const SectionInfo &info, const Edit &edit, const NW_IFC_STATE_DB_INFO_S &state);

void checkSegments(const Attempt &attempt, const SegmentChecks &checks);

} // namespace bmc::settings
