/* The network manager: keeps the records of the configuration database and the kernel the same. */
#pragma once

#include <set>
#include <string>
#include <vector>

#include "kernel.hpp"
#include "network_mng/lan.h"
#include "network_mng/rpc.h"
#include "plan.hpp"
#include "store.hpp"
#include "transaction.hpp"

namespace bmc::manager {

class Manager {
public:
    /* Throws Refusal or KernelError. */
    Manager() = default;

    /* Ends a change that a killed manager left half done, refreshes what the records say about the
     * interfaces and brings the kernel in line with them. What the kernel refuses is logged.
     * Throws Refusal when a record is missing. */
    void start();

    /* Puts the ports of before into the state of after, in the kernel and in the database, or
     * throws Refusal with neither changed. */
    void changeLan(const NW_LAN_CFG_DB_INFO_S &before, NW_LAN_CFG_DB_INFO_S after,
                   const std::set<unsigned> &ports);

    const Store &store() const
    {
        return store_;
    }

private:
    void clearStaleStatus() const;
    void repair(NW_LAN_CFG_DB_INFO_S &lan) const;
    void noteInterface(NW_IFC_STATE_DB_INFO_S &state, NW_LAN_CFG_DB_INFO_S &lan,
                       unsigned port) const;
    bool bringInLine(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &lan,
                     unsigned port, const std::vector<Address> &managed) const;
    void changePort(const NW_IFC_STATE_DB_INFO_S &state, const NW_LAN_CFG_DB_INFO_S &before,
                    const NW_LAN_CFG_DB_INFO_S &after, unsigned port,
                    Transaction &transaction) const;
    std::vector<Change> planFor(const Interface &interface, const PortState &wanted,
                                const std::vector<Address> &managed) const;

    Store store_;
    Kernel kernel_;
};

} // namespace bmc::manager
