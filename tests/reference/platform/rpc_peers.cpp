// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rpc_peers.hpp"

#include <array>
#include <fstream>

#include <unistd.h>

#include "rpc/rpc_protocol.hpp"

namespace bmc::test {

namespace {

void serve(std::uint32_t service, const Handler &handler, const std::string &signature, int ready)
{
    const auto bus = sdbus::createSystemBusConnection();
    const auto object = sdbus::createObject(*bus, rpc::objectPath);
    object->registerMethod(rpc::interfaceName, rpc::callMethod, "uay", signature,
                           [&](sdbus::MethodCall call) { handler(call); });
    object->finishRegistration();
    bus->requestName(rpc::busName(service));
    EXPECT_EQ(1, write(ready, "r", 1));
    bus->enterEventLoop();
}

bool busAnswers()
{
    try {
        return sdbus::createSystemBusConnection() != nullptr;
    } catch (const sdbus::Error &) {
        return false;
    }
}

} // namespace

PrivateBus::PrivateBus()
{
    writeConfiguration();
    start();
}

void PrivateBus::stop()
{
    daemon_.reset();
}

void PrivateBus::start()
{
    daemon_ = std::make_unique<support::Process>(std::vector<std::string>{
        "dbus-daemon", "--config-file=" + (directory_.path() / "bus.conf").string(), "--nofork",
        "--nosyslog"});
    EXPECT_TRUE(eventually(busAnswers));
}

PrivateBus::~PrivateBus() = default;

void PrivateBus::signal(int number) const
{
    daemon_->signal(number);
}

void PrivateBus::writeConfiguration() const
{
    const std::string directory = directory_.path().string();
    std::ofstream(directory + "/bus.conf")
        << "<busconfig><type>session</type><listen>unix:path=" << directory << "/socket</listen>"
        << "<auth>EXTERNAL</auth><servicedir>" << directory << "</servicedir>"
        << "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
        << "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
    std::ofstream(directory + "/test.service")
        << "[D-BUS Service]\nName=" << rpc::busName(startableService) << "\nExec=/usr/bin/touch "
        << startedFile().string() << "\n";
}

Peer::Peer(std::uint32_t service, Handler handler, std::string signature)
{
    std::array<int, 2> ready{};
    EXPECT_EQ(0, pipe(ready.data()));
    process_ = std::make_unique<Child>([&] {
        close(ready[0]);
        serve(service, handler, signature, ready[1]);
    });
    close(ready[1]);
    char byte = 0;
    EXPECT_EQ(1, read(ready[0], &byte, 1));
    close(ready[0]);
}

} // namespace bmc::test
