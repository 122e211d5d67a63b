// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Checkpoints of the real manager over the bus: confirmed, reverted, and after kills and reboots.
 */
#include <csignal>
#include <random>
#include <thread>

#include <sdbus-c++/sdbus-c++.h>

#include "manager/engine/checkpoint.hpp"
#include "requests.hpp"
#include "rpc/manager1.hpp"
#include "rpc/rpc_protocol.hpp"

namespace nwtest {

namespace {

namespace names = bmc::rpc::manager1;
using bmc::manager::checkpointRecord;
using bmc::manager::Store;
using Addresses = std::vector<std::string>;

constexpr const char *properties = "org.freedesktop.DBus.Properties";

std::string errorName(const char *code)
{
    return names::errorPrefix + std::string(code);
}

struct Nothing {};

class CheckpointTest : public ManagerTest {
protected:
    /* The answer's one value, if it has one of the type. */
    template <typename Value, typename... Arguments>
    static Value ask(const char *interface, const char *method, const Arguments &...arguments)
    {
        const auto bus = sdbus::createSystemBusConnection();
        const auto proxy =
            sdbus::createProxy(*bus, bmc::rpc::busName(NW_RPC_SERVICE_NETWORK), names::objectPath);
        auto call = proxy->createMethodCall(interface, method);
        static_cast<void>((call << ... << arguments));
        auto reply = proxy->callMethod(call);
        Value value{};
        if constexpr (!std::is_same_v<Value, Nothing>) {
            reply >> value;
        }
        return value;
    }

    /* Name of the error, empty for a success. */
    template <typename... Arguments>
    static std::string errorOf(const char *method, const Arguments &...arguments)
    {
        try {
            ask<Nothing>(names::interfaceName, method, arguments...);
            return "";
        } catch (const sdbus::Error &error) {
            return error.getName();
        }
    }

    static std::string set(std::uint32_t seconds)
    {
        return ask<std::string>(names::interfaceName, names::checkpointMethod, seconds);
    }

    template <typename Value>
    static Value property(const char *name)
    {
        return ask<sdbus::Variant>(properties, "Get", names::interfaceName, name)
            .template get<Value>();
    }
    static bool isPending()
    {
        return property<bool>(names::pendingProperty);
    }

    /* Settings of every kind that this kernel has. */
    static void changeAll()
    {
        LanRequest lan;
        lan.select(0, NW_LAN_BIT_LAN_ENABLE);
        lan.select(1, NW_LAN_BIT_IPV4_ADDR | NW_LAN_BIT_IPV6_ADDR | NW_LAN_BIT_IPV4_GATEWAY);
        put(lan.port(1).aucIpv4Addr, "192.168.20.9");
        put(lan.port(1).aucIpv4Gateway, "192.168.20.1");
        put(lan.port(1).aucIpv6Addr, "2001:db8:20::9");
        expectAnswer(lan, NW_OK, 0);
        expectAnswer(requestOf(NW_CMD_SET_HOSTNAME, hostNameSet(6, 0, "elsewhere", "rack9")),
                     NW_OK);
        NW_LAN_REVERSE_SET_S switchover{};
        switchover.ucSetMask = 1;
        switchover.ucEnable = 1;
        expectAnswer(requestOf(NW_CMD_SET_LAN_REVERSE, switchover), NW_OK);
        EXPECT_EQ(kernelAddresses("eth0"), (Addresses{"192.168.20.9/24", "2001:db8:20::9/64"}));
        EXPECT_EQ(shell("hostname"), "elsewhere\n");
    }

    void kill()
    {
        manager_->signal(SIGKILL);
        manager_->wait();
    }

