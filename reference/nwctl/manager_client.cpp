// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/manager_client.hpp"

#include <algorithm>
#include <chrono>
#include <map>
#include <system_error>

#include <sdbus-c++/sdbus-c++.h>

#include "common/deadline.hpp"
#include "network_mng/rpc.h"
#include "nwctl/failure.hpp"
#include "rpc/bus_probe.hpp"
#include "rpc/manager1.hpp"
#include "rpc/rpc_protocol.hpp"
#include "settings/codes.hpp"

namespace nwctl {

namespace {

namespace manager1 = bmc::rpc::manager1;
using std::chrono::milliseconds;

/* A change waits for another one and for duplicate address detection. */
constexpr milliseconds longest = std::chrono::minutes(1);
/* The bus waits for nobody: it is stopped or overrun when it is not there in that time. */
constexpr milliseconds longestForBus{NW_RPC_TIMEOUT_MS};
/* A bus that denies a call does so at once. */
constexpr milliseconds moment = std::chrono::seconds(1);

using Options = std::map<std::string, sdbus::Variant>;

/* The interface of the manager on the system bus. Throws std::system_error without a bus; its calls
 * throw sdbus::Error without an answer. */
class Manager {
public:
    explicit Manager(milliseconds limit)
        : limit_(limit), bus_(connect(limit)),
          proxy_(sdbus::createProxy(*bus_, bmc::rpc::busName(NW_RPC_SERVICE_NETWORK),
                                    manager1::objectPath))
    {
    }

    template <typename... Arguments>
    sdbus::MethodReply call(const char *method, const Arguments &...arguments)
    {
        auto request = proxy_->createMethodCall(manager1::interfaceName, method);
        static_cast<void>((request << ... << arguments));
        return proxy_->callMethod(request, limit_);
    }

    template <typename Value>
    Value property(const char *name)
    {
        constexpr const char *properties = "org.freedesktop.DBus.Properties";
        auto request = proxy_->createMethodCall(properties, "Get");
        request << manager1::interfaceName << name;
        sdbus::Variant value;
        proxy_->callMethod(request, limit_) >> value;
        return value.get<Value>();
    }

private:
    static std::unique_ptr<sdbus::IConnection> connect(milliseconds limit)
    {
        bmc::rpc::probeBus(bmc::Deadline(std::min(limit, longestForBus)));
        return sdbus::createSystemBusConnection();
    }

    milliseconds limit_;
    std::unique_ptr<sdbus::IConnection> bus_;
    std::unique_ptr<sdbus::IProxy> proxy_;
};

template <typename Value>
Value valueIn(sdbus::MethodReply reply)
{
    Value value;
    reply >> value;
    return value;
}

bool isDenial(const sdbus::Error &error)
{
    return error.getName() == "org.freedesktop.DBus.Error.AccessDenied";
}

/* The result's code that the error is named after, if it is the manager's own. */
std::optional<NW_RESULT> codeOf(const sdbus::Error &error)
{
    for (const bmc::settings::Code &code : bmc::settings::codes()) {
        if (error.getName() == manager1::errorPrefix + std::string(code.name)) {
            return code.value;
        }
    }
    return std::nullopt;
}

Failure failureOf(const sdbus::Error &error, const char *effect)
{
    if (const auto code = codeOf(error)) {
        return {Exit::manager, "", "", "the network manager refused it: " + error.getMessage(),
                code};
    }
    return {Exit::transport, "", "",
            isDenial(error)
                ? deniedReason
                : "no answer from the network manager (" + error.getMessage() + "); " + effect,
            NW_ERR_RPC_TRANSPORT};
}

/* effect: what a call without an answer may have done. */
template <typename Call>
auto ask(const char *effect, const Call &call, milliseconds limit = longest)
{
    try {
        Manager manager(limit);
        return call(manager);
    } catch (const sdbus::Error &error) {
        throw failureOf(error, effect);
    } catch (const std::system_error &error) {
        throw Failure(Exit::transport, "", "",
                      "the message bus cannot be reached (" + error.code().message() +
                          "); nothing has changed",
                      NW_ERR_RPC_TRANSPORT);
    }
}

} // namespace

std::string applyByManager(const std::string &document, bool isForced, unsigned seconds)
{
    const Options options{{manager1::forceOption, sdbus::Variant(isForced)},
                          {manager1::confirmOption, sdbus::Variant(std::uint32_t{seconds})}};
    return ask("the change may still take effect", [&](Manager &manager) {
        return valueIn<std::string>(manager.call(manager1::applyMethod, document, options));
    });
}

std::string differencesByManager()
{
    return ask("nothing has changed", [](Manager &manager) {
        return valueIn<std::string>(manager.call(manager1::differencesMethod));
    });
}

std::string setCheckpoint(unsigned seconds)
{
    return ask("a checkpoint may be pending", [&](Manager &manager) {
        return valueIn<std::string>(manager.call(manager1::checkpointMethod, seconds));
    });
}

void endCheckpoint(CheckpointEnd end, const std::string &token)
{
    const bool confirms = end == CheckpointEnd::confirm;
    ask("it may still take effect", [&](Manager &manager) {
        if (token.empty()) {
            manager.call(confirms ? manager1::confirmMethod : manager1::revertMethod);
        } else {
            manager.call(confirms ? manager1::confirmWithMethod : manager1::revertWithMethod,
                         token);
        }
    });
}

std::string pendingChanges()
{
    return ask("nothing has changed", [](Manager &manager) {
        return valueIn<std::string>(manager.call(manager1::pendingChangesMethod));
    });
}

CheckpointState checkpointState(const std::string &token)
{
    const auto read = [&](Manager &manager) {
        CheckpointState found;
        auto reply = manager.call(manager1::checkpointStateMethod, token);
        reply >> found.state >> found.secondsLeft;
        return found;
    };
    return ask("it cannot be told what is pending", read, moment);
}

std::optional<unsigned> pendingSeconds(Patience patience)
{
    const auto read = [](Manager &manager) {
        return manager.property<bool>(manager1::pendingProperty)
                   ? std::optional<unsigned>(
                         manager.property<std::uint32_t>(manager1::secondsLeftProperty))
                   : std::nullopt;
    };
    return ask("it cannot be told what is pending", read,
               patience == Patience::usual ? longest : moment);
}

bool isDeniedByBus()
{
    try {
        Manager(moment).call(manager1::checkMethod, "{}", Options());
    } catch (const sdbus::Error &error) {
        return isDenial(error);
    } catch (const std::system_error &) {
        return false;
    }
    return false;
}

} // namespace nwctl
