// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "requests.hpp"

#include <fstream>
#include <sstream>

namespace nwtest {

NW_HOSTNAME_SET_REQ_S hostNameSet(std::uint8_t bits, std::uint8_t mode, const std::string &hostName,
                                  const std::string &bmcName)
{
    NW_HOSTNAME_SET_REQ_S set{};
    set.ucSetMask = bits;
    set.ucByte4 = mode;
    set.ucLength = static_cast<std::uint8_t>(hostName.size());
    hostName.copy(set.acHostName, sizeof(set.acHostName));
    bmcName.copy(set.acTail, sizeof(set.acTail));
    return set;
}

void expectAnswer(const std::vector<std::uint8_t> &request, std::uint32_t result,
                  std::uint32_t detail)
{
    const auto response = call(request);
    ASSERT_TRUE(response.has_value());
    const std::uint32_t gotResult = response->uiResult;
    const std::uint32_t gotDetail = response->uiDetail;
    EXPECT_EQ(gotResult, result) << std::hex << gotResult;
    EXPECT_EQ(gotDetail, detail);
}

void expectRefused(const std::vector<std::uint8_t> &request, std::uint32_t result,
                   std::uint32_t detail)
{
    const std::string before = everything();
    expectAnswer(request, result, detail);
    EXPECT_EQ(before, everything());
    EXPECT_EQ(storedStatus(), 0);
}

bmc::manager::Configuration stored()
{
    return bmc::manager::Store().readConfiguration();
}

std::string everything()
{
    const auto configuration = stored();
    std::ostringstream text;
    text << kernelSnapshot() << shell("hostname") << resolverText()
         << fileText("/conf/network/hostname") << std::hex;
    for (const char *port : {"eth0", "eth1", "bond0"}) {
        text << port << fileText(std::string("/proc/sys/net/ipv4/conf/") + port + "/arp_ignore");
    }
    const auto *bytes = reinterpret_cast<const std::uint8_t *>(&configuration);
    for (std::size_t offset = 0; offset < sizeof(configuration); offset++) {
        if (bytes[offset] != 0) {
            text << std::dec << offset << ':' << std::hex << unsigned{bytes[offset]} << ' ';
        }
    }
    return text.str();
}

std::string fileText(const std::string &path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

std::string resolverText()
{
    return fileText(std::string(std::getenv("BMC_STATE_DIR")) + "/resolv.conf");
}

} // namespace nwtest
