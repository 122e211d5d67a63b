// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The manager's view of the configuration database: whole records under their keys. */
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/records.hpp"
#include "settings/configuration.hpp"

namespace bmc::manager {

using settings::Configuration;

template <typename Content>
struct Record {
    std::uint32_t key;
    const char *name;
};

inline constexpr Record<NW_IFC_STATE_DB_INFO_S> ifcStateRecord{NW_KEY_IFC_STATE, "interface state"};
inline constexpr Record<NW_LAN_CFG_DB_INFO_S> lanRecord{NW_KEY_LAN_CFG, "LAN configuration"};
inline constexpr Record<NW_NET_STATUS_S> netStatusRecord{NW_KEY_NET_STATUS, "net status"};
inline constexpr Record<NW_HOSTNAME_DB_INFO_S> hostNameRecord{NW_KEY_HOSTNAME, "host name"};
inline constexpr Record<NW_DNS_DB_INFO_S> dnsRecord{NW_KEY_DNS, "DNS"};
inline constexpr Record<NW_LLDP_DB_INFO_S> lldpRecord{NW_KEY_LLDP, "LLDP"};
inline constexpr Record<NW_NCSI_DB_INFO_S> ncsiRecord{NW_KEY_NCSI, "NC-SI"};
inline constexpr Record<NW_AN_CFG_DB_INFO_S> anRecord{NW_KEY_AN_CFG, "auto-negotiation"};

/* Records that are written together: all of them durably, or none. They are copied. */
class Batch {
public:
    template <typename Content>
    Batch &put(const Record<Content> &record, const Content &content)
    {
        const auto bytes = std::as_bytes(std::span(&content, 1));
        return put(record.key, {bytes.begin(), bytes.end()});
    }

    /* The records of the configuration. */
    Batch &put(const Configuration &configuration);
    /* Those that differ from the former one. */
    Batch &put(const Configuration &configuration, const Configuration &former);

private:
    friend class Store;

    struct Write {
        std::uint32_t key;
        std::vector<std::byte> content;
    };

    Batch &put(std::uint32_t key, std::vector<std::byte> content)
    {
        writes_.push_back({key, std::move(content)});
        return *this;
    }

    std::vector<Write> writes_;
};

/* Opens the database with each access, so that one that cannot be opened now may be later. Where
 * nothing else is said, an access throws Refusal when there is no database. */
class Store {
public:
    using LastAct = std::function<void()>;

    /* Nothing when there is no such record of that size. */
    template <typename Content>
    std::optional<Content> find(const Record<Content> &record) const
    {
        Content content{};
        return codeOf(record.key, sizeof(content), &content) == 0 ? std::optional(content)
                                                                  : std::nullopt;
    }

    /* As find, but a missing record is a Refusal. */
    template <typename Content>
    Content read(const Record<Content> &record) const
    {
        const auto content = find(record);
        if (!content) {
            failed(record.name);
        }
        return *content;
    }

    /* Whether there is nothing under the record's key; one that is there and cannot be read counts
     * as there. */
    template <typename Content>
    bool isVacant(const Record<Content> &record) const
    {
        Content content{};
        return codeOf(record.key, sizeof(content), &content) == noRecord;
    }

    /* One record, durable when it returns; throws Refusal. */
    template <typename Content>
    void put(const Record<Content> &record, const Content &content) const
    {
        commit(Batch().put(record, content), record.name);
    }

    /* Durable when it returns. Throws Refusal with nothing written. A database that turns out to be
     * damaged is mended and written then. A failure of which nobody can
     * know what it left behind ends the process after its last act: the next one reads what
     * holds. */
    void commit(const Batch &batch, const char *what, const LastAct &lastly = {}) const;

    /* Records that are missing count as zeros, but for those without which there is no
     * configuration: these make it a Refusal. All are of one moment; of a database that cannot be
     * read, the last good one. */
    Configuration readConfiguration() const;

    /* Makes a database that is damaged or missing anew from its backup. */
    void mend() const;

    /* It could not be mended, and there is no backup to do it with. */
    bool isLost() const;

    /* Puts a lost one aside, so that the next access makes another. Throws Refusal. */
    void abandon() const;

private:
    static int codeOf(std::uint32_t key, std::uint32_t size, void *content);
    [[noreturn]] static void failed(const char *name);
};

} // namespace bmc::manager
