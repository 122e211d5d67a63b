// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/service/manager1.hpp"

#include "manager/service/documents.hpp"
#include "rpc/manager1.hpp"

namespace bmc::manager {

namespace {

namespace names = rpc::manager1;

struct Method {
    const char *name;
    std::string (*carryOut)(Engine &engine, const std::string &document);
};

constexpr Method methods[] = {{names::applyMethod, applyDocument},
                              {names::checkMethod, checkDocument}};

} // namespace

std::unique_ptr<sdbus::IObject> makeManager1(sdbus::IConnection &connection, Engine &engine)
{
    auto object = sdbus::createObject(connection, names::objectPath);
    for (const Method &method : methods) {
        object->registerMethod(method.name)
            .onInterface(names::interfaceName)
            .withInputParamNames("document")
            .withOutputParamNames("answer")
            .implementedAs([&engine, carryOut = method.carryOut](const std::string &document) {
                try {
                    return carryOut(engine, document);
                } catch (const std::exception &error) {
                    throw sdbus::Error("io.networkmng.Error.Failed", error.what());
                }
            });
    }
    object->finishRegistration();
    return object;
}

} // namespace bmc::manager
