// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The library's setters through bus, manager, database and kernel, with their operation logs. */
#include <algorithm>

#include "requests.hpp"

namespace nwtest {

namespace {

/* The library's part of a host name request, as callers give it. */
NW_HOSTNAME_CONF_S hostNameConf(const std::string &hostName, const std::string &bmcName)
{
    NW_HOSTNAME_CONF_S conf{};
    conf.ucLength = static_cast<std::uint8_t>(hostName.size());
    hostName.copy(conf.acHostName, sizeof(conf.acHostName));
    bmcName.copy(conf.acTail, sizeof(conf.acTail));
    return conf;
}

class Library : public ManagerTest {
protected:
    void SetUp() override
    {
        bmc::manager::Store().put(bmc::manager::hostNameRecord, {});
        bmc::manager::Store().put(bmc::manager::dnsRecord, {});
        ManagerTest::SetUp();
    }

    NW_OPER_LOG_S operLog_{};
};

} // namespace

TEST_F(Library, HostName)
{
    const auto conf = hostNameConf("bmc-one", "rack7");
    EXPECT_EQ(LIB_NW_SetHostName(7, &conf, &operLog_), NW_OK);
    EXPECT_STREQ(operLog_.szOperLog, "Host name set successfully, host name mode: Manual, host "
                                     "name BMC: bmc-one, BMC name: rack7.");
    EXPECT_EQ(shell("hostname"), "bmc-one\n");

    const auto bad = hostNameConf("-", "");
    NW_OPER_LOG_S failed{};
    EXPECT_EQ(LIB_NW_SetHostName(2, &bad, &failed), 0x1E000018U);
    EXPECT_STREQ(failed.szOperLog, "Failed to configure host name settings.");
}

TEST_F(Library, Dns)
{
    DnsSet set{};
    set.bits[1] = 0x0005;
    set.ports[1].ucIpv4DnsMode = 1;
    put(set.ports[1].aucIpv4DnsServer[0], "10.0.0.53");
    EXPECT_EQ(LIB_NW_SetAllDnsConf(&set, &operLog_), NW_OK);
    EXPECT_STREQ(operLog_.szOperLog, "DNS settings configured successfully for shared port, IPv4 "
                                     "DNS mode: Manual, IPv4 DNS server 1: 10.0.0.53.");
    NW_DNS_INFO_S info{};
    EXPECT_EQ(LIB_NW_GetAllDnsInfo(&info), NW_OK);
    EXPECT_STREQ(info.astPort[1].szIpv4DnsServer[0], "10.0.0.53");

    put(set.ports[1].aucIpv4DnsServer[0], "127.0.0.1");
    NW_OPER_LOG_S failed{};
    EXPECT_EQ(LIB_NW_SetAllDnsConf(&set, &failed), 0x1E00001AU);
    EXPECT_STREQ(failed.szOperLog, "Failed to configure DNS settings for shared port.");
}

TEST_F(Library, Lldp)
{
    EXPECT_EQ(LIB_NW_IPMI_LLDPEnable(5, &operLog_), NW_OK);
    EXPECT_STREQ(operLog_.szOperLog,
                 "Configured LLDP settings successfully, LLDP state: Enabled, LLDP work mode: RX.");
    NW_LLDP_DB_INFO_S info{};
    EXPECT_EQ(LIB_NW_GetLLDP(&info), NW_OK);
    EXPECT_EQ(info.ucLldpWorkMode, 2);
}

TEST_F(Library, NetModeAndSharedLink)
{
    const NW_NET_MODE_SET_S set{0, 1, 1, {}};
    EXPECT_EQ(LIB_NW_SetNetMode(reinterpret_cast<const std::uint8_t *>(&set), &operLog_), NW_OK);
    EXPECT_STREQ(operLog_.szOperLog, "Configured network port mode successfully, network port "
                                     "mode: Active/standby.");
    std::uint8_t mode = 9;
    for (const std::uint8_t wanted : {NW_SHARE_LINK_SHARED, NW_SHARE_LINK_DEDICATED,
                                      NW_SHARE_LINK_ACTIVE_STANDBY, NW_SHARE_LINK_DEDICATED}) {
        EXPECT_EQ(LIB_NW_ChangeShareLinkMode(wanted), NW_OK);
        EXPECT_EQ(LIB_NW_GetShareLinkMode(&mode), NW_OK);
        EXPECT_EQ(mode, wanted);
    }
    EXPECT_FALSE(isUp("eth1"));
}

TEST_F(Library, Switchover)
{
    const NW_LAN_REVERSE_SET_S set{{}, 1, 1, {}};
    EXPECT_EQ(LIB_NW_SetLanReverse(&set, &operLog_), NW_OK);
    EXPECT_STREQ(operLog_.szOperLog, "Configured port number switchover successfully, port number "
                                     "switchover: Enabled.");
    EXPECT_EQ(kernelAddresses("eth1"), std::vector<std::string>{"192.168.10.2/24"});
}

TEST_F(Library, Arp)
{
    const std::uint8_t suspend[] = {1, 2};
    std::uint8_t status = 9;
    EXPECT_EQ(LIB_NW_SuspendBMCArp(suspend, &status, &operLog_), NW_OK);
    EXPECT_EQ(status, 2);
    EXPECT_NE(std::string(operLog_.szOperLog).find("for shared port, ARP suspend: "),
              std::string::npos);
    EXPECT_EQ(LIB_NW_ResumeSuspendBMCArps(0), NW_OK);
    EXPECT_EQ(LIB_NW_UpdateArpStatus(1, 0, 0, &status), NW_OK);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(LIB_NW_UpdateArpStatus(7, 0, 0, &status), NW_ERR_ARP_UPDATE);

    const std::uint8_t unserved[] = {2, 0};
    NW_OPER_LOG_S failed{};
    EXPECT_EQ(LIB_NW_SuspendBMCArp(unserved, &status, &failed), NW_ERR_ARP_SUSPEND);
    EXPECT_STREQ(failed.szOperLog, "Failed to configure LAN settings for active/standby port.");
}

TEST_F(Library, AutoNegotiationWithoutHardware)
{
    const std::uint8_t bitmap[NW_AN_BITMAP_SIZE] = {1};
    const std::uint8_t config[NW_AN_CONFIG_SIZE] = {};
    EXPECT_EQ(LIB_NW_SetAnPortConfig(bitmap, config, &operLog_), 0x1E00061CU);
    EXPECT_STREQ(operLog_.szOperLog, "Failed to configure PHY negotiation.");
}

TEST_F(Library, RestartAndCombinedSet)
{
    shell("ip address flush dev eth1");
    EXPECT_EQ(LIB_NW_SetNetworkRestart(0), NW_OK);
    EXPECT_EQ(kernelAddresses("eth1").size(), 2U);

    DnsSet dns{};
    dns.bits[1] = 1;
    dns.ports[1].ucIpv4DnsMode = 1;
    NW_SET_NETWORK_ALL_S set{};
    set.ulModuleMask = 0x06;
    set.stLan.stBitmap.aauiWord[0][0] = NW_LAN_BIT_IPV4_ADDR;
    put(set.stLan.stConfig.astPort[0].aucIpv4Addr, "192.168.10.9");
    std::memcpy(set.aucDns, &dns, sizeof(dns));
    EXPECT_EQ(LIB_NW_SetNetWorkAll(&set, &operLog_), NW_OK);
    EXPECT_STREQ(operLog_.szLanOtherLog, "LAN settings configured successfully for dedicated "
                                         "port, IPv4 address: 192.168.10.9.");
    EXPECT_STREQ(operLog_.szDnsLog, "DNS settings configured successfully for shared port, IPv4 "
                                    "DNS mode: Manual.");

    set.aucDns[4 + 3] = 0x80; /* port 1, a bit that selects nothing */
    NW_OPER_LOG_S failed{};
    EXPECT_EQ(LIB_NW_SetNetWorkAll(&set, &failed), 0x1E000021U);
    EXPECT_STREQ(failed.szOperLog, "Failed to configure DNS settings for shared port.");
}

} // namespace nwtest
