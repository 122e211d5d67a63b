// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The typed interface on a real bus: whole documents, all or nothing. */
#include <algorithm>
#include <filesystem>
#include <fstream>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "far_host.hpp"
#include "manager/engine/store.hpp"
#include "manager_system.hpp"
#include "rpc/manager1.hpp"
#include "rpc/rpc_protocol.hpp"
#include "settings/codes.hpp"
#include "settings/document.hpp"
#include "settings/manager_bytes.hpp"

namespace nwtest {

namespace {

namespace names = bmc::rpc::manager1;
using bmc::manager::Configuration;
using bmc::manager::Store;
using bmc::settings::Result;
using bmc::settings::suspendedArp;
using Json = nlohmann::ordered_json;
using Addresses = std::vector<std::string>;

Configuration stored()
{
    return Store().readConfiguration();
}

std::string documentText()
{
    return bmc::settings::documentOf(stored()).dump();
}

/* Records and kernel. */
std::string everything()
{
    return documentText() + kernelSnapshot() + shell("hostname");
}

std::string statePath(const char *name)
{
    return std::string(std::getenv("BMC_STATE_DIR")) + "/" + name;
}

class Manager1 : public ManagerTest {
protected:
    template <typename... Options>
    static Json ask(const char *method, const std::string &document, const Options &...options)
    {
        auto connection = sdbus::createSystemBusConnection();
        auto proxy = sdbus::createProxy(*connection, bmc::rpc::busName(NW_RPC_SERVICE_NETWORK),
                                        names::objectPath);
        std::string answer;
        proxy->callMethod(method)
            .onInterface(names::interfaceName)
            .withArguments(document, options...)
            .storeResultsTo(answer);
        return Json::parse(answer);
    }
    using Options = std::map<std::string, sdbus::Variant>;

    /* Whatever it does to those who come in over the ports. */
    static Json apply(const std::string &document)
    {
        return apply(document, {{names::forceOption, sdbus::Variant(true)}});
    }
    static Json apply(const std::string &document, const Options &options)
    {
        return ask(names::applyMethod, document, options);
    }
    static Json check(const std::string &document)
    {
        return check(document, {{names::forceOption, sdbus::Variant(true)}});
    }
    static Json check(const std::string &document, const Options &options)
    {
        return ask(names::checkMethod, document, options);
    }

    /* Refused by both methods alike, with nothing changed. */
    static void expectRefused(const std::string &document, std::uint32_t code,
                              const std::string &place)
    {
        const std::string before = everything();
        for (const Json &answer : {check(document), apply(document)}) {
            EXPECT_EQ(answer[names::resultKey], code) << answer;
            EXPECT_EQ(answer[names::settingKey], place) << answer;
            EXPECT_FALSE(answer[names::reasonKey].get<std::string>().empty());
            EXPECT_EQ(answer[names::changesKey], Json::array());
        }
        EXPECT_EQ(before, everything());
    }
    static void expectRefused(const std::string &document, Result code, const std::string &place)
    {
        expectRefused(document, static_cast<std::uint32_t>(code), place);
    }
};

struct Row {
    const char *name;
    std::string document;
    Result code;
    const char *place;
};

/* clang-format off */
const Row rows[] = {
    {"Empty",          "",                                                             Result::badDocument,    "document"},
    {"NotJson",        "{",                                                            Result::badDocument,    "document"},
    {"NotAnObject",    "[]",                                                           Result::badDocument,    "document"},
    {"Deep",           std::string(100000, '['),                                       Result::badDocument,    "document"},
    {"TooLong",        "{\"mode\": \"" + std::string(1100000, 'x') + "\"}",            Result::badDocument,    "document"},
    {"UnknownPart",    R"({"colour": 1})",                                             Result::badDocument,    "colour"},
    {"UnknownPort",    R"({"lan": {"eth7": {"lan": true}}})",                          Result::badDocument,    "lan.eth7"},
    {"UnknownSetting", R"({"lan": {"eth1": {"colour": 1}}})",                          Result::badDocument,    "lan.eth1.colour"},
    {"WrongShape",     R"({"lan": {"eth1": {"ipv4": {}}}})",                           Result::badDocument,    "lan.eth1.ipv4"},
    {"WrongWord",      R"({"mode": "bonded"})",                                        Result::badDocument,    "mode"},
    {"Gateway",        R"({"lan": {"eth1": {"ipv4-gateway": "10.1.1.1"}}})",           Result::gatewayOutside, "lan.eth1.ipv4-gateway"},
    {"HostName",       R"({"lan": {"eth1": {"ipv4": "192.168.20.9/24"}}, "hostname": {"mode": "auto", "name": "x"}})", Result::badHostNameMode, "hostname.name"},
};
/* clang-format on */

} // namespace

TEST_F(Manager1, BadDocumentsAreAnsweredWithPlaceAndReason)
{
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        expectRefused(row.document, row.code, row.place);
    }
    EXPECT_TRUE(manager_->isRunning());
}

