// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The manager's view of the configuration database: whole records under their keys. */
#pragma once

#include <cstdint>
#include <optional>

#include "network_mng/store.h"

namespace bmc::manager {

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

/* Everything that a change may touch. */
struct NW_PACKED Configuration {
    NW_IFC_STATE_DB_INFO_S state;
    NW_LAN_CFG_DB_INFO_S lan;
    NW_HOSTNAME_DB_INFO_S hostName;
    NW_DNS_DB_INFO_S dns;
    NW_LLDP_DB_INFO_S lldp;
    NW_AN_CFG_DB_INFO_S an;
};

/* Written before a change and after it. While a change is under way the records may hold parts of
 * both configurations and count as the old one; the kernel may hold addresses of both. */
struct NW_PACKED Journal {
    std::uint8_t isUnderWay;
    Configuration from;
    Configuration to;
};
inline constexpr Record<Journal> journalRecord{0x18000000, "manager's journal"};

/* Calls visit(record, member) for each record of the configuration, the same order each time. */
template <typename Visit>
void forEachRecord(const Visit &visit)
{
    visit(hostNameRecord, &Configuration::hostName);
    visit(dnsRecord, &Configuration::dns);
    visit(lldpRecord, &Configuration::lldp);
    visit(anRecord, &Configuration::an);
    visit(ifcStateRecord, &Configuration::state);
    visit(lanRecord, &Configuration::lan);
}

class Store {
public:
    /* Throws Refusal when there is no database. */
    Store();

    /* Nothing when there is no such record of that size. */
    template <typename Content>
    std::optional<Content> find(const Record<Content> &record) const
    {
        Content content{};
        return get(record.key, sizeof(content), &content) ? std::optional(content) : std::nullopt;
    }

    /* As find, but a missing record is a Refusal. */
    template <typename Content>
    Content read(const Record<Content> &record) const
    {
        const auto content = find(record);
        if (!content) {
            failed("read", record.name);
        }
        return *content;
    }

    /* Durable when it returns; throws Refusal. */
    template <typename Content>
    void put(const Record<Content> &record, const Content &content) const
    {
        if (!put(record.key, sizeof(content), &content)) {
            failed("write", record.name);
        }
    }

    /* Records that are missing count as zeros, but for those without which there is no
     * configuration: these make it a Refusal. */
    Configuration readConfiguration() const;
    /* Puts the records of a configuration that are different in the database. */
    void putConfiguration(const Configuration &configuration) const;

private:
    bool get(std::uint32_t key, std::uint32_t size, void *content) const;
    bool put(std::uint32_t key, std::uint32_t size, const void *content) const;
    [[noreturn]] static void failed(const char *operation, const char *name);

    void *database_;
};

} // namespace bmc::manager
