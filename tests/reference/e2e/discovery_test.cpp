// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the command line finds out: who has an address, gateways, servers and names. */
#include "far_host.hpp"
#include "system.hpp"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace e2e {

using support::FarHost;

using nlohmann::json;
using ::testing::AnyOf;
using ::testing::HasSubstr;

class Probe : public System {
protected:
    void SetUp() override
    {
        System::SetUp();
        host.own("192.168.20.50/24");
    }

    FarHost host{"peer1"};
};

TEST_F(Probe, RefusesAnAddressThatAnotherHostHas)
{
    const Bytes record = storedLanRecord();

    const Outcome result = nwctl("lan set eth1 --ipv4 192.168.20.50/24");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "nwctl: --ipv4 '192.168.20.50': another host on the network of eth1 "
                             "has this address\n");

    const json error =
        json::parse(nwctl("--json lan set eth1 --ipv4 192.168.20.50/24").output)["error"];
    EXPECT_EQ(error["status"], 3);
    EXPECT_TRUE(error["code"].is_null());
    EXPECT_EQ(storedLanRecord(), record);
    EXPECT_THAT(kernelAddresses("eth1"), ::testing::Contains("192.168.20.2/24"));
}

TEST_F(Probe, LetsAFreeAddressPass)
{
    const Outcome result = nwctl("lan set eth1 --ipv4 192.168.20.51/24");

    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(kernelAddresses("eth1"), ::testing::Contains("192.168.20.51/24"));
}

constexpr int managerRefuses = 4;

/* The network manager asks all the same. */
TEST_F(Probe, IsLeftOutOnDemand)
{
    EXPECT_EQ(nwctl("lan set eth1 --ipv4 192.168.20.50/24 --no-probe").status, managerRefuses);
    EXPECT_THAT(kernelAddresses("eth1"), ::testing::Not(::testing::Contains("192.168.20.50/24")));
}

TEST_F(Probe, IsLeftOutWhileThePortIsDown)
{
    ASSERT_EQ(nwctl("lan set eth1 --lan off").status, 0);

    EXPECT_EQ(nwctl("lan set eth1 --ipv4 192.168.20.50/24").status, 0);
}

/* Only a new address is asked for, not a new mask of the old one. */
TEST_F(Probe, IsLeftOutForThePresentAddress)
{
    host.own("192.168.20.2/24");

    EXPECT_EQ(nwctl("lan set eth1 --ipv4 192.168.20.2/25").status, 0);
}

TEST_F(Probe, SaysSoWithoutItsTool)
{
    const Outcome result =
        run("PATH=/nowhere " NW_BINARY_DIR "/nwctl lan set eth1 --ipv4 192.168.20.50/24");

    EXPECT_EQ(result.status, managerRefuses);
    EXPECT_THAT(result.errors, ::testing::StartsWith("nwctl: arping is not installed: only the "
                                                     "network manager asks for the address\n"));
}

class GatewayMac : public System {
protected:
    void SetUp() override
    {
        System::SetUp();
        shell(NW_BINARY_DIR "/nwctl lan set eth1 --ipv4-gateway 192.168.20.1");
    }
};

TEST_F(GatewayMac, IsTheAnsweringHosts)
{
    const FarHost host("peer1");
    host.own("192.168.20.1/24");

    const Outcome result = nwctl("gateway-mac eth1");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, host.mac() + "\n");

    const json document = json::parse(nwctl("--json gateway-mac 1").output);
    EXPECT_EQ(
        document,
        (json{{"port", "eth1"}, {"index", 1}, {"gateway", "192.168.20.1"}, {"mac", host.mac()}}));
}

/* Takes about four seconds: the library asks twice. */
TEST_F(GatewayMac, OfASilentGatewayIsNotFound)
{
    const Outcome result = nwctl("gateway-mac eth1");

    EXPECT_EQ(result.status, 6);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "nwctl: PORT 'eth1': the gateway 192.168.20.1 does not answer\n");
}

TEST_F(GatewayMac, NeedsAGateway)
{
    const Outcome result = nwctl("--json gateway-mac eth0");

    EXPECT_EQ(result.status, 6);
    EXPECT_EQ(json::parse(result.output)["error"]["reason"], "the port has no IPv4 gateway");
}

class Ntp : public System {
protected:
    void SetUp() override
    {
        System::SetUp();
        shell("rm -rf /run/systemd/netif && mkdir -p /run/systemd/netif/dhcp");
    }

    static void lease(const std::string &file, const std::string &text)
    {
        shell("printf '" + text + "' > /run/systemd/netif/dhcp/" + file);
    }
};

TEST_F(Ntp, ServersOfBothFamilies)
{
    ASSERT_EQ(nwctl("lan set eth1 --ipv4-origin dhcp --ipv6-origin dhcp").status, 0);
    lease("eth1.ntpv4", "ADDRESS=192.168.20.2\\nNTP=192.0.2.5 192.0.2.6\\n");
    lease("eth1.ntpv6", "NTP=2001:db8::5\\n");

    EXPECT_EQ(nwctl("ntp eth1").output, "IPv4 192.0.2.5\nIPv4 192.0.2.6\nIPv6 2001:db8::5\n");
    EXPECT_EQ(json::parse(nwctl("--json ntp eth1").output),
              (json{{"port", "eth1"},
                    {"index", 1},
                    {"ipv4", {"192.0.2.5", "192.0.2.6"}},
                    {"ipv6", {"2001:db8::5"}}}));
}