TEST_F(Manager1, AppliesAllKindsOfSettingsAtOnce)
{
    const std::string document = R"({
        "hostname": {"mode": "manual", "name": "bmc-7"},
        "lan": {"shared": {"ipv4": "192.168.20.7/24", "ipv4-gateway": "192.168.20.1"}},
        "dns": {"eth1": {"ipv4-mode": "manual", "ipv4-server1": "192.168.20.53"}}})";
    const std::string before = everything();
    const Json foreseen = check(document);
    EXPECT_EQ(before, everything());
    EXPECT_EQ(foreseen[names::resultKey], NW_OK) << foreseen;

    const Json answer = apply(document);

    EXPECT_EQ(answer, foreseen);
    EXPECT_TRUE(answer[names::reasonKey].is_null());
    EXPECT_TRUE(answer[names::settingKey].is_null());
    const Json address = {{"setting", "lan.shared.ipv4"},
                          {"port", "eth1"},
                          {"before", "192.168.20.2/24"},
                          {"after", "192.168.20.7/24"}};
    const Json &changes = answer[names::changesKey];
    EXPECT_NE(std::ranges::find(changes, address), changes.end()) << answer;
    EXPECT_EQ(changes[0]["setting"], "hostname.name");
    EXPECT_TRUE(changes[0]["port"].is_null());
    EXPECT_EQ(kernelAddresses("eth1"), (Addresses{"192.168.20.7/24", "2001:db8:20::2/64"}));
    EXPECT_EQ(kernelGateways("eth1"), Addresses{"192.168.20.1 101"});
    EXPECT_EQ(shell("hostname"), "bmc-7\n");
    EXPECT_NE(shell("cat $BMC_STATE_DIR/resolv.conf").find("192.168.20.53"), std::string::npos);
}

/* The kernel refuses one part after others have taken effect. */
TEST_F(Manager1, LateRefusalTakesEverythingBack)
{
    shell("ip address add 192.168.20.9/24 dev eth0");
    const std::string document = R"({"hostname": {"mode": "manual", "name": "bmc-8"},
        "lan": {"shared": {"ipv4": "192.168.20.7/24", "ipv4-gateway": "off"},
                "dedicated": {"ipv4": "192.168.20.9/25"}}})";
    const std::string before = everything();
    const Json answer = apply(document);
    EXPECT_NE(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(answer[names::changesKey], Json::array());
    EXPECT_EQ(before, everything());
}

TEST_F(Manager1, ExportedDocumentChangesNothing)
{
    const std::string document = documentText();
    const std::string before = everything();
    const Json answer = apply(document);
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(answer[names::changesKey], Json::array());
    EXPECT_EQ(answer[names::notesKey], Json::array());
    EXPECT_EQ(before, everything());
}

