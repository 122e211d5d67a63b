// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/manager1.hpp"

#include "manager/log.hpp"
#include "manager/refusal.hpp"
#include "manager/service/documents.hpp"
#include "rpc/manager1.hpp"

namespace bmc::manager {

namespace {

namespace names = rpc::manager1;

/* How a checkpoint ends: by who may change the network, and by who holds its token. */
struct Ending {
    const char *name;
    const char *nameWithToken;
    void (Engine::*carryOut)();
};
constexpr Ending endings[] = {{names::confirmMethod, names::confirmWithMethod, &Engine::confirm},
                              {names::revertMethod, names::revertWithMethod, &Engine::revert}};

[[noreturn]] void fail(const std::string &name, const char *reason)
{
    throw sdbus::Error(names::errorPrefix + name, reason);
}

/* What it throws becomes a D-Bus error. */
template <typename Call>
auto answerOf(const char *method, const Call &call)
{
    try {
        return call();
    } catch (const Refusal &refusal) {
        /* Anybody may try tokens, and shall not fill the log with them. */
        if (refusal.code() != static_cast<std::uint32_t>(Result::badToken)) {
            log(Level::error, std::string("refused: ") + method + ": " + refusal.what());
        }
        fail(std::string(settings::describe(refusal.code()).name), refusal.what());
    } catch (const std::exception &error) {
        fail("Failed", error.what());
    }
}

using Options = std::map<std::string, sdbus::Variant>;

/* Options that are not known are none of this version's; they may matter, so they are refused. */
ApplyOptions optionsIn(const Options &given)
{
    ApplyOptions options;
    for (const auto &[name, value] : given) {
        if (name == names::forceOption && value.containsValueOfType<bool>()) {
            options.isForced = value.get<bool>();
        } else if (name == names::confirmOption && value.containsValueOfType<std::uint32_t>()) {
            options.secondsToConfirm = value.get<std::uint32_t>();
        } else {
            throw Refusal(Result::badDocument, "option " + name);
        }
    }
    return options;
}

struct DocumentMethod {
    const char *name;
    std::string (*carryOut)(Engine &engine, const std::string &document,
                            const ApplyOptions &options);
};
constexpr DocumentMethod documentMethods[] = {{names::applyMethod, applyDocument},
                                              {names::checkMethod, checkDocument}};

void addDocumentMethods(sdbus::IObject &object, Engine &engine)
{
    for (const DocumentMethod &method : documentMethods) {
        object.registerMethod(method.name)
            .onInterface(names::interfaceName)
            .withInputParamNames("document", "options")
            .withOutputParamNames("answer")
            .implementedAs([&engine, &method](const std::string &document, const Options &options) {
                return answerOf(method.name, [&] {
                    return method.carryOut(engine, document, optionsIn(options));
                });
            });
    }
}

void addDifferences(sdbus::IObject &object, Engine &engine)
{
    object.registerMethod(names::differencesMethod)
        .onInterface(names::interfaceName)
        .withOutputParamNames("answer")
        .implementedAs([&engine] {
            return answerOf(names::differencesMethod, [&] { return tellDifferences(engine); });
        });
    object.registerProperty(names::inLineProperty)
        .onInterface(names::interfaceName)
        .withGetter(
            [&engine] { return answerOf(names::inLineProperty, [&] { return isInLine(engine); }); })
        .withUpdateBehavior(sdbus::Flags::EMITS_NO_SIGNAL);
}

void addEnding(sdbus::IObject &object, Engine &engine, const Ending &ending)
{
    object.registerMethod(ending.name)
        .onInterface(names::interfaceName)
        .implementedAs(
            [&engine, &ending] { answerOf(ending.name, [&] { (engine.*ending.carryOut)(); }); });
    object.registerMethod(ending.nameWithToken)
        .onInterface(names::interfaceName)
        .withInputParamNames("token")
        .implementedAs([&engine, &ending](const std::string &token) {
            answerOf(ending.nameWithToken, [&] {
                require(!token.empty() && engine.checkpointState(token) == CheckpointState::pending,
                        Result::badToken, ending.nameWithToken);
                (engine.*ending.carryOut)();
            });
        });
}

std::uint32_t secondsLeft(const Engine &engine)
{
    const auto left = engine.pending().value_or(std::chrono::milliseconds{});
    return static_cast<std::uint32_t>(std::chrono::ceil<std::chrono::seconds>(left).count());
}

constexpr const char *stateNames[] = {"none", "pending", "confirmed", "reverted"};

/* Of the checkpoint with that token, and the seconds left of one that is pending. */
std::tuple<std::string, std::uint32_t> stateOf(Engine &engine, const std::string &token)
{
    const auto state = token.empty() ? CheckpointState::none : engine.checkpointState(token);
    const auto number = static_cast<std::size_t>(state);
    return {stateNames[number < std::size(stateNames) ? number : 0],
            state == CheckpointState::pending ? secondsLeft(engine) : 0};
}

void addCheckpoint(sdbus::IObject &object, Engine &engine)
{
    object.registerMethod(names::checkpointMethod)
        .onInterface(names::interfaceName)
        .withInputParamNames("seconds")
        .withOutputParamNames("token")
        .implementedAs([&engine](std::uint32_t seconds) {
            return answerOf(names::checkpointMethod,
                            [&] { return engine.checkpoint(std::chrono::seconds(seconds)); });
        });
    object.registerMethod(names::checkpointStateMethod)
        .onInterface(names::interfaceName)
        .withInputParamNames("token")
        .withOutputParamNames("state", "secondsLeft")
        .implementedAs([&engine](const std::string &token) { return stateOf(engine, token); });
    object.registerMethod(names::pendingChangesMethod)
        .onInterface(names::interfaceName)
        .withOutputParamNames("answer")
        .implementedAs([&engine] {
            return answerOf(names::pendingChangesMethod, [&] { return tellPending(engine); });
        });
    object.registerProperty(names::pendingProperty)
        .onInterface(names::interfaceName)
        .withGetter([&engine] { return engine.pending().has_value(); })
        .withUpdateBehavior(sdbus::Flags::EMITS_NO_SIGNAL);
    object.registerProperty(names::secondsLeftProperty)
        .onInterface(names::interfaceName)
        .withGetter([&engine] { return secondsLeft(engine); })
        .withUpdateBehavior(sdbus::Flags::EMITS_NO_SIGNAL);
}

} // namespace

std::unique_ptr<sdbus::IObject> makeManager1(sdbus::IConnection &connection, Engine &engine)
{
    auto object = sdbus::createObject(connection, names::objectPath);
    addDocumentMethods(*object, engine);
    addDifferences(*object, engine);
    addCheckpoint(*object, engine);
    for (const Ending &ending : endings) {
        addEnding(*object, engine, ending);
    }
    object->finishRegistration();
    return object;
}

} // namespace bmc::manager
