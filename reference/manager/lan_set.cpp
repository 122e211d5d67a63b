#include "lan_set.hpp"

#include <cstring>

#include "lan_checks.hpp"
#include "lan_fields.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

/* The change bits of a port, out of the packed request. */
struct PortBits {
    ChangeBits words;

    PortBits(const NW_LAN_BITMAP_S &bitmap, unsigned port)
        : words{bitmap.aauiWord[port][0], bitmap.aauiWord[port][1]}
    {
    }
};

std::set<unsigned> selectedPorts(const NW_LAN_BITMAP_S &bitmap)
{
    std::set<unsigned> ports;
    for (unsigned port = 0; port < NW_PORT_COUNT; port++) {
        const PortBits bits(bitmap, port);
        if ((bits.words[0] | bits.words[1]) != 0) {
            ports.insert(port);
        }
    }
    return ports;
}

} // namespace

void setLan(Manager &manager, const NW_RPC_REQUEST_S &request, NW_RPC_RESPONSE_S &response)
{
    NW_LAN_SET_REQ_S set;
    std::memcpy(&set, request.aucPayload, sizeof(set));
    const std::set<unsigned> ports = selectedPorts(set.stBitmap);
    if (ports.empty()) {
        return;
    }
    response.uiDetail = *ports.begin();

    const auto state = manager.store().read(ifcStateRecord);
    const auto before = manager.store().read(lanRecord);
    NW_LAN_CFG_DB_INFO_S after = before;
    SegmentChecks checks;
    for (const unsigned port : ports) {
        const PortBits bits(set.stBitmap, port);
        if (!isServed(state, port)) {
            throw Refusal(Result::portNotServed, "port " + std::to_string(port));
        }
        checkFields(bits.words, set.stConfig.astPort[port]);
        applyFields(bits.words, set.stConfig.astPort[port], after.astPort[port]);
        checkPort(after.astPort[port]);
        addChecks(checks, port, bits.words);
    }
    checkSegments(state, after, checks);

    manager.changeLan(before, after, ports);
}

} // namespace bmc::manager
