// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/store.hpp"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "bmc_platform.h"
#include "manager/log.hpp"
#include "platform/records.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* The database's code for a record that is not there. */
constexpr int noRecord = -30798;

} // namespace

Batch &Batch::put(const Configuration &configuration)
{
    settings::forEachRecord([&](const settings::RecordName &record, auto member) {
        const auto bytes = std::as_bytes(std::span(&(configuration.*member), 1));
        put(record.key, {bytes.begin(), bytes.end()});
    });
    return *this;
}

Batch &Batch::put(const Configuration &configuration, const Configuration &former)
{
    settings::forEachRecord([&](const settings::RecordName &record, auto member) {
        const auto bytes = std::as_bytes(std::span(&(configuration.*member), 1));
        const auto held = std::as_bytes(std::span(&(former.*member), 1));
        if (!std::ranges::equal(bytes, held)) {
            put(record.key, {bytes.begin(), bytes.end()});
        }
    });
    return *this;
}

Store::Store()
{
    void *environment = DB_Open();
    database_ = environment == nullptr ? nullptr : DB_GetCurrentDb(environment);
    if (database_ == nullptr) {
        throw Refusal(Result::databaseFailed, "open");
    }
}

Configuration Store::readConfiguration() const
{
    const Snapshot oneMoment;
    Configuration configuration{};
    settings::forEachRecord([&](const settings::RecordName &record, auto member) {
        const bool isThere =
            get(record.key, sizeof(configuration.*member), &(configuration.*member));
        if (!isThere && record.isRequired) {
            failed("read", record.name);
        }
    });
    return configuration;
}

bool Store::isVacant(std::uint32_t key) const
{
    std::byte content{};
    return DB_Get(database_, key, sizeof(content), &content) == noRecord;
}

bool Store::get(std::uint32_t key, std::uint32_t size, void *content) const
{
    return DB_Get(database_, key, size, content) == 0;
}

void Store::commit(const Batch &batch, const char *what) const
{
    std::vector<RecordWrite> writes;
    for (const Batch::Write &write : batch.writes_) {
        writes.push_back({write.key, write.content});
    }
    const int code = putRecords(writes);
    if (code == outcomeUnknown) {
        log(Level::error, std::string("write ") + what +
                              ": nobody can know whether it was written; the manager ends");
        std::_Exit(EXIT_FAILURE);
    }
    if (code != 0) {
        failed("write", what);
    }
}

void Store::failed(const char *operation, const char *name)
{
    throw Refusal(Result::databaseFailed, std::string(operation) + " " + name + " record");
}

} // namespace bmc::manager