TEST_F(Manager1, ALiftedSuspensionOfArpIsPartOfTheDocument)
{
    apply(R"({"lan": {"eth1": {"arp-suspend": "responses"}}})");
    EXPECT_EQ(suspendedArp(stored().lan.astPort[1]), bmc::settings::arpResponses);
    const Json answer = apply(R"({"lan": {"eth1": {"arp-suspend": "resumed,responses"}}})");
    EXPECT_EQ(answer[names::changesKey][0]["after"], "resumed,responses") << answer;
    EXPECT_EQ(suspendedArp(stored().lan.astPort[1]), 0);

    EXPECT_EQ(apply(documentText())[names::changesKey], Json::array());
    EXPECT_EQ(suspendedArp(stored().lan.astPort[1]), 0);
}

TEST_F(Manager1, PortsThatAreNotServedAreStoredAndTold)
{
    const Json answer = apply(R"({"lan": {"bond": {"lan": true, "ipv4": "192.168.30.9/24"}}})");
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(answer[names::notesKey],
              Json({"settings of bond0, bond have no effect in network mode separate"}));
    EXPECT_EQ(stored().lan.astPort[2].aucIpv4Addr[3], 9);
    EXPECT_TRUE(kernelAddresses("bond0").empty());
}

TEST_F(Manager1, WhatIsStoredAloneIsTold)
{
    const Json answer = apply(R"({"lan": {"eth1": {"traffic-class": 9, "ipv4-origin": "dhcp"}}})");
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(answer[names::notesKey],
              Json({"ipv4-origin of eth1, shared port is stored without effect",
                    "traffic-class of eth1, shared port is stored without effect"}));

    const Json back = apply(R"({"lan": {"eth1": {"ipv4-origin": "static"}}})");
    EXPECT_EQ(back[names::notesKey], Json::array());
}

TEST_F(Manager1, MachinesOwnPartIsLeftAloneAndTold)
{
    const Json answer = apply(R"({"ports": {"shared": {"name": "eth9", "channel": 8}}})");
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    ASSERT_EQ(answer[names::notesKey].size(), 1U) << answer;
    EXPECT_NE(answer[names::notesKey][0].get<std::string>().find("eth9"), std::string::npos);
    EXPECT_STREQ(stored().state.acIfcName[1], "eth1");
}

/* A port whose interface is missing does not stand in the way of what is not about it. */
TEST_F(Manager1, MissingInterfaceHindersOnlyItsOwnPort)
{
    shell("ip link del eth0");
    std::string document = documentText();
    Json changed = Json::parse(document);
    changed["lldp"]["work-mode"] = "rx";
    const Json answer = apply(changed.dump());
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(answer[names::changesKey].size(), 1U) << answer;
}

TEST_F(Manager1, MalformedWirelessFileStopsWhatItMattersTo)
{
    std::ofstream(statePath("wireless.json")) << "{";
    expectRefused(R"({"lan": {"eth1": {"ipv4": "192.168.20.9/24"}}})", Result::wirelessUnknown,
                  "lan.eth1.ipv4");
    LanRequest request;
    request.select(1, NW_LAN_BIT_IPV4_ADDR);
    put(request.port(1).aucIpv4Addr, "192.168.20.9");
    expectUntouched(request, static_cast<std::uint32_t>(Result::wirelessUnknown), 1);
    EXPECT_EQ(apply(R"({"lan": {"eth1": {"hop-limit": 9}}})")[names::resultKey], NW_OK);

    std::filesystem::remove(statePath("wireless.json"));
    EXPECT_EQ(apply(R"({"lan": {"eth1": {"ipv4": "192.168.20.9/24"}}})")[names::resultKey], NW_OK);
}

/* The answer tells what was not there, once. */
TEST_F(Manager1, WhatIsStoredIsMadeSoAgain)
{
    shell("ip address del 192.168.20.2/24 dev eth1; hostname other");
    const Json answer = apply(documentText());
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(answer[names::changesKey], Json::array());
    EXPECT_EQ(answer[names::mendedKey], true);
    EXPECT_NE(answer[names::notesKey].dump().find(
                  "was not as stored, made so again: eth1: add address 192.168.20.2/24"),
              std::string::npos)
        << answer;
    EXPECT_EQ(kernelAddresses("eth1"), (Addresses{"192.168.20.2/24", "2001:db8:20::2/64"}));
    const Json again = apply(documentText());
    EXPECT_EQ(again[names::mendedKey], false);
    EXPECT_EQ(again[names::notesKey], Json::array());
}

