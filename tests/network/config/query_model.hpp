// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the LAN query must deliver and log, from a layout table of its own.
#pragma once

#include <string>

#include "log_text.hpp"
#include "segment_model.hpp"

namespace query {

using support::Bytes;
using support::LanRecord;
using support::Lines;

inline constexpr std::size_t viewSize = 2799;

struct Field {
    const char *name;
    std::size_t width;
};
std::size_t offsetOf(const std::string &field);

// Everything that the query reads, apart from the kernel.
struct Board {
    Bytes ifc;
    LanRecord lan;
    bool wirelessRead = true;
    support::Wifi wifi;

    void install() const; // as the fake platform's contents
};

// A board whose every byte tells where it stands; all of the port is on.
Board distinctBoard(std::uint8_t mode, std::size_t port);

class View {
public:
    explicit View(Bytes bytes) : bytes_(std::move(bytes)) {}

    std::uint8_t &at(const std::string &field, std::size_t within = 0)
    {
        return bytes_.at(offsetOf(field) + within);
    }
    void raw(const std::string &field, std::size_t within, const std::uint8_t *from,
             std::size_t count);
    void text(const std::string &field, std::size_t within, const std::string &text);
    // State of a slot, the three bytes behind it zero.
    void state(std::size_t slot, std::uint8_t state);
    const Bytes &bytes() const
    {
        return bytes_;
    }

private:
    Bytes bytes_;
};

// The view behind the query when the kernel refines no state.
View expectedView(const Board &board, std::size_t port, const Bytes &before);
// Lines behind the kernel's.
Lines expectedEndLines(const Board &board);

// Names the fields in which two views differ, with their bytes; empty when they are equal.
std::string difference(const Bytes &actual, const Bytes &expected);

} // namespace query
