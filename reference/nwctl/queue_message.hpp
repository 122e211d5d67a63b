// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Messages of a queue as users write and read them. */
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "network_mng/message.h"

namespace nwctl {

using MessageBytes = std::vector<std::uint8_t>;

struct TlvRecord {
    std::uint8_t type;
    MessageBytes value;
};

/* The number of a queue at its path, for which the key has eight bits. */
int queueId(const std::string &text);

/* Records of "TYPE:HEX" texts in the order given; option names them in a Failure (usage). */
MessageBytes packTlv(const std::string &option, std::span<const std::string> texts);

/* Nothing when a record passes the end of the NW_MSG_TEXT_SIZE bytes. Their zeros at the end are no
 * records. */
std::optional<std::vector<TlvRecord>> unpackTlv(std::span<const std::uint8_t> text);

} // namespace nwctl
