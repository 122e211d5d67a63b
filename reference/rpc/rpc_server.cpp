// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rpc/rpc_server.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <poll.h>

#include "common/supervisor.hpp"
#include "rpc/bus_probe.hpp"
#include "rpc/rpc_protocol.hpp"

namespace bmc::rpc {

namespace {

using namespace std::chrono_literals;

constexpr const char *unknownFunction = "io.networkmng.Error.UnknownFunction";
constexpr const char *handlerFailed = "io.networkmng.Error.Failed";

/* For a bus that is there and does not answer: when nothing can be done without it, and while there
 * is other work. */
constexpr auto patienceAlone = 10s;
constexpr auto patienceAmidWork = 500ms;

constexpr int retryPause = 500; /* ms */

/* Before other work has its turn, which shall not wait for ever. */
constexpr unsigned mostCalls = 16;

constexpr pollfd nothing{-1, 0, 0};

/* Runs a bus operation; what it throws becomes one sentence. */
template <typename Failure = std::runtime_error, typename Operation>
auto onBus(const std::string &what, Operation operation)
{
    try {
        return operation();
    } catch (const sdbus::Error &error) {
        throw Failure(what + ": " + error.getMessage());
    }
}

/* Whether a bus that was there a moment ago has failed, rather than refused something. */
bool hasGone(const sdbus::Error &error)
{
    constexpr std::array<std::string_view, 6> names{
        "System.Error.ECONNRESET",
        "System.Error.ENOTCONN",
        "System.Error.EPIPE",
        "org.freedesktop.DBus.Error.Disconnected",
        "org.freedesktop.DBus.Error.NoReply",
        "org.freedesktop.DBus.Error.Timeout",
    };
    return std::ranges::find(names, error.getName()) != names.end();
}

/* The shorter of two time-outs, of which -1 is the longest. */
int shorter(int one, int other)
{
    return one < 0 || other < 0 ? std::max(one, other) : std::min(one, other);
}

/* Waits for the bus, a signal or the time-out; answers whether a signal is there. */
bool waitForWork(pollfd bus, int stopDescriptor, int timeout)
{
    std::array<pollfd, 2> descriptors{bus, pollfd{stopDescriptor, POLLIN, 0}};
    if (poll(descriptors.data(), descriptors.size(), timeout) < 0 && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "poll");
    }
    return descriptors[1].revents != 0;
}

} // namespace

Server::Server(std::uint32_t service) : name_(busName(service))
{
    offer([this](sdbus::IConnection &connection) { return makeRpcObject(connection); });
}

void Server::handle(std::uint32_t function, Handler handler)
{
    handlers_[function] = std::move(handler);
}

void Server::offer(ObjectFactory make)
{
    factories_.push_back(std::move(make));
}

void Server::whileIdle(IdleWork work)
{
    idleWork_ = std::move(work);
}

std::unique_ptr<sdbus::IObject> Server::makeRpcObject(sdbus::IConnection &connection)
{
    auto object = sdbus::createObject(connection, objectPath);
    object->registerMethod(callMethod)
        .onInterface(interfaceName)
        .implementedAs([this](const std::uint32_t &function, const Bytes &request) {
            return dispatch(function, request);
        });
    object->finishRegistration();
    return object;
}

Bytes Server::dispatch(std::uint32_t function, const Bytes &request) const
{
    const auto handler = handlers_.find(function);
    if (handler == handlers_.end()) {
        throw sdbus::Error(unknownFunction, name_ + " has no function " + std::to_string(function));
    }

    try {
        return handler->second(request);
    } catch (const std::exception &error) {
        throw sdbus::Error(handlerFailed, error.what());
    }
}

void Server::claim()
{
    claimWithin(patienceAlone);
}

void Server::claimWithin(std::chrono::milliseconds patience)
{
    connect(patience);
    try {
        for (const ObjectFactory &make : factories_) {
            objects_.push_back(make(*connection_));
        }
        requestName();
    } catch (...) {
        disconnect();
        throw;
    }
}

void Server::requestName()
{
    const std::string what = "cannot own the bus name " + name_;
    try {
        connection_->requestName(name_);
    } catch (const sdbus::Error &error) {
        if (hasGone(error)) {
            throw NoBus(what + ": " + error.getMessage());
        }
        throw std::runtime_error(what + ": " + error.getMessage());
    }
}

void Server::connect(std::chrono::milliseconds patience)
{
    const std::string what = "cannot connect to the message bus";
    try {
        probeBus(Deadline(patience));
    } catch (const std::system_error &error) {
        throw NoBus(what + ": " + error.code().message());
    }
    connection_ = onBus<NoBus>(what, [] { return sdbus::createSystemBusConnection(); });
}

void Server::disconnect()
{
    objects_.clear();
    connection_.reset();
}

void Server::serve(WithoutBus withoutBus)
{
    if (withoutBus == WithoutBus::fail && !connection_) {
        claim();
    }
    tellSupervisorReady();
    while (awaitBus()) {
        try {
            onBus<NoBus>("lost the message bus", [this] { serveUntilStopped(); });
            onBus("cannot release the bus name " + name_,
                  [this] { connection_->releaseName(name_); });
            return;
        } catch (const NoBus &) {
            disconnect();
            if (withoutBus == WithoutBus::fail) {
                throw;
            }
        }
    }
}

/* False when the service is told to end before there is a bus. */
bool Server::awaitBus()
{
    while (!connection_) {
        try {
            claimWithin(patienceAmidWork);
        } catch (const NoBus &) {
            if (waitForWork(nothing, stopSignals_.descriptor(), shorter(idleWork_(), retryPause))) {
                return false;
            }
        }
    }
    return true;
}

void Server::serveUntilStopped()
{
    while (true) {
        for (unsigned call = 0; call < mostCalls && connection_->processPendingRequest(); call++) {
        }
        const int idle = idleWork_();
        const auto bus = connection_->getEventLoopPollData();
        if (waitForWork({bus.fd, bus.events, 0}, stopSignals_.descriptor(),
                        shorter(bus.getPollTimeout(), idle))) {
            return;
        }
    }
}

} // namespace bmc::rpc
