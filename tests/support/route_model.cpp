// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "whole_check_model.hpp"

namespace support {

namespace {

// What one of a port's two routes is selected by and answered with.
struct Kind {
    std::uint32_t bit;
    std::uint32_t destinationCode;
    std::uint32_t gatewayCode;
    std::string number;
};
const Kind kinds4[] = {{0x08, 0x1E000A49, 0x1E000A55, "1"}, {0x20, 0x1E000A4A, 0x1E000A56, "2"}};
const Kind kinds6[] = {{0x40, 0x1E000A4D, 0x1E000A57, "1"}, {0x80, 0x1E000A4E, 0x1E000A58, "2"}};

class RouteCheck : WholeCheckModel {
public:
    RouteCheck(std::uint32_t portSet, std::uint32_t routeSet, const Wifi &wifi, LanRecord &record)
        : WholeCheckModel(wifi, record), portSet_(portSet), routeSet_(routeSet)
    {
    }

    SegmentVerdict normal()
    {
        say("Check route segment in normal mode.");
        if (((routeSet_ & 0x28U) != 0 && normal4()) || ((routeSet_ & 0xC0U) != 0 && normal6())) {
            say("Route address is in the same segment when normal mode");
        }
        return verdict_;
    }

    SegmentVerdict standby()
    {
        say("Check route segment in standby mode.");
        if ((routeSet_ & 0x28U) == 0) {
            return verdict_;
        }
        if (byte(2, at::ipv4Enable) == 0 || wifi_.enable == 0) {
            say("There is only one net port that ipv4 is enabled.");
            return verdict_;
        }
        if (bondMeetsWifi()) {
            say("Ipv4 route address is in the same segment when mode is standby.");
            say("Route address is in the same segment when standby mode");
        }
        return verdict_;
    }

private:
    bool meetsAddress4(Ipv4Net route, std::size_t other)
    {
        return same(route, {entry(other, at::ipv4Addr), entry(other, at::ipv4Mask)}) &&
               say("Ipv4 static route is in the same segment with ipv4 address when mode is "
                   "normal.");
    }
    bool meetsRoutes4(Ipv4Net route, std::size_t other)
    {
        for (std::size_t index = 0; index < 2; ++index) {
            const std::uint8_t *bytes = entry(other, at::ipv4Route[index]);
            if (bytes[0] == 1 && same(route, {bytes + 1, bytes + 5})) {
                return say("Ipv4 static route is in the same segment with other port route" +
                           kinds4[index].number + ".");
            }
        }
        return false;
    }
    bool meetsAddresses6(Ipv6Net route, std::size_t other)
    {
        const unsigned count = byte(other, at::ipv6Count);
        if (count == 255) {
            return false;
        }
        // The static address and at most sixteen further ones stand one behind the other, and so do
        // their prefix lengths.
        for (unsigned index = 0; index <= std::min(count, 16U); ++index) {
            if (same(route, {entry(other, at::ipv6Addr + 16 * index),
                             byte(other, at::ipv6Prefix + index)})) {
                return say("Ipv6 static route is in the same segment with ipv6 address when mode "
                           "is normal, index[" +
                           std::to_string(index) + "].");
            }
        }
        return false;
    }
    bool meetsRoutes6(Ipv6Net route, std::size_t other)
    {
        for (const std::size_t offset : at::ipv6Route) {
            const std::uint8_t *bytes = entry(other, offset);
            if (bytes[0] == 1 && same(route, {bytes + 1, bytes[17]})) {
                return say("Ipv6 static route is in the same segment with other route when mode "
                           "is normal.");
            }
        }
        return false;
    }

    // Runs the test for each selected and valid route of the port until one answers true.
    template <typename Test>
    bool anyRoute(const Kind (&kinds)[2], const std::size_t (&offsets)[2], std::size_t port,
                  Test test)
    {
        for (std::size_t index = 0; index < 2; ++index) {
            const std::uint8_t *bytes = entry(port, offsets[index]);
            if ((routeSet_ & kinds[index].bit) != 0 && bytes[0] == 1 && test(kinds[index], bytes)) {
                return true;
            }
        }
        return false;
    }

