#include "stored.hpp"

#include <algorithm>

#include "addresses.hpp"
#include "failure.hpp"
#include "text.hpp"

namespace nwctl {

namespace {

struct Mode {
    std::uint8_t value;
    const char *name;
    std::span<const unsigned> ports;
};

constexpr unsigned separatePorts[] = {NW_PORT_ETH0, NW_PORT_ETH1};
constexpr unsigned bondedPorts[] = {NW_PORT_BOND0};
constexpr Mode modes[] = {
    {NW_IFC_STATE_SEPARATE, "separate", separatePorts},
    {NW_IFC_STATE_ADAPTIVE, "active-standby", bondedPorts},
};

const Mode &findMode(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    const auto mode = std::ranges::find(modes, interfaces.ucIfcState, &Mode::value);
    if (mode == std::end(modes)) {
        throw Failure(Exit::internal, "", "",
                      "the interface state record holds the unknown network mode " +
                          std::to_string(interfaces.ucIfcState));
    }
    return *mode;
}

void requireRead(NW_RESULT result, const char *record)
{
    if (result != NW_OK) {
        throw Failure(Exit::internal, "", "", std::string("cannot read ") + record, result);
    }
}

} // namespace

NW_IFC_STATE_DB_INFO_S readInterfaces()
{
    NW_IFC_STATE_DB_INFO_S interfaces{};
    requireRead(NW_LMDB_Get_IfcState(&interfaces), "the interface state");
    return interfaces;
}

NW_LAN_CFG_DB_INFO_S readLanRecord()
{
    NW_LAN_CFG_DB_INFO_S record{};
    requireRead(LIB_NW_GetAllLanConfig(&record), "the LAN configuration");
    return record;
}

std::string portName(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    return boundedText(interfaces.acIfcName[port]);
}

unsigned findPort(const NW_IFC_STATE_DB_INFO_S &interfaces, const std::string &text)
{
    if (const auto index = parseNumber(text, NW_PORT_COUNT - 1)) {
        return *index;
    }

    std::string names;
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        const std::string name = portName(interfaces, port);
        if (!text.empty() && text == name) {
            return port;
        }
        names += name + ", ";
    }
    throw Failure(Exit::usage, "PORT", text, "no such port, expected " + names + "0, 1 or 2");
}

std::span<const unsigned> portsServed(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    return findMode(interfaces).ports;
}

std::string modeName(const NW_IFC_STATE_DB_INFO_S &interfaces)
{
    return findMode(interfaces).name;
}

void requireServed(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    if (std::ranges::count(portsServed(interfaces), port) == 0) {
        throw Failure(Exit::refused, "PORT", portName(interfaces, port),
                      "the port is not served in network mode " + modeName(interfaces));
    }
}

NW_ETHER_INS_INFO_S readPort(const NW_IFC_STATE_DB_INFO_S &interfaces, unsigned port)
{
    requireServed(interfaces, port);

    NW_ETHER_INS_INFO_S info{};
    requireRead(LIB_NW_GetLanConfig(portName(interfaces, port).c_str(), &info),
                "the port's LAN settings");
    return info;
}

} // namespace nwctl