TEST_F(Manager1, WhatIsStoredIsMadeSoBesideAMissingInterface)
{
    shell("ip link del eth0; ip address flush dev eth1");
    const Json answer = apply(documentText());
    EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
    EXPECT_EQ(kernelAddresses("eth1"), (Addresses{"192.168.20.2/24", "2001:db8:20::2/64"}));
    EXPECT_EQ(answer[names::notesKey].dump().find("eth0"), std::string::npos) << answer;
}

namespace {

struct KernelRow {
    const char *name;
    const char *command;
    const char *document;
    const char *place;
    std::vector<const char *> words; /* of the reason */
};

/* clang-format off */
const KernelRow kernelRows[] = {
    {"Gateway",  "true",             R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:99::1"}}})", "lan.eth1.ipv6-gateway", {"eth1", "default via 2001:db8:99::1", "No route to host"}},
    {"OwnAddress", "true",           R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:20::2"}}})", "lan.eth1.ipv6-gateway", {"default via 2001:db8:20::2", "local address", "Invalid argument"}},
    {"Route",    "true",             R"({"lan": {"eth1": {"ipv6-route2": "2001:db8:7::/64,2001:db8:99::1"}}})", "lan.eth1.ipv6-route2", {"route 2001:db8:7::/64 via 2001:db8:99::1", "No route to host"}},
    {"Taken",    "ip address add 192.168.20.9/24 dev eth1", R"({"lan": {"eth1": {"ipv4": "192.168.20.9/24"}}})", "lan.eth1.ipv4", {"address 192.168.20.9/24", "File exists"}},
    {"NoInterface", "ip link del eth1", R"({"lan": {"eth1": {"ipv4": "192.168.20.9/24"}}})",     "lan.shared",              {"there is no interface eth1"}},
};
/* clang-format on */

} // namespace

TEST_F(Manager1, RefusalOfTheKernelNamesSettingItemAndReason)
{
    for (const KernelRow &row : kernelRows) {
        SCOPED_TRACE(row.name);
        shell(row.command);
        const Json answer = apply(row.document);
        EXPECT_EQ(answer[names::resultKey], static_cast<std::uint32_t>(Result::kernelRefused));
        EXPECT_EQ(answer[names::settingKey], row.place) << answer;
        const std::string reason = answer[names::reasonKey];
        for (const char *word : row.words) {
            EXPECT_NE(reason.find(word), std::string::npos) << reason;
        }
        EXPECT_EQ(reason.find("arp_ignore"), std::string::npos) << reason;
    }
}

namespace {

struct ForeseenRow {
    const char *command;
    const char *document;
    bool isRefused;
};

/* clang-format off */
const ForeseenRow foreseenRows[] = {
    {"true", R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:99::1"}}})", true},
    {"true", R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:20::2"}}})", true},
    {"true", R"({"lan": {"eth1": {"ipv6-route2": "2001:db8:7::/64,2001:db8:99::1"}}})", true},
    {"true", R"({"lan": {"eth1": {"ipv6-gateway": "fe80::1"}}})", false},
    {"true", R"({"lan": {"eth1": {"ipv6": "2001:db8:99::2/64", "ipv6-gateway": "2001:db8:99::1"}}})", false},
    {"true", R"({"lan": {"eth1": {"ipv6": "2001:db8:20::2/64", "ipv6-gateway": "2001:db8:20::1"}}})", false},
    {"ip -6 address add 2001:db8:99::5/64 dev eth0", R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:99::1"}}})", true},
    {"ip -6 address add 2001:db8:98::5/64 dev eth1", R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:98::1"}}})", false},
    {"ip -6 route add 2001:db8:97::/64 dev eth1",    R"({"lan": {"eth1": {"ipv6-gateway": "2001:db8:97::1"}}})", false},
};
/* clang-format on */

} // namespace

