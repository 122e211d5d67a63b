// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "segment_model.hpp"

#include <functional>

#include "log_text.hpp"
#include "whole_check_model.hpp"

namespace support {

namespace {

const char *const onlyOnePort = "There is only one netport that is enable.";

class SegmentCheck : WholeCheckModel {
public:
    SegmentCheck(std::uint32_t portSet, const Wifi &wifi, LanRecord &record)
        : WholeCheckModel(wifi, record), eth0_(portSet & 1U), eth1_(portSet & 2U),
          wireless_(portSet & 4U)
    {
    }

    SegmentVerdict normal(std::uint32_t checkType)
    {
        say("Check segment in normal mode.");
        const bool conflict = ((checkType & 1U) != 0 && stageIpv4()) ||
                              ((checkType & 2U) != 0 && stageIpv6()) ||
                              ((checkType & 4U) != 0 && stageSlaac());
        if (conflict) {
            say("Ip address is in the same segment when normal mode.");
        }
        return verdict_;
    }

    SegmentVerdict standby(std::uint32_t checkType)
    {
        say("Check segment in standby mode.");
        if ((checkType & 1U) != 0 && stageStandby()) {
            say("Ip address is in the same segment when standby mode.");
        }
        return verdict_;
    }

private:
    Ipv4Net net4(std::size_t port)
    {
        return {entry(port, at::ipv4Addr), entry(port, at::ipv4Mask)};
    }
    Ipv6Net net6(std::size_t port)
    {
        return {entry(port, at::ipv6Addr), byte(port, at::ipv6Prefix)};
    }
    Ipv6Net slaac(std::size_t port)
    {
        return {entry(port, at::ipv6Further), byte(port, at::ipv6FurtherPrefix)};
    }
    bool on4(std::size_t port)
    {
        return byte(port, at::ipv4Enable) == 1;
    }
    // Code of the first route of the port that the address conflicts with, 0 for none.
    std::uint32_t inRoutes4(Ipv4Net net, std::size_t port)
    {
        static constexpr std::uint32_t codes[][2] = {{0x1E000A51, 0x1E000A59},
                                                     {0x1E000A52, 0x1E000A5A}};
        for (std::size_t route = 0; route < 2; ++route) {
            const std::uint8_t *bytes = entry(port, at::ipv4Route[route]);
            const std::string line =
                "Ipv4 address is in the same segment with route" + std::to_string(route + 1);
            if (bytes[0] != 1) {
                continue;
            }
            if (same(Ipv4Net{bytes + 1, bytes + 5}, net)) {
                say(line + ".");
                return codes[route][0];
            }
            if (same(host(bytes + 9), net)) {
                say(line + " gateway.");
                return codes[route][1];
            }
        }
        return 0;
    }
    std::uint32_t inRoutes6(Ipv6Net net, std::size_t port)
    {
        static constexpr std::uint32_t codes[][2] = {{0x1E000A53, 0x1E000A5B},
                                                     {0x1E000A54, 0x1E000A5C}};
        for (std::size_t route = 0; route < 2; ++route) {
            const std::uint8_t *bytes = entry(port, at::ipv6Route[route]);
            const std::string line =
                "Ipv6 address is in the same segment with route" + std::to_string(route + 1);
            if (bytes[0] != 1) {
                continue;
            }
            if (same({bytes + 1, bytes[17]}, net)) {
                say(line + ".");
                return codes[route][0];
            }
            if (same({bytes + 18, net.prefix}, net)) {
                say(line + " gateway.");
                return codes[route][1];
            }
        }
        return 0;
    }

    bool address4(bool runs, Ipv4Net first, Ipv4Net second, const char *line)
    {
        return runs && same(first, second) &&
               found(0x1E000A27,
                     {line, "Ipv4 address is in the same segment when mode is normal."});
    }
    bool route4(bool runs, Ipv4Net net, std::size_t port, const char *line)
    {
        const std::uint32_t code = runs ? inRoutes4(net, port) : 0;
        return code != 0 && found(code, {line, "Ipv4 address is in the same segment with route"});
    }

    bool stageIpv4()
    {
        say("Check ipv4 segment.");
        const bool both = on4(0) && on4(1);
        const bool wifi = wifi_.enable == 1;
        return address4((eth0_ || eth1_) && both, net4(0), net4(1),
                        "The ipv4 address of eth0 is at the same segment with eth1.") ||
               address4((eth0_ || wireless_) && on4(0) && wifi, net4(0), wifi24(),
                        "The ipv4 address of eth0 is at the same segment with wifi.") ||
               address4((eth1_ || wireless_) && on4(1) && wifi, net4(1), wifi24(),
                        "The ipv4 address of eth1 is at the same segment with wifi.") ||
               route4(eth0_ && both, net4(0), 1,
                      "Ip address is in the same segment with eth1 route") ||
               route4(eth1_ && both, net4(1), 0,
                      "Ip address is in the same segment with eth0 route") ||
               route4(wireless_ && on4(0) && wifi, wifi24(), 0,
                      "Wifi address is in the same segment with eth0 route") ||
               route4(wireless_ && on4(1) && wifi, wifi24(), 1,
                      "Wifi address is in the same segment with eth1 route");
    }

