// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the models of the two whole checks have in common: the record, the wireless side and what
// has been found and said so far.
#pragma once

#include "segment_model.hpp"

namespace support {

class WholeCheckModel {
protected:
    WholeCheckModel(const Wifi &wifi, LanRecord &record) : wifi_(wifi), record_(record) {}

    bool say(const std::string &line)
    {
        verdict_.lines.push_back(line);
        return true;
    }
    bool found(std::uint32_t code, std::initializer_list<std::string> lines)
    {
        verdict_.result = code;
        verdict_.lines.insert(verdict_.lines.end(), lines);
        return true;
    }

    const std::uint8_t *entry(std::size_t port, std::size_t offset)
    {
        return record_.bytes().data() + 4 + kPortEntrySize * port + offset;
    }
    std::uint8_t byte(std::size_t port, std::size_t offset)
    {
        return *entry(port, offset);
    }
    Ipv4Net wifi24() const
    {
        static constexpr std::uint8_t mask[] = {255, 255, 255, 0};
        return {wifi_.address.data(), mask};
    }
    static Ipv4Net host(const std::uint8_t *address)
    {
        static constexpr std::uint8_t mask[] = {255, 255, 255, 255};
        return {address, mask};
    }

    bool same(Ipv4Net first, Ipv4Net second)
    {
        return sameIpv4Segment(first, second, verdict_.lines);
    }
    bool same(Ipv6Net first, Ipv6Net second)
    {
        return sameIpv6Segment(first, second, verdict_.lines);
    }

    const Wifi &wifi_;
    LanRecord &record_;
    SegmentVerdict verdict_;
};

} // namespace support
