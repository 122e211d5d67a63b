// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "store.hpp"

#include <cstring>
#include <string>

#include "bmc_platform.h"
#include "refusal.hpp"

namespace bmc::manager {

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
    Configuration configuration{};
    forEachRecord([&](const auto &record, auto member) {
        configuration.*member = find(record).value_or(configuration.*member);
    });
    configuration.state = read(ifcStateRecord);
    configuration.lan = read(lanRecord);
    return configuration;
}

void Store::putConfiguration(const Configuration &configuration) const
{
    forEachRecord([&](const auto &record, auto member) {
        const auto &wanted = configuration.*member;
        const auto stored = find(record);
        if (!stored || std::memcmp(&*stored, &wanted, sizeof(wanted)) != 0) {
            put(record, wanted);
        }
    });
}

bool Store::get(std::uint32_t key, std::uint32_t size, void *content) const
{
    return DB_Get(database_, key, size, content) == 0;
}

bool Store::put(std::uint32_t key, std::uint32_t size, const void *content) const
{
    return DB_PutInternal("nwmanagerd", __LINE__, database_, key, size, content) == 0;
}

void Store::failed(const char *operation, const char *name)
{
    throw Refusal(Result::databaseFailed, std::string(operation) + " " + name + " record");
}

} // namespace bmc::manager
