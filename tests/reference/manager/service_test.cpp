// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The program: its options, its place on the bus, how it ends. */
#include <csignal>
#include <filesystem>
#include <fstream>

#include "manager/engine/store.hpp"
#include "manager_system.hpp"
#include "rpc/rpc_protocol.hpp"
#include "rpc/rpc_server.hpp"

namespace nwtest {

namespace {

const std::string serviceName = bmc::rpc::busName(NW_RPC_SERVICE_NETWORK);

/* A message bus beside the sandbox's own, with the manager's policy. */
class PolicyBus {
public:
    explicit PolicyBus(const std::string &administrator)
    {
        std::ofstream("/run/policy.conf") << policyFor(administrator);
        std::ofstream("/run/bus.conf")
            << "<busconfig><type>system</type><listen>unix:path=/run/policy-bus</listen>"
               "<auth>EXTERNAL</auth><policy context=\"default\"><allow user=\"*\"/>"
               "<allow send_destination=\"org.freedesktop.DBus\"/>"
               "<allow receive_sender=\"*\"/><allow send_requested_reply=\"true\"/>"
               "</policy><include>/run/policy.conf</include></busconfig>";
        std::filesystem::remove("/run/policy-bus");
        daemon_.emplace(std::vector<std::string>{"dbus-daemon", "--config-file=/run/bus.conf",
                                                 "--nofork", "--nosyslog"});
        EXPECT_TRUE(eventually([] { return std::filesystem::exists("/run/policy-bus"); }))
            << daemon_->errorText();
    }

    void kill()
    {
        daemon_->signal(SIGKILL);
    }

    static constexpr const char *address = "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/policy-bus";

private:
    static std::string policyFor(const std::string &administrator)
    {
        std::stringstream text;
        text << std::ifstream(POLICY_FILE).rdbuf();
        std::string policy = text.str();
        const std::string root = "user=\"root\"";
        policy.replace(policy.find(root), root.size(), "user=\"" + administrator + "\"");
        return policy;
    }

    std::optional<Process> daemon_;
};

class Service : public ManagerTest {
protected:
    void SetUp() override
    {
        configure(separatePorts);
        shell("ip address flush dev eth0 2>/dev/null; true");
    }

