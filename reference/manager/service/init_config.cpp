// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/init_config.hpp"

#include <algorithm>

#include <sys/socket.h>

#include "bmc_platform.h"
#include "lan_fields.hpp"
#include "manager/engine/journal.hpp"
#include "manager/service/json_node.hpp"
#include "manager/service/lan_checks.hpp"
#include "network_mng/check.h"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

constexpr std::uint64_t lastByte = 255;

/* ARP control: answer requests, announce nothing. */
constexpr std::uint8_t answerArp = 2;

/* A port's settings, put together like a request so that they pass the same checks. */
struct PortSettings {
    NW_LAN_SET_PORT_S request{};
    ChangeBits bits{};
};

/* Runs a check; its refusal becomes an error at the node. */
template <typename Check>
void vet(const JsonNode &node, Check check)
{
    try {
        check();
    } catch (const Refusal &refusal) {
        node.refuse(refusal.what());
    }
}

void select(PortSettings &settings, const JsonNode &node, std::uint32_t bits)
{
    settings.bits[0] |= bits;
    vet(node, [&] { checkFields({bits, 0}, settings.request); });
}

void copyTo(std::uint8_t *field, const Address &address)
{
    std::copy_n(address.bytes.begin(), sizeOf(address.family), field);
}

std::uint8_t originOf(const JsonNode &node, std::initializer_list<std::string_view> names)
{
    return static_cast<std::uint8_t>(node.choice(names) + 1);
}

void readIpv4(const JsonNode &node, PortSettings &settings)
{
    NW_LAN_SET_PORT_S &request = settings.request;
    node.expectKeys({"enabled", "origin", "address", "gateway"});
    request.ucIpv4Enable = node.member("enabled").flag();
    select(settings, node, NW_LAN_BIT_IPV4_ENABLE);
    if (const auto origin = node.find("origin")) {
        request.ucIpv4Type = originOf(*origin, {"static", "dhcp"});
        select(settings, *origin, NW_LAN_BIT_IPV4_TYPE);
    }
    if (const auto given = node.find("address")) {
        const Address address = given->subnetAddress(AF_INET);
        copyTo(request.aucIpv4Addr, address);
        std::ranges::copy(maskOf(address.prefix), request.aucIpv4Mask);
        select(settings, *given, NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV4_MASK);
    }
    if (const auto gateway = node.find("gateway")) {
        copyTo(request.aucIpv4Gateway, gateway->address(AF_INET));
        select(settings, *gateway, NW_LAN_BIT_IPV4_GATEWAY);
    }
}

void readIpv6(const JsonNode &node, PortSettings &settings)
{
    NW_LAN_SET_PORT_S &request = settings.request;
    node.expectKeys({"enabled", "origin", "address", "gateway"});
    request.ucIpv6Enable = node.member("enabled").flag();
    select(settings, node, NW_LAN_BIT_IPV6_ENABLE);
    if (const auto origin = node.find("origin")) {
        request.ucIpv6Type = originOf(*origin, {"static", "dhcp", "slaac"});
        select(settings, *origin, NW_LAN_BIT_IPV6_TYPE);
    }
    if (const auto given = node.find("address")) {
        const Address address = given->subnetAddress(AF_INET6);
        copyTo(request.aucIpv6Addr, address);
        request.ucIpv6Prefix = static_cast<std::uint8_t>(address.prefix);
        select(settings, *given, NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV6_PREFIX);
    }
    if (const auto gateway = node.find("gateway")) {
        copyTo(request.aucIpv6Gateway, gateway->address(AF_INET6));
        select(settings, *gateway, NW_LAN_BIT_IPV6_GATEWAY);
    }
}

void readVlan(const JsonNode &node, PortSettings &settings)
{
    node.expectKeys({"enabled", "id", "priority"});
    settings.request.ucVlanEnable = node.member("enabled").flag();
    select(settings, node, NW_LAN_BIT_VLAN_ENABLE);
    if (const auto id = node.find("id")) {
        settings.request.usVlanid = static_cast<std::uint16_t>(id->number(4094));
        select(settings, *id, NW_LAN_BIT_VLAN_ID);
    }
    if (const auto priority = node.find("priority")) {
        settings.request.ucVlanPriority = static_cast<std::uint8_t>(priority->number(7));
        select(settings, *priority, NW_LAN_BIT_VLAN_PRIORITY);
    }
}

