// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the tests of the two whole checks, of segments and of routes, are made of: the checks and
// their models, boards, scripts that change a board, and steps.
#pragma once

#include <functional>

#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "log_text.hpp"
#include "network_mng/check.h"
#include "segment_model.hpp"

namespace segment {

using support::Guarded;
using support::Lines;

struct WholeCheck {
    std::string name;
    decltype(&LIB_NW_CheckIPv4v6SameSegment) library;
    decltype(&support::sameSegment) model;
    std::string opening;      // of its first line
    std::uint32_t selections; // below which every value of its third argument makes a difference
    std::size_t verdicts;     // 0 and every code that it can answer
};
inline const WholeCheck sameSegment{
    "SameSegment", LIB_NW_CheckIPv4v6SameSegment, support::sameSegment, "Check segment", 16, 11};
inline const WholeCheck routeSegment{"RouteSameSegment",
                                     LIB_NW_CheckIPv4v6RouteSameSegment,
                                     support::routeSegment,
                                     "Check route segment",
                                     256,
                                     9};

// What a check looks at.
struct Board {
    support::LanRecord record;
    support::Wifi wifi;

    support::PortEntry port(std::size_t index)
    {
        return record.port(index);
    }
};

// Which ports, and which kinds of address or routes, are asked for.
struct Selection {
    std::uint32_t standby;
    std::uint32_t portSet;
    std::uint32_t kinds;
};

// Asks the library; the board's copy stands in front of memory that nobody may touch.
class Question {
public:
    std::uint32_t ask(const WholeCheck &check, const Selection &selection, const Board &board) const
    {
        wifi_.data()[0] = board.wifi.enable;
        std::ranges::copy(board.wifi.address, wifi_.data() + 1);
        std::ranges::copy(board.record.bytes(), record_.data());
        return check.library(selection.standby, selection.portSet, selection.kinds,
                             wifi_.as<NW_WIFI_ADDR_S>(), record_.as<NW_LAN_CFG_DB_INFO_S>());
    }

private:
    Guarded record_{support::kLanRecordSize};
    Guarded wifi_{5};
};

// One port's entry in front of memory that nobody may touch.
struct Entry {
    Guarded bytes{support::kPortEntrySize};
    support::PortEntry port{bytes.bytes()};

    const NW_LAN_CFG_PORT_S *get() const
    {
        return bytes.as<NW_LAN_CFG_PORT_S>();
    }
};

/* ---- Scripts: each makes one thing conflict, or switches one off ---- */

using Script = std::function<void(Board &)>;

inline void nothing(Board &) {}

inline Script also(Script first, Script second)
{
    return [=](Board &board) {
        first(board);
        second(board);
    };
}
inline Script flag(std::size_t port, std::size_t offset, std::uint8_t value)
{
    return [=](Board &board) { board.port(port)[offset] = value; };
}
inline Script wifiEnable(std::uint8_t value)
{
    return [=](Board &board) { board.wifi.enable = value; };
}
inline Script wifiAddress(const std::string &address)
{
    return [=](Board &board) { board.wifi.address = support::ipv4(address); };
}
// Routes to a destination, through a gateway where nobody is; and the other way round.
inline Script destination4(std::size_t port, std::size_t route, const std::string &address,
                           const std::string &mask = "255.255.255.0")
{
    return [=](Board &board) { board.port(port).ipv4Route(route, address, mask, "172.31.0.1"); };
}
inline Script gateway4(std::size_t port, std::size_t route, const std::string &gateway)
{
    return [=](Board &board) {
        board.port(port).ipv4Route(route, "172.30.0.0", "255.255.255.0", gateway);
    };
}
inline Script destination6(std::size_t port, std::size_t route, const std::string &address)
{
    return [=](Board &board) { board.port(port).ipv6Route(route, address, 64, "fd98::1"); };
}
inline Script gateway6(std::size_t port, std::size_t route, const std::string &gateway)
{
    return [=](Board &board) { board.port(port).ipv6Route(route, "fd97::", 64, gateway); };
}

/* ---- Steps: when one runs, what it answers, what it says and in which order ---- */

struct Step {
    std::string name;
    std::uint32_t standby;
    std::uint32_t portSet;
    std::uint32_t kinds;
    Script script;
    std::uint32_t expected;
    Lines lines; // behind the opening line, without shape
};

// The lines of the pair comparisons are left out: they have tests of their own.
inline Lines linesOfSteps()
{
    Lines lines = support::loggedLines();
    std::erase_if(lines, [](const std::string &line) {
        return line.find("NW_CheckDoubleIPv4SameSegment: ") != std::string::npos ||
               line.find("addr1:") != std::string::npos;
    });
    return lines;
}

inline void expectStep(const WholeCheck &check, Board board, const Step &step)
{
    step.script(board);
    EXPECT_EQ(Question().ask(check, {step.standby, step.portSet, step.kinds}, board),
              step.expected);
    const Lines opening = {check.opening +
                           (step.standby != 0 ? " in standby mode." : " in normal mode.")};
    EXPECT_EQ(linesOfSteps(), support::debugLines(support::operator+(opening, step.lines)));
}

// Null instead of the wireless side or the record, whatever is selected.
inline void expectNullsAreErrors(const WholeCheck &check, std::uint32_t kinds, const char *function)
{
    const NW_WIFI_ADDR_S wifi{};
    const NW_LAN_CFG_DB_INFO_S record{};
    EXPECT_EQ(check.library(0, 7, kinds, nullptr, &record), 0x81000002U);
    EXPECT_EQ(check.library(0, 7, kinds, &wifi, nullptr), 0x81000002U);
    EXPECT_EQ(check.library(1, 0, 0, nullptr, nullptr), 0x81000002U);
    EXPECT_THAT(fake::platform().lines(),
                ::testing::ElementsAre(fake::isNullLine("pstWifiInfo", function),
                                       fake::isNullLine("pstLanAddr", function),
                                       fake::isNullLine("pstWifiInfo", function)));
}

} // namespace segment
