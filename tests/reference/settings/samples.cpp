// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "samples.hpp"

#include <stdexcept>

namespace bmc::settings {

Configuration sampleConfiguration()
{
    constexpr std::string_view names[] = {"eth0", "eth1", "bond0"};
    constexpr std::uint8_t channels[] = {1, 8, 1};
    Configuration sample = blankConfiguration();
    for (unsigned port = 0; port < NW_PORT_COUNT; ++port) {
        sample.state.aucPortPresent[port] = 1;
        sample.state.aucChannel[port] = channels[port];
        names[port].copy(sample.state.acIfcName[port], NW_IFC_NAME_SIZE - 1);
        names[port].copy(sample.lan.astPort[port].szIfcName, NW_IFC_NAME_SIZE - 1);
    }
    return sample;
}

const Setting &settingAt(Section section, const char *key)
{
    const Setting *setting = findSetting(section, key);
    if (setting == nullptr) {
        throw std::invalid_argument(key);
    }
    return *setting;
}

Change changeOf(Section section, const char *key, unsigned port, const std::string &text)
{
    Change change;
    assign(change, settingAt(section, key), port, text);
    return change;
}

} // namespace bmc::settings
