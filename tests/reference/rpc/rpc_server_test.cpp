// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rpc/rpc_server.hpp"

#include <csignal>
#include <cstring>
#include <fstream>

#include "bmc_platform.h"
#include "network_mng/rpc.h"
#include "rpc/rpc_protocol.hpp"
#include "rpc_peers.hpp"

namespace {

using namespace std::chrono_literals;
using namespace bmc::test;
using bmc::rpc::NoBus;
using bmc::rpc::Server;
using bmc::rpc::WithoutBus;

constexpr std::uint32_t service = 24;
constexpr std::uint32_t function = 28;
constexpr const char *otherPath = "/io/networkmng/Other";
constexpr const char *otherInterface = "io.networkmng.Other1";

bmc::rpc::Bytes answer(bmc::rpc::Request request)
{
    bmc::rpc::Bytes response(sizeof(NW_RPC_RESPONSE_S));
    response[0] = request[0];
    return response;
}

std::unique_ptr<sdbus::IObject> otherObject(sdbus::IConnection &connection)
{
    auto object = sdbus::createObject(connection, otherPath);
    object->registerMethod("Twice")
        .onInterface(otherInterface)
        .implementedAs([](const std::string &text) { return text + text; });
    object->finishRegistration();
    return object;
}

/* First word of the answer to a request of one byte; -1 when there is none. */
int call(std::uint8_t byte, std::uint32_t patience = 10'000 /* ms */)
{
    MRPC_MSG *message = nullptr;
    int word = -1;
    if (MRPC_Call(service, function, 1, &byte, patience, &message) == 0) {
        std::uint32_t result = 0;
        std::memcpy(&result, message->pData, sizeof(result));
        word = static_cast<int>(result);
    }
    MRPC_MsgFree(&message);
    return word;
}

bool isAnswered()
{
    bool answered = false;
    stderrOf([&] { answered = call(7, 1000) == 7; });
    return answered;
}

/* A server in a process of its own; each turn of its idle work is a byte in a file. */
class RpcServer : public ::testing::Test {
protected:
    RpcServer()
    {
        bus.stop();
    }

    std::unique_ptr<Child> served(WithoutBus withoutBus, std::chrono::milliseconds pause = 0ms)
    {
        return std::make_unique<Child>([this, withoutBus, pause] {
            Server server(service);
            server.handle(function, answer);
            server.offer(otherObject);
            server.whileIdle([this] {
                std::ofstream(idleFile(), std::ios::app) << '.';
                return 20;
            });
            if (pause != 0ms) {
                server.claim();
                std::this_thread::sleep_for(pause);
            }
            server.serve(withoutBus);
        });
    }

    std::filesystem::path idleFile() const
    {
        return directory_.path() / "idle";
    }

    std::uintmax_t idleTurns() const
    {
        std::error_code none;
        const auto turns = std::filesystem::file_size(idleFile(), none);
        return none ? 0 : turns;
    }

    void expectMoreIdleTurns() const
    {
        const auto before = idleTurns();
        EXPECT_TRUE(eventually([&] { return idleTurns() > before + 1; }));
    }

    static void expectEnd(Child &server)
    {
        server.signal(SIGTERM);
        EXPECT_EQ(0, server.wait());
    }

    PrivateBus bus;

private:
    TemporaryDirectory directory_;
};

TEST_F(RpcServer, AnswersOnAllItsObjects)
{
    bus.start();
    const auto server = served(WithoutBus::fail);
    EXPECT_TRUE(eventually(isAnswered));
    const auto proxy = sdbus::createProxy(bmc::rpc::busName(service), otherPath);
    std::string text;
    proxy->callMethod("Twice").onInterface(otherInterface).withArguments("ab").storeResultsTo(text);
    EXPECT_EQ("abab", text);
    expectEnd(*server);
}

TEST_F(RpcServer, CallsWaitBetweenTheClaimAndTheService)
{
    bus.start();
    const auto server = served(WithoutBus::fail, 1s);
    /* Asked for, not claimed as well: who is first would have it. */
    const auto daemon = sdbus::createProxy("org.freedesktop.DBus", "/org/freedesktop/DBus");
    EXPECT_TRUE(eventually([&] {
        bool isOwned = false;
        daemon->callMethod("NameHasOwner")
            .onInterface("org.freedesktop.DBus")
            .withArguments(bmc::rpc::busName(service))
            .storeResultsTo(isOwned);
        return isOwned;
    }));
    EXPECT_EQ(0U, idleTurns());
    EXPECT_EQ(5, call(5));
    expectEnd(*server);
}

TEST_F(RpcServer, SecondOneLearnsItByItsClaim)
{
    bus.start();
    Server first(service);
    first.claim();
    for (int round = 0; round < 2; ++round) {
        Server second(service);
        try {
            round == 0 ? second.claim() : second.serve(WithoutBus::wait);
            ADD_FAILURE() << "the name was given twice";
        } catch (const NoBus &error) {
            ADD_FAILURE() << error.what();
        } catch (const std::runtime_error &error) {
            EXPECT_TRUE(std::string(error.what()).starts_with("cannot own the bus name"))
                << error.what();
        }
    }
    Server other(service + 1);
    EXPECT_NO_THROW(other.claim());
}

TEST_F(RpcServer, MissingBusIsAFailureUnlessItIsWaitedFor)
{
    Server server(service);
    EXPECT_THROW(server.claim(), NoBus);
    EXPECT_THROW(server.serve(), NoBus);
    bus.start();
    EXPECT_NO_THROW(server.claim());
}

TEST_F(RpcServer, WorksWhileItWaitsForTheBus)
{
    const auto server = served(WithoutBus::wait);
    expectMoreIdleTurns();
    EXPECT_FALSE(isAnswered());
    bus.start();
    EXPECT_TRUE(eventually(isAnswered));
    expectEnd(*server);
}

TEST_F(RpcServer, WorksWhileTheBusHangs)
{
    bus.start();
    bus.signal(SIGSTOP);
    const auto server = served(WithoutBus::wait);
    expectMoreIdleTurns();
    bus.signal(SIGCONT);
    EXPECT_TRUE(eventually(isAnswered));
    expectEnd(*server);
}

TEST_F(RpcServer, EndsWhileItWaitsForTheBus)
{
    const auto server = served(WithoutBus::wait);
    expectMoreIdleTurns();
    expectEnd(*server);
}

TEST_F(RpcServer, ComesBackWithTheBus)
{
    bus.start();
    const auto server = served(WithoutBus::wait);
    EXPECT_TRUE(eventually(isAnswered));
    for (int round = 0; round < 3; ++round) {
        bus.stop();
        expectMoreIdleTurns();
        bus.start();
        EXPECT_TRUE(eventually(isAnswered));
    }
    expectEnd(*server);
}

TEST_F(RpcServer, EndsWithTheBusUnlessItIsWaitedFor)
{
    bus.start();
    const auto server = served(WithoutBus::fail);
    EXPECT_TRUE(eventually(isAnswered));
    bus.stop();
    const int status = server->wait();
    EXPECT_LT(status, 128) << "a signal";
    EXPECT_NE(0, status);
}

} // namespace
