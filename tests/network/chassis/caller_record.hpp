// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A record in the caller's memory: exactly as large as it must be, at an odd address. */
#ifndef CALLER_RECORD_HPP
#define CALLER_RECORD_HPP

#include <memory>

#include "fake_platform.hpp"

namespace chassis {

/* 1, 2, ..., 255, 1, ...: no byte looks like one that was never written. */
inline fake::Bytes counted(std::size_t size)
{
    fake::Bytes bytes(size);
    for (std::size_t index = 0; index < size; ++index) {
        bytes[index] = static_cast<std::uint8_t>(index % 255 + 1);
    }
    return bytes;
}

class CallerRecord {
public:
    explicit CallerRecord(const fake::Bytes &bytes)
        : size_(bytes.size()), memory_(new std::uint8_t[lead + size_])
    {
        std::copy(bytes.begin(), bytes.end(), memory_.get() + lead);
    }
    explicit CallerRecord(std::size_t size) : CallerRecord(fake::Bytes(size, poison)) {}

    void *get() const
    {
        return memory_.get() + lead;
    }
    fake::Bytes bytes() const
    {
        return {memory_.get() + lead, memory_.get() + lead + size_};
    }
    bool isUntouched() const
    {
        return bytes() == fake::Bytes(size_, poison);
    }

private:
    static constexpr std::size_t lead = 1;
    static constexpr std::uint8_t poison = 0xA5;

    std::size_t size_;
    std::unique_ptr<std::uint8_t[]> memory_;
};

} // namespace chassis

#endif