std::string readName(const JsonNode &node)
{
    const std::string name = node.text(NW_IFC_NAME_SIZE - 1);
    if (name == "." || name == ".." || name.find_first_of("/: \t\n") != std::string::npos) {
        node.refuse("\"" + name + "\" is not the name of an interface");
    }
    return name;
}

void readIdentity(const JsonNode &node, unsigned port, NW_IFC_STATE_DB_INFO_S &state)
{
    const JsonNode name = node.member("name");
    BMC_Strlcpy(state.acIfcName[port], readName(name).c_str(), NW_IFC_NAME_SIZE);
    for (unsigned other = 0; other < port; other++) {
        if (std::ranges::equal(state.acIfcName[other], state.acIfcName[port])) {
            name.refuse("another port has this name");
        }
    }
    const auto present = node.find("present");
    state.aucPortPresent[port] = !present || present->flag();
    state.aucChannel[port] = static_cast<std::uint8_t>(node.member("channel").number(lastByte));
}

void readPort(const JsonNode &node, unsigned port, InitialConfig &config)
{
    node.expectKeys({"name", "present", "channel", "enabled", "ipv4", "ipv6", "vlan"});
    readIdentity(node, port, config.state);

    PortSettings settings;
    settings.request.ucLanEnable = node.member("enabled").flag();
    settings.request.ucArpControl = answerArp;
    select(settings, node, NW_LAN_BIT_LAN_ENABLE | NW_LAN_BIT_ARP_CONTROL);
    if (const auto section = node.find("ipv4")) {
        readIpv4(*section, settings);
    }
    if (const auto section = node.find("ipv6")) {
        readIpv6(*section, settings);
    }
    if (const auto section = node.find("vlan")) {
        readVlan(*section, settings);
    }

    NW_LAN_CFG_PORT_S &entry = config.lan.astPort[port];
    BMC_Strlcpy(entry.szIfcName, config.state.acIfcName[port], sizeof(entry.szIfcName));
    applyFields(settings.bits, settings.request, entry);
    vet(node, [&] { checkPort(entry); });
}

nlohmann::json parse(std::istream &file)
{
    try {
        return nlohmann::json::parse(file);
    } catch (const nlohmann::json::parse_error &error) {
        throw ConfigError(std::string("not JSON: ") + error.what());
    }
}

template <typename Content>
void putIfMissing(const Store &store, Batch &batch, const Record<Content> &record,
                  const Content &content = {})
{
    if (!store.find(record)) {
        batch.put(record, content);
    }
}

/* Transmits and receives once it is switched on. */
NW_LLDP_DB_INFO_S firstLldp()
{
    NW_LLDP_DB_INFO_S lldp{};
    lldp.ucLldpWorkMode = 3;
    return lldp;
}

/* What a driver begins with: auto-negotiation, full duplex, 1000 Mbit/s. */
NW_AN_CFG_DB_INFO_S firstLinkModes()
{
    NW_AN_CFG_DB_INFO_S an{};
    for (NW_AN_CFG_PORT_S &port : an.astPort) {
        port.ucAutoNeg = 1;
        port.ucDuplex = 1;
        port.ucSpeed = 2;
    }
    return an;
}

} // namespace

InitialConfig readConfig(std::istream &file)
{
    const nlohmann::json document = parse(file);
    const JsonNode root(document, "");
    root.expectKeys({"mode", "ports"});

    InitialConfig config{};
    config.state.ucIfcState =
        static_cast<std::uint8_t>(root.member("mode").choice({"separate", "bonded"}));
    const JsonNode ports = root.member("ports");
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        readPort(ports.element(port, NW_PORT_COUNT), port, config);
    }
    vet(ports, [&] { checkSegments(config.state, config.lan, allChecks()); });
    return config;
}

void writeConfig(const InitialConfig &config, bool isForced)
{
    const Store store;
    if (!isForced && (store.find(ifcStateRecord) || store.find(lanRecord))) {
        throw ConfigError("the database holds a configuration already; --force replaces it");
    }

    /* A change that was under way in a first journal would bring its own records back. */
    inherit(store);
    Batch batch;
    batch.put(ifcStateRecord, config.state).put(lanRecord, config.lan).put(netStatusRecord, {0});
    putIfMissing(store, batch, hostNameRecord);
    putIfMissing(store, batch, dnsRecord);
    putIfMissing(store, batch, lldpRecord, firstLldp());
    putIfMissing(store, batch, ncsiRecord);
    putIfMissing(store, batch, anRecord, firstLinkModes());
    store.commit(batch, "first configuration");
}

} // namespace bmc::manager
