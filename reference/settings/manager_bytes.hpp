// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Bytes of the records that the library carries through unread and the network manager uses. */
#pragma once

#include <cstring>

#include "network_mng/store.h"

namespace bmc::settings {

/* Bits of the ARP control and suspend bytes. */
enum ArpBit : std::uint8_t { arpAnnouncements = 1, arpResponses = 2, arpAll = 3 };

/* NW_LAN_CFG_PORT_S.aucReserved787. */
struct NW_PACKED ArpBytes {
    std::uint8_t control;   /* ArpBit: what the port does */
    std::uint8_t interval;  /* between announcements, in units of 500 ms; 0: one alone */
    std::uint8_t suspend;   /* ArpBit: what rests of it */
    std::uint8_t isResumed; /* 1: the suspend byte has no effect */
};
NW_ASSERT_SIZE(ArpBytes, sizeof(NW_LAN_CFG_PORT_S::aucReserved787));

/* NW_LAN_CFG_PORT_S.aucReserved775: headers of what the port sends. */
struct NW_PACKED HeaderBytes {
    std::uint8_t ipv4[3]; /* time to live, flags, precedence and type of service */
    std::uint8_t hopLimit;
    std::uint8_t trafficClass;
};
NW_ASSERT_SIZE(HeaderBytes, sizeof(NW_LAN_CFG_PORT_S::aucReserved775));

/* NW_LAN_CFG_VLAN_S, whose ID the library names. */
struct NW_PACKED VlanBytes {
    std::uint8_t isEnabled;
    std::uint8_t reserved1[2];
    std::uint16_t id;
    std::uint8_t priority;
    std::uint8_t reserved6;
};
NW_ASSERT_AT(VlanBytes, id, offsetof(NW_LAN_CFG_VLAN_S, usVlanid));
NW_ASSERT_SIZE(VlanBytes, sizeof(NW_LAN_CFG_VLAN_S));

/* Where they begin in a port's entry, and where the interface state has the switchover. */
inline constexpr std::size_t headerBytesAt = offsetof(NW_LAN_CFG_PORT_S, aucReserved775);
inline constexpr std::size_t vlanBytesAt = offsetof(NW_LAN_CFG_PORT_S, stVlan);
inline constexpr std::size_t arpBytesAt = offsetof(NW_LAN_CFG_PORT_S, aucReserved787);
inline constexpr std::size_t switchoverAt = offsetof(NW_IFC_STATE_DB_INFO_S, ucIfcValue1);

inline ArpBytes arpOf(const NW_LAN_CFG_PORT_S &port)
{
    ArpBytes bytes;
    std::memcpy(&bytes, port.aucReserved787, sizeof(bytes));
    return bytes;
}

inline void putArp(NW_LAN_CFG_PORT_S &port, const ArpBytes &bytes)
{
    std::memcpy(port.aucReserved787, &bytes, sizeof(bytes));
}

/* Lifts what is suspended, or puts it back. */
inline void resumeArp(NW_LAN_CFG_PORT_S &port, bool isResumed)
{
    ArpBytes bytes = arpOf(port);
    bytes.isResumed = isResumed ? 1 : 0;
    putArp(port, bytes);
}

/* What rests of ARP while the watchdog timer runs. */
inline std::uint8_t suspendedArp(const NW_LAN_CFG_PORT_S &port)
{
    const ArpBytes bytes = arpOf(port);
    return bytes.isResumed != 0 ? std::uint8_t{0}
                                : static_cast<std::uint8_t>(bytes.suspend & arpAll);
}

inline HeaderBytes headersOf(const NW_LAN_CFG_PORT_S &port)
{
    HeaderBytes bytes;
    std::memcpy(&bytes, port.aucReserved775, sizeof(bytes));
    return bytes;
}

inline VlanBytes vlanOf(const NW_LAN_CFG_PORT_S &port)
{
    VlanBytes bytes;
    std::memcpy(&bytes, &port.stVlan, sizeof(bytes));
    return bytes;
}

/* 1 while the numbers of the two ports are exchanged. The names of the interfaces are exchanged
 * with it, so that they are always those that hold. */
inline std::uint8_t &switchoverIn(NW_IFC_STATE_DB_INFO_S &state)
{
    return state.ucIfcValue1;
}

inline bool isSwitchedOver(const NW_IFC_STATE_DB_INFO_S &state)
{
    return state.ucIfcValue1 == 1;
}

/* 1 once the port's link mode has been set; until then it is the driver's. */
inline std::uint8_t &linkModeMarkIn(NW_AN_CFG_PORT_S &port)
{
    return port.aucAnReserved[0];
}

inline bool hasLinkMode(const NW_AN_CFG_PORT_S &port)
{
    return port.aucAnReserved[0] == 1;
}

} // namespace bmc::settings
