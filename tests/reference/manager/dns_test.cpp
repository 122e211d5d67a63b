// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Command 1: DNS settings. */
#include <filesystem>

#include "requests.hpp"

namespace nwtest {

namespace {

constexpr std::uint8_t command = NW_CMD_SET_DNS;

struct Row {
    const char *name;
    std::uint16_t bits;
    void (*edit)(NW_DNS_PORT_S &port);
    std::uint32_t result;
};

void fill(char (&field)[260], char letter)
{
    std::memset(field, letter, sizeof(field));
}

/* clang-format off */
const Row rows[] = {
    {"UnknownBit",       0x0020, [](auto &) {}, 0x1E000021},
    {"HighestBit",       0x8000, [](auto &) {}, 0x1E000021},
    {"Ipv4Mode3",        0x0001, [](auto &port) { port.ucIpv4DnsMode = 3; }, 0x1E00001E},
    {"Ipv6Mode255",      0x0100, [](auto &port) { port.ucIpv6DnsMode = 255; }, 0x1E00001E},
    {"Ipv4Multicast",    0x0004, [](auto &port) { put(port.aucIpv4DnsServer[0], "224.0.0.1"); }, 0x1E00001A},
    {"Ipv4Loopback",     0x0010, [](auto &port) { put(port.aucIpv4DnsServer[2], "127.0.0.1"); }, 0x1E00001A},
    {"Ipv6Multicast",    0x0400, [](auto &port) { put(port.aucIpv6DnsServer[0], "ff02::1"); }, 0x1E00001A},
    {"Ipv6Loopback",     0x1000, [](auto &port) { put(port.aucIpv6DnsServer[2], "::1"); }, 0x1E00001A},
    {"DomainOneLabel",   0x0002, [](auto &port) { std::strcpy(port.szIpv4DnsDomain, "local"); }, 0x1E00001D},
    {"DomainBlank",      0x0200, [](auto &port) { std::strcpy(port.szIpv6DnsDomain, "a b.c"); }, 0x1E00001D},
    {"DomainEndless",    0x0002, [](auto &port) { fill(port.szIpv4DnsDomain, 'a'); }, 0x1E00001D},
    {"GoodModeBadServer", 0x0005, [](auto &port) { port.ucIpv4DnsMode = 1; put(port.aucIpv4DnsServer[0], "240.1.1.1"); }, 0x1E00001A},
};
/* clang-format on */

class Dns : public ManagerTest {
protected:
    void SetUp() override
    {
        bmc::manager::Store().put(bmc::manager::dnsRecord, {});
        ManagerTest::SetUp();
    }
};

DnsSet twoPorts()
{
    DnsSet set{};
    set.bits[0] = 0x0007;
    set.ports[0].ucIpv4DnsMode = 1;
    put(set.ports[0].aucIpv4DnsServer[0], "10.0.0.53");
    std::strcpy(set.ports[0].szIpv4DnsDomain, "lab.example.org");
    set.bits[1] = 0x1B00;
    set.ports[1].ucIpv6DnsMode = 1;
    put(set.ports[1].aucIpv6DnsServer[1], "2001:db8::53");
    put(set.ports[1].aucIpv6DnsServer[2], "2001:db8::54");
    std::strcpy(set.ports[1].szIpv6DnsDomain, "lab.example.org");
    return set;
}

} // namespace

TEST_F(Dns, SelectedFieldsReachRecordAndFile)
{
    DnsSet set = twoPorts();
    NW_DNS_DB_INFO_S wanted{};
    wanted.astPort[0] = set.ports[0];
    wanted.astPort[1] = set.ports[1];
    /* Not selected: stays zero in the record. */
    put(set.ports[0].aucIpv4DnsServer[1], "10.0.0.54");
    put(set.ports[1].aucIpv6DnsServer[0], "2001:db8::52");

    expectAnswer(requestOf(command, set), NW_OK, 0);

    const NW_DNS_DB_INFO_S dns = stored().dns;
    EXPECT_EQ(std::memcmp(&dns, &wanted, sizeof(dns)), 0);
    EXPECT_EQ(resolverText(), "# Written by nwmanagerd.\nnameserver 10.0.0.53\n"
                              "nameserver 2001:db8::53\nnameserver 2001:db8::54\n"
                              "search lab.example.org\n");

    /* The automatic mode is the DHCP client's: its data stay in the record and leave the file. */
    DnsSet automatic{};
    automatic.bits[1] = 0x0100;
    automatic.ports[1].ucIpv6DnsMode = 2;
    expectAnswer(requestOf(command, automatic), NW_OK, 1);
    EXPECT_EQ(resolverText(),
              "# Written by nwmanagerd.\nnameserver 10.0.0.53\nsearch lab.example.org\n");
    EXPECT_STREQ(stored().dns.astPort[1].szIpv6DnsDomain, "lab.example.org");
}

TEST_F(Dns, EachRefusalHasItsCode)
{
    expectAnswer(requestOf(command, twoPorts()), NW_OK, 0);
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        DnsSet set{};
        set.bits[1] = row.bits;
        row.edit(set.ports[1]);
        expectRefused(requestOf(command, set), row.result, 1);
    }
}

TEST_F(Dns, PortThatIsNotServed)
{
    DnsSet set = twoPorts();
    set.bits[2] = 1;
    expectRefused(requestOf(command, set), 0x1E000004, 0);
}

TEST_F(Dns, FileThatCannotBeWritten)
{
    expectAnswer(requestOf(command, twoPorts()), NW_OK, 0);
    const std::string path = std::string(std::getenv("BMC_STATE_DIR")) + "/resolv.conf";
    const auto before = stored().dns;
    std::filesystem::remove(path);
    std::filesystem::create_directories(path + "/in-the-way");
    DnsSet set{};
    set.bits[1] = 0x0100;
    expectAnswer(requestOf(command, set), 0x1E000016, 1);
    const auto after = stored().dns;
    EXPECT_EQ(std::memcmp(&before, &after, sizeof(before)), 0);
    std::filesystem::remove_all(path);
    expectAnswer(requestOf(command, set), NW_OK, 1);
}

} // namespace nwtest
