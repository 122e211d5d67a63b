// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The program: its options, its place on the bus, how it ends. */
#include <csignal>
#include <filesystem>
#include <fstream>

#include "manager/engine/store.hpp"
#include "manager_system.hpp"
#include "rpc_protocol.hpp"
#include "rpc_server.hpp"

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
        EXPECT_TRUE(waitUntil([] { return std::filesystem::exists("/run/policy-bus"); }))
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
    EXPECT_NE(outcome.error.find("another nwmanagerd works on "), std::string::npos);
    EXPECT_EQ(runManager({"--init", "/run/config.json", "--force"}).status, 1);
    stopManager();
}

TEST_F(Service, NameOwnedByAnother)
{
    const auto other = sdbus::createSystemBusConnection(serviceName);
    const Outcome outcome = runManager({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("cannot own the bus name " + serviceName), std::string::npos)
        << outcome.error;
}

TEST_F(Service, NoBus)
{
    const Outcome outcome =
        runManager({}, {"DBUS_SYSTEM_BUS_ADDRESS=unix:path=/run/there-is-no-bus"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("cannot connect to the message bus"), std::string::npos)
        << outcome.error;
}

TEST_F(Service, BusLostAtRunTime)
{
    PolicyBus bus("root");
    Process manager({NWMANAGERD}, {PolicyBus::address});
    ASSERT_TRUE(waitUntil([&] { return isOwned(PolicyBus::address); })) << manager.errorText();

    bus.kill();

    EXPECT_EQ(manager.wait(), 1);
    EXPECT_NE(manager.errorText().find("lost the message bus"), std::string::npos)
        << manager.errorText();
}

/* The test is root: where the policy names another administrator, root is anybody. */
TEST_F(Service, PolicyDeniesTheNameToOthers)
{
    PolicyBus bus("nobody");
    const Outcome outcome = runManager({}, {PolicyBus::address});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("cannot own the bus name"), std::string::npos) << outcome.error;
}

TEST_F(Service, NoConfiguration)
{
    const std::string elsewhere = "BMC_STATE_DIR=/run/empty-" + std::to_string(getpid());
    const Outcome outcome = runManager({}, {elsewhere});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("run nwmanagerd --init FILE"), std::string::npos) << outcome.error;
}

TEST_F(Service, InitReplacesOnlyWhenForced)
{
    const Outcome outcome = runManager({"--init", "/run/config.json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.error.find("--force"), std::string::npos) << outcome.error;
    EXPECT_EQ(runManager({"--init", "/run/config.json", "--force"}).status, 0);
    EXPECT_EQ(runManager({"--init", "/run/no-such-file"}).status, 1);
}

TEST_F(Service, InitWritesWhatReadersNeed)
{
    NW_HOSTNAME_DB_INFO_S hostName;
    NW_DNS_DB_INFO_S dns;
    NW_LLDP_DB_INFO_S lldp;
    NW_NCSI_DB_INFO_S ncsi;
    NW_AN_CFG_DB_INFO_S an;
    NW_IFC_STATE_DB_INFO_S state;
    NW_LAN_CFG_DB_INFO_S lan;
    std::uint8_t status = 9;
    EXPECT_EQ(LIB_NW_GetHostName(&hostName), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_DNS(&dns), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_LLDP(&lldp), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_NCSI(&ncsi), NW_OK);
    EXPECT_EQ(NW_LMDB_GetAnCfgInfo(&an), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_IfcState(&state), NW_OK);
    EXPECT_EQ(NW_LMDB_GetLanCfgInfo(&lan), NW_OK);
    EXPECT_EQ(NW_LMDB_Get_NetStatus(&status), NW_OK);
    EXPECT_EQ(status, 0);

    /* A record that is there stays. */
    const bmc::manager::Store store;
    hostName.ucHostNameMode = 1;
    store.put(bmc::manager::hostNameRecord, hostName);
    configure(separatePorts);
    EXPECT_EQ(store.read(bmc::manager::hostNameRecord).ucHostNameMode, 1);
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
