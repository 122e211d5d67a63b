// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Calls of exported functions with their records at any offset from an aligned address.
#pragma once

#include <functional>
#include <type_traits>
#include <utility>

#include "fake_matchers.hpp"
#include "network_mng.h"
#include "setter_fixture.hpp"

namespace unaligned {

using support::Bytes;

using Pointers = std::vector<std::uint8_t *>;

// One call on the board that run() makes.
struct Row {
    std::string function;
    std::function<std::uint32_t(const Pointers &)> call; // 0 where the function answers nothing
    std::vector<Bytes> buffers;                          // in the order of the call's pointers
    std::uint32_t result = 0;
    std::string variant;
};

// In a failed expectation.
inline void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.function << row.variant;
}

template <typename Pointer>
Pointer as(std::uint8_t *bytes)
{
    return static_cast<Pointer>(static_cast<void *>(bytes));
}

template <typename Result, typename... Parameters, std::size_t... index>
std::uint32_t apply(Result (*call)(Parameters *...), const Pointers &pointers,
                    std::index_sequence<index...>)
{
    if constexpr (std::is_void_v<Result>) {
        call(as<Parameters *>(pointers.at(index))...);
        return 0;
    } else {
        return static_cast<std::uint32_t>(call(as<Parameters *>(pointers.at(index))...));
    }
}

// A function of pointers alone; other arguments are bound by a lambda.
template <typename Result, typename... Parameters>
Row row(std::string function, Result (*call)(Parameters *...), std::vector<Bytes> buffers,
        std::uint32_t result = 0, std::string variant = {})
{
    return {std::move(function),
            [call](const Pointers &pointers) {
                return apply(call, pointers, std::index_sequence_for<Parameters...>{});
            },
            std::move(buffers), result, std::move(variant)};
}

#define UNALIGNED_ROW(function, ...) row(#function, function, __VA_ARGS__)

// A record that a function fills or overwrites.
template <typename Record>
Bytes poisoned()
{
    return Bytes(sizeof(Record), setters::poison);
}
// A record in which every byte tells where it stands.
template <typename Record>
Bytes filled()
{
    return setters::pattern(sizeof(Record));
}
inline Bytes text(const std::string &characters)
{
    Bytes bytes(characters.size() + 1);
    support::putText(bytes, 0, characters);
    return bytes;
}
inline Bytes operationLog()
{
    return Bytes(sizeof(NW_OPER_LOG_S));
}

inline std::vector<Row> joined(const std::vector<std::vector<Row>> &parts)
{
    std::vector<Row> rows;
    for (const std::vector<Row> &part : parts) {
        rows.insert(rows.end(), part.begin(), part.end());
    }
    return rows;
}

// Requests that change every setting of port 1.
Bytes lanBitmap();
Bytes lanSet();
Bytes dnsSet();
Bytes combinedSet();

// The rows by subject.
std::vector<Row> storeRows();
std::vector<Row> settingRows();
std::vector<Row> checkRows();
std::vector<Row> operateLogRows();
std::vector<Row> messageRows();
std::vector<Row> discoveryRows();

// All that a call leaves.
struct Outcome {
    std::uint32_t result = 0;
    std::vector<Bytes> buffers;
    std::vector<std::string> calls; // of the platform, log lines included, queues and sockets
    bool surroundingsKept = true;
};

// What the network manager answers.
enum class Manager { accepts, refuses };

// Of the board's port 1.
std::string gatewayText();

// The first buffer starts at the offset from an aligned address, each further one `step` bytes more
// (modulo 8).
Outcome run(const Row &row, Manager manager, std::size_t offset, std::size_t step);

} // namespace unaligned
