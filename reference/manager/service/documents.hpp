// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Configurations as documents: what Check and Apply of rpc/manager1.hpp answer. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "manager/engine/engine.hpp"

namespace bmc::manager {

struct ApplyOptions {
    bool isForced = false; /* also when nobody could come in any more */
    /* 0: the change stays unconfirmed; nothing: unless somebody would be cut off by it. */
    std::optional<std::uint32_t> secondsToConfirm{};
};

/* Makes every check that can be made beforehand and changes nothing. */
std::string checkDocument(Engine &engine, const std::string &document, const ApplyOptions &options);

/* Makes the change, all of it or nothing. */
std::string applyDocument(Engine &engine, const std::string &document, const ApplyOptions &options);

/* Where kernel and system are not as it is stored. */
std::string tellDifferences(Engine &engine);
bool isInLine(Engine &engine);

/* What has changed since the checkpoint that is pending; nothing without one. */
std::string tellPending(Engine &engine);

} // namespace bmc::manager
