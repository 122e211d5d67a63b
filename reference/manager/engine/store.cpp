// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/engine/store.hpp"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "bmc_platform.h"
#include "manager/log.hpp"
#include "manager/refusal.hpp"

namespace bmc::manager {

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

Configuration Store::readConfiguration() const
{
    const Snapshot oneMoment;
    Configuration configuration{};
    settings::forEachRecord([&](const settings::RecordName &record, auto member) {
        const bool isThere =
            codeOf(record.key, sizeof(configuration.*member), &(configuration.*member)) == 0;
        if (!isThere && record.isRequired) {
            failed(record.name);
        }
    });
    return configuration;
}

int Store::codeOf(std::uint32_t key, std::uint32_t size, void *content)
{
    void *environment = DB_Open();
    void *database = environment == nullptr ? nullptr : DB_GetCurrentDb(environment);
    if (database == nullptr) {
        throw DatabaseFailure("open");
    }
    return DB_Get(database, key, size, content);
}

void Store::commit(const Batch &batch, const char *what, const LastAct &lastly) const
{
    std::vector<RecordWrite> writes;
    for (const Batch::Write &write : batch.writes_) {
        writes.push_back({write.key, write.content});
    }
    int code = putRecords(writes);
    if (code != 0 && code != outcomeUnknown && mendRecords()) {
        code = putRecords(writes);
    }
    if (code == outcomeUnknown) {
        log(Level::error, std::string("write ") + what +
                              ": nobody can know whether it was written; the manager ends");
        if (lastly) {
            lastly();
        }
        std::_Exit(EXIT_FAILURE);
    }
    if (code != 0) {
        throw DatabaseFailure(std::string("write ") + what + " record");
    }
}

void Store::mend() const
{
    mendRecords();
}

bool Store::isLost() const
{
    return DB_Open() == nullptr && !backupRecords();
}

void Store::abandon() const
{
    if (BMC_AbandonRecords() != 0) {
        throw DatabaseFailure("put aside");
    }
}

void Store::failed(const char *name)
{
    throw Refusal(Result::databaseFailed, std::string("read ") + name + " record");
}

} // namespace bmc::manager
