// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/requests.hpp"

#include <algorithm>
#include <cstring>

#include "network_mng/lan.h"
#include "network_mng/operate_log.h"
#include "network_mng/rpc.h"
#include "network_mng/settings.h"
#include "settings/dns_request.hpp"

namespace bmc::settings {

namespace {

/* Where a section's payload has the change bits and the entry of each port, or of the machine. */
struct Layout {
    Section section;
    std::size_t size;
    std::size_t bits;
    std::size_t bitsSize; /* of one port */
    std::size_t entry;
    std::size_t entrySize;
};

/* A section in a command's payload. */
struct Piece {
    std::uint32_t command;
    Section section;
    std::size_t at;
    std::uint32_t partBit; /* in the mask of the combined set; 0: there is none */
};

/* clang-format off */
#define AT(record, member) offsetof(record, member)
#define WIDTH(record, member) sizeof(record::member) / std::extent_v<decltype(record::member)>
constexpr Layout layouts[] = {
    {Section::mode,       sizeof(NW_NET_MODE_SET_S),     AT(NW_NET_MODE_SET_S, ucSetMask),     1, 0, sizeof(NW_NET_MODE_SET_S)},
    {Section::switchover, sizeof(NW_LAN_REVERSE_SET_S),  AT(NW_LAN_REVERSE_SET_S, ucSetMask),  1, 0, sizeof(NW_LAN_REVERSE_SET_S)},
    {Section::hostName,   sizeof(NW_HOSTNAME_SET_REQ_S), AT(NW_HOSTNAME_SET_REQ_S, ucSetMask), 1, 0, sizeof(NW_HOSTNAME_SET_REQ_S)},
    {Section::lldp,       sizeof(NW_LLDP_SET_S),         AT(NW_LLDP_SET_S, ucSetMask),         1, 0, sizeof(NW_LLDP_SET_S)},
    {Section::lan,        sizeof(NW_LAN_SET_REQ_S),      AT(NW_LAN_SET_REQ_S, stBitmap),       WIDTH(NW_LAN_BITMAP_S, aauiWord),  AT(NW_LAN_SET_REQ_S, stConfig.astPort), sizeof(NW_LAN_SET_PORT_S)},
    {Section::dns,        sizeof(DnsRequest),            AT(DnsRequest, bits),                 WIDTH(DnsRequest, bits),           AT(DnsRequest, ports),                  sizeof(NW_DNS_PORT_S)},
    {Section::an,         sizeof(NW_AN_SET_REQ_S),       AT(NW_AN_SET_REQ_S, auiBitmap),       WIDTH(NW_AN_SET_REQ_S, auiBitmap), AT(NW_AN_SET_REQ_S, astPort),           sizeof(NW_AN_SET_PORT_S)},
};

constexpr Piece pieces[] = {
    {NW_CMD_SET_HOSTNAME,    Section::hostName,   0, 0},
    {NW_CMD_SET_DNS,         Section::dns,        0, 0},
    {NW_CMD_SET_LLDP,        Section::lldp,       0, 0},
    {NW_CMD_SET_LAN,         Section::lan,        0, 0},
    {NW_CMD_SET_NET_MODE,    Section::mode,       0, 0},
    {NW_CMD_SET_AN,          Section::an,         0, 0},
    {NW_CMD_SET_LAN_REVERSE, Section::switchover, 0, 0},
    {NW_CMD_SET_ALL,         Section::mode,       AT(NW_SET_NETWORK_ALL_S, aucNetMode), NW_LOG_NET_MODE},
    {NW_CMD_SET_ALL,         Section::lan,        AT(NW_SET_NETWORK_ALL_S, stLan),      NW_LOG_LAN},
    {NW_CMD_SET_ALL,         Section::dns,        AT(NW_SET_NETWORK_ALL_S, aucDns),     NW_LOG_DNS},
};
#undef AT
#undef WIDTH
/* clang-format on */

const Layout &layoutOf(Section section)
{
    return *std::ranges::find(layouts, section, &Layout::section);
}

unsigned entriesOf(Section section)
{
    return std::max(infoOf(section).portCount, 1U);
}

void readPiece(const Piece &piece, std::span<const std::uint8_t> payload, Change &change)
{
    const Layout &layout = layoutOf(piece.section);
    const auto bytes = payload.subspan(piece.at, layout.size);
    for (unsigned port = 0; port < entriesOf(piece.section); ++port) {
        ChangeBits bits{};
        std::memcpy(bits.data(), &bytes[layout.bits + port * layout.bitsSize], layout.bitsSize);
        if ((bits[0] | bits[1]) != 0) {
            const auto entry =
                bytes.subspan(layout.entry + port * layout.entrySize, layout.entrySize);
            change.push_back({.section = piece.section,
                              .port = port,
                              .bits = bits,
                              .request = {entry.begin(), entry.end()}});
        }
    }
}

/* The parts that a payload has; a command for one section has that alone. */
std::uint32_t partsIn(std::uint32_t command, std::span<const std::uint8_t> payload)
{
    std::uint32_t known = 0;
    std::uint32_t mask = 0;
    for (const Piece &piece : pieces) {
        known |= piece.command == command ? piece.partBit : 0;
    }
    if (known != 0) {
        std::memcpy(&mask, payload.first(sizeof(mask)).data(), sizeof(mask));
    }
    require((mask & ~known) == 0, Result::unknownField, "combined set");
    return mask;
}

} // namespace

Change changeIn(std::uint32_t command, std::span<const std::uint8_t> payload)
{
    const std::uint32_t parts = partsIn(command, payload);
    Change change;
    for (const Piece &piece : pieces) {
        const bool isThere = piece.partBit == 0 || (parts & piece.partBit) != 0;
        if (piece.command == command && isThere) {
            readPiece(piece, payload, change);
        }
    }
    return change;
}

std::vector<std::uint8_t> payloadOf(Section section, const Change &change)
{
    const Layout &layout = layoutOf(section);
    std::vector<std::uint8_t> payload(layout.size);
    for (const Edit &edit : change) {
        if (edit.section == section) {
            const auto entry =
                static_cast<std::ptrdiff_t>(layout.entry + edit.port * layout.entrySize);
            std::ranges::copy(edit.request, payload.begin() + entry);
            std::memcpy(&payload[layout.bits + edit.port * layout.bitsSize], edit.bits.data(),
                        layout.bitsSize);
        }
    }
    return payload;
}

unsigned firstPort(const Change &change, std::optional<Section> section)
{
    const auto found = std::ranges::find_if(change, [&](const Edit &edit) {
        return infoOf(edit.section).portCount != 0 && !isEmpty(edit) &&
               (!section || edit.section == *section);
    });
    return found == change.end() ? 0 : found->port;
}

} // namespace bmc::settings
