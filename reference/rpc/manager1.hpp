// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager's typed interface, on the bus name of its service: configurations as JSON
 * documents, whole or in part, all or nothing.
 *
 *   method Apply(in s document, out s answer)    makes the change
 *   method Check(in s document, out s answer)    foresees what Apply would do and changes nothing
 *
 *   answer = { "result": CODE, "reason": text, "setting": place or null,
 *              "changes": [change…], "mended": flag, "notes": [text…] }
 *   change: as settings/difference.hpp tells it
 *
 * CODE is a number, 0 for a success; reason and setting say why the change was refused. A place is
 * "lan.shared.ipv4", "hostname.mode" or "mode"; a value is as in a document, null for none. changes
 * are what was changed, or would be; mended says that something was stored and had to be made so
 * again; notes what else there is to know, what was mended among it. */
#pragma once

namespace bmc::rpc::manager1 {

inline constexpr const char *objectPath = "/io/networkmng/Manager";
inline constexpr const char *interfaceName = "io.networkmng.Manager1";
inline constexpr const char *applyMethod = "Apply";
inline constexpr const char *checkMethod = "Check";

/* Keys of the answer. */
inline constexpr const char *resultKey = "result";
inline constexpr const char *reasonKey = "reason";
inline constexpr const char *settingKey = "setting";
inline constexpr const char *changesKey = "changes";
inline constexpr const char *mendedKey = "mended";
inline constexpr const char *notesKey = "notes";

} // namespace bmc::rpc::manager1
