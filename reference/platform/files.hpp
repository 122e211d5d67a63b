// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Small state files. */
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "failure.hpp"

namespace bmc {

/* A file descriptor that is closed with its owner. */
class Descriptor {
public:
    explicit Descriptor(int fd) noexcept : m_fd(fd) {}

    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    ~Descriptor()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }

    int get() const noexcept
    {
        return m_fd;
    }

    explicit operator bool() const noexcept
    {
        return m_fd >= 0;
    }

private:
    int m_fd;
};

/* The first bytes of a file, at most limit. Throws Failure with errno as its code; a file that does
 * not exist is worth a line for information only. */
std::string readFile(const std::filesystem::path &path, std::size_t limit);

/* Replaces a file's contents at once: a reader sees the old bytes or the new ones. */
void replaceFile(const std::filesystem::path &path, std::string_view bytes);

/* A JSON file. Throws Failure. */
nlohmann::json readJson(const std::filesystem::path &path);

/* The integer in a JSON value when the type can hold it; otherwise Failure, which calls the value
 * by its name. */
template <typename Integer>
Integer integerOf(const nlohmann::json &value, const std::string &name)
{
    /* Zero and above is stored unsigned, whatever is below zero is out of range. */
    if (!value.is_number_unsigned() ||
        value.get<std::uint64_t>() > std::numeric_limits<Integer>::max()) {
        throw Failure(ERANGE, name + " is not an integer of 0 to " +
                                  std::to_string(std::numeric_limits<Integer>::max()));
    }
    return value.get<Integer>();
}

} // namespace bmc
