/* Records and runs that several tests begin with. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "fake_matchers.hpp"
#include "network_mng/lan.h"
#include "run.hpp"

namespace samples {

/* eth0, eth1 and bond0 in separate mode; kernel indices that no interface has. */
NW_IFC_STATE_DB_INFO_S interfaces();
/* eth0 192.168.10.2/24 and eth1 192.168.20.2/24 with 2001:db8:20::2/64; bond0 off. */
NW_LAN_CFG_DB_INFO_S lanRecord();

void storeIpv4(std::uint8_t (&field)[NW_IPV4_SIZE], const char *text);
void storeIpv6(std::uint8_t (&field)[NW_IPV6_SIZE], const char *text);

struct Ran {
    nwctl::Exit status;
    std::string out;
    std::string err;

    /* The answer as JSON; a test that asks for it fails when it is none. */
    nlohmann::json json() const;
};

Ran run(const std::vector<std::string> &arguments);

/* A platform that holds both records above. */
class ConfiguredTest : public fake::FakePlatformTest {
protected:
    ConfiguredTest();
};

} // namespace samples
