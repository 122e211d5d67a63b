// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Worlds for tests: items by short names, configurations by chance, and a kernel of values. */
#pragma once

#include <random>
#include <string>

#include "manager/state/actual.hpp"
#include "manager/state/plan.hpp"
#include "manager/state/wanted.hpp"

namespace nwtest {

using bmc::manager::Actual;
using bmc::manager::Item;
using bmc::manager::Items;
using bmc::manager::Kind;
using bmc::manager::Step;
using bmc::manager::World;
using bmc::settings::Configuration;

bmc::Address address(const std::string &text, unsigned prefix);

/* "192.0.2.1", 24. */
Item addressOn(const std::string &interface, const std::string &text, unsigned prefix);
/* Through a gateway, or on the link without one. */
Item routeOn(const std::string &interface, const std::string &text, unsigned prefix,
             const std::string &gateway, std::uint32_t metric);
Item linkOf(const std::string &interface, bool isUp);

/* Any configuration whose gateways and routes can be reached. */
Configuration anyConfiguration(std::mt19937 &random);

/* Does what a kernel does, with its rules and side effects, on values. */
class ModelKernel {
public:
    /* Ports eth0 and eth1, and an interface that stands for the bond unless the kernel makes it. */
    explicit ModelKernel(bool makesBonds);

    /* Throws bmc::manager::MachineError where a kernel would refuse. */
    void apply(const Step &step);

    /* What others do. */
    void add(const Item &item)
    {
        actual.items.insert(item);
    }
    void addLink(const std::string &name, const std::string &type);
    void removeLink(const std::string &name);

    Actual actual;

private:
    void come(const Item &item);
    void go(const Item &item);
    void set(const Item &item);
    void takeDown(const std::string &interface);
    void addRoute(const Item &route);
    void addAddress(const Item &address);
    bool isUp(const std::string &interface) const;
    void makeSubnets(const std::string &interface);
    void dropRoutes(const std::string &interface, int family);
};

} // namespace nwtest
