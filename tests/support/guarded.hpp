// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Memory that ends at an inaccessible page: a read or write one byte behind it ends the test in
// every build, sanitized or not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace support {

class Guarded {
public:
    explicit Guarded(std::size_t size, std::uint8_t fill = 0) : size_(size)
    {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t pages = (size + page - 1) / page;
        mapped_ = (pages + 1) * page;
        void *mapping =
            mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (mapping == MAP_FAILED) {
            throw std::runtime_error("no memory for a guarded buffer");
        }
        base_ = static_cast<std::uint8_t *>(mapping);
        if (mprotect(base_ + pages * page, page, PROT_NONE) != 0) {
            throw std::runtime_error("no guard page");
        }
        data_ = base_ + pages * page - size;
        std::memset(data_, fill, size);
    }
    explicit Guarded(std::span<const std::uint8_t> content) : Guarded(content.size())
    {
        std::memcpy(data_, content.data(), content.size());
    }
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;
    ~Guarded()
    {
        munmap(base_, mapped_);
    }

    std::uint8_t *data() const
    {
        return data_;
    }
    std::span<std::uint8_t> bytes() const
    {
        return {data_, size_};
    }

    // The bytes as one of the packed records, which may stand anywhere.
    template <typename RECORD>
    RECORD *as() const
    {
        static_assert(alignof(RECORD) == 1);
        if (sizeof(RECORD) != size_) {
            throw std::logic_error("guarded buffer of another size");
        }
        return static_cast<RECORD *>(static_cast<void *>(data_));
    }

private:
    std::size_t size_;
    std::size_t mapped_ = 0;
    std::uint8_t *base_ = nullptr;
    std::uint8_t *data_ = nullptr;
};

} // namespace support
