// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The network manager's typed interface, on the bus name of its service: configurations as JSON
 * documents, whole or in part, all or nothing.
 *
 *   method Apply(in s document, in a{sv} options, out s answer)   makes the change
 *   method Check(in s document, in a{sv} options, out s answer)   foresees it and changes nothing
 *
 *   "force", b            also when no port would have an address and a link any more
 *   "confirm-within", u   sets a checkpoint of so many seconds first, see below; 0: sets none.
 *                         Without this option one of 120 s is set when somebody is connected to an
 *                         address that the change takes away. Of no meaning to Check
 *
 *   answer = { "result": CODE, "reason": text, "setting": place or null,
 *              "changes": [change…], "mended": flag, "notes": [text…],
 *              "confirm": null or { "seconds": n, "token": text } }
 *   change: as settings/difference.hpp tells it
 *
 * CODE is a number, 0 for a success; reason and setting say why the change was refused. A place is
 * "lan.shared.ipv4", "hostname.mode" or "mode"; a value is as in a document, null for none. changes
 * are what was changed, or would be; mended says that something was stored and had to be made so
 * again; notes what else there is to know, what was mended among it.
 *
 *   method Differences(out s answer)               where kernel and system are not as it is stored
 *   property readonly b InLine                     nowhere, but for what is somebody else's
 *
 *   answer = [{ "interface": name or null, "stored": text or null, "live": text or null,
 *               "foreign": flag }…]
 *
 * stored and live are for people, "address 192.0.2.1/24"; foreign things are left alone.
 *
 * Confirm or revert: what holds when a checkpoint is set comes back after its time, after a reboot,
 * or when it is asked for, whoever changes it until then.
 *
 *   method Checkpoint(in u seconds, out s token)   10 to 3600; one at a time
 *   method Confirm()                               what has changed stays
 *   method Revert()                                what has changed goes at once
 *   method ConfirmWith(in s token)                 the same for whoever holds the token,
 *   method RevertWith(in s token)                  who need not be allowed to change anything
 *   method CheckpointState(in s token, out s state, out u secondsLeft)
 *                                                  "pending", "confirmed" or "reverted"; "none" for
 *                                                  a token that is not the last one's
 *   method PendingChanges(out s answer)            [change…] since the checkpoint
 *   property readonly b Pending                    whether there is a checkpoint
 *   property readonly u SecondsLeft                to confirm it, 0 without one
 *
 * A refusal of these is a D-Bus error whose name ends in that of the result's code,
 * "io.networkmng.Error.NW_MANAGER_NO_CHECKPOINT". */
#pragma once

namespace bmc::rpc::manager1 {

inline constexpr const char *objectPath = "/io/networkmng/Manager";
inline constexpr const char *interfaceName = "io.networkmng.Manager1";
inline constexpr const char *applyMethod = "Apply";
inline constexpr const char *checkMethod = "Check";
inline constexpr const char *differencesMethod = "Differences";
inline constexpr const char *inLineProperty = "InLine";
inline constexpr const char *checkpointMethod = "Checkpoint";
inline constexpr const char *confirmMethod = "Confirm";
inline constexpr const char *revertMethod = "Revert";
inline constexpr const char *confirmWithMethod = "ConfirmWith";
inline constexpr const char *revertWithMethod = "RevertWith";
inline constexpr const char *checkpointStateMethod = "CheckpointState";
inline constexpr const char *pendingChangesMethod = "PendingChanges";
inline constexpr const char *pendingProperty = "Pending";
inline constexpr const char *secondsLeftProperty = "SecondsLeft";
inline constexpr const char *errorPrefix = "io.networkmng.Error.";

/* Keys of the answer. */
inline constexpr const char *resultKey = "result";
inline constexpr const char *reasonKey = "reason";
inline constexpr const char *settingKey = "setting";
inline constexpr const char *changesKey = "changes";
inline constexpr const char *mendedKey = "mended";
inline constexpr const char *notesKey = "notes";
inline constexpr const char *confirmKey = "confirm";
inline constexpr const char *secondsKey = "seconds";
inline constexpr const char *tokenKey = "token";

/* Keys of a difference. */
inline constexpr const char *interfaceKey = "interface";
inline constexpr const char *storedKey = "stored";
inline constexpr const char *liveKey = "live";
inline constexpr const char *foreignKey = "foreign";

/* Names of the options. */
inline constexpr const char *forceOption = "force";
inline constexpr const char *confirmOption = "confirm-within";

} // namespace bmc::rpc::manager1
