// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/checkpoint.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <sys/random.h>

#include "common/hex.hpp"
#include "common/text.hpp"
#include "manager/refusal.hpp"
#include "settings/ways_in.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint32_t checkpointVersion = 1;

std::string newToken()
{
    std::array<std::uint8_t, sizeof(CheckpointRecord::token) / 2> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        throw Refusal(Result::systemFailed,
                      "no random token: " + std::generic_category().message(errno));
    }
    return hexText(bytes);
}

} // namespace

CheckpointRecord checkpointOf(const Configuration &before, std::chrono::seconds within,
                              const Moment &now)
{
    CheckpointRecord checkpoint{};
    checkpoint.version = checkpointVersion;
    checkpoint.state = CheckpointState::pending;
    checkpoint.deadline = static_cast<std::uint64_t>((now.uptime + within).count());
    now.boot.copy(checkpoint.boot, sizeof(checkpoint.boot));
    newToken().copy(checkpoint.token, sizeof(checkpoint.token));
    checkpoint.before = before;
    return checkpoint;
}

std::chrono::milliseconds leftOf(const CheckpointRecord &checkpoint, const Moment &now)
{
    const auto uptime = static_cast<std::uint64_t>(now.uptime.count());
    const bool isOver = boundedText(checkpoint.boot) != now.boot || uptime >= checkpoint.deadline;
    return std::chrono::milliseconds(isOver ? 0 : checkpoint.deadline - uptime);
}

std::string tokenOf(const CheckpointRecord &checkpoint)
{
    return boundedText(checkpoint.token);
}

CheckpointRecord ended(const CheckpointRecord &checkpoint, CheckpointState state)
{
    CheckpointRecord kept{};
    kept.version = checkpointVersion;
    kept.state = state;
    std::ranges::copy(checkpoint.token, kept.token);
    return kept;
}

CheckpointRecord readCheckpoint(const Store &store, const Moment &now)
{
    if (store.isVacant(checkpointRecord)) {
        return {};
    }
    CheckpointRecord checkpoint = store.read(checkpointRecord);
    if (checkpoint.version > checkpointVersion) {
        throw DatabaseFailure("the checkpoint has the format " +
                              std::to_string(std::uint32_t{checkpoint.version}) +
                              ", which this manager doesn't know");
    }
    const std::chrono::milliseconds latest =
        now.uptime + std::chrono::seconds(settings::longestToConfirm);
    checkpoint.deadline =
        std::min<std::uint64_t>(checkpoint.deadline, static_cast<std::uint64_t>(latest.count()));
    return checkpoint;
}

} // namespace bmc::manager