/* The kernel is asked by the change itself. */
TEST_F(Manager1, CheckForeseesTheGatewaysThatTheKernelRefuses)
{
    for (const ForeseenRow &row : foreseenRows) {
        SCOPED_TRACE(row.document);
        shell(row.command);
        const Json foreseen = check(row.document);
        const Json applied = apply(row.document);
        const auto code =
            static_cast<std::uint32_t>(row.isRefused ? Result::kernelRefused : Result::done);
        EXPECT_EQ(applied[names::resultKey], code) << applied;
        EXPECT_EQ(foreseen[names::resultKey], code) << foreseen;
        EXPECT_EQ(foreseen[names::settingKey], applied[names::settingKey]);
    }
}

/* The first port has another MAC address then. */
TEST_F(Manager1, AutomaticHostNameFollowsASwitchover)
{
    const auto nameOf = [](const std::string &interface) {
        return "bmc-" + shell("tr -d ':\n' </sys/class/net/" + interface + "/address");
    };
    EXPECT_EQ(apply(R"({"hostname": {"mode": "auto"}})")[names::resultKey], NW_OK);
    EXPECT_EQ(shell("hostname"), nameOf("eth0") + "\n");
    for (const char *interface : {"eth1", "eth0"}) {
        const bool isSwitched = std::string(interface) == "eth1";
        const Json answer =
            apply(isSwitched ? R"({"switchover": true})" : R"({"switchover": false})");
        EXPECT_EQ(answer[names::resultKey], NW_OK) << answer;
        EXPECT_EQ(shell("hostname"), nameOf(interface) + "\n");
        EXPECT_STREQ(stored().hostName.szBmcHostName, nameOf(interface).c_str());
    }
}

TEST_F(Manager1, CanBeIntrospected)
{
    const std::string text =
        shell("dbus-send --system --print-reply --dest=io.networkmng.Service24 "
              "/io/networkmng/Manager org.freedesktop.DBus.Introspectable.Introspect");
    for (const char *word :
         {"io.networkmng.Manager1", "\"Check\"", "\"Apply\"", "\"document\"", "\"answer\""}) {
        EXPECT_NE(text.find(word), std::string::npos) << word;
    }
}

namespace {

constexpr const char *newAddress = R"({"lan": {"eth1": {"ipv4": "192.168.20.9/24"}}})";
constexpr const char *allOff =
    R"({"lan": {"dedicated": {"lan": false}, "shared": {"lan": false}}})";

} // namespace

TEST_F(Manager1, LastWayInIsRefusedUnlessItIsForced)
{
    apply(R"({"lan": {"eth0": {"arp-control": "both"}, "eth1": {"arp-control": "both"}}})");
    const std::string before = everything();
    for (const Json &answer : {check(allOff, {}), apply(allOff, {})}) {
        EXPECT_EQ(answer.at(names::resultKey), static_cast<std::uint32_t>(Result::locksOut));
    }
    EXPECT_EQ(before, everything());
    EXPECT_EQ(apply(allOff)[names::resultKey], NW_OK);
}

TEST_F(Manager1, ChangeThatGoesBackUnlessItIsConfirmed)
{
    const std::string before = everything();
    const Json answer =
        apply(newAddress, {{names::confirmOption, sdbus::Variant(std::uint32_t{10})}});
    EXPECT_EQ(answer[names::resultKey], NW_OK);
    EXPECT_EQ(answer.at(names::confirmKey).at(names::secondsKey), 10);
    EXPECT_EQ(answer.at(names::confirmKey).at(names::tokenKey).get<std::string>().size(), 32U);
    EXPECT_NE(before, everything());

    const Json second = apply(R"({"hostname": {"mode": "manual", "name": "second"}})", {});
    EXPECT_EQ(second.at(names::confirmKey), nullptr);
    EXPECT_NE(second[names::notesKey].dump().find("belongs to the checkpoint"), std::string::npos);
    EXPECT_TRUE(
        support::eventually([&] { return everything() == before; }, std::chrono::seconds(15)));
}

