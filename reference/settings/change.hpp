// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A change of settings, whoever asks for it: put together from texts, requests or a file, checked
 * once, and made in a copy of the configuration. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "network_mng/check.h"
#include "settings/refusal.hpp"
#include "settings/setting.hpp"

namespace bmc::settings {

using ChangeBits = std::array<std::uint32_t, 2>;

/* What changes in one section, of one port or of the machine. */
struct Edit {
    Section section;
    unsigned port = 0;      /* 0 where the settings are the machine's */
    ChangeBits bits{};      /* parts that take the request's value */
    ChangeBits cleared{};   /* parts that go back to nothing, which no request can ask for */
    ChangeBits held{};      /* words stored without effect, which no request can ask for */
    bool mayBeIdle = false; /* stored without effect where the port is not served, not refused */
    /* The section's request record of one port (NW_LAN_SET_PORT_S, NW_DNS_PORT_S, NW_AN_SET_PORT_S)
     * or of the machine (NW_HOSTNAME_SET_REQ_S, NW_LLDP_SET_S, NW_NET_MODE_SET_S,
     * NW_LAN_REVERSE_SET_S); change bits within it have no meaning. */
    std::vector<std::uint8_t> request{};
};

using Change = std::vector<Edit>;

/* The change gives the part, or one of the setting's parts, a new value or none. */
bool isSelected(const Edit &edit, const Part &part);
bool isSelected(const Edit &edit, const Setting &setting);
/* The byte that the change gives the setting's first part; nothing where it gives none. */
std::optional<std::uint8_t> byteGiven(const Edit &edit, const char *key);
/* Nothing is selected. */
bool isEmpty(const Edit &edit);
/* The section's edit of the port, made where there is none. */
Edit &editOf(Change &change, Section section, unsigned port);

/* A text that is no value of the setting. */
class BadValue : public std::runtime_error {
public:
    BadValue(const Setting &setting, std::string_view text, const std::string &reason,
             bool isRefused = false)
        : std::runtime_error(reason), setting_(&setting), text_(text), isRefused_(isRefused)
    {
    }

    const Setting &setting() const
    {
        return *setting_;
    }
    const std::string &text() const
    {
        return text_;
    }
    /* The text is understood, but a check of the library refuses the value. */
    bool isRefused() const
    {
        return isRefused_;
    }

private:
    const Setting *setting_;
    std::string text_;
    bool isRefused_;
};

/* The setting that the text is a value of: "on" and "off" of an address switch its family. */
const Setting &meantBy(const Setting &setting, std::string_view text);

/* Adds the setting's new value as it is written on a command line. Throws BadValue, also when the
 * change has another value for the setting already. */
void assign(Change &change, const Setting &setting, unsigned port, std::string_view text);

/* As assign, but accepts every value that a record can have: files bring back what was stored. An
 * empty optional stands for no value at all. */
void assignStored(Change &change, const Setting &setting, unsigned port,
                  const std::optional<std::string> &text);

/* Adds a number of any width, as requests have it: throws Refusal for one that the setting's field
 * does not hold. */
void assignNumber(Change &change, const Setting &setting, unsigned port, std::uint32_t number);

/* Throws Refusal unless such settings of the port have an effect: they need a port that is served,
 * link modes one that is on the board. */
void requireEffect(Section section, unsigned port, const NW_IFC_STATE_DB_INFO_S &state);

/* The configuration that the change leads to. All checks are made, in the order of the sections and
 * within one in that of docs/manager.md; throws Refusal. The wireless interface counts as a
 * neighbour of the ports: while nothing is known of it, a change that it matters to is refused. */
Configuration edited(const Configuration &present, const Change &change,
                     const std::optional<NW_WIFI_ADDR_S> &wireless);

/* Ports of which the change sets something that has no effect in the configuration's mode. */
std::vector<unsigned> idlePorts(const Change &change, const Configuration &configuration);

/* A setting that the change has a new value for. */
struct Given {
    const Setting *setting;
    unsigned port;
};
std::vector<Given> givenIn(const Change &change);
/* The one that the code is most likely due to; nothing when none of those given is. */
std::optional<Given> blamed(std::uint32_t code, const Change &change);

} // namespace bmc::settings
