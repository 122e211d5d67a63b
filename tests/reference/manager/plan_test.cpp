// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* From what is to what is wanted: which steps, in which order; with values, by the thousand. */
#include <gtest/gtest.h>

#include <algorithm>

#include <sys/socket.h>

#include "network_mng/operate_log.h"
#include "worlds.hpp"

namespace nwtest {

namespace {

using namespace bmc;
using namespace bmc::manager;

using Texts = std::vector<std::string>;

Texts textsOf(const std::vector<Step> &steps)
{
    Texts texts;
    std::ranges::transform(steps, std::back_inserter(texts),
                           [](const Step &step) { return textOf(step); });
    return texts;
}

const Item up = linkOf("eth0", true);
const Item down = linkOf("eth0", false);
const Item oldV4 = addressOn("eth0", "192.0.2.1", 24);
const Item newV4 = addressOn("eth0", "192.0.2.2", 24);
const Item subnetV4{Kind::subnet, "eth0", {}, networkOf(oldV4.address), oldV4.address};
const Item oldV6 = addressOn("eth0", "2001:db8::1", 64);
const Item newV6 = addressOn("eth0", "2001:db8::2", 64);
const Item widerV6 = addressOn("eth0", "2001:db8::1", 48);
const Item gateV4 = routeOn("eth0", "0.0.0.0", 0, "192.0.2.254", 100);
const Item gateV6 = routeOn("eth0", "::", 0, "fe80::1", 100);
const Item viaV4 = routeOn("eth0", "10.0.0.0", 8, "192.0.2.253", 200);
const Item linkV6 = routeOn("eth0", "2001:db8:5::", 48, "", 201);
const Item onOther = addressOn("eth1", "192.0.2.2", 24);
const Item bond{Kind::bond, "bond0"};
const Item member{Kind::member, "eth0", "bond0"};
const Item mode{Kind::bondMode, "bond0", {}, {}, {}, 1};
const Item vlan{Kind::vlan, "eth0.7", "eth0", {}, {}, 7};
const Item vlanUp = linkOf("eth0.7", true);

struct Row {
    const char *name;
    Items wanted;
    Items actual;
    Items owned;
    Texts steps;
};

/* clang-format off */
const Row rows[] = {
    {"NothingToDo",      {up, oldV4}, {up, oldV4}, {oldV4}, {}},
    {"FirstStart",       {up, newV4, gateV4}, {down}, {},
        {"eth0: enable link", "eth0: add address 192.0.2.2/24", "eth0: add route default via 192.0.2.254"}},
    {"NewBeforeOldV4",   {up, newV4, gateV4}, {up, oldV4, gateV4}, {oldV4},
        {"eth0: remove route default via 192.0.2.254", "eth0: add address 192.0.2.2/24",
         "eth0: remove address 192.0.2.1/24", "eth0: add route default via 192.0.2.254"}},
    {"NewBeforeOldV6",   {up, newV6}, {up, oldV6}, {oldV6},
        {"eth0: add address 2001:db8::2/64", "eth0: remove address 2001:db8::1/64"}},
    {"OtherLengthV6",    {up, widerV6}, {up, oldV6}, {oldV6},
        {"eth0: remove address 2001:db8::1/64", "eth0: add address 2001:db8::1/48"}},
    {"OtherFamilyStays", {up, newV4, oldV6, gateV6}, {up, oldV4, oldV6, gateV4, gateV6}, {oldV4, oldV6},
        {"eth0: remove route default via 192.0.2.254", "eth0: add address 192.0.2.2/24", "eth0: remove address 192.0.2.1/24"}},
    {"GatewayAlone",     {up, oldV4, gateV4}, {up, oldV4}, {oldV4}, {"eth0: add route default via 192.0.2.254"}},
    {"LinkRoutesFirst",  {up, oldV4, gateV4, linkV6}, {up, oldV4}, {oldV4},
        {"eth0: add route 2001:db8:5::/48", "eth0: add route default via 192.0.2.254"}},
    {"RouteGoes",        {up, oldV4, gateV4}, {up, oldV4, gateV4, viaV4}, {oldV4}, {"eth0: remove route 10.0.0.0/8 via 192.0.2.253"}},
    {"ForeignStays",     {up}, {up, oldV4, newV4}, {oldV4}, {"eth0: remove address 192.0.2.1/24"}},
    {"ForeignIsWanted",  {up, newV4}, {up, newV4}, {}, {"eth0: add address 192.0.2.2/24"}},
    {"LostAddress",      {up, oldV4}, {up}, {oldV4}, {"eth0: add address 192.0.2.1/24"}},
    {"LinkDownIsLast",   {down}, {up, oldV4, oldV6, gateV4}, {oldV4, oldV6},
        {"eth0: remove route default via 192.0.2.254", "eth0: remove address 192.0.2.1/24",
         "eth0: remove address 2001:db8::1/64", "eth0: disable link"}},
    {"WithoutLinkWanted", {}, {up, oldV4}, {oldV4}, {"eth0: remove address 192.0.2.1/24"}},
    {"GivenUpFirst",     {onOther, oldV4}, {newV4}, {newV4},
        {"eth0: remove address 192.0.2.2/24", "eth0: add address 192.0.2.1/24", "eth1: add address 192.0.2.2/24"}},
    {"LostSubnet",       {up, oldV4, subnetV4, gateV4}, {up, oldV4}, {oldV4},
        {"eth0: add subnet 192.0.2.0/24", "eth0: add route default via 192.0.2.254"}},
    {"SubnetComesWithTheAddress", {up, oldV4, subnetV4}, {up}, {}, {"eth0: add address 192.0.2.1/24"}},
    {"OthersSubnetStays", {up}, {up, {Kind::subnet, "eth0", {}, networkOf(oldV4.address)}}, {}, {}},
    {"BondIsMade",       {bond, mode, member}, {}, {}, {"bond0: add bond bond0", "eth0: add member of bond0"}},
    {"BondIsLeft",       {up, oldV4}, {up, bond, mode, member}, {bond, member},
        {"eth0: remove member of bond0", "bond0: remove bond bond0", "eth0: enable link", "eth0: add address 192.0.2.1/24"}},
    {"OthersBondStays",  {}, {bond, mode}, {}, {}},
    {"VlanComesUp",      {up, vlan, vlanUp}, {down}, {}, {"eth0: enable link", "eth0.7: add VLAN eth0.7"}},
    {"VlanChanges",      {up, vlan, vlanUp}, {up, {Kind::vlan, "eth0.7", "eth0", {}, {}, 0x50007}, vlanUp},
        {{Kind::vlan, "eth0.7", "eth0", {}, {}, 0x50007}}, {"eth0.7: remove VLAN eth0.7", "eth0.7: add VLAN eth0.7"}},
    {"VlanIsOursByName", {up}, {up, vlan}, {{Kind::vlan, "eth0.7", "eth0", {}, {}, 0x50007}}, {"eth0.7: remove VLAN eth0.7"}},
    {"OthersVlanStays",  {up}, {up, vlan}, {}, {}},
    {"VlanIsTakenUp",    {vlan, vlanUp}, {vlan, linkOf("eth0.7", false)}, {vlan}, {"eth0.7: enable link"}},
};
/* clang-format on */

Actual actualOf(const Items &items)
{
    Actual actual{{}, items};
    for (const Item &item : items) {
        if (!item.subject.empty()) {
            Link &link = actual.links[item.subject];
            link.type = item.kind == Kind::bond ? "bond" : link.type;
        }
    }
    return actual;
}

} // namespace

TEST(Plan, Steps)
{
    for (const Row &row : rows) {
        EXPECT_EQ(textsOf(plan({row.wanted, {}}, actualOf(row.actual), row.owned)), row.steps)
            << row.name;
    }
}

TEST(Plan, InterfaceThatStandsForTheBond)
{
    Actual actual = actualOf({linkOf("bond0", true), up});
    actual.links["bond0"].type = "veth";
    EXPECT_EQ(textsOf(plan({{bond, mode, member}, {}}, actual, {})), Texts{});
}

/* A board's own bond gets mode and monitor, the mode only while it has no ports. */
TEST(Plan, BondOfTheBoard)
{
    const Item monitor{Kind::bondMonitor, "bond0", {}, {}, {}, 100};
    const Item roundRobin{Kind::bondMode, "bond0", {}, {}, {}, 0};
    const Item unmonitored{Kind::bondMonitor, "bond0", {}, {}, {}, 0};
    const World world{{bond, mode, monitor, member}, {}};
    Actual actual = actualOf({bond, roundRobin, unmonitored, up});
    EXPECT_EQ(textsOf(plan(world, actual, {})),
              (Texts{"bond0: set bond mode 1", "bond0: set bond monitor 100",
                     "eth0: add member of bond0"}));
    actual.items.insert(member);
    EXPECT_EQ(textsOf(plan(world, actual, {})), Texts{"bond0: set bond monitor 100"});
}

TEST(Plan, LinkModes)
{
    const auto modeOf = [](bool isAuto, std::uint8_t duplex, std::uint32_t speed) {
        return Item{Kind::linkMode, "eth0", {}, {}, {}, linkModeNumber(isAuto, duplex, speed)};
    };
    const auto isSo = [&](const Item &wanted, const Item &actual) {
        return plan({{wanted}, {}}, actualOf({actual}), {}).empty();
    };
    EXPECT_TRUE(isSo(modeOf(false, 1, 100), modeOf(false, 1, 100)));
    EXPECT_FALSE(isSo(modeOf(false, 1, 100), modeOf(false, 0, 100)));
    EXPECT_FALSE(isSo(modeOf(false, 1, 100), modeOf(false, 1, 10)));
    EXPECT_FALSE(isSo(modeOf(true, 1, 100), modeOf(false, 1, 100)));
    EXPECT_FALSE(isSo(modeOf(false, 1, 100), modeOf(true, 1, 100)));
    EXPECT_TRUE(isSo(modeOf(true, 1, 100), modeOf(true, 0, 10)));
    EXPECT_TRUE(isSo(modeOf(false, 1, 100), modeOf(false, 0xFF, 0xFFFFFFFF)));
}

TEST(Plan, ScopeTellsWhatAChangeMayTouch)
{
    Scope scope;
    scope.select(NW_LOG_LAN, 1);
    scope.select(NW_LOG_DNS, 0);
    const Step here{onOther, false, 1};
    EXPECT_EQ(scope.moduleOf(here), std::uint32_t{NW_LOG_LAN});
    EXPECT_TRUE(scope.needsInterfaceFor(here));
    EXPECT_EQ(scope.moduleOf({oldV4, false, 0}), 0U);
    EXPECT_EQ(scope.moduleOf({{Kind::resolver}}), std::uint32_t{NW_LOG_DNS});
    EXPECT_EQ(scope.moduleOf({{Kind::hostName}}), 0U);

    Scope whole;
    whole.select(NW_LOG_NET_MODE);
    EXPECT_EQ(whole.moduleOf(here), std::uint32_t{NW_LOG_NET_MODE});
    EXPECT_FALSE(whole.needsInterfaceFor(here));
}

namespace {

/* Where a step stands in a plan; the end when it doesn't. */
std::ptrdiff_t placeOf(const std::vector<Step> &steps, const Item &item, bool isRemoval)
{
    return std::ranges::find_if(
               steps,
               [&](const Step &step) { return step.item == item && step.isRemoval == isRemoval; }) -
           steps.begin();
}

bool overlap(const Address &one, const Address &other)
{
    return isInSubnetOf(one, other) || isInSubnetOf(other, one);
}

/* The rules of order, for any two steps of a plan. */
void expectOrder(const std::vector<Step> &steps)
{
    for (std::size_t first = 0; first < steps.size(); first++) {
        for (std::size_t second = first + 1; second < steps.size(); second++) {
            const Item &earlier = steps[first].item;
            const Item &later = steps[second].item;
            const bool isHere = earlier.subject == later.subject;
            const bool areAddresses = earlier.kind == Kind::address && later.kind == Kind::address;
            const bool comesThenGoes = !steps[first].isRemoval && steps[second].isRemoval;
            /* What a port gives up goes before what another takes. */
            EXPECT_FALSE(areAddresses && comesThenGoes && !isHere &&
                         overlap(earlier.address, later.address))
                << textOf(steps[first]) << ", " << textOf(steps[second]);
            /* A route goes before the address that it follows, and comes after it. */
            const bool isSameFamily = isHere && earlier.address.family == later.address.family;
            EXPECT_FALSE(isSameFamily && earlier.kind == Kind::address &&
                         later.kind == Kind::route && steps[second].isRemoval)
                << textOf(steps[first]) << ", " << textOf(steps[second]);
            EXPECT_FALSE(isSameFamily && earlier.kind == Kind::route &&
                         later.kind == Kind::address && !steps[first].isRemoval)
                << textOf(steps[first]) << ", " << textOf(steps[second]);
            /* Nothing of a port comes before its link, or after it. */
            EXPECT_FALSE(isHere && later.kind == Kind::link && later.number == 1 &&
                         !steps[first].isRemoval && earlier.kind == Kind::address);
            EXPECT_FALSE(isHere && earlier.kind == Kind::link && earlier.number == 0);
        }
    }
}

/* An old address that no other port waits for stays until the new one is there. */
void expectMakeBeforeBreak(const std::vector<Step> &steps)
{
    for (const Step &gone : steps) {
        if (!gone.isRemoval || gone.item.kind != Kind::address) {
            continue;
        }
        bool isWaitedFor = false;
        std::ptrdiff_t firstNew = static_cast<std::ptrdiff_t>(steps.size());
        for (const Step &step : steps) {
            const bool isNew = !step.isRemoval && step.item.kind == Kind::address &&
                               step.item.address.family == gone.item.address.family;
            const bool isHere = step.item.subject == gone.item.subject;
            const bool isClash = isHere && step.item.address.bytes == gone.item.address.bytes &&
                                 gone.item.address.family == AF_INET6;
            isWaitedFor =
                isWaitedFor ||
                (isNew && (isClash || (!isHere && overlap(step.item.address, gone.item.address))));
            if (isNew && isHere) {
                firstNew = std::min(firstNew, placeOf(steps, step.item, false));
            }
        }
        if (!isWaitedFor && firstNew < static_cast<std::ptrdiff_t>(steps.size())) {
            EXPECT_LT(firstNew, placeOf(steps, gone.item, true)) << textOf(gone);
        }
    }
}

/* Takes steps until nothing is left to do; answers the number of rounds. */
unsigned makeSo(ModelKernel &kernel, const World &world, Items &owned)
{
    unsigned rounds = 0;
    for (; rounds < 6; rounds++) {
        const std::vector<Step> steps = plan(world, kernel.actual, owned);
        expectOrder(steps);
        expectMakeBeforeBreak(steps);
        if (steps.empty()) {
            break;
        }
        for (const Step &step : steps) {
            try {
                kernel.apply(step);
                if (!step.isRemoval) {
                    owned.insert(step.item);
                }
            } catch (const MachineError &) {
                break; /* to be seen in what is then there */
            }
        }
    }
    return rounds;
}

} // namespace

TEST(Plan, RandomWorldsAreMadeSoAndWhatIsForeignStays)
{
    std::mt19937 random(1);
    for (unsigned round = 0; round < 3000; round++) {
        SCOPED_TRACE(round);
        ModelKernel kernel(round % 2 == 0);
        Items owned;
        makeSo(kernel, wanted(anyConfiguration(random), {}), owned);
        const Items foreign{addressOn("eth0", "10.0.0.77", 24), addressOn("eth1", "10.9.9.9", 32)};
        for (const Item &item : foreign) {
            kernel.add(item);
        }

        const World world = wanted(anyConfiguration(random), {});
        const unsigned rounds = makeSo(kernel, world, owned);

        EXPECT_LE(rounds, 4U);
        ASSERT_EQ(textsOf(plan(world, kernel.actual, owned)), Texts{});
        for (const Item &item : foreign) {
            EXPECT_TRUE(kernel.actual.items.contains(item));
        }
        for (const Item &item : kernel.actual.items) {
            const bool isOurs = item.kind == Kind::address || item.kind == Kind::route ||
                                item.kind == Kind::vlan || item.kind == Kind::member;
            EXPECT_TRUE(!isOurs || world.items.contains(item) || foreign.contains(item))
                << textOf(item);
        }
    }
}

/* Whatever somebody takes away is put back, and nothing else is touched. */
TEST(Plan, LostItemsComeBack)
{
    std::mt19937 random(2);
    for (unsigned round = 0; round < 1000; round++) {
        SCOPED_TRACE(round);
        ModelKernel kernel(false);
        Items owned;
        const World world = wanted(anyConfiguration(random), {});
        makeSo(kernel, world, owned);
        const Items whole = kernel.actual.items;
        for (unsigned lost = 0; lost < 3; lost++) {
            std::erase_if(kernel.actual.items, [&](const Item &item) {
                return (item.kind == Kind::subnet || item.kind == Kind::route) && random() % 3 == 0;
            });
        }
        makeSo(kernel, world, owned);
        EXPECT_EQ(kernel.actual.items, whole);
    }
}

} // namespace nwtest
