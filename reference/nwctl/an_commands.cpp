// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "an": auto-negotiation, duplex and speed. */
#include "command_kinds.hpp"
#include "facts.hpp"
#include "failure.hpp"
#include "network_mng/settings.h"

namespace nwctl {

namespace {

enum SetBit : std::uint32_t { autoNegotiationBit = 0x1, speedBit = 0x2, duplexBit = 0x4 };

constexpr Word duplexWords[] = {{"half", 0}, {"full", 1}};
/* Mbit/s, in the encoding of the record and of the request. */
constexpr Word speedWords[] = {{"10", 0}, {"100", 1}, {"1000", 2}};

struct AnChange {
    std::uint32_t bits = 0;
    NW_AN_SET_PORT_S fields{};
};

void setAutoNegotiation(const GivenOption &given, AnChange &change)
{
    change.fields.ucAutoNeg = wordValue(given, switchWords);
    mark(given, change.bits, autoNegotiationBit);
}

void setDuplex(const GivenOption &given, AnChange &change)
{
    change.fields.ucDuplex = wordValue(given, duplexWords);
    mark(given, change.bits, duplexBit);
}

void setSpeed(const GivenOption &given, AnChange &change)
{
    change.fields.uiSpeed = wordValue(given, speedWords);
    mark(given, change.bits, speedBit);
}

/* clang-format off */
constexpr Option<AnChange> rows[] = {
    {"--auto",   "on|off",      "auto-negotiation",  Subject::none, setAutoNegotiation},
    {"--duplex", "half|full",   "duplex",            Subject::none, setDuplex},
    {"--speed",  "10|100|1000", "speed in Mbit/s",   Subject::none, setSpeed},
};
/* clang-format on */

/* The request's tail, as the library takes it: the bits of both ports, then both ports' settings
 * behind a head. */
Sending check(const std::string &port, const AnChange &change, const Given &given)
{
    NW_AN_SET_REQ_S request{};
    const NamedPort named = namedPort(readInterfaces(), port);
    if (named.index >= std::size(request.astPort)) {
        throw Failure(Exit::refused, "PORT", named.name, "the port has no PHY of its own",
                      NW_ERR_OUT_OF_RANGE);
    }
    request.auiBitmap[named.index] = change.bits;
    request.astPort[named.index] = change.fields;

    Sending sending;
    sending.what = "auto-negotiation";
    sending.commands = {NW_CMD_SET_AN};
    sending.module = NW_LOG_AN;
    sending.port = named;
    sending.settings = given;
    sending.send = [request](NW_OPER_LOG_S &log) {
        const auto *bytes = reinterpret_cast<const std::uint8_t *>(&request);
        return LIB_NW_SetAnPortConfig(bytes + offsetof(NW_AN_SET_REQ_S, auiBitmap),
                                      bytes + offsetof(NW_AN_SET_REQ_S, aucConfigHead), &log);
    };
    return sending;
}

void show(std::span<const unsigned> ports, Session &session)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    NW_AN_CFG_DB_INFO_S record{};
    requireRead(LIB_NW_GetAnConfig(&record), "the auto-negotiation settings");

    std::vector<Facts> shown;
    for (const unsigned port : ports) {
        const NW_AN_CFG_PORT_S &entry = record.astPort[port];
        Facts facts = portHeading(interfaces, port);
        facts.push_back({"Negotiation", "auto", entry.ucAutoNeg == 1});
        facts.push_back({"Duplex", "duplex", wordName(duplexWords, entry.ucDuplex)});
        facts.push_back({"Speed", "speed", wordName(speedWords, entry.ucSpeed)});
        shown.push_back(facts);
    }
    printPorts(session, shown);
}

} // namespace

void addAnCommands(std::vector<Command> &commands)
{
    commands.push_back(portShowCommand(
        {"an", "show", "Show auto-negotiation, duplex and speed of a port", "an show eth0"}, show));
    commands.push_back(portChangeCommand<AnChange>(
        {"an", "set", "Change auto-negotiation, duplex or speed of a port",
         "an set eth0 --auto off --speed 100 --duplex full"},
        rows, check));
}

} // namespace nwctl
