// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* RPC calls over D-Bus. */
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <thread>
#include <vector>

#include <sys/time.h>

#include "bmc_platform.h"
#include "network_mng/rpc.h"
#include "rpc_peers.hpp"

namespace {

using namespace std::chrono_literals;
using bmc::test::Child;
using bmc::test::Environment;
using bmc::test::Handler;
using bmc::test::inChild;
using bmc::test::Peer;
using bmc::test::PrivateBus;
using bmc::test::stderrOf;
using Clock = std::chrono::steady_clock;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t service = 24;
constexpr std::uint32_t function = 28;
constexpr std::uint32_t patience = 5000; /* ms; long enough to mean "answered at once" */
constexpr std::size_t responseSize = 264;

void reply(sdbus::MethodCall &call, const auto &...parts)
{
    auto message = call.createReply();
    (void)(static_cast<sdbus::Message &>(message) << ... << parts);
    message.send();
}

/* Result: the function number; detail: the request's length; data: the head of the request. */
void echo(sdbus::MethodCall &call)
{
    NW_RPC_RESPONSE_S response{};
    std::uint32_t number = 0;
    Bytes request;
    call >> number >> request;
    response.uiResult = number;
    response.uiDetail = static_cast<std::uint32_t>(request.size());
    std::copy_n(request.begin(), std::min(request.size(), sizeof(response.aucResData)),
                response.aucResData);

    Bytes bytes(sizeof(response));
    std::memcpy(bytes.data(), &response, sizeof(response));
    reply(call, bytes);
}

void stayBusy(sdbus::MethodCall &)
{
    std::this_thread::sleep_for(30s);
}

void die(sdbus::MethodCall &)
{
    _exit(0);
}

class Rpc : public ::testing::Test {
protected:
    PrivateBus bus;
};

/* One call whose answer, if there is one, is released with it. */
class Call {
public:
    explicit Call(const Bytes &request, std::uint32_t timeout = patience,
                  std::uint32_t calledService = service)
    {
        const auto start = Clock::now();
        result = MRPC_Call(calledService, function, static_cast<std::uint32_t>(request.size()),
                           request.data(), timeout, &message);
        duration = Clock::now() - start;
    }

    Call(const Call &) = delete;
    Call &operator=(const Call &) = delete;

    ~Call()
    {
        MRPC_MsgFree(&message);
        EXPECT_EQ(nullptr, message);
    }

    NW_RPC_RESPONSE_S response() const
    {
        NW_RPC_RESPONSE_S copy{};
        if (message != nullptr && message->pData != nullptr) {
            std::memcpy(&copy, message->pData, sizeof(copy));
        }
        return copy;
    }

