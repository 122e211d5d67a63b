/* Options of "lan set" beyond addresses and VLAN: ARP, and the headers of what the port sends. */
#include "addresses.hpp"
#include "failure.hpp"
#include "lan_options.hpp"

namespace nwctl {

namespace {

constexpr unsigned byteMax = 255;

constexpr Word arpValues[] = {{"none", 0}, {"announcements", 1}, {"responses", 2}, {"both", 3}};

/* A byte as a number of one field. */
void setByte(const GivenOption &given, LanChange &change, std::uint32_t bit, std::uint8_t &field)
{
    const unsigned value = numberValue(given, 0, byteMax);
    mark(given, change.bits[0], bit);
    field = static_cast<std::uint8_t>(value);
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
