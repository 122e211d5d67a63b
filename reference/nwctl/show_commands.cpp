// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "SECTION show": values of settings out of the table, and what the library knows besides. */
#include "nwctl/lan_view.hpp"
#include "nwctl/setting_rows.hpp"
#include "nwctl/stored.hpp"

namespace nwctl {

namespace {

namespace settings = bmc::settings;
using settings::Section;

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

void addPortsServed(Rows &rows, const Configuration &stored)
{
    List names;
    for (const unsigned port : portsServed(stored.state)) {
        names.rows.push_back({.value = settings::nameOf(stored.state, port)});
    }
    rows.push_back({"Ports served", "ports", std::move(names)});
}

struct ShowCommand {
    const char *group;
    Section section;
    const char *description;
    const char *example;
    void (*read)(Configuration &stored);
    void (*addMore)(Rows &rows, const Configuration &stored) = nullptr;
    bool isServedOnly = false; /* another port is refused */
};

/* clang-format off */
constexpr ShowCommand showCommands[] = {
    {"hostname",   Section::hostName,   "Show the host name and the BMC name",                     "hostname show",   readHostName},
    {"dns",        Section::dns,        "Show the DNS settings of a port",                         "dns show eth1",   readDns, nullptr, true},
    {"lldp",       Section::lldp,       "Show the LLDP settings",                                  "lldp show",       readLldp},
    {"mode",       Section::mode,       "Show the network port mode",                              "mode show",       readState, addPortsServed},
    {"switchover", Section::switchover, "Show whether the numbers of the two ports are exchanged", "switchover show", readState},
    {"vlan",       Section::lan,        "Show the VLAN of a port",                                 "vlan show eth1",  readLan},
    {"arp",        Section::lan,        "Show the ARP settings of a port",                         "arp show eth1",   readLan},
    {"an",         Section::an,         "Show auto-negotiation, duplex and speed of a port",       "an show eth0",    readLinkMode},
};
/* clang-format on */

bool isPorts(const ShowCommand &row)
{
    return settings::infoOf(row.section).portCount != 0;
}

/* The port that is asked for; without one all ports of the present mode. */
std::vector<unsigned> portsFor(const NW_IFC_STATE_DB_INFO_S &interfaces, const Arguments &arguments)
{
    if (arguments.has("PORT")) {
        return {findPort(interfaces, arguments.value("PORT"))};
    }
    const auto served = portsServed(interfaces);
    return {served.begin(), served.end()};
}

void addRows(Rows &rows, const ShowCommand &row, const Configuration &stored, unsigned port)
{
    for (Row &each : settingRows(settings::entryOf(stored, row.section, port), row.group)) {
        rows.push_back(std::move(each));
    }
    if (row.addMore != nullptr) {
        row.addMore(rows, stored);
    }
}

void show(const ShowCommand &row, const Arguments &, Session &session)
{
    Configuration stored{};
    Rows shown;
    row.read(stored);
    addRows(shown, row, stored, 0);
    session.answer(shown);
}

void showPorts(const ShowCommand &row, const Arguments &arguments, Session &session)
{
    Configuration stored{};
    stored.state = readInterfaces();
    const std::vector<unsigned> ports = portsFor(stored.state, arguments);
    row.read(stored);
    List blocks;
    for (const unsigned port : ports) {
        if (row.isServedOnly) {
            requireServed(stored.state, port);
        }
        Rows block = portHeading(stored.state, port);
        addRows(block, row, stored, port);
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
    for (const ShowCommand &row : showCommands) {
        commands.push_back({row.group, "show", row.description, row.example,
                            isPorts(row) ? std::vector{shownPort()} : std::vector<Parameter>{},
                            inSnapshot([&row](const Arguments &arguments, Session &session) {
                                (isPorts(row) ? showPorts : show)(row, arguments, session);
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