    bool oneIpv6PortOff()
    {
        return byte(0, at::ipv6Enable) == 0 || byte(1, at::ipv6Enable) == 0;
    }

    bool address6(Ipv6Net first, Ipv6Net second, const char *line)
    {
        return same(first, second) &&
               found(0x1E000A28,
                     {line, "Ipv6 address is in the same segment when mode is normal."});
    }
    bool route6(std::size_t own, std::size_t other, const char *line)
    {
        const std::uint32_t code = byte(own, at::ipv6Type) == 1 ? inRoutes6(net6(own), other) : 0;
        return code != 0 && found(code, {line, "Ipv6 address is in the same segment with route"});
    }

    bool stageIpv6()
    {
        if (oneIpv6PortOff()) {
            say(onlyOnePort); // the address half
            say(onlyOnePort); // the route half
            return false;
        }
        return address6(net6(0), net6(1),
                        "The dhcpv6 address that's eth0 and eth1 is at the same segment.") ||
               address6(net6(0), slaac(1),
                        "The dhcpv6 address of eth0 and the slaacs address of eth1 is at the same "
                        "segment.") ||
               address6(slaac(0), net6(1),
                        "The slaacs address of eth0 and the dhcpv6 address of eth1 is at the same "
                        "segment.") ||
               route6(0, 1, "Ipv6 address is in the same segment with eth1 route") ||
               route6(1, 0, "Ipv6 address is in the same segment with eth0 route");
    }

    bool stageSlaac()
    {
        if (oneIpv6PortOff()) {
            say(onlyOnePort);
            return false;
        }
        return same(slaac(0), slaac(1)) &&
               found(0x1E000A28,
                     {"The slaacs that's eth0 and eth1 is at the same segment.",
                      "Ipv6 slaac address is in the same segment when mode is normal."});
    }

    bool stageStandby()
    {
        if (byte(2, at::ipv4Enable) == 0 || wifi_.enable == 0) {
            say("There is only one net port that ipv4 is enabled.");
        } else if (same(wifi24(), net4(2))) {
            return found(0x1E000A27, {"Ipv4 address is in the same segment when mode is standby."});
        }
        const std::uint32_t code = wireless_ && wifi_.enable == 1 ? inRoutes4(wifi24(), 2) : 0;
        return code != 0 && found(code, {"Ipv4 address is in the same segment with bond0"});
    }

    bool eth0_;
    bool eth1_;
    bool wireless_;
};

} // namespace

std::string sumLine(long long sum1, long long sum2, long long byte)
{
    return fake::formatted(
        "NW_CheckDoubleIPv4SameSegment: uiAddrZereo1:%lld. uiAddrZereo2:%lld iCnt:%lld", sum1, sum2,
        byte);
}

std::string bitLine(long long value1, long long value2, long long left)
{
    return fake::formatted("addr1:%lld    addr2:%lld    Prefix:%lld", value1, value2, left);
}

bool sameIpv4Segment(Ipv4Net first, Ipv4Net second, std::vector<std::string> &lines)
{
    unsigned sums[2] = {0, 0};
    for (unsigned byte = 0; byte < 4; ++byte) {
        const unsigned common = first.mask[byte] & second.mask[byte];
        sums[0] += first.address[byte] & common;
        sums[1] += second.address[byte] & common;
        if (((first.address[byte] ^ second.address[byte]) & common) != 0) {
            lines.push_back(sumLine(sums[0], sums[1], byte));
            return false;
        }
    }
    lines.push_back(sumLine(sums[0], sums[1], 4));
    return sums[0] != 0 && sums[1] != 0;
}

bool sameIpv6Segment(Ipv6Net first, Ipv6Net second, std::vector<std::string> &lines)
{
    const std::uint32_t prefix = std::min(first.prefix, second.prefix);
    if (prefix == 0) {
        return false;
    }
    // The last, perhaps partial, byte is compared apart; a prefix above 128 has none.
    const std::uint32_t whole = prefix > 128 ? 16 : (prefix - 1) / 8;
    for (std::uint32_t byte = 0; byte < whole; ++byte) {
        lines.push_back(
            bitLine(first.address[byte], second.address[byte], prefix - 8 * (byte + 1)));
        if (first.address[byte] != second.address[byte]) {
            return false;
        }
    }
    if (prefix > 128) {
        return false;
    }
    const unsigned shift = 8 * (whole + 1) - prefix;
    const unsigned top[2] = {unsigned{first.address[whole]} >> shift,
                             unsigned{second.address[whole]} >> shift};
    lines.push_back(bitLine(top[0], top[1], 0));
    return top[0] == top[1];
}

SegmentVerdict sameSegment(std::uint32_t standby, std::uint32_t portSet, std::uint32_t checkType,
                           const Wifi &wifi, LanRecord &record)
{
    SegmentCheck check(portSet, wifi, record);
    return standby != 0 ? check.standby(checkType) : check.normal(checkType);
}

} // namespace support