    bool isOwned(const std::string &address) const
    {
        return shell(address +
                     " dbus-send --system --print-reply --dest=org.freedesktop.DBus / "
                     "org.freedesktop.DBus.NameHasOwner string:" +
                     serviceName)
                   .find("true") != std::string::npos;
    }
};

} // namespace

TEST_F(Service, StopsOnSigtermAndSigint)
{
    for (const int number : {SIGTERM, SIGINT}) {
        startManager();
        manager_->signal(number);
        EXPECT_EQ(manager_->wait(), 0);
        EXPECT_FALSE(isOwned(""));
    }
}

TEST_F(Service, SecondManagerIsRefused)
{
    startManager();
    const Outcome outcome = runManager({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("another nwmanagerd works on "), std::string::npos);
    EXPECT_EQ(runManager({"--init", "/run/config.json", "--force"}).status, 1);
    stopManager();
}

TEST_F(Service, NameOwnedByAnother)
{
    const auto other = sdbus::createSystemBusConnection(serviceName);
    const Outcome outcome = runManager({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("cannot own the bus name " + serviceName), std::string::npos)
        << outcome.errors;
}

/* The stored configuration holds without a bus, which is served once it is there. */
TEST_F(Service, WaitsForTheBus)
{
    std::filesystem::remove("/run/policy-bus");
    Process manager({NWMANAGERD}, {PolicyBus::address});
    EXPECT_TRUE(eventually([] { return !kernelAddresses("eth0").empty(); })) << manager.errorText();
    EXPECT_TRUE(manager.isRunning());
    EXPECT_NE(manager.errorText().find("the bus is waited for"), std::string::npos)
        << manager.errorText() << kernelSnapshot();

    PolicyBus bus("root");
    EXPECT_TRUE(eventually([&] { return isOwned(PolicyBus::address); })) << manager.errorText();
    manager.signal(SIGTERM);
    EXPECT_EQ(manager.wait(), 0) << manager.errorText();
}

TEST_F(Service, BusThatComesAgainIsServed)
{
    std::optional<PolicyBus> bus("root");
    Process manager({NWMANAGERD}, {PolicyBus::address});
    ASSERT_TRUE(eventually([&] { return isOwned(PolicyBus::address); })) << manager.errorText();

    bus->kill();
    bus.reset();
    bus.emplace("root");

    EXPECT_TRUE(eventually([&] { return isOwned(PolicyBus::address); })) << manager.errorText();
    manager.signal(SIGTERM);
    EXPECT_EQ(manager.wait(), 0) << manager.errorText();
}

TEST_F(Service, SignalEndsTheWaitForTheBus)
{
    std::filesystem::remove("/run/policy-bus");
    Process manager({NWMANAGERD}, {PolicyBus::address});
    EXPECT_TRUE(eventually([] { return !kernelAddresses("eth0").empty(); })) << manager.errorText();
    manager.signal(SIGTERM);
    EXPECT_EQ(manager.wait(), 0) << manager.errorText();
}

/* The second manager touches nothing, whatever its own records ask for. */
TEST_F(Service, SecondManagerOnTheBusTouchesNothing)
{
    startManager();
    const std::string elsewhere = "BMC_STATE_DIR=/run/second-" + std::to_string(getpid());
    std::string json = separatePorts;
    json.replace(json.find("192.168.20.2"), 12, "192.168.99.2");
    std::ofstream("/run/second.json") << json;
    ASSERT_EQ(runManager({"--init", "/run/second.json"}, {elsewhere}).status, 0);
    const std::string before = kernelSnapshot();

    const Outcome outcome = runManager({}, {elsewhere});

    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("cannot own the bus name"), std::string::npos) << outcome.errors;
    EXPECT_EQ(before, kernelSnapshot());
}

/* What the log was written to may be gone. */
TEST_F(Service, BrokenPipeOfTheLogDoesNotEndIt)
{
    shell("sh -c '(" NWMANAGERD " & echo $! > /run/pid) 2>&1 | true'");
    ASSERT_TRUE(eventually([&] { return isOwned(""); }));
    for (int round = 0; round < 3; round++) {
        EXPECT_TRUE(call(std::vector<std::uint8_t>(7)).has_value());
    }
    shell("kill -TERM $(cat /run/pid)");
    EXPECT_TRUE(eventually([&] { return !isOwned(""); }));
}

/* The test is root: where the policy names another administrator, root is anybody. */
TEST_F(Service, PolicyDeniesTheNameToOthers)
{
    PolicyBus bus("nobody");
    const Outcome outcome = runManager({}, {PolicyBus::address});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("cannot own the bus name"), std::string::npos) << outcome.errors;
}

TEST_F(Service, NoConfiguration)
{
    const std::string elsewhere = "BMC_STATE_DIR=/run/empty-" + std::to_string(getpid());
    const Outcome outcome = runManager({}, {elsewhere});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("run nwmanagerd --init FILE"), std::string::npos)
        << outcome.errors;
}

TEST_F(Service, Options)
{
    EXPECT_NE(shell(NWMANAGERD " --help").find("--init FILE"), std::string::npos);
    EXPECT_EQ(shell(NWMANAGERD " --version").rfind("nwmanagerd ", 0), 0U);
    EXPECT_EQ(shell(NWMANAGERD " --help 2>&1 >/dev/full; echo $?"),
              "nwmanagerd: cannot write the output: No space left on device\n1\n");
    EXPECT_EQ(runManager({"--nonsense"}).status, 2);
    EXPECT_EQ(runManager({"--force"}).status, 2);
    EXPECT_EQ(runManager({"word"}).status, 2);
}

} // namespace nwtest