    /* Quiet neighbours, which would take their time. */
    void SetUp() override
    {
        shell("hostname bmc; rm -rf /conf/network");
        Store().put(bmc::manager::hostNameRecord, {});
        ManagerTest::SetUp();
        shell("ip link set peer0 down; ip link set peer1 down");
    }
};

} // namespace

TEST_F(CheckpointTest, RevertBringsBackRecordsKernelAndFiles)
{
    const std::string before = everything();
    set(60);
    EXPECT_TRUE(isPending());
    EXPECT_GT(property<std::uint32_t>(names::secondsLeftProperty), 57U);
    changeAll();
    EXPECT_NE(everything(), before);
    EXPECT_EQ(errorOf(names::revertMethod), "");
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(isPending());
    EXPECT_EQ(property<std::uint32_t>(names::secondsLeftProperty), 0U);
}

TEST_F(CheckpointTest, GoesBackOfItself)
{
    const std::string before = everything();
    set(10);
    changeAll();
    EXPECT_TRUE(
        support::eventually([&] { return everything() == before; }, std::chrono::seconds(15)))
        << manager_->errorText();
    EXPECT_FALSE(isPending());
    EXPECT_NE(manager_->errorText().find("checkpoint: it was not confirmed in time"),
              std::string::npos);
}

TEST_F(CheckpointTest, WhatIsConfirmedStays)
{
    set(10);
    changeAll();
    const std::string changed = everything();
    EXPECT_EQ(errorOf(names::confirmMethod), "");
    kill();
    startManager();
    EXPECT_EQ(everything(), changed);
    EXPECT_FALSE(isPending());
}

TEST_F(CheckpointTest, Refusals)
{
    EXPECT_EQ(errorOf(names::confirmMethod), errorName("NW_MANAGER_NO_CHECKPOINT"));
    EXPECT_EQ(errorOf(names::revertMethod), errorName("NW_MANAGER_NO_CHECKPOINT"));
    for (const std::uint32_t seconds : {0U, 9U, 3601U, ~0U}) {
        EXPECT_EQ(errorOf(names::checkpointMethod, seconds), errorName("NW_MANAGER_BAD_DEADLINE"));
    }
    const std::string token = set(10);
    EXPECT_EQ(errorOf(names::checkpointMethod, std::uint32_t{10}),
              errorName("NW_MANAGER_CHECKPOINT_PENDING"));
    for (const std::string &wrong :
         {std::string(), token.substr(1), token + token, std::string(100'000, 'a')}) {
        EXPECT_EQ(errorOf(names::confirmWithMethod, wrong), errorName("NW_MANAGER_BAD_TOKEN"));
        EXPECT_EQ(errorOf(names::revertWithMethod, wrong), errorName("NW_MANAGER_BAD_TOKEN"));
    }
    EXPECT_TRUE(isPending());
    EXPECT_EQ(errorOf(names::confirmWithMethod, token), "");
    EXPECT_FALSE(isPending());
}

/* Another user may do nothing but end one whose token he holds. */
TEST_F(CheckpointTest, AnotherUser)
{
    const auto asNobody = [](const std::string &words) {
        return shell("setpriv --reuid 65534 --regid 65534 --clear-groups "
                     "dbus-send --system --print-reply --dest=io.networkmng.Service24 "
                     "/io/networkmng/Manager io.networkmng.Manager1." +
                     words + " 2>&1; true");
    };
    const auto isDenied = [](const std::string &answer) {
        return answer.find("AccessDenied") != std::string::npos;
    };
    const std::string token = set(60);
    EXPECT_TRUE(isDenied(asNobody("Confirm")));
    EXPECT_TRUE(isDenied(asNobody("Revert")));
    EXPECT_TRUE(isDenied(asNobody("Checkpoint uint32:10")));
    EXPECT_TRUE(isDenied(asNobody("Apply string:{}")));
    EXPECT_NE(asNobody("ConfirmWith string:x").find("BAD_TOKEN"), std::string::npos);
    EXPECT_TRUE(isPending());
    EXPECT_NE(asNobody("ConfirmWith string:" + token).find("method return"), std::string::npos);
    EXPECT_FALSE(isPending());
}

/* Killed at any moment, it keeps what is pending. */
TEST_F(CheckpointTest, KillsChangeNothing)
{
    std::mt19937 random(11);
    const std::string before = everything();
    const std::string token = set(60);
    for (unsigned round = 0; round < 8; round++) {
        LanRequest request;
        request.select(1, NW_LAN_BIT_IPV4_ADDR);
        put(request.port(1).aucIpv4Addr, "192.168.20." + std::to_string(100 + round));
        std::thread killer([&, wait = random() % 40] {
            std::this_thread::sleep_for(std::chrono::milliseconds(wait));
            manager_->signal(SIGKILL);
        });
        call(request.bytes());
        killer.join();
        manager_->wait();
        startManager();
        ASSERT_TRUE(isPending());
    }
    EXPECT_EQ(errorOf(names::revertWithMethod, token), "");
    EXPECT_EQ(everything(), before);
}

/* Its time passes also while there is no manager, and ends with the boot. */
TEST_F(CheckpointTest, AfterItsTimeAndAfterAReboot)
{
    for (const bool isReboot : {false, true}) {
        SCOPED_TRACE(isReboot);
        const std::string before = everything();
        set(3600);
        changeAll();
        kill();
        auto record = Store().read(checkpointRecord);
        if (isReboot) {
            record.boot[0] = record.boot[0] == 'x' ? 'y' : 'x';
        } else {
            record.deadline = 1;
        }
        Store().put(checkpointRecord, record);
        startManager();
        EXPECT_EQ(everything(), before);
        EXPECT_FALSE(isPending());
    }
}

/* A new first configuration is confirmed by whoever writes it. */
TEST_F(CheckpointTest, EndsWithAFirstConfiguration)
{
    set(60);
    stopManager();
    EXPECT_EQ(runManager({"--init", EXAMPLE_FILE, "--force"}).status, 0);
    startManager();
    EXPECT_FALSE(isPending());
}

} // namespace nwtest
