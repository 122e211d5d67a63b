// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// A board whose port eth1 has IPv6 addresses, what a kernel reports of them, and the lines that the
// query logs about a report.
#pragma once

#include "query_fixture.hpp"

namespace kernel_answers {

using datagram::address;
using datagram::Attribute;
using datagram::build;
using datagram::flags;
using datagram::Message;
using query::Board;
using query::Bytes;
using support::Lines;
using support::operator+;
namespace at = support::at;

inline constexpr std::uint32_t ownIndex = 12; // eth1
inline constexpr std::uint32_t foreignIndex = 11;

inline const char *const linkLocal = "fe80::aa";
inline const char *const staticAddress = "2001:db8::1";
inline const char *const further0 = "2001:db8:f::10";
inline const char *const further1 = "2001:db8:f::11";
inline const char *const further2 = "2001:db8:f::12";

inline Board plainBoard()
{
    Board board{support::ifcRecord(0), {}, true, {}};
    support::PortEntry entry = board.lan.port(1);
    entry.set(at::lanEnable, 1).ipv6Address(staticAddress, 64).set(at::ipv6Count, 3);
    support::put(board.lan.bytes(), 4 + 791 + at::ipv6LinkLocal, support::ipv6(linkLocal));
    entry.ipv6Further(0, further0, 64).ipv6Further(1, further1, 64).ipv6Further(2, further2, 64);
    return board;
}

// The caller's zeroed record, but for the bytes behind the states.
inline Bytes before()
{
    query::View view{Bytes(query::viewSize)};
    for (std::size_t slot = 0; slot < 18; ++slot) {
        const std::uint8_t marks[] = {0, 0xA5, 0xA5, 0xA5};
        view.raw("astIpv6AddrState", 4 * slot, marks, sizeof(marks));
    }
    return view.bytes();
}

inline const std::string infoLine = "addr info*************************************.";
inline const std::string addressLine = "addr ADDRESS info.";
inline const std::string flagsLine = "addr MULTICAST info.";
inline const std::string endOfDump = "Receive data is done.";
inline const std::string errorInDump = "Receive data is unright.";

inline std::string headLine(std::uint32_t index = ownIndex, int flagsByte = 0x80, int prefix = 64)
{
    return fake::formatted("addr flag is %x, index %x, len %x.", flagsByte, index, prefix);
}
inline std::string typeLine(int type)
{
    return fake::formatted("Received attr type is %d.", type);
}
inline std::string flagLine(unsigned word, const std::string &text)
{
    return fake::formatted("FLAG %x, addr %s.", word, text.c_str());
}
inline std::string leftLine(int left)
{
    return fake::formatted("left length is %d.", left);
}
// Lines of one message of the port; own: the lines of its attributes.
inline Lines ownMessage(const Lines &own, unsigned word, const std::string &text, int left)
{
    return Lines{headLine(), infoLine} + own + Lines{flagLine(word, text), leftLine(left)};
}
inline const Lines both = {addressLine, flagsLine};

inline Message own(std::vector<Attribute> attributes)
{
    return {.index = ownIndex, .attributes = std::move(attributes)};
}
inline Message reported(const std::string &text, std::uint32_t word)
{
    return own({address(text), flags(word)});
}
// Size of a message with an address and a flags attribute.
inline constexpr int fullSize = 24 + 20 + 8;

} // namespace kernel_answers
