// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Operators who come in over the network that they change: a real SSH server and client. */
#include <algorithm>
#include <cstdlib>

#include "far_host.hpp"
#include "system.hpp"

namespace e2e {

namespace {

constexpr std::chrono::seconds soon{15};

/* An operator's machine on the network of eth1, and the server that lets him in. */
class Ssh : public System {
protected:
    void SetUp() override
    {
        System::SetUp();
        if (mayNotServe()) {
            GTEST_SKIP() << "an SSH server needs more users than this namespace has";
        }
        far_.own("192.168.20.7/24");
        letRootIn();
        server_ = std::make_unique<Process>(
            std::vector<std::string>{"dropbear", "-F", "-E", "-s", "-R", "-p", "22", "-r",
                                     "/run/host-key", "-P", "/run/dropbear.pid"});
        ASSERT_TRUE(eventually([] { return operate("192.168.20.2", "true").status == 0; }))
            << server_->errorText();
    }

    /* Groups cannot be set where the kernel forbids it to a user's namespace. */
    static bool mayNotServe()
    {
        return shell("cat /proc/self/setgroups") == "deny\n";
    }

    /* By a key, with a home that lasts as long as the sandbox. */
    static void letRootIn()
    {
        if (run("test -e /run/key").status == 0) {
            return;
        }
        shell("mkdir -p -m 700 /run/home/.ssh && "
              "sed 's|^root:.*|root:x:0:0:root:/run/home:/bin/sh|' /etc/passwd >/run/passwd && "
              "mount --bind /run/passwd /etc/passwd && "
              "dropbearkey -t ed25519 -f /run/host-key && "
              "dropbearkey -t ed25519 -f /run/key | grep ^ssh >/run/home/.ssh/authorized_keys && "
              "chmod 600 /run/home/.ssh/authorized_keys");
    }

    static std::vector<std::string> clientWords(const std::string &address,
                                                const std::string &words)
    {
        std::string settings;
        for (const char *name : {"BMC_STATE_DIR", "DBUS_SYSTEM_BUS_ADDRESS"}) {
            settings += std::string(name) + "=" + std::getenv(name) + " ";
        }
        return {"ip",
                "netns",
                "exec",
                "peer1",
                "dbclient",
                "-y",
                "-y",
                "-i",
                "/run/key",
                "root@" + address,
                settings + "sh -c '" + words + "'"};
    }

    static Outcome operate(const std::string &address, const std::string &words)
    {
        return support::runProgram(clientWords(address, words));
    }

    static std::string nwctlThere(const std::string &words)
    {
        return NW_BINARY_DIR "/nwctl " + words;
    }

    static bool has(const std::string &address)
    {
        const auto addresses = kernelAddresses("eth1");
        return std::ranges::find(addresses, address + "/24") != addresses.end();
    }

    support::FarHost far_{"peer1"};
    std::unique_ptr<Process> server_;
};

} // namespace

/* He loses his session, cannot come in by the old address, does nothing, and has it back. */
TEST_F(Ssh, OperatorWhoIsCutOffHasHisAddressBack)
{
    const Process operation(clientWords(
        "192.168.20.2", nwctlThere("lan set eth1 --ipv4 192.168.30.9/24 --confirm-within 10")));
    ASSERT_TRUE(eventually([] { return has("192.168.30.9"); })) << operation.errorText();
    EXPECT_FALSE(has("192.168.20.2"));
    ASSERT_TRUE(eventually([] { return has("192.168.20.2"); }, soon)) << manager().errorText();
    EXPECT_FALSE(has("192.168.30.9"));
    EXPECT_EQ(storedAddresses(NW_PORT_ETH1).front(), "192.168.20.2/24");
    const Outcome back = operate("192.168.20.2", nwctlThere("pending"));
    EXPECT_EQ(back.output, "Nothing waits to be confirmed.\n") << back.errors;
}

/* He comes in by the new address and says that it shall stay. */
TEST_F(Ssh, OperatorWhoConfirmsKeepsTheNewAddress)
{
    const Process operation(clientWords(
        "192.168.20.2", nwctlThere("lan set eth1 --ipv4 192.168.20.9/24 --confirm-within 10")));
    ASSERT_TRUE(eventually([] { return has("192.168.20.9"); })) << operation.errorText();
    const Outcome confirmed = operate("192.168.20.9", nwctlThere("confirm"));
    EXPECT_EQ(confirmed.status, 0) << confirmed.errors;
    EXPECT_FALSE(eventually([] { return has("192.168.20.2"); }, std::chrono::seconds(11)));
    EXPECT_TRUE(has("192.168.20.9"));
}

/* Unasked, also where the session's variables are gone; and who says so does without. */
TEST_F(Ssh, HasTimeToConfirmWithoutAsking)
{
    const std::string change = nwctlThere("vlan set eth1 --vlan-priority 5");
    for (const std::string way : {"", "env -u SSH_CONNECTION ", "env SSH_CONNECTION=nonsense "}) {
        SCOPED_TRACE(way);
        const Outcome outcome = operate("192.168.20.2", way + change);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_NE(outcome.output.find("You come in over eth1, to 192.168.20.2.\nGoes back in 1"),
                  std::string::npos)
            << outcome.output;
        EXPECT_EQ(nwctl("revert").status, 0);
    }
    EXPECT_EQ(operate("192.168.20.2", change + " --no-confirm").status, 0);
    EXPECT_EQ(nwctl("pending").output, "Nothing waits to be confirmed.\n");
    EXPECT_EQ(operate("192.168.20.2", nwctlThere("vlan set eth0 --vlan-priority 5")).status, 0);
    EXPECT_EQ(nwctl("pending").output, "Nothing waits to be confirmed.\n");
}

} // namespace e2e
