// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Owner of a service's bus name: hands each call to the function's handler, one at a time. */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

#include "rpc/stop_signals.hpp"

namespace bmc::rpc {

using Bytes = std::vector<std::uint8_t>;
using Request = std::span<const std::uint8_t>;

/* Answers the response. An exception reaches the caller as a D-Bus error. */
using Handler = std::function<Bytes(Request)>;

/* Work between two calls; answers the milliseconds until there is more, -1 for none. */
using IdleWork = std::function<int()>;

/* Makes an object on the connection and finishes its registration. */
using ObjectFactory = std::function<std::unique_ptr<sdbus::IObject>(sdbus::IConnection &)>;

/* There is no bus, or none that answers. */
class NoBus : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class WithoutBus { fail, wait };

class Server {
public:
    /* Connects to nothing yet. */
    explicit Server(std::uint32_t service);

    void handle(std::uint32_t function, Handler handler);

    /* A further object under the service's name. Made with each connection, so before claim(). */
    void offer(ObjectFactory make);

    /* Called whenever the server is about to wait, for calls or for a bus. */
    void whileIdle(IdleWork work);

    /* Connects to the system bus, or to the one that DBUS_SYSTEM_BUS_ADDRESS names, and makes the
     * service's name its own, so that whoever comes second can end before it touches anything.
     * Calls wait until they are served. Throws NoBus, or another std::runtime_error when the name
     * has another owner or may not be owned. */
    void claim();

    /* Tells the supervisor that the service is ready, and serves until SIGTERM or SIGINT; claims
     * the name unless that has been done. A bus that is missing or goes away is a failure as in
     * claim(), or is waited for. */
    void serve(WithoutBus withoutBus = WithoutBus::fail);

private:
    Bytes dispatch(std::uint32_t function, const Bytes &request) const;
    std::unique_ptr<sdbus::IObject> makeRpcObject(sdbus::IConnection &connection);
    void claimWithin(std::chrono::milliseconds patience);
    void connect(std::chrono::milliseconds patience);
    void requestName();
    void disconnect();
    bool awaitBus();
    void serveUntilStopped();

    std::string name_;
    std::map<std::uint32_t, Handler> handlers_;
    IdleWork idleWork_ = [] { return -1; };
    StopSignals stopSignals_;
    std::vector<ObjectFactory> factories_;
    std::unique_ptr<sdbus::IConnection> connection_; /* null while there is no bus */
    std::vector<std::unique_ptr<sdbus::IObject>> objects_;
};

} // namespace bmc::rpc
