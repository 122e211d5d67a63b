// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "settings/detail/identity.hpp"

#include <algorithm>
#include <utility>

namespace bmc::settings {

namespace {

constexpr unsigned lastChannel = 255;

std::string givenName(const Node &node)
{
    const Json &value = node.value;
    if (!value.is_string() || value.get_ref<const std::string &>().empty() ||
        value.get_ref<const std::string &>().size() >= NW_IFC_NAME_SIZE) {
        refuse(node,
               "must be a text of 1 to " + std::to_string(NW_IFC_NAME_SIZE - 1) + " characters");
    }
    const auto &name = value.get_ref<const std::string &>();
    const bool isPlain = std::ranges::none_of(name, [](char character) {
        return static_cast<unsigned char>(character) <= ' ' || character == 0x7F ||
               character == '/' || character == ':';
    });
    if (!isPlain || name == "." || name == "..") {
        refuse(node, "is not the name of an interface");
    }
    return name;
}

Json identityOf(const NW_IFC_STATE_DB_INFO_S &state, unsigned port)
{
    return {{"name", nameOf(state, port)},
            {"channel", state.aucChannel[port]},
            {"present", state.aucPortPresent[port] != 0}};
}

/* Checks the form alone; what is missing counts as it is. */
void readIdentity(const Node &node, unsigned port, NW_IFC_STATE_DB_INFO_S &state)
{
    expectKeys(node, {"name", "channel", "present"});
    if (node.value.contains("name")) {
        std::ranges::fill(state.acIfcName[port], '\0');
        givenName(memberOf(node, "name")).copy(state.acIfcName[port], NW_IFC_NAME_SIZE - 1);
    }
    if (node.value.contains("channel")) {
        state.aucChannel[port] =
            static_cast<std::uint8_t>(numberOf(memberOf(node, "channel"), lastChannel));
    }
    if (node.value.contains("present")) {
        state.aucPortPresent[port] = flagOf(memberOf(node, "present"));
    }
}

/* The port that a key names. */
unsigned portOf(const Node &ports, const std::string &key, const NW_IFC_STATE_DB_INFO_S &state)
{
    const unsigned port = findPort(state, key);
    if (port == NW_PORT_COUNT) {
        refuse(memberOf(ports, key), "no such port, expected " + expectedPorts(state));
    }
    return port;
}

void requireComplete(const Node &node)
{
    for (const char *key : {"name", "channel"}) {
        if (!node.value.contains(key)) {
            refuse(node, "key \"" + std::string(key) + "\" is missing");
        }
    }
}

/* A text names one port. */
void requireUnique(const Node &node, unsigned port, const NW_IFC_STATE_DB_INFO_S &state)
{
    const unsigned meant = findPort({}, nameOf(state, port));
    if (meant != NW_PORT_COUNT && meant != port) {
        refuse(memberOf(node, "name"), "names another port already, by its role or index");
    }
    for (unsigned other = 0; other < NW_PORT_COUNT; ++other) {
        if (other != port && std::ranges::equal(state.acIfcName[other], state.acIfcName[port])) {
            refuse(memberOf(node, "name"), "another port has this name");
        }
    }
}

} // namespace

void forEachPort(const Node &ports, const NW_IFC_STATE_DB_INFO_S &state,
                 const std::function<void(const Node &node, unsigned port)> &read)
{
    bool seen[NW_PORT_COUNT]{};
    expectObject(ports);
    for (const auto &[key, value] : ports.value.items()) {
        const unsigned port = portOf(ports, key, state);
        const Node node = memberOf(ports, key);
        if (std::exchange(seen[port], true)) {
            refuse(node, "the port is given twice");
        }
        read(node, port);
    }
}

Json identitiesOf(const NW_IFC_STATE_DB_INFO_S &state)
{
    Json ports = Json::object();
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        ports[std::string(roleOf(port))] = identityOf(state, port);
    }
    return ports;
}

void readIdentities(const Node &ports, Configuration &configuration)
{
    NW_IFC_STATE_DB_INFO_S &state = configuration.state;
    if (!ports.value.is_object() || ports.value.size() != NW_PORT_COUNT) {
        refuse(ports, "must be an object with the ports dedicated, shared and bond");
    }
    std::ranges::fill(state.aucPortPresent, std::uint8_t{1});
    forEachPort(ports, NW_IFC_STATE_DB_INFO_S{}, [&](const Node &node, unsigned port) {
        readIdentity(node, port, state);
        requireComplete(node);
        requireUnique(node, port, state);
        auto &name = configuration.lan.astPort[port].szIfcName;
        std::ranges::fill(name, '\0');
        std::ranges::copy(state.acIfcName[port], name);
    });
}

std::vector<std::string> compareIdentities(const Node &ports, const NW_IFC_STATE_DB_INFO_S &before,
                                           const NW_IFC_STATE_DB_INFO_S &after)
{
    std::vector<std::string> sentences;
    forEachPort(ports, before, [&](const Node &node, unsigned port) {
        NW_IFC_STATE_DB_INFO_S wanted = after;
        readIdentity(node, port, wanted);
        const Json is = identityOf(after, port);
        const Json asked = identityOf(wanted, port);
        for (const auto &[key, value] : asked.items()) {
            if (value != is[key]) {
                sentences.push_back(memberOf(node, key).place + ": stays " + shown(is[key]) +
                                    ", which is this machine's own, not " + shown(value));
            }
        }
    });
    return sentences;
}

} // namespace bmc::settings
