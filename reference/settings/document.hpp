// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The configuration as a file, for export, apply and --init alike:
 *
 *   document = { "mode": …, "switchover": …, "ports": {PORT: identity…},
 *                "hostname": values, "lldp": values,
 *                "lan": {PORT: values…}, "dns": {PORT: values…}, "an": {PORT: values or null…} }
 *   identity = { "name": text, "channel": number, "present": flag }
 *   values   = { KEY: value or [value…]… }
 *
 * Every part may be missing. PORT is a role, the name of an interface, an index or channel:N; KEY
 * and value are those of the settings, a value as JSON or as its text; null stands for none. */
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "settings/change.hpp"
#include "settings/value.hpp"

namespace bmc::settings {

/* A document of more bytes is refused. */
inline constexpr std::size_t documentMax = 1024UL * 1024;

class DocumentError : public std::runtime_error {
public:
    DocumentError(const std::string &place, const std::string &value, const std::string &reason,
                  std::uint32_t code = NW_OK)
        : std::runtime_error(place + ": " + reason), place_(place), value_(value), reason_(reason),
          code_(code)
    {
    }

    /* "lan.eth1.ipv4" in the document's own words; "document" for the whole. */
    const std::string &place() const
    {
        return place_;
    }
    const std::string &value() const
    {
        return value_;
    }
    const std::string &reason() const
    {
        return reason_;
    }
    /* Of the check that refuses what is understood; NW_OK otherwise. */
    std::uint32_t code() const
    {
        return code_;
    }

private:
    std::string place_;
    std::string value_;
    std::string reason_;
    std::uint32_t code_;
};

/* All that is stored. */
Json documentOf(const Configuration &configuration);

/* A value as it stands in a document, for those who tell what they are asked for. */
struct GivenValue {
    const Setting *setting;
    unsigned port;
    std::string place; /* as in DocumentError */
    std::string text;
};

struct Reading {
    Change change;
    std::vector<GivenValue> given; /* in the document's order */
    std::vector<std::string>
        ignored; /* sentences: identities of ports that are not the machine's */
};

/* The change that a document asks for. Names of interfaces count as they are before the change.
 * What it sets of a port that is not served in the mode that it leads to is stored without effect
 * (idlePorts). Throws DocumentError. */
Reading readDocument(std::string_view text, const Configuration &present);

/* Sentences about what the document says beside the changes that it makes: what is ignored of it,
 * and which changed settings have no effect in the network mode. */
std::vector<std::string> notesOf(const Reading &reading, const Configuration &before,
                                 const Configuration &after);

/* The document's own words for what a refusal is about; the nearest place where it has none. */
std::string placeOf(const Refusal &refusal, const Reading &reading);

/* The configuration of a machine that has none: the document has to name the three ports. What it
 * does not set is as in base. Throws DocumentError, also for what the checks refuse. */
Configuration firstConfiguration(std::string_view text,
                                 const std::optional<NW_WIFI_ADDR_S> &wireless,
                                 const Configuration &base = blankConfiguration());

} // namespace bmc::settings