    MRPC_MSG *message = reinterpret_cast<MRPC_MSG *>(1); /* must be replaced */
    int result = -1;
    Clock::duration duration{};
};

void expectEcho(const Bytes &request, std::uint32_t timeout = patience)
{
    const Call call(request, timeout);
    ASSERT_EQ(0, call.result);
    ASSERT_NE(nullptr, call.message);
    ASSERT_NE(nullptr, call.message->pData);
    const NW_RPC_RESPONSE_S response = call.response();
    EXPECT_EQ(function, response.uiResult);
    EXPECT_EQ(request.size(), response.uiDetail);
    const auto head =
        static_cast<std::ptrdiff_t>(std::min(request.size(), sizeof(response.aucResData)));
    EXPECT_TRUE(std::equal(request.begin(), request.begin() + head, response.aucResData));
}

/* How long a failed call took and what it told. */
struct Failed {
    Clock::duration duration;
    std::string line;
};

/* A failed call answers by a code, a line and no message. */
Failed expectFailure(std::uint32_t timeout = patience, std::uint32_t calledService = service)
{
    Clock::duration duration{};
    const std::string line = stderrOf([&] {
        const Call call(Bytes(16, 1), timeout, calledService);
        EXPECT_NE(0, call.result);
        EXPECT_EQ(nullptr, call.message);
        duration = call.duration;
    });
    EXPECT_TRUE(line.starts_with("<4>libbmc_platform:")) << line;
    return {duration, line};
}

TEST_F(Rpc, CarriesFunctionAndRequestThereAndTheResponseBack)
{
    const Peer peer(service, echo);
    for (const std::size_t size : {0U, 1U, 256U, 3074U, 100000U}) {
        Bytes request(size);
        for (std::size_t byte = 0; byte < size; ++byte) {
            request[byte] = static_cast<std::uint8_t>(byte * 13 + 5);
        }
        expectEcho(request);
    }
}

TEST_F(Rpc, EmptyAnswerIsAMessageWithoutData)
{
    const Peer peer(service, [](sdbus::MethodCall &call) { reply(call, Bytes()); });
    const Call call(Bytes(1));
    EXPECT_EQ(0, call.result);
    ASSERT_NE(nullptr, call.message);
    EXPECT_EQ(nullptr, call.message->pData);
}

struct Rubbish {
    const char *name;
    const char *signature; /* of the answer */
    Handler handler;
    const char *reason; /* part of the line */
};

class RubbishAnswer : public Rpc, public ::testing::WithParamInterface<Rubbish> {};

TEST_P(RubbishAnswer, IsATransportFailure)
{
    const Peer peer(service, GetParam().handler, GetParam().signature);
    const Failed failed = expectFailure();
    EXPECT_LT(failed.duration, 4s);
    EXPECT_NE(failed.line.npos, failed.line.find(GetParam().reason)) << failed.line;
}

Handler answering(const auto &...parts)
{
    return [=](sdbus::MethodCall &call) { reply(call, parts...); };
}

void answerVariant(sdbus::MethodCall &call)
{
    reply(call, sdbus::Variant(Bytes(responseSize)));
}

void refuse(sdbus::MethodCall &)
{
    throw sdbus::Error("io.networkmng.Error.Refused", "refused");
}

constexpr const char *wrongLength = "neither no bytes nor those of a full response";
constexpr const char *wrongType = "not bytes";
constexpr const char *moreParts = "more than one part";

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, RubbishAnswer, ::testing::Values(
    Rubbish{"OneByte",     "ay", answering(Bytes(1)), wrongLength},
    Rubbish{"ByteMissing", "ay", answering(Bytes(responseSize - 1)), wrongLength},
    Rubbish{"ByteTooMany", "ay", answering(Bytes(responseSize + 1)), wrongLength},
    Rubbish{"Twice",       "ay", answering(Bytes(2 * responseSize)), wrongLength},
    Rubbish{"Huge",        "ay", answering(Bytes(1U << 20)), wrongLength},
    Rubbish{"Nothing",     "",   answering(), wrongType},
    Rubbish{"Text",        "s",  answering(std::string("done")), wrongType},
    Rubbish{"Byte",        "y",  answering(std::uint8_t{0}), wrongType},
    Rubbish{"Number",      "u",  answering(std::uint32_t{0}), wrongType},
    Rubbish{"Words",       "au", answering(std::vector<std::uint32_t>(66)), wrongType},
    Rubbish{"NoWords",     "au", answering(std::vector<std::uint32_t>()), wrongType},
    Rubbish{"Variant",     "v",  answerVariant, wrongType},
    Rubbish{"FurtherPart", "ayu", answering(Bytes(responseSize), std::uint32_t{0}), moreParts},
    Rubbish{"EmptyAndFurtherPart", "ayay", answering(Bytes(), Bytes(responseSize)), moreParts},
    Rubbish{"Error",       "ay", refuse, "refused"},
    Rubbish{"Death",       "ay", die, "disconnected"}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(Rpc, PeerWithoutTheObjectIsAFailure)
{
    const auto connection = sdbus::createSystemBusConnection("io.networkmng.Service24");
    connection->enterEventLoopAsync();
    EXPECT_LT(expectFailure().duration, 4s);
}

TEST_F(Rpc, MissingServiceFailsFast)
{
    EXPECT_LT(expectFailure().duration, 2s);
    EXPECT_LT(expectFailure(patience, UINT32_MAX).duration, 2s);
}

TEST_F(Rpc, MissingServiceIsNotStarted)
{
    EXPECT_LT(expectFailure(patience, PrivateBus::startableService).duration, 2s);
    std::this_thread::sleep_for(200ms);
    EXPECT_FALSE(std::filesystem::exists(bus.startedFile()));

    /* The bus would have started it for an ordinary call. */
    const auto proxy = sdbus::createProxy(sdbus::createSystemBusConnection(),
                                          "io.networkmng.Service99", "/io/networkmng/Rpc");
    auto call = proxy->createMethodCall("io.networkmng.Rpc1", "Call");
    EXPECT_THROW(proxy->callMethod(call, 300ms), sdbus::Error);
    EXPECT_TRUE(bmc::test::eventually([&] { return std::filesystem::exists(bus.startedFile()); }));
}

TEST_F(Rpc, SilentPeerIsWaitedForAsLongAsTheTimeOutSays)
{
    for (const auto timeout : {300ms, 50ms}) {
        const Peer peer(service, stayBusy);
        const auto duration = expectFailure(static_cast<std::uint32_t>(timeout.count())).duration;
        EXPECT_GE(duration, timeout - 5ms);
        EXPECT_LT(duration, timeout + 1500ms);
    }
}

TEST_F(Rpc, TimeOutOfZeroDoesNotWait)
{
    const Peer peer(service, stayBusy);
    EXPECT_LT(expectFailure(0).duration, 1s);
}

TEST_F(Rpc, PeerThatDiesDuringTheCallIsNoticedAtOnce)
{
    const Peer peer(service, stayBusy);
    std::jthread killer([&] {
        std::this_thread::sleep_for(100ms);
        peer.signal(SIGKILL);
    });
    EXPECT_LT(expectFailure().duration, 3s);
}

TEST_F(Rpc, BusThatDiesDuringTheCallIsNoticedAtOnce)
{
    const Peer peer(service, stayBusy);
    std::jthread killer([&] {
        std::this_thread::sleep_for(100ms);
        bus.signal(SIGKILL);
    });
    EXPECT_LT(expectFailure().duration, 3s);
    EXPECT_LT(expectFailure().duration, 1s);
}

TEST_F(Rpc, BusThatHangsIsWaitedForAsLongAsTheTimeOutSays)
{
    const Peer peer(service, echo);
    bus.signal(SIGSTOP);
    const auto duration = expectFailure(200).duration;
    EXPECT_GE(duration, 195ms);
    EXPECT_LT(duration, 1500ms);
    bus.signal(SIGCONT);
    expectEcho(Bytes(3074, 1));
}

TEST_F(Rpc, UnusableBusAddressFailsFast)
{
    for (const char *address :
         {"unix:path=/nonexistent/socket", "unix:abstract=/nonexistent", "unix:path=/", "rubbish",
          "tcp:host=127.0.0.1,port=1", "unix:path=/nonexistent/one;unix:path=/nonexistent/two"}) {
        const Environment variable("DBUS_SYSTEM_BUS_ADDRESS", address);
        EXPECT_LT(expectFailure().duration, 2s) << address;
    }
}

TEST_F(Rpc, SignalsDoNotDisturbACall)
{
    const Peer peer(service, [](sdbus::MethodCall &call) {
        std::this_thread::sleep_for(100ms);
        echo(call);
    });
    struct sigaction action {};
    struct sigaction before {};
    action.sa_handler = [](int) {};
    ASSERT_EQ(0, sigaction(SIGALRM, &action, &before));
    const itimerval often{{0, 3000}, {0, 3000}};
    const itimerval never{};

    ASSERT_EQ(0, setitimer(ITIMER_REAL, &often, nullptr));
    expectEcho(Bytes(3074, 1));
    ASSERT_EQ(0, setitimer(ITIMER_REAL, &never, nullptr));
    sigaction(SIGALRM, &before, nullptr);
}

auto entriesOf(const char *directory)
{
    return std::distance(std::filesystem::directory_iterator(directory), {});
}

TEST_F(Rpc, LeavesNeitherDescriptorsNorThreads)
{
    const Peer good(service, echo);
    const Peer bad(service + 1, answering(std::string("rubbish")), "s");
    const auto descriptors = entriesOf("/proc/self/fd");
    const auto threads = entriesOf("/proc/self/task");

    stderrOf([] {
        for (int round = 0; round < 70; ++round) {
            EXPECT_EQ(0, Call(Bytes(3074)).result);
            EXPECT_NE(0, Call(Bytes(3074), patience, service + 1).result);
            EXPECT_NE(0, Call(Bytes(3074), patience, service + 2).result);
        }
    });
    EXPECT_EQ(descriptors, entriesOf("/proc/self/fd"));
    EXPECT_EQ(threads, entriesOf("/proc/self/task"));
}

TEST_F(Rpc, ServesManyThreadsAtOnce)
{
    const Peer peer(service, echo);
    std::vector<std::jthread> threads;
    for (std::uint8_t thread = 0; thread < 8; ++thread) {
        threads.emplace_back([thread] {
            for (int round = 0; round < 10; ++round) {
                expectEcho(Bytes(100U + thread, thread), 20000);
            }
        });
    }
}

TEST_F(Rpc, ServesForkedChildren)
{
    const Peer peer(service, echo);
    expectEcho(Bytes(1, 1));
    inChild([] { expectEcho(Bytes(2, 2)); });
    expectEcho(Bytes(3, 3));
}

TEST_F(Rpc, AbsurdArgumentsAreRefused)
{
    const Peer peer(service, echo);
    stderrOf([] {
        std::uint8_t byte = 0;
        MRPC_MSG *message = reinterpret_cast<MRPC_MSG *>(1);
        EXPECT_NE(0, MRPC_Call(service, function, 1, &byte, patience, nullptr));
        EXPECT_NE(0, MRPC_Call(service, function, 1, nullptr, patience, &message));
        EXPECT_EQ(nullptr, message);
        EXPECT_NE(0, MRPC_Call(service, function, UINT32_MAX, &byte, patience, &message));
        EXPECT_EQ(nullptr, message);
    });
}

TEST(RpcMessage, NullIsReleasedToo)
{
    MRPC_MSG *message = nullptr;
    MRPC_MsgFree(&message);
    EXPECT_EQ(nullptr, message);
    MRPC_MsgFree(nullptr);
}

} // namespace
