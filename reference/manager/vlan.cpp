// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "vlan.hpp"

#include "plan.hpp"
#include "ports.hpp"
#include "refusal.hpp"

namespace bmc::manager {

namespace {

std::optional<Vlan> vlanOf(const Configuration &configuration, unsigned port)
{
    const NW_LAN_CFG_PORT_S &entry = configuration.lan.astPort[port];
    const NW_LAN_CFG_VLAN_S &block = entry.stVlan;
    const bool isWanted = isServed(configuration.state, port) && entry.ucLanEnable == 1 &&
                          block.aucReserved0[0] == 1 && block.usVlanid != 0;
    if (!isWanted) {
        return std::nullopt;
    }
    const std::string name = nameOf(configuration.state, port);
    return Vlan{name + "." + std::to_string(block.usVlanid), block.usVlanid, block.aucReserved5[0]};
}

void remove(const Context &context, unsigned port, const Vlan &vlan)
{
    const Kernel &kernel = context.kernel;
    const std::string base = nameOf(context.draft.before.state, port);
    if (kernel.find(vlan.name)) {
        kernel.removeLink(vlan.name);
        context.transaction.undoWith(
            [&kernel, base, vlan] { kernel.addVlan(interfaceOf(kernel, base), vlan); });
    }
}

void add(const Context &context, unsigned port, const Vlan &vlan)
{
    const Kernel &kernel = context.kernel;
    try {
        kernel.addVlan(interfaceOf(kernel, nameOf(context.draft.after.state, port)), vlan);
    } catch (const KernelUnsupported &error) {
        throw Refusal(Result::noVlan, error.what());
    }
    context.transaction.undoWith([&kernel, vlan] { kernel.removeLink(vlan.name); });
}

} // namespace

void applyVlans(const Context &context)
{
    const Draft &draft = context.draft;
    for (const unsigned port : draft.ports) {
        const auto former = vlanOf(draft.before, port);
        if (former && former != vlanOf(draft.after, port)) {
            remove(context, port, *former);
        }
    }
    for (const unsigned port : draft.ports) {
        const auto wanted = vlanOf(draft.after, port);
        if (wanted && !context.kernel.find(wanted->name)) {
            add(context, port, *wanted);
        }
    }
}

} // namespace bmc::manager
