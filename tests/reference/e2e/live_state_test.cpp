// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The query tells what the kernel says about an address at this moment. */
#include "system.hpp"

namespace e2e {

/* The stored configuration with eth1's address 2001:db8:20::2/64, but a kernel without any address
 * and no manager that would put one there. */
class LiveState : public System {
protected:
    void SetUp() override
    {
        System::SetUp();
        /* A manager notes the link-local address that it finds when it starts. */
        ASSERT_TRUE(eventually([] { return !kernelLinkLocal().empty(); }));
        stopManager();
        startManager();
        stopManager();
        shell("ip address flush dev eth1 scope global");
        shell("ip address flush dev peer1 scope global");
        shell("ip link set eth1 up");
    }

    void TearDown() override
    {
        shell("ip address flush dev peer1 scope global");
        shell("ip link set peer1 up");
    }

    static std::string kernelLinkLocal()
    {
        return run("ip -6 address show dev eth1 scope link | grep -o 'fe80[^/]*' | tr -d '\\n'")
            .output;
    }

    static unsigned state()
    {
        return queryPort("eth1").astIpv6AddrState[NW_IPV6_STATE_STATIC].ucState;
    }
};

TEST_F(LiveState, Valid)
{
    shell("ip -6 address add 2001:db8:20::2/64 dev eth1 nodad");

    EXPECT_EQ(state(), NW_IPV6_ADDR_VALID);
}

TEST_F(LiveState, TentativeWithoutCarrierUntilTheLinkIsThere)
{
    shell("ip link set peer1 down");
    shell("ip -6 address add 2001:db8:20::2/64 dev eth1");
    EXPECT_EQ(state(), NW_IPV6_ADDR_TENTATIVE);

    shell("ip link set peer1 up");
    EXPECT_TRUE(eventually([] { return state() == NW_IPV6_ADDR_VALID; }));
}

TEST_F(LiveState, DuplicateOfTheOtherEnd)
{
    shell("ip -6 address add 2001:db8:20::2/64 dev peer1 nodad");
    shell("ip -6 address add 2001:db8:20::2/64 dev eth1");

    EXPECT_TRUE(eventually([] { return state() == NW_IPV6_ADDR_DAD_FAILED; }));
    EXPECT_TRUE(
        eventually([] { return run("ip address show eth1 | grep dadfailed").status == 0; }));
}

TEST_F(LiveState, AddressThatTheKernelLacksStaysTentative)
{
    EXPECT_EQ(state(), NW_IPV6_ADDR_TENTATIVE);
}

TEST_F(LiveState, SameAddressOnAnotherInterfaceDoesNotCount)
{
    shell("ip -6 address add 2001:db8:20::2/64 dev peer1 nodad");

    EXPECT_EQ(state(), NW_IPV6_ADDR_TENTATIVE);
}

TEST_F(LiveState, OfTheLinkLocalAddressHasItsOwnPlace)
{
    ASSERT_TRUE(eventually([] {
        const NW_ETHER_INS_INFO_S info = queryPort("eth1");
        return info.astIpv6AddrState[NW_IPV6_STATE_LINK_LOCAL].ucState == NW_IPV6_ADDR_VALID;
    }));
    const NW_ETHER_INS_INFO_S info = queryPort("eth1");
    EXPECT_EQ(info.aszIpv6Addr[NW_IPV6_SLOT_LINK_LOCAL], kernelLinkLocal());
    EXPECT_EQ(state(), NW_IPV6_ADDR_TENTATIVE);
}

} // namespace e2e
