// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rpc/rpc_server.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <system_error>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "rpc/rpc_protocol.hpp"

namespace bmc::rpc {

namespace {

constexpr const char *unknownFunction = "io.networkmng.Error.UnknownFunction";
constexpr const char *handlerFailed = "io.networkmng.Error.Failed";

sigset_t stopSet()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

/* Runs a bus operation; what it throws becomes one sentence. */
template <typename Operation>
auto onBus(const std::string &what, Operation operation)
{
    try {
        return operation();
    } catch (const sdbus::Error &error) {
        throw std::runtime_error(what + ": " + error.getMessage());
    }
}

/* The shorter of two time-outs, of which -1 is the longest. */
int shorter(int one, int other)
{
    return one < 0 || other < 0 ? std::max(one, other) : std::min(one, other);
}

/* Waits for the bus, a signal or the time-out; answers whether a signal is there. */
bool waitForWork(const sdbus::IConnection::PollData &bus, int stopDescriptor, int timeout)
{
    std::array<pollfd, 2> descriptors{{{bus.fd, bus.events, 0}, {stopDescriptor, POLLIN, 0}}};
    if (poll(descriptors.data(), descriptors.size(), timeout) < 0 && errno != EINTR) {
        throw std::system_error(errno, std::generic_category(), "poll");
    }
    return descriptors[1].revents != 0;
}

} // namespace

StopSignals::StopSignals()
{
    const sigset_t set = stopSet();
    descriptor_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) {
        throw std::system_error(errno, std::generic_category(), "signalfd");
    }
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

StopSignals::~StopSignals()
{
    close(descriptor_);
}

Server::Server(std::uint32_t service)
    : name_(busName(service)),
      connection_(onBus("cannot connect to the message bus",
                        [] { return sdbus::createSystemBusConnection(); })),
      object_(sdbus::createObject(*connection_, objectPath))
{
    object_->registerMethod(callMethod)
        .onInterface(interfaceName)
        .implementedAs([this](const std::uint32_t &function, const Bytes &request) {
            return dispatch(function, request);
        });
    object_->finishRegistration();
}

void Server::handle(std::uint32_t function, Handler handler)
{
    handlers_[function] = std::move(handler);
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

void Server::whileIdle(IdleWork work)
{
    idleWork_ = std::move(work);
}

void Server::serve()
{
    onBus("cannot own the bus name " + name_, [this] { connection_->requestName(name_); });
    onBus("lost the message bus", [this] { serveUntilStopped(stopSignals_.descriptor()); });
    onBus("cannot release the bus name " + name_, [this] { connection_->releaseName(name_); });
}

void Server::serveUntilStopped(int stopDescriptor)
{
    while (true) {
        while (connection_->processPendingRequest()) {
        }
        const int idle = idleWork_();
        const auto bus = connection_->getEventLoopPollData();
        if (waitForWork(bus, stopDescriptor, shorter(bus.getPollTimeout(), idle))) {
            return;
        }
    }
}

} // namespace bmc::rpc
