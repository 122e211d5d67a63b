// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A package exactly as large as its text, at an address as odd as callers may have. */
#ifndef PACKAGE_HPP
#define PACKAGE_HPP

#include <cstring>
#include <memory>
#include <numeric>

#include "fake_platform.hpp"
#include "network_mng.h"

namespace package {

inline fake::Bytes counted(std::size_t length)
{
    fake::Bytes text(length);
    std::iota(text.begin(), text.end(), std::uint8_t{1});
    return text;
}

class Package {
public:
    Package(long type, const fake::Bytes &text)
        : length_(text.size()), memory_(new std::uint8_t[lead + sizeof(type) + length_])
    {
        std::memcpy(memory_.get() + lead, &type, sizeof(type));
        std::copy(text.begin(), text.end(), memory_.get() + lead + sizeof(type));
    }
    /* Text to be overwritten. */
    explicit Package(std::size_t length) : Package(0, fake::Bytes(length, poison)) {}

    NW_MSG_PACKAGE_S *get()
    {
        return reinterpret_cast<NW_MSG_PACKAGE_S *>(memory_.get() + lead);
    }
    long type() const
    {
        long type = 0;
        std::memcpy(&type, memory_.get() + lead, sizeof(type));
        return type;
    }
    fake::Bytes text() const
    {
        const std::uint8_t *begin = memory_.get() + lead + sizeof(long);
        return {begin, begin + length_};
    }

    static constexpr std::uint8_t poison = 0xA5;

private:
    static constexpr std::size_t lead = 1;

    std::size_t length_;
    std::unique_ptr<std::uint8_t[]> memory_;
};

} // namespace package

#endif
