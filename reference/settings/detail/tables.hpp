// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Lists that settings_tables writes for documents, beside those of options. */
#pragma once

#include "settings/setting.hpp"

namespace bmc::settings {

/* Every code, as a table. */
void printCodes();
/* The library's own codes, as a list of a manual page. */
void printCodesOfLibrary();

/* Where a setting's parts lie in request and record, as rows of a table. */
void printBytesHead();
void printBytes(const Setting &setting);

} // namespace bmc::settings
