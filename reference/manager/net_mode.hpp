// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Commands 4 and 11: separate ports or a bond, and which interface is which port. */
#pragma once

#include "draft.hpp"

namespace bmc::manager {

/* Check a request and note what it asks for; throw Refusal. */
void editNetMode(Draft &draft, Payload payload);
void editLanReverse(Draft &draft, Payload payload);

/* The two halves of editNetMode, for a change that has other parts between them. */
void selectNetMode(Draft &draft, Payload payload);
/* The ports that become served must not share a segment. */
void checkNetMode(const Draft &draft);

} // namespace bmc::manager
