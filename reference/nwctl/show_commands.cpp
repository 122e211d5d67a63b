// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "SECTION show": values of settings out of the table, and what the library knows besides. */
#include <algorithm>
#include <cctype>

#include <nlohmann/json.hpp>

#include "nwctl/lan_view.hpp"
#include "nwctl/stored.hpp"
#include "settings/manager_bytes.hpp"
#include "settings/value.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Section;
using settings::Setting;

Value shownValue(const Configuration &stored, const Setting &setting, unsigned port)
{
    return Value(settings::valueAt(settings::entryOf(stored, setting.section, port), setting));
}

/* Settings that differ in their last digit alone stand in one list. */
bool isNumbered(const Setting &setting)
{
    return setting.showKey == nullptr && std::isdigit(std::string_view(setting.key).back()) != 0;
}

/* "ipv4-server1" as "ipv4Servers" */
std::string listKey(const Setting &setting)
{
    std::string key;
    for (const char *at = setting.key; *at != '\0'; ++at) {
        const bool isBreak = *at == '-';
        at += isBreak ? 1 : 0;
        key += isBreak ? static_cast<char>(std::toupper(*at)) : *at;
    }
    key.back() = 's';
    return key;
}

void addToList(Rows &rows, const Setting &setting, Value value)
{
    const std::string key = listKey(setting);
    if (rows.empty() || rows.back().key != key) {
        std::string label = setting.label; /* "IPv4 server 1" */
        label.replace(label.size() - 2, 2, "s");
        rows.push_back({label, key, List{}});
    }
    List list = std::get<List>(rows.back().value.content());
    list.rows.push_back({.value = std::move(value)});
    rows.back().value = std::move(list);
}

/* The section's settings whose keys begin with the prefix. */
void addSettings(Rows &rows, const Configuration &stored, Section section, unsigned port,
                 std::string_view prefix = "")
{
    for (const Setting &setting : settings::settingsOf(section)) {
        if (!std::string_view(setting.key).starts_with(prefix)) {
            continue;
        }
        if (setting.showKey != nullptr) {
            rows.push_back({setting.label, setting.showKey, shownValue(stored, setting, port)});
        } else if (isNumbered(setting)) {
            addToList(rows, setting, shownValue(stored, setting, port));
        }
    }
}

void readHostName(Configuration &stored)
{
    requireRead(LIB_NW_GetHostName(&stored.hostName), "the host name");
}

void readLldp(Configuration &stored)
{
    requireRead(LIB_NW_GetLLDP(&stored.lldp), "the LLDP settings");
}

void readState(Configuration &stored)
{
    stored.state = readInterfaces();
}

void readDns(Configuration &stored)
{
    requireRead(NW_LMDB_Get_DNS(&stored.dns), "the DNS settings");
}

void readLan(Configuration &stored)
{
    stored.lan = readLanRecord();
}

/* With what the interfaces have negotiated. */
void readLinkMode(Configuration &stored)
{
    requireRead(LIB_NW_GetAnConfig(&stored.an), "the auto-negotiation settings");
}

void addHostName(Rows &rows, const Configuration &stored, unsigned)
{
    addSettings(rows, stored, Section::hostName, 0);
}

void addLldp(Rows &rows, const Configuration &stored, unsigned)
{
    addSettings(rows, stored, Section::lldp, 0);
}

void addMode(Rows &rows, const Configuration &stored, unsigned)
{
    List names;
    for (const unsigned port : portsServed(stored.state)) {
        names.rows.push_back({.value = settings::nameOf(stored.state, port)});
    }
    rows.push_back({"Mode", "mode", modeName(stored.state)});
    rows.push_back({"Ports served", "ports", std::move(names)});
}

void addSwitchover(Rows &rows, const Configuration &stored, unsigned)
{
    addSettings(rows, stored, Section::switchover, 0);
}

void addDns(Rows &rows, const Configuration &stored, unsigned port)
{
    requireServed(stored.state, port);
    addSettings(rows, stored, Section::dns, port);
}

/* A VLAN has its ID while it is switched off, too. */
void addVlan(Rows &rows, const Configuration &stored, unsigned port)
{
    const settings::VlanBytes vlan = settings::vlanOf(stored.lan.astPort[port]);
    rows.push_back({"VLAN", "enabled", vlan.isEnabled == 1});
    rows.push_back({"VLAN ID", "id", vlan.id == 0 ? Value() : Value(unsigned{vlan.id})});
    addSettings(rows, stored, Section::lan, port, "vlan-");
}

