// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Options of "lan set" beyond addresses: VLAN, ARP, and the headers of what the port sends. */
#include "addresses.hpp"
#include "failure.hpp"
#include "lan_options.hpp"

namespace nwctl {

namespace {

constexpr unsigned byteMax = 255;
constexpr unsigned vlanIdMax = 4094;
constexpr unsigned vlanPriorityMax = 7;

constexpr Word arpValues[] = {{"none", 0}, {"announcements", 1}, {"responses", 2}, {"both", 3}};

/* A number in one byte. */
void setByte(const GivenOption &given, LanChange &change, std::uint32_t bit, std::uint8_t &field,
             unsigned max = byteMax)
{
    const unsigned value = numberValue(given, 0, max);
    mark(given, change.bits[0], bit);
    field = static_cast<std::uint8_t>(value);
}

void setVlan(const GivenOption &given, LanChange &change)
{
    if (given.value == "off") {
        mark(given, change.bits[0], NW_LAN_BIT_VLAN_ENABLE);
        return;
    }
    const auto id = parseNumber(given.value, vlanIdMax);
    if (!id || *id == 0) {
        misused(given, "expected off or a number from 1 to " + std::to_string(vlanIdMax));
    }
    mark(given, change.bits[0], NW_LAN_BIT_VLAN_ENABLE | NW_LAN_BIT_VLAN_ID);
    change.fields.ucVlanEnable = 1;
    change.fields.usVlanid = static_cast<std::uint16_t>(*id);
}

void setVlanPriority(const GivenOption &given, LanChange &change)
{
    setByte(given, change, NW_LAN_BIT_VLAN_PRIORITY, change.fields.ucVlanPriority, vlanPriorityMax);
}

void setArpFlags(const GivenOption &given, LanChange &change, std::uint32_t bit,
                 std::uint8_t &field)
{
    const std::uint8_t value = wordValue(given, arpValues);
    mark(given, change.bits[0], bit);
    field = value;
}

void setArpControl(const GivenOption &given, LanChange &change)
{
    setArpFlags(given, change, NW_LAN_BIT_ARP_CONTROL, change.fields.ucArpControl);
}

void setArpInterval(const GivenOption &given, LanChange &change)
{
    setByte(given, change, NW_LAN_BIT_ARP_INTERVAL, change.fields.ucArpInterval);
}

void setArpSuspend(const GivenOption &given, LanChange &change)
{
    setArpFlags(given, change, NW_LAN_BIT_ARP_SUSPEND, change.fields.ucArpSuspend);
}

void setHopLimit(const GivenOption &given, LanChange &change)
{
    setByte(given, change, NW_LAN_BIT_HOP_LIMIT, change.fields.ucHopLimit);
}

void setTrafficClass(const GivenOption &given, LanChange &change)
{
    setByte(given, change, NW_LAN_BIT_TRAFFIC_CLASS, change.fields.ucTrafficClass);
}

/* Time to live, flags, precedence and type of service, each a number of at most one byte. */
void setIpv4Header(const GivenOption &given, LanChange &change)
{
    std::uint8_t bytes[sizeof(NW_LAN_IPV4_HEADER_S)]{};
    std::string_view rest = given.value;

    for (std::uint8_t &byte : bytes) {
        const bool last = &byte == std::end(bytes) - 1;
        const auto end = last ? rest.size() : rest.find(',');
        const auto number = parseNumber(rest.substr(0, end), byteMax);
        if (!number || end == rest.npos) {
            misused(given, "expected TTL,FLAGS,TOS with a number from 0 to 255 each");
        }
        byte = static_cast<std::uint8_t>(*number);
        rest.remove_prefix(last ? end : end + 1);
    }
    mark(given, change.bits[0], NW_LAN_BIT_IPV4_HEADER);
    change.fields.stIpv4Header = {bytes[0], bytes[1], bytes[2]};
}

/* clang-format off */
constexpr LanOption vlanRows[] = {
    {"--vlan",          "ID|off",          "VLAN of the port, 1 to 4094",            Subject::none, setVlan},
    {"--vlan-priority", "N",               "VLAN priority, 0 to 7",                  Subject::none, setVlanPriority},
};
constexpr LanOption arpRows[] = {
    {"--arp-control",  "none|announcements|responses|both", "what the port sends of its own",               Subject::none, setArpControl},
    {"--arp-interval", "N",                                 "between two announcements, 0 to 255",          Subject::none, setArpInterval},
    {"--arp-suspend",  "none|announcements|responses|both", "what rests while the watchdog timer runs",     Subject::none, setArpSuspend},
};
constexpr LanOption headerRows[] = {
    {"--ipv4-header",   "TTL,FLAGS,TOS", "IPv4 header of what the port sends, numbers from 0 to 255", Subject::none, setIpv4Header},
    {"--hop-limit",     "N",             "IPv6 hop limit of what the port sends, 0 to 255",           Subject::none, setHopLimit},
    {"--traffic-class", "N",             "IPv6 traffic class of what the port sends, 0 to 255",       Subject::none, setTrafficClass},
};
/* clang-format on */

} // namespace

std::span<const LanOption> vlanOptions()
{
    return vlanRows;
}

std::span<const LanOption> arpOptions()
{
    return arpRows;
}

std::span<const LanOption> headerOptions()
{
    return headerRows;
}

std::span<const Word> arpWords()
{
    return arpValues;
}

} // namespace nwctl