TEST_F(Ntp, OfAStaticAddressAreNotAskedFor)
{
    lease("eth1.ntpv4", "NTP=192.0.2.5\\n");

    const Outcome result = nwctl("ntp eth1");
    EXPECT_EQ(result.status, 6);
    EXPECT_EQ(result.errors, "nwctl: PORT 'eth1': DHCP gave the port no NTP server\n");
}

/* The system's resolver with a hosts file of the test's own. */
class Resolve : public System {
protected:
    static void SetUpTestSuite()
    {
        shell("printf '127.0.0.1 localhost\\n192.0.2.5 time.example\\n192.0.2.6 time.example\\n"
              "2001:db8::7 six.example\\n' > /run/hosts && mount --bind /run/hosts /etc/hosts");
    }
    static void TearDownTestSuite()
    {
        shell("umount /etc/hosts");
    }
};

TEST_F(Resolve, KeepsToThePreferredAddress)
{
    EXPECT_THAT(nwctl("resolve time.example").output, AnyOf("192.0.2.5\n", "192.0.2.6\n"));
    EXPECT_EQ(nwctl("resolve time.example --prefer 192.0.2.5").output, "192.0.2.5\n");
    EXPECT_EQ(nwctl("resolve time.example --prefer 192.0.2.6").output, "192.0.2.6\n");
    EXPECT_EQ(json::parse(nwctl("--json resolve six.example --prefer 2001:DB8:0::7").output),
              (json{{"name", "six.example"}, {"address", "2001:db8::7"}}));
}

TEST_F(Resolve, TellsWhatItDoesNotKnow)
{
    const Outcome unknown = nwctl("resolve no.such.name.invalid");
    EXPECT_EQ(unknown.status, 6);
    EXPECT_EQ(unknown.output, "");
    EXPECT_THAT(unknown.errors,
                HasSubstr("nwctl: NAME 'no.such.name.invalid': the name has no address\n"));

    const Outcome misused = nwctl("resolve time.example --prefer here");
    EXPECT_EQ(misused.status, 2);
    EXPECT_THAT(misused.errors, HasSubstr("--prefer 'here': neither an IPv4 nor an IPv6 address"));
}

/* nwctl in a file system that is this one but for the directory of the name's file. */
class BmcName : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        shell("mkdir -p /run/root && cd / && for entry in *; do "
              "if [ -L $entry ]; then cp -d $entry /run/root/; "
              "elif [ -d $entry ] && [ $entry != conf ]; then "
              "mkdir -p /run/root/$entry && mount --rbind /$entry /run/root/$entry; fi; done; "
              "mkdir -p /run/root/conf/network");
    }

    static Outcome name(const std::string &arguments)
    {
        return run("chroot /run/root " NW_BINARY_DIR "/nwctl " + arguments);
    }
    static constexpr const char *file = "/run/root/conf/network/hostname";
};

TEST_F(BmcName, IsReadAndChanged)
{
    shell(std::string("echo bmc-with-a-long-name > ") + file);
    EXPECT_EQ(name("bmc-name").output, "bmc-with-a-long-name\n");

    EXPECT_EQ(name("bmc-name rack-7").output, "rack-7\n");
    EXPECT_EQ(json::parse(name("--json bmc-name").output), (json{{"name", "rack-7"}}));
    EXPECT_EQ(shell(std::string("head -n 1 ") + file), "rack-7\n");

    const std::string longest(63, 'x');
    EXPECT_EQ(name("bmc-name " + longest).output, longest + "\n");
}

TEST_F(BmcName, IsOnlyToldByADryRun)
{
    shell(std::string("echo bmc > ") + file);

    EXPECT_EQ(name("bmc-name rack-7 --dry-run").output,
              "Dry run, nothing was written. Would change the BMC's name:\n  bmc-name: bmc -> "
              "rack-7\n");
    EXPECT_EQ(json::parse(name("--json bmc-name rack-7 --dry-run").output), json::parse(R"({
        "dryRun": true, "name": "bmc", "changes": [{"setting": "bmc-name", "port": null,
                                                    "before": "bmc", "after": "rack-7"}]})"));
    EXPECT_EQ(
        name("bmc-name bmc --dry-run").output,
        "Dry run, nothing was written. Would change the BMC's name; nothing is different from "
        "what is stored.\n");
    EXPECT_EQ(name("bmc-name a_b --dry-run").status, 3);
    EXPECT_EQ(name("bmc-name --dry-run").status, 2);
    EXPECT_EQ(name("bmc-name").output, "bmc\n");
}

TEST_F(BmcName, RefusesWhatIsNoName)
{
    shell(std::string("echo bmc > ") + file);
    for (const std::string &bad : {std::string("a_b"), std::string("''"), std::string(64, 'x')}) {
        EXPECT_EQ(name("bmc-name " + bad).status, 3) << bad;
    }
    EXPECT_EQ(name("bmc-name").output, "bmc\n");
}

TEST_F(BmcName, NamesTheMissingFile)
{
    shell(std::string("rm -f ") + file);

    for (const char *arguments : {"bmc-name", "bmc-name rack-7"}) {
        const Outcome result = name(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, HasSubstr("/conf/network/hostname"));
    }
}

} // namespace e2e