    bool meetsPort4(std::size_t port, std::size_t other)
    {
        return anyRoute(kinds4, at::ipv4Route, port, [&](const Kind &kind, const auto *bytes) {
            const std::string head = "Ipv4 static route" + kind.number;
            if (meetsAddress4({bytes + 1, bytes + 5}, other)) {
                return found(kind.destinationCode, {head + " is in the same segment with ipv4 "
                                                           "address when mode is normal."});
            }
            if (meetsAddress4(host(bytes + 9), other)) {
                return found(kind.gatewayCode, {head + " gateway is in the same segment with ipv4 "
                                                       "address when mode is normal."});
            }
            return meetsRoutes4({bytes + 1, bytes + 5}, other) &&
                   found(kind.destinationCode,
                         {head + " is in the same segment with other route when mode is normal."});
        });
    }
    bool meetsWifi(std::size_t port)
    {
        return anyRoute(kinds4, at::ipv4Route, port, [&](const Kind &kind, const auto *bytes) {
            const std::string head = "Ipv4 static route" + kind.number;
            const std::string tail = " is in the same segment with wifi when mode is normal.";
            if (same(Ipv4Net{bytes + 1, bytes + 5}, wifi24())) {
                return found(kind.destinationCode, {head + tail});
            }
            return same(host(bytes + 9), host(wifi_.address.data())) &&
                   found(kind.gatewayCode, {head + " gateway" + tail});
        });
    }
    bool meetsPort6(std::size_t port, std::size_t other)
    {
        return anyRoute(kinds6, at::ipv6Route, port, [&](const Kind &kind, const auto *bytes) {
            const std::string head = "Ipv6 static route" + kind.number;
            const std::string withAddress =
                " is in the same segment with ipv6 address when mode is normal.";
            const std::string withRoute =
                " is in the same segment with other route when mode is normal.";
            const Ipv6Net destination{bytes + 1, bytes[17]};
            const Ipv6Net gateway{bytes + 18, 128};
            if (meetsAddresses6(destination, other)) {
                return found(kind.destinationCode, {head + withAddress});
            }
            if (meetsRoutes6(destination, other)) {
                return found(kind.destinationCode, {head + withRoute});
            }
            if (meetsAddresses6(gateway, other)) {
                return found(kind.gatewayCode, {head + " gateway" + withAddress});
            }
            return meetsRoutes6(gateway, other) &&
                   found(kind.gatewayCode, {head + " gateway" + withRoute});
        });
    }

    bool normal4()
    {
        say("Check ipv4 route segment.");
        const bool wifi = wifi_.enable == 1;
        for (std::size_t port = 0; port < 2; ++port) {
            const std::size_t other = 1 - port;
            if ((portSet_ & (1U << port)) == 0) {
                continue;
            }
            if ((byte(other, at::ipv4Enable) == 1 && meetsPort4(port, other) &&
                 say("Route address is in the same segment with eth" + std::to_string(other) +
                     " when normal mode")) ||
                (wifi && meetsWifi(port) &&
                 say("Route address is in the same segment with wifi when normal mode"))) {
                return say("Ipv4 static route is in the same segment when mode is normal.");
            }
        }
        return false;
    }
    bool normal6()
    {
        say("Check ipv6 route segment.");
        for (std::size_t port = 0; port < 2; ++port) {
            const std::size_t other = 1 - port;
            if (byte(other, at::ipv6Enable) == 1 && meetsPort6(port, other)) {
                say("IPv6 route address is in the same segment with eth" + std::to_string(other) +
                    " when normal mode");
                return say("Ipv6 static route is in the same segment when mode is normal.");
            }
        }
        return false;
    }
    // Both routes, whichever is selected.
    bool bondMeetsWifi()
    {
        for (std::size_t index = 0; index < 2; ++index) {
            const std::uint8_t *bytes = entry(2, at::ipv4Route[index]);
            const Kind &kind = kinds4[index];
            const std::string head = "The IPv4 static route" + kind.number;
            if (bytes[0] != 1) {
                continue;
            }
            if (same(Ipv4Net{bytes + 1, bytes + 5}, wifi24())) {
                return found(kind.destinationCode, {head + " is in the same segment with wifi."});
            }
            if (same(host(bytes + 9), wifi24())) {
                return found(kind.gatewayCode,
                             {head + " gateway is in the same segment with wifi."});
            }
        }
        return false;
    }

    std::uint32_t portSet_;
    std::uint32_t routeSet_;
};

} // namespace

SegmentVerdict routeSegment(std::uint32_t standby, std::uint32_t portSet, std::uint32_t routeSet,
                            const Wifi &wifi, LanRecord &record)
{
    RouteCheck check(portSet, routeSet, wifi, record);
    return standby != 0 ? check.standby() : check.normal();
}

} // namespace support