TEST_F(Manager1, ChangeThatIsRefusedLeavesNoCheckpoint)
{
    const Options options{{names::confirmOption, sdbus::Variant(std::uint32_t{60})}};
    shell("ip address add 192.168.20.9/24 dev eth1");
    const Json answer = apply(newAddress, options);
    EXPECT_NE(answer[names::resultKey], NW_OK);
    EXPECT_EQ(answer.at(names::confirmKey), nullptr);
    shell("ip address del 192.168.20.9/24 dev eth1");
    EXPECT_EQ(apply(newAddress, options)[names::resultKey], NW_OK);
}

TEST_F(Manager1, WhoeverIsConnectedHasTimeToConfirm)
{
    apply(R"({"lan": {"eth0": {"arp-control": "both"}, "eth1": {"arp-control": "both"}}})");
    const support::FarHost there("peer1");
    there.own("192.168.20.7/24");
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(4711);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof(address)), 0);
    ASSERT_EQ(listen(listener, 1), 0);
    const Process visitor({"ip", "netns", "exec", "peer1", "bash", "-c",
                           "exec 3<>/dev/tcp/192.168.20.2/4711 && sleep 60"});
    const int socket = accept(listener, nullptr, nullptr);
    ASSERT_GE(socket, 0);

    /* Of another port. */
    EXPECT_EQ(apply(R"({"lan": {"eth0": {"ipv4": "192.168.10.9/24"}}})", {}).at(names::confirmKey),
              nullptr);
    const Options unconfirmed{{names::confirmOption, sdbus::Variant(std::uint32_t{0})}};
    EXPECT_EQ(apply(newAddress, unconfirmed).at(names::confirmKey), nullptr);
    apply(R"({"lan": {"eth1": {"ipv4": "192.168.20.2/24"}}})", unconfirmed);
    EXPECT_EQ(apply(newAddress, {}).at(names::confirmKey).at(names::secondsKey), 120);
    close(socket);
    close(listener);
}

TEST_F(Manager1, OptionsThatAreNotKnown)
{
    const std::string before = everything();
    for (const Options &options : {Options{{"colour", sdbus::Variant(true)}},
                                   Options{{names::forceOption, sdbus::Variant(1)}},
                                   Options{{names::confirmOption, sdbus::Variant("10")}}}) {
        EXPECT_THROW(apply(newAddress, options), sdbus::Error);
    }
    for (const std::uint32_t seconds : {1U, 9U, 3601U, ~0U}) {
        EXPECT_EQ(
            apply(newAddress, {{names::confirmOption, sdbus::Variant(seconds)}})[names::resultKey],
            static_cast<std::uint32_t>(Result::badDeadline));
    }
    EXPECT_EQ(before, everything());
}

/* Told as the kernel has it at that moment; all of it, until the next restart makes it so. */
TEST_F(Manager1, DifferencesToTheKernel)
{
    const auto told = [] {
        auto connection = sdbus::createSystemBusConnection();
        auto proxy = sdbus::createProxy(*connection, bmc::rpc::busName(NW_RPC_SERVICE_NETWORK),
                                        names::objectPath);
        std::string answer;
        proxy->callMethod(names::differencesMethod)
            .onInterface(names::interfaceName)
            .storeResultsTo(answer);
        const bool isInLine =
            proxy->getProperty(names::inLineProperty).onInterface(names::interfaceName);
        return std::pair(Json::parse(answer), isInLine);
    };
    EXPECT_EQ(told(), std::pair(Json::array(), true));
    shell("ip address add 203.0.113.9/24 dev eth1");
    EXPECT_TRUE(told().second);
    EXPECT_EQ(told().first.at(0).at(names::foreignKey), true);
    shell("ip address del 192.168.20.2/24 dev eth1");
    EXPECT_FALSE(told().second);
    const Json missing{{names::interfaceKey, "eth1"},
                       {names::storedKey, "address 192.168.20.2/24"},
                       {names::liveKey, nullptr},
                       {names::foreignKey, false}};
    EXPECT_EQ(told().first.at(0), missing);
    shell("ip address del 203.0.113.9/24 dev eth1");
}

} // namespace nwtest
