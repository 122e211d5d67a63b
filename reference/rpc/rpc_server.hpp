// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Owner of a service's bus name: hands each call to the function's handler, one at a time. */
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <sdbus-c++/sdbus-c++.h>

namespace bmc::rpc {

using Bytes = std::vector<std::uint8_t>;
using Request = std::span<const std::uint8_t>;

/* Answers the response. An exception reaches the caller as a D-Bus error. */
using Handler = std::function<Bytes(Request)>;

/* Work between two calls; answers the milliseconds until there is more, -1 for none. */
using IdleWork = std::function<int()>;

/* Delivery of SIGTERM and SIGINT through a file descriptor for as long as the object lives, so that
 * neither interrupts a handler. */
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

    int descriptor() const
    {
        return descriptor_;
    }

private:
    int descriptor_;
};

class Server {
public:
    /* Connects to the system bus, or to the one that DBUS_SYSTEM_BUS_ADDRESS names.
     * Throws std::runtime_error when there is none. */
    explicit Server(std::uint32_t service);

    void handle(std::uint32_t function, Handler handler);

    /* Called whenever the server is about to wait. */
    void whileIdle(IdleWork work);

    /* Claims the service's name and serves until SIGTERM or SIGINT. Throws std::runtime_error when
     * the name has another owner or the bus is lost. */
    void serve();

private:
    Bytes dispatch(std::uint32_t function, const Bytes &request) const;
    void serveUntilStopped(int stopDescriptor);

    std::string name_;
    std::map<std::uint32_t, Handler> handlers_;
    IdleWork idleWork_ = [] { return -1; };
    StopSignals stopSignals_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IObject> object_;
};

} // namespace bmc::rpc
