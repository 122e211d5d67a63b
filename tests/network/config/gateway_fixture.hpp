// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Asks for the gateway of a port of a scripted board.
#pragma once

#include "fake_matchers.hpp"
#include "gateway_script.hpp"
#include "guarded.hpp"
#include "lan_record.hpp"
#include "log_text.hpp"
#include "network_mng/discovery.h"

namespace gateway {

using support::Lines;

inline constexpr std::uint32_t ifcKey = 0x10610007;
inline constexpr std::uint32_t lanKey = 0x10610003;

inline std::string infoLine(const std::string &text)
{
    return support::lineText("10/0/6", text);
}
// "02:ab:..." of the first six bytes.
inline std::string macText(std::span<const std::uint8_t> mac)
{
    return fake::formatted("%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4],
                           mac[5]);
}
inline const std::string untouched = "ee:ee:ee:ee:ee:ee";

class GatewayTest : public fake::FakePlatformTest {
protected:
    GatewayTest()
    {
        script() = Script{};
        for (std::size_t port = 0; port < 3; ++port) {
            const std::string net = "10.0." + std::to_string(port);
            support::put(lan.bytes(), entry(port) + support::at::ipv4Addr,
                         support::ipv4(net + ".2"));
            support::put(lan.bytes(), entry(port) + support::at::ipv4Gateway,
                         support::ipv4(net + ".254"));
        }
    }
    ~GatewayTest() override
    {
        EXPECT_EQ(script().openFiles, 0) << "the cache file was left open";
    }

    static std::size_t entry(std::size_t port)
    {
        return 4 + support::kPortEntrySize * port;
    }

    // The six bytes behind the call, which held 0xEE before.
    std::string ask(std::uint8_t port)
    {
        if (!platform.record(ifcKey)) {
            platform.setRecord(ifcKey, ifc);
            platform.setRecord(lanKey, lan.bytes());
        }
        const support::Guarded mac(6, 0xEE);
        NW_GetV4DefaultGwMacAddr(port, mac.data());
        return macText(mac.bytes());
    }

    support::Bytes ifc = support::ifcRecord();
    support::LanRecord lan;
};

} // namespace gateway
