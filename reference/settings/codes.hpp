// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Every code that a caller can receive, with its name, its meaning and its IPMI completion code. */
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "network_mng/base.h"

namespace bmc::settings {

/* What the network manager answers of its own. The segment checks' codes are answered unchanged. */
enum class Result : std::uint32_t {
    done = 0,
    badRequest = 0x1E000001,
    kernelRefused = 0x1E000002,
    databaseFailed = 0x1E000003,
    portNotServed = 0x1E000004,
    /* 0x1E000005 to 0x1E000007 are the library's own. */
    badFlag = 0x1E000009,
    badOrigin = 0x1E00000A,
    badIpv4Address = 0x1E00000B,
    badIpv4Mask = 0x1E00000C,
    badIpv4Gateway = 0x1E00000D,
    gatewayOutside = 0x1E00000E,
    badIpv4Route = 0x1E00000F,
    badIpv6Address = 0x1E000010,
    badIpv6Prefix = 0x1E000011,
    badIpv6Gateway = 0x1E000012,
    badIpv6Route = 0x1E000013,
    badVlanId = 0x1E000014,
    badVlanPriority = 0x1E000015,
    systemFailed = 0x1E000016,
    badArpFlags = 0x1E000017,
    badHostName = 0x1E000018,
    badHostNameMode = 0x1E000019,
    badDnsServer = 0x1E00001A,
    notSupported = 0x1E00001C,
    badDnsDomain = 0x1E00001D,
    badDnsMode = 0x1E00001E,
    badNetMode = 0x1E00001F,
    unknownField = 0x1E000021,
    addressTaken = 0x1E000022,
    badDelay = 0x1E000023,
    notRestored = 0x1E000024,
    badDocument = 0x1E000025,
    wirelessUnknown = 0x1E000026,
    badLldpMode = 0x1E00002C,
    badLinkMode = 0x1E000036,
    /* Told from notSupported, unknownField and badDelay by the mark that a completion code leaves
     * out. */
    noVlan = 0x1E00021C,
    noBond = 0x1E00041C,
    noLinkMode = 0x1E00061C,
    checkpointPending = 0x1E00081C,
    noCheckpoint = 0x1E000A1C,
    locksOut = 0x1E000C1C,
    badToken = 0x1E000221,
    badDeadline = 0x1E000223,
};

struct Code {
    NW_RESULT value;
    std::string_view name; /* "NW_ERR_DB_READ" */
    std::string_view meaning;
    std::uint32_t completion; /* IPMI completion code */
    /* Settings of a port that would explain it, the likelier one first; empty: no more. Any other
     * setting of the same family may explain it, too. */
    std::array<std::string_view, 2> about;
};

/* The list, by value; success is its first row. */
std::span<const Code> codes();

/* Row of the code. A code that differs from a row in the family's mark bits alone has that row's
 * words, any other general words for its family; the value is always the code asked for. */
Code describe(NW_RESULT code);

std::string meaningOf(Result result);

} // namespace bmc::settings