void addArp(Rows &rows, const Configuration &stored, unsigned port)
{
    addSettings(rows, stored, Section::lan, port, "arp-");
}

void addLinkMode(Rows &rows, const Configuration &stored, unsigned port)
{
    addSettings(rows, stored, Section::an, port);
}

struct ShowCommand {
    const char *group;
    const char *description;
    const char *example;
    bool isPorts; /* shown for each port */
    void (*read)(Configuration &stored);
    void (*add)(Rows &rows, const Configuration &stored, unsigned port);
};

/* clang-format off */
constexpr ShowCommand rows[] = {
    {"hostname",   "Show the host name and the BMC name",                     "hostname show",   false, readHostName, addHostName},
    {"dns",        "Show the DNS settings of a port",                         "dns show eth1",   true,  readDns,      addDns},
    {"lldp",       "Show the LLDP settings",                                  "lldp show",       false, readLldp,     addLldp},
    {"mode",       "Show the network port mode",                              "mode show",       false, readState,    addMode},
    {"switchover", "Show whether the numbers of the two ports are exchanged", "switchover show", false, readState,    addSwitchover},
    {"vlan",       "Show the VLAN of a port",                                 "vlan show eth1",  true,  readLan,      addVlan},
    {"arp",        "Show the ARP settings of a port",                         "arp show eth1",   true,  readLan,      addArp},
    {"an",         "Show auto-negotiation, duplex and speed of a port",       "an show eth0",    true,  readLinkMode, addLinkMode},
};
/* clang-format on */

/* The port that is asked for; without one all ports of the present mode. */
std::vector<unsigned> portsFor(const NW_IFC_STATE_DB_INFO_S &interfaces, const Arguments &arguments)
{
    if (arguments.has("PORT")) {
        return {findPort(interfaces, arguments.value("PORT"))};
    }
    const auto served = portsServed(interfaces);
    return {served.begin(), served.end()};
}

void show(const ShowCommand &row, const Arguments &arguments, Session &session)
{
    Configuration stored{};
    Rows shown;
    if (!row.isPorts) {
        row.read(stored);
        row.add(shown, stored, 0);
        session.answer(shown);
        return;
    }

    stored.state = readInterfaces();
    const std::vector<unsigned> ports = portsFor(stored.state, arguments);
    row.read(stored);
    List blocks;
    for (const unsigned port : ports) {
        Rows block = portHeading(stored.state, port);
        row.add(block, stored, port);
        blocks.rows.push_back({.value = Object{std::move(block)}});
    }
    session.answer({{.key = "ports", .value = std::move(blocks)}});
}

void showLan(const Arguments &arguments, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    List blocks;
    for (const unsigned port : portsFor(interfaces, arguments)) {
        blocks.rows.push_back({.value = Object{portRows(readPortView(interfaces, port))}});
    }
    session.answer(
        {hidden("mode", modeName(interfaces)), {.key = "ports", .value = std::move(blocks)}});
}

void showShareLink(const Arguments &, Session &session)
{
    std::uint8_t mode = 0;
    requireRead(LIB_NW_GetShareLinkMode(&mode), "the shared-link mode");
    session.answer({{"Shared link", "mode", wordName(shareLinkWords, mode)}});
}

void showNcsi(const Arguments &, Session &session)
{
    readInterfaces(); /* the NC-SI record is read from an open database */
    session.answer(ncsiRows());
}

Parameter shownPort()
{
    return portParameter(Parameter::Kind::optional, "; without it, all ports of the present mode");
}

} // namespace

void addShowCommands(std::vector<Command> &commands)
{
    commands.push_back({"lan",
                        "show",
                        "Show the settings of a port and its live IPv6 state",
                        "lan show eth1",
                        {shownPort()},
                        inSnapshot(showLan)});
    for (const ShowCommand &row : rows) {
        commands.push_back({row.group, "show", row.description, row.example,
                            row.isPorts ? std::vector{shownPort()} : std::vector<Parameter>{},
                            inSnapshot([&row](const Arguments &arguments, Session &session) {
                                show(row, arguments, session);
                            })});
    }
    commands.push_back({"share-link",
                        "show",
                        "Show the shared-link mode",
                        "share-link show",
                        {},
                        inSnapshot(showShareLink)});
    commands.push_back(
        {"ncsi", "show", "Show the state of NC-SI", "ncsi show", {}, inSnapshot(showNcsi)});
}

} // namespace nwctl
